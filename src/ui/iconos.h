// The program's own pictures: one family on a grid of 24, drawn in two colours that follow the palette.
#pragma once

#include <QIcon>
#include <QString>

namespace tarvoline::ui {

// Makes the pictures known as `:/iconos/<name>.svg`. Call it once, before the first icon is asked for; more
// calls do no harm.
void cargarIconos();

// The picture of a name: a number of the toolbar ("107") or a word ("detener", "carpeta", ...;
// src/ui/iconos). Its lines take the colour of the palette's text and its accent that of the palette's
// highlight, sharp at every scale, and both change with the palette. An unknown name gives an empty icon.
QIcon icono(const QString& nombre);

// The program's own mark, in its own colours.
QIcon iconoPrograma();

}  // namespace tarvoline::ui
