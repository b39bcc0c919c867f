// The current row of a cursor: reading, changing, removing.
#include <algorithm>

#include "core/texto.h"
#include "data/codec.h"
#include "data/tabla_cursor.h"

namespace tarvoline::data {

namespace {

std::size_t indiceDe(int campo) {
    return static_cast<std::size_t>(campo);
}

// Held while a row's keys and fields change, so that two who change it do so one after the other.
class FilaBloqueada {
  public:
    FilaBloqueada(const CapaDatos& capa, Tablas& tablas, int tabla, std::int32_t registro)
        : tablas_(tablas), tabla_(tabla), registro_(registro), tomada_(capa.gMultiusuario) {
        if (tomada_) tablas_.BloquearRegistro(tabla_, registro_);
    }
    ~FilaBloqueada() {
        try {
            if (tomada_) tablas_.DesbloquearRegistro(tabla_, registro_);
        } catch (const std::exception&) {
            tablas_.cerrarRanura(tabla_);  // the lock ends with the handle; the cursor opens again
        }
    }
    FilaBloqueada(const FilaBloqueada&) = delete;
    FilaBloqueada& operator=(const FilaBloqueada&) = delete;

  private:
    Tablas& tablas_;
    int tabla_;
    std::int32_t registro_;
    bool tomada_;
};

}  // namespace

void TablaCursor::soltarFila() {
    registro_ = 0;
    yaSiguiente_ = false;
    cambio_ = Cambio::ninguno;
    escritos_.clear();
}

bool TablaCursor::cargar(std::int32_t registro) {
    if (tablas_.LeerRegistro(ranura_, registro) != EstadoRegistro::vivo) return false;
    campos_ = tablas_.ranura(ranura_).gCampos;
    registro_ = registro;
    return true;
}

int TablaCursor::campoDe(int posicion, int indice) {
    asegurarAbierta();
    const int campo = tablas_.gCampoDePosicion(ranura_, posicion) + indice;
    tablas_.definicion(ranura_).campo(campo);  // throws for one that there is not
    return campo;
}

std::string TablaCursor::textoDe(int campo) const {
    if (registro_ == 0 && cambio_ != Cambio::alta) return {};
    std::string_view bytes = campos_.at(indiceDe(campo));
    bytes = bytes.substr(0, bytes.find('\0'));
    return core::aUtf8(bytes.substr(0, bytes.find_last_not_of(' ') + 1));
}

std::string TablaCursor::LeerCampo(int posicion, int indice) {
    return textoDe(campoDe(posicion, indice));
}

double TablaCursor::LeerNumero(int posicion, int indice) {
    return valorDeTexto(LeerCampo(posicion, indice));
}

std::string TablaCursor::LeerCampoPorNombre(std::string_view columna) {
    asegurarAbierta();
    const int campo = tablas_.definicion(ranura_).campoDeNombre(columna);
    if (campo == 0) throw ErrorFiltro("la tabla no tiene la columna " + std::string(columna));
    return textoDe(campo);
}

const DefinicionTabla& TablaCursor::definicion() {
    asegurarAbierta();
    return tablas_.definicion(ranura_);
}

void TablaCursor::Nuevo() {
    asegurarAbierta();
    blanquearCampos(tablas_.definicion(ranura_), campos_);
    escritos_.clear();
    cambio_ = Cambio::alta;
}

void TablaCursor::Editar() {
    asegurarAbierta();
    if (registro_ == 0) throw ErrorCursor("no hay ninguna fila que cambiar");
    escritos_.clear();
    if (!cargar(registro_)) throw ErrorCursor("el registro " + std::to_string(registro_) + " ya no está");
    cambio_ = Cambio::edicion;
}

void TablaCursor::EscribirCampo(int posicion, int indice, std::string_view valor) {
    escribir(campoDe(posicion, indice), core::aAnsi(valor).bytes());
}

void TablaCursor::EscribirCampo(int posicion, int indice, double valor) {
    std::string texto;
    ponerTextoDeNumero(valor, texto);
    escribir(campoDe(posicion, indice), texto);
}

void TablaCursor::escribir(int campo, const std::string& bytes) {
    if (cambio_ == Cambio::ninguno) throw ErrorCursor("no se ha empezado a cambiar ninguna fila");
    ajustarCampo(tablas_.definicion(ranura_).campo(campo), bytes, campos_.at(indiceDe(campo)));
    if (std::ranges::find(escritos_, campo) == escritos_.end()) escritos_.push_back(campo);
}

void TablaCursor::Actualizar() {
    asegurarAbierta();
    if (cambio_ == Cambio::ninguno) throw ErrorCursor("no se ha empezado a cambiar ninguna fila");
    tablas_.gEstado = motor::estado::bien;
    if (cambio_ == Cambio::alta) {
        anadir();
    } else {
        cambiar();
    }
}

void TablaCursor::anadir() {
    for (std::size_t i = 1; i < campos_.size(); ++i)
        tablas_.gCampos(ranura_, static_cast<int>(i)) = campos_[i];
    tablas_.AnadirRegistro(ranura_);
    if (tablas_.gEstado != motor::estado::bien) return;
    const std::int32_t nuevo = tablas_.gRegistro;
    cambio_ = Cambio::ninguno;
    escritos_.clear();
    // An insertion may have had to open all tables again.
    asegurarAbierta();
    if (!cargar(nuevo)) registro_ = 0;
}

void TablaCursor::cambiar() {
    const DefinicionTabla& def = tablas_.definicion(ranura_);
    std::string bytes;
    for (const int campo : escritos_) {
        bytes.resize(static_cast<std::size_t>(def.campo(campo).bytes));
        cifrarCampo(def.campo(campo), campos_[indiceDe(campo)], bytes.data());  // throws before anything
    }
    const FilaBloqueada bloqueo(capa_, tablas_, ranura_, registro_);
    // As it is now, with the changes of others that are not overwritten here.
    if (tablas_.LeerRegistro(ranura_, registro_) != EstadoRegistro::vivo) {
        throw ErrorCursor("el registro " + std::to_string(registro_) + " ya no está");
    }
    std::vector<std::string> nuevos = tablas_.ranura(ranura_).gCampos;
    for (const int campo : escritos_)
        nuevos[indiceDe(campo)] = campos_[indiceDe(campo)];
    if (tablas_.cambiarClaves(ranura_, registro_, nuevos) != motor::estado::bien) return;
    grabarFila(nuevos);
    campos_ = std::move(nuevos);
    cambio_ = Cambio::ninguno;
    escritos_.clear();
}

// REQUIRES: the keys are those of `nuevos` already. When the fields cannot be written, all goes back as far
// as that can be had.
void TablaCursor::grabarFila(const std::vector<std::string>& nuevos) {
    const std::vector<std::string> viejos = tablas_.ranura(ranura_).gCampos;
    const auto grabar = [&](const std::vector<std::string>& campos) {
        for (const int campo : escritos_)
            tablas_.GrabarCampo(ranura_, registro_, campo, campos[indiceDe(campo)]);
    };
    try {
        grabar(nuevos);
    } catch (...) {
        for (std::size_t i = 1; i < nuevos.size(); ++i)
            tablas_.gCampos(ranura_, static_cast<int>(i)) = nuevos[i];
        tablas_.cambiarClaves(ranura_, registro_, viejos);
        try {
            grabar(viejos);
        } catch (const std::exception& error) {
            capa_.avisar(ruta_ + ": " + error.what());
        }
        throw;
    }
}

void TablaCursor::Borrar() {
    asegurarAbierta();
    if (registro_ == 0) throw ErrorCursor("no hay ninguna fila que borrar");
    const std::int32_t borrado = registro_;
    {
        const FilaBloqueada bloqueo(capa_, tablas_, ranura_, borrado);
        // As it is now; what somebody else has removed is gone already.
        tablas_.gEstado = motor::estado::bien;
        if (tablas_.LeerRegistro(ranura_, borrado) == EstadoRegistro::vivo)
            tablas_.BorrarRegistro(ranura_, borrado);
    }
    soltarFila();
    const auto donde = std::ranges::find(conjunto_, borrado);
    if (!tomado_ || donde == conjunto_.end()) return;
    const auto lugar = static_cast<std::size_t>(donde - conjunto_.begin());
    conjunto_.erase(donde);
    yaSiguiente_ = lugar == lugar_;
    if (lugar < lugar_) --lugar_;
}

}  // namespace tarvoline::data
