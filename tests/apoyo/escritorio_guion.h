// A desktop that follows a script: answers are queued by kind before the work starts, everything shown or
// asked is written down.
//
//   guion.contestarSi();                    // the next Yes/No, whatever it says
//   guion.contestarNo("Sobrescribir");      // ... which must hold this text
//   guion.teclear("clave");  guion.cancelarPeticion();
//   guion.rellenar({"maria", "secreta"});   // the fields of the next dialog, in their order
//   guion.enTurno(3, [&] { estado.gDetener = true; });
//   EXPECT_TRUE(guion.mostro("Proceso finalizado"));
//
// A question that no answer waits for fails the test with its text and is answered No or Cancel; an answer
// that nobody asked for fails it when the script ends. Plain boxes need no answer.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/escritorio.h"

namespace tarvoline::pruebas {

class EscritorioGuion : public core::Escritorio {
  public:
    enum class Clase { mensaje, pregunta, confirmacion, peticion, datos, archivo, guardar, carpeta };

    // One thing shown or asked, in the order it happened.
    struct Suceso {
        Clase clase = Clase::mensaje;
        std::string texto;
        std::string titulo;
        core::Icono icono = core::Icono::ninguno;
        bool siPorDefecto = true;  // of a question
        std::string respuesta;     // "Sí", "No", "Aceptar", "Cancelar" or what was typed or chosen
    };

    EscritorioGuion() = default;
    ~EscritorioGuion() override {
        if (std::uncaught_exceptions() == 0) {
            comprobarAgotado();
        }
    }

    // The script. `contiene` is a piece of the text that the question must bear; "" takes any.
    void contestarSi(std::string contiene = {}) { encolar(Clase::pregunta, true, {}, std::move(contiene)); }
    void contestarNo(std::string contiene = {}) { encolar(Clase::pregunta, false, {}, std::move(contiene)); }
    void aceptar(std::string contiene = {}) { encolar(Clase::confirmacion, true, {}, std::move(contiene)); }
    void cancelar(std::string contiene = {}) { encolar(Clase::confirmacion, false, {}, std::move(contiene)); }
    void teclear(std::string texto, std::string contiene = {}) {
        encolar(Clase::peticion, true, std::move(texto), std::move(contiene));
    }
    void cancelarPeticion(std::string contiene = {}) {
        encolar(Clase::peticion, false, {}, std::move(contiene));
    }
    void elegirArchivo(std::string ruta) { encolar(Clase::archivo, true, std::move(ruta), {}); }
    void cancelarArchivo() { encolar(Clase::archivo, false, {}, {}); }
    void guardarComo(std::string ruta) { encolar(Clase::guardar, true, std::move(ruta), {}); }
    void cancelarGuardar() { encolar(Clase::guardar, false, {}, {}); }
    void elegirCarpeta(std::string ruta) { encolar(Clase::carpeta, true, std::move(ruta), {}); }
    void cancelarCarpeta() { encolar(Clase::carpeta, false, {}, {}); }
    // The dialog's fields in their order; fields beyond these values keep their default.
    void rellenar(std::vector<std::string> valores, std::optional<int> opcion = std::nullopt) {
        contestarDatos([valores = std::move(valores), opcion](core::EntradaDatos& datos) {
            EXPECT_LE(valores.size(), datos.campos.size()) << "fields of dialog " << datos.titulo;
            for (std::size_t i = 0; i < std::min(valores.size(), datos.campos.size()); ++i) {
                datos.campos[i].valor = valores[i];
            }
            datos.opcion = opcion.value_or(datos.opcion);
            return true;
        });
    }
    void cancelarDatos() {
        contestarDatos([](core::EntradaDatos&) { return false; });
    }
    // Fills the dialog as the test likes; the result says whether it was accepted.
    void contestarDatos(std::function<bool(core::EntradaDatos&)> paso) { datos_.push_back(std::move(paso)); }

    // `paso` runs inside turn number `n`, counted from 1 over the life of the script.
    void enTurno(int n, std::function<void()> paso) { pasos_.emplace(n, std::move(paso)); }
    void enCadaTurno(std::function<void()> paso) { cadaTurno_ = std::move(paso); }
    void cerrarVentanaEnTurno(int n) {
        enTurno(n, [] { throw core::FinDePrograma{}; });
    }

    // What happened.
    std::vector<Suceso> sucesos;
    std::vector<core::EntradaDatos> dialogos;       // as they were asked
    std::vector<core::EleccionArchivo> elecciones;  // of ElegirArchivo and GuardarComo
    std::vector<core::Listado> listados;
    std::vector<std::string> abiertos;  // of Abrir
    int turnos = 0;
    bool punteroEspera = false;
    bool persona = true;  // what hayPersona answers

    // The plain boxes.
    std::vector<Suceso> cajas() const { return de(Clase::mensaje); }
    std::vector<Suceso> de(Clase clase) const {
        std::vector<Suceso> elegidos;
        std::copy_if(sucesos.begin(), sucesos.end(), std::back_inserter(elegidos),
                     [&](const Suceso& suceso) { return suceso.clase == clase; });
        return elegidos;
    }
    // Whether some plain box bore this piece of text.
    bool mostro(std::string_view contiene) const {
        return std::any_of(sucesos.begin(), sucesos.end(), [&](const Suceso& suceso) {
            return suceso.clase == Clase::mensaje && suceso.texto.find(contiene) != std::string::npos;
        });
    }
    // The last box or question; fails the test when there was none.
    Suceso ultimo() const {
        EXPECT_FALSE(sucesos.empty()) << "nothing was shown or asked";
        return sucesos.empty() ? Suceso{} : sucesos.back();
    }
    void olvidar() { sucesos.clear(); }
    // Takes back the answers that nobody has asked for.
    void olvidarRespuestas() {
        for (auto& [clase, cola] : respuestas_) {
            cola.clear();
        }
        datos_.clear();
    }
    // Fails the test for each answer that is still waiting; runs by itself at the end.
    void comprobarAgotado() {
        for (auto& [clase, cola] : respuestas_) {
            for (const Respuesta& respuesta : cola) {
                ADD_FAILURE() << "never asked: " << nombre(clase) << " (" << respuesta.contiene
                              << "), answer \"" << respuesta.texto << "\"";
            }
            cola.clear();
        }
        EXPECT_TRUE(datos_.empty()) << datos_.size() << " dialog(s) never asked";
        datos_.clear();
    }

    void Mensaje(const core::Caja& caja) override { anotar(Clase::mensaje, caja); }
    bool Preguntar(const core::Caja& caja, bool siPorDefecto) override {
        Suceso& suceso = anotar(Clase::pregunta, caja);
        suceso.siPorDefecto = siPorDefecto;
        const bool si = tomar(Clase::pregunta, caja.texto).has_value();
        sucesos.back().respuesta = si ? "Sí" : "No";
        return si;
    }
    bool Confirmar(const core::Caja& caja) override {
        anotar(Clase::confirmacion, caja);
        const bool si = tomar(Clase::confirmacion, caja.texto).has_value();
        sucesos.back().respuesta = si ? "Aceptar" : "Cancelar";
        return si;
    }
    std::optional<std::string> Pedir(const core::Peticion& peticion) override {
        const auto texto = pedir(Clase::peticion, peticion.texto, peticion.titulo);
        if (texto && static_cast<int>(texto->size()) > peticion.longitud) {
            ADD_FAILURE() << "\"" << *texto << "\" is longer than the prompt takes: " << peticion.longitud;
        }
        return texto;
    }
    bool PedirDatos(core::EntradaDatos& datos) override {
        sucesos.push_back({Clase::datos, {}, datos.titulo, core::Icono::ninguno, true, {}});
        dialogos.push_back(datos);
        if (datos_.empty()) {
            ADD_FAILURE() << "unexpected dialog: " << datos.titulo;
            return false;
        }
        const auto paso = std::move(datos_.front());
        datos_.pop_front();
        return paso(datos);
    }
    std::optional<std::string> ElegirArchivo(const core::EleccionArchivo& eleccion) override {
        elecciones.push_back(eleccion);
        return pedir(Clase::archivo, eleccion.filtro.mascara, eleccion.titulo);
    }
    std::optional<std::string> GuardarComo(const core::EleccionArchivo& eleccion) override {
        elecciones.push_back(eleccion);
        return pedir(Clase::guardar, eleccion.nombre, eleccion.titulo);
    }
    std::optional<std::string> ElegirCarpeta(std::string_view titulo) override {
        return pedir(Clase::carpeta, {}, std::string(titulo));
    }
    void MostrarListado(const core::Listado& listado) override { listados.push_back(listado); }
    void Abrir(std::string_view documento) override { abiertos.emplace_back(documento); }
    void Turno() override {
        ++turnos;
        const auto [desde, hasta] = pasos_.equal_range(turnos);
        std::vector<std::function<void()>> pasos;  // copied: a step may add another
        for (auto paso = desde; paso != hasta; ++paso) {
            pasos.push_back(paso->second);
        }
        for (const auto& paso : pasos) {
            paso();
        }
        if (cadaTurno_) {
            cadaTurno_();
        }
    }
    void Puntero(bool espera) override { punteroEspera = espera; }
    bool hayPersona() const override { return persona; }

  private:
    struct Respuesta {
        bool si = false;
        std::string texto;
        std::string contiene;
    };

    static const char* nombre(Clase clase) {
        static constexpr const char* nombres[] = {"box",    "Yes/No question", "OK/Cancel box", "prompt",
                                                  "dialog", "file to open",    "file to save",  "folder"};
        return nombres[static_cast<std::size_t>(clase)];
    }
    void encolar(Clase clase, bool si, std::string texto, std::string contiene) {
        respuestas_[clase].push_back({si, std::move(texto), std::move(contiene)});
    }
    Suceso& anotar(Clase clase, const core::Caja& caja) {
        return sucesos.emplace_back(Suceso{clase, caja.texto, caja.titulo, caja.icono, true, {}});
    }
    // The answer that waits for this kind; nothing for No, Cancel and a question nobody expected.
    std::optional<std::string> tomar(Clase clase, const std::string& texto) {
        auto& cola = respuestas_[clase];
        if (cola.empty()) {
            ADD_FAILURE() << "unexpected " << nombre(clase) << ": " << texto;
            return std::nullopt;
        }
        const Respuesta respuesta = std::move(cola.front());
        cola.pop_front();
        EXPECT_NE(texto.find(respuesta.contiene), std::string::npos)
            << nombre(clase) << " \"" << texto << "\" lacks \"" << respuesta.contiene << "\"";
        return respuesta.si ? std::optional(respuesta.texto) : std::nullopt;
    }
    std::optional<std::string> pedir(Clase clase, const std::string& texto, const std::string& titulo) {
        sucesos.push_back({clase, texto, titulo, core::Icono::ninguno, true, {}});
        const auto respuesta = tomar(clase, titulo + ": " + texto);
        sucesos.back().respuesta = respuesta.value_or("Cancelar");
        return respuesta;
    }

    std::map<Clase, std::deque<Respuesta>> respuestas_;
    std::deque<std::function<bool(core::EntradaDatos&)>> datos_;
    std::multimap<int, std::function<void()>> pasos_;
    std::function<void()> cadaTurno_;
};

}  // namespace tarvoline::pruebas
