// Shared by the engine's tests: sending commands, and random work whose answers a model foretells.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "motor/escritura.h"
#include "motor/modelo.h"
#include "motor/motor_indexados.h"
#include "motor/revision.h"

namespace tarvoline::pruebas {

using Azar = std::mt19937_64;

inline Contestado mandar(motor::MotorIndexados& motor, std::string comando) {
    std::int16_t estado = -1;
    std::int32_t registro = 0;
    const std::string enviado = comando;
    motor.Ejecutar(comando, registro, estado);
    EXPECT_EQ(comando, enviado);
    return {estado, registro};
}

inline std::string unidos(const std::vector<std::string>& textos) {
    std::string todos;
    for (const auto& texto : textos)
        todos += "\\" + texto;
    return todos;
}

// The keys of the file that `motor` has open as that table are those of the model, and the file is sound.
inline void exigirIgual(motor::MotorIndexados& motor, unsigned tabla, const ModeloTabla& modelo) {
    std::vector<std::vector<ModeloTabla::Par>> leidas(modelo.cuantas());
    const auto revision = motor::revisar(
        motor.archivo(tabla), [&](unsigned clave, std::string_view texto, std::uint32_t registro) {
            leidas[clave - 1].push_back({modelo.rellenar(std::string(texto)), registro});
        });
    ASSERT_EQ(revision.fallo, "");
    for (unsigned clave = 1; clave <= modelo.cuantas(); ++clave) {
        const auto& debidas = modelo.clave(clave);
        ASSERT_EQ(leidas[clave - 1], std::vector<ModeloTabla::Par>(debidas.begin(), debidas.end()));
    }
    ASSERT_EQ(motor.ultimoRegistro(tabla), modelo.contador);
}

// Random commands on one key file that is open under the given table numbers.
class Trabajo {
  public:
    struct Paso {
        std::string comando;
        Contestado debido;
        bool cambia = false;  // writes, if it does anything
    };

    Trabajo(std::uint64_t semilla, ModeloTabla& modelo, std::vector<unsigned> tablas, unsigned letras)
        : azar_(semilla), modelo_(modelo), tablas_(std::move(tablas)), letras_(letras) {
        posiciones_.assign(tablas_.size(), ModeloPosicion(modelo_));
    }

    // The next command, already carried out on the model. `crece`: of ten writing commands, how many insert.
    Paso siguiente(unsigned crece) {
        const std::size_t cual = azar_() % tablas_.size();
        const std::string tabla = numero(tablas_[cual]);
        return azar_() % 2 == 0 ? escritura(tabla, crece) : lectura(tabla, posiciones_[cual]);
    }

    void reabierta() { posiciones_.assign(tablas_.size(), ModeloPosicion(modelo_)); }
    Azar& azar() { return azar_; }

  private:
    // With the blank of the sign, or without.
    std::string numero(std::uint64_t valor) { return (azar_() % 2 == 0 ? "" : " ") + std::to_string(valor); }

    // Few letters make many equal texts and shared heads; some sort below the blank, or above all others.
    std::string texto() {
        constexpr std::string_view letras = "abcdefghijklmnop \x1F\x01\xFF\xF1";
        std::string t(azar_() % (modelo_.ancho() + 1), 'a');
        for (char& c : t) {
            const bool rara = azar_() % 8 == 0;
            c = rara ? letras[16 + azar_() % 5] : letras[azar_() % letras_];
        }
        return t;
    }

    std::vector<std::string> textos() {
        std::vector<std::string> t(modelo_.cuantas());
        for (auto& uno : t)
            uno = texto();
        return t;
    }

    Paso escritura(const std::string& tabla, unsigned crece) {
        const bool vacia = modelo_.registros.empty();
        if (vacia || azar_() % 10 < crece) {
            const auto claves = textos();
            return {"I\\" + tabla + unidos(claves), modelo_.insertar(claves), true};
        }
        if (azar_() % 4000 == 0) {
            modelo_.vaciar();
            return {"M\\" + tabla, {}, true};
        }
        auto sitio = modelo_.registros.lower_bound(static_cast<std::uint32_t>(azar_() % modelo_.contador));
        if (sitio == modelo_.registros.end()) sitio = modelo_.registros.begin();
        const std::uint32_t registro = sitio->first;
        if (azar_() % 3 == 0) return cambio(tabla, registro, sitio->second);
        std::vector<std::string> claves = sitio->second;
        if (azar_() % 50 == 0) claves.back() = texto();  // probably not there
        const Contestado debido = modelo_.borrar(registro, claves);
        if (debido.estado == 0) modelo_.registros.erase(sitio);
        return {"D\\" + numero(registro) + "\\Y\\" + tabla + unidos(claves), debido, true};
    }

    Paso cambio(const std::string& tabla, std::uint32_t registro, std::vector<std::string>& claves) {
        const unsigned clave = 1 + static_cast<unsigned>(azar_() % modelo_.cuantas());
        const std::string nuevo = texto();
        const std::string antiguo = claves[clave - 1];
        const Contestado debido = modelo_.cambiar(clave, registro, antiguo, nuevo);
        if (debido.estado == 0) claves[clave - 1] = nuevo;
        return {
            "R\\" + numero(clave) + "\\" + numero(registro) + "\\" + tabla + "\\" + antiguo + "\\" + nuevo,
            debido, true};
    }

    Paso lectura(const std::string& tabla, ModeloPosicion& posicion) {
        const unsigned clave = 1 + static_cast<unsigned>(azar_() % modelo_.cuantas());
        const std::string cabeza = "\\" + numero(clave) + "\\";
        std::string valor = texto();
        if (azar_() % 2 == 0 && !modelo_.clave(clave).empty()) {
            const auto sitio = modelo_.clave(clave).lower_bound({modelo_.rellenar(valor), 0});
            if (sitio != modelo_.clave(clave).end()) valor.assign(sitio->first.begin(), sitio->first.end());
            if (azar_() % 4 == 0) valor.resize(azar_() % (valor.size() + 1));
        }
        const unsigned letra = azar_() % 16;
        if (letra < 5) return {"N\\" + tabla, posicion.mover(true)};
        if (letra < 8) return {"P\\" + tabla, posicion.mover(false)};
        switch (letra) {
            case 8:
                return {"F" + cabeza + tabla + (azar_() % 2 == 0 ? "\\" : ""),
                        posicion.extremo(clave, false)};
            case 9:
                return {"L" + cabeza + tabla, posicion.extremo(clave, true)};
            case 10:
                return {"A" + cabeza + "999999\\" + tabla + "\\" + valor,
                        posicion.vecina(clave, valor, true)};
            case 11:
                return {"E" + cabeza + "0\\" + tabla + "\\" + valor, posicion.vecina(clave, valor, false)};
            case 12:
                return {"G" + cabeza + tabla + "\\" + valor, posicion.buscar(clave, valor, true)};
            default:
                return {"S" + cabeza + tabla + "\\" + valor, posicion.buscar(clave, valor, false)};
        }
    }

    Azar azar_;
    ModeloTabla& modelo_;
    std::vector<unsigned> tablas_;
    unsigned letras_;
    std::vector<ModeloPosicion> posiciones_;
};

}  // namespace tarvoline::pruebas
