#include "server/almacen_usuarios.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "core/texto.h"
#include "server/opciones.h"
#include "server/textos.h"

namespace tarvoline::server {
namespace {

constexpr std::size_t maximoNombre = 64;
// A longer one could not be scrambled: with the 16 characters before it, the filler would run out.
constexpr std::size_t maximoClave = 40;
constexpr std::int64_t maximoGb = 1000000;

// Results separate fields by "-" and records by "|", without escapes; clients take "ERROR:" anywhere in a
// user's record for a failure.
void comprobarCampo(std::string_view que, std::string_view valor, bool obligatorio) {
    const std::string sujeto(que);
    if (valor.empty() && !obligatorio) return;
    if (!textoLimpio(valor, maximoNombre) || core::Recortar(valor) != valor) {
        throw ErrorServidor(sujeto + ": ha de tener entre 1 y 64 caracteres, sin blancos a los lados");
    }
    if (valor.find_first_of("-|") != std::string_view::npos) {
        throw ErrorServidor(sujeto + ": no puede contener los caracteres - y |");
    }
    if (core::Mayusculas(valor).find("ERROR:") != std::string::npos) {
        throw ErrorServidor(sujeto + ": no puede contener \"ERROR:\"");
    }
}

void comprobarClave(std::string_view clave) {
    const bool valida =
        !clave.empty() && clave.size() <= maximoClave && std::ranges::all_of(clave, esAlfanumerico);
    if (!valida) throw ErrorServidor("clave: ha de tener entre 1 y 40 letras sin acento y cifras");
}

const std::string tipoNuevo = "01";

void comprobarTipo(const std::string& tipo) {
    const bool valido = tipo.empty() || tipo == "00" || tipo == "01" || tipo == "02";
    if (!valido) throw ErrorServidor("tipo: ha de ser 00, 01 o 02");
}

}  // namespace

struct AlmacenUsuarios::Foto {
    std::int64_t version = 0;
    std::map<std::string, UsuarioLeido, std::less<>> todos;
    std::map<std::string, UsuarioLeido, std::less<>> porCarpeta;
    std::map<std::string, std::vector<UsuarioLeido>, std::less<>> porCuenta;
    std::map<std::string, std::int64_t, std::less<>> capacidades;
};

std::string Usuario::carpetaRaiz() const {
    std::array<char, 24> texto{};
    std::snprintf(texto.data(), texto.size(), "U%07lld", static_cast<long long>(id));
    return texto.data();
}

AlmacenUsuarios::AlmacenUsuarios(BaseDatos& base, const Cifrado& cifrado) : base_(base), cifrado_(cifrado) {
    foto();
}

AlmacenUsuarios::~AlmacenUsuarios() = default;

std::shared_ptr<const AlmacenUsuarios::Foto> AlmacenUsuarios::foto() {
    const std::lock_guard guardia(cerrojo_);
    // The version is asked before the rows are read: a write in between is then seen by the next call.
    const std::int64_t version = base_.version();
    if (!foto_ || foto_->version != version) foto_ = leer(version);
    return foto_;
}

std::shared_ptr<const AlmacenUsuarios::Foto> AlmacenUsuarios::leer(std::int64_t version) {
    auto nueva = std::make_shared<Foto>();
    nueva->version = version;
    base_.consultar(
        "SELECT id, usuarios.usuario, clave, cuenta, etiqueta, activo, coalesce(tipo, '01') "
        "FROM usuarios LEFT JOIN tipos_usuario ON tipos_usuario.usuario = id ORDER BY id",
        [&](const BaseDatos::Fila& fila) {
            auto usuario = std::make_shared<Usuario>();
            usuario->id = fila.entero(0);
            usuario->usuario = fila.texto(1);
            usuario->clave = cifrado_.abrir(fila.texto(2), usuario->usuario);
            usuario->cuenta = fila.texto(3);
            usuario->etiqueta = fila.texto(4);
            usuario->activo = fila.entero(5) != 0;
            usuario->tipo = fila.texto(6);
            nueva->todos[usuario->usuario] = usuario;
            if (!usuario->activo) return;
            nueva->porCarpeta[usuario->carpetaRaiz()] = usuario;
            if (!usuario->cuenta.empty()) nueva->porCuenta[usuario->cuenta].push_back(usuario);
        });
    base_.consultar("SELECT codigo, gb FROM cuentas",
                    [&](const BaseDatos::Fila& fila) { nueva->capacidades[fila.texto(0)] = fila.entero(1); });
    return nueva;
}

void AlmacenUsuarios::olvidar() {
    const std::lock_guard guardia(cerrojo_);
    foto_.reset();
}

UsuarioLeido AlmacenUsuarios::buscar(std::string_view usuario) {
    const auto actual = foto();
    const auto hallado = actual->todos.find(usuario);
    return hallado != actual->todos.end() && hallado->second->activo ? hallado->second : nullptr;
}

UsuarioLeido AlmacenUsuarios::porCarpetaRaiz(std::string_view carpeta) {
    const auto actual = foto();
    const auto hallado = actual->porCarpeta.find(core::Mayusculas(carpeta));
    return hallado != actual->porCarpeta.end() ? hallado->second : nullptr;
}

std::vector<UsuarioLeido> AlmacenUsuarios::porCuenta(std::string_view codigo) {
    const auto actual = foto();
    const auto hallada = actual->porCuenta.find(core::Mayusculas(codigo));
    return hallada != actual->porCuenta.end() ? hallada->second : std::vector<UsuarioLeido>{};
}

std::int64_t AlmacenUsuarios::capacidadGb(std::string_view codigo) {
    const auto actual = foto();
    const auto hallada = actual->capacidades.find(core::Mayusculas(codigo));
    return hallada != actual->capacidades.end() ? hallada->second : 0;
}

std::vector<UsuarioLeido> AlmacenUsuarios::todos() {
    const auto actual = foto();
    std::vector<UsuarioLeido> lista;
    for (const auto& [nombre, usuario] : actual->todos)
        lista.push_back(usuario);
    return lista;
}

void AlmacenUsuarios::fijarCapacidad(const std::string& codigo, std::optional<std::int64_t> gb) {
    if (codigo.empty()) {
        if (gb) throw ErrorServidor("los GB se contratan por cuenta: falta el código de cuenta");
        return;
    }
    if (gb && (*gb < 0 || *gb > maximoGb)) throw ErrorServidor("GB: ha de estar entre 0 y 1000000");
    base_.ejecutar("INSERT INTO cuentas (codigo, gb) VALUES (?, 0) ON CONFLICT DO NOTHING", codigo);
    if (gb) base_.ejecutar("UPDATE cuentas SET gb = ? WHERE codigo = ?", *gb, codigo);
}

void AlmacenUsuarios::fijarTipo(const std::string& usuario, const std::string& tipo) {
    base_.ejecutar(
        "INSERT OR REPLACE INTO tipos_usuario (usuario, tipo) SELECT id, ? FROM usuarios "
        "WHERE usuario = ?",
        tipo, usuario);
}

void AlmacenUsuarios::alta(const DatosAlta& datos) {
    comprobarCampo("usuario", datos.usuario, true);
    comprobarCampo("cuenta", datos.cuenta, false);
    comprobarCampo("etiqueta", datos.etiqueta, false);
    comprobarClave(datos.clave);
    comprobarTipo(datos.tipo);
    if (buscar(datos.usuario)) throw ErrorServidor("ya existe el usuario " + datos.usuario);

    const std::string cuenta = core::Mayusculas(datos.cuenta);
    const std::string sellada = cifrado_.sellar(datos.clave, datos.usuario);
    base_.enTransaccion([&] {
        fijarCapacidad(cuenta, datos.gb);
        base_.ejecutar(
            "INSERT INTO usuarios (usuario, clave, cuenta, etiqueta) VALUES (?, ?, ?, ?) "
            "ON CONFLICT (usuario) DO UPDATE SET clave = excluded.clave, cuenta = excluded.cuenta, "
            "etiqueta = excluded.etiqueta, activo = 1",
            datos.usuario, sellada, cuenta, datos.etiqueta);
        fijarTipo(datos.usuario, datos.tipo.empty() ? tipoNuevo : datos.tipo);
    });
    olvidar();
}

void AlmacenUsuarios::modificar(const DatosAlta& datos) {
    const UsuarioLeido antes = buscar(datos.usuario);
    if (!antes) throw ErrorServidor("no existe el usuario " + datos.usuario);
    comprobarCampo("cuenta", datos.cuenta, false);
    comprobarCampo("etiqueta", datos.etiqueta, false);
    if (!datos.clave.empty()) comprobarClave(datos.clave);
    comprobarTipo(datos.tipo);

    const std::string cuenta = datos.cuenta.empty() ? antes->cuenta : core::Mayusculas(datos.cuenta);
    const std::string sellada =
        cifrado_.sellar(datos.clave.empty() ? antes->clave : datos.clave, datos.usuario);
    base_.enTransaccion([&] {
        fijarCapacidad(cuenta, datos.gb);
        base_.ejecutar("UPDATE usuarios SET clave = ?, cuenta = ?, etiqueta = ? WHERE id = ?", sellada,
                       cuenta, datos.etiqueta.empty() ? antes->etiqueta : datos.etiqueta, antes->id);
        if (!datos.tipo.empty()) fijarTipo(datos.usuario, datos.tipo);
    });
    olvidar();
}

void AlmacenUsuarios::baja(std::string_view usuario) {
    const UsuarioLeido antes = buscar(usuario);
    if (!antes) throw ErrorServidor("no existe el usuario " + std::string(usuario));
    base_.ejecutar("UPDATE usuarios SET activo = 0 WHERE id = ?", antes->id);
    olvidar();
}

void AlmacenUsuarios::asignarCuenta(std::int64_t id, std::string_view codigo) {
    base_.ejecutar("UPDATE usuarios SET cuenta = ? WHERE id = ?", core::Mayusculas(codigo), id);
    olvidar();
}

}  // namespace tarvoline::server
