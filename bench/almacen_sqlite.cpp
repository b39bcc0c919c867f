// SQLite: a table without row identity a key, (text, record) its primary key; no waiting for the disk.
#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>

#include "almacenes.h"

namespace tarvoline::bench {

namespace {

void exigir(bool cierto, sqlite3* base) {
    if (!cierto) throw std::runtime_error(sqlite3_errmsg(base));
}

class Base {
  public:
    Base(const std::string& ruta, const char* diario) {
        exigir(sqlite3_open(ruta.c_str(), &base_) == SQLITE_OK, base_);
        sqlite3_busy_timeout(base_, 10000);
        hacer(std::string("PRAGMA journal_mode=") + diario);
        hacer("PRAGMA synchronous=OFF");
        hacer("PRAGMA cache_size=-32000");
    }
    ~Base() { sqlite3_close(base_); }
    Base(const Base&) = delete;
    Base& operator=(const Base&) = delete;

    void hacer(const std::string& orden) {
        exigir(sqlite3_exec(base_, orden.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, base_);
    }
    sqlite3* base() { return base_; }

  private:
    sqlite3* base_ = nullptr;
};

class Sentencia {
  public:
    Sentencia(Base& base, const std::string& texto) : base_(base.base()) {
        exigir(sqlite3_prepare_v3(base_, texto.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &una_, nullptr) ==
                   SQLITE_OK,
               base_);
    }
    ~Sentencia() { sqlite3_finalize(una_); }
    Sentencia(const Sentencia&) = delete;
    Sentencia& operator=(const Sentencia&) = delete;

    void texto(int sitio, const std::string& valor) {
        sqlite3_bind_blob(una_, sitio, valor.data(), static_cast<int>(valor.size()), SQLITE_STATIC);
    }
    void numero(int sitio, std::int64_t valor) { sqlite3_bind_int64(una_, sitio, valor); }
    // True when there is a row; reset() must follow once it has been read.
    bool fila() {
        const int que = sqlite3_step(una_);
        exigir(que == SQLITE_ROW || que == SQLITE_DONE, base_);
        return que == SQLITE_ROW;
    }
    std::string textoLeido() {
        return {static_cast<const char*>(sqlite3_column_blob(una_, 0)),
                static_cast<std::size_t>(sqlite3_column_bytes(una_, 0))};
    }
    std::int64_t numeroLeido(int columna) { return sqlite3_column_int64(una_, columna); }
    void soltar() { sqlite3_reset(una_); }
    void hacer() {
        fila();
        soltar();
    }

  private:
    sqlite3* base_;
    sqlite3_stmt* una_ = nullptr;
};

void esquema(Base& base) {
    for (int i = 1; i <= 4; ++i) {
        base.hacer("CREATE TABLE k" + std::to_string(i) +
                   "(t BLOB, r INTEGER, PRIMARY KEY(t, r)) WITHOUT ROWID");
    }
    base.hacer("CREATE TABLE contador(n INTEGER)");
    base.hacer("INSERT INTO contador VALUES(0)");
}

class PorSqlite final : public Almacen {
  public:
    PorSqlite(const std::string& carpeta, bool nuevo, const char* diario)
        : ruta_(carpeta + "/base"), base_(ruta_, diario) {
        if (nuevo) esquema(base_);
        const auto sentencia = [&](const std::string& texto) {
            return std::make_unique<Sentencia>(base_, texto);
        };
        empezar_ = sentencia("BEGIN IMMEDIATE");
        acabar_ = sentencia("COMMIT");
        contar_ = sentencia("UPDATE contador SET n = n + 1 RETURNING n");
        for (std::size_t i = 0; i < 4; ++i) {
            const std::string tabla = "k" + std::to_string(i + 1);
            poner_[i] = sentencia("INSERT INTO " + tabla + " VALUES(?, ?)");
            quitar_[i] = sentencia("DELETE FROM " + tabla + " WHERE t = ? AND r = ?");
            desde_[i] =
                sentencia("SELECT t, r FROM " + tabla + " WHERE (t, r) >= (?, ?) ORDER BY t, r LIMIT 1");
            antes_[i] = sentencia("SELECT t, r FROM " + tabla +
                                  " WHERE (t, r) < (?, ?) ORDER BY t DESC, r DESC LIMIT 1");
            tras_[i] =
                sentencia("SELECT t, r FROM " + tabla + " WHERE (t, r) > (?, ?) ORDER BY t, r LIMIT 1");
        }
    }

    void insertar(const Textos& textos) override {
        empezar_->hacer();
        contar_->fila();
        const std::int64_t registro = contar_->numeroLeido(0);
        contar_->fila();
        contar_->soltar();
        for (std::size_t i = 0; i < 4; ++i)
            hacer(*poner_[i], textos[i], registro);
        acabar_->hacer();
    }
    void borrar(std::uint32_t registro, const Textos& textos) override {
        empezar_->hacer();
        for (std::size_t i = 0; i < 4; ++i)
            hacer(*quitar_[i], textos[i], registro);
        acabar_->hacer();
    }
    bool buscar(unsigned clave, const std::string& texto) override {
        if (uno(*desde_[clave], texto, 0) && texto_ == texto) return true;
        uno(*antes_[clave], texto, 0);
        return false;
    }
    std::size_t recorrer(unsigned clave) override {
        std::size_t n = 0;
        for (bool hay = uno(*desde_[clave], "", 0); hay; hay = uno(*tras_[clave], texto_, registro_))
            ++n;
        return n;
    }
    double megas() override { return static_cast<double>(std::filesystem::file_size(ruta_)) / 1e6; }

  private:
    static void hacer(Sentencia& sentencia, const std::string& texto, std::int64_t registro) {
        sentencia.texto(1, texto);
        sentencia.numero(2, registro);
        sentencia.hacer();
    }
    bool uno(Sentencia& sentencia, const std::string& texto, std::int64_t registro) {
        sentencia.texto(1, texto);
        sentencia.numero(2, registro);
        const bool hay = sentencia.fila();
        if (hay) {
            std::string leido = sentencia.textoLeido();
            registro_ = sentencia.numeroLeido(1);
            sentencia.soltar();
            texto_ = std::move(leido);
        } else {
            sentencia.soltar();
        }
        return hay;
    }

    using Una = std::unique_ptr<Sentencia>;
    std::string ruta_;
    Base base_;
    Una empezar_, acabar_, contar_;
    std::array<Una, 4> poner_, quitar_, desde_, antes_, tras_;
    std::string texto_;
    std::int64_t registro_ = 0;
};

class NueveSqlite final : public Nueve {
  public:
    NueveSqlite(std::string carpeta, const char* diario) : carpeta_(std::move(carpeta)), diario_(diario) {}
    void crear() override {
        for (int i = 0; i < 9; ++i) {
            Base base(ruta(i), diario_);
            esquema(base);
        }
    }
    // Opened far enough to know that it is sound and of what shape, as the others are.
    void abrirYCerrar() override {
        std::vector<sqlite3*> abiertas(9, nullptr);
        for (int i = 0; i < 9; ++i) {
            sqlite3*& base = abiertas[static_cast<std::size_t>(i)];
            exigir(sqlite3_open(ruta(i).c_str(), &base) == SQLITE_OK, base);
            exigir(sqlite3_exec(base, "PRAGMA schema_version", nullptr, nullptr, nullptr) == SQLITE_OK, base);
        }
        for (sqlite3* base : abiertas)
            sqlite3_close(base);
    }

  private:
    std::string ruta(int i) const { return carpeta_ + "/base" + std::to_string(i); }
    std::string carpeta_;
    const char* diario_;
};

template <const char* const& Diario>
Rival rival(const char* nombre) {
    return {nombre,
            [](const std::string& carpeta, bool nuevo) -> std::unique_ptr<Almacen> {
                return std::make_unique<PorSqlite>(carpeta, nuevo, Diario);
            },
            [](const std::string& carpeta) -> std::unique_ptr<Nueve> {
                return std::make_unique<NueveSqlite>(carpeta, Diario);
            }};
}

constexpr const char* truncado = "TRUNCATE";
constexpr const char* wal = "WAL";

}  // namespace

Rival rivalSqliteDiario() {
    return rival<truncado>("SQLite rollback");
}

Rival rivalSqliteWal() {
    return rival<wal>("SQLite WAL");
}

}  // namespace tarvoline::bench
