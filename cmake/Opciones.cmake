# The flags of every target, in one interface target.
add_library(atipicos_opciones INTERFACE)
target_compile_features(atipicos_opciones INTERFACE cxx_std_20)
target_include_directories(atipicos_opciones INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(atipicos_opciones INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wcast-align -Wconversion -Wduplicated-cond -Wextra-semi -Wformat=2 -Wlogical-op -Wnon-virtual-dtor
    -Wold-style-cast -Woverloaded-virtual -Wshadow -Wsign-conversion -Wuseless-cast
    # GCC 12 sees overlaps and overflows in std::string that are not there (bug 105651); the second only when it
    # optimises, by a name that other compilers do not know.
    -Wno-restrict "$<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>"
    # The paths in error places are those of the project, whoever builds it and wherever.
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
# GCC spends an eighth of its time looking for memory to give back, from 128 MB on; none of the sources needs a gigabyte.
target_compile_options(atipicos_opciones INTERFACE "$<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=524288>")
if(WIN32)
    # The system's interfaces have no virtual destructors: objects are destroyed by their last Release.
    target_compile_options(atipicos_opciones INTERFACE -Wno-non-virtual-dtor)
endif()
find_program(ATIPICOS_LLD ld.lld)
if(ATIPICOS_LLD AND NOT WIN32) # links in a quarter of the time
    target_link_options(atipicos_opciones INTERFACE -fuse-ld=lld)
endif()
if(NOT WIN32 AND NOT ATIPICOS_SANITIZADORES AND NOT ATIPICOS_FUZZ)
    # What the distribution hardens its own packages with (dpkg-buildflags, hardening=+all). Debug builds are left as
    # they are written: without optimisation the checked functions do not exist. Executables are position
    # independent by the compiler's own choice, which the test of the package sees to.
    set(optimizado "$<NOT:$<CONFIG:Debug>>")
    target_compile_options(atipicos_opciones INTERFACE "$<${optimizado}:-fstack-protector-strong>")
    target_compile_definitions(atipicos_opciones INTERFACE "$<${optimizado}:_FORTIFY_SOURCE=2>")
    target_link_options(atipicos_opciones INTERFACE -Wl,-z,relro -Wl,-z,now)
endif()
if(ATIPICOS_SANITIZADORES)
    target_compile_options(atipicos_opciones INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(atipicos_opciones INTERFACE -fsanitize=address,undefined)
endif()
if(ATIPICOS_FUZZ)
    target_compile_options(atipicos_opciones INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
        -Wno-error -Wno-unknown-warning-option)
    target_link_options(atipicos_opciones INTERFACE -fsanitize=address,undefined)
endif()

# One static library for one folder: atipicos_biblioteca(<name> SOURCES … USES …). What nearly all of them begin with is
# compiled once, with the lowest one, where the tests are built; not where it is optimised, because GCC forgets of headers
# compiled before that they are the system's, and complains of what it would overlook. The build for Windows does without
# too, and so sees what a source forgets to include.
function(atipicos_biblioteca nombre)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(${nombre} STATIC ${ARG_SOURCES})
    target_link_libraries(${nombre} PUBLIC atipicos_opciones ${ARG_USES})
    if(CMAKE_BUILD_TYPE STREQUAL "Debug" AND nombre STREQUAL "atipicos_runtime")
        target_precompile_headers(${nombre} PRIVATE
            <algorithm> <chrono> <filesystem> <functional> <iostream> <map> <memory> <optional> <string> <vector>)
    elseif(CMAKE_BUILD_TYPE STREQUAL "Debug")
        target_precompile_headers(${nombre} REUSE_FROM atipicos_runtime)
    endif()
    set_target_properties(${nombre} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()
