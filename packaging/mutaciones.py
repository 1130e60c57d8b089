#!/usr/bin/env python3
"""Breaks the program on purpose, one place at a time, and asks the tests whether they notice.

    packaging/mutaciones.py [--cuantas N] [--semilla S] [--carpeta FOLDER]...
    packaging/mutaciones.py [--cuantas N] [--semilla S] --ventanas [--formulario FORM]...

Works on a copy of HEAD in build/mutaciones. Of all mutants of each source N are drawn by the seed (0: all of them), built,
and judged: a folder of the core by its unit tests, a source of windows by the tests of windows of its folder, each by
those that come by it. An operator or a constant changes, a condition is turned round, a call or an assignment is left
out. Prints each survivor with its line, and a table. As far as possible the mutants of a source are built together; one
that has to be built alone takes some seconds more. A mutant is killed when the same test fails twice. A broken program
may do harm: as root one has deleted /dev/full, so run this where that does not matter.
"""
import argparse
import concurrent.futures
import itertools
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from mutantes import candidatos, juntos  # pylint: disable=wrong-import-position

RAIZ = pathlib.Path(__file__).resolve().parent.parent
COPIA = RAIZ / "build" / "mutaciones" / "fuente"
CONSTRUIDA = COPIA / "build" / "sin_ventanas"
CONSTRUIDA_CON_VENTANAS = COPIA / "build" / "dev"  # where a cache of the compiler finds what the tree's own build made

# The tests that judge a folder.
PRUEBAS = {
    "runtime": ["Celdas", "Currency", "Date", "Decimal", "Error", "Formato", "MotivoSistema", "Redondeo", "SalidaSegura",
                "Variant"],
    "context": ["Cajas", "claves", "HastaElFinal", "modComun", "Referencias", "Transaccion",
                "trap"],
    "charges": ["CargoRelevado", "Impuesto", "clsAtipico_Devuelve_Codigo", "clsAtipico_Lineas", "clsAtipico",
                "clsAtipico_Calculos", "DosEmpresas"],
    "posting": ["AsientoRelevado", "Calendario", "EdicionPrevisiones", "GenerarAsiento", "GenerarPrev"],
    "editor": ["BorradorDelEditor", "CargoAbierto", "EdicionAtipico", "GuardadoRelevado", "GuardarAtipico", "ImpuestoDelCargo"],
    "browser": ["ClaveBorrada", "ColumnasLista", "DetalleAtipico", "DirectorioZip", "EliminarAtipico", "ExportarLista",
                "LibroXlsx", "ListaAtipicos", "ListaDelAnfitrion", "ListaRelevada"],
    "printing": ["ImprimirAtipico"],
    "server": ["Argumentos", "Cargos", "Clases", "Coleccion", "Frontera", "Prestamos", "Relevos", "ReportAnfitrion", "Idl",
               "Lanzadores", "LanzadoresEnVentana", "AnfitrionPython", "SinMemoria"],
    "engines/ado": ["AdoConexion", "AdoFilas", "AdoEmpresas"],
    "engines/sql": ["Catalogo", "Contrato", "Fechas", "PostgresqlConnection", "Reescritura", "Servidor",
                    "SqliteConnection", "SqliteRecordset", "TextosDeFecha", "Tokens"],
}

# Folders whose sources of windows are judged by the tests of windows of the same folder.
CARPETAS_DE_FORMULARIOS = ["browser", "context", "editor", "posting", "printing", "server"]

# Sources of windows that tests of other programs judge too.
JUECES = {"server": (["AplicacionQt_test", "Idl_test", "pruebas_server", "pruebas_server_ventanas"],
                     ["AplicacionQt", "Idl", "Lanzadores", "LanzadoresEnVentana"])}

# Programs that judge a folder beside its own.
DE_MAS = {"server": ["Frontera_test", "Idl_test", "ReportAnfitrion_test", "SinMemoria_test", "pruebas_server_ventanas"]}

# Folders that are built with windows, because much of them serves nothing else.
CON_VENTANAS = {"server"}


def ejecuta(orden, **mas):
    return subprocess.run(orden, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **mas)


def formularios():
    """The sources of windows, as the folders name them to be built."""
    for carpeta in CARPETAS_DE_FORMULARIOS:
        dicho = (RAIZ / carpeta / "CMakeLists.txt").read_text()
        for fuentes in re.findall(r"atipicos_ventanas\(\w+ SOURCES([^)]*?)(?:FORMS|USES)", dicho):
            yield from (f"{carpeta}/{fuente.removesuffix('.cpp')}" for fuente in fuentes.split())


def programa(prueba):
    """The name of the program of that test of ctest, which stands behind its guard."""
    return pathlib.Path(prueba["command"][1]).name if len(prueba["command"]) > 1 else ""


class Nucleo:
    """A folder of the core, and its unit tests."""

    def __init__(self, carpeta):
        self.nombre = carpeta
        con_ventanas = carpeta in CON_VENTANAS
        self.construida = CONSTRUIDA_CON_VENTANAS if con_ventanas else CONSTRUIDA
        self.ventanas = "ON" if con_ventanas else "OFF"
        self.programas = ["pruebas_" + carpeta.split("/", maxsplit=1)[0], *DE_MAS.get(carpeta, [])]

    def es_juez(self, prueba):
        """Whether that test of ctest judges it."""
        return prueba["name"].removesuffix("_test") in PRUEBAS[self.nombre]

    def fuentes(self):
        """Its sources that are built without windows."""
        return [fichero for fichero in sorted((COPIA / self.nombre).glob("*.cpp"))
                if f"{self.nombre}/{fichero.stem}" not in formularios()]


class Formularios:
    """Sources of windows of one folder, and the tests of windows of that folder."""

    construida = CONSTRUIDA_CON_VENTANAS
    ventanas = "ON"

    def __init__(self, carpeta, nombres):
        self.nombre = carpeta
        self.nombres = nombres
        self.programas, self.jueces = JUECES.get(carpeta, ([f"pruebas_{carpeta}_ventanas"], None))

    def es_juez(self, prueba):
        """Whether that test of ctest judges them."""
        if self.jueces:
            return prueba["name"].removesuffix("_test") in self.jueces
        return programa(prueba) in self.programas

    def fuentes(self):
        """Those that were asked for."""
        return [COPIA / f"{nombre}.cpp" for nombre in self.nombres]


class Prueba:
    """One test, as it is run: a source of tests, or one function of a class of windows."""

    def __init__(self, nombre, orden, entorno):
        self.nombre = nombre
        self.orden = orden
        self.entorno = entorno
        self.tarda = 60.0  # seconds, until it has been timed
        self.mata = 0

    def falla(self, **entorno):
        """Whether it fails, or does not end."""
        try:
            hecha = subprocess.run(self.orden, env={**os.environ, **self.entorno, **entorno}, check=False,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=20 + 15 * self.tarda)
        except subprocess.TimeoutExpired:
            return True
        return hecha.returncode != 0


def pruebas(parte):
    """Those that judge it."""
    contadas = json.loads(ejecuta(["ctest", "--test-dir", str(parte.construida), "--show-only=json-v1"]).stdout)
    for una in contadas["tests"]:
        if "command" not in una or not parte.es_juez(una):
            continue
        propiedades = {propiedad["name"]: propiedad["value"] for propiedad in una["properties"]}
        # Of the million statements thrown together at random a sample will do.
        entorno = {"ATIPICOS_TEXTOS_AL_AZAR": "20000"}
        entorno |= dict(linea.split("=", 1) for linea in propiedades.get("ENVIRONMENT", []))
        orden = una["command"]
        if programa(una).endswith("_ventanas"):
            funciones = ejecuta([*orden, "-functions"], env={**os.environ, **entorno}).stdout
            for funcion in re.findall(r"^(\w+)\(\)$", funciones, re.M):
                yield Prueba(f"{una['name']}:{funcion}", [*orden, funcion], entorno)
        else:
            yield Prueba(una["name"], orden, entorno)


def copia():
    """Takes HEAD as it is committed."""
    COPIA.mkdir(parents=True, exist_ok=True)
    archivo = subprocess.run(["git", "archive", "HEAD"], cwd=RAIZ, stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["tar", "-x"], cwd=COPIA, input=archivo, check=True)


def configura(parte):
    """Makes ready to build what judges it: its sources one by one, and what a mutant leaves unused is no error."""
    carpetas = {}
    for fichero in parte.fuentes():
        carpetas.setdefault(fichero.parent, []).append(fichero.name)
    for carpeta, nombres in carpetas.items():
        lista = carpeta / "CMakeLists.txt"
        lista.write_text(f"{lista.read_text()}\nset_source_files_properties({' '.join(nombres)} PROPERTIES\n"
                         "    COMPILE_OPTIONS -w SKIP_UNITY_BUILD_INCLUSION ON)\n")
    lanzador = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    orden = ["cmake", *lanzador, "--preset", "dev", "-S", str(COPIA), "-B", str(parte.construida),
             f"-DATIPICOS_GUI={parte.ventanas}"]
    if ejecuta(orden, cwd=COPIA).returncode != 0:
        sys.exit("cannot configure the copy")


def construye(parte):
    """What the builder says; nothing if all went well."""
    hecho = ejecuta(["ninja", "-C", str(parte.construida), "-j2", "--quiet", "guardia", *parte.programas])
    return hecho.stdout if hecho.returncode != 0 else ""


def construye_juntos(parte, numerados):
    """Builds all that can be built together; the numbers of those in the program.

    numerados: of each source its mutants by number.
    """
    enteros = {fichero: fichero.read_text() for fichero in numerados}
    puestos = {fichero: dict(suyos) for fichero, suyos in numerados.items()}
    while True:
        for fichero, suyos in puestos.items():
            texto, fuera = juntos(enteros[fichero], suyos)
            fichero.write_text(texto if suyos else enteros[fichero])
            for numero in fuera:
                del suyos[numero]
        dicho = construye(parte)
        if not dicho:
            for fichero, entero in enteros.items():
                fichero.write_text(entero)  # some tests look at the line of the source that an error names
            return {numero for suyos in puestos.values() for numero in suyos}
        for fichero, suyos in puestos.items():
            lineas = {int(linea) for linea in re.findall(rf"/{re.escape(fichero.name)}:(\d+):\d+: error", dicho)}
            culpables = [numero for numero, m in suyos.items() if not lineas.isdisjoint(m.lineas(enteros[fichero]))]
            for numero in culpables or (list(suyos) if lineas else []):
                del suyos[numero]
        if ": error" not in dicho:
            sys.exit(dicho)


def alcanza(prueba):
    """The numbers of the mutants that a test comes by; it is timed."""
    with tempfile.NamedTemporaryFile() as vistos:
        comienzo = time.monotonic()
        if prueba.falla(MUTANTES_ALCANZADOS=vistos.name) and prueba.falla():
            print(f"{prueba.nombre} fails without any mutant and judges nothing", flush=True)
            return []
        prueba.tarda = time.monotonic() - comienzo
        return [int(numero) for numero in pathlib.Path(vistos.name).read_text().split()]


def alcance(jueces, taller):
    """By each number the tests that come by that mutant."""
    alcanzan = {}
    for prueba, numeros in zip(jueces, taller.map(alcanza, jueces)):
        for numero in numeros:
            alcanzan.setdefault(numero, []).append(prueba)
    return alcanzan


def muere(jueces, **entorno):
    """Whether one of the tests notices: the quickest first, and those that have noticed others."""
    for prueba in sorted(jueces, key=lambda una: una.tarda / (1 + una.mata)):
        if prueba.falla(**entorno) and prueba.falla(**entorno):
            prueba.mata += 1
            return True
    return False


def juzga_juntos(puestos, jueces, de_numero, a_la_vez):
    """By number whether it was noticed, of those in the program; and the tests that come by any of them."""
    alcanzan = {}

    def juzga(numero):
        muerto = muere(alcanzan.get(numero, []), MUTANTE=str(numero))
        if not muerto:
            cuenta_vivo(*de_numero[numero], len(alcanzan.get(numero, [])))
        return numero, "muerto" if muerto else "vivo"

    with concurrent.futures.ThreadPoolExecutor(a_la_vez) as taller:
        alcanzan.update(alcance(jueces, taller))
        veredictos = dict(taller.map(juzga, sorted(puestos)))
    return veredictos, [una for una in jueces if any(una in suyas for suyas in alcanzan.values())]


def juzga_solo(parte, fichero, entero, mutante, jueces):
    """The verdict of one that is built alone."""
    fichero.write_text(mutante.en(entero))
    dicho = construye(parte)
    fichero.write_text(entero)
    if dicho:
        return "no compila"
    if muere(jueces):
        return "muerto"
    cuenta_vivo(fichero, entero, mutante, len(jueces))
    return "vivo"


def juzga_parte(parte, elegidos, jueces, a_la_vez):
    """Of each source the verdicts of its mutants."""
    enteros = {fichero: fichero.read_text() for fichero in elegidos}
    cuenta = itertools.count()
    numerados = {fichero: dict(zip(cuenta, suyos)) for fichero, suyos in elegidos.items()}
    de_numero = {numero: (fichero, enteros[fichero], mutante)
                 for fichero, suyos in numerados.items() for numero, mutante in suyos.items()}
    try:
        puestos = construye_juntos(parte, numerados)
        veredictos, que_pasan = juzga_juntos(puestos, jueces, de_numero, a_la_vez)
        for fichero, suyos in numerados.items():
            for numero in sorted(suyos.keys() - puestos):
                veredictos[numero] = juzga_solo(parte, *de_numero[numero], que_pasan)
    finally:
        for fichero, entero in enteros.items():
            fichero.write_text(entero)
    return {fichero: [veredictos[numero] for numero in suyos] for fichero, suyos in numerados.items()}


def cuenta_vivo(fichero, entero, mutante, alcanzado):
    """Prints a survivor."""
    numero = mutante.linea(entero)
    linea = entero.splitlines()[numero - 1].strip()
    quitado = re.sub(r"\s+", " ", entero[mutante.desde:mutante.hasta].strip())
    print(f"{fichero.relative_to(COPIA)}:{numero}: «{quitado}» -> «{mutante.pone.strip()}» in: {linea} "
          f"({alcanzado} tests come by)", flush=True)


def elige(fichero, cuantas, semilla):
    """How many mutants there are of a source, and those that are drawn."""
    todos = list(candidatos(fichero.read_text()))
    elegidos = list(todos)
    random.Random(semilla).shuffle(elegidos)
    return len(todos), elegidos[:cuantas or len(todos)]


def partes(pedido):
    """The folders, or the forms by their folders, that were asked for."""
    if not pedido.ventanas and not pedido.formulario:
        return [Nucleo(carpeta) for carpeta in pedido.carpeta or PRUEBAS]
    pedidos = pedido.formulario or list(formularios())
    carpetas = dict.fromkeys(nombre.split("/")[0] for nombre in pedidos)
    return [Formularios(carpeta, [nombre for nombre in pedidos if nombre.startswith(carpeta + "/")])
            for carpeta in carpetas]


def opciones():
    """What the command line says."""
    argumentos = argparse.ArgumentParser()
    argumentos.add_argument("--cuantas", type=int, default=12, help="mutants of each source; 0: all")
    argumentos.add_argument("--semilla", type=int, default=1)
    argumentos.add_argument("--a-la-vez", type=int, default=1, help="mutants judged at the same time")
    argumentos.add_argument("--carpeta", action="append", choices=PRUEBAS)
    argumentos.add_argument("--ventanas", action="store_true", help="the sources of windows instead of the core")
    argumentos.add_argument("--formulario", action="append", choices=list(formularios()))
    return argumentos.parse_args()


def main():
    pedido = opciones()
    copia()
    tabla, muertos, juzgados = [], 0, 0
    for parte in partes(pedido):
        configura(parte)
        if dicho := construye(parte):
            sys.exit(dicho)
        posibles, elegidos = {}, {}
        for fichero in parte.fuentes():
            posibles[fichero], elegidos[fichero] = elige(fichero, pedido.cuantas, pedido.semilla)
        for fichero, dichos in juzga_parte(parte, elegidos, list(pruebas(parte)), pedido.a_la_vez).items():
            muertos += dichos.count("muerto")
            juzgados += dichos.count("muerto") + dichos.count("vivo")
            tabla.append(f"{str(fichero.relative_to(COPIA)):44} {posibles[fichero]:8} {dichos.count('muerto'):6} "
                         f"{dichos.count('vivo'):8} {dichos.count('no compila'):13}")
            print(tabla[-1], flush=True)
    print(f"\n{'source':44} possible killed survived not compiling", *tabla, sep="\n")
    print(f"{muertos} of {juzgados} mutants killed")


if __name__ == "__main__":
    main()
