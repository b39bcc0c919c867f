#include "link/identificadores.h"

#include <array>
#include <random>

#include "data/acceso_archivo.h"
#include "data/empresa_suelta.h"
#include "data/tabla_cursor.h"
#include "link/consultas.h"
#include "link/fechas_enlace.h"
#include "link/posiciones.h"

namespace tarvoline::link {

namespace {

namespace campo = posicion::guid;

constexpr std::size_t anchoGuid = 38;

// A cursor on the identifiers of the company, at the first row that meets the condition.
class Filas {
  public:
    Filas(Sesion& sesion, const char* columna, std::string_view valor, std::size_t ancho)
        : cursor(sesion.contexto.datos, sesion.contexto.tablas()),
          ruta(data::rutaDeTabla(sesion.contexto.datos, "GUID1")) {
        abrirCursor(cursor, ruta);
        condicion_ = iguales(columna, valor, ancho);
        situar();
    }
    void situar() {
        cursor.Filtrar({condicion_});
        cursor.Primero();
    }

    data::TablaCursor cursor;
    const std::string ruta;

  private:
    data::Condicion condicion_;
};

template <typename Leer>
std::vector<std::string> todas(data::TablaCursor& cursor, Leer&& leer) {
    std::vector<std::string> textos;
    for (; !cursor.FinDeTabla(); cursor.Siguiente())
        textos.push_back(leer());
    return textos;
}

}  // namespace

std::string guidNuevo() {
    constexpr std::string_view cifras = "0123456789abcdef";
    constexpr std::string_view forma = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    constexpr unsigned variante = 8;  // two bits of the "y"
    std::random_device azar;
    std::uniform_int_distribution<unsigned> cifra(0, 15);
    std::string guid(forma);
    for (char& c : guid) {
        if (c == 'x') c = cifras[cifra(azar)];
        if (c == 'y') c = cifras[variante + cifra(azar) % 4];
    }
    return guid;
}

std::string Identificadores::leerGuid(std::string_view asiento) {
    return Filas(sesion_, "ASIENTO", asiento, ancho::asiento).cursor.LeerCampo(campo::guid);
}

void Identificadores::grabarGuid(std::string_view asiento, std::string_view guid) {
    const std::string nuevo = guid.empty() ? guidNuevo() : std::string(guid);
    if (pasandoErrores(sesion_.contexto.datos, "GUID", [&] { grabarFila(asiento, nuevo); })) return;
    throw ErrorEnlace(error_enlace::sinGuid, "Error al crear un GUID", "");
}

// The date is that of the session's entry, when it is this one.
void Identificadores::grabarFila(std::string_view asiento, std::string_view guid) {
    Filas filas(sesion_, "ASIENTO", asiento, ancho::asiento);
    data::TablaCursor& cursor = filas.cursor;
    data::conTurnoEnTabla(sesion_.contexto.datos, filas.ruta, [&] {
        filas.situar();
        if (cursor.FinDeTabla()) {
            cursor.Nuevo();
            cursor.EscribirCampo(campo::asiento, 0, asiento);
            if (asiento == sesion_.Número) cursor.EscribirCampo(campo::fecha, 0, sesion_.Fecha);
        } else {
            cursor.Editar();
        }
        cursor.EscribirCampo(campo::guid, 0, guid);
        cursor.Actualizar();
    });
    exigirClaves(sesion_.contexto.tablas());
}

std::vector<std::string> Identificadores::LeerFechasAsiento(std::string_view asiento) {
    Filas filas(sesion_, "ASIENTO", asiento, ancho::asiento);
    auto fechas =
        todas(filas.cursor, [&] { return fechaCorta(sesion_, filas.cursor.LeerCampo(campo::fecha)); });
    std::erase(fechas, "");
    return fechas;
}

std::vector<std::string> Identificadores::LeerAsientosGuid(std::string_view guid) {
    Filas filas(sesion_, "GUID", guid, anchoGuid);
    return todas(filas.cursor, [&] { return filas.cursor.LeerCampo(campo::asiento); });
}

}  // namespace tarvoline::link
