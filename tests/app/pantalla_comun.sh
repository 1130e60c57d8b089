# What the scripts of this folder that drive the started program share: sourced, with the program as $1. A screen of
# their own, real X keys, a home of their own that is removed with everything in it. Ends with 77 (skipped) where Xvfb,
# xdotool or sqlite3 is not installed.
programa=$1
for hace_falta in Xvfb xdotool sqlite3; do
    command -v "$hace_falta" >/dev/null || { echo "skipped: $hace_falta is not installed"; exit 77; }
done

carpeta=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$carpeta"' EXIT
export HOME=$carpeta XDG_CONFIG_HOME=$carpeta XDG_STATE_HOME=$carpeta/estado XDG_RUNTIME_DIR=$carpeta LC_ALL=C.UTF-8
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
escribe() { xdotool type --delay 30 -- "$1"; }

# It stays when the last program on it is killed.
Xvfb -noreset -displayfd 3 -screen 0 1280x900x24 3>"$carpeta/pantalla" >/dev/null 2>&1 &
espera "the X server" test -s "$carpeta/pantalla"
DISPLAY=:$(cat "$carpeta/pantalla")
export DISPLAY

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
