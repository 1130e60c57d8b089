#!/usr/bin/env bash
# demo/capturas.sh PROGRAM FOLDER: pictures of every window, light and dark, on a screen of 1024 by 768, on one of
# 1920 by 1080, and on that one at twice the size. Needs Xvfb; without a window manager, because pictures show windows.
set -euo pipefail
programa=$1
carpeta=$2
toma() {
    local medida=$1 escala=$2 nombre=$3
    for tema in claro oscuro; do
        opciones=()
        [ "$tema" = claro ] || opciones=(--oscuro)
        QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$escala xvfb-run --auto-servernum --server-args="-screen 0 ${medida}x24" \
            "$programa" "$carpeta/$nombre-$tema" "${opciones[@]}"
    done
}
toma 1024x768 1 1024x768
toma 1920x1080 1 1920x1080
toma 1920x1080 2 1920x1080-200
