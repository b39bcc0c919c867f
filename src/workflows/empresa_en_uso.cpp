// Who holds a company: other workstations, and the accounting program of this one.
#include "core/carpetas.h"
#include "core/texto.h"
#include "platform/procesos.h"
#include "workflows/empresa_en_disco.h"
#include "workflows/restauracion.h"

namespace tarvoline::workflows {

namespace {

constexpr std::string_view programaContable = "VELDORIX.EXE";

}  // namespace

void Restauracion::terminarProgramaContable() {
    TerminarProceso(programaContable);
}

// The program that was ended before; systems without extensions of programs have it under its bare name.
void Restauracion::abrirProgramaContable() {
    const auto carpeta = entorno_.carpetas.DirectorioPrograma();
    for (const auto& nombre : {std::string(programaContable), core::SepararRuta(programaContable).nombre}) {
        const auto ruta = carpeta + nombre;
        if (entorno_.carpetas.ArchivoExiste(ruta)) {
            entorno_.almacen.Abrir("\"" + entorno_.archivos.resolver(ruta) + "\"");
            return;
        }
    }
}

bool Restauracion::EmpresaLibre(std::string_view archivo) {
    if (archivo.empty() || !entorno_.carpetas.ArchivoExiste(archivo)) {
        return false;
    }
    constexpr int vueltas = 4;
    try {
        const auto carpeta = core::SepararRuta(archivo).directorio;
        const auto numero = numeroDeEmpresa(entorno_.archivos, archivo);
        const auto exclusivo = [&](std::string_view ruta) {
            return entorno_.archivos.abrir(ruta, platform::Apertura::escritura,
                                           platform::Comparticion::exclusiva);
        };
        for (int vuelta = 0; vuelta < vueltas; ++vuelta) {
            const auto empresa = exclusivo(archivo);
            for (const auto& tabla : tablasDeEmpresa(entorno_.archivos, carpeta, numero)) {
                if (core::Mayusculas(core::SepararRuta(tabla).extension) == "QZD") {
                    exclusivo(carpeta + tabla).reset();
                }
            }
        }
        return true;
    } catch (const platform::ErrorArchivo& error) {
        entorno_.registro.aviso("Company in use: " + std::string(error.what()));
        return false;
    }
}

void Restauracion::TerminarProceso(std::string_view nombre) {
    core::ignorandoErrores(entorno_, "TerminarProceso", [&] { platform::terminarProcesos(nombre); });
}

}  // namespace tarvoline::workflows
