#include "server/mandato_usuario.h"

#include <iostream>

#include "server/deposito.h"
#include "server/opciones.h"

namespace tarvoline::server {
namespace {

std::string leerClave(const std::string& dada) {
    if (dada != "-") return dada;
    std::string linea;
    if (!std::getline(std::cin, linea)) throw ErrorServidor("no llega ninguna clave por la entrada estándar");
    if (!linea.empty() && linea.back() == '\r') linea.pop_back();
    return linea;
}

void listar(AlmacenUsuarios& usuarios) {
    for (const UsuarioLeido& usuario : usuarios.todos()) {
        std::cout << usuario->usuario << '\t' << usuario->carpetaRaiz() << '\t' << usuario->cuenta << '\t'
                  << usuarios.capacidadGb(usuario->cuenta) << '\t' << usuario->etiqueta
                  << (usuario->activo ? "" : "\t(de baja)") << '\n';
    }
}

}  // namespace

void ejecutar(const MandatoUsuario& mandato, platform::SistemaArchivos& archivos) {
    Deposito deposito(archivos, mandato.raiz);
    AlmacenUsuarios& usuarios = deposito.usuarios();
    DatosAlta datos{mandato.alta, leerClave(mandato.clave), mandato.cuenta, mandato.etiqueta, mandato.gb,
                    mandato.tipo};
    if (!mandato.alta.empty()) {
        usuarios.alta(datos);
        std::cout << "alta de " << mandato.alta << '\n';
    } else if (!mandato.modificar.empty()) {
        datos.usuario = mandato.modificar;
        usuarios.modificar(datos);
        std::cout << "modificado " << mandato.modificar << '\n';
    } else if (!mandato.baja.empty()) {
        usuarios.baja(mandato.baja);
        std::cout << "baja de " << mandato.baja << " (sus copias se conservan)\n";
    } else {
        listar(usuarios);
    }
}

}  // namespace tarvoline::server
