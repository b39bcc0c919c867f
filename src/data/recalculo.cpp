#include "data/recalculo.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <thread>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/tablas.h"
#include "data/totales.h"
#include "data/verificacion.h"

namespace tarvoline::data {

namespace {

using Que = DiferenciaTotal::Que;

constexpr int cifrasContador = 6;

struct TablaDeCuentas {
    int numero;
    const char* nombre;
};
constexpr std::array<TablaDeCuentas, 2> tablasDeCuentas{{{tabla::planc, "PLANC"}, {tabla::costo, "Costo"}}};

// Programs open the tables around each operation: one that works on its own has them shut for most of a
// second.
constexpr int intentos = 100;
constexpr std::chrono::milliseconds entreIntentos{10};

// The revision with the lines held; nothing when somebody else has them open.
std::optional<RevisionTotales> revisionSola(CapaDatos& capa) {
    std::string retenido;
    for (int intento = 0; intento < intentos; ++intento) {
        if (intento > 0) std::this_thread::sleep_for(entreIntentos);
        try {
            return std::optional<RevisionTotales>(std::in_place, capa, TablaSuelta::Acceso::sola);
        } catch (const platform::ErrorArchivo& error) {
            if (error.numero() != platform::error_archivo::permisoDenegado) throw;
            retenido = error.ruta();
        }
        capa.archivos.abrir(retenido, platform::Apertura::escritura);  // throws where there is no right to it
    }
    return std::nullopt;
}

// Accounts are looked up and made by their keys, so these must be those of the records.
bool clavesConcuerdan(const CapaDatos& capa, const char* nombre) {
    TablaSuelta cuentas = abrirSuelta(capa, nombre);
    return verificarTabla(capa.archivos, cuentas, {}).sana();
}

bool sePuedeCorregir(const DiferenciaTotal& una) {
    return una.que != Que::importe && std::isfinite(una.justo);
}

// Writes what a comparison has found.
class Correccion {
  public:
    explicit Correccion(CapaDatos& capa) : capa_(capa), tablas_(capa), totales_(capa, tablas_) {}

    bool abrir() {
        return std::ranges::all_of(tablasDeCuentas, [&](const TablaDeCuentas& una) {
            return tablas_.AbrirTabla(una.numero, una.nombre, 1, capa_.enVigor.gDirectorioEmpresa,
                                      capa_.enVigor.gEmpresaActual);
        });
    }
    void asegurarCuentas(const RevisionTotales& revision) {
        for (const std::string& codigo : revision.porAsegurar(tabla::planc))
            totales_.AsegurarMayoresCuenta(codigo);
        for (const std::string& codigo : revision.porAsegurar(tabla::costo))
            totales_.AsegurarMayoresAnalitica(codigo);
    }
    void ponerColumna(const DiferenciaTotal& una) {
        const auto registro = static_cast<std::int32_t>(una.registro);
        tablas_.BloquearRegistro(una.tabla, registro, una.campo);
        tablas_.escribirCampoDoble(una.tabla, registro, una.campo, una.justo);
        tablas_.DesbloquearRegistro(una.tabla, registro, una.campo);
    }
    bool ponerCabecera(const std::vector<DiferenciaTotal>& diferencias) {
        const bool hayAlgo = std::ranges::any_of(diferencias, [](const auto& una) { return una.tabla == 0; });
        return !hayAlgo ||
               cambiarEmpresa(capa_, capa_.enVigor.gArchivoEmpresa, [&](platform::Archivo& archivo) {
                   CabeceraEmpresa cabeza = CabeceraEmpresa::leer(archivo);
                   for (const auto& una : diferencias) {
                       if (una.tabla == 0) poner(cabeza, una);
                   }
                   cabeza.grabar(archivo);
               });
    }

  private:
    static void poner(CabeceraEmpresa& cabeza, const DiferenciaTotal& una) {
        if (una.que == Que::contador) {
            cabeza.poner(cabecera::CONTADORANALITICA,
                         core::conCeros(static_cast<std::int64_t>(una.justo), cifrasContador));
        } else {
            cabeza.poner(una.columna == "CARGOSA" ? cabecera::CARGOSA : cabecera::ABONOSA, una.justo);
        }
    }

    CapaDatos& capa_;
    Tablas tablas_;
    Totales totales_;
};

// Returns what remains wrong.
std::vector<DiferenciaTotal> corregir(CapaDatos& capa, RevisionTotales& revision,
                                      std::vector<DiferenciaTotal> diferencias) {
    Correccion correccion(capa);
    if (!correccion.abrir()) return diferencias;
    const bool faltan =
        std::ranges::any_of(diferencias, [](const auto& una) { return una.que == Que::falta; });
    if (faltan) {
        correccion.asegurarCuentas(revision);
        diferencias = revision.comparar();
    }
    for (const auto& una : diferencias) {
        if (una.que == Que::columna) correccion.ponerColumna(una);
    }
    correccion.ponerCabecera(diferencias);
    return revision.comparar();
}

}  // namespace

Recalculo recalcular(CapaDatos& capa,
                     const std::function<void(const std::vector<DiferenciaTotal>&)>& alEmpezar,
                     const Progreso& progreso) {
    Recalculo resultado;
    auto revision = revisionSola(capa);
    if (!revision) {
        resultado.fin = Recalculo::Fin::enUso;
        return resultado;
    }
    for (const TablaDeCuentas& una : tablasDeCuentas) {
        if (clavesConcuerdan(capa, una.nombre)) continue;
        resultado.fin = Recalculo::Fin::clavesMalas;
        resultado.tabla = rutaDeTabla(capa, una.nombre);
        return resultado;
    }
    revision->sumarLineas(progreso);
    resultado.cambios = revision->comparar();
    if (!std::ranges::all_of(resultado.cambios, sePuedeCorregir)) {
        resultado.fin = Recalculo::Fin::importesMalos;
        return resultado;
    }
    if (alEmpezar) alEmpezar(resultado.cambios);
    if (resultado.cambios.empty()) return resultado;
    auto restantes = corregir(capa, *revision, resultado.cambios);
    if (!restantes.empty()) {
        resultado.fin = Recalculo::Fin::aMedias;
        resultado.cambios = std::move(restantes);
    }
    return resultado;
}

}  // namespace tarvoline::data
