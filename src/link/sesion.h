// The state of one session on one company, shared by the workers behind `Enlace`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/capa_datos.h"
#include "link/contexto_interior.h"
#include "link/pendientes.h"
#include "tarvoline/enlace.h"

namespace tarvoline::link {

struct Sesion {
    Contexto::Interior& contexto;
    OpcionesEnlace opciones;

    std::vector<std::string> Empresas{};  // full paths
    bool ModoRemoto = false;
    std::string Usuario = "99";      // two-digit user code
    int Canal = 0;                   // channel of the session
    data::EmpresaEnVigor empresa{};  // the session's own; empresa.gEmpresaActual is `NumeroEmpresa`

    std::string Fecha{};              // of the entry, as stored; "": none
    std::string Número{};             // of the entry
    std::string gIndiceMoneda = "0";  // place of the session's currency in the currency table, one character
    Pendientes pendientes{};
    Resultados resultados{};

    // Throws ErrorEnlace empresaNoAbierta when no company is open; else makes this session's company the one
    // in force. Every operation on company data begins with it.
    void entrar();
    // Makes this session's company the one in force.
    void ponerEnVigor() { contexto.datos.enVigor = empresa; }
    std::string canalTexto() const;  // three digits
    // HayPendientes goes, and everything that belongs to the entry.
    void LimpiarPendientes();
    // Closes all tables. `deltodo`: no company is open any more, and the pending collections are empty.
    void CerrarArchivos(bool deltodo);
};

// "Errors are passed over at this statement": what happened goes to the log of the data layer. Returns
// whether it went well.
template <typename Paso>
bool pasandoErrores(const data::CapaDatos& capa, std::string_view donde, Paso&& paso) {
    try {
        paso();
        return true;
    } catch (const std::exception& error) {
        capa.avisar(std::string(donde) + ": " + error.what());
        return false;
    }
}

// The tables of the session's company, open as long as this object lives.
class TablasAbiertas {
  public:
    // Throws platform::ErrorArchivo when they cannot be opened; why has been shown.
    explicit TablasAbiertas(Sesion& sesion);
    ~TablasAbiertas();
    TablasAbiertas(const TablasAbiertas&) = delete;
    TablasAbiertas& operator=(const TablasAbiertas&) = delete;

  private:
    Sesion& sesion_;
};

}  // namespace tarvoline::link
