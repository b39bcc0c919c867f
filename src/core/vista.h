// What the window shows, as plain data with a change notice: workflows write it, the window paints it, tests
// read it. No rule of a widget lives anywhere else.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

// The view by its index; the history has no kind of content.
enum class Opcion { veldorix = 0, personal = 1, historico = 2, vxcrm = 3 };

// The captions of the view selector, in its order, and the views they stand for.
inline constexpr std::array<std::string_view, 4> nombresVista = {"Empresas Veldorix", "Empresas CRM",
                                                                 "Archivos Personales", "Historico"};
inline constexpr std::array<Opcion, 4> opcionDeVista = {Opcion::veldorix, Opcion::vxcrm, Opcion::personal,
                                                        Opcion::historico};

// The grid: nine columns of text, one heading row. Rows and columns count from 0, row 0 being the headings.
class Rejilla {
  public:
    static constexpr int columnas = 9;
    using Fila = std::array<std::string, columnas>;
    enum class Alineacion { izquierda, centro };

    int filas() const { return static_cast<int>(filas_.size()); }  // with the heading
    void ponerFilas(int cuantas);                                  // with the heading; new rows are empty
    void vaciar();                                                 // no rows, no headings, nothing chosen
    const std::string& celda(int fila, int columna) const;         // "" outside the grid
    void ponerCelda(int fila, int columna, std::string texto);     // outside the grid: nothing
    // A data row; the heading cannot be removed. Row and RowSel stay: who removes decides what is chosen
    // next.
    void quitarFila(int fila);
    // Sorts the data rows by one column, ascending or descending, keeping the order of equal rows. As text by
    // code point, or as numbers. One chosen row stays chosen wherever it goes; of several none does, for
    // others would stand between them now.
    void ordenar(int columna, bool ascendente, bool comoNumero);
    // What the rows are in the order of since they were sorted last; -1 = as they were listed.
    int columnaOrden() const { return columnaOrden_; }
    bool ordenAscendente() const { return ordenAscendente_; }

    int Row = 0;  // current row and the other end of the selection; 0 = nothing chosen
    int RowSel = 0;
    // Width of each column as a share of the grid, in thousandths; -1 takes what is left.
    std::array<int, columnas> anchos{};
    std::array<Alineacion, columnas> alineacion{};

  private:
    bool dentro(int fila, int columna) const;
    void seguirEleccion(const std::vector<std::size_t>& orden);

    std::vector<Fila> filas_;
    int columnaOrden_ = -1;
    bool ordenAscendente_ = true;
};

// The gauge as painted: a bar of `porcentaje` (0..100) with its figure.
struct Medidor {
    bool visible = false;
    int porcentaje = 0;
};

// What a transfer is doing, for the panel beside the gauge. Counts in bytes.
struct Transferencia {
    bool activa = false;
    bool subida = false;
    std::string nombre;
    long long hecho = 0;
    long long total = 0;
    int piezas = 0;                  // pieces done in this run
    double segundos = 0;             // since the first piece
    bool esperandoServicio = false;  // a call is under way
    double esperaDesde = 0;          // when that call began, in seconds of the steady clock; 0 = none
};

// The fixed texts of the window; those with an access mark "&" keep it.
struct Rotulos {
    std::string Label1, Label2, Label3, Label5, Label6;
    std::array<std::string, 4> Option1;  // by index of the option
    std::string ayudaTamaño, ayudaCapacidad;
    std::string edicion;                 // menu that sorts
    std::array<std::string, 3> Ordenar;  // its entries: name, date, size
    std::string versionlb;
    std::vector<int> botonesToolbar2;         // numbers in their order; below 0 no button
    std::vector<std::string> ayudasToolbar2;  // one a number
};

enum class Parte {
    rejilla,
    fila,  // the cells of one row: Vista::filaCambiada
    carpetas,
    lista,
    opcion,
    etiquetas,
    medidor,
    panel,
    bloqueo,
    titulo,
    transferencia,
    rotulos
};

class Vista {
  public:
    Rejilla fx1;
    std::vector<std::string> carpetas;  // the user's service folders
    int carpetaElegida = -1;            // index into it; -1 = none
    std::string textoCarpetas;          // the combo's text
    std::vector<std::string> List1;     // file names as stored, behind the grid
    int elegidoList1 = -1;
    Opcion Option1 = Opcion::veldorix;

    // Labels under their own names.
    std::string NombreArchivo, Progreso, Tamaño;
    std::array<std::string, 2> LbCapacidad;
    bool capacidadRoja = false;
    std::string lbtotalocupado;
    bool listaLeida = true;  // the rows are what the service holds; false: it could not be asked
    std::string titulo;      // caption of the window
    Rotulos rotulos;

    Medidor medidor;
    Transferencia transferencia;
    int panel = 99;          // transfer panel: 0 preparing, 1 upload, 2 download, 99 none
    bool bloqueada = false;  // folder list, toolbar and grid disabled
    bool habilitada = true;  // every control but the toolbar (terms refused: false)
    bool ocupada = false;    // a workflow runs; entries return at once

    int filaCambiada = 0;  // the row of the last Parte::fila

    // Called after each change, with what changed. At most one listener; empty = nobody looks.
    std::function<void(Parte)> alCambiar;
    void avisar(Parte parte) const {
        if (alCambiar) {
            alCambiar(parte);
        }
    }
    // One row of the grid has other cells; spares the window to lay out all of them anew.
    void avisarFila(int fila) {
        filaCambiada = fila;
        avisar(Parte::fila);
    }
};

}  // namespace tarvoline::core
