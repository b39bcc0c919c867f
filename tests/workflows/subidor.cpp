// Program of the tests: One transfer in a process of its own, for tests that kill it or measure it.
//
//   subidor AJUSTES TEMPORAL URL nuevo ARCHIVO TIPO [MUERTE]   as "maria", who is logged in
//   subidor AJUSTES TEMPORAL URL seguir [MUERTE]               goes on with the recorded upload
//   subidor AJUSTES TEMPORAL URL bajar NOMBRE TIPO DESTINO
//
// MUERTE n: SIGKILL at the n-th moment, counting the turns of the window and the beginning and end of each
// call of the service from the first piece on. Prints the result; "pieces seconds KiB" go to standard error.
#include <signal.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "core/entorno.h"
#include "core/escritorio_desatendido.h"
#include "soap/cliente.h"
#include "tarvoline/contexto.h"
#include "workflows/flujos.h"
#include "workflows/lista.h"
#include "workflows/transferencia.h"

namespace {

using namespace tarvoline;

// Counts the moments at which the process may die.
class Muerte {
  public:
    explicit Muerte(int cuando) : faltan_(cuando) {}
    void momento() {
        if (--faltan_ == 0) {
            ::raise(SIGKILL);
        }
    }

  private:
    int faltan_;
};

std::vector<std::string> marcas() {
    std::vector<std::string> textos(core::numeroTextoMayor + 1);
    textos[1250] = "ERROR: ";
    return textos;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> ordenes(argv + 1, argv + argc);
    const auto orden = [&](std::size_t i) { return i < ordenes.size() ? ordenes[i] : std::string(); };
    const bool nuevo = orden(3) == "nuevo";
    Muerte muerte(std::atoi(orden(nuevo ? 6 : 4).c_str()));

    const auto archivos = platform::crearSistemaArchivos();
    const auto arbol = platform::crearArbolAjustes(*archivos, orden(0));
    const auto reloj = platform::crearReloj();
    core::Ajustes ajustes(*arbol);
    core::RegistroMudo registro;
    core::EscritorioDesatendido escritorio(registro, [&] {
        muerte.momento();
        return 0;
    });
    core::AlmacenComun almacen(ajustes, escritorio);
    core::Carpetas carpetas(*archivos, ajustes, orden(1));
    core::Estado estado;
    core::Vista vista;
    core::Entorno entorno{estado, vista, escritorio, ajustes, almacen, carpetas, *archivos, *reloj, registro};
    soap::Conexion conexion;
    link::Contexto enlaces(*archivos, ajustes, carpetas, *reloj);
    workflows::Flujos flujos(entorno, conexion, enlaces);
    estado.gTextos.asignar(marcas());
    estado.gUrlServicio = orden(2);
    estado.gCarpeta = "DATOS";
    estado.gDesatendido = true;
    vista.alCambiar = [&, antes = false](core::Parte parte) mutable {
        const bool espera = vista.transferencia.esperandoServicio;
        if (parte == core::Parte::transferencia && std::exchange(antes, espera) != espera) {
            muerte.momento();
        }
    };

    std::string resultado;
    if (orden(3) == "seguir") {
        resultado = flujos.transferencia().ContinuarSubida();
    } else {
        estado.gUsuario = estado.gUsuarioSesion = "maria";
        estado.gPassword = estado.gPasswordSesion = "secreta";
        estado.gCuenta = estado.gCuentaSesion = "CUENTA1";
        if (nuevo) {
            resultado = flujos.transferencia().SubirArchivo(orden(4), orden(5), true, 1);
        } else {
            vista.fx1.ponerFilas(2);
            vista.fx1.ponerCelda(1, workflows::columna_rejilla::nombre, orden(4));
            vista.fx1.Row = vista.fx1.RowSel = 1;
            resultado = flujos.transferencia().DescargarArchivo(orden(5), orden(6)) ? "" : "no";
        }
    }
    std::fputs(resultado.c_str(), stdout);
    rusage uso{};
    ::getrusage(RUSAGE_SELF, &uso);
    std::fprintf(stderr, "%d %.3f %ld\n", vista.transferencia.piezas, vista.transferencia.segundos,
                 uso.ru_maxrss);
    return resultado.empty() ? 0 : 1;
}
