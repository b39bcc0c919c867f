#include "data/tablas.h"

#include <algorithm>
#include <exception>

#include "data/utilidades.h"

namespace tarvoline::data {

namespace {

constexpr auto porCerrada = platform::error_archivo::noExiste;

std::string_view hastaCero(std::string_view texto) {
    return texto.substr(0, texto.find('\0'));
}

std::string_view sinBlancosFinales(std::string_view texto) {
    return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

}  // namespace

Tablas::Tablas(CapaDatos& capa)
    : capa_(capa),
      gDirectorio_(capa.carpetas.DirectorioPrograma()),
      sincronizar_(capa.ajustes.leer("SincronizarAlCerrar") == "1"),
      definiciones_(capa.archivos) {}

Tablas::~Tablas() = default;

void Tablas::LlamarIndexados() {
    if (!gMotor_) gMotor_ = std::make_unique<motor::MotorIndexados>(capa_.archivos, sincronizar_);
    gMotor_->Ejecutar(gComando, gRegistro, gEstado);
}

std::int16_t Tablas::orden(std::string comando) {
    gComando = std::move(comando);
    LlamarIndexados();
    return gEstado;
}

std::size_t Tablas::siguientes(int tabla, std::span<std::int32_t> registros) {
    if (!gMotor_) return 0;
    return gMotor_->siguientes(static_cast<unsigned>(tabla), registros);
}

// All is closed, whatever fails on the way; the first failure is told then.
void Tablas::CerrarTodo() {
    std::exception_ptr fallo;
    const auto intentar = [&](const auto& paso) {
        try {
            paso();
        } catch (const std::exception&) {
            if (!fallo) fallo = std::current_exception();
        }
    };
    for (Ranura& ranura : ranuras_) {
        ranura.conClaves = false;
        const auto archivo = std::move(ranura.archivo);
        if (sincronizar_ && archivo) intentar([&] { archivo->sincronizar(); });
    }
    intentar([&] { orden("K"); });
    if (fallo) std::rethrow_exception(fallo);
}

void Tablas::cerrarRanura(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    if (sincronizar_ && ranura.archivo) ranura.archivo->sincronizar();
    ranura.archivo.reset();
    ranura.conClaves = false;
    if (gMotor_) gMotor_->soltar(static_cast<unsigned>(tabla));
}

const DefinicionTabla& Tablas::definicion(int tabla) const {
    const auto& definicion = ranura(tabla).definicion;
    if (!definicion) throw std::out_of_range("la tabla " + std::to_string(tabla) + " no tiene definición");
    return *definicion;
}

int Tablas::gCampoDePosicion(int tabla, int posicion) const {
    const int campo = definicion(tabla).campoDePosicion(posicion);
    if (campo > 0) return campo;
    throw std::out_of_range("la tabla " + ranura(tabla).gNombreTabla + " no tiene la posición " +
                            std::to_string(posicion));
}

std::string Tablas::TituloTabla(int tabla) const {
    return NombrePropio(definicion(tabla).titulo);
}

std::int64_t Tablas::cuantosRegistros(int tabla) {
    const auto longitud = abiertaOError(tabla).archivo->longitud();
    return static_cast<std::int64_t>(longitud) / definicion(tabla).gLongitudRegistro;
}

std::string& Tablas::gCampos(int tabla, int campo) {
    return ranuraDe(tabla).gCampos.at(static_cast<std::size_t>(campo));
}

const std::string& Tablas::gCampos(int tabla, int campo) const {
    return ranura(tabla).gCampos.at(static_cast<std::size_t>(campo));
}

void Tablas::ponerCampo(int tabla, int campo, std::string_view bytes) {
    ajustarCampo(campoDe(tabla, campo), bytes, gCampos(tabla, campo));
}

void Tablas::blanquear(int tabla) {
    blanquearCampos(definicion(tabla), ranuraDe(tabla).gCampos);
}

std::string Tablas::texto(int tabla, int posicion) const {
    const std::string& campo = gCampos(tabla, gCampoDePosicion(tabla, posicion));
    return core::aUtf8(sinBlancosFinales(hastaCero(campo)));
}

void Tablas::ponerTexto(int tabla, int posicion, std::string_view utf8) {
    ponerCampo(tabla, gCampoDePosicion(tabla, posicion), core::aAnsi(utf8).bytes());
}

Ranura& Tablas::abiertaOError(int tabla) {
    Ranura& ranura = ranuraDe(tabla);
    if (ranura.archivo) return ranura;
    throw platform::ErrorArchivo(porCerrada, ranura.rutaDatos,
                                 "la tabla " + std::to_string(tabla) + " no está abierta");
}

void Tablas::caja(std::string texto, core::Icono icono) const {
    capa_.mostrar({std::move(texto), icono, "Veldorix"});
}

}  // namespace tarvoline::data
