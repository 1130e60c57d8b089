#!/usr/bin/env bash
# demo/capturas.sh PROGRAM FOLDER: pictures of every window, light and dark, at 100 % and 200 %
set -euo pipefail
programa=$1
carpeta=$2
for escala in 1 2; do
    QT_SCALE_FACTOR=$escala "$programa" "$carpeta/claro-${escala}00"
    QT_SCALE_FACTOR=$escala "$programa" "$carpeta/oscuro-${escala}00" --oscuro
done
