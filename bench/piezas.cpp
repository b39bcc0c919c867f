// Pieces a second of an upload to the embedded service on loopback, a DTS and a Backup a piece, beside the
// same bodies posted by a bare kept-alive libcurl client to a bare cpp-httplib server. Both in one run, each
// service in a process of its own. Usage: bench_piezas [PIECES] (2000).
#include <curl/curl.h>
#include <httplib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "core/credencial.h"
#include "platform/reloj.h"
#include "server/servidor_embebido.h"
#include "service/piezas.h"
#include "soap/base64.h"

namespace {

using namespace tarvoline;

constexpr std::size_t bytesPieza = service::longitudPieza + 1;

// A child process that runs a service and tells its port.
class Hijo {
  public:
    explicit Hijo(const std::function<void(int tubo)>& cuerpo) {
        int tubo[2];
        if (pipe(tubo) != 0) {
            throw std::runtime_error("pipe");
        }
        pid_ = fork();
        if (pid_ == 0) {
            cuerpo(tubo[1]);
            _exit(0);
        }
        close(tubo[1]);
        if (read(tubo[0], &puerto_, sizeof puerto_) != sizeof puerto_) {
            throw std::runtime_error("the service did not start");
        }
        close(tubo[0]);
    }
    ~Hijo() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    Hijo(const Hijo&) = delete;
    Hijo& operator=(const Hijo&) = delete;
    int puerto() const { return puerto_; }

  private:
    pid_t pid_ = 0;
    int puerto_ = 0;
};

void contarPuerto(int tubo, int puerto) {
    if (write(tubo, &puerto, sizeof puerto) != sizeof puerto) {
        _exit(1);
    }
}

double segundosDe(const std::function<void()>& trabajo) {
    const auto antes = std::chrono::steady_clock::now();
    trabajo();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
}

std::string sobre(const std::string& cuerpo) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><soap:Envelope "
           "xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\"><soap:Body>" +
           cuerpo + "</soap:Body></soap:Envelope>";
}

void servirDesnudo(int tubo) {
    httplib::Server servidor;
    servidor.set_tcp_nodelay(true);
    servidor.set_keep_alive_max_count(1'000'000'000);
    servidor.set_keep_alive_timeout(60);
    servidor.Post("/", [](const httplib::Request& peticion, httplib::Response& respuesta) {
        respuesta.set_content(
            sobre(peticion.body.size() > 1000 ? "<BackupResult/>" : "<DTSResult>x</DTSResult>"), "text/xml");
    });
    contarPuerto(tubo, servidor.bind_to_any_port("127.0.0.1"));
    servidor.listen_after_bind();
}

double piezasDesnudas(int piezas) {
    const Hijo hijo(servirDesnudo);
    soap::Bytes bytes(bytesPieza, std::byte{'x'});
    std::string base64;
    soap::CodificarBase64(bytes, base64);
    const auto dts = sobre("<DTS xmlns=\"urn:x\"/>");
    const auto backup = sobre("<Backup xmlns=\"urn:x\"><bytes>" + base64 + "</bytes></Backup>");
    CURL* curl = curl_easy_init();
    const auto url = "http://127.0.0.1:" + std::to_string(hijo.puerto()) + "/";
    curl_slist* cabeceras = curl_slist_append(nullptr, "Content-Type: text/xml");
    cabeceras = curl_slist_append(cabeceras, "Expect:");
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, cabeceras);
    curl_easy_setopt(
        curl, CURLOPT_WRITEFUNCTION,
        +[](char*, std::size_t uno, std::size_t cuantos, void*) { return uno * cuantos; });
    const auto mandar = [&](const std::string& cuerpo) {
        curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE, static_cast<long>(cuerpo.size()));
        curl_easy_setopt(curl, CURLOPT_POSTFIELDS, cuerpo.c_str());
        if (curl_easy_perform(curl) != CURLE_OK) {
            throw std::runtime_error("bare request failed");
        }
    };
    mandar(dts);
    const double segundos = segundosDe([&] {
        for (int i = 0; i < piezas; ++i) {
            mandar(dts);
            mandar(backup);
        }
    });
    curl_slist_free_all(cabeceras);
    curl_easy_cleanup(curl);
    return piezas / segundos;
}

double piezasNuestras(int piezas, const std::filesystem::path& carpeta) {
    const Hijo hijo([&](int tubo) {
        const auto archivos = platform::crearSistemaArchivos();
        const auto reloj = platform::crearReloj();
        core::RegistroMudo mudo;
        server::OpcionesServicio opciones;
        opciones.raiz = (carpeta / "raiz").string();
        server::ServidorEmbebido servidor(opciones, *archivos, *reloj, mudo);
        server::DatosAlta alta;
        alta.usuario = "ana";
        alta.clave = "Ana2024";
        alta.cuenta = "C1";
        alta.gb = 100;
        servidor.usuarios().alta(alta);
        servidor.arrancar();
        contarPuerto(tubo, servidor.puerto());
        pause();
    });
    const auto ruta = (carpeta / "archivo.bin").string();
    const auto longitud = static_cast<std::int64_t>(piezas) * service::longitudPieza + 1;
    {
        std::ofstream archivo(ruta, std::ios::binary);
        const std::string bloque(service::longitudPieza, 'x');
        for (int i = 0; i < piezas; ++i) {
            archivo << bloque;
        }
        archivo << 'y';
    }
    const auto archivos = platform::crearSistemaArchivos();
    soap::Conexion conexion;
    service::ClienteServicio cliente(
        conexion, "http://127.0.0.1:" + std::to_string(hijo.puerto()) + "/qzback/service.asmx?wsdl");
    const service::Identidad ana{"ana", "Ana2024", "DATOS", "C1"};
    const service::Envio envio{ruta, "PERSONAL", "archivo.bin", static_cast<std::int32_t>(longitud), 1};
    service::ResultadoPiezas resultado;
    const double segundos =
        segundosDe([&] { service::EnviarPiezas(*archivos, cliente, ana, envio, {}, resultado); });
    if (!resultado.completo || resultado.piezas != piezas) {
        throw std::runtime_error("upload failed: " + resultado.respuesta);
    }
    return piezas / segundos;
}

}  // namespace

int main(int argc, char** argv) {
    const int piezas = argc > 1 ? std::atoi(argv[1]) : 2000;
    setenv("no_proxy", "127.0.0.1", 1);
    const auto carpeta =
        std::filesystem::temp_directory_path() / ("bench-piezas-" + std::to_string(getpid()));
    std::filesystem::create_directory(carpeta);
    const double suelo = piezasDesnudas(piezas);
    const double nuestras = piezasNuestras(piezas, carpeta);
    std::filesystem::remove_all(carpeta);
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    const auto megas = [](double porSegundo) { return porSegundo * static_cast<double>(bytesPieza) / 1e6; };
    std::printf(
        "| what | pieces/s | MB/s |\n|---|---|---|\n| bare libcurl to bare cpp-httplib | %.0f | %.0f |\n",
        suelo, megas(suelo));
    std::printf(
        "| upload to the embedded service | %.0f | %.0f |\n\n%.0f %% of the floor; client's peak %ld MiB\n",
        nuestras, megas(nuestras), 100 * nuestras / suelo, uso.ru_maxrss / 1024);
    return 0;
}
