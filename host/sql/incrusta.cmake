# Writes a source file whose functions return the scripts: cmake -DGUIONES=a;b -DCARPETA=… -DSALIDA=… -P incrusta.cmake
# Each line is a literal of its own, because compilers limit the length of one.
set(texto "#include \"host/sql/Guiones.hpp\"\n\nnamespace atipicos::guiones {\n")
foreach(guion IN LISTS GUIONES)
    file(READ "${CARPETA}/${guion}.sql" contenido)
    string(REPLACE "\n" "\n)guion\"\n           R\"guion(" contenido "${contenido}")
    string(APPEND texto "\nstd::string_view ${guion}()\n{\n    return R\"guion(${contenido})guion\";\n}\n")
endforeach()
string(APPEND texto "\n}\n")
file(WRITE "${SALIDA}" "${texto}")
