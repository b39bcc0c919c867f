#include "service/piezas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "apoyo/carpeta_prueba.h"
#include "apoyo/servicio_guion.h"

namespace tarvoline::service {
namespace {

using pruebas::ServicioGuion;
using ::testing::ElementsAre;

constexpr std::int32_t c = longitudPieza;

// "position+length" of every piece that went over the wire, and their content beside the file's.
class Piezas : public ::testing::Test {
  protected:
    Piezas() {
        avisos.antesDePieza = [&](std::int32_t posicion) { anotadas.push_back(posicion); };
        avisos.avance = [&](std::int32_t posicion) { avances.push_back(posicion); };
    }

    void enviar(const std::string& contenido, std::int32_t posicion = 1) {
        const auto ruta = carpeta.escribir("local.bin", contenido);
        EnviarPiezas(*archivos, cliente, quien,
                     {ruta, "PERSONAL", "local.bin", static_cast<std::int32_t>(contenido.size()), posicion},
                     avisos, resultado);
    }
    std::vector<std::string> piezas(const std::string& contenido) const {
        std::vector<std::string> lista;
        for (const auto& llamada : servicio.llamadas("Backup")) {
            const auto& bytes = llamada.bytes(6);
            const auto desde = static_cast<std::size_t>(llamada.entero(7)) - 1;
            lista.push_back(std::to_string(desde + 1) + "+" + std::to_string(bytes.size()));
            auto esperado = desde < contenido.size() ? contenido.substr(desde, bytes.size()) : "";
            esperado.resize(bytes.size(), '\0');
            EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), platform::comoBytes(esperado).begin()))
                << "piece " << lista.back();
        }
        return lista;
    }
    bool recibir(const std::string& remoto, std::int32_t total) {
        servicio.responder("Restore", [remoto](ServicioGuion::Argumentos& a) {
            const auto desde = static_cast<std::size_t>(std::get<std::int32_t>(a[5]) - 1);
            const auto cuantos = static_cast<std::size_t>(std::get<std::int32_t>(a[6]));
            const auto trozo = remoto.substr(std::min(desde, remoto.size()), cuantos);
            const auto bytes = platform::comoBytes(trozo);
            a[7] = soap::Bytes(bytes.begin(), bytes.end());
            return std::string();
        });
        const auto archivo = archivos->abrir(carpeta.ruta("bajado.bin"), platform::Apertura::vaciar);
        RecibirPiezas(cliente, quien, {"PERSONAL", "remoto.bin", total}, *archivo, avisos, resultado);
        return resultado.completo;
    }

    pruebas::CarpetaPrueba carpeta;
    std::unique_ptr<platform::SistemaArchivos> archivos = platform::crearSistemaArchivos();
    ServicioGuion servicio;
    soap::Conexion conexion;
    ClienteServicio cliente{conexion, servicio.url()};
    Identidad quien{"maria", "secreta", "DATOS", "CUENTA1"};
    AvisosPiezas avisos;
    ResultadoPiezas resultado;
    std::vector<std::int32_t> anotadas, avances;
};

TEST_F(Piezas, LasDeCadaLongitudDesdeCadaPosicion) {
    struct Caso {
        std::int32_t longitud;
        std::int32_t desde;
        std::vector<std::string> piezas;
        std::vector<std::int32_t> anotadas;  // before each piece; none for a short file
        bool falla = false;                  // what is left is shorter than the piece that must follow
    };
    for (const auto& caso : std::vector<Caso>{
             {0, 1, {"1+1"}, {}},
             {1, 1, {"1+2"}, {}},
             {c - 1, 1, {"1+262144"}, {}},
             {c, 1, {"1+262145"}, {1}, true},
             {c + 1, 1, {"1+262145"}, {1}},
             {c + 2, 1, {"1+262145", "262145+2"}, {1, 1 + c}},
             {2 * c, 1, {"1+262145", "262145+262144"}, {1, 1 + c}},
             {2 * c + 1, 1, {"1+262145", "262145+262145"}, {1, 1 + c}},
             {2 * c + 9, 1, {"1+262145", "262145+262145", "524289+9"}, {1, 1 + c, 1 + 2 * c}},
             {3 * c + 5,
              1 + c,
              {"262145+262145", "524289+262145", "786433+5"},
              {1 + c, 1 + 2 * c, 1 + 3 * c}},
             {2 * c + 9, 1 + 2 * c, {"524289+262145"}, {1 + 2 * c}, true},
         }) {
        SCOPED_TRACE(std::to_string(caso.longitud) + " from " + std::to_string(caso.desde));
        const auto contenido = pruebas::contenidoDePrueba(static_cast<std::size_t>(caso.longitud));
        servicio.olvidar();
        anotadas.clear();
        avances.clear();
        resultado = {};
        if (caso.falla) {
            EXPECT_THROW(enviar(contenido, caso.desde), std::length_error);
        } else {
            enviar(contenido, caso.desde);
            EXPECT_EQ(resultado.piezas, static_cast<int>(caso.piezas.size()));
            // All positions but the first are told as progress too.
            EXPECT_TRUE(anotadas.empty() ||
                        avances == std::vector<std::int32_t>(anotadas.begin() + 1, anotadas.end()));
        }
        EXPECT_EQ(resultado.completo, !caso.falla);
        EXPECT_EQ(piezas(contenido), caso.piezas);
        EXPECT_EQ(anotadas, caso.anotadas);
    }
}

TEST_F(Piezas, LoQueCortaElEnvio) {
    const auto contenido = pruebas::contenidoDePrueba(4 * c);
    servicio.responder("Backup",
                       [n = 0](ServicioGuion::Argumentos&) mutable { return ++n == 2 ? "ERROR:lleno" : ""; });
    enviar(contenido);
    EXPECT_EQ(resultado.respuesta, "ERROR:lleno");
    EXPECT_EQ(resultado.piezas, 2);
    EXPECT_FALSE(resultado.completo);
    EXPECT_FALSE(resultado.detenido);

    servicio.olvidar();
    resultado = {};
    servicio.cortar("Backup", 2);
    EXPECT_THROW(enviar(contenido), soap::ErrorServicio);
    EXPECT_EQ(resultado.piezas, 2);
    EXPECT_EQ(servicio.llamadas("Backup").size(), 2U) << "no piece is sent twice";

    servicio.olvidar();
    resultado = {};
    anotadas.clear();
    avisos.detener = [&] { return resultado.piezas == 2; };
    enviar(contenido);
    EXPECT_TRUE(resultado.detenido);
    EXPECT_EQ(servicio.llamadas("Backup").size(), 2U);
    EXPECT_THAT(anotadas, ElementsAre(1, 1 + c));
}

TEST_F(Piezas, ElArchivoQueCrecioOMenguoSeEnviaConSuPrimeraLongitud) {
    const auto contenido = pruebas::contenidoDePrueba(2 * c + 9);
    avisos.antesDePieza = [&](std::int32_t posicion) {
        if (posicion > 1) carpeta.escribir("local.bin", contenido.substr(0, c));
    };
    enviar(contenido);
    const auto llamadas = servicio.llamadas("Backup");
    ASSERT_EQ(llamadas.size(), 3U);
    EXPECT_EQ(llamadas[2].entero(7) - 1 + static_cast<std::int32_t>(llamadas[2].bytes(6).size()), 2 * c + 9);
    EXPECT_EQ(llamadas[2].bytes(6), soap::Bytes(9)) << "what is gone reads as zeros";
}

TEST_F(Piezas, BajarCadaLongitud) {
    for (const std::int32_t longitud : {0, 1, c - 1, c, c + 1, 2 * c, 2 * c + 1, 2 * c + 9}) {
        const auto contenido = pruebas::contenidoDePrueba(static_cast<std::size_t>(longitud));
        servicio.olvidar();
        resultado = {};
        EXPECT_TRUE(recibir(contenido, longitud)) << longitud;
        EXPECT_EQ(carpeta.leer("bajado.bin"), contenido) << longitud;
        EXPECT_EQ(resultado.piezas, std::max(1, (longitud + c - 1) / c)) << longitud;
    }
    resultado = {};
    EXPECT_FALSE(recibir(pruebas::contenidoDePrueba(c + 5), 2 * c)) << "the last piece came short";
    EXPECT_EQ(resultado.piezas, 2);
    EXPECT_EQ(resultado.respuesta, "");
}

}  // namespace
}  // namespace tarvoline::service
