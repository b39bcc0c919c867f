// Locks between handles, and the share modes of an open.
#include <array>
#include <thread>

#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;
using std::chrono::milliseconds;

class ConformidadBloqueos : public ConSistema {
  protected:
    std::unique_ptr<Archivo> abrir(Comparticion comparticion, Apertura apertura = Apertura::crear) {
        return fs().abrir(ruta("datos"), apertura, comparticion);
    }
};
INSTANTIATE_TEST_SUITE_P(Sistemas, ConformidadBloqueos, todosLosSistemas(),
                         [](const auto& caso) { return caso.param; });

TEST_P(ConformidadBloqueos, LosDeDosAperturasSeExcluyenPorTipoYRango) {
    const auto uno = abrir(Comparticion::libre);
    const auto dos = abrir(Comparticion::libre);
    constexpr auto exclusivo = TipoBloqueo::exclusivo;
    constexpr auto compartido = TipoBloqueo::compartido;
    EXPECT_TRUE(uno->bloquear({10, 10}, exclusivo));
    EXPECT_TRUE(uno->bloquear({15, 10}, exclusivo));
    EXPECT_TRUE(uno->podriaBloquear({10, 15}, exclusivo));
    EXPECT_FALSE(dos->bloquear({24, 1}, compartido));
    EXPECT_FALSE(dos->podriaBloquear({0, 11}, compartido));
    EXPECT_TRUE(dos->bloquear({0, 10}, exclusivo));
    EXPECT_TRUE(dos->bloquear({25, 1}, exclusivo));
    EXPECT_TRUE(dos->bloquear({12, 0}, exclusivo));
    // The middle of a lock can be given back.
    uno->desbloquear({14, 2});
    EXPECT_TRUE(dos->bloquear({14, 2}, exclusivo));
    EXPECT_FALSE(dos->bloquear({13, 1}, exclusivo));
    EXPECT_FALSE(dos->bloquear({16, 1}, exclusivo));
    EXPECT_TRUE(uno->bloquear({100, 5}, compartido));
    EXPECT_TRUE(dos->bloquear({100, 5}, compartido));
    EXPECT_FALSE(dos->bloquear({100, 5}, exclusivo));
    uno->desbloquear({100, 5});
    EXPECT_TRUE(dos->bloquear({100, 5}, exclusivo));
    EXPECT_FALSE(uno->podriaBloquear(todoElArchivo, compartido));
}

TEST_P(ConformidadBloqueos, UnaNegativaDejaElPropioComoEstaba) {
    const auto uno = abrir(Comparticion::libre);
    const auto dos = abrir(Comparticion::libre);
    uno->bloquear({0, 1}, TipoBloqueo::compartido);
    dos->bloquear({0, 1}, TipoBloqueo::compartido);
    EXPECT_FALSE(uno->bloquear({0, 1}, TipoBloqueo::exclusivo));
    dos->desbloquear({0, 1});
    EXPECT_FALSE(dos->bloquear({0, 1}, TipoBloqueo::exclusivo));
    EXPECT_TRUE(uno->bloquear({0, 1}, TipoBloqueo::exclusivo));
    EXPECT_FALSE(dos->bloquear({0, 1}, TipoBloqueo::compartido));
    EXPECT_TRUE(uno->bloquear({0, 1}, TipoBloqueo::compartido));
    EXPECT_TRUE(dos->bloquear({0, 1}, TipoBloqueo::compartido));
}

TEST_P(ConformidadBloqueos, TerminanConSuAperturaYNoConOtra) {
    auto uno = abrir(Comparticion::libre);
    const auto dos = abrir(Comparticion::libre);
    uno->bloquear({0, 1}, TipoBloqueo::exclusivo);
    abrir(Comparticion::libre).reset();
    EXPECT_FALSE(dos->podriaBloquear({0, 1}, TipoBloqueo::compartido));
    uno.reset();
    EXPECT_TRUE(dos->bloquear({0, 1}, TipoBloqueo::exclusivo));
}

TEST_P(ConformidadBloqueos, EsperaHastaQueQuedaLibreONoMas) {
    auto uno = abrir(Comparticion::libre);
    const auto dos = abrir(Comparticion::libre);
    uno->bloquear({0, 1}, TipoBloqueo::exclusivo);
    const auto inicio = std::chrono::steady_clock::now();
    EXPECT_FALSE(dos->bloquear({0, 1}, TipoBloqueo::exclusivo, milliseconds(30)));
    EXPECT_GE(std::chrono::steady_clock::now() - inicio, milliseconds(30));
    std::jthread otro([&] { uno.reset(); });
    EXPECT_TRUE(dos->bloquear({0, 1}, TipoBloqueo::exclusivo, milliseconds(20'000)));
}

TEST_P(ConformidadBloqueos, RangosImposiblesSeRechazan) {
    const auto uno = abrir(Comparticion::libre);
    const Rango imposible{std::uint64_t{1} << 63, 1};
    EXPECT_NE(numeroDe([&] { uno->bloquear(imposible, TipoBloqueo::compartido); }), 0);
    EXPECT_NE(numeroDe([&] { uno->podriaBloquear({1, ~std::uint64_t{0}}, TipoBloqueo::compartido); }), 0);
}

TEST_P(ConformidadBloqueos, LaExclusivaQuiereEstarSola) {
    const auto libre = abrir(Comparticion::libre);
    auto compartida = abrir(Comparticion::compartida);
    auto otra = abrir(Comparticion::compartida);
    compartida.reset();
    EXPECT_EQ(numeroDe([&] { abrir(Comparticion::exclusiva); }), error_archivo::permisoDenegado);
    otra.reset();
    auto exclusiva = abrir(Comparticion::exclusiva, Apertura::lectura);
    for (const auto modo : {Comparticion::compartida, Comparticion::exclusiva}) {
        EXPECT_EQ(numeroDe([&] { abrir(modo); }), error_archivo::permisoDenegado);
    }
    EXPECT_EQ(numeroDe([&] { abrir(Comparticion::libre); }), 0);
    exclusiva.reset();
    EXPECT_EQ(numeroDe([&] { abrir(Comparticion::compartida); }), 0);
}

TEST_P(ConformidadBloqueos, UnaAperturaRechazadaNoVaciaElArchivo) {
    escribir("datos", "valioso");
    const auto otra = abrir(Comparticion::compartida);
    EXPECT_EQ(numeroDe([&] { abrir(Comparticion::exclusiva, Apertura::vaciar); }),
              error_archivo::permisoDenegado);
    otra->bloquear({3, 1}, TipoBloqueo::compartido);
    EXPECT_EQ(numeroDe([&] { abrir(Comparticion::compartida, Apertura::vaciar); }),
              error_archivo::permisoDenegado);
    EXPECT_EQ(leer("datos"), "valioso");
}

TEST_P(ConformidadBloqueos, LosCompartidosRespetanLosRangosAjenos) {
    escribir("datos", "0123456789");
    const auto uno = abrir(Comparticion::compartida);
    const auto dos = abrir(Comparticion::compartida);
    std::array<std::byte, 4> trozo{};
    const auto leerEn = [&](std::uint64_t donde) { return numeroDe([&] { dos->leer(donde, trozo); }); };
    const auto escribirEn = [&](Archivo& en, std::uint64_t donde) {
        return numeroDe([&] { en.escribir(donde, comoBytes("xx")); });
    };

    uno->bloquear({4, 2}, TipoBloqueo::compartido);
    EXPECT_EQ(leerEn(2), 0);
    EXPECT_EQ(escribirEn(*dos, 3), error_archivo::permisoDenegado);
    EXPECT_EQ(escribirEn(*dos, 2), 0);
    EXPECT_EQ(escribirEn(*uno, 4), 0);

    uno->bloquear({4, 2}, TipoBloqueo::exclusivo);
    EXPECT_EQ(leerEn(1), error_archivo::permisoDenegado);
    EXPECT_EQ(leerEn(0), 0);
    EXPECT_EQ(leerEn(6), 0);
    EXPECT_EQ(escribirEn(*uno, 4), 0);
    // Cutting is writing to what is cut off.
    EXPECT_EQ(numeroDe([&] { dos->truncar(5); }), error_archivo::permisoDenegado);
    EXPECT_EQ(numeroDe([&] { dos->truncar(6); }), 0);
    // Who opened without sharing asks nobody.
    EXPECT_EQ(escribirEn(*abrir(Comparticion::libre), 4), 0);
    EXPECT_EQ(leer("datos").size(), 6U);
}

}  // namespace tarvoline::pruebas
