#!/usr/bin/env python3
"""Fails when a test source is named by no CMakeLists.txt, holds no case, or a case is switched off.
Usage: registro.py PROJECT"""
import os
import re
import sys

CASO = re.compile(r'^\s*(TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P|RC_GTEST_PROP)\s*\(', re.M)
APAGADO = re.compile(r'\bDISABLED_')
# Programs that tests start, and helpers: sources without cases of their own say so in their first lines.
SIN_CASOS = re.compile(r'^// (Program of the tests|Helper of the tests)', re.M)


def main(proyecto):
    raiz = os.path.join(proyecto, 'tests')
    listas, fuentes = '', []
    for carpeta, _, nombres in os.walk(raiz):
        for nombre in nombres:
            ruta = os.path.join(carpeta, nombre)
            if nombre == 'CMakeLists.txt':
                with open(ruta, encoding='utf-8') as lista:
                    listas += lista.read()
            elif nombre.endswith('.cpp'):
                fuentes.append(ruta)
    fallos = []
    for ruta in sorted(fuentes):
        nombre = os.path.basename(ruta)
        with open(ruta, encoding='utf-8') as fuente:
            texto = fuente.read()
        corta = os.path.relpath(ruta, proyecto)
        if not re.search(r'(?<![\w])' + re.escape(nombre), listas):
            fallos.append(f'{corta}: in no CMakeLists.txt')
        if APAGADO.search(texto):
            fallos.append(f'{corta}: a case is switched off')
        if not CASO.search(texto) and not SIN_CASOS.search(texto) and '/apoyo/' not in ruta:
            fallos.append(f'{corta}: no case')
    if not fuentes:
        fallos.append('no test found')
    print('\n'.join(fallos) or f'{len(fuentes)} test sources are registered')
    return 1 if fallos else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
