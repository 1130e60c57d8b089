#!/usr/bin/env bash
# The component's windows on Windows, as far as Wine is Windows: registered, opened by their launchers, a charge keyed in
# with real keys and stored, the browser that shows it.
#     VentanasConWine.sh HOST.exe COMPONENT.dll TEST.dll
# With CAPTURA=FOLDER a picture of each window is left there.
set -euo pipefail
for hace_falta in wine openbox; do
    command -v "$hace_falta" >/dev/null || { echo "skipped: $hace_falta is not installed"; exit 77; }
done
. "$(dirname "${BASH_SOURCE[0]}")/../app/pantalla_comun.sh"
componente=$2 prueba=$3
export TMPDIR=$carpeta WINEPREFIX="$carpeta/prefijo" WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe,winedbg.exe=d"
trap 'wineserver -k 2>/dev/null || true; kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$carpeta"' EXIT
wine() { if [ -x /usr/lib/wine/wine64 ]; then /usr/lib/wine/wine64 "$@"; else command wine "$@"; fi; }
captura() { [ -z "${CAPTURA:-}" ] || import -window root "$CAPTURA/$1.png"; }

openbox >/dev/null 2>&1 &
wine wineboot --init >/dev/null 2>&1
cp "$programa" "$componente" "$prueba" "$carpeta/"
cd "$carpeta"
wine regsvr32 /s "$(basename "$componente")"
wine regsvr32 /s "$(basename "$prueba")"
# Wine 8 looks classes up among those of the machine only, not among those of the user, as Windows does first.
wine reg copy 'HKCU\Software\Classes' 'HKLM\Software\Classes' /s /f >/dev/null

wine "$(basename "$programa")" muestra.db frmclsCompras_Atipicos frmclsComprasAtipVisor frmclsCopiasImpresion >dicho 2>&1 &
ventana "^Reclamaciones a Proveedores"
captura editor_vacio
escribe 3
teclas Return
escribe 106
teclas Return
escribe 09102026
teclas Return
escribe "Roto y mojado"
teclas Return space Return
escribe 1003
teclas Return Return
escribe "caja 4"
teclas Return
escribe 12,485
teclas Return
escribe 9,75
captura editor
teclas Return Return
teclas alt+a
ventana "^Previsiones de Pago"
captura previsiones
teclas F9
ventana "Atención"
captura aviso
teclas Return
ventana "^Seleccione Destino"
teclas Escape
sleep 0.3
ventana "^Reclamaciones a Proveedores"
sale
ventana "^Visor de Atípicos"
captura visor
teclas Escape
ventana "^Seleccione Destino"
captura dispositivos
teclas Escape
espera "the end of the host" grep -aq '^línea: ' dicho
tr -d '\r' <dicho
exige "closed" 3 "$(grep -ac '^cerrada: ' dicho)"
exige "the charge" "AT260001 3 106 " "$(tr -d '\r' <dicho | sed -n 's/^guardado: //p' | cut -c1-15)"
