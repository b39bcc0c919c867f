#include "core/estado_ejecucion.h"

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "core/carpetas.h"
#include "core/despliegue.h"
#include "core/inicio.h"

namespace tarvoline::core {

namespace {

using Json = nlohmann::ordered_json;

std::string isoUtc(std::chrono::system_clock::time_point instante) {
    using namespace std::chrono;
    const auto dia = floor<days>(instante);
    const year_month_day fecha{dia};
    const hh_mm_ss hora{floor<seconds>(instante - dia)};
    std::array<char, 32> texto{};
    std::snprintf(texto.data(), texto.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                  static_cast<int>(fecha.year()), static_cast<unsigned>(fecha.month()),
                  static_cast<unsigned>(fecha.day()), static_cast<int>(hora.hours().count()),
                  static_cast<int>(hora.minutes().count()), static_cast<int>(hora.seconds().count()));
    return texto.data();
}

const char* resultado(int codigo) {
    switch (codigo) {
        case salida::bien:
            return "bien";
        case salida::noArranca:
            return "no arranca";
        case salida::empresaFallida:
            return "fallida";
        default:
            return "interrumpida";
    }
}

template <typename Resultado>
Json deResultado(const Resultado& uno) {
    return {{"ruta", uno.ruta}, {"resultado", uno.enviada ? "enviada" : "fallida"}, {"texto", uno.texto}};
}

}  // namespace

std::string componerEstadoEjecucion(const EstadoEjecucion& ejecucion) {
    using namespace despliegue;
    Json json = {
        {"programa", "tarvoline"},
        {"version", std::to_string(versionMayor) + "." + std::to_string(versionMenor) + "." +
                        std::to_string(versionRevision)},
        {"inicio", isoUtc(ejecucion.inicio)},
        {"fin", isoUtc(ejecucion.fin)},
        {"codigo", ejecucion.codigo},
        {"resultado", resultado(ejecucion.codigo)},
        {"motivo", ejecucion.motivo},
        {"reanudacion", nullptr},
        {"empresas", Json::array()},
    };
    if (const auto& reanudacion = ejecucion.resumen.reanudacion) {
        json["reanudacion"] = deResultado(*reanudacion);
    }
    for (const auto& empresa : ejecucion.resumen.empresas) {
        Json una = {{"ranura", empresa.ranura}};
        una.update(deResultado(empresa));
        json["empresas"].push_back(std::move(una));
    }
    // A text of the service that is no UTF-8 must not cost the file.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

void escribirEstadoEjecucion(platform::SistemaArchivos& archivos, const std::string& ruta,
                             const EstadoEjecucion& ejecucion) {
    archivos.crearDirectorios(SepararRuta(ruta).directorio, 0700);
    const auto nuevo = ruta + ".nuevo";
    archivos.abrir(nuevo, platform::Apertura::vaciar, platform::Comparticion::libre, 0600)
        ->escribir(0, platform::comoBytes(componerEstadoEjecucion(ejecucion)));
    archivos.renombrar(nuevo, ruta);
}

}  // namespace tarvoline::core
