// Several handles and processes at the same tables.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/en_procesos.h"
#include "data/apoyo_tablas.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::EstadoRegistro;
using data::Tablas;
using testing::IsEmpty;
using testing::StartsWith;

constexpr int tabla = data::tabla::planc;
constexpr int registro = 2;

// Two programs, each with its own handles, at a plan of three accounts.
struct DosProgramas : MundoTablas {
    Tablas una{capa};
    Tablas otra{capa};
    DosProgramas() {
        EXPECT_TRUE(abrir(una, tabla, "PLANC"));
        EXPECT_TRUE(abrir(otra, tabla, "PLANC"));
        for (const char* cuenta : {"4300000", "5700000", "6400000"}) {
            una.blanquear(tabla);
            una.ponerCampo(tabla, plan::cuenta, cuenta);
            una.AnadirRegistro(tabla);
        }
        EXPECT_EQ(otra.cuantosRegistros(tabla), 3);
    }
    template <typename Paso>
    static int numeroDe(Paso&& paso) {
        try {
            paso();
            return 0;
        } catch (const platform::ErrorArchivo& error) {
            return error.numero();
        }
    }
};
constexpr int negado = platform::error_archivo::permisoDenegado;

TEST(Bloqueos, ColumnasDistintasNoSeEstorban) {
    DosProgramas m;
    m.una.BloquearRegistro(tabla, registro, plan::debe);
    m.otra.BloquearRegistro(tabla, registro, plan::debe + 1);
    m.otra.escribirCampoDoble(tabla, registro, plan::debe + 1, 5);
    EXPECT_EQ(m.otra.LeerCampoDoble(tabla, registro, plan::debe + 1), 5);
    m.una.escribirCampoDoble(tabla, registro, plan::debe, 7);  // its own lock is no hindrance
    EXPECT_EQ(m.numeroDe([&] { m.otra.BloquearRegistro(tabla, registro, plan::debe); }), negado);
    EXPECT_EQ(m.numeroDe([&] { m.otra.escribirCampoDoble(tabla, registro, plan::debe, 1); }), negado);
    m.una.DesbloquearRegistro(tabla, registro, plan::debe);
    m.otra.BloquearRegistro(tabla, registro, plan::debe);
    EXPECT_EQ(m.otra.LeerCampoDoble(tabla, registro, plan::debe), 7);
    EXPECT_EQ(m.vistas.cajas.size(), 2U);  // the two that gave up
}

// What a lock covers, byte by byte, from 0 in the file.
TEST(Bloqueos, ElRangoDeUnBloqueo) {
    struct Caso {
        int desde, hasta;
        std::uint64_t primero, ultimo;
    };
    constexpr std::uint64_t comienzo = plan::bytes;
    for (const auto& [desde, hasta, primero, ultimo] :
         {Caso{0, 0, comienzo, comienzo + plan::bytes},  // the next record's first byte, too
          Caso{plan::debe, 0, comienzo + 31, comienzo + 38},
          Caso{plan::titulo, plan::debe, comienzo + 10, comienzo + 38},
          Caso{plan::haber, plan::haber + 1, comienzo + 47, comienzo + plan::bytes}}) {
        SCOPED_TRACE(desde);
        DosProgramas m;
        m.una.BloquearRegistro(tabla, registro, desde, hasta);
        const auto handle = m.archivos->abrir(m.datos("PLANC07.QZD"), platform::Apertura::escritura);
        for (std::uint64_t byte = 0; byte < 3 * plan::bytes; ++byte) {
            EXPECT_EQ(handle->podriaBloquear({byte, 1}, platform::TipoBloqueo::exclusivo),
                      byte < primero || byte > ultimo)
                << byte;
        }
        m.una.DesbloquearRegistro(tabla, registro, desde, hasta);
        EXPECT_TRUE(handle->podriaBloquear({0, 3 * plan::bytes}, platform::TipoBloqueo::exclusivo));
    }
}

// Nobody can be asked: every operation gives up with the error, and has left all as it was.
TEST(Bloqueos, SinNadieQueMireSeAbandona) {
    DosProgramas m;
    m.una.BloquearRegistro(tabla, registro);
    auto& t = m.otra;
    t.ponerCampo(tabla, plan::titulo, "kept");
    for (const auto& paso : std::vector<std::function<void()>>{
             [&] { t.LeerRegistro(tabla, registro); }, [&] { t.LeerCampo(tabla, registro, plan::titulo); },
             [&] { t.LeerCampoDoble(tabla, registro, plan::debe); },
             [&] { t.EscribirRegistro(tabla, registro); },
             [&] { t.GrabarCampo(tabla, registro, plan::nivel, "1"); },
             [&] { t.BloquearRegistro(tabla, registro); }, [&] { t.BorrarRegistro(tabla, registro); },
             [&] { t.LeerRegistro(tabla, registro + 1); },  // its first byte is held along
         }) {
        EXPECT_EQ(m.numeroDe(paso), negado);
    }
    EXPECT_EQ(t.gCampos(tabla, plan::titulo), "kept                ");
    // Each is told once, for the log.
    EXPECT_EQ(m.vistas.cajas.size(), 8U);
    EXPECT_THAT(m.vistas.textos(), StartsWith("Archivo en uso por otro proceso\n"));
    EXPECT_EQ(t.LeerRegistro(tabla, 1), EstadoRegistro::vivo);
    m.una.DesbloquearRegistro(tabla, registro);
    t.BorrarRegistro(tabla, registro);
    EXPECT_EQ(t.gEstado, 0);
    // Nothing is left locked.
    m.una.BloquearRegistro(tabla, registro);
}

// A person sets the pace: one box a try, until it goes through.
TEST(Bloqueos, CadaCajaEsUnIntento) {
    DosProgramas m;
    m.capa.alguienMira = true;
    m.una.BloquearRegistro(tabla, registro, plan::debe);
    m.vistas.alVerse = [&] {
        if (m.vistas.cajas.size() == 4) m.una.DesbloquearRegistro(tabla, registro, plan::debe);
    };
    EXPECT_EQ(m.otra.LeerRegistro(tabla, registro), EstadoRegistro::vivo);
    ASSERT_EQ(m.vistas.cajas.size(), 4U);
    for (const auto& caja : m.vistas.cajas) {
        EXPECT_EQ(caja.texto, "Archivo en uso por otro proceso");
        EXPECT_EQ(caja.icono, core::Icono::exclamacion);
        EXPECT_EQ(caja.titulo, "Veldorix");
    }
}

// The cheap look gives up after one box, person or not.
TEST(Bloqueos, LaCabeceraSeAbandona) {
    for (const bool alguien : {true, false}) {
        DosProgramas m;
        m.capa.alguienMira = alguien;
        m.otra.ponerCampo(tabla, plan::cuenta, "kept");
        m.una.BloquearRegistro(tabla, registro, plan::titulo);
        EXPECT_EQ(m.otra.LeerCabeceraRegistro(tabla, registro), EstadoRegistro::sinEscribir);
        EXPECT_EQ(m.vistas.textos(), "Archivo en uso por otro proceso\n");
        EXPECT_EQ(m.otra.gCampos(tabla, plan::cuenta), "kept      ");
        m.una.DesbloquearRegistro(tabla, registro, plan::titulo);
        // What lies behind the third field is nobody's concern.
        m.una.BloquearRegistro(tabla, registro, plan::debe);
        EXPECT_EQ(m.otra.LeerCabeceraRegistro(tabla, registro), EstadoRegistro::vivo);
        EXPECT_EQ(m.otra.gCampos(tabla, plan::cuenta), "5700000   ");
    }
}

// Waiting for a range of others must not give up an own lock inside it.
TEST(Bloqueos, EsperarNoSueltaLoPropio) {
    DosProgramas m;
    m.una.BloquearRegistro(tabla, registro, plan::debe);
    m.otra.BloquearRegistro(tabla, registro, plan::haber);
    EXPECT_EQ(m.numeroDe([&] { m.otra.LeerRegistro(tabla, registro); }), negado);
    EXPECT_EQ(m.numeroDe([&] { m.otra.BloquearRegistro(tabla, registro); }), negado);
    EXPECT_EQ(m.numeroDe([&] { m.una.BloquearRegistro(tabla, registro, plan::haber); }), negado);
}

TEST(Bloqueos, DosProcesosEnLaMismaColumna) {
    DosProgramas m;
    constexpr int veces = 300;
    m.capa.reintentosTablas = {500, std::chrono::milliseconds(10)};
    enProcesos(3, 1, [&](int, int) {
        Tablas t(m.capa);
        if (!m.abrir(t, tabla, "PLANC")) throw std::runtime_error("not open");
        for (int i = 0; i < veces; ++i) {
            t.BloquearRegistro(tabla, registro, plan::debe);
            const double suma = t.LeerCampoDoble(tabla, registro, plan::debe);
            t.escribirCampoDoble(tabla, registro, plan::debe, suma + 1);
            t.DesbloquearRegistro(tabla, registro, plan::debe);
        }
    });
    EXPECT_EQ(m.una.LeerCampoDoble(tabla, registro, plan::debe), 3 * veces);
}

// Records come and go in several processes at once; in the end keys and records agree.
TEST(Bloqueos, VariosProcesosAnadenYBorran) {
    MundoTablas m;
    m.capa.reintentosTablas = {500, std::chrono::milliseconds(10)};
    constexpr int procesos = 3;
    constexpr int veces = 120;
    constexpr int lineas = data::tabla::extra;
    enProcesos(procesos, 1, [&](int proceso, int) {
        for (int i = 0; i < veces; ++i) {
            // Opened and closed around each work, as operations do.
            Tablas t(m.capa);
            if (!m.abrir(t, lineas, "EXTRA")) throw std::runtime_error(m.vistas.textos());
            ponerLinea(t, lineas, "260309", std::to_string(proceso), std::to_string(100 + i), "STORM");
            t.AnadirRegistro(lineas);
            if (t.gEstado != 0) throw std::runtime_error(m.vistas.textos());
            if (i % 3 == 0) t.BorrarRegistro(lineas, t.gRegistro);
            if (t.gEstado != 0) throw std::runtime_error(m.vistas.textos());
        }
    });
    Tablas t(m.capa);
    ASSERT_TRUE(m.abrir(t, lineas, "EXTRA"));
    EXPECT_EQ(t.cuantosRegistros(lineas), procesos * veces);
    std::vector<std::int32_t> vivos;
    for (std::int32_t r = 1; r <= procesos * veces; ++r) {
        if (t.LeerRegistro(lineas, r) == EstadoRegistro::vivo) vivos.push_back(r);
    }
    EXPECT_EQ(vivos.size(), std::size_t{procesos * veces * 2 / 3});
    for (int clave = 1; clave <= 3; ++clave) {
        auto leidos = recorrido(t, lineas, clave);
        std::sort(leidos.begin(), leidos.end());
        EXPECT_EQ(leidos, vivos);
    }
}

// An exclusive open of a moment, as a test for free files does, is waited for.
TEST(Bloqueos, AbrirEsperaAQuienLoTieneParaSi) {
    MundoTablas m;
    m.escribir("PLANC07.QZD", "");
    auto suyo = m.archivos->abrir(m.datos("PLANC07.QZD"), platform::Apertura::escritura,
                                  platform::Comparticion::exclusiva);
    Tablas t(m.capa);
    EXPECT_FALSE(m.abrir(t, tabla, "PLANC"));
    EXPECT_EQ(m.vistas.cajas.size(), 1U);
    suyo.reset();
    EXPECT_TRUE(m.abrir(t, tabla, "PLANC"));
}

}  // namespace
