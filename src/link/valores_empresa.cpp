#include "link/valores_empresa.h"

#include <string>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/seccion_textos.h"
#include "data/vista_nombrada.h"

namespace tarvoline::link {

std::string ValoresEmpresa::leer(std::string_view nombre) {
    sesion_.entrar();
    auto valor = data::VistaNombrada(sesion_.contexto.datos()).GetTotal(nombre);
    std::erase(valor, '\0');
    return core::Recortar(valor);
}

void ValoresEmpresa::grabar(std::string_view nombre, std::string_view valor) {
    sesion_.entrar();
    data::VistaNombrada(sesion_.contexto.datos()).PutTotal(nombre, valor);
}

std::string ValoresEmpresa::GetTotal(std::string_view nombre) {
    sesion_.ponerEnVigor();
    return data::VistaNombrada(sesion_.contexto.datos()).GetTotal(nombre);
}

void ValoresEmpresa::PutTotal(std::string_view nombre, std::string_view valor) {
    sesion_.ponerEnVigor();
    data::VistaNombrada(sesion_.contexto.datos()).PutTotal(nombre, valor);
}

std::string ValoresEmpresa::GET_TOTAL(std::string_view nombre) {
    sesion_.entrar();
    return data::SeccionTextos(sesion_.contexto.datos()).GET_TOTAL(nombre);
}

void ValoresEmpresa::PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo) {
    if (archivo.empty()) sesion_.entrar();
    data::SeccionTextos(sesion_.contexto.datos()).PUT_TOTAL(nombre, valor, archivo);
}

std::string ValoresEmpresa::EmpresaAñoAnterior() {
    sesion_.entrar();
    auto nombre = core::Recortar(data::SeccionTextos(sesion_.contexto.datos()).GET_TOTAL("Empresa Anterior"));
    if (nombre.empty() || core::contieneSeparador(nombre)) return nombre;
    return sesion_.empresa.gDirectorioEmpresa + nombre;
}

std::string ValoresEmpresa::año(int mes) const {
    constexpr int regularizacion = 13;
    constexpr int cierre = 14;
    const auto& cabecera = sesion_.empresa.cabecera;
    const auto anio = core::ValEntero(cabecera.texto(data::cabecera::AÑO));
    const auto apertura = core::ValEntero(cabecera.texto(data::cabecera::APERTURA));
    const bool deCierre = mes == regularizacion || mes == cierre;
    const bool siguiente = deCierre ? apertura > 1 : mes < apertura && mes != 0;
    return core::conCeros(anio + (siguiente ? 1 : 0), 2);
}

}  // namespace tarvoline::link
