// Commands on companies: upload, the pending list, restore.
#include "consola/ordenes.h"
#include "core/carpetas.h"
#include "core/despliegue.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/espacio.h"
#include "workflows/lista.h"
#include "workflows/pendientes.h"
#include "workflows/personales.h"
#include "workflows/restauracion.h"
#include "workflows/sesion.h"
#include "workflows/subida_empresa.h"

namespace tarvoline::consola {

namespace {

constexpr int textoTerminado = 214;
constexpr int textoAmpliar = 2233;
constexpr int textoExcedida = 2249;

}  // namespace

void Ordenes::subir(Informe& informe) {
    montaje_.instancia();  // while archives wait in the transfer folder, no other start may clean it
    if (!hayCapacidad(informe)) {
        return;
    }
    paraCada(informe, "subidos", "Subido:", [&](const std::string& ruta) {
        return subirUno(informe, ruta) ? std::optional(ruta) : std::nullopt;
    });
}

// Measures first: the room that is left counts from there, and an account over its capacity takes nothing.
bool Ordenes::hayCapacidad(Informe& informe) {
    flujos_.espacio().Controlar_capacidad(true);
    if (!montaje_.estado().gCapacidadExcedida) {
        return true;
    }
    const auto& entorno = montaje_.entorno();
    fallar(informe, salida::fallida,
           entorno.texto(textoExcedida) + " " + entorno.texto(textoAmpliar) + " " +
               std::string(core::despliegue::telefonoSoporte));
    return false;
}

bool Ordenes::subirUno(Informe& informe, const std::string& ruta) {
    if (!montaje_.entorno().carpetas.ArchivoExiste(ruta)) {
        fallar(informe, salida::noEncontrado, montaje_.estado().gErrores(188) + ": " + ruta);
        return false;
    }
    // The company before may have brought its own user and folder.
    flujos_.sesion().reponerUsuario();
    flujos_.configuracion().reponerCarpeta();
    return opciones_.tipo == "personales" ? flujos_.personales().subir(ruta) : subirEmpresa(ruta);
}

// Answers the file dialog (or the list of VXCRM companies) with `ruta` and the question about another user
// with yes.
bool Ordenes::subirEmpresa(const std::string& ruta) {
    escritorio_.archivoElegido = ruta;
    escritorio_.eleccion = workflows::numeroDeTabla(core::SoloNombre(ruta));
    escritorio_.respuestaSi = true;
    const auto resultado = subirConImagenes();
    if (resultado == montaje_.entorno().texto(textoTerminado)) {
        return true;
    }
    if (!resultado.empty()) {
        escritorio_.Mensaje({resultado, core::Icono::exclamacion, {}});
    }
    return false;
}

// The routine reads the choice of images where the window keeps it; it is put back as it was.
std::string Ordenes::subirConImagenes() {
    constexpr const char* clave = "IncluirImagenesTarvoline";
    if (!opciones_.imagenes) {
        return flujos_.subidaEmpresa().SubirUnaEmpresa();
    }
    auto& almacen = montaje_.entorno().almacen;
    const auto antes = almacen.Leer(clave, "BACKUP");
    const auto reponer = [&] { almacen.Grabar(clave, antes, "BACKUP"); };
    almacen.Grabar(clave, "1", "BACKUP");
    try {
        auto resultado = flujos_.subidaEmpresa().SubirUnaEmpresa();
        reponer();
        return resultado;
    } catch (...) {
        reponer();
        throw;
    }
}

void Ordenes::pendientes(Informe& informe) {
    if (!montaje_.instancia().soyLaUnica()) {
        fallar(informe, salida::otraInstancia, "Hay otra copia del programa en marcha");
        return;
    }
    montaje_.estado().gDesatendido = true;
    const bool bien = flujos_.pendientes().SubirPendientesBatch(true);
    Tabla tabla{"empresas",
                {{"ranura", "N", {}, true},
                 {"ruta", "Empresa", {}},
                 {"resultado", "Resultado", {}},
                 {"texto", "", {}}},
                {}};
    for (const auto& una : montaje_.estado().resumen.empresas) {
        tabla.filas.push_back(
            {std::to_string(una.ranura), una.ruta, una.enviada ? "enviada" : "fallida", una.texto});
        if (!una.enviada) {
            informe.motivo = una.texto;
        }
    }
    informe.tablas.push_back(std::move(tabla));
    informe.codigo = bien ? salida::bien : salida::fallida;
}

void Ordenes::restaurar(Informe& informe) {
    montaje_.instancia();
    if (!mostrarLista(informe)) {
        return;
    }
    escritorio_.opcion = opciones_.sobrescribir ? 0 : 1;
    escritorio_.respuestaSi = false;  // too little room on the disk ends the restore
    paraCada(
        informe, "restauradas", "Restaurada:", [&](const std::string& nombre) -> std::optional<std::string> {
            if (!elegirFila(informe, nombre)) {
                return std::nullopt;
            }
            // The history line names the row behind the last one restored.
            montaje_.vista().fx1.ponerFilas(3);
            montaje_.vista().fx1.ponerCelda(2, workflows::columna_rejilla::nombre, nombre);
            flujos_.restauracion().Restaurar_Click();
            const auto& ruta = flujos_.restauracion().rutaRestaurada();
            return ruta.empty() ? std::nullopt : std::optional(montaje_.entorno().archivos.resolver(ruta));
        });
}

}  // namespace tarvoline::consola
