// Commands and statuses, one by one: what a person at the keyboard would try.
#include <set>

#include "motor/diferencial.h"
#include "motor/escritura.h"
#include "motor/reconstruccion.h"

namespace tarvoline::pruebas {
namespace {

using motor::MotorIndexados;

class Estados : public testing::Test {
  protected:
    int estado(const std::string& comando) { return mandar(motor_, comando).estado; }
    std::string crear(const std::string& nombre, const std::string& medidas = " 12/ 2") {
        return "/C/" + carpeta_.ruta(nombre) + "/" + medidas + "/A/ 2";
    }
    std::string abrir(const std::string& nombre) { return "/O/" + carpeta_.ruta(nombre) + "/ 2"; }

    CarpetaPrueba carpeta_;
    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    MotorIndexados motor_{*archivos_};
};

TEST_F(Estados, busquedaInexacta) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    EXPECT_EQ(mandar(motor_, "F\\1\\2"), (Contestado{9, 0}));
    for (const char* texto : {"4300001", "4300003", "4300003", "4300005"})
        ASSERT_EQ(estado("I\\2\\" + std::string(texto) + "\\x"), 0);
    const struct {
        const char* comando;
        Contestado debido;
    } casos[] = {
        {"S\\1\\2\\4300003", {0, 2}},
        {"N\\2", {0, 3}},
        {"S\\1\\2\\4300004", {12, 3}},
        {"N\\2", {0, 4}},
        {"S\\ 1\\ 2\\4300004", {12, 3}},
        {"P\\ 2", {0, 2}},
        {"S\\1\\2\\1", {13, 1}},
        {"P\\2", {9, 0}},
        {"S\\1\\2\\9", {15, 4}},
        {"N\\2", {9, 0}},
        {"P\\2", {0, 3}},
        {"G\\1\\2\\430000", {0, 1}},
        {"G\\1\\2\\4300003     ", {0, 2}},
        {"S\\1\\2\\430000", {13, 1}},
        {"A\\1\\999999\\2\\4300003   ", {0, 4}},
        {"P\\2", {0, 3}},
        {"E\\1\\0\\2\\4300003   ", {0, 1}},
        {"A\\1\\999999\\2\\4300005", {9, 0}},
        {"N\\2", {0, 2}},
        {"E\\1\\0\\2\\4300001", {9, 0}},
        {"S\\1\\2\\4300001 demasiado larga", {12, 1}},
        {"F\\2\\2\\", {0, 1}},
        {"L\\2\\2", {0, 4}},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(mandar(motor_, caso.comando), caso.debido) << caso.comando;
}

// The walk of an annulment: delete the row one stands on, go on to the next.
TEST_F(Estados, laPosicionSobreviveAlBorrado) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    for (int i = 0; i < 500; ++i)
        ASSERT_EQ(estado("I\\2\\asiento\\" + std::to_string(i)), 0);
    auto vista = mandar(motor_, "S\\1\\2\\asiento");
    for (int i = 0; i < 500; ++i) {
        ASSERT_EQ(vista, (Contestado{0, i + 1}));
        ASSERT_EQ(estado("D\\ " + std::to_string(i + 1) + "\\Y\\ 2\\asiento\\" + std::to_string(i)), 0);
        vista = mandar(motor_, "N\\2");
    }
    EXPECT_EQ(vista, (Contestado{9, 0}));
    EXPECT_EQ(mandar(motor_, "I\\2\\asiento\\x"), (Contestado{0, 501}));
    EXPECT_EQ(estado("M\\2"), 0);
    EXPECT_EQ(mandar(motor_, "L\\1\\2"), (Contestado{9, 0}));
    EXPECT_EQ(mandar(motor_, "I\\2\\asiento\\x"), (Contestado{0, 502}));
}

// Many steps as one are those of N, whatever another handle does to the file in between.
TEST_F(Estados, muchosPasosEnUno) {
    ASSERT_EQ(estado(crear("A.QZC", "12/1")), 0);
    Azar azar(7);
    std::vector<std::int32_t> debidos, hallados;
    for (int i = 0; i < 700; ++i)
        ASSERT_EQ(estado("I\\2\\m" + std::to_string(azar() % 400)), 0);
    for (auto una = mandar(motor_, "F\\1\\2"); una.estado == 0; una = mandar(motor_, "N\\2"))
        debidos.push_back(una.registro);
    ASSERT_EQ(debidos.size(), 700U);

    MotorIndexados otro(*archivos_);
    ASSERT_EQ(mandar(otro, abrir("A.QZC")).estado, 0);
    std::vector<std::int32_t> tanda(5);
    EXPECT_EQ(otro.siguientes(2, tanda), 0U);  // no key is the current one yet
    EXPECT_EQ(motor_.siguientes(3, tanda), 0U);
    hallados.push_back(mandar(motor_, "F\\1\\2").registro);
    do {
        tanda.assign(1 + azar() % 90, 0);
        tanda.resize(motor_.siguientes(2, tanda));
        hallados.insert(hallados.end(), tanda.begin(), tanda.end());
        if (azar() % 2 == 0) {
            ASSERT_EQ(mandar(otro, "I\\2\\a").estado, 0);  // behind the walk
        }
    } while (!tanda.empty());
    EXPECT_EQ(hallados, debidos);
    EXPECT_EQ(mandar(motor_, "P\\2").registro, debidos[debidos.size() - 2]);
}

TEST_F(Estados, variasClavesDeUnRegistroEnUnaOrden) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    ASSERT_EQ(estado("I\\2\\a\\b"), 0);
    EXPECT_EQ(estado("R\\ 1\\ 1\\ 2\\a\\c\\2\\noesta\\d"), 9);
    EXPECT_EQ(estado("S\\1\\2\\a"), 0);
    EXPECT_EQ(estado("R\\ 1\\ 1\\ 2\\a\\c\\ 2\\b\\d"), 0);
    EXPECT_EQ(estado("S\\1\\2\\c"), 0);
    EXPECT_EQ(estado("S\\2\\2\\d"), 0);
}

TEST_F(Estados, barraEnUnValor) {
    ASSERT_EQ(estado(crear("A.QZC", " 12/ 1")), 0);
    ASSERT_EQ(estado("I\\2\\A\x1F"
                     "12"),
              0);
    EXPECT_EQ(estado("S\\1\\2\\A\\12"), 0);
}

TEST_F(Estados, ordenesMalas) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    for (const char* mala : {"",
                             "K\\",
                             "X\\1\\2",
                             "S\\1\\2",
                             "S\\3\\2\\x",
                             "S\\0\\2\\x",
                             "S\\1\\16\\x",
                             "S\\1\\4\\x",
                             "S\\  1\\2\\x",
                             "S\\1x\\2\\x",
                             "N",
                             "N\\2\\",
                             "N\\-1",
                             "I\\2",
                             "I\\2\\solo",
                             "I\\2\\a\\b\\c",
                             "I\\2\\demasiado larga\\b",
                             "D\\1\\N\\2\\a\\b",
                             "D\\1\\Y\\2\\a",
                             "D\\99999999999\\Y\\2\\a\\b",
                             "R\\1\\1\\2\\a",
                             "R\\3\\1\\2\\a\\b",
                             "R\\1\\1\\2\\a\\b\\2",
                             "A\\1\\0\\2\\a",
                             "E\\1\\999999\\2\\a",
                             "/O/2",
                             "/X/a/2",
                             "/C/a/10/2/B/2",
                             "/O//2"}) {
        EXPECT_EQ(estado(mala), 1) << mala;
    }
    EXPECT_EQ(estado("I\\2\\doce letras.      \\b"), 0);
}

TEST_F(Estados, crearConLimites) {
    for (const char* medidas : {" 12/ 0", " 12/ 11", " 0/ 2", " 256/ 2", " 99999/ 2"})
        EXPECT_EQ(estado(crear("A.QZC", medidas)), 1) << medidas;
    EXPECT_EQ(estado(abrir("A.QZC")), 2);
    EXPECT_EQ(estado(crear("A.QZC", " 255/ 10")), 0);
    EXPECT_EQ(estado("I\\2" + unidos(std::vector<std::string>(10, std::string(255, 'z')))), 0);
}

TEST_F(Estados, archivosQueNoSirven) {
    EXPECT_EQ(estado(abrir("nada/A.QZC")), 2);
    EXPECT_EQ(estado(crear("nada/A.QZC")), 23);
    carpeta_.escribir("ajeno.QZC", "an old letter");
    EXPECT_EQ(estado(abrir("ajeno.QZC")), 26);
    EXPECT_EQ(estado(crear("ajeno.QZC")), 26);
    EXPECT_EQ(carpeta_.leer("ajeno.QZC"), "an old letter");

    // Empty, zeros, or a sound beginning with nothing behind: what bad days leave of a file of ours.
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    ASSERT_EQ(estado("I\\2\\a\\b"), 0);
    const std::string sano = carpeta_.leer("A.QZC");
    std::string roto = sano;
    for (const std::size_t lugar : {std::size_t{3614}, std::size_t{7710}})
        roto[lugar] = static_cast<char>(roto[lugar] ^ 1);
    std::vector<std::string> contenidos{std::string(8192, '\0'), roto};
    for (const std::size_t largo : {0U, 1U, 4U, 8U, 9U, 11U, 12U, 13U, 40U})
        contenidos.push_back(sano.substr(0, largo));
    for (const std::string& contenido : contenidos) {
        carpeta_.escribir("B.QZC", contenido);
        EXPECT_EQ(estado(abrir("B.QZC")), 1);
        EXPECT_EQ(estado(crear("B.QZC")), 0);
        EXPECT_EQ(mandar(motor_, "I\\2\\a\\b"), (Contestado{0, 1}));
    }
    // One head torn: the other serves.
    for (const std::size_t lugar : {std::size_t{3614}, std::size_t{7710}}) {
        std::string una = sano;
        una[lugar] = static_cast<char>(una[lugar] ^ 1);
        carpeta_.escribir("C.QZC", una);
        EXPECT_EQ(estado(abrir("C.QZC")), 0);
        EXPECT_EQ(estado("I\\2\\c\\d"), 0);
        EXPECT_EQ(motor::revisar(motor_.archivo(2)).fallo, "");
    }
}

// A page that is not what it should be: no answer about it, inserts are refused, every later opening knows.
TEST_F(Estados, danno) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(estado("I\\2\\" + std::to_string(i * 7919 % 2000) + "\\x"), 0);
    mandar(motor_, "K");
    std::string bytes = carpeta_.leer("A.QZC");
    for (std::size_t pagina = 4; pagina < bytes.size() / 2048; ++pagina)
        bytes[pagina * 2048 + 100] = static_cast<char>(bytes[pagina * 2048 + 100] ^ 4);
    carpeta_.escribir("A.QZC", bytes);
    ASSERT_EQ(estado(abrir("A.QZC")), 0);
    EXPECT_THROW(estado("S\\1\\2\\77"), motor::ErrorMotor);
    EXPECT_EQ(estado("I\\2\\a\\b"), 29);
    EXPECT_THROW(estado("D\\1\\Y\\2\\0\\x"), motor::ErrorMotor);
    mandar(motor_, "K");
    EXPECT_EQ(estado(abrir("A.QZC")), 1);
}

// A page's last block, texts of the greatest length, is more than a page holds.
TEST_F(Estados, bloqueMayorQueUnaPagina) {
    ASSERT_EQ(estado("/C/" + carpeta_.ruta("A.QZC") + "/ 255/ 1/A/ 2"), 0);
    const auto larga = [](int i) { return "b" + std::to_string(i) + std::string(250, 'x'); };
    const auto corta = [](int i) { return "a" + std::to_string(100 + i); };
    // The short ones make two blocks; of the first one entry stays, of the second none.
    constexpr int cortas = 21;
    for (int i = 1; i <= cortas; ++i)
        ASSERT_EQ(estado("I\\2\\" + corta(i)), 0);
    ASSERT_EQ(estado("I\\2\\" + larga(10)), 0);
    for (int i = 2; i <= cortas; ++i)
        ASSERT_EQ(estado("D\\" + std::to_string(i) + "\\Y\\2\\" + corta(i)), 0);
    for (int i = 11; i < 40; ++i)
        ASSERT_EQ(mandar(motor_, "I\\2\\" + larga(i)), (Contestado{0, cortas - 9 + i})) << i;
    EXPECT_EQ(motor::revisar(motor_.archivo(2)).fallo, "");
    EXPECT_EQ(mandar(motor_, "S\\1\\2\\" + larga(39)), (Contestado{0, cortas + 30}));
}

// Pages that one command wrote are read together by the next who needs one of them: each counts only if it is
// sound itself.
TEST_F(Estados, paginasLeidasJuntas) {
    MotorIndexados otro(*archivos_);
    ASSERT_EQ(estado("/C/" + carpeta_.ruta("A.QZC") + "/ 12/ 3/A/ 2"), 0);
    const auto insertar = [](MotorIndexados& motor, int i) {
        const std::string n = std::to_string(i * 7919 % 2000);
        return mandar(motor, "I\\2\\" + n + "\\b" + n + "\\c" + n).estado;
    };
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(insertar(motor_, i), 0);
    ASSERT_EQ(mandar(otro, abrir("A.QZC")).estado, 0);
    for (int i = 1000; i < 1200; ++i) {
        ASSERT_EQ(insertar(i % 3 == 0 ? otro : motor_, i), 0);
        const std::string n = std::to_string(i * 7919 % 2000);
        for (MotorIndexados* motor : {&motor_, &otro}) {
            for (const std::string& busqueda : {"S\\3\\2\\c" + n, "S\\1\\2\\" + n, "S\\2\\2\\b" + n})
                ASSERT_EQ(mandar(*motor, busqueda), (Contestado{0, i + 1})) << busqueda;
        }
    }
    ASSERT_EQ(insertar(motor_, 1200), 0);
    const auto& raices = motor_.archivo(2).cabecera().raices;
    ASSERT_GT(raices[1].altura, 1);
    std::string bytes = carpeta_.leer("A.QZC");
    const std::size_t sitio = motor::posicionDePagina(raices[1].hijo.pagina) + 40;
    bytes[sitio] = static_cast<char>(bytes[sitio] ^ 4);
    carpeta_.escribir("A.QZC", bytes);
    EXPECT_EQ(mandar(otro, "S\\1\\2\\0").estado, 0);
    EXPECT_EQ(mandar(otro, "S\\3\\2\\c0").estado, 0);
    EXPECT_THROW(mandar(otro, "S\\2\\2\\b0"), motor::ErrorMotor);
}

// Who has a file open keeps it: making it anew waits for nobody and takes nothing away.
TEST_F(Estados, crearLoQueOtrosTienen) {
    MotorIndexados otro(*archivos_);
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    ASSERT_EQ(mandar(otro, crear("A.QZC")).estado, 0);
    ASSERT_EQ(mandar(otro, "I\\2\\a\\b"), (Contestado{0, 1}));
    EXPECT_EQ(estado("S\\1\\2\\a"), 0);
    EXPECT_EQ(estado(crear("A.QZC")), 1);
    EXPECT_EQ(mandar(otro, "S\\1\\2\\a").estado, 0);
    mandar(otro, "K");
    EXPECT_EQ(estado(crear("A.QZC")), 0);
    EXPECT_EQ(estado("S\\1\\2\\a"), 9);
}

// A file built beside takes the name only when nobody else has it; the old one and its counter stay.
TEST_F(Estados, cambioDeArchivo) {
    ASSERT_EQ(estado(crear("A.QZC")), 0);
    for (int i = 0; i < 5; ++i)
        ASSERT_EQ(estado("I\\2\\viejo\\x"), 0);
    const std::string ruta = carpeta_.ruta("A.QZC");
    auto nuevo = motor::ArchivoClaves::crear(*archivos_, motor::rutaNueva(ruta), 12, 2);
    ASSERT_EQ(nuevo.estado, 0);
    EXPECT_EQ(motor::cambiarPor(*archivos_, ruta, *nuevo.archivo), motor::Cambio::ocupado);
    EXPECT_EQ(estado("S\\1\\2\\viejo"), 0);
    mandar(motor_, "K");
    EXPECT_EQ(motor::cambiarPor(*archivos_, ruta, *nuevo.archivo), motor::Cambio::hecho);
    EXPECT_FALSE(carpeta_.hay("nuevo.A.QZC"));
    ASSERT_EQ(estado(abrir("A.QZC")), 0);
    EXPECT_EQ(estado("F\\1\\2"), 9);
    EXPECT_EQ(mandar(motor_, "I\\2\\a\\b"), (Contestado{0, 6}));
    ASSERT_EQ(estado(abrir("anterior.A.QZC")), 0);
    EXPECT_EQ(mandar(motor_, "L\\1\\2"), (Contestado{0, 5}));
}

// The example page of docs/formats.md: files of today are read tomorrow.
TEST(Formato, paginaDelEjemplo) {
    using namespace std::string_literals;
    const std::string bytes =
        "\x5F\xEF\x58\xD4\x2A\0\0\x01\xA7\xA1\x97\x06\0\0\0\0\x04\0\x01\0"
        "\0\x02\x34\x33\x03\x02\x05\x30\x30\x30\x30\x31\x01\x06\x01\x33\x02\x0C\0\x04\x14\0"s;
    motor::Pagina pagina{};
    std::copy(bytes.begin(), bytes.end(), pagina.datos.begin());
    EXPECT_EQ(motor::sumaDePagina(pagina.datos.data(), 5, 0x0D2C3260E65508E1U), 0xD458EF5FU);
    const motor::VistaPagina vista(pagina.datos.data(), 12);
    motor::Clave clave;
    std::string leido;
    for (auto lugar = vista.primero(); !vista.alFinal(lugar); lugar = vista.siguiente(lugar)) {
        vista.leerClave(lugar, clave);
        leido += std::string(clave.sinRelleno(12)) + ":" + std::to_string(clave.registro) + " ";
    }
    EXPECT_EQ(leido, "43:3 4300001:1 4300003:2 4300003:4 ");
}

TEST(Formato, cabeceraDelEjemplo) {
    motor::Cabecera cabecera;
    cabecera.longitud = 12;
    cabecera.claves = 1;
    cabecera.archivo = 0x0D2C3260E65508E1U;
    cabecera.sello = (std::uint64_t{6} << motor::bitsAzar) | 0x97A1A7U;
    cabecera.contador = 4;
    cabecera.marca = 6;
    cabecera.raices[0] = {{5, cabecera.sello}, 4, 1};
    std::array<motor::Octeto, motor::bytesCabecera> bytes{};
    ASSERT_EQ(motor::codificarCabecera(cabecera, {{1}, {}}, bytes.data()), 3576U);
    EXPECT_EQ(cabecera.sumaHuecos, 0x6E8893DDU);
    EXPECT_EQ(bytes[3576], 1U);
    const auto leida = motor::descifrarCabecera(bytes.data() + motor::lugarNucleo, 0);
    ASSERT_TRUE(leida);
    EXPECT_EQ(leida->raices[0].entradas, 4U);
    EXPECT_EQ(motor::descifrarHuecos(*leida, bytes.data() + 3576)->mapa, std::vector<std::uint64_t>{1});
    // Page 6 is not of the file yet: it cannot be free.
    motor::codificarCabecera(cabecera, {{5}, {}}, bytes.data());
    EXPECT_FALSE(motor::descifrarHuecos(cabecera, bytes.data() + 3576));
}

// Taking and giving back, against a set of pages, on both sides of where the map ends.
TEST(Libres, ComoUnConjunto) {
    constexpr std::uint32_t fin = motor::primeraPagina + motor::paginasDelMapa + 800;
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    motor::Libres libres;
    std::set<std::uint32_t> suyas;
    const auto devolver = [&](std::uint32_t desde, std::uint32_t cuantas) {
        libres.devolver({{desde, cuantas}});
        for (std::uint32_t i = 0; i < cuantas; ++i)
            ASSERT_TRUE(suyas.insert(desde + i).second);
    };
    devolver(motor::primeraPagina + motor::paginasDelMapa - 900, 1700);
    std::vector<std::uint32_t> tomadas;
    for (int i = 0; i < 4000; ++i) {
        const auto para = azar() % 2 == 0 ? motor::Para::hojas : motor::Para::interiores;
        const std::uint32_t cuantas = static_cast<std::uint32_t>(1 + azar() % 70);
        if (azar() % 2 == 0) {
            const std::uint32_t primera = libres.tomarSeguidas(cuantas, para);
            for (std::uint32_t n = 0; primera != 0 && n < cuantas; ++n)
                tomadas.push_back(primera + n);
        } else {
            libres.tomarSueltas(cuantas, para, tomadas);
        }
        for (; !tomadas.empty(); tomadas.pop_back())
            ASSERT_EQ(suyas.erase(tomadas.back()), 1U);
        for (int vuelven = 0; vuelven < 70; ++vuelven) {
            const std::uint32_t pagina = fin - 1 - static_cast<std::uint32_t>(azar() % 1700);
            if (!suyas.contains(pagina)) devolver(pagina, 1);
        }
        ASSERT_EQ(libres.total(), suyas.size());
        if (i % 100 != 0) continue;
        std::set<std::uint32_t> dichas;
        for (const auto& tramo : libres.tramos()) {
            for (std::uint32_t n = 0; n < tramo.cuantas; ++n)
                dichas.insert(tramo.pagina + n);
        }
        ASSERT_EQ(dichas, suyas);
    }
}

// Far beyond 4 GiB: pages are named by number, positions are 64-bit.
TEST_F(Estados, masAllaDeCuatroGigas) {
    auto creado = motor::ArchivoClaves::crear(*archivos_, carpeta_.ruta("A.QZC"), 12, 1, 2147483640);
    ASSERT_EQ(creado.estado, 0);
    motor::escribir(*creado.archivo, [](motor::Escritura& escritura) {
        // As if three million pages before had been in use and were in use no more.
        escritura.cabecera().marca = 3000000;
        escritura.confirmar();
    });
    creado.archivo.reset();
    ASSERT_EQ(estado(abrir("A.QZC")), 0);
    for (int i = 1; i <= 7; ++i)
        EXPECT_EQ(mandar(motor_, "I\\2\\lejos" + std::to_string(i)), (Contestado{0, 2147483640 + i}));
    EXPECT_EQ(estado("I\\2\\una de mas"), 29);
    mandar(motor_, "K");
    ASSERT_EQ(estado(abrir("A.QZC")), 0);
    EXPECT_EQ(mandar(motor_, "S\\1\\2\\lejos5"), (Contestado{0, 2147483645}));
    EXPECT_GT(archivos_->estado(carpeta_.ruta("A.QZC"))->longitud, std::uint64_t{5} << 30);
}

}  // namespace
}  // namespace tarvoline::pruebas
