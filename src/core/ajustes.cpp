#include "core/ajustes.h"

#include "core/carpetas.h"
#include "core/texto.h"

namespace tarvoline::core {
namespace {

constexpr std::string_view verdadero = "Verdadero";
constexpr std::string_view falso = "Falso";
constexpr std::string_view sinValor = " ";

}  // namespace

std::string ValorAjuste::texto() const {
    if (const auto* logico = std::get_if<bool>(&valor_)) {
        return std::string(*logico ? verdadero : falso);
    }
    return std::get<std::string>(valor_);
}

double ValorAjuste::numero() const {
    if (const auto* logico = std::get_if<bool>(&valor_)) {
        return *logico ? -1 : 0;
    }
    return Val(std::get<std::string>(valor_));
}

platform::ClaveAjuste Ajustes::donde(std::string_view clave, std::string_view seccion,
                                     std::string_view producto) {
    return {std::string(producto.empty() ? "Veldorix" : producto),
            std::string(seccion.empty() ? "Settings" : seccion), std::string(clave)};
}

ValorAjuste Ajustes::LeerRegistro(std::string_view clave, std::string_view seccion, std::string_view defecto,
                                  std::string_view producto) const {
    const auto lugar = donde(clave, seccion, producto);
    auto valor = usuario_.leer(lugar);
    if (!valor && usarMaquina_ && maquina_ != nullptr) {
        valor = maquina_->leer(lugar);
    }
    if (!valor || valor->empty() || *valor == sinValor) {
        return ValorAjuste(std::string(defecto));
    }
    if (*valor == verdadero || *valor == falso) {
        return ValorAjuste(*valor == verdadero);
    }
    return ValorAjuste(std::move(*valor));
}

void Ajustes::GrabarRegistro(std::string_view clave, std::string_view valor, std::string_view seccion,
                             std::string_view producto) {
    usuario_.grabar(donde(clave, seccion, producto), valor.empty() ? sinValor : valor);
}

std::string Ajustes::leerCarpeta(std::string_view clave, std::string_view producto) const {
    return conSeparadorFinal(leer(clave, {}, {}, producto));
}

}  // namespace tarvoline::core
