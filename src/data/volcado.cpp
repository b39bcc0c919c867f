#include "data/volcado.h"

#include <algorithm>

#include "core/texto.h"

namespace tarvoline::data {

namespace {

constexpr std::size_t bytesPieza = 1U << 16U;
constexpr std::size_t cadaCuantos = 4096;

int cifra(char c) {
    return c >= '0' && c <= '9' ? c - '0' : -1;
}

// Two digits; -1 for anything else.
int dosCifras(std::string_view texto) {
    const int decena = cifra(texto[0]);
    const int unidad = cifra(texto[1]);
    return decena < 0 || unidad < 0 ? -1 : decena * 10 + unidad;
}

// Of a stored year's two characters (data/fechas.h); 0: no year.
int anoGuardado(std::string_view texto) {
    constexpr int primeroConCifras = 60;
    if (const int dos = dosCifras(texto); dos >= 0) return dos >= primeroConCifras ? 1900 + dos : 0;
    const int unidad = cifra(texto[1]);
    if (texto[0] < 'A' || texto[0] > 'Z' || unidad < 0) return 0;
    return 2000 + 10 * (texto[0] - 'A') + unidad;
}

// "2024-12-31"; empty when `guardada` is no date.
std::string fechaIso(std::string_view guardada) {
    constexpr std::size_t caracteres = 6;
    if (guardada.size() != caracteres) return {};
    const int ano = anoGuardado(guardada);
    const int mes = dosCifras(guardada.substr(2));
    const int dia = dosCifras(guardada.substr(4));
    if (ano == 0 || mes < 1 || mes > 12 || dia < 1 || dia > 31) return {};
    std::string texto = std::to_string(ano) + "-";
    return texto.append(guardada, 2, 2).append("-").append(guardada, 4, 2);
}

std::string_view sinRelleno(std::string_view texto) {
    texto = texto.substr(0, texto.find('\0'));
    return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

}  // namespace

std::string valorVolcado(const CampoTabla& campo, std::string_view texto) {
    switch (campo.forma) {
        case FormaCampo::texto:
            return core::aUtf8(sinRelleno(texto));
        case FormaCampo::fecha: {
            std::string fecha = fechaIso(texto);
            return fecha.empty() ? core::aUtf8(sinRelleno(texto)) : fecha;
        }
        default:
            return std::string(texto);
    }
}

void anadirEscapado(std::string_view valor, std::string& texto) {
    constexpr std::string_view escapados = "\t\r\n\\";
    constexpr std::string_view letras = "trn\\";
    for (std::size_t desde = 0;;) {
        const std::size_t hasta = valor.find_first_of(escapados, desde);
        texto.append(valor.substr(desde, hasta - desde));
        if (hasta == std::string_view::npos) return;
        texto += '\\';
        texto += letras[escapados.find(valor[hasta])];
        desde = hasta + 1;
    }
}

void anadirTitulos(const DefinicionTabla& definicion, std::string& texto) {
    texto += tituloNumero;
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        texto += '\t';
        anadirEscapado(definicion.campo(i).nombre, texto);
    }
    texto += '\n';
}

void anadirLinea(const DefinicionTabla& definicion, std::int64_t numero,
                 const std::vector<std::string>& campos, std::string& texto) {
    texto += std::to_string(numero);
    for (int i = 1; i <= definicion.gNumeroCampos; ++i) {
        texto += '\t';
        anadirEscapado(valorVolcado(definicion.campo(i), campos[static_cast<std::size_t>(i)]), texto);
    }
    texto += '\n';
}

void volcar(TablaSuelta& tabla, const std::function<void(std::string_view)>& escribir,
            const Progreso& progreso) {
    const DefinicionTabla& def = tabla.definicion();
    std::vector<std::string> campos(def.campos.size());
    std::string pieza;
    anadirTitulos(def, pieza);
    const std::int64_t lugares = tabla.lugares();
    tabla.recorrer(1, lugares, [&](const RegistroLeido& registro) {
        const auto numero = static_cast<std::uint64_t>(registro.numero);
        if (progreso && numero % cadaCuantos == 0) progreso(numero, static_cast<std::uint64_t>(lugares));
        if (registro.estado != EstadoRegistro::vivo) return;
        descifrarRegistro(def, registro.bytes, campos);
        anadirLinea(def, registro.numero, campos, pieza);
        if (pieza.size() < bytesPieza) return;
        escribir(pieza);
        pieza.clear();
    });
    escribir(pieza);
}

}  // namespace tarvoline::data
