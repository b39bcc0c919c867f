// What the lines of one entry share while it is being stored.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "data/tabla_cursor.h"
#include "link/lector_registros.h"
#include "link/sesion.h"

namespace tarvoline::link {

// A journal line of an account with analytics, and how much of it has been divided so far.
struct CuentaAnalitica {
    std::string cuenta;
    double importe = 0;    // as stored in the base currency
    double repartido = 0;  // of it, by the analytic lines
    std::int32_t registro = 0;
};

// A problem that is told when the entry is on disk: the last one counts.
struct ErrorAplazado {
    std::uint32_t numero = 0;
    std::string texto;
};

// The steps of storing an entry. Each has a guard of its own: what fails empties the pending collections, so
// that the lines behind it are not stored, and the next step runs. The first failure alone is shown.
class Pasos {
  public:
    explicit Pasos(Sesion& sesion) : sesion_(sesion) {}
    void operator()(std::string_view cual, const std::function<void()>& paso);
    bool algunoFallo() const { return contado_; }

  private:
    Sesion& sesion_;
    bool contado_ = false;
};

class AsientoEnCurso {
  public:
    // Both are borrowed; the session's tables are open as long as lines are stored.
    AsientoEnCurso(Sesion& suya, Pasos& pasos);

    // Sets fields of the record under way, by position: gCampos of the table.
    void poner(int tabla, int posicion, std::string_view utf8);
    void poner(int tabla, int posicion, double valor);
    // Stores the record under way. Its number, or nothing when its keys were refused, which has been shown.
    std::optional<std::int32_t> anadir(int tabla);

    struct Cuenta {
        std::string titulo;
        bool analitica = false;
    };
    // An account of the chart, the first that is really there; nothing when there is none.
    std::optional<Cuenta> buscarCuenta(std::string_view codigo);
    // Name and NIF of an account: its master data, else the title that it has in the chart.
    struct Tercero {
        std::string nombre, nif;
    };
    Tercero buscarTercero(std::string_view codigo);

    // Changes fields of a stored record through a cursor, which stays open for the next one.
    template <typename Cambio>
    void cambiarRegistro(std::optional<data::TablaCursor>& cursor, int tabla, std::int32_t registro,
                         Cambio&& cambio) {
        data::TablaCursor& abierto = cursorDe(cursor, tabla);
        abierto.IrARegistro(registro);
        if (abierto.FinDeTabla()) return;
        abierto.Editar();
        cambio(abierto);
        abierto.Actualizar();
    }

    Sesion& sesion;
    Pasos& paso;
    data::Tablas& tablas;
    const std::string hoy;  // stored form
    std::vector<CuentaAnalitica> CuentasAnaliticas;
    ErrorAplazado aplazado;
    bool algunaRehusada = false;  // a record whose keys were refused
    std::optional<data::TablaCursor> cursorExtra, cursorIva;

  private:
    // Calls `usar` with the first row whose field 1 is `codigo`: keys without a row are passed over.
    bool conFila(int tabla, std::string_view codigo, const std::function<void(const Fila&)>& usar);
    data::TablaCursor& cursorDe(std::optional<data::TablaCursor>& cursor, int tabla);
};

}  // namespace tarvoline::link
