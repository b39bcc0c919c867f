#include "link/creacion_cuentas.h"

#include <array>

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/tabla_cursor.h"
#include "link/consultas.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

using data::TablaCursor;
namespace campo = posicion::planc;

constexpr std::string_view sinCambio = "-1";  // also the level that means a change of the title alone
constexpr std::string_view ponerAnalitica = "-6";
constexpr std::string_view dePosteo = "0";
constexpr int periodos = 15;

// The number behind `ultima` in accounts as long as the first of these levels that it does not reach, else as
// it is.
std::string siguiente(std::string ultima, int nivelA, int nivelB, int nivelC) {
    const int largo = static_cast<int>(ultima.size());
    if (largo < nivelA && nivelA > 0) {
        ultima.resize(static_cast<std::size_t>(nivelA), '0');
    } else if (largo < nivelB && nivelB > 0) {
        ultima.resize(static_cast<std::size_t>(nivelB), '0');
    } else if (largo < nivelC && nivelC >= 1) {
        ultima.resize(static_cast<std::size_t>(nivelC), '0');
    }
    std::string texto;
    data::ponerTextoDeNumero(core::Val(ultima) + 1, texto);
    return texto;
}

void filtrarCuenta(TablaCursor& cursor, const std::string& cuenta) {
    cursor.Filtrar({iguales(columna::cuenta, cuenta, ancho::cuenta)});
    cursor.Primero();
}

void numerar(TablaCursor& cursor, const std::array<int, 9>& niveles, std::string& cuenta) {
    cursor.Filtrar({{columna::cuenta, data::Operador::como, cuenta}});
    cursor.Ultimo();
    std::string ultima = core::Recortar(cursor.LeerCampo(campo::cuenta));
    if (ultima.empty()) ultima = cuenta.substr(0, cuenta.find('*'));
    cuenta = siguiente(ultima, niveles[6], niveles[7], niveles[8]);
}

void anadir(TablaCursor& cursor, const CuentaNueva& cuenta, const std::string& nivel, bool analitica) {
    cursor.Nuevo();
    cursor.EscribirCampo(campo::cuenta, 0, cuenta.Cuenta);
    if (cuenta.titulo != sinCambio) cursor.EscribirCampo(campo::titulo, 0, cuenta.titulo);
    cursor.EscribirCampo(campo::nivel, 0, nivel);
    for (int periodo = 0; periodo < periodos; ++periodo) {
        cursor.EscribirCampo(campo::debe, periodo, 0.0);
        cursor.EscribirCampo(campo::haber, periodo, 0.0);
    }
    cursor.EscribirCampo(campo::analitica, 0, analitica ? "1" : "0");
    if (cuenta.NIF != sinCambio) cursor.EscribirCampo(campo::nif, 0, cuenta.NIF);
    cursor.Actualizar();
}

void cambiar(TablaCursor& cursor, int posicion, std::string_view valor) {
    cursor.Editar();
    cursor.EscribirCampo(posicion, 0, valor);
    cursor.Actualizar();
}

}  // namespace

bool CreacionCuentas::crear(TablaPlan plan, CuentaNueva& cuenta) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    TablaCursor cursor(sesion_.contexto.datos, tablas);
    abrirCursor(sesion_, cursor, static_cast<int>(plan));
    // Programs that miss the same account at the same time make one.
    bool cabe = true;
    data::conEmpresaBloqueada(sesion_.contexto.datos, sesion_.empresa.gArchivoEmpresa,
                              [&] { cabe = crearOCambiar(cursor, cuenta); });
    return cabe && tablas.gEstado == motor::estado::bien;
}

// False: there is no number behind the highest account.
bool CreacionCuentas::crearOCambiar(TablaCursor& cursor, CuentaNueva& cuenta) const {
    const std::string nivel = core::Recortar(cuenta.Nivel);
    if (cuenta.Cuenta.find('*') != std::string::npos) {
        std::string numerada = cuenta.Cuenta;
        numerar(cursor, sesion_.empresa.gNiveles, numerada);
        if (numerada.size() > ancho::cuenta) return false;
        // A number that is taken belongs to somebody else.
        filtrarCuenta(cursor, numerada);
        if (!cursor.FinDeTabla()) return false;
        cuenta.Cuenta = numerada;
    }
    filtrarCuenta(cursor, cuenta.Cuenta);
    sesion_.contexto.tablas().gEstado = motor::estado::bien;  // what the search ended with is no failure
    if (cursor.FinDeTabla()) {
        const bool conMarca = nivel == ponerAnalitica || cuenta.IsAnalitica;
        const bool propio = nivel != sinCambio && nivel != ponerAnalitica && !nivel.empty();
        anadir(cursor, cuenta, propio ? nivel : std::string(dePosteo), conMarca);
    } else if (nivel == sinCambio) {
        if (cuenta.titulo != sinCambio) cambiar(cursor, campo::titulo, cuenta.titulo);
    } else if (nivel == ponerAnalitica) {
        cambiar(cursor, campo::analitica, "1");
    }
    return true;
}

}  // namespace tarvoline::link
