#include "data/claves_tabla.h"

#include <algorithm>

#include "core/texto.h"
#include "data/tablas.h"

namespace tarvoline::data {

namespace {

constexpr char porBarra = '\x1F';

std::size_t indice(int numero) {
    return static_cast<std::size_t>(numero);
}

// "dd/mm/yy" without what parts it.
std::string fechaDeCaja(const std::string& caja) {
    return core::Mid(caja, 1, 2) + core::Mid(caja, 4, 2) + core::Mid(caja, 7, 2);
}

std::string camposDeClave(const DefinicionTabla& definicion, int clave) {
    std::string texto;
    if (clave > maxClaves) return texto;
    for (const SegmentoClave& segmento : definicion.claves[indice(clave)]) {
        if (segmento.campo == 0) continue;
        if (!texto.empty()) texto += ',';
        texto += std::to_string(segmento.campo);
    }
    return texto;
}

}  // namespace

void anadirClave(const DefinicionTabla& definicion, int clave, const std::vector<std::string>& campos,
                 std::string& texto) {
    const std::size_t desde = texto.size();
    for (const SegmentoClave& segmento : definicion.claves.at(indice(clave))) {
        const std::string& campo = campos[indice(segmento.campo)];
        const auto inicio = indice(segmento.inicio - 1);
        if (inicio < campo.size()) texto.append(campo, inicio, indice(segmento.longitud));
    }
    std::replace(texto.begin() + static_cast<std::ptrdiff_t>(desde), texto.end(), '\\', porBarra);
}

void anadirClaves(const DefinicionTabla& definicion, const std::vector<std::string>& campos,
                  std::string& texto) {
    for (int clave = 1; clave <= definicion.numeroClaves; ++clave) {
        texto += '\\';
        anadirClave(definicion, clave, campos, texto);
    }
}

bool mismaClave(const DefinicionTabla& definicion, int clave, const std::vector<std::string>& unos,
                const std::vector<std::string>& otros) {
    return std::ranges::all_of(definicion.claves.at(indice(clave)), [&](const SegmentoClave& segmento) {
        return unos[indice(segmento.campo)] == otros[indice(segmento.campo)];
    });
}

bool esCampoDeClave(const DefinicionTabla& definicion, int campo) {
    return std::ranges::any_of(definicion.claves, [&](const auto& segmentos) {
        return std::ranges::any_of(segmentos, [&](const auto& segmento) { return segmento.campo == campo; });
    });
}

int claveQueEmpiezaPor(const DefinicionTabla& definicion, int campo) {
    for (int clave = definicion.numeroClaves; clave >= 1; --clave) {
        const auto& segmentos = definicion.claves[indice(clave)];
        if (!segmentos.empty() && segmentos.front().campo == campo) return clave;
    }
    return 0;
}

std::string Tablas::textosClave(int tabla) const {
    std::string texto;
    anadirClaves(definicion(tabla), ranura(tabla).gCampos, texto);
    return texto;
}

std::string Tablas::textoClave(int tabla, int clave) const {
    std::string texto = "\\";
    anadirClave(definicion(tabla), clave, ranura(tabla).gCampos, texto);
    return texto;
}

void Tablas::ClavesTabla(int tabla, std::int16_t& codigo, std::string& texto) {
    const int centena = codigo / 100;
    const int resto = codigo % 100;
    if (codigo == 102) {
        reclavarDeForma(tabla, texto);
    } else if (centena == 3 && resto > 0) {
        reclavarDeCampo(tabla, resto, texto);
    } else {
        try {
            responderClaves(tabla, codigo, texto);
        } catch (const std::exception& error) {
            caja(error.what(), core::Icono::exclamacion);
            texto.clear();
        }
    }
}

void Tablas::responderClaves(int tabla, std::int16_t& codigo, std::string& texto) {
    const int centena = codigo / 100;
    const int resto = codigo % 100;
    if (codigo == 100) {
        tomarClaves(tabla, texto);
        texto = capa_.gErrores(366) + std::to_string(tabla);
    } else if (codigo == 101) {
        codigo = static_cast<std::int16_t>(definicion(tabla).longitudMayor());
        texto = std::to_string(definicion(tabla).numeroClaves);
    } else if (codigo == 0) {
        texto = textosClave(tabla);
    } else if (codigo >= 1 && codigo <= maxClaves) {
        texto = textoClave(tabla, codigo);
    } else if (resto <= 0 || centena < 2 || centena == 3 || centena > 5) {
        texto.clear();
    } else if (centena == 2) {
        const int clave = claveQueEmpiezaPor(definicion(tabla), resto);
        texto = std::to_string(clave);
        codigo = clave > 0 ? 1 : 0;
    } else if (centena == 4) {
        texto = esCampoDeClave(definicion(tabla), resto) ? "True" : "False";
    } else {
        texto = camposDeClave(definicion(tabla), resto);
    }
}

// The record named by `texto`, behind its blank, gets this value in `campo`.
void Tablas::reclavarDeCampo(int tabla, int campo, std::string_view texto) {
    const std::size_t barra = texto.find('\\');
    if (barra == std::string_view::npos || campo > definicion(tabla).gNumeroCampos) return;
    const std::size_t trasBlanco = std::min<std::size_t>(1, barra);
    const std::string registro(texto.substr(trasBlanco, barra - trasBlanco));
    LeerRegistro(tabla, core::ValEntero(registro));
    std::vector<std::string> nuevos = ranura(tabla).gCampos;
    ajustarCampo(campoDe(tabla, campo), texto.substr(barra + 1), nuevos[indice(campo)]);
    reclavar(tabla, registro, nuevos, false);
}

void Tablas::reclavarDeForma(int tabla, std::string_view registro) {
    if (!Text1) return;
    const std::string numero = core::Recortar(registro);
    LeerRegistro(tabla, core::ValEntero(numero));
    std::vector<std::string> nuevos = ranura(tabla).gCampos;
    for (int i = 1; i <= definicion(tabla).gNumeroCampos; ++i) {
        const CampoTabla& campo = campoDe(tabla, i);
        std::string caja = Text1(i - 1);
        if (campo.forma == FormaCampo::fecha) caja = fechaDeCaja(caja);
        ajustarCampo(campo, core::aAnsi(caja).bytes(), nuevos[indice(i)]);
    }
    reclavar(tabla, numero, nuevos, true);
}

void Tablas::reclavar(int tabla, std::string_view registro, const std::vector<std::string>& nuevos,
                      bool deForma) {
    const DefinicionTabla& def = definicion(tabla);
    const std::vector<std::string>& campos = ranura(tabla).gCampos;
    const std::string separador = deForma ? "\\ " : "\\";
    for (int clave = 1; clave <= def.numeroClaves; ++clave) {
        if (mismaClave(def, clave, campos, nuevos)) continue;
        gComando.assign("R").append(separador).append(std::to_string(clave));
        gComando.append(separador).append(registro);
        gComando.append(separador).append(std::to_string(tabla));
        gComando.append(textoClave(tabla, clave)).append("\\");
        anadirClave(def, clave, nuevos, gComando);
        LlamarIndexados();
        if (gEstado == motor::estado::bien) continue;
        caja(capa_.gErrores(169) + " " + std::to_string(gEstado) + core::aUtf8(gComando),
             core::Icono::parada);
        caja(capa_.gErrores(170) + " " + (deForma ? ranura(tabla).gNombreTabla : TituloTabla(tabla)),
             core::Icono::exclamacion);
    }
}

std::int16_t Tablas::cambiarClaves(int tabla, std::int32_t registro, const std::vector<std::string>& nuevos) {
    const DefinicionTabla& def = definicion(tabla);
    const std::vector<std::string>& campos = ranura(tabla).gCampos;
    gComando.clear();
    for (int clave = 1; clave <= def.numeroClaves; ++clave) {
        if (mismaClave(def, clave, campos, nuevos)) continue;
        const std::string numero = "\\" + std::to_string(clave);
        if (gComando.empty()) {
            gComando = "R" + numero + "\\" + std::to_string(registro) + "\\" + std::to_string(tabla);
        } else {
            gComando += numero;
        }
        gComando += '\\';
        anadirClave(def, clave, campos, gComando);
        gComando += '\\';
        anadirClave(def, clave, nuevos, gComando);
    }
    gEstado = motor::estado::bien;
    if (!gComando.empty()) LlamarIndexados();
    return gEstado;
}

}  // namespace tarvoline::data
