// A start with roads that are only written down, on a desktop with a person or without one.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>

#include "apoyo/nucleo_prueba.h"
#include "core/escritorio_desatendido.h"
#include "core/inicio.h"

namespace tarvoline::pruebas {

// Writes down each call from the start with what the state said at that moment.
class CaminosAnotados : public core::Caminos {
  public:
    explicit CaminosAnotados(core::Estado& estado) : estado_(estado) {}

    std::vector<std::string> llamadas;
    std::function<std::string()> alContinuar = [] { return ""; };
    std::function<bool()> alSubir = [] { return true; };
    std::function<void()> alCrear = [] {};
    std::function<void()> alMostrar = [] {};
    std::function<void()> alLimpiar = [] {};

    std::string ContinuarSubida() override {
        anotar(estado_.gDesatendido ? "continuar desatendido" : "continuar");
        return alContinuar();
    }
    bool SubirPendientesBatch(bool mostrar) override {
        anotar(std::string("pendientes") + (mostrar ? " mostrar" : "") +
               (estado_.gDesatendido ? " desatendido" : ""));
        return alSubir();
    }
    void CargarConfiguracionEmpresa(std::string_view ruta) override {
        anotar("configuracion(" + std::string(ruta) + ")" + (estado_.gInicio ? " inicio" : ""));
        estado_.gUsuario = "maria";
    }
    void PrepararGrid() override { anotar("grid"); }
    void QuitarAccesoInicio() override { anotar("quitar acceso"); }
    void CrearVentana() override {
        anotar(std::string("crear") + (estado_.gEnReposo ? " en reposo" : ""));
        alCrear();
    }
    void MostrarVentana() override {
        anotar(std::string("mostrar") + (estado_.gEnReposo ? " en reposo" : ""));
        alMostrar();
    }
    void Reiniciar(std::string_view ordenes) override { anotar("reiniciar " + std::string(ordenes)); }
    void LimpiarZipsTemporales() override {
        anotar("limpiar " + estado_.gProducto);
        alLimpiar();
    }

  private:
    void anotar(std::string que) { llamadas.push_back(std::move(que)); }

    core::Estado& estado_;
};

class MarcaFingida : public platform::MarcaInstancia {
  public:
    bool otra = false;
    bool hayOtra() override { return otra; }
    bool soyLaUnica() override { return !otra; }
};

class PruebaInicio : public testing::Test {
  protected:
    PruebaInicio() {
        std::string archivo = "@";
        for (int i = 1; i <= core::numeroTextoMayor; ++i) {
            archivo += "\r\n";
            archivo += i == core::textoFallo || i == core::textoFalloCopia ? "ERROR: " : "";
            archivo += "texto " + std::to_string(i);
        }
        nucleo.carpeta().escribir("programa/share/tarvoline/español.qzi", archivo);
        nucleo.estado = core::Estado();
    }

    int arrancar(std::string_view ordenes) { return arrancarCon(nucleo.entorno, ordenes); }
    int arrancarCon(core::Entorno& entorno, std::string_view ordenes) {
        core::Inicio inicio(entorno, caminos, marca, nucleo.ruta("estado/estado.json"));
        return inicio.Main(ordenes);
    }
    // The same core behind the unattended desktop.
    int arrancarSinPersona(std::string_view ordenes) {
        core::EscritorioDesatendido escritorio(nucleo.registro);
        core::Entorno entorno{nucleo.estado,   nucleo.vista,    escritorio,   nucleo.ajustes, nucleo.almacen,
                              nucleo.carpetas, nucleo.archivos, nucleo.reloj, nucleo.registro};
        return arrancarCon(entorno, ordenes);
    }
    void interrumpir(std::string_view producto) {
        nucleo.ajustes.GrabarRegistro("Active", "/t/EMPRESA.ZIP", "NETBACKUP", producto);
    }
    std::string activa(std::string_view producto) {
        return nucleo.ajustes.leer("Active", "NETBACKUP", "", producto);
    }
    bool hayEstado() { return nucleo.carpeta().hay("estado/estado.json"); }
    nlohmann::json estadoGrabado() {
        return nlohmann::json::parse(nucleo.carpeta().leer("estado/estado.json"));
    }

    NucleoPrueba nucleo;
    CaminosAnotados caminos{nucleo.estado};
    MarcaFingida marca;
};

}  // namespace tarvoline::pruebas
