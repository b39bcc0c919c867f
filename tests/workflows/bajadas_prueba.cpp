// Downloads against a scripted service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

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
    std::string destino(const std::string& nombre = "bajado.bin") const { return mundo.nucleo.ruta(nombre); }
    std::string bajado(const std::string& nombre = "bajado.bin") const {
        return mundo.nucleo.carpeta().leer(nombre);
    }
    bool esta(const std::string& nombre = "bajado.bin") const { return mundo.nucleo.carpeta().hay(nombre); }

    pruebas::MundoServicio mundo;
    pruebas::ArchivosServicio remotos{mundo.servicio};
    core::Estado& estado = mundo.estado();
    Transferencia& transferencia = mundo.flujos.transferencia();
};

TEST_F(PruebaBajadas, ElArchivoEntero) {
    EXPECT_TRUE(transferencia.DescargarArchivo("PERSONAL", destino("nueva/carpeta/bajado.bin")));
    EXPECT_EQ(bajado("nueva/carpeta/bajado.bin"), remotos.archivos["año.bin"]);
    EXPECT_EQ(mundo.servicio.llamadas("Restore").size(), 4U);
    EXPECT_EQ(mundo.vista().NombreArchivo, "");
    EXPECT_FALSE(mundo.vista().medidor.visible);
    EXPECT_FALSE(mundo.vista().transferencia.activa);
    EXPECT_EQ(mundo.vista().transferencia.piezas, 4);
}

TEST_F(PruebaBajadas, ElNombreSePideComoEsta) {
    mundo.vista().fx1.ponerCelda(1, columna_rejilla::nombre, " año.bin ");
    remotos.archivos[" año.bin "] = "el de los blancos";
    EXPECT_TRUE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_EQ(bajado(), "el de los blancos");
}

TEST_F(PruebaBajadas, SinNombreNoHayLlamada) {
    mundo.vista().fx1.Row = 0;
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_EQ(mundo.guion().ultimo().texto, "<1935>");
    EXPECT_FALSE(transferencia.AbrirArchivoServicio("PERSONAL", mundo.nucleo.ruta() + "/"));
    EXPECT_EQ(mundo.guion().cajas().size(), 2U);
    EXPECT_EQ(mundo.servicio.nombres(), "");
}

TEST_F(PruebaBajadas, ElDialogoDeGuardar) {
    mundo.guion().cancelarGuardar();
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", ""));
    EXPECT_EQ(mundo.guion().elecciones.at(0).nombre, "año.bin");
    EXPECT_EQ(mundo.servicio.nombres(), "");

    mundo.nucleo.carpeta().escribir("bajado.bin", "lo de antes");
    mundo.guion().guardarComo(destino());
    mundo.guion().contestarNo("<371> " + destino() + " <827>\r\n<617>?");
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", ""));
    EXPECT_EQ(bajado(), "lo de antes");

    mundo.guion().guardarComo(destino());
    mundo.guion().contestarSi();
    EXPECT_TRUE(transferencia.DescargarArchivo("PERSONAL", ""));
    EXPECT_EQ(bajado(), remotos.archivos["año.bin"]);
}

TEST_F(PruebaBajadas, LoQueElServicioNoTiene) {
    remotos.archivos.clear();
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_EQ(mundo.guion().ultimo().texto, "ERROR:no existe");
    EXPECT_FALSE(esta());
    for (const auto& [dicho, esperado] : {std::pair("2147483648", "Desbordamiento"), {"-1", "tamaño"}}) {
        mundo.servicio.responder("FileSize", dicho);
        EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
        EXPECT_THAT(mundo.guion().ultimo().texto, HasSubstr(esperado));
        EXPECT_FALSE(esta());
    }
    mundo.servicio.parar();
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_EQ(mundo.guion().cajas().size(), 4U);
    EXPECT_EQ(mundo.guion().ultimo().icono, core::Icono::exclamacion);
}

TEST_F(PruebaBajadas, UnRechazoEnUnaPiezaNoSeCuenta) {
    mundo.servicio.responder("Restore", "ERROR:disco");
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_TRUE(mundo.guion().sucesos.empty());
    EXPECT_EQ(bajado(), "");
    EXPECT_TRUE(mundo.nucleo.registro.dice("ERROR:disco"));
    EXPECT_FALSE(transferencia.AbrirArchivoServicio("PERSONAL", destino("año.bin")));
    EXPECT_TRUE(mundo.guion().abiertos.empty()) << "half a file is not opened";
}

TEST_F(PruebaBajadas, UnErrorEnUnaPiezaSeMuestra) {
    mundo.servicio.fallar("Restore", 2);
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_THAT(mundo.guion().ultimo().texto, HasSubstr("fallo de prueba"));
    EXPECT_EQ(bajado(), remotos.archivos["año.bin"].substr(0, c)) << "the shorter file stays";
    EXPECT_FALSE(mundo.vista().medidor.visible);
}

TEST_F(PruebaBajadas, DetenerBorraLoBajado) {
    mundo.guion().enTurno(3, [&] { estado.gDetener = true; });
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", destino()));
    EXPECT_FALSE(esta());
    EXPECT_EQ(mundo.servicio.llamadas("Restore").size(), 2U);
    EXPECT_TRUE(estado.gDetener) << "the caller tells the stop";
    EXPECT_FALSE(transferencia.AbrirArchivoServicio("PERSONAL", destino("año.bin")));
    EXPECT_TRUE(esta("año.bin")) << "stopped before its first piece: the empty file stays";
}

TEST_F(PruebaBajadas, AbrirLoQueNombraElDestino) {
    mundo.vista().fx1.Row = 0;
    EXPECT_TRUE(transferencia.AbrirArchivoServicio("PERSONAL", destino("año.bin")));
    EXPECT_EQ(bajado("año.bin"), remotos.archivos["año.bin"]);
    EXPECT_EQ(mundo.guion().abiertos, std::vector<std::string>{destino("año.bin")});
    mundo.guion().enTurno(mundo.guion().turnos + 3, [&] { estado.gDetener = true; });
    EXPECT_FALSE(transferencia.AbrirArchivoServicio("PERSONAL", destino("año.bin")));
    EXPECT_FALSE(esta("año.bin"));
}

TEST_F(PruebaBajadas, UnDestinoQueNoSePuedeHacer) {
    EXPECT_FALSE(transferencia.DescargarArchivo("PERSONAL", mundo.nucleo.ruta("datos")));
    EXPECT_EQ(mundo.guion().cajas().size(), 1U);
    EXPECT_TRUE(mundo.servicio.llamadas("Restore").empty());
}

}  // namespace
}  // namespace tarvoline::workflows
