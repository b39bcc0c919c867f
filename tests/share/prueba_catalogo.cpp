// The definitions that ship: what the code relies on in them, and that every reader finds the same.
#include <gtest/gtest.h>

#include <set>

#include "data/definicion_tabla.h"
#include "platform/archivos.h"

namespace tarvoline::pruebas {
namespace {

using data::DefinicionTabla;
using Segmentos = std::vector<data::SegmentoClave>;

std::string bytesDe(const std::string& tabla) {
    const auto archivos = platform::crearSistemaArchivos();
    return platform::leerTodo(*archivos, std::string(TARVOLINE_PROGRAMA) + "/" + tabla + ".QZA");
}

DefinicionTabla definicionDe(const std::string& tabla) {
    return data::interpretarDefinicion(bytesDe(tabla));
}

struct Medidas {
    const char* tabla;
    int campos, bytes, claves, mayor;
};
// Company files written with these definitions have these lengths: changing one makes them unreadable.
constexpr Medidas medidas[] = {
    {"PLANC", 40, 564, 2, 50}, {"COSTO", 40, 564, 2, 50}, {"PLANA", 40, 564, 2, 50},
    {"EXTRA", 21, 465, 4, 20}, {"ANALI", 21, 465, 4, 16}, {"DATOS", 26, 801, 3, 60},
    {"IVA01", 34, 953, 4, 30}, {"EFECT", 9, 188, 2, 16},  {"PRESU", 16, 148, 2, 50},
    {"GUID1", 3, 50, 2, 38},   {"INMO3", 50, 726, 1, 10}, {"DATGL", 65, 1161, 2, 50}};

TEST(Catalogo, Medidas) {
    for (const auto& una : medidas) {
        SCOPED_TRACE(una.tabla);
        const auto definicion = definicionDe(una.tabla);
        EXPECT_EQ(definicion.gNumeroCampos, una.campos);
        EXPECT_EQ(definicion.gLongitudRegistro, una.bytes);
        EXPECT_EQ(definicion.numeroClaves, una.claves);
        EXPECT_EQ(definicion.longitudMayor(), una.mayor);
    }
}

TEST(Catalogo, SeLeeYSeComponeIgual) {
    for (const auto& una : medidas) {
        const auto bytes = bytesDe(una.tabla);
        EXPECT_EQ(data::componerDefinicion(data::interpretarDefinicion(bytes)), bytes) << una.tabla;
        EXPECT_EQ(bytes.size() % 33, 0U) << una.tabla;
    }
}

TEST(Catalogo, TitulosYPosicionesUnicos) {
    for (const auto& una : medidas) {
        SCOPED_TRACE(una.tabla);
        const auto definicion = definicionDe(una.tabla);
        std::set<std::string> titulos;
        std::set<int> posiciones;
        for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
            EXPECT_TRUE(titulos.insert(definicion.campo(i).nombre).second) << definicion.campo(i).nombre;
            EXPECT_TRUE(posiciones.insert(definicion.campo(i).posicion).second);
            EXPECT_GT(definicion.campo(i).posicion, 0);
        }
    }
}

// Keys hold texts and dates alone, within the field.
TEST(Catalogo, LasClavesSonDeTexto) {
    for (const auto& una : medidas) {
        const auto definicion = definicionDe(una.tabla);
        for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
            for (const auto& segmento : definicion.claves.at(static_cast<std::size_t>(clave))) {
                const auto& campo = definicion.campo(segmento.campo);
                EXPECT_TRUE(campo.forma == data::FormaCampo::texto || campo.forma == data::FormaCampo::fecha)
                    << una.tabla << ' ' << campo.nombre;
                EXPECT_LE(segmento.inicio + segmento.longitud - 1, campo.bytes) << una.tabla;
            }
        }
    }
}

// The cheap look before a record is read takes fields 1 to 3 by number.
TEST(Catalogo, LosTresPrimerosCamposSonSusPosicionesYTexto) {
    for (const auto& una : medidas) {
        const std::string tabla = una.tabla;
        if (tabla == "INMO3" || tabla == "GUID1" || tabla == "DATGL") continue;  // in no slot of a company
        const auto definicion = definicionDe(tabla);
        for (int i = 1; i <= 3; ++i) {
            EXPECT_EQ(definicion.campo(i).posicion, i) << tabla;
            EXPECT_TRUE(definicion.campo(i).forma == data::FormaCampo::texto ||
                        definicion.campo(i).forma == data::FormaCampo::fecha)
                << tabla;
        }
    }
    EXPECT_EQ(definicionDe("DATGL").campo(1).nombre, "NIF");
}

// Totals count field numbers from the opening: periods 1 to 14 stand directly behind it.
TEST(Catalogo, LasColumnasDePeriodosSonSeguidas) {
    for (const auto* tabla : {"PLANC", "COSTO", "PLANA"}) {
        const auto definicion = definicionDe(tabla);
        for (const auto& [base, nombre] : {std::pair(12, "DEBE "), std::pair(13, "HABER ")}) {
            const int primero = definicion.campoDePosicion(base);
            EXPECT_EQ(definicion.campo(primero).nombre, std::string(nombre) + "APERTURA");
            EXPECT_EQ(definicion.campo(primero + 1).nombre, std::string(nombre) + "ENERO");
            EXPECT_EQ(definicion.campo(primero + 12).nombre, std::string(nombre) + "DICIEMBRE");
            EXPECT_EQ(definicion.campo(primero + 14).nombre, std::string(nombre) + "CIERRE");
            for (int i = 0; i <= 14; ++i) {
                EXPECT_EQ(definicion.campo(primero + i).forma, data::FormaCampo::doble);
            }
        }
    }
    const auto presupuesto = definicionDe("PRESU");
    for (int mes = 1; mes <= 12; ++mes) {
        EXPECT_EQ(presupuesto.campoDePosicion(11 + mes), presupuesto.campoDePosicion(12) + mes - 1);
    }
}

struct ClavePedida {
    const char* tabla;
    int clave;
    std::vector<std::array<int, 3>> segmentos;  // position, first character, characters
};

// The keys that postings, searches and registers go by.
TEST(Catalogo, LasClavesPorLasQueSeBusca) {
    const ClavePedida pedidas[] = {{"PLANC", 1, {{1, 1, 10}}},
                                   {"PLANC", 2, {{2, 1, 40}, {1, 1, 10}}},
                                   {"COSTO", 1, {{1, 1, 10}}},
                                   {"EXTRA", 1, {{1, 1, 6}, {3, 1, 6}}},
                                   {"EXTRA", 2, {{2, 1, 10}, {1, 1, 6}}},
                                   {"EXTRA", 4, {{22, 1, 20}}},
                                   {"DATOS", 1, {{1, 1, 10}}},
                                   {"DATOS", 2, {{2, 1, 50}, {1, 1, 10}}},
                                   {"IVA01", 3, {{10, 1, 1}, {12, 1, 10}}},
                                   {"IVA01", 4, {{8, 1, 6}, {21, 1, 6}}},
                                   {"EFECT", 2, {{8, 1, 6}, {9, 1, 6}}},
                                   {"ANALI", 1, {{1, 1, 6}, {3, 1, 6}}},
                                   {"ANALI", 3, {{18, 1, 6}}},
                                   {"ANALI", 4, {{19, 1, 10}, {1, 1, 6}}},
                                   {"GUID1", 2, {{3, 1, 38}}},
                                   {"INMO3", 1, {{1, 1, 10}}},
                                   {"DATGL", 1, {{3, 1, 18}}}};
    for (const auto& pedida : pedidas) {
        const auto definicion = definicionDe(pedida.tabla);
        Segmentos esperados;
        for (const auto& [posicion, inicio, longitud] : pedida.segmentos) {
            esperados.push_back({definicion.campoDePosicion(posicion), inicio, longitud});
        }
        EXPECT_EQ(definicion.claves.at(static_cast<std::size_t>(pedida.clave)), esperados)
            << pedida.tabla << ", key " << pedida.clave;
    }
}

// Filters name these columns.
TEST(Catalogo, LosTitulosPorLosQueSeFiltra) {
    const struct {
        const char* tabla;
        const char* titulo;
        int posicion;
    } casos[] = {
        {"PLANC", "CUENTA", 1},   {"PLANC", "TITULO", 2},          {"PLANC", "NIVEL", 3},
        {"EXTRA", "FECHA", 1},    {"EXTRA", "ASIENTO", 3},         {"ANALI", "FECHA", 1},
        {"ANALI", "ASIENTO", 3},  {"DATOS", "NOMBRE", 2},          {"DATOS", "NIF", 3},
        {"IVA01", "S/R/T/C", 10}, {"IVA01", "FACTURA No.", 5},     {"IVA01", "CLIENTE/PROVEEDOR", 1},
        {"INMO3", "CODIGO", 1},   {"IVA01", "FECHA CONTABLE", 21}, {"IVA01", "TIPO IVA/IGIC", 7},
        {"DATGL", "NIF", 3},      {"IVA01", "REFERENCIA", 22},     {"IVA01", "ASIENTO (DOC) CONTABLE", 8},
        {"GUID1", "GUID", 3},     {"GUID1", "ASIENTO", 1},         {"EFECT", "ASIENTO CONTABLE", 9},
        {"PRESU", "CUENTA", 1},   {"IVA01", "FECHA FACTURA", 11}};
    for (const auto& caso : casos) {
        const auto definicion = definicionDe(caso.tabla);
        EXPECT_EQ(definicion.campoDeNombre(caso.titulo), definicion.campoDePosicion(caso.posicion))
            << caso.tabla << ' ' << caso.titulo;
        EXPECT_NE(definicion.campoDeNombre(caso.titulo), 0) << caso.tabla << ' ' << caso.titulo;
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
