#!/usr/bin/env bash
# demo/capturas.sh PROGRAM FOLDER: pictures of every window, light and dark, on a screen of 1024 by 768, on one of
# 1920 by 1080, and on that one at twice the size. Needs Xvfb; without a window manager, because pictures show windows.
# demo/capturas.sh PROGRAM --manual: takes the pictures of the manual anew (docs/manual/imagenes). Needs ImageMagick.
set -euo pipefail
programa=$1
carpeta=$2
toma() {
    local medida=$1 escala=$2 nombre=$3
    for tema in claro oscuro; do
        opciones=()
        [ "$tema" = claro ] || opciones=(--oscuro)
        mkdir -p "$carpeta/$nombre-$tema/ajustes" # none of the sizes that another screen has left
        XDG_CONFIG_HOME="$carpeta/$nombre-$tema/ajustes" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$escala \
            xvfb-run --auto-servernum --server-args="-screen 0 ${medida}x24" \
            "$programa" "$carpeta/$nombre-$tema" "${opciones[@]}"
    done
}
# Of each picture that the manual shows, the one that the session has taken under that name; few colours do for windows.
toma_manual() {
    local aqui destino imagen
    aqui=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
    destino=$aqui/docs/manual/imagenes
    carpeta=/tmp/atipicos # it is to be seen in a picture
    mkdir "$carpeta"
    trap 'rm -rf "$carpeta"' EXIT
    HOME=$carpeta XDG_CONFIG_HOME=$carpeta QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 xvfb-run --auto-servernum \
        --server-args="-screen 0 1366x768x24" "$programa" "$carpeta"
    sed -n '/ATIPICOS_IMAGENES$/,/)/{s/^ *\([a-z-]*\))*$/\1/p}' "$aqui/docs/manual/ficheros.cmake" | while read -r imagen; do
        convert "$carpeta"/*[0-9]-"$imagen".png +dither -colors 128 -strip -define png:compression-level=9 \
            "PNG8:$destino/$imagen.png"
        echo "$destino/$imagen.png"
    done
}
if [ "$carpeta" = --manual ]; then
    toma_manual
    exit
fi
toma 1024x768 1 1024x768
toma 1920x1080 1 1920x1080
toma 1920x1080 2 1920x1080-200
