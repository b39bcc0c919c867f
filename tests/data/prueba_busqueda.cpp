// The raw scan of a data file, and the search in a block under it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "data/apoyo_tablas.h"
#include "data/buscar_bytes.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::Tablas;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int tabla = data::tabla::extra;

TEST(BuscarBytes, ComoLaBusquedaDeLaBiblioteca) {
    const auto semilla = std::random_device{}();
    std::mt19937 azar(semilla);
    int hallados = 0;
    for (int vuelta = 0; vuelta < 20'000; ++vuelta) {
        const unsigned letras = 1 + azar() % 4;
        const auto texto = [&](std::size_t largo) {
            std::string t(largo, ' ');
            for (char& c : t)
                c = " 0a\xF1"[azar() % letras];
            return t;
        };
        const std::string bloque = texto(azar() % 400);
        const std::string buscado = texto(azar() % 12);
        const std::size_t desde = azar() % 450;
        const std::size_t debido = desde < bloque.size() ? bloque.find(buscado, desde) : std::string::npos;
        ASSERT_EQ(data::buscarBytes(bloque, buscado, desde), debido)
            << '"' << bloque << "\" \"" << buscado << "\" " << desde << ", seed " << semilla;
        if (debido != std::string::npos && !buscado.empty()) ++hallados;
    }
    EXPECT_GT(hallados, 1000);
}

struct Busqueda : MundoTablas {
    Tablas tablas{capa};
    Busqueda() { EXPECT_TRUE(abrir(tablas, tabla, "EXTRA", 0)); }

    void poner(std::int32_t registro, std::string_view descripcion, std::string_view cuenta = "570",
               std::string_view importe = "0") {
        ponerLinea(tablas, tabla, "260309", cuenta, "000001", descripcion, importe);
        tablas.EscribirRegistro(tabla, registro);
    }
    std::vector<std::int32_t> todos(int campo, std::string_view texto, bool ignorar = false,
                                    bool dos = false) {
        std::vector<std::int32_t> registros;
        Tablas::Busqueda busqueda;
        do {
            const auto registro = tablas.BuscarEnTabla(busqueda, tabla, campo, texto, ignorar, dos);
            if (busqueda.continuar != 0) registros.push_back(registro);
            if (busqueda.continuar == 0) {
                EXPECT_EQ(registro, 0);
            }
        } while (busqueda.continuar != 0 && registros.size() < 10'000);
        return registros;
    }
};

TEST(BuscarEnTabla, CadaRegistroUnaVez) {
    Busqueda m;
    m.poner(1, "CAJA Y CAJA Y CAJA");
    m.poner(2, "BANCO");
    m.poner(3, "    CAJA");
    m.poner(4, "caja");
    EXPECT_THAT(m.todos(linea::descripcion, "CAJA"), ElementsAre(1, 3));
    EXPECT_THAT(m.todos(linea::descripcion, "CAJA", true), ElementsAre(1, 3, 4));
    EXPECT_THAT(m.todos(linea::descripcion, "CAMPANA"), IsEmpty());
    EXPECT_THAT(m.todos(linea::descripcion, ""), ElementsAre(1, 2, 3, 4));
}

TEST(BuscarEnTabla, SoloDentroDelCampo) {
    Busqueda m;
    m.poner(1, "570 EN LA DESCRIPCION", "4300000");
    m.poner(2, "x", "570");
    m.poner(3, "xx", "1234567570");
    EXPECT_THAT(m.todos(linea::cuenta, "570"), ElementsAre(2, 3));
    // Beyond the field's end, from its last characters into the next field.
    EXPECT_THAT(m.todos(linea::cuenta, "7570000"), IsEmpty());
    EXPECT_THAT(m.todos(linea::cuenta, "7570"), ElementsAre(3));
    // From the field before.
    EXPECT_THAT(m.todos(linea::cuenta, "0957"), IsEmpty());
    EXPECT_THAT(m.todos(linea::descripcion, "570"), ElementsAre(1));
}

TEST(BuscarEnTabla, DeUnRegistroAlOtro) {
    MundoTablas m;
    m.carpeta.escribir("programa/CORTO.QZA",
                       ficheroDefinicion("CORTO", {{"A", 0, 4, 1}, {"B", 0, 4, 2}}, {{{1, 1, 4}}}));
    m.escribir("CORTO07.QZD",
               "ab..xyzw"
               "zwabxyzw"
               "....xywa");
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, 11, "CORTO", 0));
    const auto primero = [&](int campo, const char* texto) {
        Tablas::Busqueda busqueda;
        return t.BuscarEnTabla(busqueda, 11, campo, texto);
    };
    EXPECT_EQ(primero(1, "wz"), 0);  // over the edge of two records
    EXPECT_EQ(primero(2, "yz"), 1);
    EXPECT_EQ(primero(1, "ab"), 1);  // the first bytes of the file
    EXPECT_EQ(primero(1, "zw"), 2);
    // What begins in the last two bytes of a record counts as the next one's, and lies outside there.
    EXPECT_EQ(primero(2, "zw"), 0);
    EXPECT_EQ(primero(2, "w"), 0);
    EXPECT_EQ(primero(2, "y"), 1);
    EXPECT_EQ(primero(2, "xywa"), 3);
}

TEST(BuscarEnTabla, IgnorarMayusculasDeLaPagina) {
    Busqueda m;
    m.poner(1, "A\xD1O NUEVO");  // AÑO
    m.poner(2, "a\xF1o viejo");  // año
    EXPECT_THAT(m.todos(linea::descripcion, "a\xF1O", true), ElementsAre(1, 2));
    EXPECT_THAT(m.todos(linea::descripcion, "a\xF1o", false), ElementsAre(2));
}

TEST(BuscarEnTabla, DosTextos) {
    Busqueda m;
    m.poner(1, "segundo y luego PRIMERO");
    m.poner(2, "primero");
    m.poner(3, "ninguno");
    m.poner(4, "SEGUNDO");
    // Halves of one length; the character in the middle goes.
    EXPECT_THAT(m.todos(linea::descripcion, "primero.segundo", false, true), ElementsAre(1, 2));
    // The second one always distinguishes case.
    EXPECT_THAT(m.todos(linea::descripcion, "PRIMEROSEGUNDO", true, true), ElementsAre(2, 4));
    EXPECT_THAT(m.todos(linea::descripcion, "PRIMEROsegundo", true, true), ElementsAre(1, 2));
}

TEST(BuscarEnTabla, ElImporteEnSuImagen) {
    Busqueda m;
    m.poner(1, "a", "570", "1234.56");
    m.poner(2, "b", "570", "-1234.56");
    m.poner(3, "c", "570", "1234.57");
    const std::string ambos = data::DobleATexto(1234.56) + data::DobleATexto(-1234.56);
    EXPECT_THAT(m.todos(linea::importe, ambos, false, true), ElementsAre(1, 2));
}

TEST(BuscarEnTabla, SinEmpresa) {
    Busqueda m;
    m.poner(1, "CAJA");
    m.capa.enVigor.gEmpresaActual.clear();
    Tablas::Busqueda busqueda;
    EXPECT_EQ(m.tablas.BuscarEnTabla(busqueda, tabla, linea::descripcion, "CAJA"), 0);
    EXPECT_EQ(busqueda.continuar, 0);
}

// Hits at every place of a file of several blocks, its end among them, and a file that ends amid a record.
TEST(BuscarEnTabla, VariosBloques) {
    const auto semilla = std::random_device{}();
    std::mt19937 azar(semilla);
    constexpr std::int32_t porBloque = 65535 / linea::bytes;
    constexpr std::int32_t registros = 3 * porBloque + 17;
    Busqueda m;
    std::string datos;
    std::vector<std::int32_t> debidos;
    for (std::int32_t r = 1; r <= registros; ++r) {
        const bool borde = r % porBloque <= 1 || r == registros;
        const bool hay = borde || azar() % 300 == 0;
        std::string registro(linea::bytes, "\0 x"[azar() % 3]);
        // In the middle field, at its start, its end, or anywhere.
        if (hay) registro.replace(22 + azar() % 15, 6, "BUSCAD");
        if (!hay && azar() % 50 == 0) registro.replace(18, 6, "BUSCAD");  // begins before the field
        datos += registro;
        if (hay) debidos.push_back(r);
    }
    m.escribir("EXTRA07.QZD", datos + "  2603096400000   000001BUSCADO");
    EXPECT_EQ(m.todos(linea::descripcion, "BUSCAD"), debidos) << "seed " << semilla;
}

// What is written between two calls counts: each call looks at the disk.
TEST(BuscarEnTabla, LoEscritoEntreDosLlamadas) {
    Busqueda m;
    for (std::int32_t r = 1; r <= 5; ++r)
        m.poner(r, r == 1 ? "CAJA" : "BANCO");
    Tablas::Busqueda busqueda;
    EXPECT_EQ(m.tablas.BuscarEnTabla(busqueda, tabla, linea::descripcion, "CAJA"), 1);
    m.poner(4, "CAJA");
    EXPECT_EQ(m.tablas.BuscarEnTabla(busqueda, tabla, linea::descripcion, "CAJA"), 4);
    EXPECT_EQ(m.tablas.BuscarEnTabla(busqueda, tabla, linea::descripcion, "CAJA"), 0);
    EXPECT_EQ(busqueda.continuar, 0);
    EXPECT_EQ(m.tablas.BuscarEnTabla(busqueda, tabla, linea::descripcion, "CAJA"), 1);  // from the beginning
}

}  // namespace
