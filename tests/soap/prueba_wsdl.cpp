// WSDL texts of several makes, each held against the envelope that a client then writes.
#include <gtest/gtest.h>

#include <functional>

#include "soap/sobre.h"
#include "soap/wsdl.h"

namespace tarvoline::soap {
namespace {

// A WSDL around the parts that vary: the schemas or messages, the binding's style and use.
struct Molde {
    std::string tipos;
    std::string mensajes;
    std::string estilo = "document";
    std::string uso = "literal";
    std::string firma{};     // attributes of the operation in the port type
    std::string servicio{};  // in place of the usual one

    std::string texto() const {
        return "<?xml version='1.0'?><w:definitions xmlns:w='http://schemas.xmlsoap.org/wsdl/'"
               " xmlns:so='http://schemas.xmlsoap.org/wsdl/soap/'"
               " xmlns:so12='http://schemas.xmlsoap.org/wsdl/soap12/'"
               " xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:t='urn:t' xmlns:u='urn:u'"
               " targetNamespace='urn:t'><w:types>" +
               tipos + "</w:types>" + mensajes + "<w:portType name='P'><w:operation name='Op' " + firma +
               "><w:input message='t:In'/><w:output message='t:Out'/></w:operation></w:portType>"
               "<w:binding name='B12' type='t:P'><so12:binding/></w:binding>"
               "<w:binding name='B' type='t:P'><so:binding style='" +
               estilo + "' transport='http://schemas.xmlsoap.org/soap/http'/><w:operation name='Op'>" +
               "<so:operation soapAction='urn:t/Op'/><w:input><so:body use='" + uso +
               "' namespace='urn:rpc'/></w:input><w:output><so:body use='literal'/></w:output>"
               "</w:operation></w:binding>" +
               (servicio.empty() ? "<w:service name='S'><w:port name='P12' binding='t:B12'><so12:address "
                                   "location='http://doce/'/></w:port><w:port name='P11' binding='t:B'>"
                                   "<so:address location='http://once/'/></w:port></w:service>"
                                 : servicio) +
               "</w:definitions>";
    }
};

const std::string mensajesDocumento =
    "<w:message name='In'><w:part name='parameters' element='t:Op'/></w:message>"
    "<w:message name='Out'><w:part name='parameters' element='t:OpResponse'/></w:message>";
const std::string respuestaTipada =
    "<xs:element name='OpResponse'><xs:complexType><xs:sequence><xs:element name='OpResult' "
    "type='xs:string'/><xs:element name='n' type='xs:int'/></xs:sequence></xs:complexType></xs:element>";

std::string esquema(const std::string& dentro, const std::string& forma = "qualified") {
    return "<xs:schema targetNamespace='urn:t' elementFormDefault='" + forma + "'>" + dentro +
           respuestaTipada + "</xs:schema>";
}

// What stands in the body of a call with the arguments "x" and 7.
std::string cuerpoDe(const Molde& molde) {
    const auto servicio = LeerWsdl(molde.texto());
    std::string xml;
    EscribirLlamada(servicio.operaciones.at("Op"), std::vector<Valor>{std::string("x"), 7}, xml);
    const std::size_t abre = xml.find("<soap:Body>") + 11;
    return xml.substr(abre, xml.find("</soap:Body>") - abre);
}

const std::string dosHijos = "<xs:element name='a' type='xs:string'/><xs:element name='n' type='t:Cuenta'/>";
const std::string cuenta = "<xs:simpleType name='Cuenta'><xs:restriction base='xs:int'/></xs:simpleType>";
const std::string secuencia = "<xs:sequence>" + dosHijos + "</xs:sequence>";

TEST(Wsdl, FormasDeDocumentoYRpc) {
    const std::string directo =
        cuenta + "<xs:element name='Op'><xs:complexType>" + secuencia + "</xs:complexType></xs:element>";
    const std::string nombrado = cuenta + "<xs:element name='Op' type='t:TOp'/><xs:complexType name='TOp'>" +
                                 secuencia + "</xs:complexType>";
    const std::string heredado =
        cuenta +
        "<xs:element name='Op' type='t:TOp'/><xs:complexType name='Base'><xs:all><xs:element name='a' "
        "type='xs:string'/></xs:all></xs:complexType><xs:complexType name='TOp'><xs:complexContent>"
        "<xs:extension base='t:Base'><xs:sequence><xs:element name='n' form='unqualified' type='xs:int'/>"
        "</xs:sequence></xs:extension></xs:complexContent></xs:complexType>";
    const std::string referido =
        "<xs:import namespace='urn:u'/><xs:element name='Op'><xs:complexType><xs:sequence><xs:element "
        "ref='u:a'/><xs:element name='n' type='xs:int'/></xs:sequence></xs:complexType></xs:element>";
    const std::string esquemaU =
        "<xs:schema targetNamespace='urn:u'><xs:element name='a' type='xs:string'/></xs:schema>";
    const std::string rpc =
        "<w:message name='In'><w:part name='n' type='t:Cuenta'/><w:part name='a' type='xs:string'/>"
        "</w:message><w:message name='Out'><w:part name='r' type='xs:string'/></w:message>";
    const std::string calificada = "<m:Op xmlns:m=\"urn:t\"><m:a>x</m:a><m:n>7</m:n></m:Op>";
    const std::vector<std::tuple<const char*, Molde, std::string>> casos{
        {"inline type", {esquema(directo), mensajesDocumento}, calificada},
        {"named type", {esquema(nombrado), mensajesDocumento}, calificada},
        {"unqualified",
         {esquema(directo, "unqualified"), mensajesDocumento},
         "<m:Op xmlns:m=\"urn:t\"><a>x</a><n>7</n></m:Op>"},
        {"extension and form",
         {esquema(heredado), mensajesDocumento},
         "<m:Op xmlns:m=\"urn:t\"><m:a>x</m:a><n>7</n></m:Op>"},
        {"reference into another schema",
         {esquema(referido) + esquemaU, mensajesDocumento},
         "<m:Op xmlns:m=\"urn:t\"><a xmlns=\"urn:u\">x</a><m:n>7</m:n></m:Op>"},
        {"rpc in the signature's order",
         {esquema(cuenta), rpc, "rpc", "literal", "parameterOrder='a n'"},
         "<m:Op xmlns:m=\"urn:rpc\"><a>x</a><n>7</n></m:Op>"},
        {"rpc in the message's order",
         {esquema(cuenta), rpc, "rpc"},
         "<m:Op xmlns:m=\"urn:rpc\"><n>x</n><a>7</a></m:Op>"},
        {"encoded",
         {esquema(cuenta), rpc, "rpc", "encoded", "parameterOrder='a n'"},
         "<m:Op xmlns:m=\"urn:rpc\" soap:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\">"
         "<a xsi:type=\"xsd:string\">x</a><n xsi:type=\"xsd:int\">7</n></m:Op>"}};
    for (const auto& [nombre, molde, esperado] : casos)
        EXPECT_EQ(cuerpoDe(molde), esperado) << nombre;
}

TEST(Wsdl, EligeServicioYPuerto) {
    const Molde molde{esquema("<xs:element name='Op'/>"), mensajesDocumento};
    EXPECT_EQ(LeerWsdl(molde.texto()).direccion, "http://once/");
    EXPECT_EQ(LeerWsdl(molde.texto(), "S", "P11").direccion, "http://once/");
    EXPECT_THROW(LeerWsdl(molde.texto(), "S", "P12"), ErrorServicio);
    EXPECT_THROW(LeerWsdl(molde.texto(), "Otro"), ErrorServicio);
    Molde varios = molde;
    varios.servicio =
        "<w:service name='A'/><w:service name='B'><w:port name='Q' binding='t:B'><so:address "
        "location='http://b/'/></w:port></w:service><w:service name='C'><w:port name='Q' binding='t:B'>"
        "<so:address location='http://c/'/></w:port></w:service>";
    EXPECT_EQ(LeerWsdl(varios.texto()).direccion, "http://b/");
    EXPECT_EQ(LeerWsdl(varios.texto(), "C").direccion, "http://c/");
}

// One odd operation must not take the others with it.
TEST(Wsdl, UnaOperacionImposibleDiceSuMotivoAlLlamarla) {
    const std::string circular =
        "<xs:element name='Op' type='t:A'/><xs:complexType name='A'><xs:complexContent><xs:extension "
        "base='t:A'/></xs:complexContent></xs:complexType>";
    const std::string porElemento =
        "<w:message name='In'><w:part name='a' element='t:Op'/></w:message><w:message name='Out'/>";
    const std::vector<std::pair<const char*, Molde>> casos{
        {"simple element", {esquema("<xs:element name='Op' type='xs:string'/>"), mensajesDocumento}},
        {"unknown element", {esquema(""), mensajesDocumento}},
        {"no messages", {esquema(""), ""}},
        {"type that extends itself", {esquema(circular), mensajesDocumento}},
        {"rpc with elements", {esquema(""), porElemento, "rpc"}}};
    for (const auto& [nombre, molde] : casos) {
        const auto servicio = LeerWsdl(molde.texto());
        std::string xml;
        EXPECT_THROW(EscribirLlamada(servicio.operaciones.at("Op"), {}, xml), ErrorServicio) << nombre;
    }
    EXPECT_THROW(LeerWsdl("<definitions/>"), ErrorServicio);
    EXPECT_THROW(LeerWsdl("<html><body>hola</body></html>"), ErrorServicio);
    EXPECT_THROW(LeerWsdl("<!DOCTYPE definitions><definitions/>"), ErrorServicio);
}

TEST(Respuesta, RepartePartesPorSuNombre) {
    const Molde molde{esquema(cuenta + "<xs:element name='Op'><xs:complexType>" + secuencia +
                              "</xs:complexType></xs:element>"),
                      mensajesDocumento};
    const auto servicio = LeerWsdl(molde.texto());
    const auto leer = [&](const std::string& dentro, std::vector<Valor>& argumentos) {
        return LeerRespuesta(servicio.operaciones.at("Op"),
                             "<s:Envelope xmlns:s='urn:s'><s:Body>" + dentro + "</s:Body></s:Envelope>",
                             argumentos);
    };
    std::vector<Valor> argumentos{std::string("x"), 7};
    EXPECT_EQ(leer("<OpResponse><n>9</n><OpResult> uno </OpResult><Otro>dos</Otro></OpResponse>", argumentos),
              " uno ");
    EXPECT_EQ(argumentos, (std::vector<Valor>{std::string("x"), 9}));
    EXPECT_EQ(leer("<OpResponse><n a:nil='true' xmlns:a='urn:n'/></OpResponse>", argumentos), "");
    EXPECT_EQ(std::get<std::int32_t>(argumentos[1]), 0);
    for (const char* malo : {"", "<OtraResponse/>", "<OpResponse><n>nueve</n></OpResponse>"}) {
        EXPECT_THROW(leer(malo, argumentos), ErrorServicio) << malo;
    }
}

}  // namespace
}  // namespace tarvoline::soap
