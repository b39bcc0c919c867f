// Deployment values: what an installation of the product may change, in one place.
#pragma once

#include <string_view>

namespace tarvoline::core::despliegue {

inline constexpr std::string_view hostServicioPublico = "servicio.tarvoline.example";
inline constexpr std::string_view sitioFabricante = "https://www.tarvoline.example";
inline constexpr std::string_view paginaOnline = "/veldorix/veldorix.htm";
inline constexpr std::string_view paginaManual = "/pdf/8_03_tarvoline.pdf";
inline constexpr std::string_view telefonoSoporte = "900 000 000";
inline constexpr std::string_view correoSoporte = "soporte@tarvoline.example";
inline constexpr int versionMayor = 2, versionMenor = 0, versionRevision = 0;

}  // namespace tarvoline::core::despliegue
