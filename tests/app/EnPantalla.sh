#!/usr/bin/env bash
# tests/app/EnPantalla.sh SCRIPT PROGRAM: runs a script of this folder that drives the started program on a screen of its
# own and reads it through AT-SPI. Ends with 77 (skipped) where something for that is not installed.
set -euo pipefail
for hace_falta in Xvfb xdotool openbox dbus-run-session; do
    command -v "$hace_falta" >/dev/null || { echo "skipped: $hace_falta is not installed"; exit 77; }
done
# Debian's own Python: it has the module that Debian installs.
python=/usr/bin/python3
"$python" -c 'import pyatspi' 2>/dev/null || { echo "skipped: python3-pyatspi is not installed"; exit 77; }
[ -e /usr/share/dbus-1/services/org.a11y.Bus.service ] || { echo "skipped: at-spi2-core is not installed"; exit 77; }

export PYTHONDONTWRITEBYTECODE=1 XDG_RUNTIME_DIR
XDG_RUNTIME_DIR=$(mktemp -d)
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
# The bus of Debian's settings listens in /tmp whatever TMPDIR says, and would leave its socket there when it is killed.
bus=$XDG_RUNTIME_DIR/session.conf
sed "s#<listen>.*</listen>#<listen>unix:dir=$XDG_RUNTIME_DIR</listen>#" /usr/share/dbus-1/session.conf >"$bus"
# The bus says on its standard error whom it starts. A pipe, which the shell waits for: what the script says at its end
# is why it failed.
{ dbus-run-session --config-file="$bus" -- "$python" "$(dirname "$0")/$1" "$2" 2>&1 >&3 |
    { grep -v -e '^dbus-daemon' -e '^SpiRegistry' >&2 || true; }; } 3>&1
