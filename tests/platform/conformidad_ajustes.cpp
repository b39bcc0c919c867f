// What every settings tree must do, in a file and in memory.
#include <gmock/gmock.h>

#include "apoyo/ajustes_memoria.h"
#include "sistemas.h"

namespace tarvoline::pruebas {

using namespace platform;

class ConformidadAjustes : public testing::TestWithParam<bool> {
  protected:
    ConformidadAjustes()
        : archivos_(crearSistemaArchivos()),
          arbol_(GetParam() ? crearArbolAjustes(*archivos_, carpeta_.ruta("c/QZ/ajustes.ini"))
                            : std::make_unique<AjustesMemoria>()) {}

    CarpetaPrueba carpeta_;
    std::unique_ptr<SistemaArchivos> archivos_;
    std::unique_ptr<ArbolAjustes> arbol_;
};
INSTANTIATE_TEST_SUITE_P(Arboles, ConformidadAjustes, testing::Bool(),
                         [](const auto& caso) { return caso.param ? "archivo" : "memoria"; });

TEST_P(ConformidadAjustes, GuardaCualquierTexto) {
    const std::vector<std::string> valores = {"",
                                              " ",
                                              "  dos delante",
                                              "detrás \t",
                                              "línea\nlínea\r\notra\n",
                                              "C:\\Datos\\Año\\",
                                              "\"entre comillas\"",
                                              "\"",
                                              "a\"b",
                                              "; no es comentario",
                                              "[x\\y]",
                                              "a=b=c",
                                              std::string("cero\0dentro", 11),
                                              "\\n",
                                              "\xE9\xFF",
                                              "\xEF\xBB\xBFmarca",
                                              "\x7F\x01",
                                              "€ Ñ 漢",
                                              std::string(100'000, 'x')};
    for (std::size_t i = 0; i < valores.size(); ++i) {
        arbol_->grabar({"Veldorix", "S", "k" + std::to_string(i)}, valores[i]);
        // The same odd texts as names, too.
        arbol_->grabar({valores[i], valores[valores.size() - 1 - i], valores[i]}, std::to_string(i));
    }
    for (std::size_t i = 0; i < valores.size(); ++i) {
        EXPECT_EQ(arbol_->leer({"Veldorix", "S", "k" + std::to_string(i)}), valores[i]) << i;
        EXPECT_EQ(arbol_->leer({valores[i], valores[valores.size() - 1 - i], valores[i]}), std::to_string(i))
            << i;
    }
    EXPECT_EQ(arbol_->listar().size(), valores.size() * 2);
    EXPECT_TRUE(arbol_->lineasOmitidas().empty());
}

// Many light writes of growing and shrinking values, other values written between them.
TEST_P(ConformidadAjustes, UnValorLigeroNoEstorbaALosDemas) {
    const ClaveAjuste posicion{"VELDORIX", "NETBACKUP", "Offset"};
    arbol_->grabar({"VELDORIX", "NETBACKUP", "Active"}, "/tmp/á b.zip");
    for (const char* valor : {"1", "262145", "2147483647", "12345678901234", "7"}) {
        arbol_->grabarLigero(posicion, valor);
        EXPECT_EQ(arbol_->leer(posicion), valor);
        arbol_->grabar({"VELDORIX", "NETBACKUP", "User"}, valor);
        EXPECT_EQ(arbol_->leer(posicion), valor);
        EXPECT_EQ(arbol_->leer({"VELDORIX", "NETBACKUP", "Active"}), "/tmp/á b.zip");
    }
    EXPECT_EQ(arbol_->listar().size(), 3U);
}

TEST_P(ConformidadAjustes, LosNombresNoDistinguenCaja) {
    arbol_->grabar({"VELDORIX", "BACKUP", "Tamaño"}, "1");
    arbol_->grabar({"Veldorix", "Backup", "TAMAÑO"}, "2");
    EXPECT_EQ(arbol_->leer({"veldorix", "backup", "tamaño"}), "2");
    EXPECT_EQ(arbol_->listar().size(), 1U);
    EXPECT_FALSE(arbol_->leer({"veldorix", "backup", "otra"}));
    EXPECT_FALSE(arbol_->leer({"veldorix", "Settings", "tamaño"}));
    arbol_->borrar({"x", "BACKUP", "tamaño"});
    EXPECT_EQ(arbol_->listar().size(), 1U);
    arbol_->borrar({"veldorix", "backup", "tamaño"});
    EXPECT_TRUE(arbol_->listar().empty());
    arbol_->borrar({"veldorix", "backup", "tamaño"});
}

TEST_P(ConformidadAjustes, ListaPorSecciones) {
    arbol_->grabar({"P", "A", "1"}, "x");
    arbol_->grabar({"P", "B", "1"}, "y");
    arbol_->grabar({"p", "a", "2"}, "z");
    std::string valores;
    for (const auto& ajuste : arbol_->listar())
        valores += ajuste.valor;
    EXPECT_EQ(valores, "xzy");
}

}  // namespace tarvoline::pruebas
