# The version and its day: those of the newest one that CHANGELOG.md tells of, and written nowhere else.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md")
file(STRINGS CHANGELOG.md ultima ENCODING UTF-8 LIMIT_COUNT 1 REGEX "^## \\[[0-9]")
if(NOT ultima MATCHES "^## \\[([0-9]+\\.[0-9]+\\.[0-9]+)\\] – ([0-9]+-[0-9]+-[0-9]+)$")
    message(FATAL_ERROR "CHANGELOG.md: «${ultima}» is not «## [1.2.3] – 2026-12-31»")
endif()
set(version ${CMAKE_MATCH_1})
set(fecha_de_version ${CMAKE_MATCH_2})
