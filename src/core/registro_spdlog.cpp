#include "core/registro_spdlog.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/carpetas_sistema.h"

namespace tarvoline::core {

namespace {

// Texts of the service and of boxes end up here: a line break in them must not look like a line of the log.
std::string unaLinea(std::string_view texto) {
    std::string linea(texto);
    std::ranges::replace_if(
        linea, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, ' ');
    return linea;
}

class RegistroSpdlog : public Registro {
  public:
    explicit RegistroSpdlog(std::shared_ptr<spdlog::logger> logger) : logger_(std::move(logger)) {}
    void info(std::string_view texto) override { anotar(spdlog::level::info, texto); }
    void aviso(std::string_view texto) override { anotar(spdlog::level::warn, texto); }
    void error(std::string_view texto) override { anotar(spdlog::level::err, texto); }

  private:
    void anotar(spdlog::level::level_enum nivel, std::string_view texto) {
        logger_->log(nivel, unaLinea(texto));
    }

    std::shared_ptr<spdlog::logger> logger_;
};

// Two processes may write one file: both append whole lines, and at worst both rotate.
spdlog::sink_ptr abrirArchivo(const std::string& ruta) {
    spdlog::file_event_handlers avisos;
    avisos.after_open = [](const std::string& abierto, std::FILE*) {
        using std::filesystem::perms;
        std::error_code sinPermisos;  // a file system without modes keeps its own
        std::filesystem::permissions(abierto, perms::owner_read | perms::owner_write, sinPermisos);
    };
    auto archivo = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(ruta, bytesRegistro,
                                                                          archivosRegistro, false, avisos);
    archivo->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l [%P] %v");
    return archivo;
}

}  // namespace

std::string carpetaRegistro() {
    return platform::carpetaEstado() + platform::separador + "tarvoline";
}

std::unique_ptr<Registro> crearRegistro(platform::SistemaArchivos& archivos, const std::string& carpeta,
                                        const std::string& nombre, bool enConsola) {
    const auto consola = std::make_shared<spdlog::sinks::stderr_sink_mt>();
    consola->set_pattern("%l: %v");
    std::vector<spdlog::sink_ptr> destinos;
    std::string motivo;
    try {
        archivos.crearDirectorios(carpeta, 0700);
        destinos.push_back(abrirArchivo(carpeta + platform::separador + nombre + ".log"));
    } catch (const std::exception& error) {
        motivo = error.what();
    }
    if (enConsola || destinos.empty()) {
        destinos.push_back(consola);
    }
    const auto logger = std::make_shared<spdlog::logger>(nombre, destinos.begin(), destinos.end());
    logger->set_error_handler([consola](const std::string& fallo) {
        consola->log({"", spdlog::level::err, "the log could not be written: " + fallo});
    });
    logger->flush_on(spdlog::level::info);
    auto registro = std::make_unique<RegistroSpdlog>(logger);
    if (!motivo.empty()) {
        registro->aviso("no log file: " + motivo);
    }
    return registro;
}

}  // namespace tarvoline::core
