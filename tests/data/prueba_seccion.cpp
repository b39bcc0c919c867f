// The text section: its form, its search and prefix rules, its locks, and a random run against a simple
// model.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "apoyo/en_procesos.h"
#include "apoyo/mundo_datos.h"
#include "data/seccion_textos.h"
#include "data/utilidades.h"

namespace {

using namespace tarvoline;
using namespace std::string_literals;

class Seccion : public ::testing::Test {
  protected:
    Seccion() { mundo.ponerEnVigor(mundo.datos("e.QZT")); }

    void archivo(const std::string& contenido) { mundo.escribir("e.QZT", contenido); }
    void poner(std::string_view nombre, std::string_view valor) { textos.PUT_TOTAL(nombre, valor); }
    std::string leer(std::string_view nombre) { return textos.GET_TOTAL(nombre); }
    // What stands behind the head.
    std::string cola() const { return mundo.leer("e.QZT").substr(1024); }

    pruebas::MundoDatos mundo;
    data::SeccionTextos textos{mundo.capa};
};

TEST_F(Seccion, UnArchivoCortoSeRellenaConBlancos) {
    for (const std::size_t longitud : {0U, 1U, 263U, 264U, 1023U, 1024U, 1025U}) {
        archivo(std::string(longitud, 'x'));
        EXPECT_EQ(leer("TVUSER"), "") << longitud;
        poner("tvUser", "ana");
        const auto cabeza = std::string(std::min<std::size_t>(longitud, 1024), 'x');
        EXPECT_EQ(mundo.leer("e.QZT"), cabeza + std::string(1024 - cabeza.size(), ' ') + "TVUSER=ana\r\n\x1A")
            << longitud;
        EXPECT_EQ(leer("TvUsEr"), "ana");
    }
}

TEST_F(Seccion, SeBuscaElTextoEnCualquierSitioYSeSustituyePorElComienzo) {
    archivo(std::string(1024, ' ') + "MITVUSER=otro\r\nTVUSERNAME=largo\r\n\x1A");
    EXPECT_EQ(leer("TVUSER"), "otro");  // a longer name that ends so
    EXPECT_EQ(leer("TVUSERNAM"), "");
    poner("TVUSER", "ana");  // a longer name that begins so is replaced
    EXPECT_EQ(cola(), "MITVUSER=otro\r\nTVUSER=ana\r\n\x1A"s + std::string(6, '\0'));
}

TEST_F(Seccion, LoQueEncogeDejaCeros) {
    archivo(std::string(1024, ' '));
    poner("UNO", std::string(40, 'a'));
    poner("DOS", "b");
    const auto antes = mundo.leer("e.QZT").size();
    poner("UNO", "");
    EXPECT_EQ(cola(), "DOS=b\r\n\x1A"s + std::string(46, '\0'));
    EXPECT_EQ(mundo.leer("e.QZT").size(), antes);
    EXPECT_EQ(leer("UNO"), "");
    poner("DOS", "");
    EXPECT_EQ(cola().substr(0, 2), "\x1A\0"s);
    poner("TRES", "c");
    EXPECT_EQ(leer("TRES"), "c");
}

TEST_F(Seccion, LosRepetidosQuedanEnElPrimero) {
    archivo(std::string(1024, ' ') + "A=1\r\nsin igual\r\na=2\r\nVACIO= \r\nB=3\r\n\x1A basura=9\r\n");
    poner("C", "4");
    EXPECT_EQ(cola().substr(0, 16), "A=1\r\nB=3\r\nC=4\r\n\x1A"s);
    EXPECT_EQ(leer("basura"), "");  // what stood behind the end mark never was a line
}

TEST_F(Seccion, ElTextoEsWindows1252) {
    archivo("");
    poner("año", "Ñandú €");
    EXPECT_EQ(cola(),
              "A\xD1O=\xD1"
              "and\xFA \x80\r\n\x1A"s);
    EXPECT_EQ(leer("AÑO"), "Ñandú €");
    EXPECT_EQ(leer("An\xCC\x83o"), "Ñandú €");  // the letter and its accent apart
}

TEST_F(Seccion, UnaLineaEsUnaLinea) {
    EXPECT_EQ(leer("A"), "");
    poner("A", "1");
    EXPECT_FALSE(mundo.carpeta.hay("datos/e.QZT")) << "no line makes a file";
    EXPECT_NE(mundo.avisos, "");
    archivo("");
    poner("A", " x\r\nB=2\x1A ");
    EXPECT_EQ(leer("A"), "x  B=2");
    poner("A\r\nC", "1");
    EXPECT_EQ(leer("A  C"), "1");
    poner("  A", "2");
    EXPECT_EQ(leer("A"), "2");
    poner("", "nada");
    poner("  ", "nada");
    EXPECT_EQ(cola().find("nada"), std::string::npos);
}

TEST_F(Seccion, ConBloqueoAjenoNoSeEscribe) {
    archivo("");
    poner("A", "1");
    const auto otro = mundo.archivos->abrir(mundo.datos("e.QZT"), platform::Apertura::escritura,
                                            platform::Comparticion::compartida);
    ASSERT_TRUE(otro->bloquear({0, 1}, platform::TipoBloqueo::exclusivo));
    mundo.capa.gMultiusuario = true;
    const auto antes = mundo.leer("e.QZT");
    try {
        poner("A", "2");
        FAIL() << "written without the lock";
    } catch (const platform::ErrorArchivo& error) {
        EXPECT_EQ(error.numero(), platform::error_archivo::permisoDenegado);
    }
    EXPECT_EQ(mundo.leer("e.QZT"), antes);
    otro->desbloquear({0, 1});
    poner("A", "2");
    EXPECT_EQ(leer("A"), "2");
    // The lock went with the operation.
    EXPECT_TRUE(otro->podriaBloquear(platform::todoElArchivo, platform::TipoBloqueo::exclusivo));
}

// Programs that write at the same time lose none of each other's lines.
TEST_F(Seccion, VariosProgramasALaVez) {
    constexpr int procesos = 4, lineas = 25;
    archivo("");
    mundo.capa.gMultiusuario = true;
    mundo.capa.reintentosEmpresa = {};
    const auto nombre = [](int p, int i) { return "P" + std::to_string(p) + "L" + core::conCeros(i, 2); };
    pruebas::enProcesos(procesos, lineas,
                        [&](int p, int i) { poner(nombre(p, i), "v" + std::to_string(i)); });
    for (int p = 0; p < procesos; ++p) {
        for (int i = 0; i < lineas; ++i) {
            EXPECT_EQ(leer(nombre(p, i)), "v" + std::to_string(i));
        }
    }
}

// The rules once more, on a list of pairs.
class Modelo {
  public:
    void poner(const std::string& nombre, const std::string& valor) {
        const auto lugar = std::ranges::find_if(
            pares_, [&](const auto& par) { return (par.first + "=" + par.second).starts_with(nombre); });
        if (lugar == pares_.end()) {
            pares_.emplace_back(nombre, valor);
        } else {
            *lugar = {nombre, valor};
        }
        std::vector<std::pair<std::string, std::string>> quedan;
        for (const auto& par : pares_) {
            const bool repetido =
                std::ranges::any_of(quedan, [&](const auto& otro) { return otro.first == par.first; });
            if (!repetido) quedan.push_back(par);
        }
        std::erase_if(quedan, [](const auto& par) { return par.second.empty(); });
        pares_ = quedan;
    }
    std::string leer(const std::string& nombre) const {
        for (const auto& par : pares_) {
            if (par.first.ends_with(nombre)) return par.second;
        }
        return {};
    }

  private:
    std::vector<std::pair<std::string, std::string>> pares_;
};

TEST_F(Seccion, IgualQueElModelo) {
    const auto semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const std::vector<std::string> nombres = {"A", "AB", "ABC", "BC", "ÑU", "TVUSER", "USER", "TV1", "TV10"};
    Modelo modelo;
    archivo(std::string(azar() % 1200, ' '));
    for (int paso = 0; paso < 300; ++paso) {
        const auto& nombre = nombres[azar() % nombres.size()];
        // Small letters and digits only: the search does not tell a value from a name.
        std::string valor(azar() % 12, 'x');
        std::ranges::generate(valor, [&] { return static_cast<char>('0' + azar() % 10); });
        poner(nombre, valor);
        modelo.poner(nombre, valor);
        for (const auto& otro : nombres) {
            ASSERT_EQ(leer(otro), modelo.leer(otro)) << otro << " at step " << paso;
        }
        ASSERT_EQ(std::ranges::count(cola(), '\x1A'), 1);
    }
}

// Whatever bytes a section holds, reading and writing it end, and the new value can be read.
TEST_F(Seccion, AguantaCualquierContenido) {
    const auto semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    constexpr std::string_view letras = "AB=\r\n\x1A \xD1z";
    for (int caso = 0; caso < 100; ++caso) {
        std::string bytes(azar() % 60, '\0');
        std::ranges::generate(bytes, [&] { return letras[azar() % letras.size()]; });
        archivo(std::string(1024, 'h') + bytes);
        poner("NUEVO", "7");
        ASSERT_EQ(leer("NUEVO"), "7");
        ASSERT_EQ(mundo.leer("e.QZT").substr(0, 1024), std::string(1024, 'h'));
        const auto una = mundo.leer("e.QZT");
        poner("NUEVO", "7");  // a second time changes nothing
        ASSERT_EQ(mundo.leer("e.QZT"), una);
    }
}

}  // namespace
