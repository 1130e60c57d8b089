#!/usr/bin/env bash
# tests/server/sobre_otra.sh PROGRAM: the window of each launcher stays above the plain X window that its host names as the
# owner, and a window that is not there is told. With CAPTURA=FOLDER a picture of each is left there.
set -euo pipefail
for hace_falta in Xvfb openbox xdotool xev xprop; do
    command -v "$hace_falta" >/dev/null || { echo "skipped: $hace_falta is not installed"; exit 77; }
done
programa=$1
carpeta=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$carpeta"' EXIT
export HOME=$carpeta XDG_CONFIG_HOME=$carpeta XDG_STATE_HOME=$carpeta/estado XDG_RUNTIME_DIR=$carpeta LC_ALL=C.UTF-8
export QVORCOMPRASATIP_AVISOS=consola TMPDIR=$carpeta
unset QT_QPA_PLATFORM WAYLAND_DISPLAY

# Waits until a command succeeds; says what it waits for, for whoever finds it waiting in vain.
espera() {
    echo "waiting for $1"
    shift
    until "$@" >/dev/null 2>&1; do sleep 0.05; done
}

# It stays when the last program on it is killed.
Xvfb -noreset -displayfd 3 -screen 0 1280x900x24 3>"$carpeta/pantalla" >/dev/null 2>&1 &
espera "the X server" test -s "$carpeta/pantalla"
DISPLAY=:$(cat "$carpeta/pantalla")
export DISPLAY

openbox >/dev/null 2>&1 &
xev -name "Ventana ajena" -geometry 1000x700+80+60 >/dev/null 2>&1 &
xev -name "Otra ventana" -geometry 1100x800+20+20 >/dev/null 2>&1 &
no_esta() { ! hay_ventana "$1"; }
tiene_las_teclas() { [ "$(xdotool getwindowfocus)" = "$1" ]; }
hay_ventana() { xdotool search --onlyvisible --name "$1"; }
espera "the window of the host" hay_ventana "^Ventana ajena"
duena=$(xdotool search --onlyvisible --name "^Ventana ajena" | tail -1)
espera "another window" hay_ventana "^Otra ventana"
otra=$(xdotool search --onlyvisible --name "^Otra ventana" | tail -1)

# The windows from the lowest to the highest.
apiladas() { for una in $(xprop -root _NET_CLIENT_LIST_STACKING | grep -o '0x[0-9a-f]*'); do echo $((una)); done; }
en_este_orden() { [ "$(apiladas | tr '\n' ' ')" = "$* " ]; }
es_duena() { [ $(("$(xprop -id "$1" WM_TRANSIENT_FOR | grep -o '0x[0-9a-f]*')")) = "$duena" ]; }

sobre() {
    local lanzador=$1 titulo=$2 sale=$3 form
    "$programa" "$lanzador" "$duena" >"$carpeta/dicho" 2>&1 &
    espera "the window of $lanzador" hay_ventana "$titulo"
    form=$(xdotool search --onlyvisible --name "$titulo" | tail -1)
    espera "the owner of $lanzador" es_duena "$form"
    xdotool windowraise "$otra"
    espera "the other window above both" en_este_orden "$duena" "$form" "$otra"
    xdotool windowraise "$duena"
    espera "$lanzador above the window that owns it" en_este_orden "$otra" "$duena" "$form"
    [ -z "${CAPTURA:-}" ] || import -window root "$CAPTURA/$lanzador.png"
    xdotool windowactivate "$form"
    espera "the keys to go to $lanzador" tiene_las_teclas "$form"
    xdotool key "$sale"
    espera "the end of $lanzador" no_esta "$titulo"
    espera "the end of its host" grep -q '^cerrada$' "$carpeta/dicho"
    echo "$lanzador: $(sort -u "$carpeta/dicho")"
}
sobre frmclsCompras_Atipicos "^Reclamaciones a Proveedores" alt+s
sobre frmclsComprasAtipVisor "^Visor de Atípicos" Escape
sobre frmclsCopiasImpresion "^Seleccione Destino" Escape

"$programa" frmclsCompras_Atipicos $((duena + 12345)) >"$carpeta/dicho" 2>&1
grep -q '^frmclsCompras_Atipicos:Show: \[[0-9]*\] No hay ninguna ventana con el identificador' "$carpeta/dicho" || {
    cat "$carpeta/dicho" >&2
    exit 1
}
echo "told: $(grep -a ':Show:' "$carpeta/dicho")"
