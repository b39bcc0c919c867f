#include "data/empresa_suelta.h"

#include "core/carpetas.h"
#include "core/texto.h"
#include "data/acceso_archivo.h"
#include "data/monedas.h"
#include "data/seccion_textos.h"

namespace tarvoline::data {

namespace {

// The digit at a place, from 0; 0 for anything else.
int cifra(std::string_view texto, std::size_t lugar) {
    if (lugar >= texto.size() || texto[lugar] < '0' || texto[lugar] > '9') return 0;
    return texto[lugar] - '0';
}

}  // namespace

void ponerEnVigor(CapaDatos& capa, std::string_view ruta) {
    EmpresaEnVigor empresa;
    empresa.gArchivoEmpresa = capa.archivos.resolver(core::rutaCompleta(ruta));
    empresa.gDirectorioEmpresa = core::SepararRuta(empresa.gArchivoEmpresa).directorio;
    exigirEmpresa(capa, empresa.gArchivoEmpresa, [&](platform::Archivo& archivo) {
        if (archivo.longitud() < CabeceraEmpresa::longitud) {
            throw ErrorEmpresa(empresa.gArchivoEmpresa +
                               " no es el archivo de una empresa: es demasiado corto");
        }
        empresa.cabecera = CabeceraEmpresa::leer(archivo);
    });
    empresa.gEmpresaActual = empresa.cabecera.texto(cabecera::COMUN);
    if (empresa.gEmpresaActual.size() < 2 || core::ValEntero(empresa.gEmpresaActual) == 0) {
        throw ErrorEmpresa(empresa.gArchivoEmpresa +
                           " no es el archivo de una empresa: no tiene número de empresa");
    }
    empresa.gNiveles = nivelesDeCuentas(empresa.cabecera);
    empresa.gNivelesAnalitica =
        nivelesDeAnalitica(SeccionTextos(capa).GET_TOTAL("NivelesCosto", empresa.gArchivoEmpresa));
    capa.enVigor = empresa;
    capa.gMultiusuario = true;
    mirarMonedas(capa);
}

std::array<int, 9> nivelesDeCuentas(const CabeceraEmpresa& cabecera) {
    constexpr std::size_t propios = 5;
    const std::string nivel = cabecera.ansi(cabecera::NIVEL).bytes();
    const std::string auxiliar = cabecera.ansi(cabecera::AUX).bytes();
    std::array<int, 9> niveles{};
    for (std::size_t i = 0; i < propios; ++i)
        niveles[i + 1] = cifra(nivel, i);
    niveles[6] = cifra(auxiliar, 0);
    niveles[7] = cifra(auxiliar, 1);
    niveles[8] = core::ValEntero(auxiliar.substr(2));
    return niveles;
}

// Three level digits, two more when it has seven characters, and two for position 0.
std::array<int, 9> nivelesDeAnalitica(std::string_view nivelesCosto) {
    constexpr std::size_t formaLarga = 7;
    std::array<int, 9> niveles{};
    const std::string texto = core::Recortar(nivelesCosto);
    if (texto.empty()) return niveles;
    const std::size_t propios = texto.size() == formaLarga ? 5 : 3;
    for (std::size_t i = 0; i < propios; ++i)
        niveles[i + 1] = cifra(texto, i);
    niveles[0] = core::ValEntero(texto.size() < 2 ? texto : texto.substr(texto.size() - 2));
    return niveles;
}

std::string rutaDeTabla(const CapaDatos& capa, std::string_view nombre) {
    return capa.enVigor.gDirectorioEmpresa + core::Mayusculas(nombre) + capa.enVigor.gEmpresaActual + ".QZD";
}

TablaSuelta abrirSuelta(const CapaDatos& capa, std::string_view nombre, TablaSuelta::Acceso acceso) {
    const std::string ruta = rutaDeTabla(capa, nombre);
    return {capa.archivos, ruta, definicionDeTabla(capa.archivos, capa.carpetas.DirectorioPrograma(), ruta),
            acceso};
}

}  // namespace tarvoline::data
