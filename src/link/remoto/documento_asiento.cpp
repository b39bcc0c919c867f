#include "link/remoto/documento_asiento.h"

#include <algorithm>
#include <span>
#include <vector>

#include "core/texto.h"
#include "data/codec.h"
#include "data/fechas.h"
#include "data/utilidades.h"
#include "link/fechas_enlace.h"

namespace tarvoline::link::remoto {

namespace {

constexpr std::string_view finLinea = "\r\n";

using Celdas = std::vector<std::string>;

// A section: rows of one element, their cells under these names. The blank in " DIARIO" belongs to the name.
struct Seccion {
    const char* nombre;
    const char* elemento;
    std::vector<const char*> columnas;
};
const Seccion deApuntes{
    "APUNTES",
    "APUNTE",
    {"CUENTA", "DESCRIPCION", "REFERENCIA", "CANAL", "IMPORTE", "TIPO", "NOTAS", " DIARIO"}};
const Seccion deIvas{"IVAS",
                     "IVA",
                     {"CUENTA", "FACTURA", "FECHA_FRA", "BASE", "TIPO", "CUOTA", "TOTAL", "ORDEN", "TITULO",
                      "CTA_IVA", "NIF"}};
const Seccion deCarteras{"CARTERAS", "CARTERA", {"CUENTA", "CA", "NOTAS", "FECHA_VTO", "TOTAL", "TITULO"}};
const Seccion deAnalitica{"ANALITICA", "ANALI", {"CUENTA", "CODANALI", "DESCRIPCION", "IMPORTE", "TITULO"}};

std::string numero(double valor) {
    std::string texto;
    data::ponerTextoDeNumero(valor, texto);
    return texto;
}

std::string celda(std::string texto) {
    std::ranges::replace_if(
        texto, [](unsigned char c) { return c < ' '; }, ' ');
    return core::Sustituir(data::EscaparXml(core::Recortar(texto)), "\"", "&#34;");
}

void anadir(std::string& documento, const Seccion& seccion, std::span<const Celdas> filas) {
    if (filas.empty()) return;
    documento.append("<").append(seccion.nombre).append(">").append(finLinea);
    for (const Celdas& fila : filas) {
        documento.append(" <").append(seccion.elemento).append(" ");
        for (std::size_t i = 0; i < seccion.columnas.size(); ++i)
            documento.append(seccion.columnas[i]).append("=\"").append(celda(fila[i])).append("\" ");
        documento.append("/>").append(finLinea);
    }
    documento.append("</").append(seccion.nombre).append(">").append(finLinea);
}

// The service knows nothing of the session's channel.
std::string canalDe(const Sesion& sesion, const std::string& canal) {
    return canal == "N" ? sesion.canalTexto() : canal;
}

// Dates of ten characters, from whatever form they were given in.
std::string fechaLarga(const Sesion& sesion, const std::string& fecha) {
    return data::FechaCompleta(fechaDeTexto(sesion, fecha));
}

// Nothing when it is left to the service.
std::string cuota(const IVAClass& linea) {
    return linea.Base == 0 || linea.TOTAL == 0 ? std::string()
                                               : numero(data::Redondear(linea.TOTAL - linea.Base, 2));
}

template <typename Linea, typename Fila>
std::vector<Celdas> filasDe(const Coleccion<Linea>& lineas, Fila&& fila) {
    std::vector<Celdas> filas;
    for (const auto& linea : lineas)
        filas.push_back(fila(*linea));
    return filas;
}

}  // namespace

std::string documentoAsiento(const Remite& remite, const Sesion& sesion) {
    const auto linea = [](std::string_view nombre, const std::string& valor) {
        return "<" + std::string(nombre) + ">" + data::EscaparXml(valor) + "</" + std::string(nombre) + ">" +
               std::string(finLinea);
    };
    const Pendientes& pendientes = sesion.pendientes;
    std::string documento = "<?xml version=\"1.0\" standalone=\"yes\" ?>\r\n<GRABARASIENTO>\r\n";
    documento += linea("ID", remite.token);
    if (!remite.carpeta.empty()) documento += linea("CARPETA", remite.carpeta);
    documento += linea("EMPRESA", remite.empresa);
    documento += "<ASIENTOS>\r\n<ASIENTO NUMERO='" + core::Sustituir(celda(sesion.Número), "'", "&#39;") +
                 "' FECHA='" + data::FechaCompleta(sesion.Fecha) + "'>\r\n";
    anadir(documento, deApuntes, filasDe(pendientes.apuntes, [&](const ApunteClass& uno) {
               return Celdas{
                   uno.Cuenta,          uno.Descripción,          uno.Referencia, canalDe(sesion, uno.Canal),
                   numero(uno.Importe), std::to_string(uno.TIPO), uno.NOTAS,      uno.Diario};
           }));
    anadir(documento, deIvas, filasDe(pendientes.ivas, [&](const IVAClass& uno) {
               return Celdas{uno.CuentaClienteProveedor,
                             uno.Factura,
                             fechaLarga(sesion, uno.FechaFactura),
                             numero(uno.Base),
                             uno.TipoIva,
                             cuota(uno),
                             numero(uno.TOTAL),
                             uno.NumeroOrden,
                             uno.titulo,
                             uno.CuentaIVA,
                             uno.NIF};
           }));
    anadir(documento, deCarteras, filasDe(pendientes.carteras, [&](const CarteraClass& uno) {
               return Celdas{uno.Cuenta,          uno.cartera,
                             uno.NOTAS,           fechaLarga(sesion, uno.FechaVencimiento),
                             numero(uno.Importe), ""};
           }));
    anadir(
        documento, deAnalitica, filasDe(pendientes.analiticas, [](const AnaliticaClass& uno) {
            return Celdas{uno.CuentaContable, uno.CuentaAnalitica, uno.Descripción, numero(uno.Importe), ""};
        }));
    return documento + "</ASIENTO>\r\n</ASIENTOS>\r\n</GRABARASIENTO>\r\n";
}

}  // namespace tarvoline::link::remoto
