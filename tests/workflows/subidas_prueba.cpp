// Uploads against a scripted service: the record, the ways they end, and what each leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "apoyo/archivos_defectuosos.h"
#include "platform/acceso_inicio.h"
#include "workflows/espacio.h"
#include "workflows/mundo_servicio.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {
namespace {

using service::longitudPieza;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t c = longitudPieza;

class PruebaSubidas : public ::testing::Test {
  protected:
    std::string zip(std::size_t longitud, const std::string& nombre = "ALFA.ZIP") {
        return mundo.nucleo.carpeta().escribir("temporal/Veldorix/Tarvoline/" + nombre,
                                               pruebas::contenidoDePrueba(longitud));
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
    mundo.vista().alCambiar = [&](core::Parte parte) {
        if (parte != core::Parte::transferencia || mundo.vista().transferencia.piezas != 1) return;
        EXPECT_EQ(registro(), ruta + "|" + mundo.clave("Offset") + "|VELDORIX|maria|secreta|DATOS|CUENTA1|");
        EXPECT_TRUE(hayAcceso());
        EXPECT_EQ(mundo.vista().transferencia.hecho, static_cast<long long>(c));
        EXPECT_TRUE(mundo.vista().transferencia.activa);
    };
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "");
    EXPECT_THAT(posiciones(), ElementsAre(1, c + 1, 2 * c + 1));
    EXPECT_EQ(transferencia.piezasEnviadas(), 3);
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(hayAcceso());
    EXPECT_FALSE(std::filesystem::exists(ruta));
    EXPECT_FALSE(mundo.vista().transferencia.activa);
    EXPECT_FALSE(mundo.vista().medidor.visible);
    EXPECT_EQ(mundo.vista().NombreArchivo, "");
    EXPECT_FALSE(estado.gInterrumpido);
}

TEST_F(PruebaSubidas, CadaPiezaCuestaDosLlamadas) {
    transferencia.SubirArchivo(zip(3 * c + 1), "VELDORIX", true, 1);
    const auto todas = mundo.servicio.nombres(true);
    EXPECT_THAT(todas, EndsWith("DTS Backup DTS Backup DTS Backup"));
    EXPECT_THAT(todas, StartsWith("DTS CapacidadContratada DTS Backup"));
}

TEST_F(PruebaSubidas, SoloSeBorraLaCopiaDeVeldorix) {
    for (const char* tipo : {"PERSONAL", "VXCRM"}) {
        const auto ruta = zip(10);
        EXPECT_EQ(transferencia.SubirArchivo(ruta, tipo, false, 1), "");
        EXPECT_TRUE(std::filesystem::exists(ruta)) << tipo;
    }
    EXPECT_EQ(mundo.servicio.llamadas("Backup").at(0).bytes(6).size(), 11U) << "one zero byte more";
    EXPECT_EQ(mundo.servicio.llamadas("Backup").at(0).bytes(6).back(), std::byte{0});
}

TEST_F(PruebaSubidas, UnRechazoSeLlevaElRegistroYLaCopia) {
    mundo.servicio.responder("Backup", "ERROR:cuenta cerrada");
    const auto ruta = zip(2 * c);
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "ERROR:cuenta cerrada");
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(std::filesystem::exists(ruta));
    EXPECT_FALSE(estado.gInterrumpido);
    EXPECT_EQ(transferencia.piezasEnviadas(), 1);
}

TEST_F(PruebaSubidas, UnErrorDejaTodoParaSeguir) {
    mundo.servicio.fallar("Backup", 2);
    const auto ruta = zip(4 * c);
    const auto texto = transferencia.SubirArchivo(ruta, "VELDORIX", true, 1);
    EXPECT_THAT(texto, StartsWith("ERROR<1250> "));
    EXPECT_THAT(texto, HasSubstr("fallo de prueba"));
    EXPECT_THAT(texto, EndsWith(", detalle de prueba"));
    EXPECT_EQ(mundo.clave("Active"), ruta);
    EXPECT_EQ(mundo.clave("Offset"), std::to_string(c + 1));
    EXPECT_TRUE(std::filesystem::exists(ruta));
    EXPECT_TRUE(hayAcceso());
    EXPECT_FALSE(estado.gInterrumpido);

    mundo.servicio.olvidar();
    estado.gUsuario = estado.gPassword = estado.gCuenta = "otro";
    estado.gCarpeta = "OTRA";
    EXPECT_EQ(transferencia.ContinuarSubida(), "");
    EXPECT_THAT(posiciones(), ElementsAre(c + 1, 2 * c + 1, 3 * c + 1))
        << "no byte before the cut goes again";
    const auto pieza = mundo.servicio.llamadas("Backup").at(0);
    EXPECT_EQ(pieza.texto(0) + pieza.texto(2) + pieza.texto(3) + pieza.texto(4), "mariaCUENTA1DATOSVELDORIX");
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(std::filesystem::exists(ruta));
}

TEST_F(PruebaSubidas, UnCorteEnLaUltimaPiezaNoTieneSalida) {
    mundo.servicio.cortar("Backup", 2);
    const auto ruta = zip(2 * c);
    EXPECT_THAT(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), StartsWith("ERROR"));
    for (int intento = 0; intento < 2; ++intento) {
        EXPECT_THAT(transferencia.ContinuarSubida(), StartsWith("ERROR<1250> "));
        EXPECT_EQ(mundo.clave("Active"), ruta);
        EXPECT_EQ(mundo.clave("Offset"), std::to_string(c + 1));
        EXPECT_TRUE(std::filesystem::exists(ruta));
    }
}

TEST_F(PruebaSubidas, UnArchivoDeUnPasoJustoDejaElRegistro) {
    const auto ruta = zip(c);
    EXPECT_THAT(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), StartsWith("ERROR<1250> "));
    EXPECT_EQ(mundo.clave("Active"), ruta);
    EXPECT_EQ(mundo.clave("Offset"), "1");
}

TEST_F(PruebaSubidas, SinServicioQuedaElRegistroDesdeElPrincipio) {
    mundo.servicio.fallar("DTS", 2);  // the first belongs to the capacity
    const auto ruta = zip(3 * c);
    EXPECT_THAT(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), StartsWith("ERROR<1250> "));
    EXPECT_EQ(mundo.clave("Offset"), "1");
    mundo.servicio.parar();
    transferencia.borrarRegistroSubida();
    EXPECT_THAT(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), StartsWith("ERROR<1250> "));
    EXPECT_EQ(registro(), vacio()) << "an error before the first step leaves the keys alone";
}

TEST_F(PruebaSubidas, SinSitio) {
    mundo.servicio.responder("CapacidadContratada", "0.0000001");
    const auto ruta = zip(c);
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "NO");
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_EQ(registro(), vacio());
    EXPECT_TRUE(std::filesystem::exists(ruta));
    EXPECT_TRUE(mundo.servicio.llamadas("Backup").empty());
}

TEST_F(PruebaSubidas, DetenerAntesYDurante) {
    const auto ruta = zip(4 * c);
    estado.gDetener = true;
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "");
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_EQ(transferencia.piezasEnviadas(), 0);
    EXPECT_EQ(registro(), vacio());
    EXPECT_TRUE(std::filesystem::exists(ruta));

    estado.gDetener = estado.gInterrumpido = false;
    mundo.guion().enTurno(mundo.guion().turnos + 5, [&] { estado.gDetener = true; });  // before piece 3
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), "");
    EXPECT_TRUE(estado.gInterrumpido);
    EXPECT_FALSE(estado.gDetener);
    EXPECT_EQ(transferencia.piezasEnviadas(), 2);
    EXPECT_EQ(registro(), vacio());
    EXPECT_FALSE(std::filesystem::exists(ruta));
}

TEST_F(PruebaSubidas, CerrarLaVentanaEsComoUnaCaida) {
    const auto ruta = zip(4 * c);
    mundo.guion().cerrarVentanaEnTurno(4);
    EXPECT_THROW(transferencia.SubirArchivo(ruta, "VELDORIX", true, 1), core::FinDePrograma);
    EXPECT_EQ(mundo.clave("Active"), ruta);
    EXPECT_EQ(mundo.clave("Offset"), std::to_string(c + 1));
    EXPECT_TRUE(hayAcceso());
    EXPECT_TRUE(std::filesystem::exists(ruta));
}

TEST_F(PruebaSubidas, UnTextoEnLugarDeRuta) {
    EXPECT_EQ(transferencia.SubirArchivo("no se ha podido copiar", "VELDORIX", true, 1),
              "ERROR: no se ha podido copiar");
    EXPECT_EQ(registro(), vacio());
    EXPECT_EQ(mundo.servicio.nombres(), "");
}

TEST_F(PruebaSubidas, DosGigasNoSeEnvian) {
    const auto ruta = zip(0, "ENORME.ZIP");
    std::filesystem::resize_file(ruta, std::uintmax_t{1} << 31);
    mundo.servicio.responder("CapacidadContratada", "10");
    EXPECT_THAT(transferencia.SubirArchivo(ruta, "PERSONAL", true, 1),
                StartsWith("ERROR<1250> Desbordamiento"));
    EXPECT_EQ(registro(), vacio());
}

TEST_F(PruebaSubidas, LaCopiaEnCursoNoSePuedeVaciar) {
    const auto ruta = zip(3 * c);
    const auto ajena = zip(5, "VIEJA.ZIP");
    // Another process that clears the folder: it knows nothing of our record, only the open file stops it.
    mundo.guion().enTurno(2, [&] {
        mundo.nucleo.ajustes.GrabarRegistro("Active", "", "NETBACKUP", "VELDORIX");
        mundo.flujos.temporales().VaciarTemporal();
    });
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "VXCRM", true, 1), "");
    EXPECT_TRUE(std::filesystem::exists(ruta));
    EXPECT_FALSE(std::filesystem::exists(ajena));
    mundo.flujos.temporales().VaciarTemporal();
    EXPECT_FALSE(std::filesystem::exists(ruta)) << "free again after the upload";
}

TEST_F(PruebaSubidas, ElRegistroEsDelProducto) {
    estado.gProducto = "VXCRM";
    mundo.servicio.fallar("Backup");
    const auto ruta = zip(3 * c);
    transferencia.SubirArchivo(ruta, "VXCRM", true, 1);
    EXPECT_EQ(registro("VXCRM"), ruta + "|1|VXCRM|maria|secreta|DATOS|CUENTA1|");
    EXPECT_EQ(registro(), vacio());
}

TEST_F(PruebaSubidas, UnaPosicionDanadaEmpiezaDeNuevo) {
    const auto ruta = zip(2 * c);
    for (const char* posicion : {"", "-7", "basura"}) {
        const auto copia = zip(2 * c);
        mundo.servicio.olvidar();
        mundo.nucleo.ajustes.GrabarRegistro("Active", copia, "NETBACKUP", "VELDORIX");
        mundo.nucleo.ajustes.GrabarRegistro("Carpeta", "VELDORIX", "NETBACKUP", "VELDORIX");
        mundo.nucleo.ajustes.GrabarRegistro("User", "maria", "NETBACKUP", "VELDORIX");
        mundo.nucleo.ajustes.GrabarRegistro("Offset", posicion, "NETBACKUP", "VELDORIX");
        EXPECT_EQ(transferencia.ContinuarSubida(), "");
        EXPECT_THAT(posiciones(), ElementsAre(1, c + 1)) << posicion;
    }
}

TEST_F(PruebaSubidas, UnArchivoQueCreceQuedaEnElDiario) {
    const auto ruta = zip(2 * c);
    mundo.guion().enTurno(3, [&] { std::filesystem::resize_file(ruta, 3 * c); });
    EXPECT_EQ(transferencia.SubirArchivo(ruta, "PERSONAL", true, 1), "");
    EXPECT_EQ(posiciones().size(), 2U) << "the length is taken once";
    EXPECT_TRUE(mundo.nucleo.registro.dice("length changed"));
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
