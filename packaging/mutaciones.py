#!/usr/bin/env python3
"""Breaks the core on purpose, one operator at a time, and asks the tests whether they notice.

    packaging/mutaciones.py [--cuantas N] [--semilla S] [--carpeta FOLDER]...

Works on a copy of HEAD in build/mutaciones. Of all mutants of a folder N are drawn by the seed, built, and judged by
the unit tests of that folder. Prints each survivor with its line, and the count. Each mutant takes some seconds.
"""
import argparse
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

RAIZ = pathlib.Path(__file__).resolve().parent.parent
COPIA = RAIZ / "build" / "mutaciones" / "fuente"
CONSTRUIDA = RAIZ / "build" / "mutaciones" / "construida"

# The tests that judge a folder.
PRUEBAS = {
    "runtime": ["Celdas", "Currency", "Date", "Decimal", "Error", "Formato", "MotivoSistema", "Redondeo", "SalidaSegura",
                "Variant"],
    "context": ["claves", "modComun", "Transaccion", "trap"],
    "charges": ["Impuesto", "clsAtipico_Devuelve_Codigo", "clsAtipico_Lineas", "clsAtipico"],
    "posting": ["Calendario", "EdicionPrevisiones", "GenerarAsiento", "GenerarPrev"],
    "editor": ["CargoAbierto", "EdicionAtipico", "GuardarAtipico"],
    "browser": ["ColumnasLista", "DetalleAtipico", "EliminarAtipico", "ExportarLista", "LibroXlsx", "ListaAtipicos"],
    "engines/sql": ["Catalogo", "Contrato", "Fechas", "PostgresqlConnection", "Reescritura", "Servidor",
                    "SqliteConnection", "SqliteRecordset", "Tokens"],
}

# What is looked for in the code, and what takes its place.
CAMBIOS = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r"(?<=\w) \+ (?=\w)", " - "), (r"(?<=\w) - (?=\w)", " + "),
    (r"(?<=\w) \* (?=\w)", " / "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\+\+", "--"), (r" \+= ", " -= "), (r" -= ", " += "), (r"(?<![\w.'\"])0(?![\w.'\"])", "1"),
    (r"(?<![\w.'\"])1(?![\w.'\"])", "2"), (r"\bbreak;", "continue;"),
]


def ejecuta(orden, **mas):
    return subprocess.run(orden, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **mas)


def candidatas(carpeta):
    """(file, offset, end, replacement) of every place in the code, outside comments, texts and includes."""
    construidos = (CONSTRUIDA / "build.ninja").read_text()
    for fichero in sorted((COPIA / carpeta).glob("*.cpp")):
        if f"/{carpeta}/{fichero.name}" not in construidos:  # a window's
            continue
        lugar = 0
        for linea in fichero.read_text().splitlines(keepends=True):
            codigo = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + "\x00" * (len(m.group()) - 2) + '"', linea)
            codigo = codigo.split("//")[0]
            if not codigo.lstrip().startswith(("#", "template", "static_assert", "namespace")):
                for busca, pone in CAMBIOS:
                    for hallado in re.finditer(busca, codigo):
                        yield fichero, lugar + hallado.start(), lugar + hallado.end(), pone
            lugar += len(linea)


def prepara():
    COPIA.mkdir(parents=True, exist_ok=True)
    archivo = subprocess.run(["git", "archive", "HEAD"], cwd=RAIZ, stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["tar", "-x"], cwd=COPIA, input=archivo, check=True)
    configura = ["cmake", *(["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []), "-G", "Ninja", "-S", str(COPIA), "-B", str(CONSTRUIDA), "-DCMAKE_BUILD_TYPE=Debug",
                 "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -Wno-error", "-DATIPICOS_GUI=OFF"]
    if ejecuta(configura).returncode != 0:
        sys.exit("cannot configure the copy")


def juzga(carpeta):
    """'no compila', 'muerto' or 'vivo'."""
    programa = "pruebas_" + carpeta.split("/")[0]
    if ejecuta(["ninja", "-C", str(CONSTRUIDA), "--quiet", programa]).returncode != 0:
        return "no compila"
    expresion = "^(" + "|".join(PRUEBAS[carpeta]) + ")_test$"
    orden = ["ctest", "--test-dir", str(CONSTRUIDA), "-R", expresion, "--timeout", "60", "--stop-on-failure", "-Q"]
    # Of the million statements thrown together at random a sample will do.
    entorno = {**os.environ, "ATIPICOS_TEXTOS_AL_AZAR": "20000"}
    return "vivo" if ejecuta(orden, env=entorno).returncode == 0 else "muerto"


def main():
    argumentos = argparse.ArgumentParser()
    argumentos.add_argument("--cuantas", type=int, default=12, help="mutants of each folder")
    argumentos.add_argument("--semilla", type=int, default=1)
    argumentos.add_argument("--carpeta", action="append", choices=PRUEBAS)
    opciones = argumentos.parse_args()
    prepara()
    cuenta = {"muerto": 0, "vivo": 0, "no compila": 0}
    for carpeta in opciones.carpeta or PRUEBAS:
        if juzga(carpeta) != "vivo":
            sys.exit(f"the tests of {carpeta} fail without any mutation")
        todas = list(candidatas(carpeta))
        random.Random(opciones.semilla).shuffle(todas)
        for fichero, desde, hasta, pone in todas[: opciones.cuantas]:
            entero = fichero.read_text()
            fichero.write_text(entero[:desde] + pone + entero[hasta:])
            veredicto = juzga(carpeta)
            fichero.write_text(entero)
            cuenta[veredicto] += 1
            if veredicto == "vivo":
                numero = entero.count("\n", 0, desde) + 1
                linea = entero.splitlines()[numero - 1].strip()
                print(f"{fichero.relative_to(COPIA)}:{numero}: «{entero[desde:hasta].strip()}» -> «{pone.strip()}» "
                      f"in: {linea}", flush=True)
        print(f"{carpeta}: {len(todas)} possible, {cuenta} so far", flush=True)
    juzgadas = cuenta["muerto"] + cuenta["vivo"]
    print(f"{cuenta['muerto']} of {juzgadas} mutants killed; {cuenta['no compila']} did not compile")


if __name__ == "__main__":
    main()
