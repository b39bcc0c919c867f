#include "core/estado.h"

#include <string_view>
#include <utility>

namespace tarvoline::core {
namespace {

constexpr std::size_t entradas = 1001;

constexpr std::array<std::pair<std::size_t, std::string_view>, 18> errores = {{
    {15, "Cuenta"},
    {153, "Archivo en uso por otro proceso"},
    {169, "ERROR INDEXADOS Nº"},
    {170, "Error indexados... Reindexar Archivo"},
    {180, "Error de protección en indexados ... Debe Reiniciar Windows"},
    {188, "No encontrado"},
    {189, "inexistente"},
    {333, "NOMBRE DE ARCHIVO INVALIDO"},
    {366, "Apertura"},
    {438, "TABLA"},
    {504, "*** MAYOR SIN TÍTULO ***"},
    {510, "Copiando"},
    {511, "Imposible copiar archivo"},
    {512, "Disco lleno"},
    {513, "Acceso denegado (Archivo está compartido por otro proceso)"},
    {514, "Disco no está preparado"},
    {515, "Error de path/archivo"},
    {516, "CREACIÓN ARCHIVO"},
}};

}  // namespace

TablaErrores::TablaErrores() : textos_(entradas) {
    for (const auto& [numero, texto] : errores) {
        textos_[numero] = texto;
    }
}

}  // namespace tarvoline::core
