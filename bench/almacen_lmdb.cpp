// LMDB: a database a key, text and record (big-endian) its keys; no waiting for the disk.
#include <lmdb.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "almacenes.h"

namespace tarvoline::bench {

namespace {

void exigir(int codigo) {
    if (codigo != MDB_SUCCESS) throw std::runtime_error(mdb_strerror(codigo));
}

MDB_env* abrirEntorno(const std::string& ruta) {
    MDB_env* entorno = nullptr;
    exigir(mdb_env_create(&entorno));
    exigir(mdb_env_set_maxdbs(entorno, 5));
    exigir(mdb_env_set_mapsize(entorno, std::size_t{8} << 30));
    exigir(mdb_env_open(entorno, ruta.c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0644));
    return entorno;
}

std::array<MDB_dbi, 5> abrirBases(MDB_env* entorno, unsigned banderas) {
    MDB_txn* orden = nullptr;
    std::array<MDB_dbi, 5> bases{};
    exigir(mdb_txn_begin(entorno, nullptr, banderas == 0 ? MDB_RDONLY : 0, &orden));
    for (std::size_t i = 0; i < 5; ++i)
        exigir(mdb_dbi_open(orden, std::to_string(i).c_str(), banderas, &bases[i]));
    exigir(mdb_txn_commit(orden));
    return bases;
}

class PorLmdb final : public Almacen {
  public:
    PorLmdb(const std::string& carpeta, bool nuevo) : ruta_(carpeta + "/base.mdb") {
        entorno_ = abrirEntorno(ruta_);
        bases_ = abrirBases(entorno_, nuevo ? MDB_CREATE : 0);
        exigir(mdb_txn_begin(entorno_, nullptr, MDB_RDONLY, &lectura_));
        for (std::size_t i = 0; i < 4; ++i)
            exigir(mdb_cursor_open(lectura_, bases_[i], &cursores_[i]));
        mdb_txn_reset(lectura_);
    }
    ~PorLmdb() override {
        for (MDB_cursor* cursor : cursores_)
            mdb_cursor_close(cursor);
        mdb_txn_abort(lectura_);
        mdb_env_close(entorno_);
    }

    void insertar(const Textos& textos) override {
        MDB_txn* orden = nullptr;
        exigir(mdb_txn_begin(entorno_, nullptr, 0, &orden));
        MDB_val nombre{1, const_cast<char*>("n")};
        MDB_val valor{};
        std::uint32_t registro = 0;
        if (mdb_get(orden, bases_[4], &nombre, &valor) == MDB_SUCCESS)
            std::memcpy(&registro, valor.mv_data, sizeof registro);
        ++registro;
        valor = {sizeof registro, &registro};
        exigir(mdb_put(orden, bases_[4], &nombre, &valor, 0));
        for (std::size_t i = 0; i < 4; ++i) {
            MDB_val clave = claveDe(textos[i], registro);
            MDB_val nada{0, nullptr};
            exigir(mdb_put(orden, bases_[i], &clave, &nada, 0));
        }
        exigir(mdb_txn_commit(orden));
    }
    void borrar(std::uint32_t registro, const Textos& textos) override {
        MDB_txn* orden = nullptr;
        exigir(mdb_txn_begin(entorno_, nullptr, 0, &orden));
        for (std::size_t i = 0; i < 4; ++i) {
            MDB_val clave = claveDe(textos[i], registro);
            exigir(mdb_del(orden, bases_[i], &clave, nullptr));
        }
        exigir(mdb_txn_commit(orden));
    }
    bool buscar(unsigned cual, const std::string& texto) override {
        empezar(cual);
        MDB_val clave = claveDe(texto, 0);
        MDB_val nada{};
        bool exacta = false;
        if (mdb_cursor_get(cursores_[cual], &clave, &nada, MDB_SET_RANGE) == MDB_SUCCESS) {
            exacta = std::memcmp(clave.mv_data, texto.data(), texto.size()) == 0;
            if (!exacta) mdb_cursor_get(cursores_[cual], &clave, &nada, MDB_PREV);
        }
        mdb_txn_reset(lectura_);
        return exacta;
    }
    std::size_t recorrer(unsigned cual) override {
        MDB_val clave{};
        MDB_val nada{};
        empezar(cual);
        bool hay = mdb_cursor_get(cursores_[cual], &clave, &nada, MDB_FIRST) == MDB_SUCCESS;
        std::size_t n = 0;
        for (; hay; ++n) {
            donde_.assign(static_cast<const char*>(clave.mv_data), clave.mv_size);
            mdb_txn_reset(lectura_);
            empezar(cual);
            clave = {donde_.size(), donde_.data()};
            hay = mdb_cursor_get(cursores_[cual], &clave, &nada, MDB_SET_RANGE) == MDB_SUCCESS &&
                  mdb_cursor_get(cursores_[cual], &clave, &nada, MDB_NEXT) == MDB_SUCCESS;
        }
        mdb_txn_reset(lectura_);
        return n;
    }
    double megas() override { return static_cast<double>(std::filesystem::file_size(ruta_)) / 1e6; }

  private:
    MDB_val claveDe(const std::string& texto, std::uint32_t registro) {
        armada_ = texto;
        for (int corrimiento = 24; corrimiento >= 0; corrimiento -= 8)
            armada_.push_back(static_cast<char>(registro >> corrimiento));
        return {armada_.size(), armada_.data()};
    }
    void empezar(unsigned cual) {
        exigir(mdb_txn_renew(lectura_));
        exigir(mdb_cursor_renew(lectura_, cursores_[cual]));
    }

    std::string ruta_;
    MDB_env* entorno_ = nullptr;
    std::array<MDB_dbi, 5> bases_{};
    MDB_txn* lectura_ = nullptr;
    std::array<MDB_cursor*, 4> cursores_{};
    std::string armada_;
    std::string donde_;
};

class NueveLmdb final : public Nueve {
  public:
    explicit NueveLmdb(std::string carpeta) : carpeta_(std::move(carpeta)) {}
    void crear() override {
        for (int i = 0; i < 9; ++i) {
            MDB_env* entorno = abrirEntorno(ruta(i));
            abrirBases(entorno, MDB_CREATE);
            mdb_env_close(entorno);
        }
    }
    void abrirYCerrar() override {
        std::vector<MDB_env*> abiertos;
        for (int i = 0; i < 9; ++i) {
            abiertos.push_back(abrirEntorno(ruta(i)));
            abrirBases(abiertos.back(), 0);
        }
        for (MDB_env* entorno : abiertos)
            mdb_env_close(entorno);
    }

  private:
    std::string ruta(int i) const { return carpeta_ + "/base" + std::to_string(i) + ".mdb"; }
    std::string carpeta_;
};

}  // namespace

Rival rivalLmdb() {
    return {"LMDB",
            [](const std::string& carpeta, bool nuevo) -> std::unique_ptr<Almacen> {
                return std::make_unique<PorLmdb>(carpeta, nuevo);
            },
            [](const std::string& carpeta) -> std::unique_ptr<Nueve> {
                return std::make_unique<NueveLmdb>(carpeta);
            }};
}

}  // namespace tarvoline::bench
