"""The started program on a screen of its own: keys and clicks of a real X server, read through AT-SPI as a screen
reader reads it. Nothing here sleeps for a while and hopes: each step waits for what is to be there.

Used by the scripts that EnPantalla.sh runs, each with a session bus of its own.
"""
import contextlib
import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import time

import pyatspi

PLAZO = 900  # seconds after which what has not come never will, on however busy a machine


class NoLlega(Exception):
    """What was waited for has not come."""


class Escritorio:
    """Screen, window manager and program, ended together."""

    def __init__(self, programa):
        self.programa = programa
        self.pulsadas = 0  # keys pressed so far; Alt+A is one
        self.fin = contextlib.ExitStack()
        self.carpeta = pathlib.Path(self.fin.enter_context(tempfile.TemporaryDirectory()))
        self.datos = self.carpeta / "datos"
        for variable in ("HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME"):
            os.environ[variable] = str(self.carpeta)
        for variable in ("QT_QPA_PLATFORM", "WAYLAND_DISPLAY"):
            os.environ.pop(variable, None)
        os.environ.update(LC_ALL="C.UTF-8", TZ="Europe/Madrid", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self._pantalla()
        # It says that it is there before it is, and gives the focus to no window that comes in between.
        listo = self.carpeta / "listo"
        self._lanza("openbox", "--sm-disable", "--startup", f"touch {listo}")
        self.espera("the window manager", listo.exists)

    def __enter__(self):
        return self

    def __exit__(self, clase, error, traza):
        if error is not None:
            print(f"the windows were then:\n{self.cuadro()}", file=sys.stderr)
        self.fin.close()

    def _lanza(self, *orden, **mas):
        proceso = subprocess.Popen(orden, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **mas)
        self.fin.callback(proceso.wait)
        self.fin.callback(proceso.terminate)
        return proceso

    @staticmethod
    def _lee(*orden):
        return subprocess.run(orden, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False).stdout

    def _pantalla(self):
        lee, escribe = os.pipe()
        # -r: on a busy machine a key is held for longer than the server takes before it repeats it.
        self._lanza("Xvfb", "-noreset", "-r", "-displayfd", str(escribe), "-screen", "0", "1280x900x24",
                    pass_fds=(escribe,))
        os.close(escribe)
        with os.fdopen(lee) as numero:
            os.environ["DISPLAY"] = ":" + numero.readline().strip()

    # The program

    def donde(self):
        """What tells the program where the company is."""
        return ["--datos", str(self.datos)]

    def ordena(self, *argumentos):
        """Runs a command of the program; its output."""
        hecho = subprocess.run([self.programa, *argumentos, *self.donde()], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True, check=False)
        if hecho.returncode != 0:
            raise NoLlega(f"{argumentos}: {hecho.stdout}")
        return hecho.stdout

    def abre(self, *argumentos):
        """Starts the program with its windows."""
        self.proceso = self._lanza(self.programa, *self.donde(), *argumentos)

    def abre_de_nuevas(self):
        """Starts it as a new user does: in the folder, which is empty, and told nothing."""
        self.proceso = self._lanza(self.programa, cwd=self.carpeta)

    def cambia(self, sql):
        """Changes the company past the program."""
        with contextlib.closing(sqlite3.connect(self.datos / "empresa.db")) as base, base:
            base.execute(sql)

    def consulta(self, sql):
        """The rows of a query on the company, as a person would write them: cells between bars."""
        with contextlib.closing(sqlite3.connect(f"file:{self.datos}/empresa.db?mode=ro", uri=True, timeout=PLAZO)) as base:
            return ["|".join("" if celda is None else str(celda) for celda in fila) for fila in base.execute(sql)]

    # Keys and clicks

    def teclas(self, *cuales):
        """Presses keys one after the other, named as xdotool names them."""
        self.pulsadas += len(cuales)
        subprocess.run(["xdotool", "key", "--delay", "5", *cuales], check=True)

    def escribe(self, texto):
        """Types a text of ASCII characters."""
        self.pulsadas += len(texto)
        subprocess.run(["xdotool", "type", "--delay", "5", "--", texto], check=True)

    def clic(self, objeto):
        """Clicks in the middle of an object, once it stays where it is."""
        def quieto():
            sitio = objeto.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            time.sleep(0.05)
            otra_vez = objeto.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            medio = (sitio.x + sitio.width // 2, sitio.y + sitio.height // 2)
            return medio if sitio.width > 0 and medio == (
                otra_vez.x + otra_vez.width // 2, otra_vez.y + otra_vez.height // 2) else None

        x, y = self.espera(f"«{objeto.name}» at rest", quieto)
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "1"], check=True)

    # What a screen reader finds

    @staticmethod
    def espera(que, condicion):
        """What `condicion` gives as soon as it is true of anything; an error that names `que` when it never is."""
        limite = time.monotonic() + PLAZO
        while time.monotonic() < limite:
            try:
                if hallado := condicion():
                    return hallado
            except Exception:  # noqa: BLE001: an object that went while it was looked at
                pass
            time.sleep(0.02)
        raise NoLlega(f"never came: {que}")

    def ventanas(self):
        """The windows on the screen."""
        for aplicacion in pyatspi.Registry.getDesktop(0):
            if aplicacion is not None and aplicacion.get_process_id() == self.proceso.pid:
                for ventana in aplicacion:
                    if ventana is not None and tiene(ventana, pyatspi.STATE_SHOWING):
                        yield ventana

    def activa(self):
        """The window that gets the keys."""
        return next((una for una in self.ventanas() if tiene(una, pyatspi.STATE_ACTIVE)), None)

    def ventana(self, comienzo):
        """Waits until the active window is the one whose title begins so, to the window manager too: until that has seen
        it, it may give the focus once more, and a menu that is opened meanwhile is closed by that.
        """
        def es_ella():
            activa = self.activa()
            if activa is None or not activa.name.startswith(comienzo):
                return None
            return activa if self._lee("xdotool", "getactivewindow", "getwindowname").startswith(comienzo) else None

        return self.espera(f"the window «{comienzo}»", es_ella)

    def elige(self, menu, letra, titulo):
        """Chooses in a menu of the main window, by its letter and that of the line, what opens the window of that title.
        When nothing comes of it for a while it is chosen again: a busy window manager closes a menu that has just opened.
        """
        principal = self.activa().name

        def llega():
            self.teclas(menu)
            self.teclas(letra)
            hasta = time.monotonic() + 15
            while time.monotonic() < hasta:
                activa = self.activa()
                if activa is not None and activa.name != principal:
                    return activa.name == titulo
                time.sleep(0.05)
            return False

        return self.espera(f"the window «{titulo}», of a menu", llega)

    def foco(self, nombre):
        """Waits until the focus is on an object of that name in the active window."""
        def es_el():
            enfocado = con_foco(self.activa())
            return enfocado if enfocado is not None and enfocado.name == nombre else None

        return self.espera(f"the focus on «{nombre}»", es_el)

    def objeto(self, nombre, rol=None):
        """Waits for an object of that name, and of that role if given, in the active window."""
        return self.espera(f"«{nombre}»", lambda: next(
            (uno for uno in dentro(self.activa()) if uno.name == nombre and rol in (None, uno.getRoleName())), None))

    def celda(self, rejilla, fila, columna):
        """Waits for a cell of a grid; rows count from 1, columns from 0."""
        def la_que_hay():
            tabla = self.objeto(rejilla, "table").queryTable()
            return tabla.getAccessibleAt(fila - 1, columna) if fila <= tabla.nRows else None

        return self.espera(f"row {fila} of «{rejilla}»", la_que_hay)

    def filas(self, rejilla, cuantas):
        """Waits until a grid has so many rows, the heading not counted."""
        self.espera(f"{cuantas} rows in «{rejilla}»",
                    lambda: self.objeto(rejilla, "table").queryTable().nRows == cuantas)

    def cuadro(self):
        """The windows as lines of text."""
        lineas = []
        with contextlib.suppress(Exception):
            for ventana in self.ventanas():
                lineas += [f"  {uno.getRoleName()} «{uno.name}» {contenido(uno)}{marcas(uno)}" for uno in dentro(ventana)]
        return "\n".join(lineas)


def tiene(objeto, estado):
    """Whether the object is in that state."""
    return objeto.getState().contains(estado)


def contenido(objeto):
    """What is written in it; nothing where nothing can be."""
    if "Text" not in pyatspi.listInterfaces(objeto):
        return ""
    texto = objeto.queryText()
    return texto.getText(0, texto.characterCount)


def marcas(objeto):
    """What tells the window and the object that get the keys."""
    return "".join(f" ({nombre})" for estado, nombre in ((pyatspi.STATE_ACTIVE, "active"), (pyatspi.STATE_FOCUSED, "focused"))
                   if tiene(objeto, estado))


def dentro(objeto):
    """The object and what is shown inside it; of a grid or a tree, not its cells."""
    if objeto is None or not tiene(objeto, pyatspi.STATE_SHOWING):
        return
    yield objeto
    if objeto.getRole() in (pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE):
        return
    for hijo in objeto:
        yield from dentro(hijo)


def con_foco(ventana):
    """What has the focus inside a window: the innermost one that has a name."""
    enfocados = [uno for uno in dentro(ventana) if uno is not ventana and uno.name and tiene(uno, pyatspi.STATE_FOCUSED)]
    # Qt says that of the heading of the page in front too.
    return next((uno for uno in reversed(enfocados) if uno.getRole() != pyatspi.ROLE_PAGE_TAB), None)
