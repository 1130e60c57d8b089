# What is installed and where. `ninja uninstall` takes back what `ninja install` put.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# The component, and what a C++ host builds against: the headers of automation/, which need no other.
set(cmake_del_componente "${CMAKE_INSTALL_LIBDIR}/cmake/QVORComprasAtip")
target_include_directories(QVORComprasAtip INTERFACE "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/QVORComprasAtip>")
target_compile_features(QVORComprasAtip INTERFACE cxx_std_20)
install(TARGETS QVORComprasAtip EXPORT QVORComprasAtip)
install(EXPORT QVORComprasAtip FILE QVORComprasAtipTargets.cmake NAMESPACE QVORComprasAtip::
    DESTINATION "${cmake_del_componente}")
install(DIRECTORY automation DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/QVORComprasAtip" FILES_MATCHING PATTERN "*.hpp")
install(FILES server/QVORComprasAtip.idl DESTINATION "${CMAKE_INSTALL_DATADIR}/QVORComprasAtip")

configure_package_config_file(cmake/QVORComprasAtipConfig.cmake.in QVORComprasAtipConfig.cmake
    INSTALL_DESTINATION "${cmake_del_componente}")
write_basic_package_version_file(QVORComprasAtipConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/QVORComprasAtipConfig.cmake" "${PROJECT_BINARY_DIR}/QVORComprasAtipConfigVersion.cmake"
    DESTINATION "${cmake_del_componente}")
file(RELATIVE_PATH raiz_desde_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/QVORComprasAtip.pc.in QVORComprasAtip.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/QVORComprasAtip.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(WIN32)
    return()
endif()

# The program, what a desktop needs to know of it, and the sample company, ready made.
set(muestra "${PROJECT_BINARY_DIR}/muestra")
add_custom_command(OUTPUT "${muestra}/empresa.db"
    COMMAND "${CMAKE_COMMAND}" -E rm -rf "${muestra}"
    COMMAND atipicos crear --datos "${muestra}"
    DEPENDS "$<TARGET_FILE:atipicos>"
    COMMENT "Making the sample company"
    VERBATIM)
add_custom_target(muestra ALL DEPENDS "${muestra}/empresa.db")
install(TARGETS atipicos)
install(FILES "${muestra}/empresa.db" host/datos/reclamaciones.csv
    DESTINATION "${CMAKE_INSTALL_DATADIR}/QVORComprasAtip/muestra")
install(FILES host/sql/permisos_postgresql.sql host/sql/permisos_sqlserver.sql
    DESTINATION "${CMAKE_INSTALL_DATADIR}/QVORComprasAtip/permisos")
install(FILES host/documento/documento_cargo.json DESTINATION "${CMAKE_INSTALL_DATADIR}/QVORComprasAtip/plantilla")
install(FILES packaging/escritorio/atipicos.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES packaging/escritorio/atipicos.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
install(FILES packaging/escritorio/atipicos.bash-completion
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME atipicos)
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/atipicos" RENAME copyright)

add_custom_target(uninstall
    COMMAND "${CMAKE_COMMAND}" "-DMANIFIESTO=${PROJECT_BINARY_DIR}/install_manifest.txt"
        -P "${PROJECT_SOURCE_DIR}/cmake/desinstala.cmake"
    COMMENT "Taking back what was installed"
    VERBATIM)

include(cmake/Paquete.cmake)
if(ATIPICOS_GUI) # what turns the manual into pages for a browser is part of Qt
    add_subdirectory(docs/manual)
    add_dependencies(documentos manual_html)
endif()
