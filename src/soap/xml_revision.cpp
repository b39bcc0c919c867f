#include "soap/xml_revision.h"

#include <algorithm>
#include <charconv>

#include "soap/valores.h"

namespace tarvoline::soap {
namespace {

constexpr int nivelesMaximos = 200;
constexpr int marcasMaximas = 200'000;
constexpr std::size_t textoLargo = 512;  // from here on a text is kept from the parser
constexpr auto npos = std::string_view::npos;

bool esNombrada(std::string_view nombre) {
    return nombre == "lt" || nombre == "gt" || nombre == "amp" || nombre == "quot" || nombre == "apos";
}

// The characters that XML 1.0 has.
bool esCaracterXml(std::uint32_t c) {
    return c == 9 || c == 10 || c == 13 || (c >= 0x20 && c < 0xD800) || (c > 0xDFFF && c < 0xFFFE) ||
           (c > 0xFFFF && c <= 0x10FFFF);
}

// `cuerpo` is what stands between "&" and ";".
bool referenciaValida(std::string_view cuerpo) {
    if (!cuerpo.starts_with('#')) return esNombrada(cuerpo);
    const bool hexadecimal = cuerpo.starts_with("#x");
    cuerpo.remove_prefix(hexadecimal ? 2 : 1);
    std::uint32_t codigo = 0;
    const auto [fin, error] =
        std::from_chars(cuerpo.data(), cuerpo.data() + cuerpo.size(), codigo, hexadecimal ? 16 : 10);
    return error == std::errc{} && fin == cuerpo.data() + cuerpo.size() && esCaracterXml(codigo);
}

class Revisor {
  public:
    Revisor(std::string_view xml, std::string_view que) : xml_(xml), que_(que) {}

    XmlRevisado revisar() {
        while (pos_ < xml_.size()) {
            texto();
            if (pos_ < xml_.size()) marca();
        }
        if (niveles_ != 0) fallo(" está cortada");
        return std::move(revisado_);
    }

  private:
    [[noreturn]] void fallo(std::string_view motivo) const {
        throw ErrorServicio(std::string(que_) + std::string(motivo));
    }

    void texto() {
        const std::size_t fin = std::min(xml_.find('<', pos_), xml_.size());
        const std::string_view tramo = xml_.substr(pos_, fin - pos_);
        pos_ = fin;
        if (tramo.size() >= textoLargo && tramo.find('&') == npos && tramo.find('\r') == npos) {
            revisado_.reducido += marcaLargo;
            revisado_.reducido += std::to_string(revisado_.largos.size());
            revisado_.largos.push_back(tramo);
        } else {
            copiar(tramo, true);
        }
    }

    void copiar(std::string_view tramo, bool conReferencias) {
        const auto ajeno = [](char c) {
            return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
        };
        if (std::any_of(tramo.begin(), tramo.end(), ajeno)) fallo(" contiene caracteres de control");
        for (std::size_t i = tramo.find('&'); conReferencias && i != npos; i = tramo.find('&', i + 1)) {
            const std::size_t fin = tramo.find(';', i);
            if (fin == npos || !referenciaValida(tramo.substr(i + 1, fin - i - 1))) {
                fallo(" contiene una referencia que no es válida");
            }
        }
        revisado_.reducido += tramo;
    }

    void marca() {
        if (++marcas_ > marcasMaximas) fallo(" tiene demasiados elementos");
        const std::string_view resto = xml_.substr(pos_);
        if (resto.starts_with("<!--")) return omitir(4, "-->");
        if (resto.starts_with("<?")) return omitir(2, "?>");
        if (resto.starts_with("<![CDATA[")) {
            const std::size_t fin = finDe("]]>", 9);
            copiar(xml_.substr(pos_, fin - pos_), false);
            pos_ = fin;
            return;
        }
        if (resto.starts_with("<!")) fallo(" contiene una definición de tipo de documento (DOCTYPE)");
        etiqueta();
    }

    // Position behind `cierre`, looked for from `salto` characters on.
    std::size_t finDe(std::string_view cierre, std::size_t salto) const {
        const std::size_t fin = xml_.find(cierre, pos_ + salto);
        if (fin == npos) fallo(" está cortada");
        return fin + cierre.size();
    }

    // An empty comment stays, so that the texts on both sides do not run together.
    void omitir(std::size_t salto, std::string_view cierre) {
        pos_ = finDe(cierre, salto);
        revisado_.reducido += "<!---->";
    }

    void etiqueta() {
        std::size_t fin = pos_ + 1;
        for (char comilla = 0; fin < xml_.size() && (comilla != 0 || xml_[fin] != '>'); ++fin) {
            const char c = xml_[fin];
            if (comilla == 0 ? (c == '"' || c == '\'') : c == comilla) comilla = comilla == 0 ? c : '\0';
        }
        if (fin >= xml_.size()) fallo(" está cortada");
        const std::string_view entera = xml_.substr(pos_, fin + 1 - pos_);
        copiar(entera, true);
        pos_ = fin + 1;
        if (entera.starts_with("</")) {
            --niveles_;
        } else if (!entera.ends_with("/>") && ++niveles_ > nivelesMaximos) {
            fallo(" tiene demasiados niveles");
        }
    }

    std::string_view xml_;
    std::string_view que_;
    std::size_t pos_ = 0;
    int niveles_ = 0;
    int marcas_ = 0;
    XmlRevisado revisado_;
};

}  // namespace

XmlRevisado revisarXml(std::string_view xml, std::string_view que) {
    return Revisor(xml, que).revisar();
}

bool esLatin1(std::string_view xml, std::string_view que) {
    const auto noAdmitida = [&] {
        return ErrorServicio(std::string(que) + " usa una codificación de texto que no se admite");
    };
    if (xml.starts_with("\xFE\xFF") || xml.starts_with("\xFF\xFE")) throw noAdmitida();
    if (!xml.starts_with("<?xml")) return false;
    const std::string_view declaracion = xml.substr(0, std::min(xml.find("?>"), xml.size()));
    const std::size_t donde = declaracion.find("encoding");
    if (donde == npos) return false;
    const std::size_t abre = declaracion.find_first_of("\"'", donde);
    if (abre == npos) return false;
    const std::size_t cierra = declaracion.find(declaracion[abre], abre + 1);
    if (cierra == npos) return false;
    std::string nombre(declaracion.substr(abre + 1, cierra - abre - 1));
    std::transform(nombre.begin(), nombre.end(), nombre.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (nombre == "iso-8859-1") return true;
    if (nombre != "utf-8" && nombre != "us-ascii") throw noAdmitida();
    return false;
}

}  // namespace tarvoline::soap
