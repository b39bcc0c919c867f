// The text of a settings file, and its lines by meaning.
//
//     ; a comment
//     [veldorix\Backup]
//     OrdenGrid=3
//     Carpeta=C:\Datos
//     Nota="  two blanks before, a line\nbreak within"
//     "odd=key"=value
//
// UTF-8, one value a line, LF or CR LF. A head names product and section with "\" between them; the values
// below it belong there, and one section may have several heads. Blanks around names and values do not count.
// A text that would not survive that stands in double quotes, with \\ \" \n \r \t and \xHH (one byte) in it;
// outside quotes a backslash is a plain character. Names compare without regard to case. When a value stands
// twice, the last one counts. Every line that is not understood stays where it is, as it is; below a head
// that is not understood that goes for all lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/arbol_ajustes.h"

namespace tarvoline::platform {

class AjustesTexto {
  public:
    explicit AjustesTexto(std::string_view texto = {});

    std::optional<std::string> leer(const ClaveAjuste& donde) const;
    // False when nothing had to change.
    bool grabar(const ClaveAjuste& donde, std::string_view valor);
    bool borrar(const ClaveAjuste& donde);
    // Where the value of `donde` stands in texto(), in bytes, with the blanks behind it. Nothing when it has
    // none, or stands in quotes.
    struct Sitio {
        std::size_t desde = 0;
        std::size_t longitud = 0;
    };
    std::optional<Sitio> sitio(const ClaveAjuste& donde) const;
    // As grabar, with blanks behind the value up to `ancho` characters: room for a longer one to be written
    // over it.
    bool grabarConSitio(const ClaveAjuste& donde, std::string_view valor, std::size_t ancho);
    // One entry a key, in the order of the file.
    std::vector<Ajuste> listar() const;
    // "line 12: text" for each line that was not understood.
    std::vector<std::string> omitidas() const;
    std::string texto() const;

  private:
    enum class Clase { ajena, cabecera, valor, omitida };
    struct Linea {
        std::string cruda;  // without its line break
        Clase clase = Clase::ajena;
        ClaveAjuste donde;    // of a head: without key
        ClaveAjuste plegada;  // the same, folded
        std::string valor;
    };

    static Linea interpretar(std::string_view cruda, const Linea& cabecera);
    static void leerCabecera(std::string_view resto, Linea& linea);
    std::optional<std::size_t> ultima(const ClaveAjuste& plegada) const;
    void insertar(Linea linea);

    std::vector<Linea> lineas_;
    std::string fin_ = "\n";
};

}  // namespace tarvoline::platform
