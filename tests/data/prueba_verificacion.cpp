// What a check of a table finds, and that it finds nothing where others are just at work.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/en_procesos.h"
#include "data/apoyo_dannos.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::StartsWith;

TEST(Verificacion, CadaDannoSeNombra) {
    for (const Danno& danno : dannos()) {
        SCOPED_TRACE(danno.nombre);
        TablaEntera m;
        danno.hacer(m);
        m.tablas.CerrarTodo();
        const std::string datos = m.leer("EXTRA07.QZD");
        const std::string claves = m.leer("EXTRA07.QZC");
        EXPECT_THAT(m.frases(), ElementsAreArray(danno.frases));
        EXPECT_EQ(m.verificar().sana(), danno.frases.empty());
        EXPECT_TRUE(m.leer("EXTRA07.QZD") == datos && m.leer("EXTRA07.QZC") == claves) << "it was changed";
    }
}

TEST(Verificacion, CuentaLoQueHay) {
    TablaEntera m;
    m.tablas.CerrarTodo();
    alargar(m.ruta(), std::string(linea::bytes, '\0'));
    const auto v = m.verificar();
    EXPECT_EQ(v.vivos, 299);
    EXPECT_EQ(v.anulados, 1);
    EXPECT_EQ(v.sinEscribir, 1);
    EXPECT_EQ(v.contador, 300U);
    EXPECT_THAT(v.entradas, ElementsAre(299, 299, 299));
    // A table as its company was made: empty, its keys still to come.
    m.archivos->borrar(m.datos("EXTRA07.QZC"));
    EXPECT_FALSE(m.verificar().sana());
    m.archivos->abrir(m.ruta(), platform::Apertura::vaciar);
    EXPECT_TRUE(m.verificar().sana());
}

// Any byte of the pages in use.
TEST(Verificacion, UnOctetoVolteadoEnLasClaves) {
    for (const std::uint64_t desdeElFinal : {2048U - 3, 2048U - 40, 3U * 2048 - 100}) {
        SCOPED_TRACE(desdeElFinal);
        TablaEntera m;
        // All pages anew, so that none is free.
        m.tablas.CerrarTodo();
        std::filesystem::remove(m.rutaClaves());
        EXPECT_TRUE(m.abrir(m.tablas, m.tabla, "EXTRA"));
        m.tablas.CerrarTodo();
        voltear(m.rutaClaves(), std::filesystem::file_size(m.rutaClaves()) - desdeElFinal);
        const std::string claves = m.leer("EXTRA07.QZC");
        EXPECT_THAT(m.frases(), ElementsAre(StartsWith("El archivo de claves está dañado (la página ")));
        EXPECT_TRUE(m.leer("EXTRA07.QZC") == claves) << "not even the mark of damage is written";
    }
}

TEST(Verificacion, UnBloqueoAjenoNoLaParaYElReclavadoSi) {
    TablaEntera m;
    m.tablas.BloquearRegistro(m.tabla, 4);
    EXPECT_THAT(m.frases(), IsEmpty());
    const auto otro = m.archivos->abrir(m.ruta(), platform::Apertura::escritura);
    const motor::CerrojoInsercion cerrojo(*otro, platform::TipoBloqueo::exclusivo, {});
    EXPECT_THROW(m.verificar(), platform::ErrorArchivo);
}

// Three programs insert, remove and change keys; a fourth checks meanwhile.
TEST(Verificacion, EntreOtrosQueTrabajan) {
    TablaEntera m;
    m.tablas.CerrarTodo();
    m.capa.reintentosTablas = {};  // with the patience of the program
    std::unique_ptr<data::Tablas> suyas;
    enProcesos(4, 150, [&](int proceso, int i) {
        if (proceso == 0) {
            for (const std::string& frase : m.frases())
                throw std::runtime_error(frase);
            return;
        }
        if (!suyas) suyas = std::make_unique<data::Tablas>(m.capa);
        data::Tablas& t = *suyas;
        if (!t.abierta(m.tabla) && !m.abrir(t, m.tabla, "EXTRA")) throw std::runtime_error("not open");
        const std::string asiento = std::to_string(200000 + proceso * 1000 + i);
        ponerLinea(t, m.tabla, "C41231", "5700001", asiento, "N." + asiento);
        t.AnadirRegistro(m.tabla);
        const std::int32_t registro = t.gRegistro;
        t.GrabarCampoClave(m.tabla, registro, linea::asiento, "X" + asiento.substr(1));
        if (i % 2 == 0) t.BorrarRegistro(m.tabla, registro);
        if (t.gEstado != 0) throw std::runtime_error("status");
    });
    EXPECT_THAT(m.frases(), IsEmpty());
    EXPECT_EQ(m.verificar().vivos, 299 + 3 * 75);
}

TEST(TablaSuelta, MasAllaDeCuatroGigas) {
    TablaEntera m;
    const std::string uno = m.leer("EXTRA07.QZD").substr(0, linea::bytes);
    constexpr std::int64_t ultimo = 80'000'000;
    std::filesystem::resize_file(m.ruta(), static_cast<std::uintmax_t>(ultimo - 1) * linea::bytes);
    alargar(m.ruta(), uno);
    data::TablaSuelta suelta(*m.archivos, m.ruta(), m.definicion);
    EXPECT_EQ(suelta.lugares(), ultimo);
    std::vector<std::int64_t> vivos;
    suelta.recorrer(ultimo - 1000, ultimo + 5, [&](const data::RegistroLeido& registro) {
        if (registro.estado == data::EstadoRegistro::vivo) vivos.push_back(registro.numero);
    });
    EXPECT_THAT(vivos, ElementsAre(ultimo));
}

TEST(TablaSuelta, LaDefinicionSaleDelNombre) {
    MundoTablas m;
    EXPECT_EQ(data::definicionDeTabla(*m.archivos, m.programa(), "x/planc12.qzd")->titulo, "PLAN CONTABLE");
    for (const char* mala : {"PLAN.QZD", "PLANC07.QZC", "PLANC07"})
        EXPECT_THROW(data::definicionDeTabla(*m.archivos, m.programa(), mala), data::ErrorDefinicion) << mala;
    EXPECT_THROW(data::definicionDeTabla(*m.archivos, m.programa(), "OTRAS07.QZD"), platform::ErrorArchivo);
}

}  // namespace
