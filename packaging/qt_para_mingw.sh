#!/usr/bin/env bash
# Qt for Windows, as far as the component's windows need it, made from Debian's source package by mingw-w64:
#     packaging/qt_para_mingw.sh FOLDER
# Afterwards the folder holds it, as static libraries, and cmake is given it as ATIPICOS_QT_WINDOWS (docs/integracion.md).
# Takes most of an hour on two processors and 3 GB; interrupted, it goes on where it was. Quick when it is there already.
# Needs the packages of `packaging/dependencias.sh ventanas ci`: Qt's own tools are those of this system, so that both
# must be of the same version.
set -euo pipefail
mkdir -p "$1"
carpeta=$(cd "$1" && pwd)
raiz=$(cd "$(dirname "$0")/.." && pwd)
[ -s "$carpeta/lib/cmake/Qt6PrintSupport/Qt6PrintSupportConfig.cmake" ] && exit 0

trabajo="$carpeta/trabajo"
if [ ! -d "$trabajo/fuente" ]; then
    rm -rf "$trabajo"
    mkdir -p "$trabajo/listas/partial" "$trabajo/parcial"
    cd "$trabajo"
    . /etc/os-release
    echo "deb-src http://deb.debian.org/debian $VERSION_CODENAME main" >fuentes.list
    fuentes=(-qq -o "Dir::Etc::sourcelist=$trabajo/fuentes.list" -o Dir::Etc::sourceparts=-
        -o "Dir::State::lists=$trabajo/listas" -o APT::Sandbox::User=root)
    apt-get "${fuentes[@]}" update
    apt-get "${fuentes[@]}" --download-only source qt6-base
    tar xf qt6-base_*.orig.tar.xz --strip-components=1 -C parcial
    mv parcial fuente
    rm -f qt6-base_*
fi

# What the component uses nothing of. Of the styles Fusion stays, which it looks the same with everywhere; of the ways to
# draw, the processor's.
no=(colordialog columnview concurrent datawidgetmapper dbus dial direct2d direct2d1_1 dockwidget etw fontdialog freetype gif
    glib graphicseffect graphicsview hijricalendar ico icu jalalicalendar jpeg lcdnumber lttng mdiarea network opengl
    printpreviewdialog sql style_windowsvista testlib textmarkdownreader textmarkdownwriter textodfwriter undocommand
    undoview vulkan wizard xml zstd)
fuera=()
for una in "${no[@]}"; do fuera+=("-DFEATURE_$una=OFF"); done
if [ ! -s "$trabajo/construida/build.ninja" ]; then
    rm -rf "$trabajo/construida"
    cmake -G Ninja -S "$trabajo/fuente" -B "$trabajo/construida" -DCMAKE_TOOLCHAIN_FILE="$raiz/cmake/mingw.cmake" \
        -DCMAKE_INSTALL_PREFIX="$carpeta" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake" \
        -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE="-O1 -DNDEBUG" \
        -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
        -DINPUT_opengl=no -DINPUT_pcre=qt -DINPUT_libpng=qt -DINPUT_harfbuzz=qt -DINPUT_freetype=no -DINPUT_libjpeg=no \
        -DINPUT_doubleconversion=qt "${fuera[@]}" >"$trabajo/registro" 2>&1 || {
        tail "$trabajo/registro" >&2
        exit 1
    }
fi
nice -n 19 ninja -C "$trabajo/construida" "-j${TAREAS:-$(nproc)}"
ninja -C "$trabajo/construida" install >/dev/null
rm -rf "$trabajo"
