#include <string>

#include "zip/zip.h"

namespace tarvoline::zip {
namespace {

// The entries of the joined table. Users and support know these texts, the entry that holds two codes (its
// separator is missing) included.
constexpr std::string_view antes280 =
    "XcdWarningGeneral (10)·XcdWarningNoZipFile (30)·XcdWarningFilesSkipped (40)·"
    "XcdWarningEmptyZipFile (50) XcdErrorNoZipFile (100)·XcdErrorZipStruct (110)·XcdErrorMemory (120)·"
    "XcdErrorBadCall (130)·XcdErrorNothingToDo (140)·XcdErrorDiskFull (150)·XcdErrorEOF (160)·"
    "XcdErrorLibInUse (180)·XcdErrorUserAbort (190)·XcdErrorTestFailed (200)·XcdErrorZeroTested (210)·"
    "XcdErrorDLLNotFound (240)·XcdErrorInternalLogic (250)·";
constexpr std::string_view despues280 =
    " (ERROR 280)·XcdErrorParentDir (350)·XcdErrorNameRepeat (370)·XcdErrorLatest (380)·"
    "XcdErrorDOSError (400)·XcdErrorMultidisk (410)·XcdErrorWrongDisk (420)";

}  // namespace

std::string TextoErrorZip(int codigo, std::string_view texto515) {
    constexpr std::string_view separador = "·";
    std::string tabla(antes280);
    tabla.append(texto515).append(despues280);
    const std::string cifras = std::to_string(codigo);
    for (std::string_view resto = tabla; !resto.empty();) {
        const auto corte = resto.find(separador);
        const auto entrada = resto.substr(0, corte);
        if (entrada.find(cifras) != std::string_view::npos) {
            return std::string(entrada).append("\n").append(texto515);
        }
        resto = corte == std::string_view::npos ? std::string_view{} : resto.substr(corte + separador.size());
    }
    return {};
}

}  // namespace tarvoline::zip
