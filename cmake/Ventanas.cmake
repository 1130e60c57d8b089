# Qt, for the windows alone; for Windows the one of packaging/qt_para_mingw.sh, which has nothing to test with.
set(componentes_de_qt PrintSupport Widgets)
if(NOT WIN32)
    list(APPEND componentes_de_qt Test)
endif()
find_package(Qt6 6.4 REQUIRED COMPONENTS ${componentes_de_qt})

# Flags of every target that uses Qt, beside those of atipicos_opciones.
add_library(atipicos_opciones_qt INTERFACE)
target_link_libraries(atipicos_opciones_qt INTERFACE atipicos_opciones Qt6::Widgets atipicos_indulgencias_qt)
target_compile_definitions(atipicos_opciones_qt INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_URL_CAST_FROM_STRING)
# The code that Qt's tools write for us has casts that ours has not.
# A target of its own, because it has to come after the flags that it takes back.
add_library(atipicos_indulgencias_qt INTERFACE)
target_compile_options(atipicos_indulgencias_qt INTERFACE -Wno-useless-cast)

# Qt's moc reads what every source includes, all of Qt's headers, to find macros that ours do not have; told of no folder
# it takes a fiftieth of the time and writes the same.
set(moc_sin_cabeceras "${PROJECT_BINARY_DIR}/moc_sin_cabeceras")
get_target_property(moc Qt6::moc IMPORTED_LOCATION)
file(CONFIGURE OUTPUT "${moc_sin_cabeceras}" CONTENT [[#!/bin/sh
for argumento; do
    shift
    case $argumento in -I*) ;; *) set -- "$@" "$argumento" ;; esac
done
exec "@moc@" "$@"
]] @ONLY)
file(CHMOD "${moc_sin_cabeceras}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# The classes of a target's sources get what moc writes for them: atipicos_con_moc(<targets...>)
function(atipicos_con_moc)
    set_target_properties(${ARGN} PROPERTIES AUTOMOC ON)
    if(UNIX)
        set_target_properties(${ARGN} PROPERTIES AUTOMOC_EXECUTABLE "${moc_sin_cabeceras}")
    endif()
endfunction()

# One static library of widgets: atipicos_ventanas(<name> SOURCES … FORMS … USES …). Qt's headers are compiled once,
# with the controls.
function(atipicos_ventanas nombre)
    cmake_parse_arguments(ARG "" "" "SOURCES;FORMS;USES" ${ARGN})
    add_library(${nombre} STATIC ${ARG_SOURCES})
    qt_wrap_ui(formularios ${ARG_FORMS})
    target_sources(${nombre} PRIVATE ${formularios})
    target_include_directories(${nombre} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    target_link_libraries(${nombre} PUBLIC atipicos_opciones_qt ${ARG_USES})
    if(nombre STREQUAL "atipicos_controls")
        target_precompile_headers(${nombre} PRIVATE <QtWidgets>)
    else()
        target_precompile_headers(${nombre} REUSE_FROM atipicos_controls)
    endif()
    set_target_properties(${nombre} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    atipicos_con_moc(${nombre})
endfunction()
