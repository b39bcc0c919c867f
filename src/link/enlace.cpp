#include "link/enlace.h"

#include "core/despliegue.h"
#include "core/texto.h"

namespace tarvoline::link {

namespace {

std::string numeroTexto(int numero) {
    return std::to_string(numero);
}

std::string dosCaracteresFinales(const std::string& texto) {
    const auto longitud = core::longitudTexto(texto);
    return longitud < 2 ? texto : core::Mid(texto, longitud - 1);
}

// "/X=value", or nothing for an argument that was left out.
std::string opcion(std::string_view letra, const std::string& valor) {
    return valor.empty() ? std::string() : "/" + std::string(letra) + "=" + valor;
}

}  // namespace

Enlace::Enlace(Contexto& contexto, OpcionesEnlace opciones)
    : sesion_{contexto, std::move(opciones)}, acceso_(sesion_), valores_(sesion_) {
    LoadEmpresas();
}

Enlace::~Enlace() {
    // The company in force must not outlive the session that opened it.
    auto& enVigor = sesion_.contexto.datos().enVigor;
    if (enVigor.gArchivoEmpresa == sesion_.empresa.gArchivoEmpresa) enVigor = {};
}

std::string Enlace::Version() {
    using namespace core::despliegue;
    return numeroTexto(versionMayor) + "." + numeroTexto(versionMenor) + "." + numeroTexto(versionRevision);
}

void Enlace::CrearEmpresa(const EmpresaNueva& nueva) {
    const auto mes =
        nueva.MesApertura.empty() ? std::string() : core::conCeros(core::ValEntero(nueva.MesApertura), 2);
    AbrirEmpresa(nueva.NombreEmpresa,
                 "/C" + opcion("A", dosCaracteresFinales(nueva.año)) + opcion("N", nueva.Niveles) +
                     opcion("X", nueva.Auxiliares) + opcion("M", nueva.MonedaBase) + opcion("P", mes) +
                     opcion("I", nueva.IvaIgic) + opcion("Z", nueva.PlanContablePorDefecto));
}

std::string Enlace::MesInicioEjercicio() const {
    return sesion_.empresa.cabecera.texto(data::cabecera::APERTURA);
}

void Enlace::Usuario(std::string_view usuario) {
    sesion_.Usuario = core::conCeros(core::ValEntero(usuario), 2);
}

}  // namespace tarvoline::link
