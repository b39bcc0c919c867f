// The charts that ship: sound as tables, and what a new company gets from them.
#include <gtest/gtest.h>

#include <map>

#include "apoyo/mundo_datos.h"
#include "data/tablas.h"

namespace tarvoline::pruebas {
namespace {

using data::Tablas;
constexpr int planc = data::tabla::planc;

struct Cuenta {
    std::string titulo, nivel;
    std::int32_t registro = 0;
};
using Plan = std::map<std::string, Cuenta>;

// The program directory as shipped, the companies in a folder of the test.
struct Planes : testing::Test, MundoDatos {
    Planes() {
        ajustes.GrabarRegistro("Directory", TARVOLINE_PROGRAMA);
        capa.alMostrar = [](const core::Caja& caja) { ADD_FAILURE() << caja.texto; };
    }

    // A new company with the plan that `opcion` of Z gives, its chart open in `tablas`.
    std::string abrirNueva(Tablas& tablas, const std::string& opcion) {
        const auto ruta = data::CrearEmpresaArchivos(capa, "empresa" + opcion, "/Z=" + opcion);
        const auto numero = data::NumeroEmpresa(*archivos, ruta);
        ponerEnVigor(ruta, numero);
        claves = leer("PLANC" + numero + ".QZC");
        EXPECT_TRUE(tablas.AbrirTabla(planc, "PLANC", 1, datos(), numero));
        EXPECT_EQ(leer("PLANC" + numero + ".QZC"), claves) << "the keys had to be made anew";
        return numero;
    }
    // By a walk through key `clave`, which gives every record once and in order.
    static Plan leerPlan(Tablas& tablas, int clave) {
        Plan plan;
        std::string anterior;
        auto estado = tablas.orden("F\\" + std::to_string(clave) + "\\1");
        for (; estado == 0; estado = tablas.orden("N\\1")) {
            EXPECT_EQ(tablas.LeerRegistro(planc, tablas.gRegistro), data::EstadoRegistro::vivo);
            const auto texto = tablas.textoClave(planc, clave);
            EXPECT_LT(anterior, texto);
            anterior = texto;
            plan[tablas.texto(planc, 1)] = {tablas.texto(planc, 2), tablas.texto(planc, 3), tablas.gRegistro};
        }
        EXPECT_EQ(tablas.gEstado, 9);
        return plan;
    }

    std::string claves;
};

constexpr const char* opciones[] = {"0", "3", "5"};  // plans 00, 01, 02

TEST_F(Planes, UnaEmpresaNuevaEmpiezaConSuPlan) {
    for (const auto* opcion : opciones) {
        SCOPED_TRACE(opcion);
        Tablas tablas(capa);
        abrirNueva(tablas, opcion);
        const auto plan = leerPlan(tablas, 1);
        EXPECT_EQ(static_cast<std::int64_t>(plan.size()), tablas.cuantosRegistros(planc));
        EXPECT_EQ(leerPlan(tablas, 2).size(), plan.size());
        EXPECT_GT(plan.size(), 100U);
        for (const auto& [codigo, cuenta] : plan) {
            EXPECT_EQ(cuenta.nivel, codigo.size() == 10 ? "0" : std::to_string(codigo.size())) << codigo;
            for (std::size_t nivel = 1; nivel < std::min<std::size_t>(codigo.size(), 5); ++nivel) {
                EXPECT_TRUE(plan.contains(codigo.substr(0, nivel))) << codigo;
            }
        }
        // Groups 1 to 7, and no account of the others.
        for (char grupo = '1'; grupo <= '7'; ++grupo)
            EXPECT_TRUE(plan.contains(std::string(1, grupo))) << grupo;
        EXPECT_EQ(plan.lower_bound("8"), plan.end());
        // It can be worked with: an account of one's own is added behind those that came.
        tablas.blanquear(planc);
        tablas.ponerTexto(planc, 1, "4300000001");
        tablas.AnadirRegistro(planc);
        EXPECT_EQ(tablas.gRegistro, static_cast<std::int32_t>(plan.size()) + 1);
    }
}

TEST_F(Planes, SinImportesNiAnalitica) {
    for (const auto* opcion : opciones) {
        Tablas tablas(capa);
        const auto numero = abrirNueva(tablas, opcion);
        const auto& definicion = tablas.definicion(planc);
        const auto datos = leer("PLANC" + numero + ".QZD");
        const auto registro = static_cast<std::size_t>(definicion.gLongitudRegistro);
        const int titulo = definicion.campoDePosicion(2);
        ASSERT_EQ(datos.size() % registro, 0U);
        for (std::size_t desde = 0; desde < datos.size(); desde += registro) {
            for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
                const auto& campo = definicion.campo(i);
                const auto bytes = static_cast<std::size_t>(campo.bytes);
                const auto valor =
                    datos.substr(desde + static_cast<std::size_t>(campo.desplazamiento), bytes);
                if (campo.forma == data::FormaCampo::doble) {
                    EXPECT_EQ(valor, std::string(8, '\0')) << campo.nombre;
                } else if (campo.nombre == "ANALITICA") {
                    EXPECT_EQ(valor, "0");
                } else if (i > titulo && campo.nombre != "NIVEL") {
                    EXPECT_EQ(valor, std::string(bytes, ' ')) << campo.nombre;
                }
            }
        }
    }
}

TEST_F(Planes, CadaUnoConSuImpuesto) {
    const auto planDe = [&](const std::string& opcion) {
        Tablas tablas(capa);
        abrirNueva(tablas, opcion);
        return leerPlan(tablas, 1);
    };
    auto completo = planDe("0");
    auto corto = planDe("3");
    auto canario = planDe("5");
    EXPECT_LT(corto.size(), completo.size());
    EXPECT_EQ(completo["4770000021"].titulo, "H.P., IVA repercutido 21 %");
    EXPECT_EQ(corto["4720"].titulo, "H.P., IVA soportado");
    EXPECT_EQ(canario["4770000007"].titulo, "H.P. Canaria, IGIC repercutido 7 %");
    EXPECT_EQ(canario["57"].titulo, "Tesorería");
    for (const auto* codigo : {"400", "4300", "4751", "572", "600", "640", "700", "705"}) {
        EXPECT_TRUE(completo.contains(codigo) && corto.contains(codigo) && canario.contains(codigo))
            << codigo;
    }
    for (const auto& [codigo, cuenta] : canario) {
        EXPECT_EQ(cuenta.titulo.find("IVA"), std::string::npos) << codigo << ' ' << cuenta.titulo;
    }
}

}  // namespace
}  // namespace tarvoline::pruebas
