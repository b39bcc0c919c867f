// Sessions of the accounting link: coming in, and finding one's way to a company. enlace_libros.cpp has what
// the forms do there.
#include "server/enlace_operaciones.h"

#include <algorithm>
#include <random>
#include <thread>

#include "core/texto.h"
#include "data/codec.h"
#include "data/filtro.h"
#include "server/cifrado.h"
#include "server/enlace_peticion.h"

namespace tarvoline::server {

namespace {

constexpr std::string_view tipoSinEnlace = "02";

std::string enUnaLinea(std::string_view texto) {
    constexpr std::size_t maximo = 200;  // characters
    std::string linea = core::Mid(texto, 1, maximo);
    std::ranges::replace_if(
        linea, [](unsigned char c) { return c < ' '; }, ' ');
    return linea;
}

// One more who waits, as long as this lives.
class Presente {
  public:
    explicit Presente(std::atomic<int>& contador) : contador_(contador), cuantos_(++contador) {}
    ~Presente() { --contador_; }
    Presente(const Presente&) = delete;
    Presente& operator=(const Presente&) = delete;
    int cuantos() const { return cuantos_; }

  private:
    std::atomic<int>& contador_;
    int cuantos_;
};

std::string tokenNuevo() {
    constexpr std::string_view cifras = "0123456789abcdef";
    constexpr int largo = 40;
    std::random_device azar;
    std::uniform_int_distribution<std::size_t> cifra(0, cifras.size() - 1);
    std::string token;
    for (int i = 0; i < largo; ++i)
        token += cifras[cifra(azar)];
    return token;
}

}  // namespace

soap::Contrato contratoEnlace() {
    return {"VXEnlace",
            "urn:tarvoline:enlace",
            {{"ID", {{"usuario"}, {"clave"}}},
             {"VXWebService", {{"xml"}, {"sesion", soap::TipoValor::texto, true}}}}};
}

OperacionesEnlace::OperacionesEnlace(AlmacenUsuarios& usuarios, platform::SistemaArchivos& archivos,
                                     const std::string& raiz, const platform::Reloj& reloj,
                                     core::Registro& registro)
    : usuarios_(usuarios),
      archivos_(archivos),
      raiz_(raiz + "/contabilidad/"),
      reloj_(reloj),
      registro_(registro),
      freno_(reloj) {}

std::string OperacionesEnlace::llamar(const soap::PeticionSoap& peticion, const std::string& direccion) {
    const auto texto = [&](std::size_t lugar) -> const std::string& {
        return std::get<std::string>(peticion.argumentos.at(lugar));
    };
    if (peticion.operacion->nombre == "ID") return ID(texto(0), texto(1), direccion);
    return VXWebService(texto(0), direccion);
}

// Six fields: token, user, type, folder, name, version of the program. Whoever may not use the link is told
// his type all the same, without a session.
std::string OperacionesEnlace::ID(const std::string& usuario, const std::string& clave,
                                  const std::string& direccion) {
    if (demasiados(direccion)) return "ERROR: demasiados intentos a la vez";
    const UsuarioLeido suyo = usuarios_.buscar(usuario);
    if (!suyo || !igualesSinPista(clave, suyo->clave)) {
        frenar(direccion, "entrada rechazada, usuario \"" + core::Mid(usuario, 1, 64) + "\"");
        return "ERROR: usuario o clave incorrectos";
    }
    const std::string token = suyo->tipo >= tipoSinEnlace ? std::string() : tokenNuevo();
    if (!token.empty()) abrirSesion(token, suyo);
    return token + "\t" + suyo->usuario + "\t" + suyo->tipo + "\t" + suyo->carpetaRaiz() + "\t" +
           suyo->etiqueta + "\t" + link::Enlace::Version();
}

void OperacionesEnlace::abrirSesion(const std::string& token, const UsuarioLeido& usuario) {
    const std::lock_guard guardia(cerrojo_);
    caducar();
    const auto quitarMasVieja = [&](const auto& cuenta) {
        auto vieja = sesiones_.end();
        for (auto una = sesiones_.begin(); una != sesiones_.end(); ++una) {
            if (!cuenta(*una->second.sesion)) continue;
            if (vieja == sesiones_.end() || una->second.usada < vieja->second.usada) vieja = una;
        }
        sesiones_.erase(vieja);
    };
    const auto suya = [&](const SesionEnlace& una) { return una.usuario().usuario == usuario->usuario; };
    const auto suyas =
        std::ranges::count_if(sesiones_, [&](const auto& una) { return suya(*una.second.sesion); });
    if (static_cast<std::size_t>(suyas) >= maximoPorUsuario) {
        quitarMasVieja(suya);
    } else if (sesiones_.size() >= maximoSesiones) {
        quitarMasVieja([](const SesionEnlace&) { return true; });
    }
    sesiones_[token] = {std::make_shared<SesionEnlace>(archivos_, registro_, raiz_, usuario), reloj_.ahora()};
}

void OperacionesEnlace::caducar() {
    const auto ahora = reloj_.ahora();
    std::erase_if(sesiones_, [&](const auto& una) { return ahora - una.second.usada > vidaSesion; });
}

bool OperacionesEnlace::demasiados(const std::string& direccion) {
    const std::lock_guard guardia(cerrojo_);
    const auto suyos = frenados_.find(direccion);
    return suyos != frenados_.end() && suyos->second >= maximoFrenados;
}

void OperacionesEnlace::frenar(const std::string& direccion, const std::string& motivo) {
    registro_.aviso("enlace: desde " + direccion + ": " + enUnaLinea(motivo));
    {
        const std::lock_guard guardia(cerrojo_);
        ++frenados_[direccion];
    }
    std::this_thread::sleep_for(freno_.fallo(direccion));
    const std::lock_guard guardia(cerrojo_);
    if (--frenados_[direccion] == 0) frenados_.erase(direccion);
}

std::shared_ptr<SesionEnlace> OperacionesEnlace::sesionDe(const std::string& token) {
    const std::lock_guard guardia(cerrojo_);
    caducar();
    const auto suya = sesiones_.find(token);
    if (suya == sesiones_.end()) throw ErrorForma("ERROR: no hay ninguna sesión con ese ID");
    // Who has been struck off, may no longer come this way or has another password now, is out.
    const Usuario& entonces = suya->second.sesion->usuario();
    const UsuarioLeido usuario = usuarios_.buscar(entonces.usuario);
    if (!usuario || usuario->tipo >= tipoSinEnlace || usuario->clave != entonces.clave) {
        sesiones_.erase(suya);
        throw ErrorForma("ERROR: el usuario ya no tiene acceso");
    }
    suya->second.usada = reloj_.ahora();
    return suya->second.sesion;
}

// Where the books lie is nobody's business outside.
std::string OperacionesEnlace::sinRutas(std::string texto) const {
    for (std::size_t lugar = texto.find(raiz_); lugar != std::string::npos; lugar = texto.find(raiz_, lugar))
        texto.erase(lugar, raiz_.size());
    return texto;
}

// Failures of the books are answers; what lies behind another failure is for the log alone, and what somebody
// else wrote goes there in one line that has an end.
std::string OperacionesEnlace::VXWebService(const std::string& xml, const std::string& direccion) {
    try {
        return sinRutas(atender(leerForma(xml), direccion));
    } catch (const ErrorForma& error) {
        const std::string texto = enUnaLinea(error.what());
        registro_.aviso("enlace: petición rechazada, desde " + direccion + ": " + texto);
        return sinRutas(texto);
    } catch (const link::ErrorEnlace& error) {
        return sinRutas("ERROR: " + error.descripcion());
    } catch (const data::ErrorFiltro& error) {
        return std::string("ERROR: ") + error.what();
    } catch (const data::ErrorCampo& error) {
        return std::string("ERROR: ") + error.what();
    } catch (const std::exception& error) {
        registro_.error(std::string("enlace: ") + error.what());
        return "ERROR: el servicio no ha podido atender la petición";
    }
}

std::string OperacionesEnlace::atender(const FormaEnlace& forma, const std::string& direccion) {
    const auto metodo = tabla().find(forma.operacion);
    if (metodo == tabla().end()) throw ErrorForma("ERROR: no hay ninguna operación " + forma.operacion);
    const auto sesion = sesionDe(forma.token);
    const Presente presente(sesion->esperando);
    if (presente.cuantos() > maximoEsperando) throw ErrorForma("ERROR: la sesión está ocupada");
    const std::lock_guard guardia(sesion->cerrojo);
    Peticion peticion{forma, *sesion, carpetaDe(*sesion, forma.carpeta), direccion};
    sesion->olvidarMostrado();
    std::string respuesta = (this->*metodo->second)(peticion);
    if (!sesion->mostrado().empty()) throw ErrorForma("ERROR: " + sesion->mostrado());
    return respuesta;
}

// His own, or, for an administrator, that of somebody in his account.
std::string OperacionesEnlace::carpetaDe(const SesionEnlace& sesion, const std::string& pedida) {
    const UsuarioLeido usuario = usuarios_.buscar(sesion.usuario().usuario);
    std::string propia = sesion.usuario().carpetaRaiz();
    if (pedida.empty() || core::igualSinCaja(pedida, propia)) return propia;
    const UsuarioLeido otro = usuarios_.porCarpetaRaiz(pedida);
    const bool suya = usuario && usuario->tipo == "00" && otro && !usuario->cuenta.empty() &&
                      otro->cuenta == usuario->cuenta;
    if (!suya) throw ErrorForma("ERROR: no hay ninguna carpeta " + pedida);
    return otro->carpetaRaiz();
}

std::string OperacionesEnlace::LEERCARPETASVELDORIX2(Peticion& peticion) {
    const UsuarioLeido usuario = usuarios_.buscar(peticion.sesion.usuario().usuario);
    if (!usuario || usuario->tipo != "00" || usuario->cuenta.empty())
        return peticion.sesion.usuario().carpetaRaiz();
    std::string carpetas;
    for (const UsuarioLeido& uno : usuarios_.porCuenta(usuario->cuenta))
        carpetas += (carpetas.empty() ? "" : ",") + uno->carpetaRaiz();
    return carpetas;
}

}  // namespace tarvoline::server
