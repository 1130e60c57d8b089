#!/usr/bin/env python3
"""A host in Python: it lends the component a company and a connection of its own, numbers a charge, inserts it, goes
through its lines, and reads the errors that it provokes.

    python3 anfitrion.py libQVORComprasAtip.so.1
"""
import datetime
import decimal
import os
import re
import sqlite3
import sys

from automatizacion import NADA, Componente, Fallo
from prestamo import presta

CLS_ATIPICO = "505ec83b-6d96-4e88-bedb-3f595731894b"
TABLAS = """
CREATE TABLE Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Importe,
    Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo,
    Almacen AS (Cod_Almacen));
CREATE TABLE Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea,
    Cod_Articulo, Descripcion, Unidades, Precio, Observ);
CREATE TABLE Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Numero);
"""


class Empresa:
    """The company object of management, as much of it as charges need."""
    Codigo = 6
    DecimalesImporte = 3

    def Parametro(self, clave):
        return {"UsuarioActual": "21", "Proveedores_AtipcosImpuesto": "3"}.get(clave)

    def PorcentajeImpuesto(self, tipo):
        return {3: decimal.Decimal("6.5")}[tipo]


class Campo:
    """A column of the current row."""

    def __init__(self, filas, nombre):
        self._filas, self.Name = filas, nombre

    @property
    def Value(self):
        return self._filas.valores[self.Name]

    @Value.setter
    def Value(self, valor):
        self._filas.valores[self.Name] = valor


class Campos:
    """The columns of a recordset."""

    def __init__(self, campos):
        self._campos = campos
        self.Count = len(campos)

    def Item(self, lugar):
        return presta(self._campos[lugar])


class Filas:
    """A recordset over SQLite's answer."""

    def __init__(self, base):
        self._base, self._texto, self._nueva, self._pendientes = base, "", False, []
        self.valores = {}

    def Open(self, texto, _conexion, _cursor, _bloqueo, _opcion):
        self._texto = texto
        respuesta = ejecuta(self._base, texto)
        self._nombres = [columna[0] for columna in respuesta.description]
        self._pendientes = respuesta.fetchall()
        self._coloca()

    def _coloca(self):
        self.valores = dict(zip(self._nombres, self._pendientes[0] if self._pendientes else ()))

    @property
    def EOF(self):
        return not self._pendientes

    @property
    def Fields(self):
        return presta(Campos([Campo(self, nombre) for nombre in self._nombres]))

    def MoveNext(self):
        self._pendientes.pop(0)
        self._coloca()

    def AddNew(self):
        self._nueva, self.valores = True, {}

    def Update(self):
        tabla, condicion = re.search(r"FROM (\w+)( WHERE .*)", self._texto).groups()
        nombres = list(self.valores)
        if self._nueva:
            orden = f"INSERT INTO {tabla} ({', '.join(nombres)}) VALUES ({', '.join('?' * len(nombres))})"
        else:
            orden = f"UPDATE {tabla} SET {', '.join(nombre + ' = ?' for nombre in nombres)}{condicion}"
        ejecuta(self._base, orden, list(self.valores.values()))

    def Close(self):
        self._pendientes = []


class Conexion:
    """The open connection of management."""

    def __init__(self, base):
        self._base = base

    def Execute(self, texto, afectadas, _opcion):
        afectadas.pon(ejecuta(self._base, texto).rowcount)

    def CreateRecordset(self):
        return presta(Filas(self._base))


def ejecuta(base, texto, valores=()):
    """Runs a statement; what SQLite says of it goes to the component as an error of a database."""
    try:
        return base.execute(texto, valores)
    except sqlite3.Error as error:
        raise Fallo(0x80040E14 - 2**32, "SQLite", str(error)) from error


def intenta(que, uso):
    """Tells the error that a use of the component raises."""
    try:
        uso()
        print(f"{que}: sin error")
    except Fallo as fallo:
        print(f"{que}: {fallo}")


def main():
    os.environ["QVORCOMPRASATIP_AVISOS"] = "consola"  # nobody looks at this host: boxes become lines
    base = sqlite3.connect(":memory:", isolation_level=None)
    base.executescript(TABLAS)
    componente = Componente(sys.argv[1] if len(sys.argv) > 1 else "libQVORComprasAtip.so.1")

    cargo = componente.nuevo(CLS_ATIPICO)
    cargo.pon("EmpresaOrvalin", presta(Empresa()))
    cargo.pon("ConexionOrvalin", presta(Conexion(base)))
    for nombre, valor in {"Cod_Ejercicio": 2025, "Cod_Almacen": 8, "Proveedor": 40077, "AplicarImpuesto": True,
                          "Importe": decimal.Decimal("150.25"), "Fecha": datetime.datetime(2025, 2, 3),
                          "Hora": datetime.datetime(2025, 2, 3, 17, 40, 9), "Observ": "Palé nº 4 (12 €)"}.items():
        cargo.pon(nombre, valor)
    print("Código que tendría:", cargo.llama("Devuelve_Codigo", False, 2025))
    print("Códigos tomados:", cargo.llama("Devuelve_Codigo", True, 2025), cargo.llama("Devuelve_Codigo", True, 2025))
    cargo.pon("Codigo", "AT250002")

    lineas = cargo.llama("Lineas")
    lineas.llama("Add", 2001, "Queso añejo con grietas", decimal.Decimal("12.5"), decimal.Decimal("9.75"), "caja 3")
    lineas.llama("Add", 2002, "Portes", 1, 28.375)
    print("Antes de insertar existe:", cargo.llama("Existe", 2025, 8, "AT250002"))
    print("Insertar con error:", cargo.llama("Insertar"))
    print("Después existe:", cargo.llama("Existe", 2025, 8, "AT250002"))
    for linea in lineas:
        print("Línea:", *[linea.llama(campo) for campo in ("Cod_Articulo", "Descripcion", "Unidades", "Precio",
                                                            "Observaciones")], sep=" | ")
    for fila in base.execute("SELECT c.Codigo, Fecha, Hora, Importe, Impuesto, Impuesto_Importe, Num_Linea, Descripcion"
                             " FROM Proveedores_Cargos_Atipicos c JOIN Proveedores_Cargos_Atipicos_Lineas l"
                             " ON l.Codigo = c.Codigo ORDER BY Num_Linea"):
        print("Guardado:", *fila, sep=" | ")

    intenta("La línea 3", lambda: lineas.llama("Item", 3))
    intenta("Un miembro que no hay", lambda: cargo.llama("Contabilizar"))
    cargo.pon("Fecha", datetime.datetime(1999, 12, 31))
    intenta("Un código de 1999", lambda: cargo.llama("Devuelve_Codigo", True, 2025))
    base.execute("DROP TABLE Proveedores_Cargos_Atipicos")
    intenta("Sin la tabla", lambda: cargo.llama("Existe", 2025, 8, "AT250002"))
    print("Insertar sin la tabla con error:", cargo.llama("Insertar"))

    cargo.pon("ConexionOrvalin", NADA)  # takes back what was lent
    cargo.pon("EmpresaOrvalin", NADA)
    del cargo, lineas, linea
    print("Se puede descargar:", componente.se_puede_descargar())


if __name__ == "__main__":
    main()
