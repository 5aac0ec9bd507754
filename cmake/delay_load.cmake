# halvoran_delay_load(TARGET DLL...): programs that link the static library load these libraries of the system when they first
# call one of their functions. Made of the import libraries' names, as the linker itself has no option for it.
function(halvoran_delay_load target)
    foreach(dll ${ARGN})
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${dll}.a OUTPUT_VARIABLE import_library OUTPUT_STRIP_TRAILING_WHITESPACE
            COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND ${CMAKE_NM} --defined-only ${import_library} OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
        string(REGEX MATCHALL " T [A-Za-z_][^\n]*" functions "${symbols}")
        list(TRANSFORM functions REPLACE "^ T " "")
        list(REMOVE_DUPLICATES functions)
        list(JOIN functions "\n" functions)
        set(exports ${CMAKE_CURRENT_BINARY_DIR}/${dll}.def)
        set(library ${CMAKE_CURRENT_BINARY_DIR}/lib${dll}_delayed.a)
        file(CONFIGURE OUTPUT ${exports} CONTENT "LIBRARY ${dll}.dll\nEXPORTS\n${functions}\n" @ONLY)
        execute_process(COMMAND ${CMAKE_DLLTOOL} -m i386:x86-64 -d ${exports} -D ${dll}.dll -y ${library} COMMAND_ERROR_IS_FATAL ANY)
        target_link_libraries(${target} INTERFACE ${library})
    endforeach()
    target_link_libraries(${target} INTERFACE delayimp)
endfunction()
