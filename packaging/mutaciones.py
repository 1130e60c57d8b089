#!/usr/bin/env python3
"""Breaks the program on purpose, one place at a time, and asks the tests whether they notice.

    packaging/mutaciones.py [--cuantas N] [--semilla S] [--carpeta FOLDER]...
    packaging/mutaciones.py [--cuantas N] [--semilla S] --ventanas [--formulario FORM]...

Works on a copy of HEAD in build/mutaciones. Of all mutants of each source N are drawn by the seed, built, and judged: a
folder of the core by its unit tests, a source of windows by the tests of windows of its folder. An operator or a
constant changes, or a call or an assignment is left out. Prints each survivor with its line, and a table. Each mutant
takes some seconds.
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
    "context": ["Cajas", "claves", "HastaElFinal", "modComun", "Referencias", "Transaccion",
                "trap"],
    "charges": ["CargoRelevado", "Impuesto", "clsAtipico_Devuelve_Codigo", "clsAtipico_Lineas", "clsAtipico", "clsAtipico_Calculos",
                "DosEmpresas"],
    "posting": ["AsientoRelevado", "Calendario", "EdicionPrevisiones", "GenerarAsiento", "GenerarPrev"],
    "editor": ["CargoAbierto", "EdicionAtipico", "GuardadoRelevado", "GuardarAtipico"],
    "browser": ["ClaveBorrada", "ColumnasLista", "DetalleAtipico", "DirectorioZip", "EliminarAtipico", "ExportarLista",
                "LibroXlsx", "ListaAtipicos", "ListaDelAnfitrion", "ListaRelevada"],
    "printing": ["ImprimirAtipico"],
    "server": ["Argumentos", "Cargos", "Clases", "Coleccion", "Prestamos", "Relevos", "ReportAnfitrion", "Idl", "Lanzadores",
               "LanzadoresEnVentana", "AnfitrionPython"],
    "engines/ado": ["AdoConexion", "AdoFilas", "AdoEmpresas"],
    "engines/sql": ["Catalogo", "Contrato", "Fechas", "PostgresqlConnection", "Reescritura", "Servidor",
                    "SqliteConnection", "SqliteRecordset", "Tokens"],
}

# The sources of windows, each judged by all tests of windows of its folder.
FORMULARIOS = [
    "browser/ExportarVisorQt", "browser/frmCompras_Atipicos_Visor", "browser/frmDetalleAtipico",
    "browser/RejillasVisorQt", "context/frmclsComprasAtipVisor", "context/frmclsCompras_Atipicos", "context/frmMsg",
    "editor/frmCompras_Atipicos", "editor/frmCompras_Atipicos_Linea", "editor/frmEditor_Comentarios",
    "editor/RejillaAtipicoQt", "posting/frmCompras_Atipicos_Contabilizar", "printing/clsView",
    "printing/frmclsCopiasImpresion", "printing/frmImpresora", "printing/frmView", "server/LanzadoresQt",
]

# Sources of windows that tests of another program judge.
JUECES = {"server/LanzadoresQt": ("pruebas_server", ["Lanzadores"])}

# Programs that judge a folder beside its own.
DE_MAS = {"server": ["Idl_test", "ReportAnfitrion_test", "pruebas_server_ventanas"]}

# Folders that are built with windows, because much of them serves nothing else.
CON_VENTANAS = {"server"}

# What is looked for in the code, and what takes its place.
CAMBIOS = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r"(?<=\w) \+ (?=\w)", " - "), (r"(?<=\w) - (?=\w)", " + "),
    (r"(?<=\w) \* (?=\w)", " / "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\+\+", "--"), (r" \+= ", " -= "), (r" -= ", " += "), (r"(?<![\w.'\"])0(?![\w.'\"])", "1"),
    (r"(?<![\w.'\"])1(?![\w.'\"])", "2"), (r"\bbreak;", "continue;"),
]
# A statement of one line that is nothing but a call, or an assignment.
LLAMADA = (r"(?<=^)\s+(?!return|throw|case|using|connect)[\w:]+(?:(?:->|\.)\w+|\([^()]*\))*\(.*\);$", ";")
ASIGNACION = (r"(?<=^)\s+(?:this->)?\w+(?:(?:->|\.|::)\w+|\[[^\]]*\])* [-+|&]?= [^;]*;$", ";")
TODOS = [*CAMBIOS, LLAMADA, ASIGNACION]


def ejecuta(orden, **mas):
    return subprocess.run(orden, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **mas)


def candidatas(fichero, cambios):
    """(file, offset, end, replacement) of every place in the code, outside comments, texts and includes."""
    lugar = 0
    ocultas = []  # of each condition around: whether its lines are for Windows alone, and not built here
    for linea in fichero.read_text().splitlines(keepends=True):
        if linea.startswith("#if"):
            ocultas.append("ifdef _WIN32" in linea)
            es_de_windows = "_WIN32" in linea
        elif linea.startswith("#else") and es_de_windows:
            ocultas[-1] = not ocultas[-1]
        elif linea.startswith("#endif"):
            ocultas.pop()
        codigo = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + "\x00" * (len(m.group()) - 2) + '"', linea)
        codigo = codigo.split("//")[0]
        if not any(ocultas) and not codigo.lstrip().startswith(("#", "template", "static_assert", "namespace")):
            for busca, pone in cambios:
                for hallado in re.finditer(busca, codigo.rstrip("\n")):
                    yield fichero, lugar + hallado.start(), lugar + hallado.end(), pone
        lugar += len(linea)


class Nucleo:
    """A folder of the core, and its unit tests."""

    def __init__(self, carpeta):
        self.nombre = carpeta
        con_ventanas = carpeta in CON_VENTANAS
        self.construida = CONSTRUIDA_CON_VENTANAS if con_ventanas else CONSTRUIDA
        self.ventanas = "ON" if con_ventanas else "OFF"
        self.programas = ["pruebas_" + carpeta.split("/", maxsplit=1)[0], *DE_MAS.get(carpeta, [])]

    def pruebas(self):
        """The names of the tests that judge it."""
        return PRUEBAS[self.nombre]

    def mutantes(self):
        """All that could be made of it."""
        construidos = (self.construida / "build.ninja").read_text()
        for fichero in sorted((COPIA / self.nombre).glob("*.cpp")):
            if f"/{self.nombre}/{fichero.name}" in construidos:  # else a window's
                yield from candidatas(fichero, TODOS)


class Formulario:
    """A source of windows, and the tests of windows of its folder."""

    construida = CONSTRUIDA_CON_VENTANAS
    ventanas = "ON"

    def __init__(self, nombre):
        self.nombre = nombre
        self.carpeta, self.fuente = nombre.split("/")
        programa, self.jueces = JUECES.get(nombre, (f"pruebas_{self.carpeta}_ventanas", None))
        self.programas = [programa]

    def pruebas(self):
        """Those of the form itself first, because they notice most; the long sweeps last."""
        if self.jueces:
            return self.jueces
        clases = ejecuta([self.construida / "tests" / self.carpeta / self.programas[0]]).stdout.split()
        nombres = [clase.removesuffix("_Test") for clase in clases if clase.endswith("_Test")]
        return sorted(nombres, key=lambda nombre: (nombre.startswith("Barrido"), not nombre.startswith(self.fuente)))

    def mutantes(self):
        """All that could be made of it."""
        yield from candidatas(COPIA / f"{self.nombre}.cpp", TODOS)


def copia():
    """Takes HEAD as it is committed."""
    COPIA.mkdir(parents=True, exist_ok=True)
    archivo = subprocess.run(["git", "archive", "HEAD"], cwd=RAIZ, stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["tar", "-x"], cwd=COPIA, input=archivo, check=True)
    opciones = COPIA / "cmake" / "Opciones.cmake"  # a warning about what a mutant leaves unused has not noticed it
    opciones.write_text(opciones.read_text().replace(" -Werror", ""))


def configura(parte):
    """Makes ready to build what judges it."""
    lanzador = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    orden = ["cmake", *lanzador, "-G", "Ninja", "-S", str(COPIA), "-B", str(parte.construida), "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O0", f"-DATIPICOS_GUI={parte.ventanas}"]
    if ejecuta(orden).returncode != 0:
        sys.exit("cannot configure the copy")


def juzga(parte):
    """'no compila', 'muerto' or 'vivo'."""
    if ejecuta(["ninja", "-C", str(parte.construida), "-j1", "--quiet", *parte.programas]).returncode != 0:
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


def sortea(mutantes, cuantas, semilla):
    """Of each source as many as asked for, in the order of the sources."""
    por_fuente = {}
    for mutante in mutantes:
        por_fuente.setdefault(mutante[0], []).append(mutante)
    for todos in por_fuente.values():
        random.Random(semilla).shuffle(todos)
    return {fuente: (len(todos), todos[:cuantas]) for fuente, todos in por_fuente.items()}


def juzga_fuente(parte, mutantes):
    """How many there are of each verdict."""
    cuenta = {"muerto": 0, "vivo": 0, "no compila": 0}
    for fichero, desde, hasta, pone in mutantes:
        entero = fichero.read_text()
        fichero.write_text(entero[:desde] + pone + entero[hasta:])
        veredicto = juzga(parte)
        fichero.write_text(entero)
        cuenta[veredicto] += 1
        if veredicto == "vivo":
            numero = entero.count("\n", 0, desde + len(entero[desde:hasta]) - len(entero[desde:hasta].lstrip())) + 1
            linea = entero.splitlines()[numero - 1].strip()
            print(f"{fichero.relative_to(COPIA)}:{numero}: «{entero[desde:hasta].strip()}» -> «{pone.strip()}» "
                  f"in: {linea}", flush=True)
    return cuenta


def main():
    argumentos = argparse.ArgumentParser()
    argumentos.add_argument("--cuantas", type=int, default=12, help="mutants of each source")
    argumentos.add_argument("--semilla", type=int, default=1)
    argumentos.add_argument("--carpeta", action="append", choices=PRUEBAS)
    argumentos.add_argument("--ventanas", action="store_true", help="the sources of windows instead of the core")
    argumentos.add_argument("--formulario", action="append", choices=FORMULARIOS)
    opciones = argumentos.parse_args()
    copia()
    tabla, muertos, juzgados = [], 0, 0
    for parte in partes(opciones):
        configura(parte)
        if juzga(parte) != "vivo":
            sys.exit(f"the tests of {parte.nombre} fail without any mutation")
        for fuente, (posibles, elegidos) in sortea(parte.mutantes(), opciones.cuantas, opciones.semilla).items():
            cuenta = juzga_fuente(parte, elegidos)
            muertos += cuenta["muerto"]
            juzgados += cuenta["muerto"] + cuenta["vivo"]
            tabla.append(f"{str(fuente.relative_to(COPIA)):44} {posibles:8} {cuenta['muerto']:6} {cuenta['vivo']:8} "
                         f"{cuenta['no compila']:13}")
            print(tabla[-1], flush=True)
    print(f"\n{'source':44} possible killed survived not compiling", *tabla, sep="\n")
    print(f"{muertos} of {juzgados} mutants killed")


if __name__ == "__main__":
    main()
