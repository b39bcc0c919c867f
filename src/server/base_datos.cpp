#include "server/base_datos.h"

#include <sqlite3.h>

#include "server/opciones.h"

namespace tarvoline::server {
namespace {

// Write-ahead log: the administrator's commands write while the service runs. Full synchronisation: a user or
// a stored file that was answered for outlives a power cut.
constexpr const char* preparacion = R"(
PRAGMA journal_mode = WAL;
PRAGMA synchronous = FULL;
CREATE TABLE IF NOT EXISTS cuentas (
    codigo TEXT PRIMARY KEY,
    gb INTEGER NOT NULL DEFAULT 0);
CREATE TABLE IF NOT EXISTS usuarios (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    usuario TEXT NOT NULL UNIQUE,
    clave BLOB NOT NULL,
    cuenta TEXT NOT NULL DEFAULT '',
    etiqueta TEXT NOT NULL DEFAULT '',
    activo INTEGER NOT NULL DEFAULT 1);
CREATE TABLE IF NOT EXISTS tipos_usuario (
    usuario INTEGER PRIMARY KEY,
    tipo TEXT NOT NULL);
CREATE TABLE IF NOT EXISTS archivos (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    usuario INTEGER NOT NULL,
    carpeta TEXT NOT NULL,
    tipo TEXT NOT NULL,
    nombre TEXT NOT NULL);
CREATE TABLE IF NOT EXISTS historial (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    usuario INTEGER NOT NULL,
    fecha TEXT NOT NULL,
    texto TEXT NOT NULL,
    carpeta TEXT NOT NULL);
CREATE INDEX IF NOT EXISTS historial_usuario ON historial (usuario, id);
)";

constexpr int esperaMilisegundos = 10000;

}  // namespace

BaseDatos::BaseDatos(const std::string& ruta) {
    constexpr int modo = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(ruta.c_str(), &base_, modo, nullptr) != SQLITE_OK) {
        const std::string motivo = base_ != nullptr ? sqlite3_errmsg(base_) : "sin memoria";
        sqlite3_close(base_);
        throw ErrorServidor(ruta + ": " + motivo);
    }
    sqlite3_busy_timeout(base_, esperaMilisegundos);
    if (sqlite3_exec(base_, preparacion, nullptr, nullptr, nullptr) != SQLITE_OK) {
        const std::string motivo = sqlite3_errmsg(base_);
        sqlite3_close(base_);
        throw ErrorServidor(ruta + ": " + motivo);
    }
}

BaseDatos::~BaseDatos() {
    for (const auto& [sql, orden] : preparadas_)
        sqlite3_finalize(orden);
    sqlite3_close(base_);
}

void BaseDatos::fallar(std::string_view que) const {
    throw ErrorServidor(std::string(que) + ": " + sqlite3_errmsg(base_));
}

sqlite3_stmt* BaseDatos::preparar(std::string_view sql) {
    if (const auto hallada = preparadas_.find(sql); hallada != preparadas_.end()) return hallada->second;
    sqlite3_stmt* orden = nullptr;
    if (sqlite3_prepare_v3(base_, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &orden,
                           nullptr) != SQLITE_OK) {
        fallar(sql);
    }
    preparadas_.emplace(sql, orden);
    return orden;
}

void BaseDatos::ligar(sqlite3_stmt* orden, int indice, std::int64_t valor) {
    sqlite3_bind_int64(orden, indice, valor);
}

void BaseDatos::ligar(sqlite3_stmt* orden, int indice, std::string_view valor) {
    // The values outlive the run of the statement.
    sqlite3_bind_text64(orden, indice, valor.data() != nullptr ? valor.data() : "", valor.size(),
                        SQLITE_STATIC, SQLITE_UTF8);
}

void BaseDatos::correr(sqlite3_stmt* orden, const PorFila& porFila) {
    struct Reposicion {
        sqlite3_stmt* orden;
        ~Reposicion() {
            sqlite3_reset(orden);
            sqlite3_clear_bindings(orden);
        }
    } const reposicion{orden};
    for (;;) {
        const int estado = sqlite3_step(orden);
        if (estado == SQLITE_DONE) return;
        if (estado != SQLITE_ROW) fallar("base de datos");
        if (porFila) porFila(Fila(orden));
    }
}

void BaseDatos::enTransaccion(const std::function<void()>& pasos) {
    const std::lock_guard guardia(cerrojo_);
    ejecutar("BEGIN IMMEDIATE");
    try {
        pasos();
        ejecutar("COMMIT");
    } catch (...) {
        // After some errors the transaction is already rolled back; a second roll-back only says so.
        sqlite3_exec(base_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

std::int64_t BaseDatos::ultimoId() {
    const std::lock_guard guardia(cerrojo_);
    return sqlite3_last_insert_rowid(base_);
}

std::int64_t BaseDatos::version() {
    std::int64_t leida = 0;
    consultar("PRAGMA data_version", [&leida](const Fila& fila) { leida = fila.entero(0); });
    return leida;
}

std::int64_t BaseDatos::Fila::entero(int columna) const {
    return sqlite3_column_int64(orden_, columna);
}

std::string BaseDatos::Fila::texto(int columna) const {
    const void* const bytes = sqlite3_column_blob(orden_, columna);
    const auto longitud = static_cast<std::size_t>(sqlite3_column_bytes(orden_, columna));
    return bytes == nullptr ? std::string() : std::string(static_cast<const char*>(bytes), longitud);
}

}  // namespace tarvoline::server
