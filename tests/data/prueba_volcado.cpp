#include "data/volcado.h"

#include <gtest/gtest.h>

#include "data/apoyo_tablas.h"
#include "data/huella.h"
#include "data/verificacion.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;

constexpr int tabla = data::tabla::extra;

TEST(Volcado, UnaLineaPorRegistroVivo) {
    MundoTablas m;
    data::Tablas tablas(m.capa);
    ASSERT_TRUE(m.abrir(tablas, tabla, "EXTRA"));
    const auto anadir = [&](std::string_view fecha, std::string_view descripcion, std::string_view importe) {
        ponerLinea(tablas, tabla, fecha, " 570", "1", descripcion, importe);
        tablas.AnadirRegistro(tabla);
    };
    anadir("C41231", "a\tb\\c\r\nd", "-1234.5");
    anadir("980102", "removed", "0");
    anadir("980102", std::string("\xd1\x80 q\0rest", 10), "1E+20");
    anadir("981302", "not a date", "0.1");
    anadir("", "none", "0");
    tablas.BorrarRegistro(tabla, 2);
    tablas.CerrarTodo();

    std::string texto;
    data::TablaSuelta suelta(*m.archivos, m.datos("EXTRA07.QZD"),
                             data::definicionDeTabla(*m.archivos, m.programa(), "EXTRA07.QZD"));
    data::volcar(suelta, [&](std::string_view pieza) { texto += pieza; });
    EXPECT_EQ(texto,
              "REGISTRO\tFECHA\tCUENTA\tASIENTO\tDESCRIPCION\tIMPORTE\tPUNTEO\tNUMERO\tCAMBIO\n"
              "1\t2024-12-31\t 570\t1\ta\\tb\\\\c\\r\\nd\t-1234.5\t0\t0\t0\n"
              "3\t1998-01-02\t 570\t1\tÑ€ q\t1E+20\t0\t0\t0\n"
              "4\t981302\t 570\t1\tnot a date\t0.1\t0\t0\t0\n"
              "5\t\t 570\t1\tnone\t0\t0\t0\t0\n");
    data::Huella huella;
    huella.anadir(texto);
    EXPECT_EQ(data::verificarTabla(*m.archivos, suelta, {}).huella, huella.enHexadecimal());
}

// The example of FIPS 180.
TEST(Huella, EnPiezas) {
    data::Huella huella;
    for (const char* pieza : {"a", "", "bc"})
        huella.anadir(pieza);
    EXPECT_EQ(huella.enHexadecimal(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

}  // namespace
