// The administrator's side: who may be entered, and that the running service sees it at once.
#include <gtest/gtest.h>

#include "server/almacen_usuarios.h"
#include "server/deposito.h"
#include "server/servicio_prueba.h"
#include "server/textos.h"

namespace tarvoline {
namespace {

using pruebas::ServicioEnMarcha;
using server::DatosAlta;
using server::ErrorServidor;

class Usuarios : public testing::Test {
  protected:
    pruebas::CarpetaPrueba carpeta_;
    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    server::Deposito deposito_{*archivos_, carpeta_.ruta("raiz")};
    server::AlmacenUsuarios& usuarios_ = deposito_.usuarios();
};

TEST_F(Usuarios, RefusesWhatTheResultsCouldNotCarry) {
    const std::vector<DatosAlta> malos = {
        {"", "clave1", "AC", "", {}},        {"A-B", "clave1", "AC", "", {}},
        {"A|B", "clave1", "AC", "", {}},     {"A\tB", "clave1", "AC", "", {}},
        {" A", "clave1", "AC", "", {}},      {std::string(65, 'A'), "clave1", "AC", "", {}},
        {"error:x", "clave1", "AC", "", {}}, {"\xFF", "clave1", "AC", "", {}},
        {"A", "clave1", "A-C", "", {}},      {"A", "clave1", "AC", "x|y", {}},
        {"A", "clave1", "AC", "x-y", {}},    {"A", "", "AC", "", {}},
        {"A", "con blanco", "AC", "", {}},   {"A", "añadida", "AC", "", {}},
        {"A", "guion-1", "AC", "", {}},      {"A", std::string(41, 'x'), "AC", "", {}},
        {"A", "clave1", "AC", "", -1},       {"A", "clave1", "", "", 5},
    };
    for (const DatosAlta& datos : malos) {
        EXPECT_THROW(usuarios_.alta(datos), ErrorServidor)
            << datos.usuario << '/' << datos.clave << '/' << datos.cuenta << '/' << datos.etiqueta;
    }
    EXPECT_TRUE(usuarios_.todos().empty());
    EXPECT_EQ(usuarios_.capacidadGb("AC"), 0);
    EXPECT_NO_THROW(
        usuarios_.alta({std::string(64, 'A'), std::string(40, 'x'), "AC", "Peña e Hijos, S.L.", 5}));
    EXPECT_THROW(usuarios_.alta({std::string(64, 'A'), "clave1", "AC", "", {}}), ErrorServidor) << "exists";
}

TEST_F(Usuarios, CapacityBelongsToTheAccountAndCopiesToTheUser) {
    usuarios_.alta({"A", "clave1", "ac", "", 5});
    usuarios_.alta({"B", "clave2", "AC", "", {}});
    EXPECT_EQ(usuarios_.capacidadGb("AC"), 5);
    usuarios_.modificar({"B", "", "", "", 7});
    EXPECT_EQ(usuarios_.capacidadGb("ac"), 7);
    EXPECT_EQ(usuarios_.buscar("B")->clave, "clave2") << "what was not given stays";
    EXPECT_EQ(usuarios_.porCuenta("ac").size(), 2U);
    EXPECT_THROW(usuarios_.modificar({"C", "clave3", "", "", {}}), ErrorServidor);

    const auto id = usuarios_.buscar("A")->id;
    usuarios_.baja("A");
    EXPECT_EQ(usuarios_.buscar("A"), nullptr);
    EXPECT_EQ(usuarios_.porCuenta("AC").size(), 1U);
    EXPECT_EQ(usuarios_.porCarpetaRaiz("U0000001"), nullptr);
    EXPECT_THROW(usuarios_.baja("A"), ErrorServidor);
    usuarios_.alta({"A", "clave3", "AC", "", {}});
    EXPECT_EQ(usuarios_.buscar("A")->id, id) << "who was struck off comes back to his copies";
    EXPECT_EQ(usuarios_.buscar("A")->clave, "clave3");
}

TEST(UsuariosEnMarcha, AreSeenByTheRunningServiceAtOnce) {
    ServicioEnMarcha servicio;
    EXPECT_EQ(servicio.cliente("EVA", "nueva1").con("DatosUsuario"), server::respuesta::sinClaveAcceso);
    server::Deposito otro(*servicio.archivos, servicio.carpeta.ruta("raiz"));
    otro.usuarios().alta({"EVA", "nueva1", "AC02", "", {}});
    EXPECT_EQ(servicio.cliente("EVA", "nueva1").con("DatosUsuario"), "5-EVA-AC02-");
    otro.usuarios().modificar({"EVA", "nueva2", "", "", {}});
    EXPECT_EQ(servicio.cliente("EVA", "nueva1").con("DatosUsuario"), server::respuesta::claveIncorrecta);
    otro.usuarios().baja("EVA");
    EXPECT_EQ(servicio.cliente("EVA", "nueva2").con("DatosUsuario"), server::respuesta::sinClaveAcceso);
}

}  // namespace
}  // namespace tarvoline
