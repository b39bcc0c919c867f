#include "workflows/espacio.h"

#include "core/carpetas.h"
#include "core/despliegue.h"
#include "core/formato.h"
#include "core/texto.h"
#include "workflows/configuracion_empresa.h"
#include "workflows/panel.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoCalculando = 2226;
constexpr int textoSinCodigo = 2227;
constexpr int textoCapacidad = 2229;
constexpr int textoSinContrato = 2230;
constexpr int textoAmpliar = 2233;
constexpr int textoNoCabe = 2234;
constexpr int textoTituloInforme = 2246;
constexpr int textoCabezaInforme = 2247;
constexpr int textoExcedida = 2249;
constexpr int textoUsado = 2251;

constexpr int B = 0;
constexpr int MB = 2;
constexpr int unidadMayor = 4;
constexpr double megasPorGiga = 1024;
constexpr double megasSinContrato = 100;

double megas(double gigas) {
    return gigas == 0 ? megasSinContrato : gigas * megasPorGiga;
}

// The service's sign of failure anywhere in the text, in any case.
bool contieneError(std::string_view texto) {
    return core::Mayusculas(texto).find("ERROR:") != std::string::npos;
}

service::Identidad de(const service::UsuarioCuenta& usuario) {
    return {usuario.usuario, usuario.password, {}, {}};
}

// While the check runs the capacity label says so and the pointer waits; a check that finds nothing leaves an
// empty label.
class Comprobacion {
  public:
    explicit Comprobacion(core::Entorno& entorno) : entorno_(entorno) {
        entorno_.vista.capacidadRoja = false;
        entorno_.vista.LbCapacidad[0] = calculando_;
        entorno_.vista.avisar(core::Parte::etiquetas);
        entorno_.escritorio.Puntero(true);
    }
    ~Comprobacion() {
        if (entorno_.vista.LbCapacidad[0] == calculando_) {
            entorno_.vista.LbCapacidad[0].clear();
        }
        entorno_.vista.avisar(core::Parte::etiquetas);
        entorno_.escritorio.Puntero(false);
    }
    Comprobacion(const Comprobacion&) = delete;
    Comprobacion& operator=(const Comprobacion&) = delete;

  private:
    core::Entorno& entorno_;
    std::string calculando_ = entorno_.texto(textoCalculando);
};

}  // namespace

std::string Espacio::EspacioOcupado() {
    if (estado().gRefrescando) {
        return {};
    }
    const auto bytes = bytesDelUsuario();
    std::string mostrado;
    if (!bytes.empty()) {
        estado().gEspacioUsado = core::ConvertirUnidad(bytes, B, MB);
        mostrado = core::formatoImporte(
            core::ConvertirUnidad(bytes, B, core::unidadPantalla, estado().gUnidadTamano));
    }
    DatosInformeEspacio();
    return mostrado;
}

std::string Espacio::bytesDelUsuario() {
    std::string bytes;
    core::ignorandoErrores(entorno_, "CalcularEspacioTotal", [&] {
        auto cliente = flujos_.nuevoCliente();
        bytes = cliente.CalcularEspacioTotal(flujos_.enVigor());
    });
    return core::esError(bytes) ? std::string() : bytes;
}

void Espacio::DatosInformeEspacio() {
    estado().gInforme.clear();
    estado().gEspacioCuenta = 0;
    core::ignorandoErrores(entorno_, "DatosInformeEspacio", [&] {
        auto cliente = flujos_.nuevoCliente();
        const auto datos = cliente.DatosUsuario(flujos_.enVigor());
        const auto codigo = core::esError(datos) ? "" : service::codigoDeDatosUsuario(datos);
        if (codigo.empty()) {
            return;
        }
        const auto cuenta = cliente.CarpetasNserie(codigo);
        if (core::esError(cuenta)) {
            return;
        }
        for (const auto& usuario : service::leerUsuariosCuenta(cuenta)) {
            double usado = 0;
            core::ignorandoErrores(entorno_, "CalcularEspacioTotal", [&] {
                usado = core::ConvertirUnidad(cliente.CalcularEspacioTotal(de(usuario)), B, MB);
            });
            estado().gEspacioCuenta += usado;
            estado().gInforme +=
                usuario.usuario + "\t" + usuario.etiqueta + "\t" + core::formatoImporte(usado) + "\r\n";
        }
    });
}

void Espacio::traza(int paso) {
    flujos_.panel().Traza("Controlar_capacidad " + core::conCeros(paso, 2));
}

void Espacio::Controlar_capacidad(bool silencioso) {
    estado().gCapacidadExcedida = false;
    traza(1);
    const Comprobacion comprobacion(entorno_);
    auto cliente = flujos_.nuevoCliente();
    traza(2);
    flujos_.configuracion().CargarConfiguracionEmpresa("");
    traza(3);
    const auto datos = cliente.DatosUsuario(flujos_.enVigor());
    flujos_.panel().Traza("Controlar_capacidad Ret: " + datos);
    traza(4);
    if (core::esError(datos)) {
        return;
    }
    if (contieneError(datos)) {
        entorno_.escritorio.Mensaje({datos, core::Icono::parada, std::string(tituloPrograma)});
        return;
    }
    revisarUnidad();
    const double gigas = medirCapacidad(datos, cliente, silencioso);
    traza(7);
    estado().gCapacidad = megas(gigas);
    vista().LbCapacidad[0] = gigas == 0 ? texto(textoSinContrato) + " " + texto(textoCapacidad) + " " +
                                              core::formatoImporte(megasSinContrato) + " MB"
                                        : texto(textoCapacidad) + " " + core::formatoImporte(gigas) + " GB";
    traza(8);
    flujos_.panel().Turno();
    EspacioOcupado();
    flujos_.panel().Turno();
    traza(9);
    compararUso(silencioso);
    ponerUsado();
    traza(12);
}

double Espacio::medirCapacidad(const std::string& datosUsuario, service::ClienteServicio& cliente,
                               bool silencioso) {
    const auto codigo = service::codigoDeDatosUsuario(datosUsuario);
    traza(5);
    if (codigo.empty() && !silencioso && !estado().gBorrandoSeleccion) {
        entorno_.escritorio.Mensaje({texto(textoSinCodigo), core::Icono::ninguno, {}});
    }
    traza(6);
    return capacidadContratada(cliente, flujos_.enVigor(), codigo);
}

void Espacio::compararUso(bool silencioso) {
    auto& estado = this->estado();
    if (estado.gEspacioUsado < estado.gEspacioCuenta) {
        estado.gEspacioUsado = estado.gEspacioCuenta;
    }
    traza(10);
    if (estado.gCapacidad - estado.gEspacioUsado < 0) {
        if (!silencioso && !estado.gBorrandoSeleccion) {
            const auto bytes = [](double valor) { return core::ConvertirUnidad(valor, MB, B); };
            entorno_.escritorio.Mensaje(
                {texto(textoExcedida) + "\r\n" + flujos_.panel().enUnidad(bytes(estado.gEspacioUsado)) +
                     " / " + flujos_.panel().enUnidad(bytes(estado.gCapacidad)) + "\r\n" +
                     texto(textoAmpliar) + " " + std::string(core::despliegue::telefonoSoporte),
                 core::Icono::parada, std::string(tituloPrograma)});
        }
        estado.gCapacidadExcedida = true;
        vista().capacidadRoja = true;
    }
    traza(11);
}

void Espacio::revisarUnidad() {
    constexpr int unidadPorDefecto = MB;
    if (estado().gUnidadTamano < 0 || estado().gUnidadTamano > unidadMayor) {
        estado().gUnidadTamano = unidadPorDefecto;
        entorno_.almacen.Grabar("Visualiza datos en", std::to_string(unidadPorDefecto), "Backup");
    }
}

void Espacio::ponerUsado() {
    vista().LbCapacidad[1] = texto(textoUsado) + " " +
                             flujos_.panel().enUnidad(core::ConvertirUnidad(estado().gEspacioUsado, MB, B));
    vista().avisar(core::Parte::etiquetas);
}

void Espacio::Actualiza_Espacio_Ocupado() {
    EspacioOcupado();
    ponerUsado();
}

double Espacio::CapacidadContratada(std::string_view codigo) {
    auto cliente = flujos_.nuevoCliente();
    return capacidadContratada(cliente, flujos_.enVigor(), codigo);
}

double Espacio::capacidadContratada(service::ClienteServicio& cliente, const service::Identidad& quien,
                                    std::string_view codigo) {
    if (!cliente.ofreceCapacidad()) {
        return core::Val(entorno_.almacen.Leer("Capacidad", "NETBACKUP", "0", estado().gProducto));
    }
    if (codigo.empty()) {
        return 0;
    }
    const auto gigas = cliente.CapacidadContratada(quien, codigo);
    if (core::esError(gigas)) {
        // A passing refusal is no account without a contract. Whoever tells it puts its own "ERROR" before
        // it.
        throw soap::ErrorServicio(core::Mid(gigas, 7));
    }
    return core::Val(gigas);
}

bool Espacio::HayEspacio(std::string_view archivo) {
    motivo_ = texto(textoNoCabe);
    const auto longitud = entorno_.archivos.abrir(archivo, platform::Apertura::lectura)->longitud();
    const double ocupa = core::ConvertirUnidad(static_cast<double>(longitud), B, MB);
    double usado = 0;
    double capacidad = 0;
    if (estado().gUsuario != estado().gUsuarioSesion) {
        EspacioOtroUsuario(estado().gUsuario, estado().gPassword, usado, capacidad);
        if (usado == 0 && capacidad == 0) {
            return false;
        }
    } else {
        usado = estado().gEspacioUsado;
        // Without a code (the service was down at the login) what was measured since then holds.
        const bool medida = estado().gCuenta.empty() && estado().gCapacidad > 0;
        capacidad = medida ? estado().gCapacidad : megas(CapacidadContratada(estado().gCuenta));
    }
    if (capacidad - usado - ocupa >= 0) {
        return true;
    }
    entorno_.escritorio.Mensaje({core::Mayusculas(estado().gUsuario) + ": " + texto(textoNoCabe),
                                 core::Icono::parada,
                                 std::string(tituloPrograma) + " " + core::SoloNombre(archivo)});
    return false;
}

void Espacio::EspacioOtroUsuario(std::string_view usuario, std::string_view clave, double& usado,
                                 double& capacidad) {
    usado = 0;
    capacidad = 0;
    if (estado().gRefrescando || core::Recortar(usuario).empty()) {
        return;
    }
    const service::Identidad quien{std::string(usuario), std::string(clave), {}, {}};
    auto cliente = flujos_.nuevoCliente();
    const auto datos = cliente.DatosUsuario(quien);
    if (contieneError(datos)) {
        motivo_ = datos;
        entorno_.escritorio.Mensaje({datos, core::Icono::parada, std::string(tituloPrograma)});
        return;
    }
    const auto codigo = service::codigoDeDatosUsuario(datos);
    capacidad = megas(capacidadContratada(cliente, quien, codigo));
    const auto cuenta = codigo.empty() ? std::string() : cliente.CarpetasNserie(codigo);
    if (core::esError(cuenta)) {
        return;
    }
    for (const auto& otro : service::leerUsuariosCuenta(cuenta)) {
        usado += core::ConvertirUnidad(cliente.CalcularEspacioTotal(de(otro)), B, MB);
    }
}

void Espacio::Imgcapacidad_Click() {
    flujos_.panel().entrada([&] {
        DatosInformeEspacio();
        auto& informe = estado().gInforme;
        if (informe.empty()) {
            const auto bytes = bytesDelUsuario();
            const double usado = bytes.empty() ? estado().gEspacioUsado : core::ConvertirUnidad(bytes, B, MB);
            informe = estado().gUsuario + "\t\t" + core::formatoImporte(usado) + "\r\n";
        }
        const auto hoy = entorno_.reloj.local();
        entorno_.almacen.MostrarListado({texto(textoTituloInforme), texto(textoCabezaInforme),
                                         core::conCeros(hoy.dia, 2) + "/" + core::conCeros(hoy.mes, 2) + "/" +
                                             core::conCeros(hoy.anio, 4),
                                         "0,0,3", informe});
    });
}

}  // namespace tarvoline::workflows
