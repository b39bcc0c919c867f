// One SQLite file and its prepared statements, thread-safe by one lock: the service asks it rarely (a new
// file, a history line, a change of users), never once a piece.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace tarvoline::server {

class BaseDatos {
  public:
    class Fila;

    // Opens or makes the file (which must be in a folder that exists) and the tables. Throws ErrorServidor,
    // as all members do.
    explicit BaseDatos(const std::string& ruta);
    ~BaseDatos();
    BaseDatos(const BaseDatos&) = delete;
    BaseDatos& operator=(const BaseDatos&) = delete;

    using PorFila = std::function<void(const Fila&)>;
    // Runs `sql` with its values (integers and texts) bound in order, and `porFila` for every row.
    template <typename... Valores>
    void consultar(std::string_view sql, const PorFila& porFila, const Valores&... valores);
    template <typename... Valores>
    void ejecutar(std::string_view sql, const Valores&... valores) {
        consultar(sql, PorFila{}, valores...);
    }

    // All or nothing. `pasos` may call ejecutar().
    void enTransaccion(const std::function<void()>& pasos);
    std::int64_t ultimoId();
    // Changes whenever another process has written the file.
    std::int64_t version();

  private:
    sqlite3_stmt* preparar(std::string_view sql);
    void correr(sqlite3_stmt* orden, const PorFila& porFila);
    [[noreturn]] void fallar(std::string_view que) const;
    void ligar(sqlite3_stmt* orden, int indice, std::int64_t valor);
    void ligar(sqlite3_stmt* orden, int indice, std::string_view valor);

    std::recursive_mutex cerrojo_;
    sqlite3* base_ = nullptr;
    std::map<std::string, sqlite3_stmt*, std::less<>> preparadas_;
};

// One row of an answer; columns count from 0. Valid only inside the call that hands it out.
class BaseDatos::Fila {
  public:
    explicit Fila(sqlite3_stmt* orden) : orden_(orden) {}
    std::int64_t entero(int columna) const;
    std::string texto(int columna) const;  // text and blobs alike, as bytes

  private:
    sqlite3_stmt* orden_;
};

template <typename... Valores>
void BaseDatos::consultar(std::string_view sql, const PorFila& porFila, const Valores&... valores) {
    const std::lock_guard guardia(cerrojo_);
    sqlite3_stmt* const orden = preparar(sql);
    int indice = 0;
    (ligar(orden, ++indice, valores), ...);
    correr(orden, porFila);
}

}  // namespace tarvoline::server
