// The desktop that nobody watches: it writes down everything and never says yes.
#include "core/escritorio_desatendido.h"

#include <gtest/gtest.h>

#include <csignal>

#include "apoyo/nucleo_prueba.h"
#include "platform/senales.h"

namespace tarvoline::pruebas {
namespace {

TEST(EscritorioDesatendido, LasCajasVanAlRegistroConSuGravedad) {
    RegistroGuardado registro;
    core::EscritorioDesatendido escritorio(registro);
    escritorio.Mensaje({"listo", core::Icono::informacion, ""});
    escritorio.Mensaje({"cuidado", core::Icono::exclamacion, "Aviso"});
    escritorio.Mensaje({"mal", core::Icono::parada, "Tarvoline"});
    EXPECT_EQ(registro.lineas,
              (std::vector<std::string>{"info listo", "aviso Aviso: cuidado", "error Tarvoline: mal"}));
}

TEST(EscritorioDesatendido, TodoLoQuePreguntaQuedaNegadoYAnotado) {
    RegistroGuardado registro;
    core::EscritorioDesatendido escritorio(registro);
    EXPECT_FALSE(escritorio.Preguntar({"¿seguro?", core::Icono::pregunta, ""}, true));
    EXPECT_FALSE(escritorio.Confirmar({"¿reintentar?", core::Icono::ninguno, ""}));
    EXPECT_EQ(escritorio.Pedir({"Tarvoline", "Clave", true, 4}), std::nullopt);
    core::EntradaDatos datos{"Usuario", {{"Clave", core::TipoCampo::oculto, 8, "previo", {}}}, 0};
    EXPECT_FALSE(escritorio.PedirDatos(datos));
    EXPECT_EQ(escritorio.ElegirArchivo({"Abrir", {}, "", "a.qzt"}), std::nullopt);
    EXPECT_EQ(escritorio.GuardarComo({"Guardar", {}, "", "b.zip"}), std::nullopt);
    EXPECT_EQ(escritorio.ElegirCarpeta("Carpeta"), std::nullopt);
    escritorio.Abrir("manual.pdf");
    for (const auto* trozo : {"¿seguro? [No]", "¿reintentar?", "Tarvoline: Clave", "Usuario", "a.qzt",
                              "b.zip", "Carpeta", "manual.pdf"}) {
        EXPECT_TRUE(registro.dice(trozo)) << trozo;
    }
    EXPECT_FALSE(registro.dice("previo")) << "what a field holds may be a password";
}

TEST(EscritorioDesatendido, UnaSenalAcabaElProgramaEnElSiguienteTurno) {
    RegistroGuardado registro;
    const platform::SenalesFin senales;
    core::EscritorioDesatendido escritorio(registro, [&] {
        const int senal = senales.recibida();
        return senal == 0 ? 0 : 128 + senal;
    });
    EXPECT_NO_THROW(escritorio.Turno());
    ASSERT_EQ(std::raise(SIGTERM), 0);
    try {
        escritorio.Turno();
        FAIL() << "the turn went by";
    } catch (const core::FinDePrograma& fin) {
        EXPECT_EQ(fin.codigo, 128 + SIGTERM);
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
