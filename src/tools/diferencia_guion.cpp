#include "tools/diferencia_guion.h"

#include <functional>
#include <map>
#include <type_traits>

#include "core/texto.h"

namespace tarvoline::tools {

namespace {

using link::Enlace;
using Argumentos = std::vector<std::string>;

struct Miembro {
    std::size_t maximo;  // arguments
    Muestra muestra;
    // Appends what the member gives back.
    std::function<void(Enlace&, const Argumentos&, Vista&)> hacer;
};

void dar(Vista& vista, const std::string& valor) {
    vista.push_back({"llamada", 0, "resultado", valor});
}
void dar(Vista& vista, bool valor) {
    dar(vista, std::string(valor ? "sí" : "no"));
}
void dar(Vista& vista, double valor) {
    dar(vista, comoTexto(valor));
}
void dar(Vista& vista, std::int32_t valor) {
    dar(vista, std::to_string(valor));
}
void dar(Vista& vista, const std::vector<std::string>& valores) {
    std::string todos;
    for (const auto& valor : valores)
        todos += valor + "\n";
    dar(vista, todos);
}
void dar(Vista& vista, const link::CarteraLeida& lineas) {
    anadirCartera(vista, lineas);
}
void dar(Vista& vista, const std::shared_ptr<link::TipoIvaClass>& tipo) {
    anadirTipo(vista, *tipo);
}
// A line that has been added is looked at when its entry is read.
template <typename Linea>
void dar(Vista& /*vista*/, const std::shared_ptr<Linea>& /*linea*/) {}

template <typename Valor>
Valor argumento(const Argumentos& argumentos, std::size_t lugar) {
    static const std::string nada;
    const std::string& texto = lugar < argumentos.size() ? argumentos[lugar] : nada;
    if constexpr (std::is_same_v<Valor, bool>) {
        return core::ValEntero(texto) != 0;
    } else if constexpr (std::is_integral_v<Valor>) {
        return static_cast<Valor>(core::ValEntero(texto));
    } else if constexpr (std::is_floating_point_v<Valor>) {
        return core::Val(texto);
    } else {
        return Valor(texto);
    }
}

template <typename Resultado, typename... Tipos, std::size_t... Lugares>
auto conArgumentos(Resultado (Enlace::*miembro)(Tipos...), std::index_sequence<Lugares...>) {
    return [miembro](Enlace& enlace, const Argumentos& argumentos, Vista& vista) {
        if constexpr (std::is_void_v<Resultado>) {
            (enlace.*miembro)(argumento<std::decay_t<Tipos>>(argumentos, Lugares)...);
        } else {
            dar(vista, (enlace.*miembro)(argumento<std::decay_t<Tipos>>(argumentos, Lugares)...));
        }
        (void)argumentos;
        (void)vista;
    };
}

template <typename Resultado, typename... Tipos>
Miembro miembro(Resultado (Enlace::*cual)(Tipos...), Muestra muestra = Muestra::nada) {
    return {sizeof...(Tipos), muestra, conArgumentos(cual, std::index_sequence_for<Tipos...>{})};
}

// The account comes back beside the result.
template <typename... Resto, std::size_t... Lugares>
auto creadorCon(bool (Enlace::*crear)(std::string&, Resto...), std::index_sequence<Lugares...>) {
    return [crear](Enlace& enlace, const Argumentos& argumentos, Vista& vista) {
        auto cuenta = argumento<std::string>(argumentos, 0);
        const bool hecha =
            (enlace.*crear)(cuenta, argumento<std::decay_t<Resto>>(argumentos, Lugares + 1)...);
        dar(vista, std::string(hecha ? "sí " : "no ") + cuenta);
    };
}

template <typename... Resto>
Miembro creador(bool (Enlace::*crear)(std::string&, Resto...)) {
    return {sizeof...(Resto) + 1, Muestra::nada, creadorCon(crear, std::index_sequence_for<Resto...>{})};
}

// Arguments "Direccion=Calle Mayor, 3"; the first one is the account.
void crearDatos(Enlace& enlace, const Argumentos& argumentos, Vista& /*vista*/) {
    static const std::map<std::string, std::string link::DatosNuevos::*> campos{
        {"titulo", &link::DatosNuevos::titulo},
        {"NIF", &link::DatosNuevos::NIF},
        {"Direccion", &link::DatosNuevos::Direccion},
        {"cp", &link::DatosNuevos::cp},
        {"Municipio", &link::DatosNuevos::Municipio},
        {"Provincia", &link::DatosNuevos::Provincia},
        {"CVP", &link::DatosNuevos::CVP},
        {"Importe_347", &link::DatosNuevos::Importe_347},
        {"Telefono", &link::DatosNuevos::Telefono},
        {"Fax", &link::DatosNuevos::Fax},
        {"Riesgo", &link::DatosNuevos::Riesgo},
        {"TipoIva", &link::DatosNuevos::TipoIva},
        {"NOTAS", &link::DatosNuevos::NOTAS},
        {"Pais", &link::DatosNuevos::Pais},
        {"Vencimientos", &link::DatosNuevos::Vencimientos},
        {"DiasDePago", &link::DatosNuevos::DiasDePago},
        {"email", &link::DatosNuevos::email},
        {"PaginaWeb", &link::DatosNuevos::PaginaWeb},
        {"CriterioCaja", &link::DatosNuevos::CriterioCaja},
        {"OMITIR347", &link::DatosNuevos::OMITIR347},
        {"OMITIR415", &link::DatosNuevos::OMITIR415}};
    link::DatosNuevos datos;
    datos.Cuenta = argumento<std::string>(argumentos, 0);
    for (std::size_t i = 1; i < argumentos.size(); ++i) {
        const auto igual = argumentos[i].find('=');
        const auto campo = campos.find(argumentos[i].substr(0, igual));
        if (igual == std::string::npos || campo == campos.end())
            throw ErrorGuion("CrearDatos: " + argumentos[i]);
        datos.*campo->second = argumentos[i].substr(igual + 1);
    }
    enlace.CrearDatos(datos);
}

using Miembros = std::map<std::string, Miembro>;

void anadirSesion(Miembros& todos) {
    using Texto = std::string_view;
    todos["Fecha"] = miembro<void, Texto>(&Enlace::Fecha);
    todos["Número"] = miembro<void, Texto>(&Enlace::Número);
    todos["Canal"] = miembro<void, Texto>(&Enlace::Canal);
    todos["Usuario"] = miembro<void, Texto>(&Enlace::Usuario);
    todos["Moneda"] = miembro<void, Texto>(&Enlace::Moneda);
    todos["CambioMoneda"] = miembro<void, double>(&Enlace::CambioMoneda);
    todos["Config"] = miembro<std::string, Texto>(&Enlace::Config);
    todos["ConfigLet"] = miembro<void, Texto, Texto>(&Enlace::Config);
    todos["EmpresaAñoAnterior"] = miembro(&Enlace::EmpresaAñoAnterior);
    todos["LimpiarPendientes"] = miembro(&Enlace::LimpiarPendientes);
    todos["AñadirApunte"] = miembro(&Enlace::AñadirApunte);
    todos["AñadirAnalitica"] = miembro(&Enlace::AñadirAnalitica);
    todos["AñadirCartera"] = miembro(&Enlace::AñadirCartera);
    todos["AddVAT"] = miembro(&Enlace::AddVAT);
    todos["GrabarAsiento"] = miembro(&Enlace::GrabarAsiento);
    todos["tiposiva"] = miembro(&Enlace::tiposiva);
    todos["TotalPendiente"] = miembro(&Enlace::TotalPendiente);
    todos["GUID"] = miembro<std::string, Texto>(&Enlace::GUID);
    todos["GUIDLet"] = miembro<void, Texto, Texto>(&Enlace::GUID);
    todos["LeerFechasAsiento"] = miembro(&Enlace::LeerFechasAsiento);
    todos["LeerAsientosGuid"] = miembro(&Enlace::LeerAsientosGuid);
}

void anadirLecturas(Miembros& todos) {
    todos["LeerAsiento"] = miembro(&Enlace::LeerAsiento, Muestra::asiento);
    todos["LeerProximoAsiento"] = miembro(&Enlace::LeerProximoAsiento, Muestra::asiento);
    todos["LeerAnteriorAsiento"] = miembro(&Enlace::LeerAnteriorAsiento, Muestra::asiento);
    todos["LeerPrimerAsiento"] = miembro(&Enlace::LeerPrimerAsiento, Muestra::asiento);
    todos["LeerUltimoAsiento"] = miembro(&Enlace::LeerUltimoAsiento, Muestra::asiento);
    todos["BuscarReferencia"] = miembro(&Enlace::BuscarReferencia, Muestra::extracto);
    todos["BuscarDescripcion"] = miembro(&Enlace::BuscarDescripcion, Muestra::extracto);
    todos["BuscarImporte"] = miembro(&Enlace::BuscarImporte, Muestra::extracto);
    todos["ExisteReferencia"] = miembro(&Enlace::ExisteReferencia);
    todos["ExisteIva"] = miembro(&Enlace::ExisteIva);
    todos["LeerExtracto"] = miembro(&Enlace::LeerExtracto, Muestra::extracto);
    todos["LeerExtractoEx"] = miembro(&Enlace::LeerExtractoEx);
    todos["LeerPlan"] = miembro(&Enlace::LeerPlan, Muestra::plan);
    todos["LeerPlanEx"] = miembro(&Enlace::LeerPlanEx, Muestra::plan);
    todos["LeerDatos"] = miembro(&Enlace::LeerDatos, Muestra::datos);
    todos["LeerCartera"] = miembro(&Enlace::LeerCartera);
}

void anadirCambios(Miembros& todos) {
    todos["AnularAsiento"] = miembro(&Enlace::AnularAsiento);
    todos["AnularApuntePorReferencia"] = miembro(&Enlace::AnularApuntePorReferencia);
    todos["AnularCuenta"] = miembro(&Enlace::AnularCuenta);
    todos["CrearCuenta"] = creador(&Enlace::CrearCuenta);
    todos["CrearAnalitica"] = creador(&Enlace::CrearAnalitica);
    todos["CrearAlterna"] = creador(&Enlace::CrearAlterna);
    todos["CrearDatos"] = {22, Muestra::nada, crearDatos};
    todos["MarcarCartera"] = miembro(&Enlace::MarcarCartera);
    todos["AnularCartera"] = miembro(&Enlace::AnularCartera);
    todos["CrearPresupuesto"] = miembro(&Enlace::CrearPresupuesto);
    todos["ModificarPresupuesto"] = miembro(&Enlace::ModificarPresupuesto);
}

const Miembros& miembros() {
    static const Miembros todos = [] {
        Miembros nuevos;
        anadirSesion(nuevos);
        anadirLecturas(nuevos);
        anadirCambios(nuevos);
        return nuevos;
    }();
    return todos;
}

Argumentos sustituidos(const Enlace& enlace, Argumentos argumentos) {
    for (std::string& uno : argumentos) {
        if (uno == "{Fecha}") uno = enlace.Fecha();
        if (uno == "{Número}") uno = enlace.Número();
    }
    return argumentos;
}

}  // namespace

std::vector<Llamada> interpretarGuion(std::string_view utf8) {
    std::vector<Llamada> guion;
    int linea = 0;
    for (std::string texto : core::Partir(utf8, "\n")) {
        ++linea;
        if (texto.ends_with('\r')) texto.pop_back();
        if (core::Recortar(texto).empty() || texto.starts_with('#')) continue;
        Argumentos partes = core::Partir(texto, "\t");
        const std::string nombre = partes.front();
        partes.erase(partes.begin());
        const auto suyo = miembros().find(nombre);
        const auto rehusar = [&](const char* por) {
            std::string motivo = "línea " + std::to_string(linea);
            throw ErrorGuion(motivo.append(": ").append(por).append(" ").append(nombre));
        };
        if (suyo == miembros().end()) rehusar("no hay ningún miembro");
        if (partes.size() > suyo->second.maximo) rehusar("demasiados argumentos para");
        guion.push_back({linea, nombre, std::move(partes)});
    }
    return guion;
}

Vista llamar(link::Enlace& enlace, const Llamada& llamada) {
    const Miembro& miembro = miembros().at(llamada.miembro);
    Vista vista;
    try {
        miembro.hacer(enlace, sustituidos(enlace, llamada.argumentos), vista);
    } catch (const link::ErrorEnlace& error) {
        vista.push_back({"llamada", 0, "error", std::to_string(error.numero())});
        vista.push_back({"llamada", 0, "descripcion", error.descripcion()});
    }
    anadirMuestra(vista, enlace, miembro.muestra);
    return vista;
}

}  // namespace tarvoline::tools
