// The contract as the WSDL document that a client reads.
#include "soap/servidor.h"
#include "soap/xml.h"

namespace tarvoline::soap {
namespace {

// Appends pieces: fixed text as it stands, everything else escaped.
class Redactor {
  public:
    struct Fijo {
        std::string_view texto;
    };
    Redactor& operator<<(Fijo fijo) {
        xml_ += fijo.texto;
        return *this;
    }
    Redactor& operator<<(std::string_view valor) {
        escaparXml(valor, xml_, Impropio::rechazar);
        return *this;
    }
    std::string tomar() { return std::move(xml_); }

  private:
    std::string xml_;
};

constexpr Redactor::Fijo operator""_x(const char* texto, std::size_t longitud) {
    return {{texto, longitud}};
}

void escribirElemento(Redactor& r, const Parametro& parametro) {
    const bool entero = parametro.tipo == TipoValor::entero;
    r << "          <s:element minOccurs=\""_x << (entero ? "1"_x : "0"_x) << "\" maxOccurs=\"1\" name=\""_x
      << parametro.nombre << "\" type=\"s:"_x
      << (entero                               ? "int"_x
          : parametro.tipo == TipoValor::bytes ? "base64Binary"_x
                                               : "string"_x)
      << "\"/>\n"_x;
}

void abrirTipo(Redactor& r, const std::string& nombre) {
    r << "      <s:element name=\""_x << nombre << "\">\n        <s:complexType><s:sequence>\n"_x;
}

void cerrarTipo(Redactor& r) {
    r << "        </s:sequence></s:complexType>\n      </s:element>\n"_x;
}

void escribirTipos(Redactor& r, const Contrato& contrato) {
    r << "  <wsdl:types>\n    <s:schema elementFormDefault=\"qualified\" targetNamespace=\""_x
      << contrato.espacioNombres << "\">\n"_x;
    for (const auto& operacion : contrato.operaciones) {
        abrirTipo(r, operacion.nombre);
        for (const auto& parametro : operacion.parametros)
            escribirElemento(r, parametro);
        cerrarTipo(r);
        abrirTipo(r, operacion.nombre + "Response");
        escribirElemento(r, {operacion.nombre + "Result"});
        for (const auto& parametro : operacion.parametros) {
            if (parametro.porReferencia) escribirElemento(r, parametro);
        }
        cerrarTipo(r);
    }
    r << "    </s:schema>\n  </wsdl:types>\n"_x;
}

void escribirMensajes(Redactor& r, const Contrato& contrato) {
    for (const auto& operacion : contrato.operaciones) {
        r << "  <wsdl:message name=\""_x << operacion.nombre
          << "SoapIn\"><wsdl:part name=\"parameters\" element=\"tns:"_x << operacion.nombre
          << "\"/></wsdl:message>\n  <wsdl:message name=\""_x << operacion.nombre
          << "SoapOut\"><wsdl:part name=\"parameters\" element=\"tns:"_x << operacion.nombre
          << "Response\"/></wsdl:message>\n"_x;
    }
}

void escribirPuerto(Redactor& r, const Contrato& contrato) {
    r << "  <wsdl:portType name=\""_x << contrato.servicio << "Soap\">\n"_x;
    for (const auto& operacion : contrato.operaciones) {
        r << "    <wsdl:operation name=\""_x << operacion.nombre << "\"><wsdl:input message=\"tns:"_x
          << operacion.nombre << "SoapIn\"/><wsdl:output message=\"tns:"_x << operacion.nombre
          << "SoapOut\"/></wsdl:operation>\n"_x;
    }
    r << "  </wsdl:portType>\n"_x;
}

void escribirEnlace(Redactor& r, const Contrato& contrato) {
    r << "  <wsdl:binding name=\""_x << contrato.servicio << "Soap\" type=\"tns:"_x << contrato.servicio
      << "Soap\">\n    <soap:binding transport=\"http://schemas.xmlsoap.org/soap/http\"/>\n"_x;
    const bool conBarra = contrato.espacioNombres.ends_with('/');
    for (const auto& operacion : contrato.operaciones) {
        r << "    <wsdl:operation name=\""_x << operacion.nombre << "\"><soap:operation soapAction=\""_x
          << contrato.espacioNombres << (conBarra ? ""_x : "/"_x) << operacion.nombre
          << "\" style=\"document\"/><wsdl:input><soap:body use=\"literal\"/></wsdl:input>"_x
          << "<wsdl:output><soap:body use=\"literal\"/></wsdl:output></wsdl:operation>\n"_x;
    }
    r << "  </wsdl:binding>\n"_x;
}

}  // namespace

std::string EscribirWsdl(const Contrato& contrato, std::string_view direccion) {
    Redactor r;
    r << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"_x
      << "<wsdl:definitions xmlns:wsdl=\"http://schemas.xmlsoap.org/wsdl/\""_x
      << " xmlns:soap=\"http://schemas.xmlsoap.org/wsdl/soap/\""_x
      << " xmlns:s=\"http://www.w3.org/2001/XMLSchema\" xmlns:tns=\""_x << contrato.espacioNombres
      << "\" targetNamespace=\""_x << contrato.espacioNombres << "\">\n"_x;
    escribirTipos(r, contrato);
    escribirMensajes(r, contrato);
    escribirPuerto(r, contrato);
    escribirEnlace(r, contrato);
    r << "  <wsdl:service name=\""_x << contrato.servicio << "\"><wsdl:port name=\""_x << contrato.servicio
      << "Soap\" binding=\"tns:"_x << contrato.servicio << "Soap\"><soap:address location=\""_x << direccion
      << "\"/></wsdl:port></wsdl:service>\n</wsdl:definitions>\n"_x;
    return r.tomar();
}

}  // namespace tarvoline::soap
