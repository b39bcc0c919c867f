// The entries of the benchmark as a program on SQLite would keep them: the columns and keys of the journal,
// the chart of accounts with its totals by month, one head row; one transaction an entry, nobody waiting for
// the disk.
#pragma once

#include <sqlite3.h>

#include <array>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace tarvoline::bench {

struct LineaBanco {
    const char* cuenta;
    int tipo;  // 1 debit, 2 credit
    double importe;
};

class LibroSqlite {
  public:
    // Creates the tables, with `cuentas` in the chart.
    LibroSqlite(std::string ruta, std::span<const std::string> cuentas) : ruta_(std::move(ruta)) {
        Abierto base(ruta_);
        base.hacer(
            "CREATE TABLE extra(registro INTEGER PRIMARY KEY, fecha, cuenta, asiento, descripcion, tipo,"
            " importe, punteo, diario, cambio2, valor2, moneda, cambio, valor, canal, usuario, notas,"
            " titulo, numero_analitica, cuenta_analitica, fecha_grabacion, referencia)");
        base.hacer("CREATE INDEX extra1 ON extra(fecha, asiento)");
        base.hacer("CREATE INDEX extra2 ON extra(cuenta, fecha)");
        base.hacer("CREATE INDEX extra3 ON extra(numero_analitica)");
        base.hacer("CREATE INDEX extra4 ON extra(referencia)");
        std::string columnas;
        for (int mes = 0; mes < 15; ++mes)
            columnas += ", debe" + std::to_string(mes) + " REAL DEFAULT 0, haber" + std::to_string(mes) +
                        " REAL DEFAULT 0";
        base.hacer("CREATE TABLE planc(cuenta TEXT PRIMARY KEY, titulo, nivel, analitica" + columnas +
                   ") WITHOUT ROWID");
        base.hacer("CREATE TABLE cabecera(numero INTEGER, cargosa REAL, abonosa REAL)");
        base.hacer("INSERT INTO cabecera VALUES(0, 0, 0)");
        Sentencia poner(base, "INSERT INTO planc(cuenta, titulo, nivel, analitica) VALUES(?1, ?1, '0', '0')");
        for (const std::string& cuenta : cuentas) {
            poner.texto(1, cuenta);
            poner.hacer();
        }
    }

    // Opens the base, stores the entry with its totals, and closes it.
    void grabar(std::span<const LineaBanco> lineas, const std::string& fecha, const std::string& titulo,
                const std::string& referencia) {
        Abierto base(ruta_);
        base.hacer("BEGIN IMMEDIATE");
        Sentencia numerar(base, "UPDATE cabecera SET numero = numero + 1 RETURNING numero");
        numerar.fila();
        const auto asiento = std::to_string(1'000'000 + numerar.entero(0)).substr(1);
        numerar.soltar();
        Sentencia anadir(
            base,
            "INSERT INTO extra(fecha, cuenta, asiento, descripcion, tipo, importe, punteo, diario,"
            " cambio2, valor2, moneda, cambio, valor, canal, usuario, notas, titulo,"
            " numero_analitica, cuenta_analitica, fecha_grabacion, referencia) VALUES"
            "(?1, ?2, ?3, ?4, ?5, ?6, '', '1', 0, 0, '1', 0, 0, '000', '', '', '', '', '', ?1, ?7)");
        Sentencia buscar(base, "SELECT titulo, analitica FROM planc WHERE cuenta = ?");
        Sentencia debe(base, "UPDATE planc SET debe3 = debe3 + ?2 WHERE cuenta = ?1");
        Sentencia haber(base, "UPDATE planc SET haber3 = haber3 + ?2 WHERE cuenta = ?1");
        Sentencia total(base, "UPDATE cabecera SET cargosa = cargosa + ?1, abonosa = abonosa + ?2");
        for (const LineaBanco& linea : lineas) {
            const std::string cuenta = linea.cuenta;
            buscar.texto(1, cuenta);
            if (!buscar.fila()) throw std::runtime_error("no account " + cuenta);
            buscar.soltar();
            anadir.texto(1, fecha);
            anadir.texto(2, cuenta);
            anadir.texto(3, asiento);
            anadir.texto(4, titulo);
            anadir.texto(5, linea.tipo == 1 ? "1" : "2");
            anadir.real(6, linea.tipo == 1 ? linea.importe : -linea.importe);
            anadir.texto(7, referencia);
            anadir.hacer();
            Sentencia& sumar = linea.tipo == 1 ? debe : haber;
            for (const std::size_t cifras : {10U, 4U, 3U, 2U, 1U}) {  // the account and its parents
                sumar.texto(1, cuenta.substr(0, cifras));
                sumar.real(2, linea.importe);
                sumar.hacer();
            }
            total.real(1, linea.tipo == 1 ? linea.importe : 0);
            total.real(2, linea.tipo == 2 ? linea.importe : 0);
            total.hacer();
        }
        base.hacer("COMMIT");
    }

  private:
    class Abierto {
      public:
        explicit Abierto(const std::string& ruta) {
            exigir(sqlite3_open(ruta.c_str(), &base_) == SQLITE_OK);
            sqlite3_busy_timeout(base_, 10000);
            hacer("PRAGMA journal_mode=TRUNCATE");
            hacer("PRAGMA synchronous=OFF");
        }
        ~Abierto() { sqlite3_close(base_); }
        Abierto(const Abierto&) = delete;
        Abierto& operator=(const Abierto&) = delete;

        void hacer(const std::string& orden) {
            exigir(sqlite3_exec(base_, orden.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
        }
        void exigir(bool cierto) const {
            if (!cierto) throw std::runtime_error(sqlite3_errmsg(base_));
        }
        sqlite3* base() const { return base_; }

      private:
        sqlite3* base_ = nullptr;
    };

    class Sentencia {
      public:
        Sentencia(const Abierto& base, const char* texto) : base_(base) {
            base_.exigir(sqlite3_prepare_v2(base.base(), texto, -1, &una_, nullptr) == SQLITE_OK);
        }
        ~Sentencia() { sqlite3_finalize(una_); }
        Sentencia(const Sentencia&) = delete;
        Sentencia& operator=(const Sentencia&) = delete;

        void texto(int sitio, const std::string& valor) {
            sqlite3_bind_text(una_, sitio, valor.data(), static_cast<int>(valor.size()), SQLITE_TRANSIENT);
        }
        void real(int sitio, double valor) { sqlite3_bind_double(una_, sitio, valor); }
        bool fila() {
            const int que = sqlite3_step(una_);
            base_.exigir(que == SQLITE_ROW || que == SQLITE_DONE);
            return que == SQLITE_ROW;
        }
        std::int64_t entero(int columna) { return sqlite3_column_int64(una_, columna); }
        void soltar() { sqlite3_reset(una_); }
        void hacer() {
            fila();
            soltar();
        }

      private:
        const Abierto& base_;
        sqlite3_stmt* una_ = nullptr;
    };

    const std::string ruta_;
};

}  // namespace tarvoline::bench
