#include "tools/demo_comparar.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace tarvoline::tools {

namespace {

using link::Enlace;

// A line as a text, all its fields in their order; the number of the record is the file's own affair.
std::string texto(const link::ApunteClass& a) {
    std::ostringstream t;
    t.precision(17);
    t << a.Cuenta << '|' << a.Descripción << '|' << a.TIPO << '|' << a.Importe << '|' << a.Diario << '|'
      << int{a.Punteo} << '|' << a.Canal << '|' << a.Referencia << '|' << a.NOTAS;
    return t.str();
}

std::string texto(const link::IVAClass& i) {
    std::ostringstream t;
    t.precision(17);
    t << i.CuentaClienteProveedor << '|' << i.CuentaIVA << '|' << i.Factura << '|' << i.FechaFactura << '|'
      << i.TipoIva << '|' << i.SRTC << '|' << i.Base << '|' << i.TOTAL << '|' << i.titulo << '|' << i.NIF
      << '|' << i.NumeroOrden << '|' << i.Referencia << '|' << i.PorcRetencion << '|' << i.Liquido;
    return t.str();
}

std::string texto(const link::CarteraClass& c) {
    std::ostringstream t;
    t.precision(17);
    t << c.FechaVencimiento << '|' << c.Cuenta << '|' << c.cartera << '|' << c.NOTAS << '|' << c.Importe
      << '|' << c.Marca;
    return t.str();
}

std::string texto(const link::AnaliticaClass& a) {
    std::ostringstream t;
    t.precision(17);
    t << a.CuentaContable << '|' << a.CuentaAnalitica << '|' << a.Descripción << '|' << a.Importe;
    return t.str();
}

template <typename Item>
void anadirLineas(std::vector<std::string>& lineas, const Enlace& enlace, std::int32_t cuantas, Item item) {
    for (std::int32_t i = 1; i <= cuantas; ++i)
        lineas.push_back(texto(*(enlace.*item)(i)));
}

// The entry that the session stands on: its date and number, then all its lines.
std::vector<std::string> asiento(const Enlace& enlace) {
    std::vector<std::string> lineas{enlace.Fecha() + " " + enlace.Número()};
    anadirLineas(lineas, enlace, enlace.ContadorApuntes(), &Enlace::Apunte);
    anadirLineas(lineas, enlace, enlace.ContadorIva(), &Enlace::iva);
    anadirLineas(lineas, enlace, enlace.ContadorCartera(), &Enlace::cartera);
    anadirLineas(lineas, enlace, enlace.ContadorAnalitica(), &Enlace::Analitica);
    return lineas;
}

bool hayAsiento(const Enlace& enlace) {
    return enlace.ContadorApuntes() + enlace.ContadorIva() + enlace.ContadorCartera() > 0;
}

std::string enUnaLinea(const std::vector<std::string>& lineas, std::size_t lugar) {
    return lugar < lineas.size() ? lineas[lugar] : "(nada)";
}

std::optional<std::string> diferenciaDe(const std::vector<std::string>& una,
                                        const std::vector<std::string>& otra) {
    const auto [a, b] = std::ranges::mismatch(una, otra);
    if (a == una.end() && b == otra.end()) return std::nullopt;
    const auto lugar = static_cast<std::size_t>(a - una.begin());
    return una.front() + ": " + enUnaLinea(una, lugar) + " / " + enUnaLinea(otra, lugar);
}

void compararFilas(const std::string& una, const std::string& otra, const std::string& que,
                   Comparacion& hecha) {
    std::istringstream unas(una), otras(otra);
    std::string fila, suya;
    while (std::getline(unas, fila)) {
        if (!std::getline(otras, suya)) suya = "(nada)\r";
        if (fila != suya) {
            hecha.diferencia = que + ": ";
            hecha.diferencia->append(fila).append(" / ").append(suya);
            return;
        }
        ++hecha.filas;
    }
    if (std::getline(otras, suya)) hecha.diferencia = que + ": (nada) / " + suya;
}

void compararInmovilizado(Enlace& una, Enlace& otra, Comparacion& hecha) {
    const auto cuantos = una.LeerInmovilizado();
    const bool iguales = cuantos == otra.LeerInmovilizado();
    for (std::int32_t i = 1; i <= cuantos && iguales && !hecha.diferencia; ++i) {
        const auto uno = una.inmovilizado(i), otro = otra.inmovilizado(i);
        const bool mismo = uno->I01_Codigo_String_10 == otro->I01_Codigo_String_10 &&
                           uno->I13_Valor_Actual_Long_12 == otro->I13_Valor_Actual_Long_12;
        if (!mismo) hecha.diferencia = "inmovilizado: " + uno->I01_Codigo_String_10;
        ++hecha.filas;
    }
    if (!iguales) hecha.diferencia = "inmovilizado";
}

}  // namespace

Comparacion compararLibros(Enlace& una, Enlace& otra) {
    Comparacion hecha;
    std::set<std::string> cuentas;
    una.LeerPrimerAsiento();
    otra.LeerPrimerAsiento();
    while (hayAsiento(una) || hayAsiento(otra)) {
        hecha.diferencia = diferenciaDe(asiento(una), asiento(otra));
        if (hecha.diferencia) return hecha;
        ++hecha.asientos;
        hecha.apuntes += una.ContadorApuntes();
        for (std::int32_t i = 1; i <= una.ContadorApuntes(); ++i)
            cuentas.insert(una.Apunte(i)->Cuenta);
        una.LeerProximoAsiento();
        otra.LeerProximoAsiento();
    }
    for (const std::string& cuenta : cuentas) {
        if (una.LeerExtractoEx(cuenta) != otra.LeerExtractoEx(cuenta)) {
            hecha.diferencia = "extracto de " + cuenta;
            return hecha;
        }
        ++hecha.cuentas;
    }
    for (const char* tabla : {"PLANC", "DATOS", "IVA01", "EFECT", "PRESU", "COSTO"}) {
        compararFilas(una.Util_LeerDatos(tabla), otra.Util_LeerDatos(tabla), tabla, hecha);
        if (hecha.diferencia) return hecha;
    }
    compararInmovilizado(una, otra, hecha);
    return hecha;
}

}  // namespace tarvoline::tools
