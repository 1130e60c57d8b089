#!/usr/bin/env python3
"""Prints what has to be built for some tests: packaging/objetivos_de_pruebas.py BUILD PATTERN

One target of ninja a line; nothing when no test is called like that.
"""
import json
import pathlib
import subprocess
import sys


def main():
    construida, patron = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    salida = subprocess.run(["ctest", "--test-dir", construida, "--show-only=json-v1", "--tests-regex", patron],
                            stdout=subprocess.PIPE, text=True, check=True).stdout
    objetivos = set()
    for prueba in json.loads(salida)["tests"]:
        for argumento in map(pathlib.Path, prueba["command"]):
            if argumento == construida:
                objetivos.add("all")  # it installs what is built
            elif argumento.is_relative_to(construida):
                objetivos.add(str(argumento.relative_to(construida)))
    print("\n".join(sorted(objetivos)))


if __name__ == "__main__":
    main()
