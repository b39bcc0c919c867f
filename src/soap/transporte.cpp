// Invariants:
//  1. A request goes out at most once. libcurl repeats one by itself when a kept-alive connection turns out
//  dead,
//     after 417 and for authentication. The gate in `alEmpezar`, which it passes before anything is written,
//     opens once a request; and the body cannot be rewound, for it has no buffer of libcurl's and its seek
//     function refuses.
//  2. Nothing the server sends grows beyond the limit: the body by its announced and by its real length, the
//     header lines together.
#include "soap/transporte.h"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <exception>
#include <utility>

namespace tarvoline::soap {
namespace {

constexpr long bufer = 512L * 1024;                                // holds the envelope of a file piece
constexpr std::size_t cabecerasMaximas = std::size_t{256} * 1024;  // bytes
constexpr std::size_t memoriaGuardada = std::size_t{2} * 1024 * 1024;
// A server may close an idle line at any moment, and a request that meets the closing is lost. So a line that
// idled this long is not used again.
constexpr long segundosOcio = 3;
constexpr std::chrono::milliseconds entreLatidos{100};

std::string descripcionDe(CURLcode codigo) {
    switch (codigo) {
        case CURLE_URL_MALFORMAT:
        case CURLE_UNSUPPORTED_PROTOCOL:
            return "la dirección del servicio no es válida";
        case CURLE_COULDNT_RESOLVE_HOST:
            return "no se encuentra el servidor";
        case CURLE_COULDNT_RESOLVE_PROXY:
            return "no se encuentra el servidor intermediario (proxy)";
        case CURLE_COULDNT_CONNECT:
            return "no se puede conectar con el servidor";
        case CURLE_OPERATION_TIMEDOUT:
            return "el servidor no responde";
        case CURLE_PEER_FAILED_VERIFICATION:
            return "el certificado del servidor no es de confianza";
        case CURLE_SSL_CONNECT_ERROR:
            return "no se puede establecer la conexión segura";
        case CURLE_SSL_CACERT_BADFILE:
            return "no se puede leer el archivo de certificados";
        case CURLE_PARTIAL_FILE:
            return "la respuesta del servicio está cortada";
        case CURLE_FILESIZE_EXCEEDED:
            return "la respuesta del servicio es demasiado grande";
        case CURLE_GOT_NOTHING:
        case CURLE_SEND_ERROR:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_FAIL_REWIND:
        case CURLE_ABORTED_BY_CALLBACK:
            return "la conexión se cortó antes de llegar la respuesta";
        case CURLE_WEIRD_SERVER_REPLY:
            return "la respuesta no es del protocolo HTTP";
        default:
            return std::string("fallo de la comunicación: ") + curl_easy_strerror(codigo);
    }
}

// "http:///path" has no host; libcurl would take the first folder for one.
void exigirServidor(const std::string& url) {
    const std::size_t barras = url.find("://");
    if (barras == std::string::npos || barras + 3 >= url.size() || url[barras + 3] == '/') {
        throw ErrorServicio(descripcionDe(CURLE_URL_MALFORMAT));
    }
}

std::string tipoLlano(const char* cabecera) {
    std::string tipo(cabecera == nullptr ? "" : cabecera);
    tipo.erase(std::min(tipo.find_first_of("; \t"), tipo.size()));
    std::transform(tipo.begin(), tipo.end(), tipo.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return tipo;
}

}  // namespace

class Transporte::Cabeceras {
  public:
    void poner(const std::string& linea) {
        auto* larga = curl_slist_append(lista_.get(), linea.c_str());
        if (larga == nullptr) throw std::bad_alloc();
        if (lista_ == nullptr) lista_.reset(larga);
    }
    curl_slist* lista() const { return lista_.get(); }

  private:
    struct Soltar {
        void operator()(curl_slist* lista) const { curl_slist_free_all(lista); }
    };
    std::unique_ptr<curl_slist, Soltar> lista_;
};

struct Transporte::Curl {
    struct Soltar {
        void operator()(CURL* c) const { curl_easy_cleanup(c); }
    };
    std::unique_ptr<CURL, Soltar> facil;
    std::size_t respuestaMaxima;
    // Of the request under way:
    std::string_view porEnviar;
    std::string recibido;
    std::size_t cabeceras = 0;
    bool empezada = false;
    bool excedida = false;
    std::chrono::steady_clock::time_point latido;
    std::exception_ptr interrumpida;  // what the beat threw
    const std::function<void()>& alLatir;

    Curl(const OpcionesTransporte& opciones, const std::function<void()>& latir);
    template <class T>
    void poner(CURLoption opcion, T valor) {
        if (curl_easy_setopt(facil.get(), opcion, valor) != CURLE_OK) {
            throw ErrorServicio("no se puede preparar la conexión");
        }
    }
    CURLcode ejecutar(const std::string& url, const Cabeceras& lineas);

    static int alEmpezar(void* yo, char*, char*, int, int);
    static std::size_t alEnviar(char* destino, std::size_t tamano, std::size_t cuantos, void* yo);
    static int alRebobinar(void*, curl_off_t, int) { return CURL_SEEKFUNC_FAIL; }
    static std::size_t alRecibir(const char* datos, std::size_t tamano, std::size_t cuantos, void* yo);
    static std::size_t alRecibirCabecera(const char*, std::size_t tamano, std::size_t cuantos, void* yo);
    static int alProgresar(void* yo, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
};

Transporte::Curl::Curl(const OpcionesTransporte& opciones, const std::function<void()>& latir)
    : respuestaMaxima(opciones.respuestaMaxima), alLatir(latir) {
    static const CURLcode biblioteca = curl_global_init(CURL_GLOBAL_DEFAULT);
    facil.reset(biblioteca == CURLE_OK ? curl_easy_init() : nullptr);
    if (facil == nullptr) throw ErrorServicio("no se puede preparar la conexión");
    poner(CURLOPT_PROTOCOLS_STR, "http,https");
    poner(CURLOPT_FOLLOWLOCATION, 0L);
    poner(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    poner(CURLOPT_SSL_VERIFYPEER, 1L);
    poner(CURLOPT_SSL_VERIFYHOST, 2L);
    if (!opciones.certificados.empty()) poner(CURLOPT_CAINFO, opciones.certificados.c_str());
    poner(CURLOPT_NOSIGNAL, 1L);
    poner(CURLOPT_CONNECTTIMEOUT, opciones.segundosConexion);
    poner(CURLOPT_TCP_NODELAY, 1L);
    poner(CURLOPT_TCP_KEEPALIVE, 1L);
    poner(CURLOPT_TCP_KEEPIDLE, 60L);
    poner(CURLOPT_TCP_KEEPINTVL, 15L);
    poner(CURLOPT_MAXAGE_CONN, segundosOcio);
    poner(CURLOPT_BUFFERSIZE, bufer);
    poner(CURLOPT_UPLOAD_BUFFERSIZE, bufer);
    poner(CURLOPT_USERAGENT, "tarvoline");
    poner(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(respuestaMaxima));
    poner(CURLOPT_PREREQFUNCTION, &Curl::alEmpezar);
    poner(CURLOPT_PREREQDATA, this);
    poner(CURLOPT_READFUNCTION, &Curl::alEnviar);
    poner(CURLOPT_READDATA, this);
    poner(CURLOPT_SEEKFUNCTION, &Curl::alRebobinar);
    poner(CURLOPT_WRITEFUNCTION, &Curl::alRecibir);
    poner(CURLOPT_WRITEDATA, this);
    poner(CURLOPT_HEADERFUNCTION, &Curl::alRecibirCabecera);
    poner(CURLOPT_HEADERDATA, this);
    poner(CURLOPT_NOPROGRESS, 0L);
    poner(CURLOPT_XFERINFOFUNCTION, &Curl::alProgresar);
    poner(CURLOPT_XFERINFODATA, this);
}

int Transporte::Curl::alEmpezar(void* yo, char*, char*, int, int) {
    auto& c = *static_cast<Curl*>(yo);
    const bool repetida = c.empezada;
    c.empezada = true;
    return repetida ? CURL_PREREQFUNC_ABORT : CURL_PREREQFUNC_OK;
}

std::size_t Transporte::Curl::alEnviar(char* destino, std::size_t tamano, std::size_t cuantos, void* yo) {
    auto& c = *static_cast<Curl*>(yo);
    const std::size_t tramo = std::min(tamano * cuantos, c.porEnviar.size());
    std::memcpy(destino, c.porEnviar.data(), tramo);
    c.porEnviar.remove_prefix(tramo);
    return tramo;
}

std::size_t Transporte::Curl::alRecibir(const char* datos, std::size_t tamano, std::size_t cuantos,
                                        void* yo) {
    auto& c = *static_cast<Curl*>(yo);
    const std::size_t tramo = tamano * cuantos;
    c.excedida = tramo > c.respuestaMaxima - c.recibido.size();
    if (c.excedida) return 0;
    try {
        c.recibido.append(datos, tramo);
    } catch (const std::bad_alloc&) {
        c.excedida = true;  // no exception may cross libcurl: the transfer ends as one that is too large
        return 0;
    }
    return tramo;
}

std::size_t Transporte::Curl::alRecibirCabecera(const char*, std::size_t tamano, std::size_t cuantos,
                                                void* yo) {
    auto& c = *static_cast<Curl*>(yo);
    c.cabeceras += tamano * cuantos;
    c.excedida = c.cabeceras > cabecerasMaximas;
    return c.excedida ? 0 : tamano * cuantos;
}

int Transporte::Curl::alProgresar(void* yo, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    auto& c = *static_cast<Curl*>(yo);
    const auto ahora = std::chrono::steady_clock::now();
    if (!c.alLatir || ahora - c.latido < entreLatidos) return 0;
    c.latido = ahora;
    try {
        c.alLatir();
        return 0;
    } catch (...) {
        c.interrumpida = std::current_exception();  // no exception may cross libcurl
        return 1;
    }
}

CURLcode Transporte::Curl::ejecutar(const std::string& url, const Cabeceras& lineas) {
    if (recibido.capacity() > memoriaGuardada) std::string().swap(recibido);
    recibido.clear();
    cabeceras = 0;
    empezada = excedida = false;
    interrumpida = nullptr;
    latido = std::chrono::steady_clock::now();
    poner(CURLOPT_URL, url.c_str());
    poner(CURLOPT_HTTPHEADER, lineas.lista());
    const CURLcode codigo = curl_easy_perform(facil.get());
    poner(CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
    if (excedida) return CURLE_FILESIZE_EXCEEDED;
    // The same code stands for an address and for an answer that is no HTTP; only the first comes before
    // sending.
    return codigo == CURLE_UNSUPPORTED_PROTOCOL && empezada ? CURLE_WEIRD_SERVER_REPLY : codigo;
}

Transporte::Transporte(const OpcionesTransporte& opciones, const std::function<void(bool)>& alEsperar,
                       const std::function<void()>& alLatir)
    : curl_(std::make_unique<Curl>(opciones, alLatir)), alEsperar_(alEsperar) {}

Transporte::~Transporte() = default;

RespuestaHttp Transporte::Obtener(const std::string& url) {
    curl_->poner(CURLOPT_HTTPGET, 1L);
    Cabeceras lineas;
    lineas.poner("Accept: text/xml, application/xml, application/wsdl+xml");
    return pedir(url, lineas);
}

RespuestaHttp Transporte::Enviar(const std::string& url, const std::string& accion, std::string_view cuerpo) {
    curl_->poner(CURLOPT_POST, 1L);
    curl_->poner(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(cuerpo.size()));
    curl_->porEnviar = cuerpo;
    Cabeceras lineas;
    lineas.poner("Accept: text/xml");
    lineas.poner("Content-Type: text/xml; charset=utf-8");
    lineas.poner("SOAPAction: \"" + accion + "\"");
    lineas.poner("Expect:");  // no asking for leave first, which costs a round trip
    return pedir(url, lineas);
}

RespuestaHttp Transporte::pedir(const std::string& url, const Cabeceras& lineas) {
    exigirServidor(url);
    if (alEsperar_) alEsperar_(true);
    const CURLcode codigo = curl_->ejecutar(url, lineas);
    if (alEsperar_) alEsperar_(false);
    if (curl_->interrumpida) std::rethrow_exception(std::exchange(curl_->interrumpida, nullptr));
    if (codigo != CURLE_OK) throw ErrorServicio(descripcionDe(codigo));
    RespuestaHttp respuesta;
    const char* tipo = nullptr;
    curl_easy_getinfo(curl_->facil.get(), CURLINFO_RESPONSE_CODE, &respuesta.estado);
    curl_easy_getinfo(curl_->facil.get(), CURLINFO_CONTENT_TYPE, &tipo);
    respuesta.tipo = tipoLlano(tipo);
    respuesta.cuerpo = curl_->recibido;
    return respuesta;
}

}  // namespace tarvoline::soap
