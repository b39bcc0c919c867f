// qztabla recalcular: the totals of a company from its lines.
#include <iostream>

#include "data/empresa_suelta.h"
#include "data/recalculo.h"
#include "data/tablas.h"
#include "qztabla.h"
#include "qztabla_tabla.h"
#include "taller.h"

namespace tarvoline::tools {

namespace {

using data::DiferenciaTotal;
using data::Recalculo;

constexpr const char* ayuda =
    "Suma los apuntes de EXTRA (y de ANALI, para las cuentas analíticas) y enseña qué totales guardados no\n"
    "son esa suma: las columnas de cada cuenta y mayor, CARGOSA, ABONOSA, y el contador de la analítica si\n"
    "es menor que un número en uso. Una línea por cambio, separada por tabuladores: tabla, registro, "
    "cuenta,\n"
    "columna, lo que hay y lo que debe haber; una cuenta o un mayor que falta tiene el registro 0.\n"
    "Solo escribe con --aplicar, y entonces nadie más puede tener abierta la empresa: la reserva hasta\n"
    "terminar. Si se corta a medias, otra ejecución termina el trabajo. Las claves deben estar sanas\n"
    "(\"qztabla verificar\", \"qztabla reindexar\").\n"
    "Salida: 0 nada que cambiar, o todo cambiado; 1 hay cambios sin hacer; 2 argumentos malos; 3 no se puede "
    "leer o escribir;\n"
    "4 otros programas tienen abierta la empresa: no se ha cambiado nada.";

std::string_view nombreDe(int numero) {
    for (const auto& una : data::tablasDeEmpresa) {
        if (una.tabla == numero) return una.nombre;
    }
    return "empresa";
}

void imprimirCambios(const std::vector<DiferenciaTotal>& cambios) {
    if (!cambios.empty()) std::cout << "tabla\tregistro\tcuenta\tcolumna\thay\tdebe haber\n";
    for (const auto& una : cambios) {
        std::cout << nombreDe(una.tabla) << '\t' << una.registro << '\t' << una.cuenta << '\t';
        switch (una.que) {
            case DiferenciaTotal::Que::falta:
                std::cout << "(falta la cuenta)\t\t\n";
                break;
            case DiferenciaTotal::Que::importe:
                std::cout << "(importe del apunte)\t" << data::textoDeImporte(una.presente) << "\t\n";
                break;
            default:
                std::cout << una.columna << '\t' << data::textoDeImporte(una.presente) << '\t'
                          << data::textoDeImporte(una.justo) << '\n';
        }
    }
    std::cout << "cambios: " << cambios.size() << '\n';
    terminarSalida();
}

int ensenar(data::CapaDatos& capa, LineaProgreso& linea) {
    const auto totales = data::verificarTotales(capa, linea.comoFuncion());
    linea.borrar();
    imprimirCambios(totales.diferencias);
    if (totales.cuentasFueraDelPlan > 0) {
        std::cerr << "qztabla: cuentas con apuntes fuera del plan, que no se suman: "
                  << totales.cuentasFueraDelPlan << '\n';
    }
    if (totales.diferencias.empty()) return salida::hecho;
    std::cerr << "qztabla: no se ha escrito nada; --aplicar lo escribe\n";
    return salida::fallo;
}

int aplicar(data::CapaDatos& capa, LineaProgreso& linea) {
    const auto alEmpezar = [&](const std::vector<DiferenciaTotal>& cambios) {
        linea.borrar();
        imprimirCambios(cambios);
    };
    const auto resultado = data::recalcular(capa, alEmpezar, linea.comoFuncion());
    linea.borrar();
    switch (resultado.fin) {
        case Recalculo::Fin::hecho:
            return salida::hecho;
        case Recalculo::Fin::enUso:
            std::cerr << "qztabla: otro programa usa la empresa, o no se puede escribir en ella; no se ha "
                         "cambiado nada\n";
            return salida::enUso;
        case Recalculo::Fin::clavesMalas:
            std::cerr << "qztabla: " << resultado.tabla
                      << ": las claves no concuerdan con los registros; antes hay que rehacerlas (qztabla "
                         "reindexar)\n";
            return salida::fallo;
        case Recalculo::Fin::importesMalos:
            imprimirCambios(resultado.cambios);
            std::cerr << "qztabla: hay apuntes sin importe; no se ha cambiado nada\n";
            return salida::fallo;
        case Recalculo::Fin::aMedias:
            std::cerr << "qztabla: no se ha podido cambiar todo; quedan por cambiar: "
                      << resultado.cambios.size() << '\n';
            return salida::fallo;
    }
    return salida::fallo;
}

}  // namespace

void anadirRecalcular(CLI::App& programa, TareaTabla& tarea) {
    struct Argumentos {
        std::string empresa;
        bool aplicar = false;
    };
    const auto argumentos = std::make_shared<Argumentos>();
    auto* orden = programa.add_subcommand("recalcular", "Rehace los totales de una empresa con sus apuntes");
    orden->footer(ayuda);
    orden->add_option("EMPRESA", argumentos->empresa, "Archivo de la empresa (.QZT)")->required();
    orden->add_flag("--aplicar", argumentos->aplicar, "Escribe los cambios, después de enseñarlos");
    orden->callback([argumentos, &tarea] {
        tarea = [argumentos] {
            try {
                Taller taller;
                LineaProgreso linea;
                data::ponerEnVigor(taller.capa(), argumentos->empresa);
                return argumentos->aplicar ? aplicar(taller.capa(), linea) : ensenar(taller.capa(), linea);
            } catch (const std::exception& error) {
                std::cout.flush();
                std::cerr << "qztabla: " << error.what() << '\n';
                return salida::ilegible;
            }
        };
    });
}

}  // namespace tarvoline::tools
