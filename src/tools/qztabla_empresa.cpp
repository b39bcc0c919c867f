#include "qztabla_empresa.h"

#include <iostream>

#include "data/empresa_suelta.h"
#include "data/tablas.h"
#include "data/verificacion_totales.h"
#include "qztabla.h"
#include "qztabla_tabla.h"
#include "taller.h"

namespace tarvoline::tools {

namespace {

// Goes through a company part by part: one that cannot be read does not keep the others from being checked.
class Examen {
  public:
    explicit Examen(const std::string& ruta) { data::ponerEnVigor(taller_.capa(), ruta); }

    void tabla(std::string_view nombre) {
        parte(data::rutaDeTabla(taller_.capa(), nombre), [&] {
            auto suelta = data::abrirSuelta(taller_.capa(), nombre);
            const auto verificacion = data::verificarTabla(
                taller_.archivos(), suelta,
                [&](const data::Discrepancia& una) { escribir(data::frase(una)); }, linea_.comoFuncion());
            linea_.borrar();
            imprimir(verificacion, std::cout);
            discrepancias_ += verificacion.discrepancias;
        });
    }
    void totales() {
        parte("totales", [&] {
            const auto totales = data::verificarTotales(taller_.capa(), linea_.comoFuncion());
            for (const auto& una : totales.diferencias)
                escribir(data::frase(una));
            for (const auto& uno : totales.descuadrados)
                escribir(data::frase(uno));
            linea_.borrar();
            if (totales.enUso) std::cout << "Otros programas trabajan en la empresa.\n";
            std::cout << "cuentas: " << totales.cuentas
                      << "\ncuentas con apuntes fuera del plan: " << totales.cuentasFueraDelPlan
                      << "\nsuma del debe: " << data::textoDeImporte(totales.debe)
                      << "\nsuma del haber: " << data::textoDeImporte(totales.haber)
                      << "\nasientos descuadrados: " << totales.descuadrados.size()
                      << "\ndiscrepancias: " << totales.diferencias.size() << '\n';
            discrepancias_ += totales.diferencias.size();
        });
    }
    int terminar() {
        std::cout << "\ndiscrepancias en la empresa: " << discrepancias_ << '\n';
        if (ilegibles_ > 0) std::cout << "partes que no se pueden leer: " << ilegibles_ << '\n';
        terminarSalida();
        if (ilegibles_ > 0) return salida::ilegible;
        return discrepancias_ == 0 ? salida::hecho : salida::fallo;
    }

  private:
    template <typename Paso>
    void parte(const std::string& titulo, Paso&& paso) {
        std::cout << (primera_ ? "" : "\n") << "== " << titulo << '\n';
        primera_ = false;
        try {
            paso();
        } catch (const std::exception& error) {
            linea_.borrar();
            std::cout.flush();
            std::cerr << "qztabla: " << titulo << ": " << error.what() << '\n';
            ++ilegibles_;
        }
    }
    void escribir(const std::string& frase) {
        linea_.borrar();
        std::cout << frase << '\n';
    }

    Taller taller_;
    LineaProgreso linea_;
    bool primera_ = true;
    std::uint64_t discrepancias_ = 0;
    int ilegibles_ = 0;
};

}  // namespace

int verificarEmpresa(const std::string& ruta) {
    Examen examen(ruta);
    for (const auto& una : data::tablasDeEmpresa)
        examen.tabla(una.nombre);
    examen.totales();
    return examen.terminar();
}

}  // namespace tarvoline::tools
