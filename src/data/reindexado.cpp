#include "data/reindexado.h"

#include "data/clavado.h"
#include "motor/reconstruccion.h"

namespace tarvoline::data {

namespace {

using motor::ArchivoClaves;
using platform::ErrorArchivo;
using Fin = Reindexado::Fin;

void borrarSiEsta(platform::SistemaArchivos& archivos, const std::string& ruta) {
    if (platform::existe(archivos, ruta)) archivos.borrar(ruta);
}

// Null when somebody else has it.
std::unique_ptr<TablaSuelta> abrirSola(platform::SistemaArchivos& archivos, const std::string& ruta,
                                       const std::shared_ptr<const DefinicionTabla>& definicion) {
    try {
        return std::make_unique<TablaSuelta>(archivos, ruta, definicion, TablaSuelta::Acceso::sola);
    } catch (const ErrorArchivo& error) {
        if (error.numero() != platform::error_archivo::permisoDenegado) throw;
    }
    // No right to it, or held?
    archivos.abrir(ruta, platform::Apertura::escritura);
    return nullptr;
}

// A key file that is there and that somebody has open. Nobody can come by the table meanwhile, so asking
// beforehand spares the work; who swaps asks again.
bool enUso(platform::SistemaArchivos& archivos, const std::string& ruta) {
    try {
        archivos.abrir(ruta, platform::Apertura::escritura, platform::Comparticion::exclusiva);
        return false;
    } catch (const ErrorArchivo& error) {
        return error.numero() == platform::error_archivo::permisoDenegado;
    }
}

// Puts down what the old keys have wrong.
class Diagnostico {
  public:
    Diagnostico(Reindexado& informe, const AlDiscrepar& alDiscrepar)
        : informe_(informe), alDiscrepar_(alDiscrepar) {}

    void operator()(const Discrepancia& una) {
        ajeno_ = ajeno_ || una.que == Desacuerdo::clavesAjenas;
        if (una.que == Desacuerdo::registroSinEntrada && una.clave == 0)
            informe_.adoptados.push_back(una.registro);
        if (alDiscrepar_) alDiscrepar_(una);
    }
    bool ajeno() const { return ajeno_; }

  private:
    Reindexado& informe_;
    const AlDiscrepar& alDiscrepar_;
    bool ajeno_ = false;
};

// What the new file must not have: anything but a record cut off, which is no matter of keys.
void probar(platform::SistemaArchivos& archivos, TablaSuelta& tabla, const std::string& ruta,
            const Progreso& progreso) {
    std::string queja;
    const auto alDiscrepar = [&](const Discrepancia& una) {
        if (una.que != Desacuerdo::registroCortado && queja.empty()) queja = frase(una);
    };
    verificarTabla(archivos, tabla, ruta, alDiscrepar, progreso);
    if (!queja.empty()) throw motor::ErrorMotor(ruta + ": " + queja);
}

std::unique_ptr<ArchivoClaves> construir(platform::SistemaArchivos& archivos, TablaSuelta& tabla,
                                         const std::string& ruta, Reindexado& informe,
                                         const Progreso& progreso) {
    const DefinicionTabla& def = tabla.definicion();
    auto creado = ArchivoClaves::crear(archivos, ruta, static_cast<unsigned>(def.longitudMayor()),
                                       static_cast<unsigned>(def.numeroClaves));
    if (!creado.archivo) {
        throw motor::ErrorMotor(ruta + ": no se ha podido crear, estado " + std::to_string(creado.estado));
    }
    const auto leer = [&](std::uint64_t posicion, std::span<std::byte> destino) {
        return tabla.leer(posicion, destino);
    };
    informe.registros = clavarRegistros(def, tabla.lugares(), leer, *creado.archivo, progreso);
    probar(archivos, tabla, ruta, progreso);
    return std::move(creado.archivo);
}

}  // namespace

Reindexado reindexarTabla(platform::SistemaArchivos& archivos, const std::string& rutaDatos,
                          const std::shared_ptr<const DefinicionTabla>& definicion,
                          const AlDiscrepar& alDiscrepar, const Progreso& progreso) {
    Reindexado informe;
    const auto tabla = abrirSola(archivos, rutaDatos, definicion);
    const std::string ruta = rutaClavesDe(rutaDatos);
    if (!tabla || enUso(archivos, ruta)) {
        informe.fin = Fin::enUso;
        return informe;
    }
    if (definicion->numeroClaves == 0) {
        informe.fin = Fin::sinClaves;
        return informe;
    }
    Diagnostico diagnostico(informe, alDiscrepar);
    const auto vieja = verificarTabla(archivos, *tabla, ruta, std::ref(diagnostico), progreso);
    informe.clavesLeidas = vieja.clavesCotejadas;
    informe.discrepancias = vieja.discrepancias;
    if (diagnostico.ajeno()) {
        informe.fin = Fin::ajeno;
        return informe;
    }
    const std::string nueva = motor::rutaNueva(ruta);
    borrarSiEsta(archivos, nueva);
    try {
        const auto claves = construir(archivos, *tabla, nueva, informe, progreso);
        const bool habia = platform::existe(archivos, ruta);
        if (motor::cambiarPor(archivos, ruta, *claves) == motor::Cambio::ocupado) informe.fin = Fin::enUso;
        if (habia) informe.anterior = motor::rutaAnterior(ruta);
    } catch (...) {
        borrarSiEsta(archivos, nueva);
        throw;
    }
    if (informe.fin == Fin::enUso) borrarSiEsta(archivos, nueva);
    return informe;
}

}  // namespace tarvoline::data
