#include "link/valores_empresa.h"

#include <string>

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/seccion_textos.h"
#include "data/vista_nombrada.h"

namespace tarvoline::link {

std::string ValoresEmpresa::leer(std::string_view nombre) {
    sesion_.entrar();
    auto valor = data::VistaNombrada(sesion_.contexto.datos).GetTotal(nombre);
    std::erase(valor, '\0');
    return core::Recortar(valor);
}

void ValoresEmpresa::grabar(std::string_view nombre, std::string_view valor) {
    sesion_.entrar();
    data::VistaNombrada(sesion_.contexto.datos).PutTotal(nombre, valor);
}

std::string ValoresEmpresa::GetTotal(std::string_view nombre) {
    sesion_.ponerEnVigor();
    return data::VistaNombrada(sesion_.contexto.datos).GetTotal(nombre);
}

void ValoresEmpresa::PutTotal(std::string_view nombre, std::string_view valor) {
    sesion_.ponerEnVigor();
    data::VistaNombrada(sesion_.contexto.datos).PutTotal(nombre, valor);
}

std::string ValoresEmpresa::GET_TOTAL(std::string_view nombre) {
    sesion_.entrar();
    return data::SeccionTextos(sesion_.contexto.datos).GET_TOTAL(nombre);
}

void ValoresEmpresa::PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo) {
    if (archivo.empty()) sesion_.entrar();
    data::SeccionTextos(sesion_.contexto.datos).PUT_TOTAL(nombre, valor, archivo);
}

std::string ValoresEmpresa::EmpresaAñoAnterior() {
    sesion_.entrar();
    auto nombre = core::Recortar(data::SeccionTextos(sesion_.contexto.datos).GET_TOTAL("Empresa Anterior"));
    if (nombre.empty() || core::contieneSeparador(nombre)) return nombre;
    return sesion_.empresa.gDirectorioEmpresa + nombre;
}

// Programs that take a number at the same time take turns at the first byte of the company file. When the
// file fails otherwise the number is the one behind that of the opening.
std::string ValoresEmpresa::siguienteNumero() {
    constexpr platform::Rango primerByte{0, 1};
    constexpr std::int64_t limite = 1'000'000;
    constexpr int cifras = 6;
    auto& datos = sesion_.contexto.datos;
    data::CabeceraEmpresa& suya = sesion_.empresa.cabecera;
    data::CabeceraEmpresa nueva;
    const auto numerar = [&](const data::CabeceraEmpresa& leida) {
        const std::int64_t numero = std::int64_t{core::ValEntero(leida.texto(data::cabecera::DOCUMENTO))} + 1;
        nueva = leida;
        nueva.poner(data::cabecera::DOCUMENTO, core::conCeros(numero % limite, cifras));
    };
    const bool hecho = data::cambiarEmpresa(
        datos, sesion_.empresa.gArchivoEmpresa,
        [&](platform::Archivo& archivo) {
            numerar(data::CabeceraEmpresa::leer(archivo));
            nueva.grabar(archivo);
        },
        primerByte);
    if (!hecho) numerar(suya);
    suya = nueva;
    return suya.texto(data::cabecera::DOCUMENTO);
}

}  // namespace tarvoline::link
