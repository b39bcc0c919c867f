#!/usr/bin/env python3
"""Fails when the desktop entry or the description for software centres is invalid, or when they name another program,
icon or version than the project has. Usage: escritorio.py PROJECT VERSION. Exit 77: a validator is not installed."""
import configparser
import os
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ET

VALIDADORES = [
    (['desktop-file-validate'], 'tarvoline.desktop'),
    (['appstreamcli', 'validate', '--no-net'], 'example.tarvoline.tarvoline.metainfo.xml'),
]


def discrepancias(proyecto, carpeta, version):
    entrada = configparser.ConfigParser(interpolation=None)
    entrada.optionxform = str
    entrada.read(os.path.join(carpeta, 'tarvoline.desktop'), encoding='utf-8')
    entrada = entrada['Desktop Entry']
    ficha = ET.parse(os.path.join(carpeta, VALIDADORES[1][1])).getroot()
    dibujo = os.path.join(proyecto, 'src', 'ui', 'iconos', entrada['Icon'] + '.svg')
    if not os.path.exists(dibujo):
        yield f'no icon {dibujo}'
    pares = [
        ('program', entrada['Exec'], ficha.findtext('provides/binary')),
        ('entry', 'tarvoline.desktop', ficha.findtext('launchable')),
        ('icon', entrada['Icon'], ficha.findtext('icon')),
        ('name', entrada['Name'], ficha.findtext('name')),
        ('version', version, ficha.find('releases/release').get('version')),
    ]
    for que, una, otra in pares:
        if una != otra:
            yield f'{que}: {una} and {otra}'
    ingles = {e.tag for e in ficha.iter() if e.tag in ('summary', 'p', 'li')}
    for etiqueta in ingles:
        todos = [e.get('{http://www.w3.org/XML/1998/namespace}lang') for e in ficha.iter(etiqueta)]
        if todos.count(None) != todos.count('es'):
            yield f'<{etiqueta}> is not there in both languages'


def main(proyecto, version):
    carpeta = os.path.join(proyecto, 'share', 'escritorio')
    malos = list(discrepancias(proyecto, carpeta, version))
    faltan = [orden[0] for orden, _ in VALIDADORES if not shutil.which(orden[0])]
    for orden, nombre in VALIDADORES:
        if orden[0] not in faltan:
            hecho = subprocess.run(orden + [os.path.join(carpeta, nombre)], capture_output=True, text=True)
            if hecho.returncode != 0 or 'warning' in hecho.stdout:
                malos.append(f'{nombre}:\n{hecho.stdout}{hecho.stderr}')
    print('\n'.join(malos + [f'not installed: {n}' for n in faltan]))
    return 1 if malos else 77 if faltan else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
