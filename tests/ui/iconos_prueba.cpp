#include "ui/iconos.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QSet>

#include "workflows/ventana_principal.h"

namespace tarvoline::ui {
namespace {

// The colours of a picture where nothing shines through.
QSet<QRgb> colores(const QIcon& icono, QIcon::Mode modo = QIcon::Normal) {
    const auto imagen =
        icono.pixmap(QSize(96, 96), 1.0, modo).toImage().convertToFormat(QImage::Format_ARGB32);
    QSet<QRgb> vistos;
    for (int y = 0; y < imagen.height(); ++y) {
        for (int x = 0; x < imagen.width(); ++x) {
            if (const auto punto = imagen.pixel(x, y); qAlpha(punto) == 255) {
                vistos.insert(punto);
            }
        }
    }
    return vistos;
}

class Iconos : public ::testing::Test {
  protected:
    ~Iconos() override { QApplication::setPalette(antes_); }

  private:
    QPalette antes_ = QApplication::palette();
};

TEST_F(Iconos, each_button_and_sign_is_drawn_in_the_colours_of_the_palette_in_force) {
    namespace boton = workflows::boton;
    QStringList nombres = {"calcular-espacio", "espacio-seleccion", "detener",   "preparando", "subida",
                           "bajada",           "carpeta",           "capacidad", "tamano",     "ojo",
                           "ojo-tachado"};
    for (const int numero :
         {boton::nuevoUsuario, boton::configuracion, boton::calcularEspacio, boton::soporte,
          boton::vaciarTemporal, boton::asistenciaRemota, boton::calidad, boton::online,
          boton::cambiarUsuario, boton::terminos, boton::manual, boton::eliminar, boton::subirPersonal,
          boton::restaurar, boton::subirEmpresa, boton::subirPendientes, boton::descargar}) {
        nombres << QString::number(numero);
    }
    const QPalette clara(Qt::black, QColor(240, 240, 240), Qt::white, Qt::gray, Qt::gray, Qt::black,
                         Qt::white, Qt::white, QColor(240, 240, 240));
    const QPalette oscura(Qt::white, QColor(50, 50, 50), Qt::gray, Qt::black, Qt::black, Qt::white, Qt::white,
                          QColor(30, 30, 30), QColor(50, 50, 50));
    for (auto paleta : {clara, oscura}) {
        const QColor acento(48, 140, 198);
        paleta.setColor(QPalette::Highlight, acento);
        paleta.setColor(QPalette::Link, Qt::red);
        QApplication::setPalette(paleta);
        for (const auto& nombre : nombres) {
            const auto dibujo = icono(nombre);
            EXPECT_TRUE(colores(dibujo).contains(acento.rgb())) << nombre.toStdString();
            EXPECT_GE(colores(dibujo).size(), 2) << nombre.toStdString();
            EXPECT_FALSE(colores(dibujo, QIcon::Disabled).contains(acento.rgb())) << nombre.toStdString();
        }
    }
}

TEST_F(Iconos, an_accent_that_would_get_lost_gives_way_to_the_colour_of_links) {
    QPalette paleta(QColor(240, 240, 240));
    paleta.setColor(QPalette::Highlight, QColor(230, 230, 240));
    paleta.setColor(QPalette::Link, QColor(0, 0, 200));
    QApplication::setPalette(paleta);
    EXPECT_TRUE(colores(icono("detener")).contains(QColor(0, 0, 200).rgb()));
}

TEST_F(Iconos, an_unknown_name_has_no_picture) {
    EXPECT_TRUE(icono("no-such-picture").isNull());
    EXPECT_FALSE(iconoPrograma().isNull());
}

}  // namespace
}  // namespace tarvoline::ui
