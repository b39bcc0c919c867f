// One writing command on a key file: pages that become the command's own, new ones, and the commit.
// Invariants 1, 2 and 9 of archivo_claves.h are kept here.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "motor/archivo_claves.h"

namespace tarvoline::motor {

class Escritura {
  public:
    // Holds the turn until it is destroyed; `mientras`: see Turno. Throws ErrorMotor when the file refuses to
    // be written.
    explicit Escritura(ArchivoClaves& archivo, const std::function<void()>& mientras = {});
    // What was not committed never happened.
    ~Escritura();
    Escritura(const Escritura&) = delete;
    Escritura& operator=(const Escritura&) = delete;

    // The head to be; changes to it count from confirmar() on.
    Cabecera& cabecera() { return nueva_; }
    unsigned ancho() const { return nueva_.longitud; }
    // How many pages the command will probably write: each sort is then taken in one run, if there is one.
    void prever(unsigned hojas, unsigned interiores);

    const Pagina& leer(const Hijo& hijo, unsigned clave, unsigned nivel);
    // The page as this commit's own: itself when the commit wrote it, else a copy of it, and `hijo` names
    // that.
    Pagina& propia(Hijo& hijo, unsigned clave, unsigned nivel);
    Pagina& nueva(Hijo& hijo, unsigned nivel);
    void liberar(const Hijo& hijo);
    // Every page of the file is free; the roots go.
    void liberarTodo();

    // Writes the pages, then the head. Nothing to do: nothing written. Throws ErrorMotor; the command did
    // then not happen, or, if it was the head that failed, nobody knows, and the file refuses further
    // writing.
    void confirmar();

  private:
    std::uint32_t asignar(unsigned nivel);
    std::vector<std::uint32_t>& reserva(Para para) { return reservas_[para == Para::hojas ? 0 : 1]; }
    void conseguir(std::uint32_t cuantas, Para para);
    std::uint32_t alargar(std::uint32_t cuantas);
    void sacarDeLista();
    std::size_t tramosQueVuelven() const;
    void ordenarLibres();
    void guardarEnLista(std::uint32_t pagina);
    void escribirPaginas();
    void escribirTanda(std::size_t desde, std::size_t hasta);
    void escribirCabecera();

    ArchivoClaves& archivo_;
    Turno turno_;
    Cabecera nueva_;
    Libres& libres_;
    std::array<std::vector<std::uint32_t>, 2>& reservas_;  // taken and not yet used
    std::vector<std::uint32_t>& sucias_;                   // pages of this commit
    std::vector<Tramo>& liberadas_;                        // free from this commit on
    std::vector<Octeto>& tanda_;                           // a run of pages on its way
    bool todoLibre_ = false;
    bool confirmada_ = false;
};

// Runs `orden(Escritura&)` as one command. What it has done counts only if it commits it. While somebody else
// has the turn, `mientras` may read ahead (ArchivoClaves::adelantar).
template <typename Orden>
auto escribir(ArchivoClaves& archivo, const std::function<void()>& mientras, Orden&& orden) {
    try {
        Escritura escritura(archivo, mientras);
        return orden(escritura);
    } catch (const Danno&) {
        archivo.darPorDannado();
        throw;
    }
}

template <typename Orden>
auto escribir(ArchivoClaves& archivo, Orden&& orden) {
    return escribir(archivo, {}, std::forward<Orden>(orden));
}

}  // namespace tarvoline::motor
