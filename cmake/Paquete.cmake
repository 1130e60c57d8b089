# The Debian package: what a distribution asks of one beside the installed files, and what makes it.
execute_process(COMMAND date --utc --rfc-email "--date=${fecha_de_version} 12:00"
    OUTPUT_VARIABLE fecha_de_version_larga OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_PACKAGE_CONTACT "The authors of QVORComprasAtip <qvorcomprasatip@users.noreply.github.com>")

# Distributions want manual pages and changes compressed, and the same bytes from the same sources.
find_program(ATIPICOS_GZIP gzip REQUIRED)
function(comprime de a)
    add_custom_command(OUTPUT "${a}"
        COMMAND "${ATIPICOS_GZIP}" -9nc "${de}" > "${a}"
        DEPENDS "${de}"
        VERBATIM)
endfunction()
set(pagina "${PROJECT_BINARY_DIR}/atipicos.1.gz")
set(cambios "${PROJECT_BINARY_DIR}/changelog.gz")
configure_file(packaging/debian/changelog.in changelog @ONLY)
configure_file(packaging/escritorio/atipicos.metainfo.xml.in io.github.qvorcomprasatip.atipicos.metainfo.xml @ONLY)
comprime("${PROJECT_SOURCE_DIR}/packaging/escritorio/atipicos.1" "${pagina}")
comprime("${PROJECT_BINARY_DIR}/changelog" "${cambios}")
add_custom_target(documentos ALL DEPENDS "${pagina}" "${cambios}")
install(FILES "${pagina}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${cambios}" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/atipicos")
install(FILES "${PROJECT_BINARY_DIR}/io.github.qvorcomprasatip.atipicos.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")

set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME atipicos)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "charges raised against suppliers, recorded and posted")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "A component that records claims against suppliers, numbers them and posts\n them in the accounts, for host applications in any language, and a program\n that uses it.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils) # hands documents to the mail program
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers") # the linker's cache
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# cpack by itself builds nothing, and ./run only what it runs.
set(CPACK_INSTALL_COMMANDS
    "\"${CMAKE_COMMAND}\" --build \"${PROJECT_BINARY_DIR}\" --target documentos muestra QVORComprasAtip")

# The sources in one file: packaging/fuente.sh, which gives it a folder with nothing else in it.
set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME "atipicos-${PROJECT_VERSION}")
set(CPACK_SOURCE_IGNORE_FILES "/build/")
include(CPack)
