# Files that are part of the program, which then needs none beside itself:
#     atipicos_incrusta(<namespace> <header> <files…>)
# leaves the name of a generated source in a variable called as the namespace; the header declares its functions.
set(ATIPICOS_GUION_INCRUSTA "${CMAKE_CURRENT_LIST_DIR}/escribe_incrustado.cmake")
function(atipicos_incrusta espacio cabecera)
    set(generado "${CMAKE_CURRENT_BINARY_DIR}/${espacio}.cpp")
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE ficheros)
    add_custom_command(
        OUTPUT "${generado}"
        COMMAND "${CMAKE_COMMAND}" "-DFICHEROS=${ficheros}" "-DESPACIO=${espacio}" "-DCABECERA=${cabecera}"
            "-DSALIDA=${generado}" -P "${ATIPICOS_GUION_INCRUSTA}"
        DEPENDS ${ficheros} "${ATIPICOS_GUION_INCRUSTA}"
        COMMENT "Embedding ${ARGN}"
        VERBATIM)
    set(${espacio} "${generado}" PARENT_SCOPE)
endfunction()
