// Program of the tests: every case of it runs inside one application of the toolkit, without a screen.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/apariencia.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication aplicacion(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    tarvoline::ui::vestir(aplicacion);
    return RUN_ALL_TESTS();
}
