#!/usr/bin/env bash
# The host in Python, against the component as it was built: AnfitrionPython_test.sh HOST LIBRARY
set -euo pipefail
anfitrion=$1 biblioteca=$2
python3 -c 'import ctypes, sqlite3; raise SystemExit(sqlite3.sqlite_version_info < (3, 31))' 2>/dev/null \
    || { echo "skipped: no python3 with ctypes and an SQLite of 3.31 or later"; exit 77; }
carpeta=$(mktemp -d)
trap 'rm -rf "$carpeta"' EXIT
export PYTHONDONTWRITEBYTECODE=1

cat >"$carpeta/salida" <<'FIN'
Código que tendría: AT250001
Códigos tomados: AT250001 AT250002
Antes de insertar existe: False
Insertar con error: False
Después existe: True
Línea: | 2001 | Queso añejo con grietas | 12.5 | 9.75 | caja 3
Línea: | 2002 | Portes | 1 | 28.375 | 
Guardado: | AT250002 | 03/02/2025 | 03/02/2025 17:40:09 | 150.25 | 6.5 | 9.766 | 1 | Queso añejo con grietas
Guardado: | AT250002 | 03/02/2025 | 03/02/2025 17:40:09 | 150.25 | 6.5 | 9.766 | 2 | Portes
La línea 3: error 5 de QVORComprasAtip: Llamada a procedimiento o argumento no válidos
Un miembro que no hay: error -2147352570 de automatización: resultado 0x80020006
Un código de 1999: error 1 de QVORComprasAtip:DevCodigo: Se necesita la fecha para devolver el código de cargo/abono
Sin la tabla: error -2147217900 de SQLite: no such table: Proveedores_Cargos_Atipicos
Insertar sin la tabla con error: True
Se puede descargar: True
FIN
echo "clsAtipico:Insertar: no such table: Proveedores_Cargos_Atipicos" >"$carpeta/avisos"

estado=0
python3 "$anfitrion" "$biblioteca" >"$carpeta/salida.suya" 2>"$carpeta/avisos.suyos" || estado=$?
diff "$carpeta/salida" "$carpeta/salida.suya"
diff "$carpeta/avisos" "$carpeta/avisos.suyos"
[ "$estado" = 0 ] || { echo "terminó con $estado" >&2; exit 1; }
