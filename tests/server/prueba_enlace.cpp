// The accounting link of the service: who comes in, whose books he sees, and what it refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <thread>

#include "cliente_enlace.h"
#include "data/utilidades.h"
#include "server/enlace_operaciones.h"
#include "server/opciones.h"
#include "servicio_prueba.h"

namespace tarvoline::pruebas {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct EnlaceServicio : testing::Test, ServicioEnMarcha {
    EnlaceServicio() {
        servicio->usuarios().modificar({.usuario = "ANA", .tipo = "00"});
        ana.entrar("ANA", "secreta1");
        EXPECT_EQ(ana.en("Libros", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    }
    static std::string asiento(const std::string& apuntes, const std::string& fecha = "15/03/2026") {
        return "<ASIENTOS><ASIENTO NUMERO='(Auto)' FECHA='" + fecha + "'><APUNTES>" + apuntes +
               "</APUNTES></ASIENTO></ASIENTOS>";
    }
    static std::string apunte(const std::string& descripcion) {
        return "<APUNTE CUENTA='5700000000' DESCRIPCION='" + descripcion +
               "' IMPORTE='5' TIPO='1' DIARIO='1' CANAL='000'/>";
    }

    ClienteEnlace ana{servicio->puerto()};
};

TEST_F(EnlaceServicio, QuienEntraYConQueTipo) {
    ClienteEnlace otro(servicio->puerto());
    EXPECT_THAT(otro.entrar("BEA", "mala"), StartsWith("ERROR"));
    EXPECT_THAT(otro.entrar("NADIE", "secreta1"), StartsWith("ERROR"));
    EXPECT_THAT(otro.entrar("BEA", "secreta2"), HasSubstr("\tBEA\t01\tU0000002\tBea\t"))
        << "as a new user is";
    EXPECT_EQ(otro.forma("LEEREMPRESAS"), "");
    EXPECT_EQ(ana.forma("LEEREMPRESAS"), "Libros\n");
    EXPECT_EQ(ana.forma("LEERCARPETASVELDORIX2"), "U0000001,U0000002");
    EXPECT_EQ(otro.forma("LEERCARPETASVELDORIX2"), "U0000002");

    servicio->usuarios().modificar({.usuario = "BEA", .tipo = "02"});
    EXPECT_THAT(otro.forma("LEEREMPRESAS"), StartsWith("ERROR")) << "his session ends";
    EXPECT_THAT(otro.entrar("BEA", "secreta2"), StartsWith("\tBEA\t02\t")) << "without a token";
    EXPECT_THAT(otro.forma("LEEREMPRESAS"), StartsWith("ERROR"));
    servicio->usuarios().baja("ANA");
    EXPECT_THAT(ana.forma("LEEREMPRESAS"), StartsWith("ERROR"));
    EXPECT_THROW(servicio->usuarios().modificar({.usuario = "BEA", .tipo = "03"}), server::ErrorServidor);
}

// An administrator sees the folders of his account; nobody sees anything else.
TEST_F(EnlaceServicio, LasCarpetasDeCadaUno) {
    ClienteEnlace bea(servicio->puerto()), carla(servicio->puerto());
    bea.entrar("BEA", "secreta2");
    carla.entrar("CARLA", "secreta3");
    EXPECT_EQ(bea.en("De Bea", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    EXPECT_EQ(carla.en("Errores SL", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    EXPECT_EQ(carla.forma("LEEREMPRESAS"), "\nErrores SL\n") << "a name is no failure";
    EXPECT_EQ(ana.forma("LEEREMPRESAS", "<CARPETA>u0000002</CARPETA>"), "De Bea\n");
    EXPECT_EQ(ana.forma("LEEREMPRESAS"), "Libros\n") << "and back in her own";
    for (const char* ajena : {"U0000001", "U0000003", "../U0000001", "U0000002/../U0000001", "/etc", "."}) {
        EXPECT_THAT(bea.forma("LEEREMPRESAS", std::string("<CARPETA>") + ajena + "</CARPETA>"),
                    StartsWith("ERROR: no hay ninguna carpeta"))
            << ajena;
    }
    EXPECT_THAT(carla.forma("LEEREMPRESAS", "<CARPETA>U0000001</CARPETA>"), StartsWith("ERROR"));
    EXPECT_THAT(ana.forma("LEEREMPRESAS", "<CARPETA>U0000003</CARPETA>"), StartsWith("ERROR"))
        << "another account";
    for (const char* empresa : {"../U0000002/De Bea", "De Bea", "", ".", "*", "Libros.QZT/x", "comunes"}) {
        EXPECT_EQ(ana.en(empresa, "EMPRESAEXISTS"), "NO") << empresa;
        EXPECT_THAT(ana.en(empresa, "GETTOTAL", "<VALOR>NIVEL</VALOR>"), StartsWith("ERROR")) << empresa;
        EXPECT_THAT(ana.en(std::string("../") + empresa, "CREAREMPRESA", "<VALOR>/C/A=26</VALOR>"),
                    StartsWith("ERROR"));
    }
    EXPECT_THAT(ana.en("libros", "CREAREMPRESA", "<VALOR>/C/A=26</VALOR>"), HasSubstr("ya existe"));
    EXPECT_EQ(ana.en("LIBROS.qzt", "EMPRESAEXISTS"), "SI") << "names as files have them";
}

TEST_F(EnlaceServicio, FormasQueNoLoSon) {
    const std::string profundo = [] {
        std::string texto;
        for (int i = 0; i < 5000; ++i)
            texto += "<A>";
        return texto;
    }();
    std::string muchos;
    for (int i = 0; i < 100; ++i)
        muchos += "<C" + std::to_string(i) + "/>";
    for (const std::string& mala :
         {std::string(), std::string("hola"), std::string("<BUSCAR>"), std::string("<R/>"), profundo,
          "<LEEREMPRESAS><ID>" + ana.token, std::string("<LEEREMPRESAS><ID>otro</ID></LEEREMPRESAS>"),
          "<!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><LEEREMPRESAS><ID>" + ana.token +
              "</ID></LEEREMPRESAS>",
          "<LEEREMPRESAS><ID>" + ana.token + "</ID>" + muchos + "</LEEREMPRESAS>",
          "<LEEREMPRESAS><ID>" + ana.token + "</ID><malo/></LEEREMPRESAS>",
          "<LEEREMPRESAS><ID>" + ana.token + "</ID><VALOR>" + std::string(1'100'000, 'x') +
              "</VALOR></LEEREMPRESAS>"}) {
        EXPECT_THAT(ana.cruda(mala), StartsWith("ERROR")) << mala.substr(0, 60);
    }
    const struct {
        const char *operacion, *elementos;
    } casos[] = {
        {"BUSCAR", "<ARCHIVO>USUARIOS</ARCHIVO>"},
        {"BUSCAR", "<ARCHIVO>../EXTRA</ARCHIVO>"},
        {"BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO><FILTER>NADA=1</FILTER>"},
        {"BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO><FILTER>sin operador</FILTER>"},
        {"UPDATE", "<ARCHIVO>EXTRA</ARCHIVO><CAMPOS>1=x\t</CAMPOS>"},
        {"UPDATE", "<ARCHIVO>PLANC</ARCHIVO><CAMPOS>x=1\t</CAMPOS>"},
        {"UPDATE", "<ARCHIVO>PLANC</ARCHIVO><CAMPOS>2=sin cuenta\t</CAMPOS>"},
        {"FILTERUPDATE", "<ARCHIVO>EXTRA</ARCHIVO><CAMPOS>7=x\t</CAMPOS>"},
        {"FILTERUPDATE", "<ARCHIVO>EFECT</ARCHIVO><CAMPOS>6=100\t</CAMPOS>"},
        {"FILTERBORRAR", "<ARCHIVO>EXTRA</ARCHIVO>"},
        {"FILTERBORRAR", "<ARCHIVO>EFECT</ARCHIVO><FILTER>FECHA VENCIMIENTO =&lt; zzz</FILTER>"},
        {"LEERASIENTO", "<FECHA>ayer</FECHA>"},
        {"LEERASIENTO", "<POSICION>ENMEDIO</POSICION>"},
        {"GRABARASIENTO", ""},
        {"GRABARASIENTO", "<ASIENTOS/>"},
        {"GRABARASIENTO", "<ASIENTOS><ASIENTO NUMERO='1' FECHA='15/03/2031'/></ASIENTOS>"},
        {"ANULARASIENTO", "<REFERENCIA>FECHA=1</REFERENCIA>"},
        {"ANULARASIENTO", "<REFERENCIA>REFERENCIA= </REFERENCIA>"},
        {"FILTERBORRAR", "<ARCHIVO>EFECT</ARCHIVO>"},
        {"FILTERUPDATE", "<ARCHIVO>EFECT</ARCHIVO><CAMPOS>7=x\t</CAMPOS>"},
        {"FILTERBORRAR", "<ARCHIVO>EFECT</ARCHIVO><FILTER>ABS(IMPORTE)=5</FILTER>"},
        {"FILTERBORRAR", "<ARCHIVO>EFECT</ARCHIVO><FILTER>CA=1</FILTER><FILTER></FILTER>"},
        {"BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO><FILTER>ABS(IMPORTE)&gt;5</FILTER>"},
        {"UPDATE", "<ARCHIVO>PRESU</ARCHIVO><CAMPOS>1=57\t2=x\t12=abc\t</CAMPOS>"},
        {"BORRARCUENTA", ""},
        {"PUTTOTAL", "<VALOR>NIVEL</VALOR>"},
        {"ID", ""},
    };
    for (const auto& caso : casos)
        EXPECT_THAT(ana.en("Libros", caso.operacion, caso.elementos), StartsWith("ERROR")) << caso.elementos;
    EXPECT_THAT(ana.en("Libros", "BUSCAR", "<ARCHIVO>PLANC</ARCHIVO><FILTER>CUENTA=57</FILTER>"),
                HasSubstr("57\t"))
        << "it still works";
}

// Characters by their code, as clients send them.
TEST_F(EnlaceServicio, LosTextosLleganEnteros) {
    EXPECT_EQ(ana.en("Libros", "GRABARASIENTO", asiento(apunte("&#241;&#128;&#34;&#39;&amp;&lt;"))),
              "000002");
    const std::string leido = ana.en("Libros", "LEERASIENTO", "<POSICION>ULTIMO</POSICION>");
    pugi::xml_document documento;
    ASSERT_TRUE(documento.load_string(leido.c_str())) << leido;
    const auto suyo = documento.document_element().child("ASIENTOS").child("ASIENTO");
    EXPECT_STREQ(suyo.attribute("FECHA").value(), "15/03/2026");
    EXPECT_STREQ(suyo.child("APUNTES").first_child().attribute("DESCRIPCION").value(), "ñ€\"'&<");
}

TEST_F(EnlaceServicio, UnaEmpresaConClave) {
    EXPECT_EQ(ana.en("Cerrada", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    {
        // The password is set on the files, as the product does.
        const std::string archivo = carpeta.ruta("raiz/contabilidad/U0000001/Cerrada.QZT");
        std::string bytes = platform::leerTodo(*propio, archivo);
        const std::string guardada = data::EnmascararClave("sal").bytes();
        bytes.replace(95, guardada.size(), guardada);
        platform::escribirAtomico(*propio, archivo, bytes);
    }
    ClienteEnlace otra(servicio->puerto());
    otra.entrar("ANA", "secreta1");
    EXPECT_EQ(otra.en("Cerrada", "EMPRESAEXISTS"), "SI");
    EXPECT_EQ(otra.en("Cerrada", "GETTOTAL", "<VALOR>PASSWORD1</VALOR>"), "*****");
    EXPECT_THAT(otra.en("Cerrada", "BUSCAR", "<ARCHIVO>PLANC</ARCHIVO>"), StartsWith("ERROR"));
    EXPECT_EQ(otra.en("Cerrada", "EMPRESAEXISTS", "<VALOR>otra</VALOR>"), "SI");
    EXPECT_THAT(otra.en("Cerrada", "GETTOTAL", "<VALOR>NIVEL</VALOR>"), StartsWith("ERROR"));
    EXPECT_EQ(otra.en("Cerrada", "EMPRESAEXISTS", "<VALOR>sal</VALOR>"), "SI");
    EXPECT_EQ(otra.en("Cerrada", "GETTOTAL", "<VALOR>password1</VALOR>"), "sal");
    EXPECT_EQ(otra.en("Libros", "GETTOTAL", "<VALOR>AÑO</VALOR>"), "26");
    EXPECT_EQ(otra.en("Cerrada", "GETTOTAL", "<VALOR>AÑO</VALOR>"), "26")
        << "it stays unlocked in this session";
    EXPECT_THAT(ana.en("Cerrada", "GETTOTAL", "<VALOR>AÑO</VALOR>"), StartsWith("ERROR"))
        << "not in another one";

    // No road around it: a company's number is not another one's to take, and a password makes no company.
    const std::string numero = otra.en("Cerrada", "GETTOTAL", "<VALOR>COMUN</VALOR>");
    const std::string empresas = ana.forma("LEEREMPRESAS");
    EXPECT_THAT(ana.en("Libros", "PUTTOTAL", "<VALOR>comun=" + numero + "</VALOR>"), StartsWith("ERROR"));
    EXPECT_NE(ana.en("Libros", "GETTOTAL", "<VALOR>COMUN</VALOR>"), numero);
    EXPECT_THAT(ana.en("Cerrada", "EMPRESAEXISTS", "<VALOR>/c/A=26</VALOR>"), StartsWith("ERROR"));
    EXPECT_EQ(ana.forma("LEEREMPRESAS"), empresas);
    EXPECT_THAT(ana.en("Cerrada", "GETTOTAL", "<VALOR>AÑO</VALOR>"),
                AllOf(StartsWith("ERROR"), Not(HasSubstr(carpeta.ruta()))));
}

// What nobody could take back by this road is not for it, and the session stays at its company.
TEST_F(EnlaceServicio, LaEmpresaSigueAbriendose) {
    for (const char* valor : {"VERSION=1E30", "COMUN=..", " comun =99", "AÑO=zz", "APERTURA=13",
                              "NIVEL=1x345", "GLOBAL_DIR=/etc"}) {
        EXPECT_THAT(ana.en("Libros", "PUTTOTAL", "<VALOR>" + std::string(valor) + "</VALOR>"),
                    StartsWith("ERROR"))
            << valor;
    }
    EXPECT_THAT(ana.en("Libros", "PUTTOTAL", "<VALOR>NOTA=" + std::string(900'000, 'x') + "</VALOR>"),
                StartsWith("ERROR"));
    EXPECT_EQ(ana.en("Libros", "PUTTOTAL", "<VALOR>APERTURA=07</VALOR>"), "OK");
    EXPECT_EQ(ana.en("Libros", "GETTOTAL", "<VALOR>AÑO</VALOR>"), "26");
    EXPECT_EQ(ana.en("Otra", "CREAREMPRESA", "<VALOR>/C/A=25/Z=1</VALOR>"), "OK");
    EXPECT_EQ(ana.en("Libros", "GETTOTAL", "<VALOR>AÑO</VALOR>"), "26");
    EXPECT_THAT(ana.en("Libros", "GETTOTAL", "<VALOR>GLOBAL_DIR</VALOR>"), Not(HasSubstr(carpeta.ruta())));
    EXPECT_THAT(ana.en("Nadie", "BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO>"),
                AllOf(StartsWith("ERROR"), Not(HasSubstr(carpeta.ruta()))));
}

// The entry that a session stands at is one of its company.
TEST_F(EnlaceServicio, ElAsientoNoPasaAOtraEmpresa) {
    EXPECT_EQ(ana.en("Otra", "CREAREMPRESA", "<VALOR>/C/A=26/Z=1</VALOR>"), "OK");
    ana.en("Libros", "LEERASIENTO", "<FECHA>20/05/2026</FECHA><ASIENTO>000777</ASIENTO>");
    EXPECT_EQ(ana.en("Otra", "SETGUID", "<ASIENTO>000777</ASIENTO><VALOR>abc</VALOR>"), "OK");
    EXPECT_EQ(ana.en("Otra", "GETFECHAS", "<ASIENTO>000777</ASIENTO>"), "");
    ana.en("Otra", "LEERASIENTO", "<FECHA>20/05/2026</FECHA><ASIENTO>000778</ASIENTO>");
    EXPECT_EQ(ana.en("Otra", "SETGUID", "<ASIENTO>000778</ASIENTO><VALOR>abd</VALOR>"), "OK");
    EXPECT_EQ(ana.en("Otra", "GETFECHAS", "<ASIENTO>000778</ASIENTO>"), "20/05/26");
}

// One user's sessions do not push out another's; a new password ends his own.
TEST_F(EnlaceServicio, LasSesionesDeCadaUno) {
    ClienteEnlace bea(servicio->puerto());
    std::string primera;
    for (std::size_t i = 0; i < server::OperacionesEnlace::maximoSesiones + 4; ++i) {
        bea.entrar("BEA", "secreta2");
        if (i == 0) primera = bea.token;
    }
    EXPECT_EQ(ana.forma("LEEREMPRESAS"), "Libros\n");
    EXPECT_EQ(bea.forma("LEEREMPRESAS"), "");
    servicio->usuarios().modificar({.usuario = "BEA", .clave = "otra9"});
    EXPECT_THAT(bea.forma("LEEREMPRESAS"), StartsWith("ERROR"));
    bea.token = primera;
    EXPECT_THAT(bea.forma("LEEREMPRESAS"), StartsWith("ERROR"));
}

// Sessions of several users at once, two of them on one company: nothing is lost, no number given twice.
TEST_F(EnlaceServicio, VariasSesionesALaVez) {
    constexpr int sesiones = 4, veces = 15;
    std::vector<std::thread> hilos;
    std::vector<std::string> numeros(sesiones);
    for (int i = 0; i < sesiones; ++i) {
        hilos.emplace_back([&, i] {
            ClienteEnlace una(servicio->puerto());
            una.entrar("ANA", "secreta1");
            for (int vez = 0; vez < veces; ++vez)
                numeros[static_cast<std::size_t>(i)] +=
                    una.en("Libros", "GRABARASIENTO", asiento(apunte("x"))) + "\n";
        });
    }
    for (auto& hilo : hilos)
        hilo.join();
    std::set<std::string> todos;
    for (const auto& suyos : numeros) {
        std::istringstream lineas(suyos);
        for (std::string uno; std::getline(lineas, uno);)
            EXPECT_TRUE(todos.insert(uno).second && uno.size() == 6) << uno;
    }
    EXPECT_EQ(todos.size(), std::size_t{sesiones} * veces);
    const std::string filas =
        ana.en("Libros", "BUSCAR", "<ARCHIVO>EXTRA</ARCHIVO><FILTER>CUENTA=5700000000</FILTER>");
    EXPECT_EQ(std::ranges::count(filas, '\n'), sesiones * veces + 1);
    EXPECT_THAT(ana.en("Libros", "BUSCAR", "<ARCHIVO>PLANC</ARCHIVO><FILTER>CUENTA=5700000000</FILTER>"),
                HasSubstr("\t" + std::to_string(5 * sesiones * veces) + "\t"));
}

}  // namespace
}  // namespace tarvoline::pruebas
