# What the manual consists of, for whoever reads it: the window of the program, and the pages that are installed.
set(ATIPICOS_PAGINAS
    indice
    primer-cargo
    principal
    editor
    previsiones
    buscar
    visor
    resumen
    imprimir
    teclas
    reclamaciones
    ordenes
    puestos
    copias
    mensajes
    instalar
    manual)
set(ATIPICOS_IMAGENES
    aviso
    busqueda-por-nombre
    comentario
    editor-con-lineas
    editor-vacio
    historial
    impresora
    previsiones
    principal
    resumen
    visor-detalles
    visor-documento
    visor-lista)
set(ATIPICOS_MANUAL)
foreach(pagina IN LISTS ATIPICOS_PAGINAS)
    list(APPEND ATIPICOS_MANUAL "${CMAKE_CURRENT_LIST_DIR}/${pagina}.md")
endforeach()
foreach(imagen IN LISTS ATIPICOS_IMAGENES)
    list(APPEND ATIPICOS_MANUAL "${CMAKE_CURRENT_LIST_DIR}/imagenes/${imagen}.png")
endforeach()
