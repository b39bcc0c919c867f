// Opening: definition, data file, keys.
#include <chrono>
#include <thread>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/monedas.h"
#include "data/tabla_suelta.h"
#include "data/tablas.h"
#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

using platform::Apertura;
using platform::Comparticion;
using platform::ErrorArchivo;
using platform::TipoBloqueo;
namespace error_archivo = platform::error_archivo;
namespace estado = motor::estado;

constexpr std::size_t letrasDeNombre = 5;

// A refused open is worth a second try only when it was another handle's doing.
bool seAbreSinCompartir(platform::SistemaArchivos& archivos, const std::string& ruta) {
    try {
        archivos.abrir(ruta, Apertura::escritura);
        return true;
    } catch (const ErrorArchivo&) {
        return false;
    }
}

bool sinEntradas(const motor::Cabecera& cabecera) {
    for (unsigned i = 0; i < cabecera.claves; ++i) {
        if (cabecera.raices[i].altura != 0) return false;
    }
    return true;
}

}  // namespace

bool Tablas::AbrirTabla(int tabla, std::string_view nombre, int modo, std::string_view directorio,
                        std::string_view sufijo) {
    Ranura& ranura = ranuraDe(tabla);
    ranura.nombre = nombre;
    ranura.directorio = core::conSeparadorFinal(directorio);
    ranura.sufijo = sufijo;
    ranura.modo = modo;
    const auto mostrando = [this](const auto& paso) {
        try {
            return paso();
        } catch (const std::exception& error) {
            caja(error.what(), core::Icono::exclamacion);
            return false;
        }
    };
    // Closed first whatever becomes of it, and without a sync: that was CerrarTodo's.
    const auto soltar = [&] {
        ranura.archivo.reset();
        ranura.conClaves = false;
        if (gMotor_) gMotor_->soltar(static_cast<unsigned>(tabla));
        return true;
    };
    if (mostrando(soltar) && mostrando([&] { return abrirRanura(tabla); })) return true;
    mostrando(soltar);
    return false;
}

bool Tablas::AbrirTablasEmpresa(std::string_view directorio, std::string_view sufijo) {
    const EmpresaEnVigor& empresa = capa_.enVigor;
    const std::string carpeta(directorio.empty() ? empresa.gDirectorioEmpresa : directorio);
    const std::string numero(sufijo.empty() ? empresa.gEmpresaActual : sufijo);
    if (carpeta.empty() || numero.empty()) return false;
    bool todas = true;
    for (const TablaEmpresa& una : tablasDeEmpresa) {
        todas = AbrirTabla(una.tabla, una.nombre, 1, carpeta, numero) && todas;
    }
    cargarMonedas(capa_);
    return todas;
}

bool Tablas::abrirRanura(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    // In capitals as they are made, so that an existing file bears this very name and need not be looked for.
    const std::string nombre = core::Mayusculas(ranura.nombre);
    if (!cargarDefinicion(tabla, ranura.nombre)) return false;
    blanquear(tabla);
    const std::string ruta = ranura.directorio + nombre + ranura.sufijo;
    ranura.rutaDatos = ruta + ".QZD";
    ranura.rutaClaves = NombreCorto(ruta + ".QZC");
    abrirDatos(ranura);
    if (ranura.modo == 1 && definicion(tabla).numeroClaves > 0) {
        if (!abrirClaves(tabla)) return false;
        ranura.conClaves = true;
    }
    ranura.gNombreTabla = core::Mid(ranura.nombre, 1, letrasDeNombre);
    return true;
}

bool Tablas::cargarDefinicion(int tabla, std::string_view nombre) {
    return mostrandoFallos(nombre, [&](const std::string& ruta) {  //
        ranuraDe(tabla).definicion = definiciones_.leer(ruta);
    });
}

// Of the slot as it is open; the keys of an engine's file are not touched.
bool Tablas::tomarClaves(int tabla, std::string_view nombre) {
    return mostrandoFallos(nombre, [&](const std::string& ruta) {
        const auto bytes = platform::leerTodo(capa_.archivos, ruta);
        auto& suya = ranuraDe(tabla).definicion;
        suya = std::make_shared<const DefinicionTabla>(conClavesDe(definicion(tabla), bytes));
    });
}

bool Tablas::mostrandoFallos(std::string_view nombre, const std::function<void(const std::string&)>& leer) {
    const std::string ruta = gDirectorio_ + core::Mayusculas(nombre) + ".QZA";
    try {
        leer(ruta);
        return true;
    } catch (const ErrorArchivo& error) {
        const bool falta =
            error.numero() == error_archivo::noExiste || error.numero() == error_archivo::rutaNoExiste;
        if (!falta) throw;
    } catch (const ErrorDefinicion& error) {
        const std::string bytes = platform::leerTodo(capa_.archivos, ruta);
        const bool sinCampos = NumeroDeDosCaracteres(std::string_view(bytes).substr(0, 2)) < 1;
        if (!sinCampos) {
            caja(error.what(), core::Icono::exclamacion);
            return false;
        }
        // A file of some length that counts no field is no definition, and stands in the way of one.
        if (sinCampos && !bytes.empty()) capa_.archivos.borrar(ruta);
    }
    caja(capa_.gErrores(438) + " " + std::string(nombre) + " " + capa_.gErrores(189), core::Icono::parada);
    return false;
}

void Tablas::abrirDatos(Ranura& ranura) {
    const Reintentos& reintentos = capa_.reintentosTablas;
    for (int fallos = 1;; ++fallos) {
        try {
            ranura.archivo =
                capa_.archivos.abrir(ranura.rutaDatos, Apertura::crear, Comparticion::compartida);
            return;
        } catch (const ErrorArchivo& error) {
            const bool otraVez =
                error.numero() == error_archivo::permisoDenegado && fallos <= reintentos.intentos;
            if (!otraVez || !seAbreSinCompartir(capa_.archivos, ranura.rutaDatos)) throw;
        }
        // Who has it for himself offers no range to wait for.
        std::this_thread::sleep_for(reintentos.espera);
    }
}

// Records that have a place in the file, one cut off at its end among them.
std::int64_t Tablas::lugares(const Ranura& ranura) const {
    return lugaresDe(*ranura.definicion, ranura.archivo->longitud());
}

// A key file that does for a table of so many records. REQUIRES: it is open.
bool Tablas::clavesSirven(int tabla, std::int64_t registros) {
    const auto numero = static_cast<unsigned>(tabla);
    const motor::Cabecera& cabecera = gMotor_->archivo(numero).cabecera();
    const DefinicionTabla& def = definicion(tabla);
    if (cabecera.claves != def.numeroClaves || cabecera.longitud != def.longitudMayor()) return false;
    // The counter as known may be old when another slot has the file open for long.
    return registros <= cabecera.contador || registros <= gMotor_->ultimoRegistro(numero);
}

std::int16_t Tablas::ordenAbrir(int tabla) {
    return orden("/O/" + ranura(tabla).rutaClaves + "/" + std::to_string(tabla));
}

bool Tablas::abrirClaves(int tabla) {
    // Counted before the keys are looked at: who inserts raises the counter first and writes then.
    const Ranura& suya = ranura(tabla);
    const std::int64_t registros = lugaresDe(*suya.definicion, suya.archivo->longitudAlAbrir());
    const std::int16_t abierto = ordenAbrir(tabla);
    if (abierto == estado::ajeno) {
        caja(capa_.gErrores(180), core::Icono::parada);
        return false;
    }
    if (abierto != estado::bien || !clavesSirven(tabla, registros)) return rehacerClaves(tabla, false);
    const bool aVaciar = registros == 0 && capa_.gMultiusuario;
    return !aVaciar || vaciarClaves(tabla) || rehacerClaves(tabla, true);
}

// The data file has just been found empty, so its keys are those of records that are gone, unless somebody is
// about to write the first one.
bool Tablas::vaciarClaves(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    if (sinEntradas(gMotor_->archivo(static_cast<unsigned>(tabla)).cabecera())) return true;
    const motor::CerrojoInsercion cerrojo(*ranura.archivo, TipoBloqueo::exclusivo,
                                          capa_.reintentosTablas.espera);
    if (!cerrojo.tomado() || lugares(ranura) > 0) return true;
    try {
        return orden("M\\" + std::to_string(tabla)) == estado::bien;
    } catch (const motor::ErrorMotor& error) {
        capa_.avisar(error.what());
        return false;
    }
}

}  // namespace tarvoline::data
