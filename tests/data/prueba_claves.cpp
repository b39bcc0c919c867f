// The request codes of ClavesTabla, and fields that keys are made of.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/archivos_defectuosos.h"
#include "data/apoyo_tablas.h"
#include "data/claves_tabla.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::Tablas;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int tabla = data::tabla::extra;

struct Respuesta {
    int codigo;
    std::string texto;
    bool operator==(const Respuesta&) const = default;
};
std::ostream& operator<<(std::ostream& salida, const Respuesta& r) {
    return salida << r.codigo << " \"" << r.texto << '"';
}

struct Claves : MundoTablas {
    Tablas tablas{capa};
    Claves() {
        EXPECT_TRUE(abrir(tablas, tabla, "EXTRA"));
        ponerLinea(tablas, tabla, "260309", "6400000", "000001", "SUELDOS DE MARZO", "10");
        tablas.AnadirRegistro(tabla);
        EXPECT_EQ(tablas.gRegistro, 1);
    }
    Respuesta pedir(int codigo, std::string texto = {}) {
        auto pedido = static_cast<std::int16_t>(codigo);
        tablas.ClavesTabla(tabla, pedido, texto);
        return {pedido, texto};
    }
    // The commands that `paso` sends, from gComando after each; only the last one can be seen.
    bool tieneClave(int clave, const std::string& texto, std::int32_t registro = 1) {
        return tablas.orden("S\\" + std::to_string(clave) + "\\2\\" + texto) == 0 &&
               tablas.gRegistro == registro;
    }
};

TEST(Claves, CodigosQuePreguntan) {
    Claves m;
    const std::string clave1 = "\\260309000001", clave2 = "\\6400000   260309", clave3 = "\\ELDOS DE";
    EXPECT_EQ(m.pedir(0), (Respuesta{0, clave1 + clave2 + clave3}));
    EXPECT_EQ(m.pedir(1), (Respuesta{1, clave1}));
    EXPECT_EQ(m.pedir(3, "what stood there"), (Respuesta{3, clave3}));
    EXPECT_EQ(m.pedir(4), (Respuesta{4, "\\"}));  // a key that the table does not have
    EXPECT_EQ(m.pedir(101), (Respuesta{16, "3"}));
    EXPECT_EQ(m.pedir(200 + linea::fecha), (Respuesta{1, "1"}));
    EXPECT_EQ(m.pedir(200 + linea::cuenta), (Respuesta{1, "2"}));
    EXPECT_EQ(m.pedir(200 + linea::asiento), (Respuesta{0, "0"}));  // second segments begin nothing
    EXPECT_EQ(m.pedir(400 + linea::asiento), (Respuesta{403, "True"}));
    EXPECT_EQ(m.pedir(400 + linea::importe), (Respuesta{405, "False"}));
    EXPECT_EQ(m.pedir(502), (Respuesta{502, "2,1"}));
    EXPECT_EQ(m.pedir(509), (Respuesta{509, ""}));
    EXPECT_EQ(m.pedir(599), (Respuesta{599, ""}));
    for (const int codigo : {-1, 11, 99, 103, 199, 200, 300, 400, 500, 600, 32767}) {
        EXPECT_EQ(m.pedir(codigo, "something"), (Respuesta{codigo, ""}));
    }
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
}

TEST(Claves, DosClavesQueEmpiezanIgual) {
    MundoTablas m;
    m.carpeta.escribir("programa/DOBLE.QZA",
                       ficheroDefinicion("DOBLE", {{"A", 0, 4, 1}, {"B", 0, 4, 2}},
                                         {{{1, 1, 4}}, {{2, 1, 4}}, {{1, 1, 2}, {2, 1, 2}}}));
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, 11, "DOBLE"));
    std::int16_t codigo = 201;
    std::string texto;
    t.ClavesTabla(11, codigo, texto);
    EXPECT_EQ(texto, "3");
}

TEST(Claves, LeerOtraDefinicion) {
    Claves m;
    EXPECT_EQ(m.pedir(100, "PLANC"), (Respuesta{100, "Apertura2"}));
    EXPECT_EQ(m.pedir(101), (Respuesta{30, "2"}));
    // The fields are still the table's own: its amount is field 5, its record 60 bytes long.
    EXPECT_EQ(m.tablas.definicion(tabla).gLongitudRegistro, linea::bytes);
    EXPECT_EQ(m.tablas.gCampos(tabla, linea::importe), "10");
    EXPECT_EQ(m.pedir(1), (Respuesta{1, "\\260309"}));

    // A position names the field that bears it here.
    m.carpeta.escribir("programa/POSIC.QZA", ficheroDefinicion("P", {{"A", 0, 4, 14}}, {}) + "I1  0105" +
                                                 std::string(23, ' ') + "14");
    m.pedir(100, "POSIC");
    EXPECT_EQ(m.pedir(1), (Respuesta{1, "\\SUELD"}));
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
}

// What cannot be answered is shown, and the answer is empty.
TEST(Claves, LoQueNoSePuedeResponder) {
    Claves m;
    m.carpeta.escribir("programa/AJENA.QZA",
                       ficheroDefinicion("A", {{"A", 0, 4, 1}}, {}) + "I1:00105" + std::string(25, ' '));
    m.pedir(100, "AJENA");  // field 100
    EXPECT_EQ(m.vistas.textos(), "un segmento sin campo en la clave 1 de la definición\n");
    EXPECT_EQ(m.pedir(1), (Respuesta{1, "\\260309000001"}));  // the keys of before
    std::int16_t codigo = 0;
    std::string texto = "something";
    m.tablas.ClavesTabla(13, codigo, texto);
    EXPECT_EQ(texto, "");
    EXPECT_EQ(m.vistas.cajas.size(), 2U);
    EXPECT_THROW(m.tablas.GrabarCampoClave(13, 1, 1, "x"), platform::ErrorArchivo);
}

// A "\" would part the fields of a command.
TEST(Claves, BarrasDentroDeUnTexto) {
    Claves m;
    ponerLinea(m.tablas, tabla, "260310", "6400000", "000002", "A\\12\\x");
    EXPECT_EQ(m.pedir(3).texto, "\\12\x1Fx    ");
    m.tablas.AnadirRegistro(tabla);
    ASSERT_EQ(m.tablas.gEstado, 0);
    EXPECT_TRUE(m.tieneClave(3, "12\\x", 2));
    m.tablas.GrabarCampoClave(tabla, 2, linea::descripcion, "B\\13");
    EXPECT_TRUE(m.tieneClave(3, "13      ", 2));
    m.tablas.BorrarRegistro(tabla, 2);
    EXPECT_EQ(m.tablas.gEstado, 0);
    EXPECT_THAT(recorrido(m.tablas, tabla, 3), ElementsAre(1));
}

// Segments of a field whose text is shorter than they are.
TEST(Claves, TextosCortos) {
    const auto definicion = data::interpretarDefinicion(definicionLineas());
    std::vector<std::string> campos(definicion.campos.size());
    campos[linea::descripcion] = "AB";
    std::string texto = "kept\\";
    data::anadirClave(definicion, 3, campos, texto);
    EXPECT_EQ(texto, "kept\\");
    campos[linea::descripcion] = "ABC";
    data::anadirClave(definicion, 3, campos, texto);
    EXPECT_EQ(texto, "kept\\C");
}

TEST(Claves, RecolocarUnRegistro) {
    Claves m;
    m.tablas.blanquear(tabla);  // the record is read, whatever is loaded
    EXPECT_EQ(m.pedir(300 + linea::fecha, " 1\\260401"), (Respuesta{301, " 1\\260401"}));
    EXPECT_EQ(m.tablas.gComando, "R\\2\\1\\2\\6400000   260309\\6400000   260401");
    EXPECT_TRUE(m.tieneClave(1, "260401000001"));
    EXPECT_TRUE(m.tieneClave(2, "6400000   260401"));
    EXPECT_TRUE(m.tieneClave(3, "ELDOS DE"));
    EXPECT_EQ(m.tablas.gCampos(tabla, linea::fecha), "260309");  // the record itself stays
    EXPECT_EQ(m.tablas.LeerCampo(tabla, 1, linea::fecha), "260309");
    EXPECT_THAT(m.vistas.cajas, IsEmpty());

    // No field of a key, or the same text: nothing is sent.
    m.tablas.gComando = "nothing";
    m.pedir(300 + linea::importe, " 1\\99");
    m.pedir(300 + linea::cuenta, " 1\\6400000");
    EXPECT_EQ(m.tablas.gComando, "nothing");
}

// The keys do not know the record: told twice for each key, and the next key is tried all the same.
TEST(Claves, RecolocarLoQueNoEsta) {
    Claves m;
    m.tablas.orden("R\\1\\1\\2\\260309000001\\lost");
    m.pedir(300 + linea::fecha, " 1\\260401");
    ASSERT_EQ(m.vistas.cajas.size(), 2U);
    EXPECT_EQ(m.vistas.cajas[0].texto, "ERROR INDEXADOS Nº 9R\\1\\1\\2\\260309000001\\260401000001");
    EXPECT_EQ(m.vistas.cajas[0].icono, core::Icono::parada);
    EXPECT_EQ(m.vistas.cajas[1].texto, "Error indexados... Reindexar Archivo Lineas Del Diario");
    EXPECT_EQ(m.vistas.cajas[1].icono, core::Icono::exclamacion);
    EXPECT_TRUE(m.tieneClave(2, "6400000   260401"));
}

TEST(Claves, RecolocarDesdeUnaForma) {
    Claves m;
    m.pedir(102, " 1 ");  // no form, no work
    EXPECT_TRUE(m.tieneClave(1, "260309000001"));
    const std::vector<std::string> cajas{"26/04/01", "6400000", "000001", "Ñandúes, 3"};
    m.tablas.Text1 = [&](int indice) {
        const auto i = static_cast<std::size_t>(indice);
        return i < cajas.size() ? cajas[i] : std::string();
    };
    m.pedir(102, " 1 ");
    EXPECT_EQ(m.tablas.gComando,
              "R\\ 3\\ 1\\ 2\\ELDOS DE\\nd\xFA"
              "es, 3");
    EXPECT_TRUE(m.tieneClave(1, "260401000001"));
    EXPECT_TRUE(m.tieneClave(2, "6400000   260401"));
    m.vistas.cajas.clear();
    m.pedir(102, "1");  // the record still says what it said: its keys are elsewhere
    EXPECT_EQ(m.vistas.cajas.size(), 6U);
    EXPECT_EQ(m.vistas.cajas[1].texto, "Error indexados... Reindexar Archivo EXTRA");
}

TEST(Claves, GrabarUnCampoDeClave) {
    Claves m;
    m.tablas.GrabarCampoClave(tabla, 1, linea::asiento, "000077");
    EXPECT_TRUE(m.tieneClave(1, "260309000077"));
    EXPECT_EQ(m.tablas.LeerCampo(tabla, 1, linea::asiento), "000077");
    EXPECT_EQ(m.tablas.gCampos(tabla, linea::asiento), "000077");

    m.tablas.gComando = "nothing";
    m.tablas.GrabarCampoClave(tabla, 1, linea::importe, "12.5");
    EXPECT_EQ(m.tablas.gComando, "nothing");
    EXPECT_EQ(m.tablas.LeerCampoDoble(tabla, 1, linea::importe), 12.5);
    m.tablas.BorrarRegistro(tabla, 1);
    EXPECT_EQ(m.tablas.gEstado, 0);
}

// The keys change before the record does: a record that cannot be written has new keys, never old ones over a
// new field.
TEST(Claves, PrimeroLasClaves) {
    Claves m;
    const auto otro = m.archivos->abrir(m.datos("EXTRA07.QZD"), platform::Apertura::escritura,
                                        platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear({16, 6}, platform::TipoBloqueo::compartido));  // may be read, not written
    EXPECT_THROW(m.tablas.GrabarCampoClave(tabla, 1, linea::asiento, "000077"), platform::ErrorArchivo);
    EXPECT_TRUE(m.tieneClave(1, "260309000077"));
    EXPECT_EQ(m.tablas.LeerCampo(tabla, 1, linea::asiento), "000001");
}

// All keys of a record in one command: one that cannot move holds the others back.
TEST(Claves, TodasDeUnaVez) {
    Claves m;
    auto nuevos = m.tablas.ranura(tabla).gCampos;
    nuevos[linea::fecha] = "260401";
    EXPECT_EQ(m.tablas.cambiarClaves(tabla, 1, nuevos), 0);
    EXPECT_TRUE(m.tieneClave(1, "260401000001"));
    EXPECT_TRUE(m.tieneClave(2, "6400000   260401"));
    nuevos[linea::fecha] = "260402";
    EXPECT_EQ(m.tablas.cambiarClaves(tabla, 1, nuevos), 9);  // the record was never written
    EXPECT_TRUE(m.tieneClave(1, "260401000001"));
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
    EXPECT_EQ(m.tablas.cambiarClaves(tabla, 1, m.tablas.ranura(tabla).gCampos), 0);
}

}  // namespace
