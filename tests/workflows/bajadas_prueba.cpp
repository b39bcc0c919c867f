// Downloads against a scripted service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workflows/lista.h"
#include "workflows/mundo_servicio.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {
namespace {

using service::longitudPieza;
using ::testing::HasSubstr;

constexpr std::size_t c = longitudPieza;

class PruebaBajadas : public ::testing::Test {
  protected:
    PruebaBajadas() {
        mundo.vista().fx1.ponerFilas(2);
        mundo.vista().fx1.ponerCelda(1, columna_rejilla::nombre, "año.bin");
        mundo.vista().fx1.Row = mundo.vista().fx1.RowSel = 1;
        remotos.archivos["año.bin"] = pruebas::contenidoDePrueba(3 * c + 7);
    }
    bool descargar(const std::string& destino) { return transferencia.DescargarArchivo("PERSONAL", destino); }
    bool abrir(const std::string& destino) { return transferencia.AbrirArchivoServicio("PERSONAL", destino); }
    std::string leer(const std::string& ruta) const {
        return platform::leerTodo(mundo.nucleo.archivos, ruta);
    }

    pruebas::MundoServicio mundo;
    pruebas::ArchivosServicio remotos{mundo.servicio};
    const pruebas::CarpetaPrueba& carpeta = mundo.nucleo.carpeta();
    const std::string bajado = mundo.nucleo.ruta("bajado.bin");
    const std::string propio = mundo.nucleo.ruta("año.bin");  // named as on the service
    core::Estado& estado = mundo.estado();
    Transferencia& transferencia = mundo.flujos.transferencia();
};

TEST_F(PruebaBajadas, ElArchivoEnteroBajoSuNombreTalCual) {
    mundo.vista().fx1.ponerCelda(1, columna_rejilla::nombre, " año.bin ");
    remotos.archivos[" año.bin "] = pruebas::contenidoDePrueba(3 * c + 7);
    const auto destino = mundo.nucleo.ruta("nueva/carpeta/bajado.bin");
    EXPECT_TRUE(descargar(destino));
    EXPECT_EQ(leer(destino), remotos.archivos[" año.bin "]);
    EXPECT_EQ(mundo.servicio.llamadas("Restore").size(), 4U);
    EXPECT_EQ(mundo.vista().transferencia.piezas, 4);
    EXPECT_FALSE(mundo.vista().transferencia.activa || mundo.vista().medidor.visible);

    mundo.servicio.olvidar();
    mundo.vista().fx1.Row = 0;
    EXPECT_FALSE(descargar(bajado));
    EXPECT_FALSE(abrir(mundo.nucleo.ruta() + "/"));
    EXPECT_EQ(mundo.guion().cajas().size(), 2U);
    EXPECT_EQ(mundo.guion().ultimo().texto, "<1935>");
    EXPECT_EQ(mundo.servicio.nombres(), "");
}

TEST_F(PruebaBajadas, ElDialogoDeGuardar) {
    mundo.guion().cancelarGuardar();
    EXPECT_FALSE(descargar(""));
    EXPECT_EQ(mundo.guion().elecciones.at(0).nombre, "año.bin");
    EXPECT_EQ(mundo.servicio.nombres(), "");

    carpeta.escribir("bajado.bin", "lo de antes");
    mundo.guion().guardarComo(bajado);
    mundo.guion().contestarNo("<371> " + bajado + " <827>\r\n<617>?");
    EXPECT_FALSE(descargar(""));
    EXPECT_EQ(leer(bajado), "lo de antes");

    mundo.guion().guardarComo(bajado);
    mundo.guion().contestarSi();
    EXPECT_TRUE(descargar(""));
    EXPECT_EQ(leer(bajado), remotos.archivos["año.bin"]);
}

TEST_F(PruebaBajadas, LoQueNoSePuedeBajarSeDiceYNoDejaNada) {
    for (const auto& [dicho, esperado] : {std::pair("ERROR:no existe", "ERROR:no existe"),
                                          {"2147483648", "Desbordamiento"},
                                          {"-1", "tamaño"}}) {
        mundo.servicio.responder("FileSize", dicho);
        EXPECT_FALSE(descargar(bajado));
        EXPECT_THAT(mundo.guion().ultimo().texto, HasSubstr(esperado));
    }
    mundo.servicio.responder("FileSize", "5");
    EXPECT_FALSE(descargar(mundo.nucleo.ruta("datos"))) << "a folder";
    mundo.servicio.parar();
    EXPECT_FALSE(descargar(bajado));
    EXPECT_EQ(mundo.guion().cajas().size(), 5U);
    EXPECT_FALSE(carpeta.hay("bajado.bin"));
    EXPECT_TRUE(mundo.servicio.llamadas("Restore").empty());
}

TEST_F(PruebaBajadas, UnaPiezaQueFalla) {
    mundo.servicio.fallar("Restore", 2);
    EXPECT_FALSE(descargar(bajado));
    EXPECT_THAT(mundo.guion().ultimo().texto, HasSubstr("fallo de prueba"));
    EXPECT_EQ(leer(bajado), remotos.archivos["año.bin"].substr(0, c)) << "the shorter file stays";
    EXPECT_FALSE(mundo.vista().medidor.visible);

    mundo.guion().olvidar();
    mundo.servicio.responder("Restore", "ERROR:disco");
    EXPECT_FALSE(descargar(bajado));
    EXPECT_TRUE(mundo.guion().sucesos.empty()) << "a refused piece is for the log";
    EXPECT_TRUE(mundo.nucleo.registro.dice("ERROR:disco"));
    EXPECT_FALSE(abrir(propio));
    EXPECT_TRUE(mundo.guion().abiertos.empty()) << "half a file is not opened";
}

TEST_F(PruebaBajadas, AbrirYDetener) {
    EXPECT_TRUE(abrir(propio));
    EXPECT_EQ(leer(propio), remotos.archivos["año.bin"]);
    EXPECT_EQ(mundo.guion().abiertos, std::vector<std::string>{propio});

    mundo.servicio.olvidar();
    mundo.guion().enTurno(mundo.guion().turnos + 3, [&] { estado.gDetener = true; });
    EXPECT_FALSE(descargar(bajado));
    EXPECT_FALSE(carpeta.hay("bajado.bin"));
    EXPECT_EQ(mundo.servicio.llamadas("Restore").size(), 2U);
    EXPECT_TRUE(estado.gDetener) << "the caller tells the stop";
    EXPECT_FALSE(abrir(propio));
    EXPECT_EQ(leer(propio), "") << "stopped before its first piece: the empty file stays";
}

}  // namespace
}  // namespace tarvoline::workflows
