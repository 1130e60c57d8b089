#!/usr/bin/env bash
# The manual for browsers has everything that the pages of the manual have, and its links lead somewhere:
#     ManualEnHtml_test.sh CONVERTER MANUAL
set -euo pipefail
carpeta=$(mktemp -d)
trap 'rm -rf "$carpeta"' EXIT
"$1" "$2" "$carpeta"
cp -r "$2/imagenes" "$carpeta"
python3 - "$2" "$carpeta" <<'FIN'
import html.parser, os, re, sys

origen, salida = sys.argv[1:]
fallos = []

class Pagina(html.parser.HTMLParser):
    def __init__(self, texto):
        super().__init__()
        self.anclas, self.enlaces, self.imagenes, self.cuentas, self.abiertas = set(), [], [], {}, []
        self.texto = ""
        self.feed(texto)

    def handle_starttag(self, tag, atributos):
        atributos = dict(atributos)
        self.cuentas[tag] = self.cuentas.get(tag, 0) + 1
        if "id" in atributos:
            self.anclas.add(atributos["id"])
        if tag == "a":
            self.enlaces.append(atributos["href"])
        if tag == "img":
            self.imagenes.append(atributos["src"])
        if tag not in ("img", "meta", "br"):
            self.abiertas.append(tag)

    def handle_endtag(self, tag):
        if not self.abiertas or self.abiertas.pop() != tag:
            fallos.append(f"</{tag}> closes nothing")

    def handle_data(self, datos):
        self.texto += datos

nombres = sorted(f[:-3] for f in os.listdir(origen) if f.endswith(".md"))
paginas = {n: Pagina(open(os.path.join(salida, n + ".html"), encoding="utf-8").read()) for n in nombres}
for nombre, pagina in paginas.items():
    fuente = open(os.path.join(origen, nombre + ".md"), encoding="utf-8").read()
    prosa = re.sub(r"```.*?```", "", fuente, flags=re.S)
    debidos = {"pre": fuente.count("```") // 2, "table": len(re.findall(r"^\|---", prosa, re.M)),
               "img": prosa.count("!["), "h1": len(re.findall(r"^# ", prosa, re.M)),
               "h2": len(re.findall(r"^## ", prosa, re.M)), "h3": len(re.findall(r"^### ", prosa, re.M)),
               "li": len(re.findall(r"^(?:- |\d+\. )", prosa, re.M))}
    for tag, cuantos in debidos.items():
        if pagina.cuentas.get(tag, 0) != cuantos:
            fallos.append(f"{nombre}: {pagina.cuentas.get(tag, 0)} <{tag}> and there should be {cuantos}")
    if pagina.abiertas:
        fallos.append(f"{nombre}: left open {pagina.abiertas}")
    for imagen in pagina.imagenes:
        if not os.path.exists(os.path.join(salida, imagen)):
            fallos.append(f"{nombre}: there is no {imagen}")
    for enlace in pagina.enlaces:
        adonde, _, ancla = enlace.partition("#")
        otra = paginas.get(adonde[:-5]) if adonde else pagina
        if otra is None or (ancla and ancla not in otra.anclas):
            fallos.append(f"{nombre}: {enlace} leads nowhere")
    for bloque in re.findall(r"```\n(.*?)```", fuente, re.S):
        if bloque.rstrip("\n") not in pagina.texto:
            fallos.append(f"{nombre}: its code is not as it was written: {bloque[:40]!r}")
if len(nombres) < 16:
    fallos.append("pages are missing")
print(f"{len(nombres)} pages, {sum(len(p.enlaces) for p in paginas.values())} links")
sys.exit("\n".join(fallos) or 0)
FIN
