// Commands on companies: upload, the pending list, restore.
#include "consola/ordenes.h"
#include "core/carpetas.h"
#include "core/texto.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/pendientes.h"
#include "workflows/personales.h"
#include "workflows/restauracion.h"
#include "workflows/subida_empresa.h"

namespace tarvoline::consola {

void Ordenes::subir(Informe& informe) {
    for (const auto& ruta : opciones_.nombres) {
        if (!montaje_.entorno().carpetas.ArchivoExiste(ruta)) {
            fallar(informe, salida::noEncontrado, ruta);
            escritorio_.Mensaje(
                {montaje_.estado().gErrores(188) + ": " + ruta, core::Icono::exclamacion, {}});
            continue;
        }
        const bool personal = opciones_.tipo == "personales";
        const bool subida = personal ? flujos_.personales().subir(ruta) : subirEmpresa(ruta);
        if (!subida) {
            fallar(informe, salida::fallida, ultimoFallo().empty() ? ruta : ultimoFallo());
            continue;
        }
        informe.dato("subido", "Subido:", ruta);
    }
}

// Answers the file dialog (or the list of VXCRM companies) with `ruta` and the question about another user
// with yes.
bool Ordenes::subirEmpresa(const std::string& ruta) {
    escritorio_.archivoElegido = ruta;
    escritorio_.eleccion = workflows::numeroDeTabla(core::SoloNombre(ruta));
    escritorio_.respuestaSi = true;
    const auto antes = montaje_.entorno().almacen.Leer("IncluirImagenesTarvoline", "BACKUP", "0");
    montaje_.entorno().almacen.Grabar("IncluirImagenesTarvoline", opciones_.imagenes ? "1" : antes, "BACKUP");
    const auto resultado = flujos_.subidaEmpresa().SubirUnaEmpresa();
    montaje_.entorno().almacen.Grabar("IncluirImagenesTarvoline", antes, "BACKUP");
    if (resultado == montaje_.entorno().texto(214)) {
        return true;
    }
    if (!resultado.empty()) {
        escritorio_.Mensaje({resultado, core::Icono::exclamacion, {}});
    }
    return false;
}

void Ordenes::pendientes(Informe& informe) {
    if (!montaje_.instancia().soyLaUnica()) {
        fallar(informe, salida::fallida, "another instance of the program is running");
        escritorio_.Mensaje({informe.motivo, core::Icono::exclamacion, {}});
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
    escritorio_.opcion = opciones_.sobrescribir ? 0 : 1;
    escritorio_.respuestaSi = false;  // too little room on the disk ends the restore
    for (const auto& nombre : opciones_.nombres) {
        if (!mostrarLista(informe)) {
            return;
        }
        if (!elegirFila(nombre)) {
            fallar(informe, salida::noEncontrado, nombre);
            escritorio_.Mensaje(
                {montaje_.estado().gErrores(188) + ": " + nombre, core::Icono::exclamacion, {}});
            continue;
        }
        flujos_.restauracion().Restaurar_Click();
        const auto& ruta = flujos_.restauracion().rutaRestaurada();
        if (ruta.empty()) {
            fallar(informe, salida::fallida, ultimoFallo());
            continue;
        }
        informe.dato("restaurada", "Restaurada:", montaje_.entorno().archivos.resolver(ruta));
    }
}

}  // namespace tarvoline::consola
