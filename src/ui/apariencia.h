// What the whole application looks and sounds like before its first window: icons, colours, and the toolkit's
// own words.
#pragma once

#include <QApplication>

namespace tarvoline::ui {

// Window icon and pictures; and dark colours where the desktop prefers them and the toolkit has not taken
// them over by itself. The environment variable TARVOLINE_TEMA ("claro", "oscuro") decides before the
// desktop.
void vestir(QApplication& aplicacion);

// The captions of the toolkit's own buttons and dialogs in Spanish, when its translations are installed.
void hablarEspanol(QApplication& aplicacion);

}  // namespace tarvoline::ui
