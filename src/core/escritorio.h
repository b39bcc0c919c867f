// What a workflow asks of the person at the screen. Three fulfil it: the window, the unattended run (which
// writes to the log and never waits), and a script in the tests. What is only shown (lists, labels, gauge) is
// core/vista.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::core {

// Ends the program from wherever it is: a closed window in mid-transfer, a company password refused for good.
// Not a std::exception, so that nothing that passes over errors stops it; only the entry catches it.
struct FinDePrograma {
    int codigo = 0;
};

enum class Icono { ninguno, informacion, exclamacion, pregunta, parada };

struct Caja {
    std::string texto;
    Icono icono = Icono::ninguno;
    std::string titulo;
};

// One line of text, masked unless said otherwise.
struct Peticion {
    std::string titulo;
    std::string texto;  // the prompt
    bool oculto = true;
    int longitud = 4;  // most characters that can be typed
};

enum class TipoCampo { texto = 0, oculto = 21, eleccion = 25, casilla = 30, opcion = 31 };

struct CampoDatos {
    std::string etiqueta;
    TipoCampo tipo = TipoCampo::texto;
    int longitud = 0;
    std::string valor;                    // default in, answer out ("1" = ticked)
    std::vector<std::string> elecciones;  // of TipoCampo::eleccion; the answer is one of them
};

// Dialog of several fields. Fields of type opcion exclude each other; `opcion` is the index of the chosen one
// among them, in and out.
struct EntradaDatos {
    std::string titulo;
    std::vector<CampoDatos> campos;
    int opcion = 0;
};

struct FiltroArchivo {
    std::string descripcion;  // "Empresas Veldorix"
    std::string mascara;      // "*.qzt"
};

struct EleccionArchivo {
    std::string titulo;
    FiltroArchivo filtro;
    std::string carpeta;  // where the dialog starts
    std::string nombre;   // initial name
};

// A report: lines of cells divided by tabs; `columnas` has one code a column: 0 text left, 3 number right.
struct Listado {
    std::string titulo;
    std::string encabezado;  // column heads, divided by commas
    std::string fecha;
    std::string columnas;  // "0,0,3"
    std::string texto;
};

class Escritorio {
  public:
    virtual ~Escritorio() = default;
    Escritorio() = default;
    Escritorio(const Escritorio&) = delete;
    Escritorio& operator=(const Escritorio&) = delete;

    virtual void Mensaje(const Caja& caja) = 0;
    // Yes or No. `siPorDefecto` false makes No the default button.
    virtual bool Preguntar(const Caja& caja, bool siPorDefecto = true) = 0;
    // OK or Cancel.
    virtual bool Confirmar(const Caja& caja) = 0;
    // Nothing when the prompt was cancelled, which is not the same as an empty answer.
    virtual std::optional<std::string> Pedir(const Peticion& peticion) = 0;
    // True when accepted; the answers stand in `datos`.
    virtual bool PedirDatos(EntradaDatos& datos) = 0;
    virtual std::optional<std::string> ElegirArchivo(const EleccionArchivo& eleccion) = 0;
    virtual std::optional<std::string> GuardarComo(const EleccionArchivo& eleccion) = 0;
    virtual std::optional<std::string> ElegirCarpeta(std::string_view titulo) = 0;
    virtual void MostrarListado(const Listado& listado) = 0;
    // Opens a document or URL with the system's handler, or starts a program named between double quotes.
    virtual void Abrir(std::string_view documento) = 0;
    // Gives the window a turn; events of the person run inside it. Throws FinDePrograma when the window was
    // closed.
    virtual void Turno() = 0;
    // Paints what is due while a call of the service is under way; no event of the person runs inside it.
    virtual void Latido() {}
    // Wait pointer on or off.
    virtual void Puntero(bool espera) = 0;
    // True when a person can answer: false makes data-layer retries end with an error in place of a box for
    // ever.
    virtual bool hayPersona() const = 0;
};

}  // namespace tarvoline::core
