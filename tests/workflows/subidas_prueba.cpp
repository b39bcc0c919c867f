// Uploads against a scripted service: the record, the ways they end, and what each leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "apoyo/archivos_defectuosos.h"
#include "platform/acceso_inicio.h"
#include "workflows/mundo_servicio.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {
namespace {

using service::longitudPieza;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::StartsWith;

constexpr std::size_t c = longitudPieza;

class PruebaSubidas : public ::testing::Test {
  protected:
    std::string zip(std::size_t longitud, const std::string& nombre = "ALFA.ZIP") {
        return mundo.nucleo.carpeta().escribir("temporal/Veldorix/Tarvoline/" + nombre,
                                               pruebas::contenidoDePrueba(longitud));
    }
    void anotar(const std::string& clave, const std::string& valor) {
        mundo.nucleo.ajustes.GrabarRegistro(clave, valor, "NETBACKUP", "VELDORIX");
    }
    bool hayAcceso() { return platform::existeAccesoInicio(mundo.nucleo.archivos, "Tarvoline"); }
    std::string registro(const std::string& producto = "VELDORIX") const {
        std::string texto;
        for (const char* nombre :
             {"Active", "Offset", "Carpeta", "User", "Password", "CarpetaDestino", "Cuenta"}) {
            texto += mundo.clave(nombre, producto) + "|";
        }
        return texto;
    }
    static std::string vacio() { return "|||||||"; }
    static std::string quedan(const std::string& ruta, std::size_t posicion) {
        return ruta + "|" + std::to_string(posicion) + "|VELDORIX|maria|secreta|DATOS|CUENTA1|";
    }
    std::vector<std::int32_t> posiciones() const {
        std::vector<std::int32_t> lista;
        for (const auto& llamada : mundo.servicio.llamadas("Backup"))
            lista.push_back(llamada.entero(7));
        return lista;
    }

    pruebas::MundoServicio mundo;
    core::Estado& estado = mundo.estado();
    Transferencia& transferencia = mundo.flujos.transferencia();
};

TEST_F(PruebaSubidas, DeCuandoEmpiezaACuandoTermina) {
    const auto ruta = zip(2 * c + 9);
    mundo.vista().alCambiar = [&](core::Parte) {
        const auto& marcha = mundo.vista().transferencia;
        if (marcha.piezas != 1 || !marcha.esperandoServicio) return;
        EXPECT_EQ(registro(), quedan(ruta, c + 1)) << "written before the second piece";
        EXPECT_TRUE(hayAcceso() && marcha.activa);
        EXPECT_EQ(marcha.hecho, static_cast<long long>(c));
    };
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "");
    EXPECT_THAT(posiciones(), ElementsAre(1, c + 1, 2 * c + 1));
    EXPECT_EQ(transferencia.piezasEnviadas(), 3);
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(hayAcceso() || std::filesystem::exists(ruta));
    EXPECT_FALSE(mundo.vista().transferencia.activa || mundo.vista().medidor.visible);
    EXPECT_FALSE(estado.gInterrumpido);
}

TEST_F(PruebaSubidas, LoQueElServicioContestaTerminaLaSubida) {
    for (const char* tipo : {"PERSONAL", "VXCRM"}) {
        const auto ruta = zip(10);
        EXPECT_EQ(transferencia.SubirArchivo(ruta, tipo, false, 1), "");
        EXPECT_TRUE(std::filesystem::exists(ruta)) << tipo;
    }
    mundo.servicio.responder("Backup", "ERROR:cuenta cerrada");
    const auto ruta = zip(2 * c);
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "ERROR:cuenta cerrada");
    EXPECT_EQ(transferencia.piezasEnviadas(), 1);
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(std::filesystem::exists(ruta)) << "the copy of a company goes with its record";
    EXPECT_FALSE(estado.gInterrumpido);
}

TEST_F(PruebaSubidas, UnErrorDejaTodoParaSeguir) {
    mundo.servicio.fallar("Backup", 2);
    const auto ruta = zip(4 * c);
    const auto texto = transferencia.SubirArchivo(ruta, "VELDORIX", true, 1);
    EXPECT_THAT(texto, StartsWith("ERROR<1250> "));
    EXPECT_THAT(texto, EndsWith("fallo de prueba, detalle de prueba"));
    EXPECT_EQ(registro(), quedan(ruta, c + 1));
    EXPECT_TRUE(hayAcceso() && std::filesystem::exists(ruta));
    EXPECT_FALSE(estado.gInterrumpido);

    mundo.servicio.olvidar();
    estado.gUsuario = estado.gPassword = estado.gCuenta = "otro";
    estado.gCarpeta = "OTRA";
    long long menor = 4 * c;
    mundo.vista().alCambiar = [&](core::Parte) {
        menor = std::min(menor, mundo.vista().transferencia.hecho);
    };
    EXPECT_EQ(transferencia.ContinuarSubida(), "");
    EXPECT_THAT(posiciones(), ElementsAre(c + 1, 2 * c + 1, 3 * c + 1))
        << "no byte before the cut goes again";
    EXPECT_EQ(menor, static_cast<long long>(c)) << "nor counts as this run's";
    const auto pieza = mundo.servicio.llamadas("Backup").at(0);
    EXPECT_EQ(pieza.texto(0) + pieza.texto(2) + pieza.texto(3) + pieza.texto(4), "mariaCUENTA1DATOSVELDORIX");
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(std::filesystem::exists(ruta));

    // A damaged position starts the file anew.
    for (const char* posicion : {"", "-7", "basura"}) {
        mundo.servicio.olvidar();
        anotar("Active", zip(2 * c));
        anotar("User", "maria");
        anotar("Offset", posicion);
        EXPECT_EQ(transferencia.ContinuarSubida(), "");
        EXPECT_THAT(posiciones(), ElementsAre(1, c + 1)) << posicion;
    }
}

// A run that dies between the two ends of an upload leaves a record without its archive.
TEST_F(PruebaSubidas, UnRegistroSinSuCopiaSeOlvida) {
    const auto perdida = mundo.nucleo.ruta("no está.zip");
    const auto seguir = [&](const char* tipo, const char* posicion) {
        anotar("Active", perdida);
        anotar("Carpeta", tipo);
        anotar("Offset", posicion);
        return transferencia.ContinuarSubida();
    };
    EXPECT_EQ(seguir("VELDORIX", ""), "") << "it had gone up whole";
    EXPECT_EQ(registro(), vacio());
    EXPECT_EQ(seguir("VELDORIX", "262145"), "ERROR: " + perdida);
    EXPECT_EQ(registro(), vacio());
    EXPECT_EQ(seguir("PERSONAL", "262145"), "ERROR: " + perdida);
    EXPECT_NE(registro(), vacio()) << "the disk of a personal file may come back";
}

TEST_F(PruebaSubidas, LoQueNoLlegaAEmpezarNoDejaRegistro) {
    const auto ruta = zip(3 * c);
    const auto subir = [&](const std::string& que) {
        auto texto = transferencia.SubirArchivo(que, "VELDORIX", true, 1);
        EXPECT_EQ(registro(), vacio()) << texto;
        EXPECT_TRUE(std::filesystem::exists(ruta)) << texto;
        return texto;
    };
    EXPECT_EQ(subir("no se ha podido copiar"), "ERROR: no se ha podido copiar")
        << "a text in place of a path";
    EXPECT_EQ(mundo.servicio.nombres(), "");
    estado.gDetener = true;
    EXPECT_EQ(subir(ruta), "");
    EXPECT_TRUE(std::exchange(estado.gInterrumpido, false));
    estado.gDetener = false;
    mundo.servicio.responder("CapacidadContratada", "0.0000001");
    EXPECT_EQ(subir(ruta), "NO");
    EXPECT_TRUE(estado.gInterrumpido);
    mundo.servicio.responder("CapacidadContratada", "10");
    const auto enorme = zip(0, "ENORME.ZIP");
    std::filesystem::resize_file(enorme, std::uintmax_t{1} << 31);
    EXPECT_THAT(subir(enorme), StartsWith("ERROR<1250> Desbordamiento"));
    mundo.servicio.parar();
    EXPECT_THAT(subir(ruta), StartsWith("ERROR<1250> "));
    EXPECT_TRUE(mundo.servicio.llamadas("Backup").empty());
}

TEST_F(PruebaSubidas, DetenerNoDejaNadaYCerrarLaVentanaEsComoUnaCaida) {
    const auto ruta = zip(4 * c);
    mundo.guion().cerrarVentanaEnTurno(4);
    EXPECT_THROW(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), core::FinDePrograma);
    EXPECT_EQ(registro(), quedan(ruta, c + 1));
    EXPECT_TRUE(hayAcceso() && std::filesystem::exists(ruta));

    mundo.guion().enTurno(mundo.guion().turnos + 5, [&] { estado.gDetener = true; });  // before piece 3
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "");
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_FALSE(estado.gDetener);
    EXPECT_EQ(transferencia.piezasEnviadas(), 2);
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(hayAcceso() || std::filesystem::exists(ruta));
}

TEST_F(PruebaSubidas, LaCopiaEnCursoNoSePuedeVaciar) {
    const auto ruta = zip(3 * c);
    const auto ajena = zip(5, "VIEJA.ZIP");
    // Another process that clears the folder: it knows nothing of our record, only the open file stops it.
    mundo.guion().enTurno(2, [&] {
        anotar("Active", "");
        mundo.flujos.temporales().VaciarTemporal();
    });
    // What grows meanwhile goes up with its first length, and the log says so.
    mundo.guion().enTurno(3, [&] { std::filesystem::resize_file(ruta, 4 * c); });
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VXCRM", true, 1), "");
    EXPECT_EQ(posiciones().size(), 3U);
    EXPECT_TRUE(mundo.nucleo.registro.dice("length changed"));
    EXPECT_TRUE(std::filesystem::exists(ruta));
    EXPECT_FALSE(std::filesystem::exists(ajena));
    mundo.flujos.temporales().VaciarTemporal();
    EXPECT_FALSE(std::filesystem::exists(ruta)) << "free again after the upload";
}

TEST_F(PruebaSubidas, ElRegistroEsDelProducto) {
    estado.gProducto = "VXCRM";
    mundo.servicio.fallar("DTS", 2);  // the first belongs to the capacity
    const auto ruta = zip(3 * c);
    transferencia.SubirArchivo(ruta, "VXCRM", true, 1);
    EXPECT_EQ(registro("VXCRM"), ruta + "|1|VXCRM|maria|secreta|DATOS|CUENTA1|");
    EXPECT_EQ(registro(), vacio());
}

TEST(SubidasConFallos, AjustesQueNoSeDejanEscribir) {
    const auto reales = platform::crearSistemaArchivos();
    pruebas::ArchivosDefectuosos archivos(*reales);
    pruebas::OpcionesNucleo opciones;
    opciones.archivos = &archivos;
    opciones.ajustesEnArchivo = true;
    pruebas::MundoServicio mundo(opciones);
    archivos.fallar({.operacion = pruebas::Operacion::renombrar, .mascara = "*", .siempre = true});
    const auto ruta = mundo.nucleo.carpeta().escribir("a.bin", pruebas::contenidoDePrueba(3 * c));
    EXPECT_EQ(mundo.flujos.transferencia().SubirArchivo(ruta, "PERSONAL", true, 1), "");
    EXPECT_EQ(mundo.servicio.llamadas("Backup").size(), 3U) << "the file is worth more than its record";
    EXPECT_EQ(mundo.guion().cajas().size(), 1U) << "told once, not at each piece";
}

}  // namespace
}  // namespace tarvoline::workflows
