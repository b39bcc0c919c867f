// qztabla volcar: the records of a table as text.
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>

#include "data/volcado.h"
#include "platform/terminal.h"
#include "qztabla.h"
#include "qztabla_tabla.h"

namespace tarvoline::tools {

namespace {

using data::CampoTabla;
using data::DefinicionTabla;
using data::FormaCampo;

constexpr const char* ayuda =
    "Una línea por registro, en UTF-8, con los campos separados por tabuladores; la primera trae los títulos "
    "y\n"
    "la primera columna el número del registro. Un tabulador, retorno, salto de línea o barra invertida "
    "dentro\n"
    "de un valor se escriben \\t, \\r, \\n y \\\\. Las fechas van como 2024-12-31; los textos, sin los "
    "blancos del\n"
    "final. No salen los registros anulados ni los lugares sin escribir.\n"
    "Con --json, un objeto JSON por línea, de los mismos registros: los números como números, lo demás como\n"
    "texto. Un título repetido o vacío lleva detrás \"#\" y el número del campo.\n"
    "Salida: 0 hecho, 1 fallo, 2 argumentos malos.";

// The names of the members; [0] is not used.
std::vector<std::string> nombresJson(const DefinicionTabla& definicion) {
    std::vector<std::string> nombres(1);
    std::set<std::string> vistos{"", std::string(data::tituloNumero)};
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        std::string nombre = definicion.campo(i).nombre;
        if (!vistos.insert(nombre).second) nombre += "#" + std::to_string(i);
        nombres.push_back(std::move(nombre));
    }
    return nombres;
}

nlohmann::ordered_json valorJson(const CampoTabla& campo, std::string_view bytes) {
    std::string texto;
    data::descifrarCampo(campo, bytes, texto);
    switch (campo.forma) {
        case FormaCampo::entero16:
            return data::TextoAEntero(bytes);
        case FormaCampo::entero32:
            return data::TextoALargo(bytes);
        case FormaCampo::simple:
            if (!std::isfinite(data::TextoASimple(bytes))) return nullptr;
            return data::valorDeTexto(texto);
        case FormaCampo::doble:
            return data::TextoADoble(bytes);
        default:
            return data::valorVolcado(campo, texto);
    }
}

void volcarJson(data::TablaSuelta& tabla, const data::Progreso& progreso) {
    const DefinicionTabla& def = tabla.definicion();
    const auto nombres = nombresJson(def);
    const std::int64_t lugares = tabla.lugares();
    tabla.recorrer(1, lugares, [&](const data::RegistroLeido& registro) {
        if (progreso) {
            progreso(static_cast<std::uint64_t>(registro.numero), static_cast<std::uint64_t>(lugares));
        }
        if (registro.estado != data::EstadoRegistro::vivo) return;
        nlohmann::ordered_json objeto;
        objeto[std::string(data::tituloNumero)] = registro.numero;
        for (int i = 1; i <= def.gNumeroCampos; ++i) {
            const CampoTabla& campo = def.campo(i);
            const auto bytes = registro.bytes.substr(static_cast<std::size_t>(campo.desplazamiento),
                                                     static_cast<std::size_t>(campo.bytes));
            objeto[nombres[static_cast<std::size_t>(i)]] = valorJson(campo, bytes);
        }
        std::cout << objeto.dump() << '\n';
    });
}

void volcarTabla(const TablaPedida& pedida, bool json) {
    const auto archivos = platform::crearSistemaArchivos();
    data::TablaSuelta tabla(*archivos, pedida.ruta, pedida.leerDefinicion(*archivos));
    std::ios::sync_with_stdio(false);
    LineaProgreso linea(platform::hayTerminalSalida());
    if (json) {
        volcarJson(tabla, linea.comoFuncion());
    } else {
        const auto escribir = [](std::string_view pieza) { std::cout << pieza; };
        data::volcar(tabla, escribir, linea.comoFuncion());
    }
    terminarSalida();
}

}  // namespace

void anadirVolcar(CLI::App& programa, TareaTabla& tarea) {
    const auto pedida = std::make_shared<TablaPedida>();
    const auto json = std::make_shared<bool>(false);
    auto* orden = programa.add_subcommand("volcar", "Escribe los registros de una tabla como texto");
    orden->footer(ayuda);
    pedida->anadirOpciones(*orden, "Tabla (.QZD)");
    orden->add_flag("--json", *json, "Un objeto JSON por línea");
    orden->callback([pedida, json, &tarea] {
        tarea = [pedida, json] {
            volcarTabla(*pedida, *json);
            return salida::hecho;
        };
    });
}

}  // namespace tarvoline::tools
