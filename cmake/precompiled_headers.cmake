# Parsing the system's and the test library's headers would take most of a build from nothing, so they are compiled once,
# ahead of the sources. Our own headers are not: they change. No source may lean on this; each includes what it uses, which
# scripts/lint checks by reading them without.

# halvoran_headers(NAME OPTIONS OPTION... LIBRARIES LIBRARY... HEADERS HEADER...): compiles the headers with these compile
# options, as they are seen by what links these libraries.
function(halvoran_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 argument "" "" "OPTIONS;LIBRARIES;HEADERS")
    # CMake wants a source file to go with precompiled headers.
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${name} OBJECT ${source})
    target_link_libraries(${name} PRIVATE halvoran_options ${argument_LIBRARIES})
    target_compile_options(${name} PRIVATE ${argument_OPTIONS})
    target_precompile_headers(${name} PRIVATE ${argument_HEADERS})
endfunction()

# halvoran_use_headers(TARGET NAME): the target, which has the same compile options, takes the headers that NAME compiled.
function(halvoran_use_headers target name)
    target_precompile_headers(${target} REUSE_FROM ${name})
    if(MINGW AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
        # GCC 12 is wrong about the insides of std::wstring, and says so when it can't tell any more that a line of a
        # precompiled header is the system's.
        target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overread)
    endif()
endfunction()
