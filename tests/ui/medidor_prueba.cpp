// The gauge as it is painted.
#include "ui/medidor.h"

#include <gtest/gtest.h>

#include <QImage>

namespace tarvoline::ui {
namespace {

TEST(PruebaMedidor, LaCifraCambiaDeColorCuandoLaBarraLaAlcanza) {
    QWidget padre;
    Medidor medidor(&padre);
    medidor.resize(400, 24);
    const auto hay = [&](int porcentaje, const QColor& color) {
        medidor.poner({true, porcentaje});
        const auto imagen = medidor.grab().toImage();
        for (int x = imagen.width() / 3; x < imagen.width() * 2 / 3; ++x) {
            for (int y = 0; y < imagen.height(); ++y) {
                if (imagen.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    };
    const QColor negro(0, 0, 0);
    const QColor amarillo(255, 255, 0);
    const QColor azul(0, 0, 128);
    EXPECT_TRUE(hay(48, negro));
    EXPECT_FALSE(hay(48, amarillo));
    EXPECT_TRUE(hay(49, amarillo));
    EXPECT_FALSE(hay(49, negro));
    medidor.poner({true, 25});
    const auto imagen = medidor.grab().toImage();
    EXPECT_EQ(imagen.pixelColor(99, 1), azul);
    EXPECT_NE(imagen.pixelColor(101, 1), azul);
}

}  // namespace
}  // namespace tarvoline::ui
