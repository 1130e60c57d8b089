#!/usr/bin/env bash
# demo/capturas.sh PROGRAM FOLDER: pictures of every window, light and dark, on screens of 1024 by 768, 1366 by 768 and
# 1920 by 1080, and with everything twice as large on one of 1920 by 1080 and of 2732 by 1536. Ends with 1 when on any of
# them a window does not fit, or a text or a button is cut. Needs Xvfb; without a window manager, because pictures show
# windows.
# demo/capturas.sh PROGRAM --manual: takes the pictures of the manual anew (docs/manual/imagenes). Needs ImageMagick.
# demo/capturas.sh PROGRAM --leeme: the same for those of the README (docs/images).
set -euo pipefail
programa=$1
carpeta=$2
estado=0
toma() {
    local medida=$1 escala=$2 nombre=$3
    for tema in claro oscuro; do
        opciones=()
        [ "$tema" = claro ] || opciones=(--oscuro)
        mkdir -p "$carpeta/$nombre-$tema/ajustes" # none of the sizes that another screen has left
        XDG_CONFIG_HOME="$carpeta/$nombre-$tema/ajustes" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$escala \
            xvfb-run --auto-servernum --server-args="-screen 0 ${medida}x24" \
            "$programa" "$carpeta/$nombre-$tema" "${opciones[@]}" || estado=1
    done
}
# Few colours do for windows.
reduce() {
    convert "$1" +dither -colors "$3" -strip -define png:compression-level=9 "PNG8:$2"
    echo "$2"
}
# A session under a path that is to be seen in pictures: WIDTHxHEIGHT SCALE [--oscuro].
en_limpio() {
    rm -rf "$carpeta" && mkdir "$carpeta"
    HOME=$carpeta XDG_CONFIG_HOME=$carpeta QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$2 xvfb-run --auto-servernum \
        --server-args="-screen 0 ${1}x24" "$programa" "$carpeta" "${@:3}"
}
# Of each picture that the manual shows, the one that the session has taken under that name.
toma_manual() {
    local imagen
    en_limpio 1366x768 1
    sed -n '/ATIPICOS_IMAGENES$/,/)/{s/^ *\([a-z-]*\))*$/\1/p}' "$aqui/docs/manual/ficheros.cmake" | while read -r imagen; do
        reduce "$carpeta"/*[0-9]-"$imagen".png "$aqui/docs/manual/imagenes/$imagen.png" 128
    done
}
# Light ones as on a fine screen, dark ones as on a small one.
toma_leeme() {
    local imagen
    en_limpio 2732x1536 2
    for imagen in principal resumen manual editor-con-lineas; do
        reduce "$carpeta"/*[0-9]-$imagen.png "$aqui/docs/images/${imagen%-con-lineas}.png" 64
    done
    en_limpio 1366x768 1 --oscuro
    for imagen in principal resumen manual; do
        reduce "$carpeta"/*[0-9]-$imagen.png "$aqui/docs/images/$imagen-oscuro.png" 64
    done
}
if [ "$carpeta" = --manual ] || [ "$carpeta" = --leeme ]; then
    toma=toma_${carpeta#--}
    aqui=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
    carpeta=/tmp/atipicos
    trap 'rm -rf "$carpeta"' EXIT
    $toma
    exit
fi
toma 1024x768 1 1024x768
toma 1366x768 1 1366x768
toma 2732x1536 2 1366x768-200
toma 1920x1080 1 1920x1080
toma 1920x1080 2 1920x1080-200
exit $estado
