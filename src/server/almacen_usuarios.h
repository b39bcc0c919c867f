// Users, their accounts and what each account has contracted.
//
// Read on every call, written seldom, and by two programs: the service and the administrator's command, which
// works while the service runs. So the whole table is kept in memory and read again when the file was written
// by another process. Thread-safe.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/base_datos.h"
#include "server/cifrado.h"

namespace tarvoline::server {

struct Usuario {
    std::int64_t id = 0;
    std::string usuario;  // compared exactly
    std::string clave;    // in clear
    std::string cuenta;   // account code, upper case; empty when he has none
    std::string etiqueta;
    bool activo = true;
    // What he is to the accounting link: "00" administrator of the books of his account, "01" only of his
    // own, "02" none.
    std::string tipo = "01";

    // "U" and seven digits: the name of his root folder, as clients and the disk know it.
    std::string carpetaRaiz() const;
};
using UsuarioLeido = std::shared_ptr<const Usuario>;  // null = there is none

struct DatosAlta {
    std::string usuario{}, clave{}, cuenta{}, etiqueta{};
    std::optional<std::int64_t> gb{};  // contracted by the account; nothing leaves it as it is
    std::string tipo{};                // "00", "01", "02"; "" leaves it as it is, "01" for a new user
};

class AlmacenUsuarios {
  public:
    // Reads all users. Throws ErrorServidor, also when their passwords were sealed with another key.
    AlmacenUsuarios(BaseDatos& base, const Cifrado& cifrado);
    ~AlmacenUsuarios();

    // Active users only.
    UsuarioLeido buscar(std::string_view usuario);
    UsuarioLeido porCarpetaRaiz(std::string_view carpeta);  // case ignored
    std::vector<UsuarioLeido> porCuenta(std::string_view codigo);
    std::int64_t capacidadGb(std::string_view codigo);  // 0 when unknown
    // Everyone, in order of name, those struck off too.
    std::vector<UsuarioLeido> todos();

    // Makes a user, or takes back one who was struck off (who then finds his copies again). Throws
    // ErrorServidor when the user exists or a value is none that the results' grammar can carry.
    void alta(const DatosAlta& datos);
    // Empty texts leave what is there. Throws ErrorServidor.
    void modificar(const DatosAlta& datos);
    // He can no longer call; his copies stay. Throws ErrorServidor when there is no such user.
    void baja(std::string_view usuario);
    void asignarCuenta(std::int64_t id, std::string_view codigo);

  private:
    struct Foto;
    std::shared_ptr<const Foto> foto();
    std::shared_ptr<const Foto> leer(std::int64_t version);
    void fijarCapacidad(const std::string& codigo, std::optional<std::int64_t> gb);
    void fijarTipo(const std::string& usuario, const std::string& tipo);
    void olvidar();

    BaseDatos& base_;
    const Cifrado& cifrado_;
    std::mutex cerrojo_;
    std::shared_ptr<const Foto> foto_;
};

}  // namespace tarvoline::server
