// Posts a sale for cash to a company and shows the statement of its bank account.
//
//     asiento COMPANY          the company's name in the data directory, or the path of its file
//     asiento COMPANY YEAR     creates the company first, for that accounting year
#include <iostream>

#include "tarvoline/enlace.h"

using tarvoline::link::Enlace;

namespace {

void contabilizar(Enlace& enlace) {
    enlace.Fecha("31/03/" + enlace.año(3));
    enlace.Número("");
    enlace.AñadirApunte("5720000001", "Venta de contado", 1, 121.0);
    enlace.AñadirApunte("7000000000", "Venta de contado", 2, 100.0);
    enlace.AñadirApunte("4770000021", "IVA de la venta", 2, 21.0);
    enlace.AddVAT("4300000001", "4770000021", "F-" + enlace.Número(), enlace.Fecha(), "21.00", "R", 100.0,
                  121.0, 0, "Cliente de contado", "", "", "", "", "", 0, "");
    enlace.GrabarAsiento();
    std::cout << "asiento " << enlace.Número() << '\n';
}

void mostrarExtracto(Enlace& enlace, const char* cuenta) {
    enlace.LeerExtracto(cuenta);
    for (int i = 1; i <= enlace.ContadorExtracto(); ++i) {
        const auto linea = enlace.Extracto(i);
        std::cout << linea->Fecha << '\t' << linea->Asiento << '\t' << linea->Descripción << '\t'
                  << linea->Debe << '\t' << linea->Haber << '\t' << linea->Saldo << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::cerr << "asiento COMPANY [YEAR]\n";
        return 2;
    }
    try {
        tarvoline::link::Contexto contexto;
        Enlace enlace(contexto);
        if (argc == 3)
            enlace.CrearEmpresa({.NombreEmpresa = argv[1], .año = argv[2], .PlanContablePorDefecto = "1"});
        enlace.AbrirEmpresa(argv[1]);
        contabilizar(enlace);
        mostrarExtracto(enlace, "5720000001");
        return 0;
    } catch (const tarvoline::link::ErrorEnlace& error) {
        std::cerr << error.numero() << ": " << error.descripcion() << '\n';
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    return 1;
}
