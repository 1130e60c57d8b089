#!/usr/bin/env python3
"""Breaks the program on purpose, one place at a time, and asks the tests whether they notice.

    packaging/mutaciones.py [--cuantas N] [--semilla S] [--carpeta FOLDER]...
    packaging/mutaciones.py [--cuantas N] [--semilla S] --ventanas [--formulario FORM]...

Works on a copy of HEAD in build/mutaciones. Of all mutants of a folder, or of a form, N are drawn by the seed, built,
and judged: a folder of the core by its unit tests, a form by the tests of windows of its folder. In the core an operator
or a constant changes; in a form a call is left out too, because forms are mostly calls. Prints each survivor with its
line, and the count. Each mutant takes some seconds.
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
CONSTRUIDA_CON_VENTANAS = RAIZ / "build" / "mutaciones" / "ventanas"

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

# The sources of windows, each judged by all tests of windows of its folder.
FORMULARIOS = [
    "browser/ExportarVisorQt", "browser/frmCompras_Atipicos_Visor", "browser/frmDetalleAtipico",
    "browser/RejillasVisorQt", "context/frmclsComprasAtipVisor", "context/frmclsCompras_Atipicos", "context/frmMsg",
    "editor/frmCompras_Atipicos", "editor/frmCompras_Atipicos_Linea", "editor/frmEditor_Comentarios",
    "editor/RejillaAtipicoQt", "posting/frmCompras_Atipicos_Contabilizar", "printing/clsView",
    "printing/frmclsCopiasImpresion", "printing/frmImpresora", "printing/frmView",
]

# What is looked for in the code, and what takes its place.
CAMBIOS = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r"(?<=\w) \+ (?=\w)", " - "), (r"(?<=\w) - (?=\w)", " + "),
    (r"(?<=\w) \* (?=\w)", " / "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\+\+", "--"), (r" \+= ", " -= "), (r" -= ", " += "), (r"(?<![\w.'\"])0(?![\w.'\"])", "1"),
    (r"(?<![\w.'\"])1(?![\w.'\"])", "2"), (r"\bbreak;", "continue;"),
]
# A statement of one line that is nothing but a call.
LLAMADA = (r"(?<=^)\s+(?!return|throw|case|using|connect)[\w:]+(?:(?:->|\.)\w+|\([^()]*\))*\(.*\);$", ";")


def ejecuta(orden, **mas):
    return subprocess.run(orden, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **mas)


def candidatas(fichero, cambios):
    """(file, offset, end, replacement) of every place in the code, outside comments, texts and includes."""
    lugar = 0
    for linea in fichero.read_text().splitlines(keepends=True):
        codigo = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + "\x00" * (len(m.group()) - 2) + '"', linea)
        codigo = codigo.split("//")[0]
        if not codigo.lstrip().startswith(("#", "template", "static_assert", "namespace")):
            for busca, pone in cambios:
                for hallado in re.finditer(busca, codigo.rstrip("\n")):
                    yield fichero, lugar + hallado.start(), lugar + hallado.end(), pone
        lugar += len(linea)


class Nucleo:
    """A folder of the core, and its unit tests."""

    construida = CONSTRUIDA
    ventanas = "OFF"

    def __init__(self, carpeta):
        self.nombre = carpeta
        self.programa = "pruebas_" + carpeta.split("/", maxsplit=1)[0]

    def pruebas(self):
        """The names of the tests that judge it."""
        return PRUEBAS[self.nombre]

    def mutantes(self):
        """All that could be made of it."""
        construidos = (self.construida / "build.ninja").read_text()
        for fichero in sorted((COPIA / self.nombre).glob("*.cpp")):
            if f"/{self.nombre}/{fichero.name}" in construidos:  # else a window's
                yield from candidatas(fichero, CAMBIOS)


class Formulario:
    """A source of windows, and the tests of windows of its folder."""

    construida = CONSTRUIDA_CON_VENTANAS
    ventanas = "ON"

    def __init__(self, nombre):
        self.nombre = nombre
        self.carpeta, self.fuente = nombre.split("/")
        self.programa = f"pruebas_{self.carpeta}_ventanas"

    def pruebas(self):
        """Those of the form itself first, because they notice most; the long sweeps last."""
        clases = ejecuta([self.construida / "tests" / self.carpeta / self.programa]).stdout.split()
        nombres = [clase.removesuffix("_Test") for clase in clases if clase.endswith("_Test")]
        return sorted(nombres, key=lambda nombre: (nombre.startswith("Barrido"), not nombre.startswith(self.fuente)))

    def mutantes(self):
        """All that could be made of it."""
        yield from candidatas(COPIA / f"{self.nombre}.cpp", [*CAMBIOS, LLAMADA])


def copia():
    """Takes HEAD as it is committed."""
    COPIA.mkdir(parents=True, exist_ok=True)
    archivo = subprocess.run(["git", "archive", "HEAD"], cwd=RAIZ, stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["tar", "-x"], cwd=COPIA, input=archivo, check=True)


def configura(parte):
    """Makes ready to build what judges it."""
    lanzador = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    orden = ["cmake", *lanzador, "-G", "Ninja", "-S", str(COPIA), "-B", str(parte.construida), "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -Wno-error", f"-DATIPICOS_GUI={parte.ventanas}"]
    if ejecuta(orden).returncode != 0:
        sys.exit("cannot configure the copy")


def juzga(parte):
    """'no compila', 'muerto' or 'vivo'."""
    if ejecuta(["ninja", "-C", str(parte.construida), "--quiet", parte.programa]).returncode != 0:
        return "no compila"
    # Of the million statements thrown together at random a sample will do.
    entorno = {**os.environ, "ATIPICOS_TEXTOS_AL_AZAR": "20000"}
    for prueba in parte.pruebas():  # one by one, so that the first that notices ends it
        orden = ["ctest", "--test-dir", str(parte.construida), "-R", f"^{prueba}_test$", "--timeout", "60", "-Q"]
        if ejecuta(orden, env=entorno).returncode != 0:
            return "muerto"
    return "vivo"


def partes(opciones):
    """The folders, or the forms, that were asked for."""
    if opciones.ventanas or opciones.formulario:
        return [Formulario(nombre) for nombre in opciones.formulario or FORMULARIOS]
    return [Nucleo(carpeta) for carpeta in opciones.carpeta or PRUEBAS]


def main():
    argumentos = argparse.ArgumentParser()
    argumentos.add_argument("--cuantas", type=int, default=12, help="mutants of each folder")
    argumentos.add_argument("--semilla", type=int, default=1)
    argumentos.add_argument("--carpeta", action="append", choices=PRUEBAS)
    argumentos.add_argument("--ventanas", action="store_true", help="the forms instead of the core")
    argumentos.add_argument("--formulario", action="append", choices=FORMULARIOS)
    opciones = argumentos.parse_args()
    copia()
    cuenta = {"muerto": 0, "vivo": 0, "no compila": 0}
    for parte in partes(opciones):
        configura(parte)
        if juzga(parte) != "vivo":
            sys.exit(f"the tests of {parte.nombre} fail without any mutation")
        todas = list(parte.mutantes())
        random.Random(opciones.semilla).shuffle(todas)
        for fichero, desde, hasta, pone in todas[: opciones.cuantas]:
            entero = fichero.read_text()
            fichero.write_text(entero[:desde] + pone + entero[hasta:])
            veredicto = juzga(parte)
            fichero.write_text(entero)
            cuenta[veredicto] += 1
            if veredicto == "vivo":
                numero = entero.count("\n", 0, desde) + 1
                linea = entero.splitlines()[numero - 1].strip()
                print(f"{fichero.relative_to(COPIA)}:{numero}: «{entero[desde:hasta].strip()}» -> «{pone.strip()}» "
                      f"in: {linea}", flush=True)
        print(f"{parte.nombre}: {len(todas)} possible, {cuenta} so far", flush=True)
    juzgadas = cuenta["muerto"] + cuenta["vivo"]
    print(f"{cuenta['muerto']} of {juzgadas} mutants killed; {cuenta['no compila']} did not compile")


if __name__ == "__main__":
    main()
