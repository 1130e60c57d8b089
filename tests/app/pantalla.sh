#!/usr/bin/env bash
# tests/app/pantalla.sh PROGRAM: types a charge into the started program with real X keys and finds it, with its entry,
# in the database. Ends with 77 (skipped) where Xvfb, xdotool or sqlite3 is not installed.
set -euo pipefail
programa=$1
for hace_falta in Xvfb xdotool sqlite3; do
    command -v "$hace_falta" >/dev/null || { echo "skipped: $hace_falta is not installed"; exit 77; }
done

carpeta=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$carpeta"' EXIT
export HOME=$carpeta XDG_CONFIG_HOME=$carpeta XDG_RUNTIME_DIR=$carpeta LC_ALL=C.UTF-8
unset QT_QPA_PLATFORM WAYLAND_DISPLAY

# Waits until a command succeeds; says what it waited for when it never does.
espera() {
    local que=$1
    shift
    for _ in $(seq 200); do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    echo "never came: $que" >&2
    exit 1
}
# A screen without a window manager: whoever is to get the keys has to be told.
ventana() {
    espera "the window «$1»" xdotool search --onlyvisible --name "$1"
    xdotool windowfocus --sync "$(xdotool search --onlyvisible --name "$1" | tail -1)"
    sleep 0.3
}
teclas() { xdotool key --delay 30 "$@"; }
escribe() { xdotool type --delay 30 "$1"; }

Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$carpeta/pantalla" >/dev/null 2>&1 &
espera "the X server" test -s "$carpeta/pantalla"
DISPLAY=:$(cat "$carpeta/pantalla")
export DISPLAY

"$programa" crear --datos "$carpeta/datos" >/dev/null
"$programa" --datos "$carpeta/datos" --empresa 1 --usuario 1 2>/dev/null &

ventana "^Cargos atípicos"
teclas Return
ventana "^Reclamaciones a Proveedores"
teclas Return
escribe 104
teclas Return Return Return Return
escribe 1006
teclas Return Return Return
escribe 12
teclas Return
escribe 5,6325
teclas Return Return
teclas alt+a
ventana "^Previsiones de Pago"
teclas F9
ventana "Atención"
teclas Return
ventana "^Seleccione Destino"
teclas Escape

cargo=$(sqlite3 "$carpeta/datos/orvalin.db" "SELECT Codigo, Proveedor, Importe, Asiento FROM Proveedores_Cargos_Atipicos")
asiento=$(sqlite3 "$carpeta/datos/bexmor.db" "SELECT COUNT(*), SUM(Debe) - SUM(Haber) FROM Apuntes WHERE Asiento = 1")
echo "cargo: $cargo   asiento: $asiento"
[[ "$cargo" == AT*"|104|67.59|1" && "$asiento" =~ ^5\|(0|0\.0|-?[0-9.]+e-1[0-9])$ ]]
"$programa" verificar --datos "$carpeta/datos"
