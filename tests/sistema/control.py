#!/usr/bin/env python3
"""Looks at the program's window as a screen reader does.
  control.py sitio ROLE NAME   the middle of that control on the screen, "x y"; exit 1 while it is not shown or not enabled
  control.py texto ROLE NAME   what that control holds
  control.py arbol             everything that is shown
  control.py hay TEXT          exit 0 when a cell of a table reads as, or ends with, this text
NAME is a regular expression for the whole accessible name."""
import re
import sys

import gi

gi.require_version('Atspi', '2.0')
from gi.repository import Atspi, GLib  # noqa: E402


def recorrer(nodo):
    yield nodo
    for i in range(nodo.get_child_count()):
        hijo = nodo.get_child_at_index(i)
        if hijo is not None:
            yield from recorrer(hijo)


def controles():
    escritorio = Atspi.get_desktop(0)
    for i in range(escritorio.get_child_count()):
        programa = escritorio.get_child_at_index(i)
        if programa is not None and programa.get_name() == 'tarvoline':
            yield from recorrer(programa)


def a_mano(control):
    estados = control.get_state_set()
    return estados.contains(Atspi.StateType.SHOWING) and estados.contains(Atspi.StateType.ENABLED)


def sitio(papel, nombre):
    for control in controles():
        if control.get_role_name() == papel and re.fullmatch(nombre, control.get_name()) and a_mano(control):
            marco = control.get_extents(Atspi.CoordType.SCREEN)
            print(marco.x + marco.width // 2, marco.y + marco.height // 2)
            return True
    return False


def texto(papel, nombre):
    for control in controles():
        if control.get_role_name() == papel and re.fullmatch(nombre, control.get_name()) and a_mano(control):
            print(Atspi.Text.get_text(control, 0, Atspi.Text.get_character_count(control)))
            return True
    return False


def hay(texto):
    return any(c.get_role_name() == 'table cell' and c.get_name().endswith(texto) for c in controles())


def arbol():
    for control in controles():
        if a_mano(control):
            print(f'{control.get_role_name()}: {control.get_name()}')
    return True


def main(orden, *argumentos):
    try:
        return 0 if {'sitio': sitio, 'texto': texto, 'hay': hay, 'arbol': arbol}[orden](*argumentos) else 1
    except GLib.Error:
        return 1  # a control went away while it was being looked at: the caller tries again


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
