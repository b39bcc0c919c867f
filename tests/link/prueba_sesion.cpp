// The session: dates, numbers, channel, and the entry that is being built.
#include <gtest/gtest.h>

#include <set>

#include "apoyo/en_procesos.h"
#include "data/capa_datos.h"
#include "link/apoyo_enlace.h"

namespace tarvoline::pruebas {
namespace {

using link::ErrorEnlace;

class SesionEnlace : public testing::Test {
  protected:
    // Text of the error that a date raises, "" when it raises none.
    std::string queja(std::string_view fecha) {
        try {
            mundo.enlace.Fecha(fecha);
            return {};
        } catch (const ErrorEnlace& error) {
            EXPECT_EQ(error.numero(), 0x8004C353U);
            return error.descripcion();
        }
    }
    MundoEnlace mundo;
    link::Enlace& enlace = mundo.enlace;
};

TEST_F(SesionEnlace, FormasDeUnaFecha) {
    for (const char* fecha : {"260131", "31/01/26", "31/01/2026"}) {
        enlace.Fecha("");
        EXPECT_EQ(enlace.Fecha(), "");
        enlace.Fecha(fecha);
        EXPECT_EQ(enlace.Fecha(), "260131") << fecha;
    }
    // No form of a date at all is no date, and no error.
    enlace.Fecha("1/01/26");
    EXPECT_EQ(enlace.Fecha(), "");
    EXPECT_EQ(queja("290226"), "Año contable: 26\r\nFecha no válida: 290226");
    EXPECT_EQ(queja("260229"), "");
    for (const char* mala :
         {"260230", "260431", "261301", "260100", "31/04/26", "00/01/2026", "2601x1", "!60101"}) {
        EXPECT_EQ(queja(mala), "Formato Fecha no válido: " + std::string(mala) +
                                   "\nFormatos aceptados son: 31/12/13 o 131231");
    }
}

TEST_F(SesionEnlace, EjercicioPartido) {
    enlace.CrearEmpresa({.NombreEmpresa = "Partida", .año = "99", .MesApertura = "4"});
    enlace.AbrirEmpresa("Partida");
    EXPECT_EQ(enlace.año(4), "99");
    EXPECT_EQ(enlace.año(0), "99");
    EXPECT_EQ(enlace.year(3), "100");  // two digits at least
    EXPECT_EQ(enlace.año(13), "100");
    EXPECT_EQ(queja("30/04/99"), "");
    EXPECT_EQ(queja("31/03/00"), "Año contable: 99\r\nApertura: 04\r\nFecha no válida: 31/03/00");
}

TEST_F(SesionEnlace, NumerosDeAsiento) {
    enlace.Número("");
    EXPECT_EQ(enlace.Número(), "000002");
    enlace.Número("A7");
    EXPECT_EQ(enlace.Number(), "A7");
    enlace.Config("DOCUMENTO", "999999");
    enlace.Number("");
    EXPECT_EQ(enlace.Number(), "000000");
    // A file that cannot be written gives one number, not two.
    enlace.Config("DOCUMENTO", "000041");
    enlace.Number("");
    ASSERT_EQ(enlace.Number(), "000042");
    const std::string empresa = enlace.Empresa();
    mundo.mundo.archivos->renombrar(empresa, empresa + ".aparte");
    enlace.Number("");
    EXPECT_EQ(enlace.Number(), "000043");
    mundo.mundo.archivos->renombrar(empresa + ".aparte", empresa);
    enlace.Number("");
    EXPECT_EQ(enlace.Number(), "000043");
    enlace.CerrarEmpresa();
    EXPECT_THROW(enlace.Número("1"), ErrorEnlace);
    EXPECT_EQ(enlace.Number(), "000043");
}

TEST_F(SesionEnlace, CanalYUsuario) {
    mundo.avisos.clear();
    enlace.MASTER(7, "XK4827");
    enlace.MASTER(99, "XK4826");
    enlace.MASTER(7, "XK4826");
    EXPECT_EQ(mundo.avisos, "FUNCIÓN 7\n");
    enlace.Canal("7");
    EXPECT_EQ(enlace.Canal(), "007");
    enlace.Canal("x");
    EXPECT_EQ(enlace.Canal(), "000");
    enlace.Usuario("3");
    EXPECT_EQ(enlace.Usuario(), "03");
}

TEST_F(SesionEnlace, UnAsientoEmpieza) {
    enlace.AñadirAnalitica("6230000000", "1", "", 1, 5);
    EXPECT_FALSE(enlace.HayPendientes());
    enlace.AñadirCartera("31/12/26", "4300000001", "1", "", 5);
    EXPECT_TRUE(enlace.HayPendientes());
    EXPECT_EQ(enlace.ContadorAnalitica(), 0);  // lost with the entry before
    const auto linea = enlace.AddEntry("5700000000", "Caja", 1, 5);
    linea->Importe = 7;
    EXPECT_EQ(enlace.Apunte(1)->Importe, 7);
    EXPECT_EQ(enlace.Apunte(0), nullptr);
    EXPECT_EQ(enlace.Apunte(2), nullptr);
    enlace.AñadirAnalitica("6230000000", "1", "", 1, 5);
    EXPECT_EQ(enlace.ContadorAnalitica() + enlace.ContadorCartera() + enlace.ContadorApuntes(), 3);
    const auto iva = enlace.AddVAT("4300000001", "4770000000", "F1", "31/01/2026", "21", "R", 100, 0, 0, "",
                                   "", "", "", "", "", 0, "");
    EXPECT_EQ(iva->FechaFactura, "31/01/26");
    EXPECT_EQ(iva->SII_Codigo + iva->SII_PeriodoPresentacion, "000000");
    enlace.LimpiarPendientes();
    EXPECT_FALSE(enlace.HayPendientes());
    EXPECT_EQ(enlace.ContadorIva() + enlace.ContadorApuntes() + enlace.ContadorDatosGlobal(), 0);
    EXPECT_EQ(linea->Cuenta, "5700000000");  // whoever holds a line keeps it
}

// Programs that take numbers at the same time never take the same one.
TEST_F(SesionEnlace, DosProgramasNumeran) {
    constexpr int procesos = 3, cuantos = 40;
    const auto archivoDe = [](int proceso) { return "numeros" + std::to_string(proceso); };
    enProcesos(procesos, 1, [&](int proceso, int) {
        link::Contexto contexto(*mundo.mundo.archivos, mundo.mundo.ajustes, mundo.mundo.carpetas,
                                mundo.mundo.reloj);
        link::Enlace otro(contexto);
        otro.AbrirEmpresa("Prueba");
        contexto.datos().reintentosEmpresa = {1000, std::chrono::milliseconds(10)};
        std::string tomados;
        for (int i = 0; i < cuantos; ++i) {
            otro.Número("");
            tomados += otro.Número();
        }
        mundo.mundo.carpeta.escribir(archivoDe(proceso), tomados);
    });
    std::set<std::string> todos;
    for (int proceso = 0; proceso < procesos; ++proceso) {
        const std::string tomados = mundo.mundo.carpeta.leer(archivoDe(proceso));
        for (std::size_t i = 0; i < tomados.size(); i += 6)
            todos.insert(tomados.substr(i, 6));
    }
    EXPECT_EQ(todos.size(), static_cast<std::size_t>(procesos * cuantos));
}

}  // namespace
}  // namespace tarvoline::pruebas
