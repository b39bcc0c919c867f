#!/usr/bin/env python3
"""Fails when a source includes a header of a floor it may not use, when a Qt header is included outside ui/, and
when a conditional for a system or an empty catch stands outside platform/. Usage: pisos.py PROJECT"""
import os
import re
import sys

# Each folder of src/ and the folders below it that it may include. The platform is open to all of them.
PUEDE = {
    'platform': [],
    'core': [],
    'soap': ['core'],
    'motor': [],
    'data': ['motor', 'core'],
    'zip': ['core'],
    'service': ['soap', 'core'],
    'link': ['data', 'soap', 'core'],
    'workflows': ['service', 'link', 'data', 'zip', 'soap', 'core'],
    'ui': ['workflows', 'core'],
    'consola': ['workflows', 'core'],
    'server': ['link', 'data', 'soap', 'core'],
    'tools': ['link', 'data', 'motor', 'core'],
    'python': ['link', 'data', 'soap', 'core'],
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
CONDICION = re.compile(r'^\s*#\s*(if|ifdef|ifndef|elif)\b')
CATCH_VACIO = re.compile(r'catch\s*\([^)]*\)\s*\{\s*\}')


def fallos_de(ruta, piso, texto):
    permitidos = set(PUEDE[piso]) | {piso, 'platform'}
    for numero, linea in enumerate(texto.split('\n'), 1):
        hallado = INCLUDE.match(linea)
        if hallado:
            nombre = hallado.group(2)
            destino = nombre.split('/')[0]
            if hallado.group(1) == '"' and destino in PUEDE and destino not in permitidos:
                yield f'{ruta}:{numero}: {piso} may not include {nombre}'
            if re.match(r'(Qt|Q[A-Z])', nombre) and piso != 'ui':
                yield f'{ruta}:{numero}: Qt outside ui'
        if CONDICION.match(linea) and piso != 'platform':
            yield f'{ruta}:{numero}: conditional compilation outside platform'
    if CATCH_VACIO.search(texto):
        yield f'{ruta}: empty catch'


def main(proyecto):
    fallos, vistos = [], 0
    raiz = os.path.join(proyecto, 'src')
    for carpeta, _, nombres in os.walk(raiz):
        piso = os.path.relpath(carpeta, raiz).split(os.sep)[0]
        for nombre in nombres:
            if piso == '.' or not nombre.endswith(('.h', '.cpp')):
                continue
            ruta = os.path.join(carpeta, nombre)
            vistos += 1
            if piso not in PUEDE:
                fallos.append(f'{ruta}: folder {piso} has no floor')
                continue
            with open(ruta, encoding='utf-8') as fuente:
                fallos += fallos_de(os.path.relpath(ruta, proyecto), piso, fuente.read())
    if not vistos:
        fallos.append('no source found')
    print('\n'.join(fallos) or f'{vistos} files keep to their floors')
    return 1 if fallos else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
