// The client against a server that plays every bad day: what is raised, and what went over the wire.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "contrato_prueba.h"

namespace tarvoline::soap {
namespace {

using pruebas::aBytes;
using pruebas::Actuacion;
using pruebas::PeticionGuion;
using pruebas::respuestaDts;
using pruebas::ServicioGuion;
using pruebas::ServidorGuion;

Actuacion soapBien(std::string_view resultado = "bien") {
    return Actuacion::http(200, "text/xml; charset=utf-8", respuestaDts(resultado));
}

TEST(Cliente, UnaSolaLineaYUnSoloWsdlParaTodos) {
    ServicioGuion s([](const PeticionGuion&) { return soapBien("ñ & <"); });
    std::vector<bool> esperas;
    s.conexion.alEsperar = [&](bool empieza) { esperas.push_back(empieza); };
    for (int i = 0; i < 5; ++i) {
        ClienteSoap cliente(s.conexion);
        cliente.Iniciar(s.servidor.url("/almacen.asmx?wsdl"));
        EXPECT_TRUE(cliente.ofrece("DTS"));
        EXPECT_FALSE(cliente.ofrece("dts"));
        EXPECT_EQ(cliente.Llamar("DTS", {}), "ñ & <");
    }
    EXPECT_EQ(s.servidor.conexiones(), 1);
    EXPECT_EQ(s.servidor.cuantas("GET"), 1U);
    EXPECT_EQ(s.servidor.cuantas("POST"), 5U);
    EXPECT_EQ(esperas, (std::vector<bool>{true, false, true, false, true, false, true, false, true, false,
                                          true, false}));
    const auto ultima = s.servidor.peticiones().back();
    EXPECT_EQ(ultima.ruta, "/almacen.asmx");
    EXPECT_EQ(ultima.cabeceras.at("soapaction"), "\"urn:almacen/DTS\"");
    EXPECT_EQ(ultima.cabeceras.at("content-type"), "text/xml; charset=utf-8");
    EXPECT_FALSE(ultima.cabeceras.contains("expect"));
}

TEST(Cliente, UnaPiezaVaYVuelveConSusValoresPorReferencia) {
    const auto contrato = pruebas::contratoPrueba();
    ServicioGuion s([&](const PeticionGuion& p) {
        auto peticion = LeerPeticion(contrato, p.cuerpo);
        auto& bytes = std::get<Bytes>(peticion.argumentos[1]);
        std::reverse(bytes.begin(), bytes.end());
        ++std::get<std::int32_t>(peticion.argumentos[2]);
        peticion.argumentos[3] = std::get<std::string>(peticion.argumentos[0]) + "!";
        return Actuacion::http(200, "text/xml", EscribirRespuesta(contrato, peticion, "hecho"));
    });
    s.iniciar();
    std::string pieza(262145, '\0');
    for (std::size_t i = 0; i < pieza.size(); ++i)
        pieza[i] = static_cast<char>(i * 7);
    std::vector<Valor> argumentos{std::string("año.zip"), aBytes(pieza), 41, std::string{}};
    EXPECT_EQ(s.cliente.Llamar("Guardar", argumentos), "hecho");
    std::reverse(pieza.begin(), pieza.end());
    EXPECT_EQ(argumentos,
              (std::vector<Valor>{std::string("año.zip"), aBytes(pieza), 42, std::string("año.zip!")}));
}

// A window paints by this beat; what it throws (its end) reaches the caller, and the line serves again.
TEST(Cliente, LateMientrasEspera) {
    std::atomic<int> latidos{0};
    std::atomic<bool> soltar{false};
    ServicioGuion s([&](const PeticionGuion&) {
        while (latidos < 2 && !soltar)
            std::this_thread::yield();
        return soapBien();
    });
    s.iniciar();
    s.conexion.alLatir = [&] { ++latidos; };
    EXPECT_EQ(s.cliente.Llamar("DTS", {}), "bien");
    EXPECT_GE(latidos, 2);
    struct Fin {};
    latidos = 0;
    s.conexion.alLatir = [&] {
        soltar = true;
        throw Fin{};
    };
    EXPECT_THROW(s.cliente.Llamar("DTS", {}), Fin);
    s.conexion.alLatir = nullptr;
    EXPECT_EQ(s.cliente.Llamar("DTS", {}), "bien");
}

// The server has worked the request, then the line breaks: whatever the cause, it must not come again.
TEST(Cliente, NingunaPeticionSaleDosVeces) {
    const std::string pieza(262145, 'p');
    const std::vector<std::pair<const char*, Actuacion>> casos{
        {"closed without an answer", Actuacion::cortar()},
        {"cut in the head", Actuacion::cruda("HTTP/1.1 200 OK\r\nContent-Le")},
        {"closed after 100", Actuacion::cruda("HTTP/1.1 100 Continue\r\n\r\n")},
        {"417", Actuacion::http(417, "text/plain", "")},
        {"401 with a challenge",
         Actuacion::http(401, "text/plain", "", "WWW-Authenticate: Basic realm=\"x\"\r\n")},
        {"407 with a challenge", Actuacion::http(407, "text/plain", "", "Proxy-Authenticate: NTLM\r\n")},
        {"408", Actuacion::http(408, "", "", "Connection: close\r\n")},
        {"503 retry later", Actuacion::http(503, "text/plain", "", "Retry-After: 0\r\n")},
        {"redirected", Actuacion::http(307, "", "", "Location: /otra.asmx\r\n")}};
    for (const auto& [nombre, actuacion] : casos) {
        std::atomic<bool> estropeado = false;
        ServicioGuion s([&, &actuacion = actuacion](const PeticionGuion&) {
            return estropeado ? actuacion : soapBien();
        });
        s.iniciar();
        ASSERT_EQ(s.dts(), "bien");  // the line is now kept alive
        estropeado = true;
        const auto antes = s.servidor.peticiones().size();
        std::vector<Valor> argumentos{std::string("a"), aBytes(pieza), 1, std::string{}};
        EXPECT_THROW(s.cliente.Llamar("Guardar", argumentos), ErrorServicio) << nombre;
        EXPECT_NE(s.falloDeDts(), "") << nombre;
        const auto despues = s.servidor.peticiones();
        ASSERT_EQ(despues.size(), antes + 2) << nombre;
        EXPECT_EQ(despues[antes].conexion, 1) << nombre << ": the kept-alive line was used";
    }
}

TEST(Cliente, CadaMalaRespuestaTieneSuDescripcion) {
    const std::string bien = respuestaDts("x");
    const std::string cabeza = "HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n";
    const std::vector<std::pair<Actuacion, std::string>> casos{
        {Actuacion::http(500, "text/html", "<html>mal</html>"), "estado HTTP 500"},
        {Actuacion::http(500, "text/xml", "<a/>"), "estado HTTP 500"},
        {Actuacion::http(404, "text/html", ""), "estado HTTP 404"},
        {Actuacion::http(302, "", "", "Location: ftp://127.0.0.1/\r\n"), "estado HTTP 302"},
        {Actuacion::http(200, "text/html; charset=utf-8", "<html><body>Entrar</body></html>"), "página web"},
        {Actuacion::http(200, "application/json", "{}"), "application/json"},
        {Actuacion::http(200, "text/xml", ""), "vacía"},
        {Actuacion::http(200, "text/xml", "no es xml"), "no es XML"},
        {Actuacion::http(200, "text/xml", bien.substr(0, bien.size() - 20)), "cortada"},
        {Actuacion::http(200, "text/xml", "<!DOCTYPE l [<!ENTITY a \"a\">]><l>&a;</l>"), "DOCTYPE"},
        {Actuacion::http(200, "text/xml", "<a/>"), "no es un sobre"},
        {Actuacion::http(200, "text/xml", "<Envelope><Body/></Envelope>"), "no tiene contenido"},
        {Actuacion::cruda(cabeza + "Content-Length: 9999\r\n\r\n" + bien), "cortada"},
        {Actuacion::cruda(cabeza + "Transfer-Encoding: chunked\r\n\r\n40\r\n<Envelope>"), "cortad"},
        {Actuacion::cruda(cabeza + "Transfer-Encoding: chunked\r\n\r\nzz\r\n"), "se cortó"},
        {Actuacion::cruda("basura\r\n\r\n"), "protocolo HTTP"},
        {Actuacion::cruda(cabeza + "\r\n" + bien.substr(0, 200)), "cortada"},
    };
    for (const auto& [actuacion, esperado] : casos) {
        ServicioGuion s([&, &actuacion = actuacion](const PeticionGuion&) { return actuacion; });
        s.iniciar();
        const std::string fallo = s.falloDeDts();
        EXPECT_NE(fallo.find(esperado), std::string::npos) << esperado << " / " << fallo;
        EXPECT_EQ(s.cliente.detail(), "");
    }
}

TEST(Cliente, UnFalloDelServicioDaTextoYDetalle) {
    const auto sobre = [](std::string_view dentro) {
        return "<e:Envelope xmlns:e='urn:e'><e:Body>" + std::string(dentro) + "</e:Body></e:Envelope>";
    };
    const std::string anidado = sobre(
        "<e:Fault><faultcode>e:Server</faultcode><faultstring> se rompió </faultstring><detail>\n"
        "  <d><code>7</code>\n  <why>por &lt;eso&gt;</why></d></detail></e:Fault>");
    const std::string nuevo = sobre(
        "<e:Fault><e:Code/><e:Reason><e:Text>se rompió</e:Text></e:Reason><e:Detail>7 por &lt;eso&gt;"
        "</e:Detail></e:Fault>");
    for (const int estado : {200, 500, 400}) {
        for (const auto& cuerpo : {anidado, nuevo, EscribirFallo("Server", "se rompió", "7 por <eso>")}) {
            std::atomic<bool> roto = true;
            ServicioGuion s([&](const PeticionGuion&) {
                return roto ? Actuacion::http(estado, "text/xml", cuerpo) : soapBien();
            });
            s.iniciar();
            EXPECT_EQ(s.falloDeDts(), "se rompió") << estado;
            EXPECT_EQ(s.cliente.detail(), "7 por <eso>");
            roto = false;
            EXPECT_EQ(s.dts(), "bien");
            EXPECT_EQ(s.cliente.detail(), "7 por <eso>") << "of the last failed call";
            EXPECT_EQ(s.servidor.conexiones(), 1) << "a fault does not cost the line";
        }
    }
}

TEST(Cliente, UnaRespuestaMayorQueElLimiteSeCortaAlRecibirla) {
    const std::string enorme = respuestaDts(std::string(100'000, 'x'));
    const std::string cabeza = "HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n";
    std::string renglones;
    for (int i = 0; i < 5000; ++i)
        renglones += "X-" + std::to_string(i) + ": " + std::string(90, 'x') + "\r\n";
    for (const auto& actuacion :
         {Actuacion::http(200, "text/xml", enorme), Actuacion::cruda(cabeza + "\r\n" + enorme),
          Actuacion::cruda(cabeza + renglones + "\r\n" + respuestaDts("x"))}) {
        ServicioGuion s([&](const PeticionGuion&) { return actuacion; }, {.respuestaMaxima = 50'000});
        s.iniciar();
        EXPECT_EQ(s.falloDeDts(), "la respuesta del servicio es demasiado grande");
    }
    ServicioGuion justo([&](const PeticionGuion&) { return Actuacion::http(200, "text/xml", enorme); },
                        {.respuestaMaxima = enorme.size()});
    justo.iniciar();
    EXPECT_EQ(justo.dts().size(), 100'000U);
}

TEST(Cliente, LoQueNoPuedeSalirNoSale) {
    ServicioGuion s([](const PeticionGuion&) { return soapBien(); });
    EXPECT_THROW(s.dts(), ErrorServicio) << "before its WSDL was read";
    s.iniciar();
    std::vector<Valor> pocos{std::string("a")};
    std::vector<Valor> control{std::string("a\x02"), Bytes{}, 0, std::string{}};
    EXPECT_THROW(s.cliente.Llamar("Guardar", pocos), ErrorServicio);
    EXPECT_THROW(s.cliente.Llamar("Guardar", control), ErrorServicio);
    EXPECT_THROW(s.cliente.Llamar("Otra", {}), ErrorServicio);
    EXPECT_EQ(s.servidor.cuantas("POST"), 0U);
    for (const char* url : {"", "http://", "http:///qzbackup/service.asmx?wsdl", "file:///etc/passwd",
                            "ftp://127.0.0.1/x", "servidor/x?wsdl", "http://no existe/"}) {
        try {
            s.cliente.Iniciar(url);
            ADD_FAILURE() << url;
        } catch (const ErrorServicio& error) {
            EXPECT_STREQ(error.what(), "la dirección del servicio no es válida") << url;
        }
    }
}

TEST(Cliente, UnServicioQueSeFueYVuelveEnOtroSitioSeEncuentra) {
    std::string direccion;
    ServidorGuion descripcion([&](const PeticionGuion&) {
        return Actuacion::http(200, "text/xml", EscribirWsdl(pruebas::contratoPrueba(), direccion));
    });
    ServidorGuion viejo([](const PeticionGuion&) { return soapBien("viejo"); });
    ServidorGuion nuevo([](const PeticionGuion&) { return soapBien("nuevo"); });
    direccion = viejo.url("/a");
    Conexion conexion;
    ClienteSoap cliente(conexion);
    cliente.Iniciar(descripcion.url("/?wsdl"));
    EXPECT_EQ(cliente.Llamar("DTS", {}), "viejo");
    viejo.parar();
    direccion = nuevo.url("/a");
    EXPECT_THROW(cliente.Llamar("DTS", {}), ErrorServicio);
    cliente.Iniciar(descripcion.url("/?wsdl"));
    EXPECT_EQ(cliente.Llamar("DTS", {}), "nuevo");
}

}  // namespace
}  // namespace tarvoline::soap
