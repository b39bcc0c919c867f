// An HTTP server on loopback that plays a script: for each request it asks a routine of the test what to send
// back, byte for byte, and it records everything that came over the wire.
//
//     ServidorGuion servidor([](const PeticionGuion& p) {
//         return p.metodo == "GET" ? Actuacion::http(200, "text/xml", wsdl) : Actuacion::cortar();
//     });
//     cliente.Iniciar(servidor.url("/servicio.asmx?wsdl"));
//     EXPECT_EQ(servidor.peticiones().size(), 2U);
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <charconv>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace tarvoline::pruebas {

struct PeticionGuion {
    int conexion = 0;  // which one it came over, from 1
    std::string metodo, ruta;
    std::map<std::string, std::string> cabeceras;  // names in lower case
    std::string cuerpo;
};

// What the server does about a request.
struct Actuacion {
    std::string bytes;    // as they go out
    bool cierra = false;  // then the connection ends

    static Actuacion cruda(std::string bytes, bool cierra = true) { return {std::move(bytes), cierra}; }
    // Closes without a byte of answer.
    static Actuacion cortar() { return {{}, true}; }
    // Answers nothing and leaves the line open.
    static Actuacion callar() { return {}; }
    // A whole answer; the line stays open.
    static Actuacion http(int estado, std::string_view tipo, std::string_view cuerpo,
                          std::string_view masCabeceras = {}) {
        std::string bytes = "HTTP/1.1 " + std::to_string(estado) + " Guion\r\n";
        if (!tipo.empty()) bytes += "Content-Type: " + std::string(tipo) + "\r\n";
        bytes += "Content-Length: " + std::to_string(cuerpo.size()) + "\r\n";
        bytes += masCabeceras;
        bytes += "\r\n";
        bytes += cuerpo;
        return {std::move(bytes), false};
    }
};

class ServidorGuion {
  public:
    // Runs in the server's thread, once for each request whose head and body have arrived.
    using Guion = std::function<Actuacion(const PeticionGuion&)>;

    explicit ServidorGuion(Guion guion) : guion_(std::move(guion)) {
        escucha_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in direccion{};
        direccion.sin_family = AF_INET;
        direccion.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t longitud = sizeof direccion;
        auto* const generica = reinterpret_cast<sockaddr*>(&direccion);
        if (escucha_ < 0 || ::bind(escucha_, generica, longitud) != 0 || ::listen(escucha_, 16) != 0 ||
            ::getsockname(escucha_, generica, &longitud) != 0 || ::pipe(aviso_) != 0) {
            throw std::runtime_error("the scripted server cannot listen on loopback");
        }
        puerto_ = ntohs(direccion.sin_port);
        hilo_ = std::thread([this] { servir(); });
    }
    ~ServidorGuion() {
        parar();
        ::close(aviso_[0]);
        ::close(aviso_[1]);
    }
    ServidorGuion(const ServidorGuion&) = delete;
    ServidorGuion& operator=(const ServidorGuion&) = delete;

    std::string anfitrion() const { return "127.0.0.1:" + std::to_string(puerto_); }
    std::string url(std::string_view ruta) const { return "http://" + anfitrion() + std::string(ruta); }

    // Closes every line and stops listening: the service is gone.
    void parar() {
        if (!hilo_.joinable()) return;
        parado_ = true;
        [[maybe_unused]] const auto escrito = ::write(aviso_[1], "x", 1);
        hilo_.join();
    }

    // What came over the wire so far, in order. A request is here before its answer is out.
    std::vector<PeticionGuion> peticiones() const {
        const std::lock_guard cerrojo(mutex_);
        return peticiones_;
    }
    std::size_t cuantas(std::string_view metodo) const {
        const auto todas = peticiones();
        return static_cast<std::size_t>(std::count_if(
            todas.begin(), todas.end(), [&](const PeticionGuion& p) { return p.metodo == metodo; }));
    }
    int conexiones() const { return conexiones_; }

  private:
    struct Linea {
        int zocalo;
        int numero;
        std::string recibido;
        bool viva = true;
    };

    void servir() {
        std::list<Linea> lineas;
        while (!parado_) {
            std::vector<pollfd> esperas{{aviso_[0], POLLIN, 0}, {escucha_, POLLIN, 0}};
            for (const auto& linea : lineas)
                esperas.push_back({linea.zocalo, POLLIN, 0});
            if (::poll(esperas.data(), static_cast<nfds_t>(esperas.size()), -1) < 0) continue;
            std::size_t lugar = 2;
            for (auto& linea : lineas) {
                if (esperas[lugar++].revents != 0) leer(linea);
            }
            if (esperas[1].revents != 0) aceptar(lineas);
            lineas.remove_if([](const Linea& linea) {
                if (!linea.viva) ::close(linea.zocalo);
                return !linea.viva;
            });
        }
        for (const auto& linea : lineas)
            ::close(linea.zocalo);
        ::close(escucha_);
    }

    void aceptar(std::list<Linea>& lineas) {
        const int zocalo = ::accept(escucha_, nullptr, nullptr);
        if (zocalo >= 0) lineas.push_back({zocalo, ++conexiones_, {}});
    }

    void leer(Linea& linea) {
        std::string tramo(65536, '\0');
        const auto leidos = ::recv(linea.zocalo, tramo.data(), tramo.size(), 0);
        if (leidos <= 0) {
            linea.viva = false;
            return;
        }
        linea.recibido.append(tramo, 0, static_cast<std::size_t>(leidos));
        // A TLS greeting: this server has no answer to it.
        if (linea.recibido.front() == '\x16') linea.viva = false;
        PeticionGuion peticion;
        while (linea.viva && tomar(linea, peticion))
            actuar(linea, peticion);
    }

    // Takes one whole request off the line; false when it has not all arrived.
    static bool tomar(Linea& linea, PeticionGuion& peticion) {
        const std::size_t fin = linea.recibido.find("\r\n\r\n");
        if (fin == std::string::npos) return false;
        peticion = {};
        peticion.conexion = linea.numero;
        std::string_view cabeza(linea.recibido.data(), fin + 2);
        leerCabeza(cabeza, peticion);
        std::size_t longitud = 0;
        const std::string& anunciada = peticion.cabeceras["content-length"];
        std::from_chars(anunciada.data(), anunciada.data() + anunciada.size(), longitud);
        if (linea.recibido.size() < fin + 4 + longitud) return false;
        peticion.cuerpo = linea.recibido.substr(fin + 4, longitud);
        linea.recibido.erase(0, fin + 4 + longitud);
        return true;
    }

    static void leerCabeza(std::string_view cabeza, PeticionGuion& peticion) {
        for (bool primera = true; !cabeza.empty(); primera = false) {
            const std::string_view renglon = cabeza.substr(0, cabeza.find("\r\n"));
            cabeza.remove_prefix(renglon.size() + 2);
            if (primera) {
                const std::size_t blanco = renglon.find(' ');
                peticion.metodo = renglon.substr(0, blanco);
                peticion.ruta = renglon.substr(blanco + 1, renglon.rfind(' ') - blanco - 1);
                continue;
            }
            const std::size_t dosPuntos = std::min(renglon.find(':'), renglon.size());
            std::string nombre(renglon.substr(0, dosPuntos));
            std::transform(nombre.begin(), nombre.end(), nombre.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            const std::size_t valor = renglon.find_first_not_of(": ", dosPuntos);
            peticion.cabeceras[nombre] = valor == std::string_view::npos ? "" : renglon.substr(valor);
        }
    }

    void actuar(Linea& linea, const PeticionGuion& peticion) {
        {
            const std::lock_guard cerrojo(mutex_);
            peticiones_.push_back(peticion);
        }
        const Actuacion actuacion = guion_(peticion);
        std::string_view resto = actuacion.bytes;
        while (!resto.empty()) {
            const auto enviados = ::send(linea.zocalo, resto.data(), resto.size(), MSG_NOSIGNAL);
            if (enviados <= 0) {
                linea.viva = false;
                return;
            }
            resto.remove_prefix(static_cast<std::size_t>(enviados));
        }
        if (actuacion.cierra) linea.viva = false;
    }

    Guion guion_;
    int escucha_ = -1;
    int aviso_[2] = {-1, -1};
    int puerto_ = 0;
    std::atomic<bool> parado_ = false;
    std::atomic<int> conexiones_ = 0;
    mutable std::mutex mutex_;
    std::vector<PeticionGuion> peticiones_;
    std::thread hilo_;
};

}  // namespace tarvoline::pruebas
