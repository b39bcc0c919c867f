#!/usr/bin/env python3
"""Posts a month of entries to a company and prints the statement of its bank account.

    mes.py COMPANY [MONTH]     the company's name in the data directory, or the path of its file

The module `enlace` is found through PYTHONPATH (build/<preset>/python) or as installed.
"""
import sys

import enlace

BANCO, VENTAS, IVA, CLIENTE = "5720000001", "7000000000", "4770000021", "4300000001"
NOMINAS = "6400000000"


def abrir(nombre):
    sesion = enlace.Enlace()
    sesion.AbrirEmpresa(nombre)
    for cuenta, titulo in ((BANCO, "Banco, cuenta corriente"), (CLIENTE, "Cliente habitual")):
        sesion.CrearCuenta(cuenta, titulo)
    return sesion


def factura(sesion, dia, base):
    """An invoice to the customer, with its VAT."""
    sesion.Fecha = dia
    sesion.Número = ""
    cuota = round(base * 0.21, 2)
    numero = "F-" + sesion.Número
    sesion.AñadirApunte(CLIENTE, "Factura " + numero, TIPO=1, Importe=base + cuota, Referencia=numero)
    sesion.AñadirApunte(VENTAS, "Factura " + numero, TIPO=2, Importe=base, Referencia=numero)
    sesion.AñadirApunte(IVA, "Factura " + numero, TIPO=2, Importe=cuota, Referencia=numero)
    sesion.AddVAT(CLIENTE, IVA, numero, dia, "21.00", "R", Base=base, TOTAL=base + cuota)
    sesion.GrabarAsiento()
    return base + cuota


def movimiento(sesion, dia, cuenta, concepto, importe):
    """Money that comes to the bank from an account, or leaves it when the amount is negative."""
    sesion.Fecha = dia
    sesion.Número = ""
    sesion.AñadirApunte(BANCO, concepto, 1 if importe > 0 else 2, abs(importe))
    sesion.AñadirApunte(cuenta, concepto, 2 if importe > 0 else 1, abs(importe))
    sesion.GrabarAsiento()


def contabilizar(sesion, mes):
    ejercicio = sesion.año(mes)

    def dia(numero):
        return f"{numero:02}/{mes:02}/{ejercicio}"

    for numero, base in ((3, 1200.0), (11, 845.5), (19, 2310.25)):
        total = factura(sesion, dia(numero), base)
        movimiento(sesion, dia(numero + 7), CLIENTE, "Cobro", total)
    movimiento(sesion, dia(28), NOMINAS, "Nóminas del mes", -1875.4)


def extracto(sesion):
    sesion.LeerExtracto(BANCO)
    for i in range(1, sesion.ContadorExtracto() + 1):
        linea = sesion.Extracto(i)
        print(f"{linea.Fecha}  {linea.Asiento}  {linea.Descripción:<24}"
              f"{linea.Debe:>12.2f}{linea.Haber:>12.2f}{linea.Saldo:>12.2f}")


def main(argumentos):
    if not 1 <= len(argumentos) <= 2:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        sesion = abrir(argumentos[0])
        contabilizar(sesion, int(argumentos[1]) if len(argumentos) == 2 else 1)
        extracto(sesion)
        sesion.CerrarEmpresa()
        return 0
    except enlace.ErrorEnlace as error:
        print(f"{error.numero:#x}: {error.descripcion}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
