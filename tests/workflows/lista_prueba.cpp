#include "workflows/lista.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/formato.h"
#include "workflows/listados.h"
#include "workflows/mundo_servicio.h"

namespace tarvoline::workflows {
namespace {

using ::testing::ElementsAre;

class PruebaLista : public ::testing::Test {
  protected:
    // A view of personal files of these names and sizes, as the service lists them.
    void listar(std::vector<std::pair<std::string, std::string>> archivos) {
        mundo.vista().Option1 = core::Opcion::personal;
        std::string nombres;
        for (const auto& [nombre, bytes] : archivos) {
            nombres += (nombres.empty() ? "" : "\t") + nombre;
        }
        mundo.servicio.responder("ListadoArchivos", nombres);
        mundo.servicio.responder("FileSize", [archivos](pruebas::ServicioGuion::Argumentos& a) {
            for (const auto& [nombre, bytes] : archivos) {
                if (nombre == std::get<std::string>(a[4])) return bytes;
            }
            return std::string("ERROR:no existe");
        });
        mundo.flujos.listados().RefrescarVista();
        mundo.servicio.olvidar();
    }
    std::vector<std::string> columna(int cual) const {
        std::vector<std::string> textos;
        for (int fila = 1; fila < rejilla.filas(); ++fila)
            textos.push_back(rejilla.celda(fila, cual));
        return textos;
    }
    std::vector<std::string> borrados() const {
        std::vector<std::string> nombres;
        for (const auto& llamada : mundo.servicio.llamadas("EliminarArchivo")) {
            nombres.push_back(llamada.texto(4));
        }
        return nombres;
    }
    void suprimir(int desde, int hasta) {
        rejilla.Row = desde;
        rejilla.RowSel = hasta;
        lista.fx1_KeyDown(teclaSuprimir);
    }

    pruebas::MundoServicio mundo;
    core::Rejilla& rejilla = mundo.vista().fx1;
    Lista& lista = mundo.flujos.lista();
};

TEST_F(PruebaLista, NombreDeUnaCopia) {
    const auto partes = Lista::separarNombre("COMERCIAL AÑIL 2024-05-31  18 30.ZIP");
    EXPECT_EQ(partes.descripcion, "COMERCIAL AÑIL ");
    EXPECT_EQ(partes.fechaHora, "31/05/2024 18:30");
    EXPECT_EQ(partes.orden, "202405311830");
    EXPECT_EQ(Lista::separarNombre(" 2024-05-31  18 30.ZIP").fechaHora, "31/05/2024 18:30");
    const auto sinSello = Lista::separarNombre("UNA EMPRESA SIN SELLO ALGUNO.ZIP");
    EXPECT_EQ(sinSello.descripcion, "UNA EMPRESA");
    EXPECT_EQ(sinSello.fechaHora, "A SIN:SELLO:ALGUNO");
    EXPECT_NO_THROW(Lista::separarNombre(std::string(21, 'x')));
    EXPECT_THROW(Lista::separarNombre("CORTA.ZIP"), core::ErrorIndice);
}

TEST_F(PruebaLista, FilasDeCopias) {
    mundo.servicio.responder("ListadoArchivos", "ALFA 2024-05-31  18 30.ZIP\tBETA 2023-01-02  03 04.ZIP");
    mundo.servicio.responder("FileSize", "3145728");
    mundo.flujos.listados().RefrescarVista();
    ASSERT_EQ(rejilla.filas(), 3);
    const char* cabeza[] = {"N", "", "<950>", "<2225>", "<964>", "", ""};
    const std::string fila[] = {"002",
                                "BETA 2023-01-02  03 04.ZIP",
                                "BETA ",
                                "02/01/2023 03:04",
                                core::formatoImporte(3) + " MB",
                                "202301020304",
                                "3145728"};
    for (int columna = 1; columna <= 7; ++columna) {
        EXPECT_EQ(rejilla.celda(0, columna), cabeza[columna - 1]) << columna;
        EXPECT_EQ(rejilla.celda(2, columna), fila[columna - 1]) << columna;
    }
    // A name too short to be taken apart ends the entry.
    mundo.servicio.responder("ListadoArchivos", "CORTA.ZIP");
    mundo.flujos.listados().Option1_Click(0);
    EXPECT_EQ(mundo.guion().ultimo().titulo, "Tarvoline");
    EXPECT_TRUE(mundo.guion().mostro("CORTA.ZIP"));
}

TEST_F(PruebaLista, ElSentidoEsDeLaVentana) {
    listar({{"b", "9"}, {"a", "100"}, {"c", "25"}});
    lista.Ordenar_Click(0);
    EXPECT_THAT(columna(2), ElementsAre("a", "b", "c"));
    lista.Ordenar_Click(2);
    EXPECT_THAT(columna(7), ElementsAre("100", "25", "9")) << "sizes sort as numbers";
    EXPECT_EQ(mundo.estado().gOrdenGrid, 122);
    lista.Ordenar_Click(2);
    EXPECT_THAT(columna(7), ElementsAre("9", "25", "100"));
    EXPECT_EQ(mundo.nucleo.ajustes.leer("OrdenGrid", "Backup"), "121");
    mundo.flujos.listados().carpetas_Click(1);
    EXPECT_THAT(columna(7), ElementsAre("9", "25", "100")) << "another folder, the same order";
    EXPECT_EQ(mundo.estado().gCarpeta, "VENTAS");
}

TEST_F(PruebaLista, OrdenarNoEligeOtrosArchivos) {
    listar({{"b", "9"}, {"a", "100"}, {"c", "25"}});
    rejilla.Row = rejilla.RowSel = 1;
    lista.Ordenar_Click(0);
    EXPECT_EQ(rejilla.Row, 2) << "b has moved behind a";
    suprimir(rejilla.Row, rejilla.RowSel);
    EXPECT_THAT(borrados(), ElementsAre("b"));
    rejilla.Row = 2;
    rejilla.RowSel = 1;
    lista.Ordenar_Click(0);
    EXPECT_EQ(rejilla.Row, 0);
    lista.fx1_KeyDown(teclaSuprimir);
    EXPECT_THAT(borrados(), ElementsAre("b")) << "of several chosen none stays";
}

TEST_F(PruebaLista, ElOrdenGuardadoVuelveTrasReiniciar) {
    for (const auto& [guardado, esperado] :
         std::vector<std::pair<std::string, std::vector<std::string>>>{{"101", {"a", "b", "c"}},
                                                                       {"102", {"c", "b", "a"}},
                                                                       {"122", {"a", "c", "b"}},
                                                                       {"", {"b", "a", "c"}}}) {
        mundo.nucleo.ajustes.GrabarRegistro("OrdenGrid", guardado, "Backup");
        mundo.estado().SentidoOrden = 0;
        mundo.estado().gOrdenGrid = 0;
        mundo.estado().gInicio = true;  // sizes come later
        listar({{"b", "9"}, {"a", "100"}, {"c", "25"}});
        lista.aplicarOrdenGuardado();
        mundo.estado().gInicio = false;
        mundo.flujos.listados().ActualizaTamanoFila();
        EXPECT_EQ(columna(2), esperado) << guardado;
        EXPECT_EQ(mundo.nucleo.ajustes.leer("OrdenGrid", "Backup"), guardado);
    }
}

TEST_F(PruebaLista, BorrarHaciaAbajo) {
    listar({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}});
    suprimir(2, 3);
    EXPECT_THAT(borrados(), ElementsAre("b", "c"));
    EXPECT_THAT(columna(2), ElementsAre("a", "d"));
    EXPECT_EQ(rejilla.Row, rejilla.RowSel);
    EXPECT_THAT(mundo.historia(), ElementsAre("maria ha borrado el archivo b, c"));
    EXPECT_EQ(mundo.servicio.llamadas("EliminarArchivo").at(0).texto(3), "PERSONAL");
    suprimir(2, 1);
    EXPECT_THAT(borrados(), ElementsAre("b", "c", "a", "d"));
    EXPECT_THAT(columna(2), ElementsAre("a", "d")) << "chosen upwards: the rows stay";
    listar({{"a", "1"}});
    suprimir(1, 1);
    EXPECT_EQ(rejilla.filas(), 1) << "the only row";
    EXPECT_EQ(rejilla.Row, 0);
}

TEST_F(PruebaLista, UnFalloAMitadNoBorraOtros) {
    listar({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}});
    mundo.servicio.responder("EliminarArchivo", [](pruebas::ServicioGuion::Argumentos& a) {
        return std::get<std::string>(a[4]) == "b" ? "ERROR:en uso" : "";
    });
    mundo.servicio.responder("ListadoArchivos", "b\tc\td");  // what the reload finds
    suprimir(1, 3);
    EXPECT_THAT(borrados(), ElementsAre("a", "b"));
    EXPECT_THAT(columna(2), ElementsAre("b", "c", "d"));
    EXPECT_TRUE(mundo.guion().mostro("ERROR:en uso"));
    EXPECT_THAT(mundo.historia(), ElementsAre("maria ha borrado el archivo a"));
}

TEST_F(PruebaLista, CualquierOtraTeclaDejaSuLinea) {
    listar({{"a", "1"}});
    lista.fx1_KeyDown(teclaSuprimir);
    EXPECT_THAT(columna(2), ElementsAre("a")) << "nothing chosen";
    mundo.servicio.olvidar();
    rejilla.Row = rejilla.RowSel = 1;
    lista.fx1_KeyDown(40);
    mundo.vista().Option1 = core::Opcion::historico;
    lista.fx1_KeyDown(teclaSuprimir);
    EXPECT_THAT(borrados(), ElementsAre());
    EXPECT_THAT(mundo.historia(),
                ElementsAre("maria ha borrado el archivo ", "maria ha borrado el archivo "));
}

TEST_F(PruebaLista, EliminarPreguntaYVuelveALeer) {
    listar({{"a", "1"}, {"b", "2"}});
    rejilla.Row = rejilla.RowSel = 2;
    mundo.vista().elegidoList1 = 1;
    mundo.guion().contestarNo("<2239>");
    lista.Eliminar_Click();
    EXPECT_THAT(borrados(), ElementsAre());
    mundo.guion().contestarSi("<2239>");
    mundo.servicio.responder("ListadoArchivos", "a");
    lista.Eliminar_Click();
    EXPECT_THAT(borrados(), ElementsAre("b"));
    EXPECT_THAT(mundo.vista().List1, ElementsAre("a"));
    EXPECT_EQ(mundo.vista().elegidoList1, 0) << "the list has become shorter";
}

}  // namespace
}  // namespace tarvoline::workflows
