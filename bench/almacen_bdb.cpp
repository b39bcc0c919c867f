// Berkeley DB: a B-tree a key in one file, text and record (big-endian) its keys, each command a transaction
// that does not wait for the disk; several processes share the environment's cache and locks.
#include <db.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "almacenes.h"

namespace tarvoline::bench {

namespace {

constexpr u_int32_t octetosDeCache = 64U << 20U;

void exigir(int codigo) {
    if (codigo != 0) throw std::runtime_error(db_strerror(codigo));
}

DBT valorDe(const void* datos, std::size_t octetos) {
    DBT valor{};
    valor.data = const_cast<void*>(datos);
    valor.size = static_cast<u_int32_t>(octetos);
    return valor;
}

DB_ENV* abrirEntorno(const std::string& carpeta) {
    DB_ENV* entorno = nullptr;
    exigir(db_env_create(&entorno, 0));
    exigir(entorno->set_cachesize(entorno, 0, octetosDeCache, 1));
    exigir(entorno->set_flags(entorno, DB_TXN_NOSYNC, 1));
    exigir(entorno->log_set_config(entorno, DB_LOG_AUTO_REMOVE, 1));
    exigir(entorno->set_lk_detect(entorno, DB_LOCK_DEFAULT));
    constexpr u_int32_t partes = DB_INIT_MPOOL | DB_INIT_TXN | DB_INIT_LOCK | DB_INIT_LOG;
    exigir(entorno->open(entorno, carpeta.c_str(), DB_CREATE | partes, 0644));
    return entorno;
}

DB* abrirBase(DB_ENV* entorno, const char* archivo, const char* nombre, bool nueva) {
    DB* base = nullptr;
    exigir(db_create(&base, entorno, 0));
    const u_int32_t modo = DB_AUTO_COMMIT | (nueva ? DB_CREATE : 0U);
    exigir(base->open(base, nullptr, archivo, nombre, DB_BTREE, modo, 0644));
    return base;
}

class PorBerkeley final : public Almacen {
  public:
    PorBerkeley(const std::string& carpeta, bool nuevo)
        : ruta_(carpeta + "/base.db"), entorno_(abrirEntorno(carpeta)) {
        for (std::size_t i = 0; i < bases_.size(); ++i)
            bases_[i] = abrirBase(entorno_, "base.db", std::to_string(i).c_str(), nuevo);
    }
    ~PorBerkeley() override {
        for (DB* base : bases_)
            base->close(base, 0);
        entorno_->close(entorno_, 0);
    }

    void insertar(const Textos& textos) override {
        enOrden([&](DB_TXN* orden) {
            DBT nombre = valorDe("n", 1);
            std::uint32_t registro = 0;
            DBT valor = valorDe(&registro, sizeof registro);
            valor.ulen = sizeof registro;
            valor.flags = DB_DBT_USERMEM;
            DB* const contador = bases_[4];
            int codigo = contador->get(contador, orden, &nombre, &valor, DB_RMW);
            if (codigo != 0 && codigo != DB_NOTFOUND) return codigo;
            ++registro;
            valor = valorDe(&registro, sizeof registro);
            codigo = contador->put(contador, orden, &nombre, &valor, 0);
            for (std::size_t i = 0; i < 4 && codigo == 0; ++i) {
                DBT clave = claveDe(textos[i], registro);
                DBT nada{};
                codigo = bases_[i]->put(bases_[i], orden, &clave, &nada, 0);
            }
            return codigo;
        });
    }
    void borrar(std::uint32_t registro, const Textos& textos) override {
        enOrden([&](DB_TXN* orden) {
            int codigo = 0;
            for (std::size_t i = 0; i < 4 && codigo == 0; ++i) {
                DBT clave = claveDe(textos[i], registro);
                codigo = bases_[i]->del(bases_[i], orden, &clave, 0);
            }
            return codigo;
        });
    }
    bool buscar(unsigned cual, const std::string& texto) override {
        bool exacta = false;
        conCursor(cual, [&](DBC* cursor) {
            DBT clave = claveDe(texto, 0);
            DBT nada{};
            int codigo = cursor->get(cursor, &clave, &nada, DB_SET_RANGE);
            exacta = codigo == 0 && std::memcmp(clave.data, texto.data(), texto.size()) == 0;
            if (codigo == 0 && !exacta) codigo = cursor->get(cursor, &clave, &nada, DB_PREV);
            return codigo;
        });
        return exacta;
    }
    std::size_t recorrer(unsigned cual) override {
        std::size_t n = 0;
        donde_.clear();
        for (bool hay = true; hay;) {
            hay = conCursor(cual, [&](DBC* cursor) {
                DBT clave = valorDe(donde_.data(), donde_.size());
                DBT nada{};
                int codigo = cursor->get(cursor, &clave, &nada, donde_.empty() ? DB_FIRST : DB_SET_RANGE);
                if (codigo == 0 && !donde_.empty()) codigo = cursor->get(cursor, &clave, &nada, DB_NEXT);
                if (codigo == 0) donde_.assign(static_cast<const char*>(clave.data), clave.size);
                return codigo;
            });
            n += hay ? 1 : 0;
        }
        return n;
    }
    double megas() override {
        exigir(entorno_->memp_sync(entorno_, nullptr));
        return static_cast<double>(std::filesystem::file_size(ruta_)) / 1e6;
    }

  private:
    // Runs `paso` as one transaction, again when the other process's locks were in the way.
    void enOrden(const std::function<int(DB_TXN*)>& paso) {
        for (;;) {
            DB_TXN* orden = nullptr;
            exigir(entorno_->txn_begin(entorno_, nullptr, &orden, 0));
            const int codigo = paso(orden);
            if (codigo == 0) {
                exigir(orden->commit(orden, 0));
                return;
            }
            exigir(orden->abort(orden));
            if (codigo != DB_LOCK_DEADLOCK) exigir(codigo);
        }
    }
    // False when there is no such entry.
    bool conCursor(unsigned cual, const std::function<int(DBC*)>& paso) {
        for (;;) {
            DBC* cursor = nullptr;
            exigir(bases_[cual]->cursor(bases_[cual], nullptr, &cursor, 0));
            const int codigo = paso(cursor);
            exigir(cursor->close(cursor));
            if (codigo == 0 || codigo == DB_NOTFOUND) return codigo == 0;
            if (codigo != DB_LOCK_DEADLOCK) exigir(codigo);
        }
    }
    DBT claveDe(const std::string& texto, std::uint32_t registro) {
        armada_ = texto;
        for (int corrimiento = 24; corrimiento >= 0; corrimiento -= 8)
            armada_.push_back(static_cast<char>(registro >> corrimiento));
        return valorDe(armada_.data(), armada_.size());
    }

    std::string ruta_;
    DB_ENV* entorno_;
    std::array<DB*, 5> bases_{};
    std::string armada_;
    std::string donde_;
};

// Nine files of four trees each, in an environment that stays: what an opening of them alone costs.
class NueveBerkeley final : public Nueve {
  public:
    explicit NueveBerkeley(const std::string& carpeta) : carpeta_(carpeta + "/nueve") {
        std::filesystem::create_directories(carpeta_);
        entorno_ = abrirEntorno(carpeta_);
    }
    ~NueveBerkeley() override { entorno_->close(entorno_, 0); }
    void crear() override { abrirTodas(true); }
    void abrirYCerrar() override { abrirTodas(false); }

  private:
    void abrirTodas(bool nuevas) {
        std::vector<DB*> abiertas;
        for (int i = 0; i < 9; ++i) {
            const std::string archivo = "base" + std::to_string(i) + ".db";
            for (int clave = 0; clave < 4; ++clave)
                abiertas.push_back(
                    abrirBase(entorno_, archivo.c_str(), std::to_string(clave).c_str(), nuevas));
        }
        for (DB* base : abiertas)
            exigir(base->close(base, 0));
    }
    std::string carpeta_;
    DB_ENV* entorno_ = nullptr;
};

}  // namespace

Rival rivalBerkeley() {
    return {"Berkeley DB",
            [](const std::string& carpeta, bool nuevo) -> std::unique_ptr<Almacen> {
                return std::make_unique<PorBerkeley>(carpeta, nuevo);
            },
            [](const std::string& carpeta) -> std::unique_ptr<Nueve> {
                return std::make_unique<NueveBerkeley>(carpeta);
            }};
}

}  // namespace tarvoline::bench
