// The session itself, its entries and what is beside them. lecturas_remotas.cpp reads, cambios_remotos.cpp
// changes.
#include "link/remoto/operaciones_remotas.h"

#include <map>
#include <pugixml.hpp>

#include "core/texto.h"
#include "data/fechas.h"
#include "link/fechas_enlace.h"
#include "link/importe_texto.h"
#include "link/remoto/documento_asiento.h"
#include "link/remoto/lector_asientos.h"

namespace tarvoline::link::remoto {

namespace {

[[noreturn]] void fallarConEmpresa(std::uint32_t numero, const std::string& texto, std::string_view empresa) {
    throw ErrorEnlace(numero, texto + "\n" + std::string(empresa));
}

}  // namespace

void noDisponibleEnRemoto() {
    throw ErrorEnlace(error_enlace::noDisponible,
                      "Esta opción no está disponible con enlace a Veldorix Online");
}

void OperacionesRemotas::LoadEmpresas() {
    const std::string respuesta = cliente_.simple("LEEREMPRESAS", "", "");
    sesion_.Empresas.clear();
    for (std::string nombre : core::Partir(respuesta, "\n")) {
        if (nombre.ends_with('\r')) nombre.pop_back();
        if (!core::Recortar(nombre).empty()) sesion_.Empresas.push_back(core::Recortar(nombre));
    }
}

void OperacionesRemotas::AbrirEmpresa(std::string_view empresa, std::string_view clave) {
    constexpr std::string_view formaCreacion = "/C";
    sesion_.empresa = {};
    if (core::Mayusculas(clave).starts_with(formaCreacion)) {
        try {
            cliente_.simple("CREAREMPRESA", empresa, clave);
        } catch (const ErrorEnlace&) {
            noDisponibleEnRemoto();
        }
        sesion_.empresa.gArchivoEmpresa = empresa;
        LoadEmpresas();
        return;
    }
    const auto texto = [&](const char* nombre) {
        return core::Recortar(cliente_.simple("GETTOTAL", empresa, nombre));
    };
    if (!existe(empresa, clave))
        fallarConEmpresa(error_enlace::empresaNoExiste, "Empresa Veldorix no existe: ", empresa);
    const std::string esperada = texto("PASSWORD1");
    if (!esperada.empty() && esperada != clave)
        fallarConEmpresa(error_enlace::claveNoValida, "Password Empresa Veldorix no válido: ", empresa);
    sesion_.empresa.cabecera.poner(data::cabecera::AÑO, texto("AÑO"));
    sesion_.empresa.cabecera.poner(data::cabecera::APERTURA, texto("APERTURA"));
    sesion_.empresa.gArchivoEmpresa = empresa;
    sesion_.empresa.gEmpresaActual = empresa;
}

bool OperacionesRemotas::existe(std::string_view empresa, std::string_view clave) {
    try {
        return cliente_.simple("EMPRESAEXISTS", empresa, clave) != "NO";
    } catch (const ErrorEnlace&) {
        return false;
    }
}

std::string OperacionesRemotas::leerConfig(std::string_view nombre) {
    return core::Recortar(cliente_.simple("GETTOTAL", "", nombre));
}

void OperacionesRemotas::grabarConfig(std::string_view nombre, std::string_view valor) {
    cliente_.simple("PUTTOTAL", "", std::string(nombre) + "=" + std::string(valor));
}

std::string OperacionesRemotas::EmpresaAñoAnterior() {
    return leerConfig("Empresa Anterior");
}

// For an administrator all folders; anybody else has but his own.
std::vector<std::string> OperacionesRemotas::LeerCarpetas() {
    if (!cliente_.esAdministrador()) return {cliente_.carpetaPropia()};
    auto carpetas = core::Partir(cliente_.simple("LEERCARPETASVELDORIX2", "", ""), ",");
    std::erase(carpetas, "");
    return carpetas;
}

// The pending collections are empty afterwards, whatever the service says. A number that it has drawn becomes
// that of the session.
std::int32_t OperacionesRemotas::GrabarAsiento() {
    constexpr std::size_t cifras = 6;
    if (!sesion_.pendientes.HayPendientes) return 0;
    struct AlFinal {
        Sesion& sesion;
        ~AlFinal() { sesion.LimpiarPendientes(); }
    } const alFinal{sesion_};
    if (!sesion_.pendientes.hayLineas()) return 0;  // the company that they were for has been closed
    const std::string respuesta =
        core::Recortar(cliente_.enviar(documentoAsiento(cliente_.remite(), sesion_)));
    const bool numero =
        respuesta.size() == cifras && respuesta.find_first_not_of("0123456789") == std::string::npos;
    if (numero && sesion_.Número == siguienteNumero()) sesion_.Número = respuesta;
    return core::ValEntero(respuesta);
}

std::string OperacionesRemotas::fechaNormal(std::string_view guardada) const {
    return fechaCorta(sesion_, guardada);
}

void OperacionesRemotas::LeerAsiento() {
    leerAsientoCon(fechaNormal(sesion_.Fecha), sesion_.Número, "");
}

void OperacionesRemotas::leerVecino(Vecino cual) {
    switch (cual) {
        case Vecino::proximo:
            leerAsientoCon(fechaNormal(sesion_.Fecha), sesion_.Número, "POSICION=PROXIMO");
            break;
        case Vecino::anterior:
            leerAsientoCon(fechaNormal(sesion_.Fecha), sesion_.Número, "POSICION=ANTERIOR");
            break;
        case Vecino::primero:
            leerAsientoCon("", "", "POSICION=PRIMERO");
            break;
        case Vecino::ultimo:
            leerAsientoCon("", "", "POSICION=ULTIMO");
            break;
    }
}

// Only an entry that is there moves date and number.
void OperacionesRemotas::leerAsientoCon(const std::string& fecha, const std::string& numero,
                                        const std::string& posicion) {
    sesion_.LimpiarPendientes();
    AsientoLeido leido = leerAsiento(
        sesion_, cliente_.conCampos("LEERASIENTO", {"FECHA=" + fecha, "ASIENTO=" + numero, posicion}));
    if (!leido.hay) return;
    sesion_.pendientes = std::move(leido.lineas);
    if (posicion.empty()) return;
    sesion_.Fecha = leido.fecha;
    sesion_.Número = leido.numero;
}

// The answer has a section for each rate, with a line "KEY=value" for each of its fields.
TipoIvaClass OperacionesRemotas::tiposiva(int numero) {
    TipoIvaClass tipo;
    tipo.TIPO = numero;
    const std::string respuesta = cliente_.simple("LEERTIPOSIVA", "", "");
    pugi::xml_document documento;
    const auto resultado =
        documento.load_buffer(respuesta.data(), respuesta.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!resultado) {
        throw ErrorEnlace(
            error_enlace::noDisponible,
            std::string("La respuesta del servicio no se entiende: ") + resultado.description());
    }
    for (const pugi::xml_node seccion : documento.document_element().children("TIPOIVA")) {
        std::map<std::string, std::string> valores;
        for (std::string linea : core::Partir(seccion.text().get(), "\n")) {
            if (linea.ends_with('\r')) linea.pop_back();
            const auto igual = linea.find('=');
            if (igual != std::string::npos)
                valores[core::Mayusculas(core::Recortar(linea.substr(0, igual)))] = linea.substr(igual + 1);
        }
        if (core::ValEntero(valores["TIPO"]) != numero) continue;
        tipo.Descripción = valores["DESCRIPCION"];
        tipo.ClaveOp2 = valores["CLAVEOP2"];
        tipo.ClaveOp = valores["CLAVEOP"];
        tipo.Cuota = importeDeTexto(valores["CUOTA"]);
        tipo.Recargo = importeDeTexto(valores["RECARGO"]);
        break;
    }
    return tipo;
}

std::string OperacionesRemotas::leerGuid(std::string_view asiento) {
    return core::Recortar(cliente_.conCampos("GETGUID", {"ASIENTO:" + std::string(asiento)}));
}

void OperacionesRemotas::grabarGuid(std::string_view asiento, std::string_view guid) {
    try {
        cliente_.conCampos("SETGUID", {"ASIENTO:" + std::string(asiento), "VALOR:" + std::string(guid)});
    } catch (const ErrorEnlace&) {
        throw ErrorEnlace(error_enlace::sinGuid, "Error al crear un GUID", "");
    }
}

namespace {

std::vector<std::string> celdas(const std::string& respuesta) {
    return respuesta.empty() ? std::vector<std::string>() : core::Partir(respuesta, "\t");
}

}  // namespace

std::vector<std::string> OperacionesRemotas::LeerFechasAsiento(std::string_view asiento) {
    auto fechas = celdas(cliente_.conCampos("GETFECHAS", {"ASIENTO:" + std::string(asiento)}));
    for (std::string& fecha : fechas)
        fecha = fechaDeRespuesta(sesion_, fecha);
    return fechas;
}

std::vector<std::string> OperacionesRemotas::LeerAsientosGuid(std::string_view guid) {
    return celdas(cliente_.conCampos("GETASIENTOS", {"GUID:" + std::string(guid)}));
}

}  // namespace tarvoline::link::remoto
