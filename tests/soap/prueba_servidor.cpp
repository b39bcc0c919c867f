// The server half alone, and against the client's own envelopes.
#include <gtest/gtest.h>

#include <functional>
#include <numeric>

#include "contrato_prueba.h"
#include "soap/servidor.h"
#include "soap/sobre.h"
#include "soap/wsdl.h"

namespace tarvoline::soap {
namespace {

using pruebas::aBytes;
using pruebas::contratoPrueba;

std::string sobre(std::string_view cuerpo, std::string_view cabecera = {}) {
    return "<?xml version=\"1.0\"?><e:Envelope xmlns:e=\"http://schemas.xmlsoap.org/soap/envelope/\">" +
           std::string(cabecera) + "<e:Body>" + std::string(cuerpo) + "</e:Body></e:Envelope>";
}

TEST(Peticion, AdmitePrefijosHuecosComentariosYOtraCodificacion) {
    const auto contrato = contratoPrueba();
    const auto xml = sobre(
        "<x:Guardar xmlns:x='urn:almacen'><!-- a --><x:posicion> +12 </x:posicion>\n<x:otro><y/></x:otro>"
        "<x:nombre>a&amp;b<!-- c --> <![CDATA[<c>]]>&#241;&#xD;</x:nombre></x:Guardar>",
        "<e:Header><s:id xmlns:s='urn:s'>1</s:id></e:Header>");
    const auto peticion = LeerPeticion(contrato, xml);
    ASSERT_EQ(peticion.operacion, contrato.operacion("Guardar"));
    ASSERT_EQ(peticion.argumentos.size(), 4U);
    EXPECT_EQ(std::get<std::string>(peticion.argumentos[0]), "a&b <c>ñ\r");
    EXPECT_EQ(std::get<Bytes>(peticion.argumentos[1]), Bytes{});
    EXPECT_EQ(std::get<std::int32_t>(peticion.argumentos[2]), 12);
    EXPECT_EQ(std::get<std::string>(peticion.argumentos[3]), "");

    const std::string cuerpo =
        "<Envelope><Body><Guardar><nombre>Espa\xF1"
        "a</nombre></Guardar></Body></Envelope>";
    const auto latina = LeerPeticion(contrato, "<?xml version='1.0' encoding='ISO-8859-1'?>" + cuerpo);
    EXPECT_EQ(std::get<std::string>(latina.argumentos[0]), "España");
    const auto marcada = LeerPeticion(contrato, "\xEF\xBB\xBF" + sobre("<DTS/>"));
    EXPECT_EQ(marcada.operacion->nombre, "DTS");
}

TEST(Peticion, RechazaLoQueNoEntiende) {
    const auto contrato = contratoPrueba();
    const std::string bombas =
        "<!DOCTYPE a [<!ENTITY b \"bb\"><!ENTITY c \"&b;&b;&b;\">]>" + sobre("<DTS>&c;</DTS>").substr(21);
    const std::vector<std::pair<const char*, std::string>> casos{
        {"nothing", ""},
        {"no XML", "hola"},
        {"doctype", bombas},
        {"doctype after a comment", "<?xml version='1.0'?><!-- x --><!DOCTYPE a><a/>"},
        {"unknown operation", sobre("<Borrar/>")},
        {"no operation", sobre("")},
        {"two operations", sobre("<DTS/><DTS/>")},
        {"two bodies", "<Envelope><Body><DTS/></Body><Body><DTS/></Body></Envelope>"},
        {"two roots", sobre("<DTS/>") + sobre("<DTS/>")},
        {"must be understood",
         sobre("<DTS/>", "<e:Header><s:id xmlns:s='urn:s' e:mustUnderstand='1'/></e:Header>")},
        {"letters as integer", sobre("<Guardar><posicion>1a</posicion></Guardar>")},
        {"empty integer", sobre("<Guardar><posicion/></Guardar>")},
        {"integer out of range", sobre("<Guardar><posicion>2147483648</posicion></Guardar>")},
        {"bad Base64", sobre("<Guardar><bytes>QUJ*</bytes></Guardar>")},
        {"repeated parameter", sobre("<Guardar><nombre>a</nombre><nombre>b</nombre></Guardar>")},
        {"unknown entity", sobre("<Guardar><nombre>&nada;</nombre></Guardar>")},
        {"zero character", sobre("<Guardar><nombre>a&#0;b</nombre></Guardar>")},
        {"bad UTF-8 in a long text",
         sobre("<Guardar><nombre>" + std::string(4000, 'a') + "\xFF</nombre></Guardar>")},
        {"control character", sobre("<Guardar><nombre>a\x01"
                                    "0</nombre></Guardar>")},
        {"other encoding", "<?xml version='1.0' encoding='utf-16'?>" + sobre("<DTS/>").substr(21)},
        {"crossed tags", sobre("<DTS><a></DTS></a>")},
        {"cut", sobre("<DTS/>").substr(0, 90)},
        {"cut in a long text", sobre("<Guardar><bytes>" + std::string(9000, 'A')).substr(0, 5000)},
    };
    for (const auto& [nombre, xml] : casos) {
        EXPECT_THROW(LeerPeticion(contrato, xml), ErrorServicio) << nombre;
    }
    // Nor does it fall over a million levels, or a million elements.
    std::string abiertos, sueltos;
    for (int i = 0; i < 1'000'000; ++i)
        abiertos += "<a>", sueltos += "<a/>";
    EXPECT_THROW(LeerPeticion(contrato, abiertos), ErrorServicio);
    EXPECT_THROW(LeerPeticion(contrato, sobre(sueltos)), ErrorServicio);
}

// Everything the client writes, the server half reads; everything that writes, the client reads back.
TEST(IdaYVuelta, TodaClaseDeValorLlegaIgual) {
    const auto contrato = contratoPrueba();
    const auto servicio = LeerWsdl(EscribirWsdl(contrato, "http://127.0.0.1/a?b=1&c=2"));
    EXPECT_EQ(servicio.direccion, "http://127.0.0.1/a?b=1&c=2");
    const auto& guardar = servicio.operaciones.at("Guardar");
    EXPECT_EQ(guardar.accion, "urn:almacen/Guardar");
    std::string todos;
    for (int c = 0; c < 256; ++c)
        todos += static_cast<char>(c);
    const std::string pieza(262145, '\x80');
    const std::string raro = " \r\n\t<&>\"']]>&#241; ñ€😀\x7F ";
    for (const auto& bytes : {std::string{}, std::string(1, '\0'), todos, pieza}) {
        for (const std::int32_t numero : {0, -1, INT32_MAX, INT32_MIN}) {
            const std::string largo = raro + std::string(bytes.size(), 'z') + raro;
            std::vector<Valor> enviados{largo, aBytes(bytes), numero, std::string("  ")};
            std::string xml;
            EscribirLlamada(guardar, enviados, xml);
            auto peticion = LeerPeticion(contrato, xml);
            ASSERT_EQ(peticion.argumentos, enviados);
            peticion.argumentos[2] = numero / 2;
            peticion.argumentos[3] = raro;
            const auto respuesta = EscribirRespuesta(contrato, peticion, largo);
            ASSERT_EQ(LeerRespuesta(guardar, respuesta, enviados), largo);
            ASSERT_EQ(enviados, peticion.argumentos);
        }
    }
}

TEST(IdaYVuelta, LoQueXmlNoLlevaSeRechazaAlPedirYSeSustituyeAlContestar) {
    const auto contrato = contratoPrueba();
    const auto servicio = LeerWsdl(EscribirWsdl(contrato, "http://h/"));
    const auto& guardar = servicio.operaciones.at("Guardar");
    const std::vector<std::pair<std::string, std::string>> casos{
        {"a\x01z", "a?z"},       {std::string("a\0z", 3), "a?z"},
        {"a\xFFz", "a?z"},       {"a\xC3", "a?"},
        {"\xC0\xAF", "??"},      {"\xED\xA0\x80", "???"},
        {"\xEF\xBF\xBF", "???"}, {"\xF5\x80\x80\x80", "????"}};
    for (const auto& [texto, sustituido] : casos) {
        std::vector<Valor> argumentos{texto, Bytes{}, 0, std::string{}};
        std::string xml;
        EXPECT_THROW(EscribirLlamada(guardar, argumentos, xml), ErrorServicio) << sustituido;
        const PeticionSoap peticion{contrato.operacion("Guardar"), argumentos};
        const auto respuesta = EscribirRespuesta(contrato, peticion, texto);
        EXPECT_EQ(LeerRespuesta(guardar, respuesta, argumentos), sustituido);
    }
}

}  // namespace
}  // namespace tarvoline::soap
