#!/usr/bin/env python3
"""Fills the account of a demo service with a year of copies, for pictures of the window. The files are sparse: they have a
length and no content. The service must not be running. Usage: muestra.py SERVICE_FOLDER USER"""
import os
import sqlite3
import sys

MB = 1 << 20
EMPRESAS = [
    ('PANADERÍA NÚÑEZ', '2026-10-30  18 05', 41.3), ('PANADERÍA NÚÑEZ', '2026-09-30  18 02', 39.8),
    ('PANADERÍA NÚÑEZ', '2026-06-30  17 58', 36.1), ('ÓPTICA IBÁÑEZ S.L.', '2026-11-02  09 14', 12.6),
    ('ÓPTICA IBÁÑEZ S.L.', '2026-07-31  13 40', 11.9), ('TALLERES GARCÍA E HIJOS', '2026-11-06  20 31', 87.4),
    ('TALLERES GARCÍA E HIJOS', '2025-12-31  21 10', 74.0), ('FERRETERÍA LA UNIÓN', '2026-10-15  11 22', 5.2),
    ('AGUAS DEL NORTE S.A.', '2026-11-09  08 47', 163.7), ('AGUAS DEL NORTE S.A.', '2026-08-31  19 05', 158.2),
    ('CARPINTERÍA PEÑA', '2026-05-04  16 36', 2.4), ('GESTORÍA ÁLVAREZ Y CÍA', '2026-11-13  19 59', 28.8),
]
PERSONALES = [
    ('Contrato de alquiler 2026.pdf', 1.2), ('Escrituras.pdf', 8.7), ('Firma digital de la asesoría.p12', 0.01),
    ('Modelo 347, borrador.xlsx', 0.4), ('Nóminas noviembre.zip', 14.5), ('Presupuesto reforma.odt', 0.2),
]
HISTORIAL = [
    ('13/11/2026 19:59:31', 'ana ha subido la empresa Gestoría Álvarez y Cía.QZT'),
    ('12/11/2026 10:20:04', 'ana ha subido el archivo Nóminas noviembre.zip'),
    ('09/11/2026 08:47:55', 'ana ha subido la empresa Aguas del Norte S.A.QZT'),
    ('06/11/2026 20:31:12', 'ana ha subido la empresa Talleres García e Hijos.QZT'),
    ('02/11/2026 09:14:40', 'ana ha subido la empresa Óptica Ibáñez S.L.QZT'),
    ('30/10/2026 18:05:18', 'ana ha subido la empresa Panadería Núñez.QZT'),
    ('21/10/2026 12:01:47', 'ana ha bajado el archivo Escrituras.pdf'),
    ('15/10/2026 11:22:09', 'ana ha subido la empresa Ferretería La Unión.QZT'),
    ('30/09/2026 18:02:33', 'ana ha subido la empresa Panadería Núñez.QZT'),
    ('03/09/2026 09:30:26', 'ana ha borrado el archivo Balance 2024.xlsx'),
]


def main(raiz, usuario):
    base = sqlite3.connect(os.path.join(raiz, 'servicio.sqlite'))
    quien, = base.execute('SELECT id FROM usuarios WHERE usuario = ?', (usuario,)).fetchone()
    carpeta = os.path.join(raiz, 'datos', f'U{quien:07d}')
    os.makedirs(carpeta, exist_ok=True)
    archivos = [('VELDORIX', f'{nombre} {sello}.ZIP', mb) for nombre, sello, mb in EMPRESAS]
    archivos += [('PERSONAL', nombre, mb) for nombre, mb in PERSONALES]
    for tipo, nombre, mb in archivos:
        fila = base.execute('INSERT INTO archivos (usuario, carpeta, tipo, nombre) VALUES (?, ?, ?, ?)',
                            (quien, 'DATOS', tipo, nombre))
        with open(os.path.join(carpeta, str(fila.lastrowid)), 'wb') as archivo:
            archivo.truncate(int(mb * MB))
    for fecha, texto in reversed(HISTORIAL):
        base.execute('INSERT INTO historial (usuario, fecha, texto, carpeta) VALUES (?, ?, ?, ?)',
                     (quien, fecha, texto, 'DATOS'))
    base.commit()


if __name__ == '__main__':
    main(*sys.argv[1:])
