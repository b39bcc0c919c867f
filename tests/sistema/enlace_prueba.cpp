// The two roads to a company, its files and the real service: whatever is done on both, both show the same,
// but for what docs/remote-link.md says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <sstream>

#include "apoyo/servicio_proceso.h"
#include "sistema/casa.h"

namespace tarvoline::pruebas {
namespace {

// A company on files, and a copy of it in the folder of ANA, who administers the books of her account.
struct DosCaminos : testing::Test {
    DosCaminos() {
        servicio.alta("ANA", "secreta1", "AC01");
        servicio.mandato({"usuario", "--raiz", servicio.raiz(), "--modificar", "ANA", "--tipo", "00"});
        const Salida hecha = casa.correr(
            "tarvoline-demo", {"--carpeta", casa.carpeta().ruta("empresas"), "--nombre", "Demo", "--adjuntos",
                               casa.carpeta().ruta("adjuntos"), "--anio", "2026", "--operaciones", "30",
                               "--terceros", "8", "--kb-imagenes", "5", "--kb-adjuntos", "5"});
        if (hecha.codigo != 0) throw std::runtime_error(hecha.errores);
        const std::string libros = servicio.raiz() + "/contabilidad/U0000001/";
        std::filesystem::create_directories(libros);
        for (const auto& archivo : std::filesystem::directory_iterator(casa.carpeta().ruta("empresas"))) {
            if (archivo.is_regular_file()) std::filesystem::copy(archivo.path(), libros);
        }
    }
    Salida comparar(const std::string& guion, std::vector<std::string> mas = {"--cotejar"}) {
        casa.carpeta().escribir("guion", guion);
        std::vector<std::string> argumentos{casa.carpeta().ruta("guion"),
                                            "--local",
                                            casa.empresa("Demo.QZT"),
                                            "--servicio",
                                            servicio.anfitrion(),
                                            "--usuario",
                                            "ANA",
                                            "--clave",
                                            "secreta1",
                                            "--empresa",
                                            "Demo"};
        argumentos.insert(argumentos.end(), mas.begin(), mas.end());
        return casa.correr("enlace-diferencia", argumentos);
    }
    void esperarIguales(const std::string& guion) {
        const Salida salida = comparar(guion);
        EXPECT_EQ(salida.codigo, 0) << salida.errores << guion;
        EXPECT_EQ(salida.texto, "");
    }

    Casa casa;
    ServicioProceso servicio;
};

TEST_F(DosCaminos, UnaVueltaPorCadaMiembro) {
    std::string guion = R"(# an entry with all that can stand in one
Fecha|15/03/26
Número|
AñadirApunte|4300000003|Venta: "Ñandú" & <hijos> €|1|121|1|0|N|R=1|Nota; con: cosas
AñadirApunte|7000000000|Venta|2|100|1|0|003|R=1
AñadirApunte|4770000021|IVA|2|21|A|0|N|R=1
AñadirApunte|6210000001|Alquiler|1|50|1|0|N|R=1
AñadirAnalitica|6210000001|1001|Centro|1|30
AñadirAnalitica|6210000001|1002||1|20
AddVAT|4300000003|4770000021|F-900|14/03/26|1|R|100|121|0|Peña|B12345678||0|||0|
AddVAT|4000000001|4720000010|P-1|14/03/26|2|S|100|0|0||||0|||0|
AñadirCartera|15/04/27|4300000003|COBROS|Nota|121
GrabarAsiento
LeerUltimoAsiento
LeerAsiento|{Fecha}|{Número}
LeerAnteriorAsiento
LeerProximoAsiento
LeerPrimerAsiento
LeerAsiento|15/03/26
LeerAsiento||000005
ExisteReferencia|R=1
ExisteIva|F-900
ExisteIva|F-901
BuscarDescripcion|Venta
BuscarImporte|121
BuscarImporte|-100
LeerExtracto|4300000003
LeerExtracto|4300000003|01/03/26|31/03/26
LeerExtracto|43000000*
LeerExtractoEx|4300000003
LeerExtractoEx|4300000003|01/03/26|31/03/26
CrearCuenta|4300*|Nueva: "dos"|0|0|A1
CrearCuenta|4300000003|Otro título|-1
CrearCuenta|4300000003||-6
CrearCuenta|4300000003|Nada|0
CrearAnalitica|2001|Analítica
CrearAlterna|9|Alterna|3
CrearDatos|4300000003|titulo=Peña: hijos|Riesgo=12.5|NOTAS=Línea|CriterioCaja=1
LeerDatos|4300000003
LeerDatos||PEÑA
LeerDatos|4300*
LeerPlan|4300*
LeerPlan|4300000003,4300000004
LeerPlan
LeerPlan|*|0|*a*
LeerPlanEx|1|4300000003|||4300000009
LeerPlanEx|1|4300000003||||1
LeerPlanEx|1|4300000003||||2
LeerCartera|COBROS
LeerCartera||01/04/26|30/04/26
MarcarCartera|OK|COBROS|01/04/26|30/04/26||
AnularCartera|COBROS|01/05/26|31/05/26||
CrearPresupuesto|6290000000|Otros|0
ModificarPresupuesto|6290000000|3|-1
tiposiva|1
tiposiva|4
tiposiva|77
Config|NIVEL
ConfigLet|TVCARPETA|Otra
Config|TVCARPETA
ConfigLet|TVCARPETA|Errores varios
Config|TVCARPETA
EmpresaAñoAnterior
GUIDLet|000006|error-1
GUID|000006
GUIDLet|000005|abc
GUID|000005
LeerAsientosGuid|abc
TotalPendiente|4300000003|F-900
TotalPendiente|4300000003|F-901
LeerUltimoAsiento
AnularAsiento|{Fecha}|{Número}
AnularApuntePorReferencia|R=1
AnularCuenta|4300000003
AnularAsiento|31/02/26|000001
LeerExtracto|4300000001|31/02/26
Fecha|31/03/25
)";
    std::ranges::replace(guion, '|', '\t');
    esperarIguales(guion);
    // And the tool sees what is different: one entry on one road alone.
    casa.carpeta().escribir(
        "uno", "Fecha\t01/02/26\nNúmero\t000777\nAñadirApunte\t5720000001\tSolo aquí\t1\t5\nGrabarAsiento\n");
    const std::string local = casa.empresa("Demo.QZT");
    casa.correr("enlace-diferencia", {casa.carpeta().ruta("uno"), "--local", local, "--otra", local});
    const Salida salida = comparar("", {});
    EXPECT_EQ(salida.codigo, 1);
    EXPECT_NE(salida.texto.find("apunte 1"), std::string::npos) << salida.texto;
    // Also that a call fails on one of them alone, whatever its result is excused from.
    const Salida fallo =
        comparar("Fecha\t01/02/26\nNúmero\tA-1\nAñadirApunte\t5720000001\tx\t1\t5\nGrabarAsiento\n", {});
    EXPECT_EQ(fallo.codigo, 1);
    EXPECT_NE(fallo.texto.find("error: (falta)"), std::string::npos) << fallo.texto;
}

// Sessions made up at random from a few accounts, dates and texts, so that entries meet.
TEST_F(DosCaminos, SesionesAlAzar) {
    const char* const pedida = std::getenv("SEMILLA");
    const auto semilla =
        pedida != nullptr ? static_cast<unsigned>(std::atoi(pedida)) : std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto entre = [&](int desde, int hasta) {
        return std::uniform_int_distribution(desde, hasta)(azar);
    };
    const auto uno = [&](std::initializer_list<const char*> todos) {
        return std::string(*(todos.begin() + entre(0, static_cast<int>(todos.size()) - 1)));
    };
    const auto cuenta = [&] {
        return uno({"4300000001", "4300000002", "4000000001", "5720000001", "6290000000"});
    };
    const auto dia = [&] { return uno({"01/01/26", "15/06/26", "28/02/26", "31/12/26"}); };
    const auto texto = [&] { return uno({"Cobro", "Ñandú & Cía", "a<b>\"c'", "dos: puntos", "", "blanco"}); };
    const auto importe = [&] {
        return std::to_string(entre(-5000, 100000) / 100) + "." + std::to_string(entre(10, 99));
    };
    std::ostringstream guion;
    const auto linea = [&](std::initializer_list<std::string> partes) {
        bool primera = true;
        for (const auto& parte : partes)
            guion << (std::exchange(primera, false) ? "" : "\t") << parte;
        guion << '\n';
    };
    const auto asiento = [&] {
        linea({"Fecha", dia()});
        linea({"Número", entre(0, 4) == 0 ? "000777" : ""});
        for (int i = entre(1, 4); i > 0; --i)
            linea({"AñadirApunte", cuenta(), texto(), std::to_string(entre(1, 4)), importe(),
                   uno({"1", "9", "A", "Z"}), "0", uno({"N", "000", "012"}), uno({"", "R1", "R 2"}),
                   texto()});
        if (entre(0, 1) == 0)
            linea({"AddVAT", cuenta(), uno({"4770000021", "4720000010"}), uno({"F1", "F2"}), dia(),
                   uno({"1", "2", "21.00", "4"}), "R", importe(), "0", "0", texto(), uno({"", "B1"}), "", "0",
                   "", "", "0", ""});
        if (entre(0, 2) == 0)
            linea({"AñadirCartera", dia(), cuenta(), uno({"BANCO", "CAJA"}), texto(), importe()});
        linea({"GrabarAsiento"});
    };
    for (int paso = 0; paso < 60; ++paso) {
        switch (entre(0, 13)) {
            case 0:
            case 1:
            case 2:
                asiento();
                break;
            case 3:
                linea({uno({"LeerPrimerAsiento", "LeerUltimoAsiento"})});
                break;
            case 4:
                linea({uno({"LeerProximoAsiento", "LeerAnteriorAsiento"})});
                break;
            case 5:
                linea({"LeerAsiento", dia(), uno({"000777", "000010", ""})});
                break;
            case 6:
                linea({"LeerExtracto", uno({"4300000001", "5720000001", "43*"}), uno({"", "01/02/26"}),
                       uno({"", "30/06/26"})});
                break;
            case 7:
                linea({"AnularAsiento", "{Fecha}", "{Número}"});
                break;
            case 8:
                linea({"BuscarImporte", uno({"1450", "121", "0"})});
                break;
            case 9:
                linea({"CrearCuenta", uno({"4300*", "4300000001", "6299999999"}), texto(),
                       uno({"0", "-1", "-6"})});
                break;
            case 10:
                linea({"CrearDatos", cuenta(), "titulo=" + texto(), "NOTAS=" + texto()});
                break;
            case 11:
                linea({"LeerCartera", uno({"", "BANCO", "PAGOS"}), uno({"", "01/03/26"}), "",
                       uno({"", "4300000001"}), ""});
                break;
            case 12:
                linea({"MarcarCartera", uno({"A", "B"}), uno({"BANCO", "COBROS"}), "", "", "", ""});
                break;
            default:
                linea({"AnularApuntePorReferencia", uno({"R1", "R 2"})});
                break;
        }
    }
    esperarIguales(guion.str());
}

}  // namespace
}  // namespace tarvoline::pruebas
