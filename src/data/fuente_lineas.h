// What the readable sources of shipped files have in common: UTF-8, one item a line, words divided by blanks
// or tabs, "#" before a comment line, and errors that name the file and the line.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::data {

// A source is refused: "planc.tabla:12: ...".
class ErrorFuente : public std::runtime_error {
  public:
    ErrorFuente(std::string_view archivo, int linea, const std::string& motivo);
};

// Gives the content of a source that another one names. What it throws passes through.
using LectorFuente = std::function<std::string(std::string_view archivo)>;

// One line of a source, taken apart from its left.
class LineaFuente {
  public:
    LineaFuente(std::string_view archivo, int numero, std::string_view texto);

    int numero() const { return numero_; }
    [[noreturn]] void rechazar(const std::string& motivo) const;
    // The next word; "" when there are no more.
    std::string palabra();
    // The next word as a number. Refused outside `menor`..`mayor`; `que` names it in the message.
    int entero(std::string_view que, int menor, int mayor);
    // The same with a decimal point.
    double decimal(std::string_view que);
    // What is left, without blanks at its ends. Refused when it is empty, takes more than `mayor` characters
    // or holds a control character or one that Windows-1252 lacks.
    std::string texto(std::string_view que, std::size_t mayor);
    // Refused unless nothing is left.
    void fin() const;

  private:
    std::string archivo_;
    int numero_;
    std::string resto_;
};

// The lines of a source that are neither empty nor comments. `archivo` is for the messages.
std::vector<LineaFuente> lineasFuente(std::string_view archivo, std::string_view utf8);

}  // namespace tarvoline::data
