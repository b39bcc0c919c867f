// Keys made anew beside the old ones: every damage is mended, and no interruption leaves half a file.
#include "data/reindexado.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/archivos_defectuosos.h"
#include "data/apoyo_dannos.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::Desacuerdo;
using data::Reindexado;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Fin = Reindexado::Fin;

Reindexado reindexar(TablaEntera& m, const data::AlDiscrepar& alDiscrepar = {}) {
    return data::reindexarTabla(*m.archivos, m.ruta(), m.definicion, alDiscrepar);
}

TEST(Reindexado, CadaDannoSeRemedia) {
    for (const Danno& danno : dannos()) {
        SCOPED_TRACE(danno.nombre);
        TablaEntera m;
        danno.hacer(m);
        m.tablas.CerrarTodo();
        const std::string viejas = m.leer("EXTRA07.QZC");
        m.escribir("nuevo.EXTRA07.QZC", "of a run that was cut short");
        std::vector<std::string> frases;
        const auto hecho =
            reindexar(m, [&](const data::Discrepancia& una) { frases.push_back(data::frase(una)); });
        EXPECT_EQ(hecho.fin, Fin::hecho);
        EXPECT_THAT(frases, ElementsAreArray(danno.frases));
        EXPECT_THAT(hecho.adoptados, ElementsAreArray(danno.adoptados));
        EXPECT_EQ(hecho.anterior.empty(), viejas.empty());
        EXPECT_TRUE(viejas.empty() || m.leer("anterior.EXTRA07.QZC") == viejas);
        EXPECT_FALSE(m.carpeta.hay("datos/nuevo.EXTRA07.QZC"));
        const auto v = m.verificar();
        EXPECT_EQ(v.discrepancias, danno.quedaCortado ? 1U : 0U);
        EXPECT_EQ(v.vivos, hecho.registros);
        // The program goes on with them.
        ASSERT_TRUE(m.abrir(m.tablas, m.tabla, "EXTRA")) << m.vistas.textos();
        m.anadir(400);
        EXPECT_GT(m.tablas.gRegistro, m.registros - 2);
    }
}

TEST(Reindexado, ElContadorSigue) {
    TablaEntera m;
    for (int i = 301; i <= 305; ++i) {
        m.tablas.orden("I\\2" + m.claves(i));
        m.tablas.orden("D\\" + std::to_string(i) + "\\Y\\2" + m.claves(i));
    }
    m.tablas.CerrarTodo();
    ASSERT_EQ(reindexar(m).fin, Fin::hecho);
    EXPECT_EQ(m.verificar().contador, 305U);
}

TEST(Reindexado, EnUsoNoCambiaNada) {
    TablaEntera m;
    const std::string viejas = m.leer("EXTRA07.QZC");
    const auto exigirEnUso = [&] {
        EXPECT_EQ(reindexar(m).fin, Fin::enUso);
        EXPECT_TRUE(m.leer("EXTRA07.QZC") == viejas);
        EXPECT_FALSE(m.carpeta.hay("datos/nuevo.EXTRA07.QZC"));
        EXPECT_FALSE(m.carpeta.hay("datos/anterior.EXTRA07.QZC"));
    };
    exigirEnUso();
    m.tablas.CerrarTodo();
    {
        // The keys alone, as by a tool.
        motor::MotorIndexados otro(*m.archivos);
        std::string abrir = "/O/" + m.rutaClaves() + "/1";
        std::int32_t registro = 0;
        std::int16_t estado = 0;
        otro.Ejecutar(abrir, registro, estado);
        ASSERT_EQ(estado, 0);
        exigirEnUso();
    }
    EXPECT_EQ(reindexar(m).fin, Fin::hecho);
}

TEST(Reindexado, LoAjenoSeDejaComoEsta) {
    TablaEntera m;
    m.tablas.CerrarTodo();
    const std::string ajeno = "QZCLAVES\x63" + std::string(9000, 'x');
    m.escribir("EXTRA07.QZC", ajeno);
    EXPECT_EQ(reindexar(m).fin, Fin::ajeno);
    EXPECT_TRUE(m.leer("EXTRA07.QZC") == ajeno);
}

TEST(Reindexado, CortadoEnCualquierMomento) {
    int cortes = 0;
    for (int k = 1;; ++k) {
        SCOPED_TRACE(k);
        TablaEntera m;
        m.tablas.orden("D\\5\\Y\\2" + m.claves(5));
        m.tablas.CerrarTodo();
        const std::string viejas = m.leer("EXTRA07.QZC");
        ArchivosDefectuosos defectuosos(*m.archivos);
        defectuosos.cortarCorriente(k);
        bool cortado = false;
        try {
            EXPECT_EQ(data::reindexarTabla(defectuosos, m.ruta(), m.definicion, {}).fin, Fin::hecho);
        } catch (const std::exception&) {
            cortado = true;
        }
        if (!cortado) break;
        ++cortes;
        EXPECT_TRUE(m.leer("EXTRA07.QZC") == viejas || m.verificar().sana());
        EXPECT_EQ(reindexar(m).fin, Fin::hecho);
        EXPECT_THAT(m.frases(), IsEmpty());
        EXPECT_FALSE(m.carpeta.hay("datos/nuevo.EXTRA07.QZC"));
        if (testing::Test::HasFailure()) return;
    }
    EXPECT_GE(cortes, 8);
}

TEST(Reindexado, UnDiscoLlenoDejaLasViejas) {
    TablaEntera m;
    m.tablas.CerrarTodo();
    const std::string viejas = m.leer("EXTRA07.QZC");
    ArchivosDefectuosos defectuosos(*m.archivos);
    int fallos = 0;
    for (std::uint64_t libres = 4000;; libres += 6000, ++fallos) {
        SCOPED_TRACE(libres);
        defectuosos.limitarDisco(libres);
        try {
            data::reindexarTabla(defectuosos, m.ruta(), m.definicion, {});
            break;
        } catch (const std::exception&) {
            EXPECT_TRUE(m.leer("EXTRA07.QZC") == viejas);
            EXPECT_FALSE(m.carpeta.hay("datos/nuevo.EXTRA07.QZC"));
        }
        if (testing::Test::HasFailure()) return;
    }
    EXPECT_GE(fallos, 3);
    EXPECT_TRUE(m.verificar().sana());
}

}  // namespace
