#include "link/registro_global.h"

#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/datos_comunes.h"
#include "link/campos_registros.h"
#include "link/consultas.h"

namespace tarvoline::link {

namespace {

constexpr int posicionNif = 3;
constexpr std::size_t anchoNif = 18;

std::vector<data::Condicion> deNif(std::string_view nif) {
    const std::string limpio = core::Recortar(nif);
    if (limpio.empty()) return {};
    return {iguales("NIF", limpio, anchoNif)};
}

}  // namespace

RegistroGlobal::RegistroGlobal(Sesion& sesion)
    : sesion_(sesion), cursor_(sesion.contexto.datos, sesion.contexto.tablas()) {
    data::CapaDatos& capa = sesion.contexto.datos;
    capa.gMultiusuario = true;  // other programs may be at this table whether or not a company is open
    ruta_ = data::RutaDatoComun(capa, data::clave_comun::globales, {}) + "Datgl00.QZD";
    abrirCursor(cursor_, ruta_);
}

void RegistroGlobal::situar(std::string_view nif) {
    cursor_.Filtrar(deNif(nif));
    cursor_.Primero();
}

std::int32_t RegistroGlobal::LeerDatosGlobales(std::string_view nif) {
    auto& personas = sesion_.resultados.datosGlobales;
    personas.vaciar();
    for (situar(nif); !cursor_.FinDeTabla(); cursor_.Siguiente())
        personas.anadir(leerRegistro<DatosGlobalClass>(sesion_, cursor_));
    return personas.contar();
}

bool RegistroGlobal::ExisteNifDatosGlobales(std::string_view nif) {
    for (situar(nif); !cursor_.FinDeTabla(); cursor_.Siguiente()) {
        if (!cursor_.LeerCampo(posicionNif).empty()) return true;
    }
    return false;
}

void RegistroGlobal::exigirNif(const DatosGlobalClass& datos) {
    if (core::Recortar(datos.G01_NIF_String_18).empty())
        throw ErrorEnlace(error_enlace::registroRehusado, "Nif sin contenido");
}

void RegistroGlobal::CrearDatosGloblales(const DatosGlobalClass& datos) {
    guardar(datos.G01_NIF_String_18, datos.G66_Actualizar,
            [&](data::TablaCursor& cursor) { escribirRegistro(sesion_, cursor, datos); });
}

// Programs that miss the same number at the same time make one row.
void RegistroGlobal::guardar(const std::string& nif, bool actualizar,
                             const std::function<void(data::TablaCursor&)>& escribir) {
    data::Tablas& tablas = sesion_.contexto.tablas();
    data::conTurnoEnTabla(sesion_.contexto.datos, ruta_, [&] {
        situar(nif);
        const bool existe = !cursor_.FinDeTabla();
        if (existe && !actualizar) return;
        if (existe) {
            cursor_.Editar();
        } else {
            cursor_.Nuevo();
        }
        escribir(cursor_);
        cursor_.EscribirCampo(posicionNif, 0, core::Recortar(nif));
        cursor_.Actualizar();
        exigirClaves(tablas);
    });
}

}  // namespace tarvoline::link
