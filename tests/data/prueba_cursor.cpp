#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/en_procesos.h"
#include "data/apoyo_tablas.h"
#include "data/tabla_cursor.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::TablaCursor;
using data::Tablas;
using testing::ElementsAre;

struct Cursores : MundoTablas {
    Tablas tablas{capa};

    Cursores() {
        EXPECT_TRUE(abrir(tablas, data::tabla::extra, "EXTRA"));
        EXPECT_TRUE(abrir(tablas, data::tabla::planc, "PLANC"));
    }
    std::string ruta(const char* nombre) const { return datos(std::string(nombre) + "07.QZD"); }
    void linea(std::string_view fecha, std::string_view asiento, std::string_view descripcion) {
        ponerLinea(tablas, data::tabla::extra, fecha, "4300001", asiento, core::aAnsi(descripcion).bytes(),
                   "2.5");
        tablas.AnadirRegistro(data::tabla::extra);
    }
    void lineas() {
        for (const char* texto : {"una", "dos", "tres", "cuatro"})
            linea("C50115", "000001", texto);
        linea("C50116", "000002", "cinco");
    }
    void cuenta(std::string_view codigo) {
        tablas.blanquear(data::tabla::planc);
        tablas.ponerCampo(data::tabla::planc, plan::cuenta, codigo);
        tablas.AnadirRegistro(data::tabla::planc);
    }
    static std::vector<std::int32_t> camino(TablaCursor& cursor) {
        std::vector<std::int32_t> registros;
        for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente())
            registros.push_back(cursor.registro());
        return registros;
    }
};

TEST(Cursor, PaseoConFiltro) {
    Cursores m;
    m.lineas();
    TablaCursor cursor(m.capa, m.tablas);
    ASSERT_TRUE(cursor.Abrir(m.ruta("EXTRA")));
    EXPECT_TRUE(cursor.FinDeTabla());
    EXPECT_EQ(cursor.LeerCampo(14), "");
    EXPECT_THAT(Cursores::camino(cursor), ElementsAre(1, 2, 3, 4, 5));
    cursor.Filtrar("FECHA = 15/01/25 and ASIENTO = 000001 AND DESCRIPCION LIKE *o*");
    EXPECT_EQ(cursor.ContarRegistros(), 2);
    EXPECT_THAT(Cursores::camino(cursor), ElementsAre(2, 4));
    cursor.Filtrar("FECHA = 15/01/25 and ASIENTO = 000001 AND DESCRIPCION LIKE *o*");
    cursor.IrARegistro(2);  // into a set that nobody has asked for yet
    cursor.Siguiente();
    EXPECT_EQ(cursor.registro(), 4);
    EXPECT_EQ(cursor.ContarRegistros(), 2);
    cursor.Ultimo();
    EXPECT_EQ(cursor.LeerCampo(14), "cuatro");
    EXPECT_EQ(cursor.LeerCampo(1), "C50115");
    EXPECT_EQ(cursor.LeerCampo(6), "2.5");
    EXPECT_EQ(cursor.LeerNumero(6), 2.5);
    EXPECT_EQ(cursor.LeerCampoPorNombre("cuenta"), "4300001");
    cursor.Siguiente();
    EXPECT_TRUE(cursor.FinDeTabla());
    EXPECT_THROW(cursor.LeerCampoPorNombre("OTRA"), data::ErrorFiltro);
    EXPECT_THROW(cursor.LeerCampo(99), std::out_of_range);
    EXPECT_THROW(cursor.Filtrar("OTRA = 1"), data::ErrorFiltro);
    cursor.Filtrar("ASIENTO = 000009 AND FECHA = 15/01/25");
    EXPECT_EQ(cursor.ContarRegistros(), 0);
    cursor.Primero();
    EXPECT_TRUE(cursor.FinDeTabla());
    cursor.Ultimo();
    EXPECT_TRUE(cursor.FinDeTabla());
}

TEST(Cursor, LasCuentasPorSuCodigo) {
    Cursores m;
    for (const char* codigo : {"4300012", "43", "5700000", "4300002"})
        m.cuenta(codigo);
    TablaCursor cursor(m.capa, m.tablas);
    ASSERT_TRUE(cursor.Abrir(m.ruta("PLANC")));
    cursor.Filtrar("CUENTA LIKE 4300*");
    cursor.Ultimo();
    EXPECT_EQ(cursor.LeerCampo(1), "4300012");
    cursor.Filtrar("");
    EXPECT_THAT(Cursores::camino(cursor), ElementsAre(2, 4, 1, 3));
}

TEST(Cursor, CambiaSoloLoEscrito) {
    Cursores m;
    m.cuenta("43");
    m.cuenta("44");
    TablaCursor cursor(m.capa, m.tablas);
    ASSERT_TRUE(cursor.Abrir(m.ruta("PLANC")));
    EXPECT_THROW(cursor.Actualizar(), data::ErrorCursor);
    EXPECT_THROW(cursor.Editar(), data::ErrorCursor);
    cursor.IrARegistro(1);
    EXPECT_EQ(cursor.ContarRegistros(), 1);
    EXPECT_THROW(cursor.EscribirCampo(2, 0, "x"), data::ErrorCursor);
    cursor.Editar();
    cursor.EscribirCampo(1, 0, "4399");
    cursor.EscribirCampo(2, 0, "Años");
    cursor.EscribirCampo(12, 1, 12.25);  // the column behind the base
    EXPECT_EQ(cursor.LeerCampo(2), "Años");
    // Meanwhile somebody posts to another column of the row.
    m.tablas.escribirCampoDoble(data::tabla::planc, 1, plan::haber, 77);
    cursor.Actualizar();
    EXPECT_EQ(m.tablas.gEstado, 0);
    EXPECT_EQ(m.tablas.LeerCampoDoble(data::tabla::planc, 1, plan::haber), 77);
    EXPECT_EQ(m.tablas.LeerCampoDoble(data::tabla::planc, 1, plan::debe + 1), 12.25);
    m.tablas.LeerRegistro(data::tabla::planc, 1);
    EXPECT_EQ(m.tablas.texto(data::tabla::planc, 2), "Años");
    // The keys went along.
    EXPECT_THAT(recorrido(m.tablas, data::tabla::planc, 1), ElementsAre(1, 2));
    EXPECT_EQ(m.tablas.orden("S\\1\\1\\43"), motor::estado::antes);
    EXPECT_EQ(m.tablas.orden("S\\1\\1\\4399"), motor::estado::bien);
    EXPECT_EQ(m.tablas.orden("S\\2\\1\\" + core::aAnsi("Años").bytes() + std::string(16, ' ') + "4399"),
              motor::estado::bien);
    EXPECT_THROW(cursor.Actualizar(), data::ErrorCursor);  // the change is over
}

TEST(Cursor, FilaNuevaYFilaQueNoHay) {
    Cursores m;
    m.lineas();
    TablaCursor cursor(m.capa, m.tablas);
    ASSERT_TRUE(cursor.Abrir(m.ruta("EXTRA")));
    cursor.Nuevo();
    cursor.EscribirCampo(3, 0, "000003");
    cursor.EscribirCampo(6, 0, -1.5);
    cursor.Actualizar();
    EXPECT_EQ(m.tablas.gEstado, 0);
    EXPECT_EQ(cursor.registro(), 6);
    EXPECT_EQ(cursor.LeerCampo(3), "000003");
    EXPECT_EQ(cursor.LeerNumero(6), -1.5);
    EXPECT_THAT(recorrido(m.tablas, data::tabla::extra, 1), ElementsAre(6, 1, 2, 3, 4, 5));
    for (const int registro : {0, -1, 7}) {
        cursor.IrARegistro(registro);
        EXPECT_LE(cursor.ContarRegistros(), 0) << registro;
        EXPECT_TRUE(cursor.FinDeTabla());
    }
    // A removed one is none either.
    m.tablas.BorrarRegistro(data::tabla::extra, 3);
    cursor.IrARegistro(3);
    EXPECT_LE(cursor.ContarRegistros(), 0);
    cursor.IrARegistro(4);
    EXPECT_GT(cursor.ContarRegistros(), 0);
}

TEST(Cursor, BorrarEnElPaseo) {
    Cursores m;
    m.lineas();
    TablaCursor cursor(m.capa, m.tablas);
    ASSERT_TRUE(cursor.Abrir(m.ruta("EXTRA")));
    cursor.Filtrar("FECHA = 15/01/25 AND ASIENTO = 000001");
    std::vector<std::int32_t> vistas;
    for (cursor.Primero(); !cursor.FinDeTabla(); cursor.Siguiente()) {
        vistas.push_back(cursor.registro());
        if (cursor.registro() == 2 || cursor.registro() == 4) cursor.Borrar();
        // What another removes is passed over.
        if (vistas.size() == 1) m.linea("C50115", "000001", "tardía");
    }
    EXPECT_THAT(vistas, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(Cursores::camino(cursor), ElementsAre(1, 3, 6));
    cursor.Primero();
    m.tablas.BorrarRegistro(data::tabla::extra, 3);
    cursor.Siguiente();
    EXPECT_EQ(cursor.registro(), 6);
    EXPECT_THAT(recorrido(m.tablas, data::tabla::extra, 1), ElementsAre(1, 6, 5));
}

TEST(Cursor, RanurasYReapertura) {
    Cursores m;
    m.lineas();
    std::vector<std::unique_ptr<TablaCursor>> cursores;
    for (int i = 0; i < 7; ++i) {
        cursores.push_back(std::make_unique<TablaCursor>(m.capa, m.tablas));
        ASSERT_TRUE(cursores.back()->Abrir(m.ruta("EXTRA")));
        cursores.back()->Primero();
    }
    TablaCursor octavo(m.capa, m.tablas);
    EXPECT_THROW(octavo.Abrir(m.ruta("EXTRA")), data::ErrorCursor);
    EXPECT_THROW(octavo.Primero(), data::ErrorCursor);
    cursores.resize(1);
    // All is closed under it, and another takes its slot; it goes on with its set, its row and its change.
    TablaCursor& primero = *cursores.front();
    primero.Siguiente();
    primero.Editar();
    primero.EscribirCampo(14, 0, "cambiada");
    m.tablas.CerrarTodo();
    ASSERT_TRUE(octavo.Abrir(m.ruta("PLANC")));
    EXPECT_EQ(primero.LeerCampo(14), "cambiada");
    primero.Actualizar();
    primero.Siguiente();
    EXPECT_EQ(primero.LeerCampo(14), "tres");
    m.tablas.CerrarTodo();
    primero.Siguiente();
    EXPECT_EQ(primero.registro(), 4);
    octavo.Primero();
    EXPECT_TRUE(octavo.FinDeTabla());
    primero.IrARegistro(2);
    EXPECT_EQ(primero.LeerCampo(14), "cambiada");
    cursores.clear();
    octavo.Cerrar();
    for (const int ranura : {11, 12, 13, 14, 15, 0, 7})
        EXPECT_FALSE(m.tablas.abierta(ranura)) << ranura;
}

// Two processes change different fields of the same rows, one of them a key field: neither undoes the other.
TEST(Cursor, DosProcesosEnUnaFila) {
    Cursores m;
    m.lineas();
    m.tablas.CerrarTodo();
    m.capa.reintentosTablas = {500, std::chrono::milliseconds(10)};
    constexpr int veces = 60;
    enProcesos(2, veces, [&](int proceso, int vez) {
        Tablas tablas(m.capa);
        TablaCursor cursor(m.capa, tablas);
        if (!cursor.Abrir(m.ruta("EXTRA"))) throw std::runtime_error("not open");
        cursor.IrARegistro(1 + vez % 2);
        cursor.Editar();
        const std::string valor = std::to_string(vez);
        cursor.EscribirCampo(proceso == 0 ? 3 : 14, 0, proceso == 0 ? valor : "xx" + valor);
        cursor.Actualizar();
        if (tablas.gEstado != 0) throw std::runtime_error("keys");
    });
    ASSERT_TRUE(m.abrir(m.tablas, data::tabla::extra, "EXTRA"));
    for (const std::int32_t registro : {1, 2}) {
        const std::string ultima = std::to_string(veces - 3 + registro);
        m.tablas.LeerRegistro(data::tabla::extra, registro);
        EXPECT_EQ(m.tablas.texto(data::tabla::extra, 3), ultima);
        EXPECT_EQ(m.tablas.texto(data::tabla::extra, 14), "xx" + ultima);
        EXPECT_EQ(m.tablas.orden("S\\1\\2\\C50115" + ultima), 0);
        EXPECT_EQ(m.tablas.gRegistro, registro);
        EXPECT_EQ(m.tablas.orden("S\\3\\2\\" + ultima), 0);
        EXPECT_EQ(m.tablas.gRegistro, registro);
    }
}

}  // namespace
