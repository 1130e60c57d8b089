# Writes a source file whose functions return the texts of files:
#     cmake -DFICHEROS=a.sql;b.sql -DESPACIO=guiones -DCABECERA=….hpp -DSALIDA=… -P escribe_incrustado.cmake
# A function is called as its file. Each line is a literal of its own, because compilers limit the length of one.
set(texto "#include \"${CABECERA}\"\n\nnamespace atipicos::${ESPACIO} {\n")
foreach(fichero IN LISTS FICHEROS)
    get_filename_component(nombre "${fichero}" NAME_WE)
    file(READ "${fichero}" contenido)
    string(REPLACE "\n" "\n)texto\"\n           R\"texto(" contenido "${contenido}")
    string(APPEND texto "\nstd::string_view ${nombre}()\n{\n    return R\"texto(${contenido})texto\";\n}\n")
endforeach()
string(APPEND texto "\n}\n")
file(WRITE "${SALIDA}" "${texto}")
