#!/usr/bin/env bash
# tests/app/pantalla.sh PROGRAM: with real X keys, a charge is typed into the started program, found in its browser,
# changed and deleted, and the databases are compared after each step. Ends with 77 (skipped) where Xvfb, xdotool or sqlite3 is not installed.
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
no_esta() { ! xdotool search --onlyvisible --name "$1"; }
# Closes the editor, which has the keys.
sale() {
    teclas alt+s
    espera "the end of the editor" no_esta "^Reclamaciones a Proveedores"
}
teclas() { xdotool key --delay 30 "$@"; }
escribe() { xdotool type --delay 30 "$1"; }

Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$carpeta/pantalla" >/dev/null 2>&1 &
espera "the X server" test -s "$carpeta/pantalla"
DISPLAY=:$(cat "$carpeta/pantalla")
export DISPLAY

"$programa" crear --datos "$carpeta/datos" >/dev/null
"$programa" --datos "$carpeta/datos" --empresa 1 --usuario 1 2>/dev/null &

en_orvalin() { sqlite3 "$carpeta/datos/empresa.db" "$1"; }
# Compares what a query gives with what it should.
exige() {
    local que=$1 debido=$2 hay=$3
    [ "$hay" = "$debido" ] && echo "$que: $hay" && return 0
    echo "$que: «$hay», and it should be «$debido»" >&2
    exit 1
}
acepta_previsiones() {
    ventana "^Previsiones de Pago"
    teclas F9
    ventana "Atención"
    teclas Return
    ventana "^Seleccione Destino"
    teclas Escape
    sleep 0.3
}
cargos="SELECT Codigo, Proveedor, Importe, Asiento FROM Proveedores_Cargos_Atipicos"
lineas="SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"
asientos="SELECT COUNT(*) FROM Bexmor_Asientos"

# A new charge in the editor.
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
acepta_previsiones
codigo=$(en_orvalin "SELECT Codigo FROM Proveedores_Cargos_Atipicos")
exige "recorded" "$codigo|104|67.59|1" "$(en_orvalin "$cargos")"
ventana "^Reclamaciones a Proveedores"
sale

# The browser: search, lines, the next one (there is none), change it, delete it.
ventana "^Cargos atípicos"
teclas ctrl+b
ventana "^Visor de Atípicos"
teclas Return Return
sleep 0.5
teclas Return
sleep 0.3
teclas Escape
teclas Down
teclas alt+m
ventana "Atención"
teclas alt+s
ventana "^Reclamaciones a Proveedores - $codigo"
escribe 103
teclas Return
sleep 0.3
teclas alt+a
acepta_previsiones
exige "changed" "$codigo|103|67.59|2" "$(en_orvalin "$cargos")"
exige "lines" 1 "$(en_orvalin "$lineas")"
ventana "^Reclamaciones a Proveedores"
sale
ventana "^Visor de Atípicos"
teclas alt+e
ventana "Atención"
teclas alt+s
sleep 1
exige "deleted" "0" "$(en_orvalin "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos")"
exige "lines deleted" "0" "$(en_orvalin "$lineas")"
exige "entries that stay in the accounting" "2" "$(sqlite3 "$carpeta/datos/empresa.db" "$asientos")"
"$programa" verificar --datos "$carpeta/datos"
