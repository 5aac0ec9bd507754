# What every target of ours is compiled with: link halvoran_options for it.
add_library(halvoran_options INTERFACE)
target_include_directories(halvoran_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(halvoran_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)

if(WIN32)
    enable_language(RC)
    target_compile_definitions(halvoran_options INTERFACE UNICODE _UNICODE NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
    set(CMAKE_SHARED_LIBRARY_PREFIX "")
    # The program folder as it would be installed: the binaries and the runtime libraries that they share.
    set(HALVORAN_PROGRAM_FOLDER ${PROJECT_SOURCE_DIR}/build/halvoran)
    file(MAKE_DIRECTORY ${HALVORAN_PROGRAM_FOLDER})
    foreach(runtime libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
            OUTPUT_VARIABLE runtime_path
            OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT EXISTS ${runtime_path})
            set(runtime_path /usr/x86_64-w64-mingw32/lib/${runtime})
        endif()
        file(COPY ${runtime_path} DESTINATION ${HALVORAN_PROGRAM_FOLDER})
    endforeach()
    set(CMAKE_CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/scripts/wine-run)
endif()

if(HALVORAN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# halvoran_program(TARGET FILE DESCRIPTION): puts a binary, whose file has that name, into the program folder, with a version
# resource that bears the description. A program is also given a manifest.
function(halvoran_program target file_name description)
    set(file_type VFT_DLL)
    set(manifest "")
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set(file_type VFT_APP)
        set(manifest "CREATEPROCESS_MANIFEST_RESOURCE_ID RT_MANIFEST \"${PROJECT_SOURCE_DIR}/platform/program.manifest\"")
    endif()
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS
        "${PROJECT_SOURCE_DIR}/platform/version.h;${PROJECT_SOURCE_DIR}/platform/version.rc;${PROJECT_SOURCE_DIR}/platform/program.manifest")
    target_sources(${target} PRIVATE ${resource})
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${HALVORAN_PROGRAM_FOLDER}
        LIBRARY_OUTPUT_DIRECTORY ${HALVORAN_PROGRAM_FOLDER})
endfunction()
