#!/usr/bin/env bash
# The component on Windows, as far as Wine is Windows: registered, driven by a script and by a program, taken out again.
#     ConWine.sh COMPONENT.dll TEST.dll CLIENT.exe SCRIPT.vbs TYPES.exe [TYPES.tlb]
# Without the type library that the .idl becomes, its types are not compared.
set -euo pipefail
if ! command -v wine >/dev/null; then
    echo "Omitida: Wine no está instalado (apt-get install wine wine64)."
    exit 77
fi
componente=$1 prueba=$2 cliente=$3 guion=$4 comparador=$5 tipos=${6:-}

carpeta=$(mktemp -d)
export TMPDIR=$carpeta # Wine's server leaves its folder there
export WINEPREFIX="$carpeta/prefijo" WINEDEBUG=-all WINEARCH=win64 QVORCOMPRASATIP_AVISOS=consola
# No debugger that waits for a minute after a crash, no menus, no browsers, and nothing on a display.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe,winedbg.exe=d"
unset DISPLAY WAYLAND_DISPLAY
termina() {
    wineserver -k 2>/dev/null || true
    rm -rf "$carpeta"
}
trap termina EXIT

# Debian's `wine` says at each start that 32-bit programs will not run; none is run here.
wine() { if [ -x /usr/lib/wine/wine64 ]; then /usr/lib/wine/wine64 "$@"; else command wine "$@"; fi; }

wine wineboot --init >/dev/null 2>&1
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
cp "$componente" "$prueba" "$cliente" "$guion" "$carpeta/"
cd "$carpeta"
componente=$(basename "$componente") prueba=$(basename "$prueba")

registrado() { wine reg query 'HKCU\Software\Classes\QVORComprasAtip.clsAtipico\CLSID' >/dev/null 2>&1; }

wine regsvr32 /s "$componente"
wine regsvr32 /s "$prueba"
registrado || { echo "no se registró" >&2; exit 1; }

# Wine 8 looks classes up among those of the machine only, not among those of the user, as Windows does first.
wine reg copy 'HKCU\Software\Classes' 'HKLM\Software\Classes' /s /f >/dev/null

# The script host ends with 0 whatever happens: what counts is its last line.
wine cscript //nologo "$(basename "$guion")" 2>&1 | tr -d '\r' | tee guion.txt
grep -aqE '^guion: [1-9][0-9]* comprobaciones bien, 0 mal$' guion.txt
wine "$(basename "$cliente")" cliente.db | tr -d '\r' | tee cliente.txt
grep -aqE '^cliente: [1-9][0-9]* comprobaciones bien, 0 mal$' cliente.txt
if [ -n "$tipos" ]; then
    cp "$comparador" "$tipos" .
    wine "$(basename "$comparador")" "$(basename "$tipos")" | tr -d '\r' | tee tipos.txt
    grep -aqE '^tipos: [1-9][0-9]* comprobaciones bien, 0 mal$' tipos.txt
else
    echo "tipos: omitidos, porque no está instalado lo que compila el .idl (apt-get install mingw-w64-tools libwine-dev)"
fi

wine regsvr32 /s /u "$componente"
if registrado || wine reg query 'HKCU\Software\Classes\CLSID' /s 2>/dev/null | grep QVORComprasAtip >/dev/null; then
    echo "queda algo en el registro" >&2
    exit 1
fi
echo "registro: puesto y quitado"
