// Tables: opening, records and fields, their keys made anew.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "apoyo/archivos_defectuosos.h"
#include "apoyo/en_procesos.h"
#include "data/apoyo_tablas.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::EstadoRegistro;
using data::Tablas;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using namespace std::string_literals;

constexpr int tabla = data::tabla::extra;

struct Lineas : MundoTablas {
    Tablas tablas{capa};
    Lineas() { EXPECT_TRUE(abrir(tablas, tabla, "EXTRA")); }

    std::int32_t anadir(std::string_view fecha, std::string_view asiento,
                        std::string_view descripcion = "SUELDOS") {
        ponerLinea(tablas, tabla, fecha, "6400000", asiento, descripcion, "1200.5");
        tablas.AnadirRegistro(tabla);
        EXPECT_EQ(tablas.gEstado, 0) << vistas.textos();
        return tablas.gRegistro;
    }
    void reabrir() {
        tablas.CerrarTodo();
        vistas.cajas.clear();
        ASSERT_TRUE(abrir(tablas, tabla, "EXTRA")) << vistas.textos();
    }
};

TEST(Tablas, UnaTablaNuevaNaceVacia) {
    Lineas m;
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
    EXPECT_TRUE(m.carpeta.hay("datos/EXTRA07.QZD"));
    EXPECT_TRUE(m.carpeta.hay("datos/EXTRA07.QZC"));
    EXPECT_EQ(m.tablas.cuantosRegistros(tabla), 0);
    EXPECT_EQ(m.tablas.ranura(tabla).gNombreTabla, "EXTRA");
    EXPECT_EQ(m.tablas.definicion(tabla).gLongitudRegistro, linea::bytes);
    EXPECT_EQ(m.tablas.gCampoDePosicion(tabla, 14), linea::descripcion);
    EXPECT_THROW(m.tablas.gCampoDePosicion(tabla, 99), std::out_of_range);
    EXPECT_EQ(m.tablas.TituloTabla(tabla), "Lineas Del Diario");
    EXPECT_EQ(m.tablas.gCampos(tabla, linea::cuenta), std::string(10, ' '));
    EXPECT_EQ(m.tablas.orden("F\\1\\2"), 9);
}

TEST(Tablas, UnRegistroVaYVuelve) {
    Lineas m;
    auto& t = m.tablas;
    ponerLinea(t, tabla, "260309", "6400000", "000012", "N\xF3mina marzo", "-1200.55");
    t.ponerCampo(tabla, linea::punteo, "2.5");
    t.ponerCampo(tabla, linea::numero, "70000");
    t.ponerCampo(tabla, linea::cambio, "166.386");
    t.AnadirRegistro(tabla);
    ASSERT_EQ(t.gEstado, 0);
    EXPECT_EQ(t.gRegistro, 1);
    const std::string esperado = "2603096400000   000012N\xF3mina marzo        " +
                                 data::DobleATexto(-1200.55) + "\x02\0\x70\x11\x01\0\xD1\x62\x26\x43"s;
    EXPECT_EQ(m.leer("EXTRA07.QZD"), esperado);

    t.blanquear(tabla);
    EXPECT_EQ(t.LeerRegistro(tabla, 1), EstadoRegistro::vivo);
    EXPECT_EQ(t.gCampos(tabla, linea::descripcion), "N\xF3mina marzo        ");
    EXPECT_EQ(t.texto(tabla, 14), "Nómina marzo");
    EXPECT_EQ(t.gCampos(tabla, linea::importe), "-1200.55");
    EXPECT_EQ(t.gCampos(tabla, linea::punteo), "2");
    EXPECT_EQ(t.gCampos(tabla, linea::cambio), "166.386");
    EXPECT_EQ(t.orden("S\\2\\2\\6400000   260309"), 0);
    EXPECT_EQ(t.gRegistro, 1);
}

TEST(Tablas, LosTextosGuardanSuAncho) {
    Lineas m;
    auto& t = m.tablas;
    t.ponerTexto(tabla, 14, "Compañía del Ebro y del Duero");
    EXPECT_EQ(t.gCampos(tabla, linea::descripcion),
              "Compa\xF1\xED"
              "a del Ebro y ");
    t.ponerTexto(tabla, 14, "");
    EXPECT_EQ(t.gCampos(tabla, linea::descripcion), std::string(20, ' '));
    t.gCampos(tabla, linea::descripcion) = "ab\0cd  "s;
    EXPECT_EQ(t.texto(tabla, 14), "ab");
    // A text that somebody left too short or too long moves no other field.
    ponerLinea(t, tabla, "260309", "6400000", "000012", "x", "5");
    t.gCampos(tabla, linea::cuenta) = "64";
    t.gCampos(tabla, linea::descripcion) = std::string(50, 'y');
    t.EscribirRegistro(tabla, 1);
    t.LeerRegistro(tabla, 1);
    EXPECT_EQ(t.gCampos(tabla, linea::asiento), "000012");
    EXPECT_EQ(t.gCampos(tabla, linea::importe), "5");
}

TEST(Tablas, RegistrosQueNoEstan) {
    Lineas m;
    auto& t = m.tablas;
    m.anadir("260309", "000001");
    t.ponerCampo(tabla, linea::cuenta, "570");
    EXPECT_EQ(t.LeerRegistro(tabla, 0), EstadoRegistro::sinEscribir);
    EXPECT_EQ(t.LeerRegistro(tabla, -3), EstadoRegistro::sinEscribir);
    t.BorrarRegistro(tabla, 0);
    EXPECT_EQ(t.gCampos(tabla, linea::cuenta), "570       ");
    EXPECT_THROW(t.EscribirRegistro(tabla, 0), std::out_of_range);

    EXPECT_EQ(t.LeerRegistro(tabla, 9), EstadoRegistro::sinEscribir);
    EXPECT_EQ(t.texto(tabla, 2), "");
    EXPECT_EQ(t.gCampos(tabla, linea::importe), "0");
    ponerLinea(t, tabla, "260310", "570", "000002", "far away");
    t.EscribirRegistro(tabla, 4);  // a number above the end makes the file longer
    EXPECT_EQ(t.cuantosRegistros(tabla), 4);
    EXPECT_EQ(t.LeerRegistro(tabla, 3), EstadoRegistro::sinEscribir);
    EXPECT_EQ(t.LeerRegistro(tabla, 4), EstadoRegistro::vivo);
    // Removing what does not exist must not make it exist.
    t.BorrarRegistro(tabla, 7);
    EXPECT_EQ(t.cuantosRegistros(tabla), 4);
    EXPECT_NE(t.gEstado, 0);
}

TEST(Tablas, NumeroQueNoCabeNoDejaClave) {
    Lineas m;
    ponerLinea(m.tablas, tabla, "260309", "6400000", "000001", "x");
    m.tablas.ponerCampo(tabla, linea::punteo, "40000");
    EXPECT_THROW(m.tablas.AnadirRegistro(tabla), data::ErrorCampo);
    EXPECT_EQ(m.tablas.orden("F\\1\\2"), 9);
    EXPECT_EQ(m.leer("EXTRA07.QZD"), "");
}

TEST(Tablas, BorrarDejaLaMarca) {
    Lineas m;
    auto& t = m.tablas;
    m.anadir("260309", "000001");
    m.anadir("260309", "000002");
    t.ponerCampo(tabla, linea::cuenta, "what the caller left");  // the keys are those of the record on disk
    t.BorrarRegistro(tabla, 1);
    EXPECT_EQ(t.gEstado, 0);
    EXPECT_EQ(t.gCampos(tabla, linea::cuenta), std::string(10, ' '));
    EXPECT_EQ(m.leer("EXTRA07.QZD").substr(0, linea::bytes),
              "ANULADO" + std::string(35, ' ') + std::string(18, '\0'));
    EXPECT_EQ(t.LeerRegistro(tabla, 1), EstadoRegistro::anulado);
    EXPECT_EQ(t.gCampos(tabla, linea::fecha), "ANULAD");
    EXPECT_EQ(t.gCampos(tabla, linea::importe), "0");
    for (int clave = 1; clave <= 3; ++clave)
        EXPECT_THAT(recorrido(t, tabla, clave), ElementsAre(2));
    EXPECT_EQ(m.anadir("260309", "000003"), 3);  // numbers are not given twice

    // Once more: its keys are gone, which is told, and the record stays removed.
    t.BorrarRegistro(tabla, 1);
    EXPECT_EQ(t.gEstado, 9);
    ASSERT_EQ(m.vistas.cajas.size(), 1U);
    EXPECT_EQ(m.vistas.cajas[0].texto, "Error indexados... Reindexar Archivo Lineas Del Diario");
    EXPECT_EQ(m.vistas.cajas[0].icono, core::Icono::parada);
    EXPECT_EQ(t.LeerRegistro(tabla, 1), EstadoRegistro::anulado);
}

TEST(Tablas, CamposSueltos) {
    Lineas m;
    auto& t = m.tablas;
    m.anadir("260309", "000001");
    m.anadir("260309", "000002", "ALQUILER");
    const std::string antes = m.leer("EXTRA07.QZD");
    t.ponerCampo(tabla, linea::descripcion, "kept");
    EXPECT_EQ(t.LeerCampo(tabla, 2, linea::descripcion), "ALQUILER            ");
    EXPECT_EQ(t.LeerCampo(tabla, 2, linea::importe), "1200.5");
    EXPECT_EQ(t.LeerCampoDoble(tabla, 2, linea::importe), 1200.5);
    EXPECT_EQ(t.gCampos(tabla, linea::descripcion), "kept                ");

    t.GrabarCampo(tabla, 2, linea::punteo, "7");
    t.escribirCampoDoble(tabla, 2, linea::importe, 0.25);
    EXPECT_EQ(t.gCampos(tabla, linea::punteo), "7");
    EXPECT_THROW(t.escribirCampoDoble(tabla, 2, linea::punteo, 1), std::invalid_argument);
    std::string esperado = antes;
    esperado.replace(linea::bytes + 42, 10, data::DobleATexto(0.25) + "\x07\0"s);
    EXPECT_EQ(m.leer("EXTRA07.QZD"), esperado);

    t.blanquear(tabla);
    EXPECT_EQ(t.LeerCabeceraRegistro(tabla, 2), EstadoRegistro::vivo);
    EXPECT_EQ(t.gCampos(tabla, linea::asiento), "000002");
    EXPECT_EQ(t.gCampos(tabla, linea::descripcion), std::string(20, ' '));
    EXPECT_EQ(t.LeerCabeceraRegistro(tabla, 5), EstadoRegistro::sinEscribir);
}

TEST(Tablas, CerrarConservaLoCargado) {
    Lineas m;
    m.anadir("260309", "000001");
    m.tablas.CerrarTodo();
    EXPECT_FALSE(m.tablas.abierta(tabla));
    EXPECT_EQ(m.tablas.texto(tabla, 14), "SUELDOS");
    EXPECT_THROW(m.tablas.LeerRegistro(tabla, 1), platform::ErrorArchivo);
    EXPECT_THROW(m.tablas.definicion(0), std::out_of_range);
    EXPECT_EQ(m.tablas.orden("F\\1\\2"), 1);
    EXPECT_THROW(m.tablas.LeerRegistro(16, 1), std::out_of_range);

    // A slot opened again starts blank.
    ASSERT_TRUE(m.abrir(m.tablas, tabla, "EXTRA"));
    EXPECT_EQ(m.tablas.texto(tabla, 14), "");
    EXPECT_EQ(m.tablas.LeerRegistro(tabla, 1), EstadoRegistro::vivo);
}

TEST(Tablas, LasNueveDeUnaEmpresa) {
    MundoTablas m;
    m.escribir("plana07.qzd", "");  // a name of another case is the same table
    Tablas t(m.capa);
    EXPECT_TRUE(t.AbrirTablasEmpresa());
    for (const int n : {1, 2, 3, 4, 5, 6, 8, 9, 10})
        EXPECT_TRUE(t.abierta(n)) << n;
    EXPECT_FALSE(t.abierta(7));
    EXPECT_EQ(m.capa.monedas.AbreviaturasMonedas[0], "EUR");
    EXPECT_EQ(t.ranura(6).gNombreTabla, "Presu");
    EXPECT_TRUE(m.carpeta.hay("datos/PRESU07.QZD"));
    EXPECT_FALSE(m.carpeta.hay("datos/PLANA07.QZD"));
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
    EXPECT_TRUE(t.AbrirTablasEmpresa(m.datos(), "08"));
    EXPECT_TRUE(m.carpeta.hay("datos/ANALI08.QZC"));

    m.capa.enVigor = {};
    EXPECT_FALSE(t.AbrirTablasEmpresa());
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
}

TEST(Tablas, SinClaves) {
    MundoTablas m;
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, 11, "EXTRA", 0));
    EXPECT_FALSE(m.carpeta.hay("datos/EXTRA07.QZC"));
    ponerLinea(t, 11, "260309", "570", "000001", "x");
    t.EscribirRegistro(11, 1);
    EXPECT_EQ(t.LeerRegistro(11, 1), EstadoRegistro::vivo);
    t.AnadirRegistro(11);
    EXPECT_EQ(t.gEstado, 1);
    EXPECT_THAT(m.vistas.textos(), StartsWith("ERROR INDEXADOS Nº 1 I\\11\\260309000001\\"));
    EXPECT_EQ(t.cuantosRegistros(11), 1);
}

TEST(Tablas, DefinicionQueFalta) {
    MundoTablas m;
    Tablas t(m.capa);
    EXPECT_FALSE(m.abrir(t, 11, "NADIE"));
    EXPECT_EQ(m.vistas.textos(), "TABLA NADIE inexistente\n");
    EXPECT_EQ(m.vistas.cajas[0].titulo, "Veldorix");
    EXPECT_EQ(m.vistas.cajas[0].icono, core::Icono::parada);
    EXPECT_FALSE(m.carpeta.hay("datos/NADIE07.QZD"));

    // No length: reported and left; no field: reported and removed, so that it can be installed again.
    m.carpeta.escribir("programa/VACIA.QZA", "");
    EXPECT_FALSE(m.abrir(t, 11, "VACIA"));
    EXPECT_TRUE(m.carpeta.hay("programa/VACIA.QZA"));
    m.carpeta.escribir("programa/NULAS.QZA", std::string(33, ' '));
    EXPECT_FALSE(m.abrir(t, 11, "NULAS"));
    EXPECT_FALSE(m.carpeta.hay("programa/NULAS.QZA"));
    EXPECT_THAT(m.vistas.textos(), HasSubstr("TABLA NULAS inexistente"));

    // One that is there and wrong is said to be so, and stays.
    m.vistas.cajas.clear();
    m.carpeta.escribir("programa/CLAVE.QZA",
                       ficheroDefinicion("C", {{"A", 0, 4, 1}}, {}) + "I1:00105" + std::string(25, ' '));
    EXPECT_FALSE(m.abrir(t, 11, "CLAVE"));
    EXPECT_EQ(m.vistas.textos(), "un segmento sin campo en la clave 1 de la definición\n");
    EXPECT_TRUE(m.carpeta.hay("programa/CLAVE.QZA"));
}

TEST(Tablas, DirectorioQueNoEsta) {
    MundoTablas m;
    Tablas t(m.capa);
    EXPECT_FALSE(t.AbrirTabla(tabla, "EXTRA", 1, m.datos("nowhere/"), "07"));
    EXPECT_EQ(m.vistas.cajas.size(), 1U);
    EXPECT_FALSE(t.abierta(tabla));
}

// A key file that is not of the program is never written over.
TEST(Tablas, ClavesDeOtroFormato) {
    MundoTablas m;
    m.escribir("EXTRA07.QZC", "something else entirely, and long enough to be a file of somebody");
    Tablas t(m.capa);
    EXPECT_FALSE(m.abrir(t, tabla, "EXTRA"));
    EXPECT_EQ(m.vistas.textos(), "Error de protección en indexados ... Debe Reiniciar Windows\n");
    EXPECT_THAT(m.leer("EXTRA07.QZC"), StartsWith("something else"));
    EXPECT_THROW(t.LeerRegistro(tabla, 1), platform::ErrorArchivo);
}

// The system refuses to create the key file: the name is blamed, and the setting cleared.
TEST(Tablas, ClavesQueNoSePuedenCrear) {
    MundoTablas m;
    ArchivosDefectuosos archivos(*m.archivos);
    data::CapaDatos capa{archivos, m.ajustes, m.carpetas, m.reloj};
    m.vistas.escuchar(capa);
    Tablas t(capa);
    archivos.fallar({.operacion = Operacion::abrir,
                     .mascara = "*.QZC",
                     .numero = platform::error_archivo::permisoDenegado,
                     .siempre = true});
    EXPECT_FALSE(m.abrir(t, tabla, "EXTRA"));
    EXPECT_EQ(m.vistas.textos(), "NOMBRE DE ARCHIVO INVALIDO " + m.datos("EXTRA07.QZC") + "\n");
    EXPECT_EQ(m.vistas.cajas[0].icono, core::Icono::parada);
    EXPECT_EQ(m.ajustes.leer("DATOS_DIR"), "");
    EXPECT_FALSE(t.abierta(tabla));
}

TEST(Tablas, DatosVaciadosAMano) {
    for (const bool varios : {true, false}) {
        Lineas m;
        m.anadir("260309", "000001");
        m.tablas.CerrarTodo();
        m.escribir("EXTRA07.QZD", "");
        m.capa.gMultiusuario = varios;
        ASSERT_TRUE(m.abrir(m.tablas, tabla, "EXTRA"));
        EXPECT_EQ(m.tablas.orden("F\\1\\2"), varios ? 9 : 0);
        EXPECT_EQ(m.anadir("260309", "000002"), 2);  // the counter is not lowered
        EXPECT_EQ(m.tablas.LeerRegistro(tabla, 1), EstadoRegistro::sinEscribir);
    }
}

// Somebody has drawn a number and not written its record yet: the file is empty and yet the keys are not old.
TEST(Tablas, NoSeVaciaMientrasAlguienInserta) {
    Lineas m;
    ponerLinea(m.tablas, tabla, "260309", "570", "000001", "x");
    m.tablas.orden("I\\2" + m.tablas.textosClave(tabla));
    const auto otro = m.archivos->abrir(m.datos("EXTRA07.QZD"), platform::Apertura::escritura,
                                        platform::Comparticion::compartida);
    const motor::CerrojoInsercion cerrojo(*otro, platform::TipoBloqueo::compartido, {});
    ASSERT_TRUE(cerrojo.tomado());
    Tablas segunda(m.capa);
    ASSERT_TRUE(m.abrir(segunda, tabla, "EXTRA"));
    EXPECT_EQ(segunda.orden("F\\1\\2"), 0);
}

struct Reclavado : Lineas {
    // Records 1 to 5: 2 removed, 4 drawn and never written.
    Reclavado() {
        anadir("260301", "000005", "12SUELDOS");
        anadir("260301", "000004");
        anadir("260302", "000003", "12ALQUILER");
        ponerLinea(tablas, tabla, "260302", "570", "000002", "never written");
        EXPECT_EQ(tablas.orden("I\\2" + tablas.textosClave(tabla)), 0);
        anadir("260303", "000001");
        tablas.BorrarRegistro(tabla, 2);
        EXPECT_EQ(tablas.gEstado, 0);
        tablas.CerrarTodo();
    }
    void exigirEntera(std::int32_t proximo = 6) {
        reabrir();
        EXPECT_THAT(vistas.cajas, IsEmpty());
        EXPECT_THAT(recorrido(tablas, tabla, 1), ElementsAre(1, 3, 5));
        EXPECT_THAT(recorrido(tablas, tabla, 2), ElementsAre(1, 3, 5));
        EXPECT_THAT(recorrido(tablas, tabla, 3), ElementsAre(3, 5, 1));
        EXPECT_EQ(anadir("260304", "000006"), proximo);
    }
};

TEST(Tablas, ClavesPerdidasSeRehacen) {
    Reclavado m;
    std::filesystem::remove(m.datos("EXTRA07.QZC"));
    m.exigirEntera();
}

TEST(Tablas, ClavesRotasSeRehacen) {
    Reclavado m;
    std::filesystem::resize_file(m.datos("EXTRA07.QZC"), 0);
    m.exigirEntera();
}

// Keys of an older day, as from a copy: they know fewer records than there are.
TEST(Tablas, ClavesAtrasadasSeRehacen) {
    Reclavado m;
    const std::string viejas = m.leer("EXTRA07.QZC");
    m.reabrir();
    m.anadir("260304", "000009");
    m.tablas.CerrarTodo();
    m.escribir("EXTRA07.QZC", viejas);
    m.reabrir();
    EXPECT_THAT(recorrido(m.tablas, tabla, 1), ElementsAre(1, 3, 5, 6));
}

TEST(Tablas, ClavesDeOtraDefinicionSeRehacen) {
    Reclavado m;
    std::filesystem::remove(m.datos("EXTRA07.QZC"));
    m.tablas.orden("/C/" + m.datos("EXTRA07.QZC") + "/ 9/ 1/A/ 2");
    m.tablas.orden("K");
    m.exigirEntera();
}

// A last record cut off is nobody's: its number is not given again, and nothing is written over it.
TEST(Tablas, RegistroCortadoAlFinal) {
    Reclavado m;
    m.escribir("EXTRA07.QZD", m.leer("EXTRA07.QZD") + "26030");
    std::filesystem::remove(m.datos("EXTRA07.QZC"));
    m.exigirEntera(7);
    EXPECT_EQ(m.leer("EXTRA07.QZD").substr(5 * linea::bytes, 6), "26030\0"s);
}

TEST(Tablas, ReclavadoCortadoSeRepite) {
    // Places enough for several commits.
    constexpr std::int32_t vacios = 9000;
    int cortes = 0;
    for (int k = 1;; ++k) {
        SCOPED_TRACE(k);
        Reclavado m;
        m.escribir("EXTRA07.QZD", m.leer("EXTRA07.QZD") + std::string(vacios * linea::bytes, '\0'));
        std::filesystem::remove(m.datos("EXTRA07.QZC"));
        ArchivosDefectuosos archivos(*m.archivos);
        data::CapaDatos capa{archivos, m.ajustes, m.carpetas, m.reloj};
        m.vistas.escuchar(capa);
        archivos.cortarCorriente(k);
        bool entera = false;
        {
            Tablas t(capa);
            entera = m.abrir(t, tabla, "EXTRA");
        }
        if (entera) break;
        ++cortes;
        m.exigirEntera(vacios + 6);
        if (testing::Test::HasFailure()) return;
    }
    EXPECT_GE(cortes, 7);
}

// Several programs find the keys gone at the same moment.
TEST(Tablas, DosALaVezLasRehacenUnaVez) {
    Reclavado m;
    for (int vez = 0; vez < 20; ++vez) {
        std::filesystem::remove(m.datos("EXTRA07.QZC"));
        enProcesos(3, 1, [&](int, int) {
            m.capa.reintentosTablas = {500, std::chrono::milliseconds(10)};
            Tablas t(m.capa);
            if (!m.abrir(t, tabla, "EXTRA")) throw std::runtime_error("not open: " + m.vistas.textos());
            if (recorrido(t, tabla, 1) != std::vector<std::int32_t>{1, 3, 5})
                throw std::runtime_error("keys");
        });
        if (testing::Test::HasFailure()) return;
    }
    m.exigirEntera();
}

// The place of the number drawn is taken, since the keys are older than the records: nothing is written over.
TEST(Tablas, UnLugarOcupadoNoSePisa) {
    Lineas m;
    m.anadir("260301", "000001");
    Tablas otra(m.capa);
    ASSERT_TRUE(m.abrir(otra, 11, "EXTRA", 0));
    ponerLinea(otra, 11, "260302", "570", "000002", "by another way");
    otra.EscribirRegistro(11, 2);
    EXPECT_EQ(m.anadir("260303", "000003"), 3);
    EXPECT_EQ(m.tablas.LeerCampo(tabla, 2, linea::descripcion), "by another way      ");
    EXPECT_THAT(recorrido(m.tablas, tabla, 1), ElementsAre(1, 2, 3));
}

struct Defectuosa : MundoTablas {
    ArchivosDefectuosos defectuosos{*archivos};
    data::CapaDatos suya{defectuosos, ajustes, carpetas, reloj};
    Tablas tablas{suya};
    Defectuosa() {
        suya.enVigor = capa.enVigor;
        suya.gMultiusuario = true;
        suya.reintentosTablas = capa.reintentosTablas;
        suya.alAvisar = capa.alAvisar;
        vistas.escuchar(suya);
        EXPECT_TRUE(tablas.AbrirTablasEmpresa());
        ponerLinea(tablas, tabla, "260309", "6400000", "000001", "SUELDOS");
    }
};

TEST(Tablas, ClavesQueNoAdmitenMas) {
    Defectuosa m;
    auto& t = m.tablas;
    // The next write of a key file fails: the engine answers 29, all is opened again, and it goes through.
    m.defectuosos.fallar({.mascara = "*.QZC", .numero = platform::error_archivo::discoLleno});
    t.AnadirRegistro(tabla);
    EXPECT_EQ(t.gEstado, 0);
    EXPECT_THAT(m.vistas.cajas, IsEmpty());
    EXPECT_EQ(t.texto(tabla, 14), "SUELDOS");
    EXPECT_EQ(t.LeerCampo(tabla, t.gRegistro, linea::asiento), "000001");
    EXPECT_TRUE(t.abierta(data::tabla::anali));

    // It does not help: told, nothing written, the fields stay.
    m.defectuosos.fallar(
        {.mascara = "*.QZC", .numero = platform::error_archivo::discoLleno, .siempre = true});
    t.AnadirRegistro(tabla);
    EXPECT_EQ(t.gEstado, 29);
    EXPECT_THAT(m.vistas.textos(),
                StartsWith("ERROR INDEXADOS Nº 29 I\\2\\260309000001\\6400000   260309\\"));
    EXPECT_EQ(m.vistas.cajas[0].icono, core::Icono::parada);
    EXPECT_EQ(t.cuantosRegistros(tabla), 1);
    EXPECT_EQ(t.texto(tabla, 14), "SUELDOS");
    m.defectuosos.sanar();
    t.AnadirRegistro(tabla);
    EXPECT_EQ(t.gEstado, 0);
    EXPECT_EQ(recorrido(t, tabla, 1).size(), 2U);
}

TEST(Tablas, ClavesQueNoAdmitenMasAUnoSolo) {
    Defectuosa m;
    m.suya.gMultiusuario = false;
    m.defectuosos.fallar({.mascara = "*.QZC", .numero = platform::error_archivo::discoLleno});
    m.tablas.AnadirRegistro(tabla);
    EXPECT_EQ(m.tablas.gEstado, 29);
    EXPECT_EQ(m.vistas.cajas.size(), 1U);
    EXPECT_EQ(m.leer("EXTRA07.QZD"), "");
}

// A slot of somebody's own, in another directory, comes back as well.
TEST(Tablas, ReabrirTambienLasPropias) {
    Defectuosa m;
    auto& t = m.tablas;
    m.archivos->crearDirectorios(m.datos("otra"));
    ASSERT_TRUE(t.AbrirTabla(11, "EXTRA", 1, m.datos("otra"), "03"));
    ponerLinea(t, 11, "260309", "570", "000001", "x");
    m.defectuosos.fallar({.mascara = "EXTRA03.QZC"});
    t.AnadirRegistro(11);
    EXPECT_EQ(t.gEstado, 0) << m.vistas.textos();
    EXPECT_EQ(m.leer("otra/EXTRA03.QZD").size(), std::size_t{linea::bytes});
}

enum class Final { hecho, rehusado, lanzado };

// An insert on a disk with so many bytes left: the record and its keys are there, or neither.
Final anadirConDiscoDe(std::uint64_t bytes) {
    Defectuosa m;
    auto& t = m.tablas;
    t.AnadirRegistro(tabla);
    m.defectuosos.limitarDisco(bytes);
    Final fin = Final::lanzado;
    try {
        t.AnadirRegistro(tabla);
        fin = t.gEstado == 0 ? Final::hecho : Final::rehusado;
    } catch (const platform::ErrorArchivo& error) {
        EXPECT_EQ(error.numero(), platform::error_archivo::discoLleno);
    }
    m.defectuosos.sanar();
    const bool hecho = fin == Final::hecho;
    EXPECT_EQ(recorrido(t, tabla, 1).size(), hecho ? 2U : 1U);
    EXPECT_EQ(recorrido(t, tabla, 3).size(), hecho ? 2U : 1U);
    EXPECT_EQ(t.LeerRegistro(tabla, 2), hecho ? EstadoRegistro::vivo : EstadoRegistro::sinEscribir);
    ponerLinea(t, tabla, "260309", "570", "000003", "x");
    t.AnadirRegistro(tabla);
    EXPECT_EQ(t.gEstado, 0);
    EXPECT_EQ(t.LeerRegistro(tabla, t.gRegistro), EstadoRegistro::vivo);
    return fin;
}

TEST(Tablas, DiscoLleno) {
    constexpr std::uint64_t salto = 499;
    std::uint64_t bastan = 0;
    while (anadirConDiscoDe(bastan) != Final::hecho && bastan < 100'000)
        bastan += salto;
    // Within the last jump lie the ends in the keys' writes, within the record, and behind it.
    std::map<Final, int> finales;
    for (std::uint64_t bytes = bastan - salto; bytes < bastan; bytes += linea::bytes / 3)
        ++finales[anadirConDiscoDe(bytes)];
    EXPECT_GE(finales[Final::lanzado], 2);
    EXPECT_GT(finales[Final::rehusado] + finales[Final::hecho], 5);
}

// Beyond 4 GiB: positions are of 64 bits.
TEST(Tablas, ArchivosGrandes) {
    Lineas m;
    auto& t = m.tablas;
    constexpr std::int32_t lejos = 100'000'000;  // 6 GB, sparse
    ponerLinea(t, tabla, "260309", "570", "000001", "far");
    t.EscribirRegistro(tabla, lejos);
    EXPECT_EQ(t.cuantosRegistros(tabla), lejos);
    t.blanquear(tabla);
    EXPECT_EQ(t.LeerRegistro(tabla, lejos), EstadoRegistro::vivo);
    EXPECT_EQ(t.texto(tabla, 14), "far");
    EXPECT_EQ(t.LeerRegistro(tabla, lejos - 71'582'789), EstadoRegistro::sinEscribir);  // 4 GiB below
}

// The same with keys, made anew from a file whose records are wide enough to pass 4 GiB soon: new records go
// behind it.
TEST(Tablas, ArchivosGrandesConClaves) {
    constexpr int campos = 80, ancho = 789;  // 63,120 bytes a record
    constexpr std::int32_t hay = 70'000;     // 4.4 GB, sparse
    MundoTablas m;
    data::DefinicionTabla ancha;
    for (int i = 1; i <= campos; ++i) {
        data::CampoTabla campo;
        campo.nombre = "CAMPO " + std::to_string(i);
        campo.ancho = ancho;
        campo.posicion = i;
        ancha.campos.push_back(campo);
    }
    ancha.gNumeroCampos = campos;
    ancha.claves[1] = {{1, 1, 10}};
    ancha.numeroClaves = 1;
    m.carpeta.escribir("programa/EXTRA.QZA", data::componerDefinicion(ancha));
    const std::uint64_t largo = std::uint64_t{campos} * ancho;
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, tabla, "EXTRA"));
    for (std::int32_t i = 1; i <= hay; ++i) {  // numbers of records that have gone
        t.orden("I\\2\\x");
        t.orden("D\\" + std::to_string(i) + "\\Y\\2\\x");
    }
    t.CerrarTodo();
    m.archivos->abrir(m.datos("EXTRA07.QZD"), platform::Apertura::crear)->truncar(hay * largo);

    ASSERT_TRUE(m.abrir(t, tabla, "EXTRA"));
    t.blanquear(tabla);
    t.ponerCampo(tabla, 1, "FAR");
    t.ponerCampo(tabla, campos, "the last field");
    t.AnadirRegistro(tabla);
    EXPECT_EQ(t.gRegistro, hay + 1);
    t.blanquear(tabla);
    t.orden("S\\1\\2\\FAR");
    EXPECT_EQ(t.gRegistro, hay + 1);
    EXPECT_EQ(t.LeerRegistro(tabla, t.gRegistro), EstadoRegistro::vivo);
    EXPECT_EQ(t.texto(tabla, campos), "the last field");
    EXPECT_EQ(t.cuantosRegistros(tabla), hay + 1);
    EXPECT_EQ(m.archivos->estado(m.datos("EXTRA07.QZD"))->longitud, (hay + 1) * largo);
}

TEST(Tablas, LoSincronizadoAlCerrar) {
    MundoTablas m;
    m.ajustes.GrabarRegistro("SincronizarAlCerrar", "1");
    ArchivosDefectuosos archivos(*m.archivos);
    std::vector<std::string> sincronizados;
    archivos.alEmpezar([&](Operacion operacion, const std::string& ruta) {
        if (operacion == Operacion::sincronizar) sincronizados.push_back(ruta.substr(ruta.size() - 11));
    });
    data::CapaDatos capa{archivos, m.ajustes, m.carpetas, m.reloj};
    Tablas t(capa);
    ASSERT_TRUE(m.abrir(t, tabla, "EXTRA"));
    t.CerrarTodo();
    EXPECT_THAT(sincronizados, ElementsAre("EXTRA07.QZD", "EXTRA07.QZC"));

    // What cannot be made safe is told, and nothing stays open behind it.
    for (const char* cual : {"EXTRA07.QZD", "EXTRA07.QZC"}) {
        ASSERT_TRUE(m.abrir(t, tabla, "EXTRA"));
        archivos.fallar({.operacion = Operacion::sincronizar, .mascara = cual});
        EXPECT_ANY_THROW(t.CerrarTodo()) << cual;
        EXPECT_FALSE(t.abierta(tabla));
        EXPECT_EQ(t.orden("F\\1\\2"), 1) << "the keys are closed, too";
        EXPECT_NO_THROW(m.archivos->abrir(m.datos(cual), platform::Apertura::escritura,
                                          platform::Comparticion::exclusiva));
    }
}

// The keys of the table before are not those of one that is opened without.
TEST(Tablas, UnaRanuraSinClavesNoTieneLasDeAntes) {
    MundoTablas m;
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, tabla, "EXTRA"));
    ASSERT_TRUE(t.AbrirTabla(tabla, "EXTRA", 0, m.datos(), "08"));
    EXPECT_EQ(t.orden("F\\1\\" + std::to_string(tabla)), 1);
}

}  // namespace
