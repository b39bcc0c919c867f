// Fields by name: places and kinds, the odd ones, short and held files.
#include <gtest/gtest.h>

#include "apoyo/mundo_datos.h"
#include "data/utilidades.h"
#include "data/vista_nombrada.h"

namespace {

using namespace tarvoline;
using namespace std::string_literals;

class Vista : public ::testing::Test {
  protected:
    Vista() { mundo.ponerEnVigor(mundo.datos("e.QZT")); }

    void archivo(const std::string& contenido) { mundo.escribir("e.QZT", contenido); }
    std::string bytes(std::size_t posicion, std::size_t longitud) const {
        return mundo.leer("e.QZT").substr(posicion - 1, longitud);
    }

    pruebas::MundoDatos mundo;
    data::VistaNombrada vista{mundo.capa};
};

// Writing touches the field's own bytes and no others.
TEST_F(Vista, CadaNombreEnSuLugar) {
    struct Caso {
        std::string nombre;
        std::size_t posicion;
        std::string valor, enDisco;
    };
    for (const auto& caso : std::initializer_list<Caso>{
             {"comun", 1, "07", "07"},
             {"Borrador", 82, "1", "1"},
             {"año", 92, "26", "26"},
             {"NIVEL3", 28, "5", "5"},
             {"AUX3", 33, "12", "12"},
             {"LINEAS", 86, "2", "2 "},
             {"COMPRIMIDO", 88, "ab", "ab"},
             {"DOCUMENTO", 127, "000009", "000009"},
             {"APERTURA", 181, "04", "04"},
             {"ARCHIVOMONEDABASE", 173, "255", "\xFF"},
             {"APUNTES", 42, "1", "\0\0\x80\x3F"s},
             {"CARGOSA", 50, "-2.5", "\0\0\0\0\0\0\x04\xC0"s},
             {"CONTADOR2", 158, "-1", "\xFF\xFF\xFF\xFF"},
             {"MINUTOSDESDEULTIMACOPIA", 149, "16909060", "\x04\x03\x02\x01"},
             {"POBLACION", 553, "Logroño", "Logro\xF1o                       "},
             {"CAPITAL_SOCIAL", 613, "1", "\0\0\0\0\0\0\xF0\x3F"s},
             {"iva2", 666, "4770000021", "4770000021          "},
             {"IVA6", 746, "x", "x                   "},
         }) {
        const std::string lleno(1100, '.');
        archivo(lleno);
        vista.PutTotal(caso.nombre, caso.valor);
        auto esperado = lleno;
        esperado.replace(caso.posicion - 1, caso.enDisco.size(), caso.enDisco);
        EXPECT_EQ(mundo.leer("e.QZT"), esperado) << caso.nombre;
        EXPECT_EQ(core::Recortar(vista.GetTotal(caso.nombre)), caso.valor) << caso.nombre;
    }
}

TEST_F(Vista, NombresConTrampa) {
    archivo(std::string(1100, ' '));
    vista.PutTotal("RecalcularPresupuesto", "1");  // a text line, not byte 171
    EXPECT_EQ(bytes(171, 1), " ");
    EXPECT_EQ(bytes(1025, 25), "RECALCULARPRESUPUESTO=1\r\n");
    EXPECT_EQ(vista.GetTotal("RECALCULARPRESUPUESTO"), "1");
    vista.PutTotal("PASSWORD1", "abcd");
    vista.PutTotal("FECHALIMITE", "31/12/24");
    EXPECT_EQ(bytes(96, 4), "    ");
    EXPECT_EQ(bytes(141, 6), "      ");
}

TEST_F(Vista, FechasYClavesSoloSeMuestran) {
    std::string cabeza(264, ' ');
    cabeza.replace(140, 6, "C41231");
    cabeza.replace(95, 4, "\xC0\xC0\xC0\xC0");
    archivo(cabeza);
    EXPECT_EQ(vista.GetTotal("fechaLimite"), "31/12/24");
    EXPECT_EQ(vista.GetTotal("PASSWORD1"), "");
    archivo(std::string(264, ' '));
    EXPECT_EQ(vista.GetTotal("FECHALIMITE"), "");
}

TEST_F(Vista, LoQueNoCabeNoSeEscribe) {
    const std::string lleno(300, 'x');
    archivo(lleno);
    vista.PutTotal("CANAL", "256");
    vista.PutTotal("CANAL", "-1");
    vista.PutTotal("CONTADOR1", "2147483648");
    vista.PutTotal("APUNTES", "1E39");
    EXPECT_EQ(mundo.leer("e.QZT"), lleno);
    vista.PutTotal("CANAL", "");
    EXPECT_EQ(vista.GetTotal("CANAL"), "0");
}

TEST_F(Vista, ArchivosCortos) {
    for (const std::size_t longitud : {0U, 1U, 263U, 264U, 1024U, 1025U}) {
        archivo(std::string(longitud, '\0'));
        EXPECT_EQ(vista.GetTotal("CARGOSA"), "0") << longitud;
        EXPECT_EQ(vista.GetTotal("CAPITAL_SOCIAL"), "0") << longitud;
        EXPECT_EQ(vista.GetTotal("TVUSER"), "") << longitud;
        EXPECT_EQ(vista.GetTotal("NIF"), std::string(longitud < 1024 ? 0 : 15, '\0')) << longitud;
        std::string esperado(std::max<std::size_t>(longitud, 645), '\0');
        esperado.replace(635, 10, "ref       ");
        vista.PutTotal("REF", "ref");
        EXPECT_EQ(mundo.leer("e.QZT"), esperado) << longitud;
    }
}

// The padding of the text section is no capital.
TEST_F(Vista, ElRellenoNoEsUnNumero) {
    archivo(std::string(264, '\0'));
    vista.PutTotal("TVUSER", "ana");
    EXPECT_EQ(bytes(613, 8), std::string(8, ' '));
    EXPECT_EQ(vista.GetTotal("CAPITAL_SOCIAL"), "0");
}

TEST_F(Vista, SinEmpresaAbierta) {
    mundo.capa.enVigor = {};
    EXPECT_EQ(vista.GetTotal("COMUN"), "No hay una empresa abierta");
    vista.PutTotal("COMUN", "09");
    EXPECT_EQ(mundo.archivos->listar(mundo.datos()).size(), 0U);
}

TEST_F(Vista, LeeEnCuantoSeSuelta) {
    archivo("07" + std::string(300, ' '));
    const auto otro = mundo.archivos->abrir(mundo.datos("e.QZT"), platform::Apertura::escritura,
                                            platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear(platform::todoElArchivo, platform::TipoBloqueo::exclusivo));
    EXPECT_EQ(vista.GetTotal("COMUN"), "");  // gives up
    EXPECT_THROW(vista.PutTotal("COMUN", "08"), platform::ErrorArchivo);
    otro->desbloquear(platform::todoElArchivo);
    EXPECT_EQ(vista.GetTotal("COMUN"), "07");
}

// No two names share a byte but those that name a part or a group of another, and the four-byte counter.
TEST_F(Vista, LaTablaNoSeSolapa) {
    std::string duenio(1024, '\0');
    for (const auto& campo : data::camposNombrados()) {
        const auto nombre = std::string(campo.nombre);
        const bool parte = nombre.starts_with("NIVEL") || nombre.starts_with("AUX") ||
                           nombre.starts_with("NULL") || nombre == "RecalcularPresupuesto";
        if (parte) continue;
        for (std::size_t i = 0; i < campo.longitud; ++i) {
            EXPECT_EQ(duenio.at(campo.posicion - 1 + i), '\0') << nombre;
            duenio[campo.posicion - 1 + i] = 'x';
        }
    }
}

}  // namespace
