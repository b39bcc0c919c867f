#!/usr/bin/env python3
"""A second workstation: takes and tries byte-range locks over the network protocol.
  cliente.py PORT USER PASSWORD SHARE FILE FROM LENGTH
Prints "tomado" and holds the lock until its input ends, or prints "negado" (exit 1); then whether the range can be read."""
import struct
import sys

from impacket.nt_errors import STATUS_FILE_LOCK_CONFLICT, STATUS_LOCK_NOT_GRANTED, STATUS_SUCCESS
from impacket.smb3structs import SMB2_LOCK, SMB2_LOCKFLAG_EXCLUSIVE_LOCK, SMB2_LOCKFLAG_FAIL_IMMEDIATELY
from impacket.smbconnection import SessionError, SMBConnection

LEER_Y_ESCRIBIR = 0x0012019F
TODOS = 7  # others may read, write and delete


def bloquear(conexion, arbol, archivo, desde, longitud):
    servidor = conexion.getSMBServer()
    paquete = servidor.SMB_PACKET()
    paquete['Command'] = SMB2_LOCK
    paquete['TreeID'] = arbol
    banderas = SMB2_LOCKFLAG_EXCLUSIVE_LOCK | SMB2_LOCKFLAG_FAIL_IMMEDIATELY
    paquete['Data'] = (struct.pack('<HHL', 48, 1, 0) + archivo +
                       struct.pack('<QQLL', desde, longitud, banderas, 0))
    estado = servidor.recvSMB(servidor.sendSMB(paquete))['Status']
    if estado not in (STATUS_SUCCESS, STATUS_LOCK_NOT_GRANTED, STATUS_FILE_LOCK_CONFLICT):
        sys.exit(f'lock: status {estado:#x}')
    return estado == STATUS_SUCCESS


def leer(conexion, arbol, archivo, desde, longitud):
    try:
        conexion.readFile(arbol, archivo, desde, longitud)
        return 'legible'
    except SessionError:
        return 'ilegible'


def main(puerto, usuario, clave, carpeta, nombre, desde, longitud):
    conexion = SMBConnection('127.0.0.1', '127.0.0.1', sess_port=int(puerto))
    conexion.login(usuario, clave)
    arbol = conexion.connectTree(carpeta)
    archivo = conexion.openFile(arbol, nombre, desiredAccess=LEER_Y_ESCRIBIR, shareMode=TODOS)
    rango = int(desde), int(longitud)
    tomado = bloquear(conexion, arbol, archivo, *rango)
    print('tomado' if tomado else 'negado', leer(conexion, arbol, archivo, *rango), flush=True)
    if tomado:
        sys.stdin.read(1)
    return 0 if tomado else 1


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
