// Bad days of one process: death at every write, power failures that lose any part of what was not
// synchronised, devices and disks that refuse.
#include "apoyo/archivos_defectuosos.h"
#include "motor/diferencial.h"

namespace tarvoline::pruebas {
namespace {

using motor::MotorIndexados;

constexpr const char* ruta = "/datos/EXTRA07.QZC";
constexpr const char* abrir = "/O//datos/EXTRA07.QZC/2";

// A table with some history, in its file and in the model.
struct Historia {
    static constexpr std::uint64_t semilla = 20241231;

    Historia() {
        memoria.sembrarDirectorio("/datos");
        MotorIndexados motor(memoria, true);
        EXPECT_EQ(mandar(motor, "/C//datos/EXTRA07.QZC/ 40/ 3/A/ 2").estado, 0);
        Trabajo trabajo(semilla, modelo, {2}, 4);
        for (int i = 0; i < 1200; ++i) {
            const auto paso = trabajo.siguiente(7);
            EXPECT_EQ(mandar(motor, paso.comando), paso.debido);
        }
        mandar(motor, "K");
        bytes = platform::leerTodo(memoria, ruta);
    }

    ArchivosMemoria memoria;
    ModeloTabla modelo{40, 3};
    std::string bytes;
};

const Historia& historia() {
    static const Historia una;
    return una;
}

bool coincide(MotorIndexados& motor, const ModeloTabla& modelo) {
    std::vector<std::vector<ModeloTabla::Par>> leidas(modelo.cuantas());
    const auto revision =
        motor::revisar(motor.archivo(2), [&](unsigned clave, std::string_view texto, std::uint32_t registro) {
            leidas[clave - 1].push_back({modelo.rellenar(std::string(texto)), registro});
        });
    if (!revision.fallo.empty()) ADD_FAILURE() << revision.fallo;
    for (unsigned clave = 1; clave <= modelo.cuantas(); ++clave) {
        const auto& debidas = modelo.clave(clave);
        if (leidas[clave - 1] != std::vector<ModeloTabla::Par>(debidas.begin(), debidas.end())) return false;
    }
    return motor.ultimoRegistro(2) == modelo.contador;
}

// Works until something is thrown; false when nothing was. The models are those before and after the command
// that was not answered.
bool hastaLaMuerte(platform::SistemaArchivos& archivos, int ordenes, ModeloTabla& antes,
                   ModeloTabla& despues) {
    MotorIndexados motor(archivos);
    EXPECT_EQ(mandar(motor, abrir).estado, 0);
    Trabajo trabajo(Historia::semilla + 1, despues, {2}, 4);
    for (int i = 0; i < ordenes; ++i) {
        antes = despues;
        const auto paso = trabajo.siguiente(5);
        try {
            if (mandar(motor, paso.comando).estado == 29) return true;
        } catch (const std::exception&) {
            return true;
        }
    }
    return false;
}

void exigirEntero(platform::SistemaArchivos& archivos, const ModeloTabla& antes, const ModeloTabla& despues) {
    MotorIndexados motor(archivos);
    ASSERT_EQ(mandar(motor, abrir).estado, 0);
    EXPECT_TRUE(coincide(motor, antes) || coincide(motor, despues));
    // And it goes on working.
    EXPECT_EQ(mandar(motor, "I\\2\\x\\y\\z").estado, 0);
    EXPECT_EQ(motor::revisar(motor.archivo(2)).fallo, "");
}

// The process dies right after its k-th write, for every k; and in the middle of it.
TEST(Muerte, trasCadaEscritura) {
    constexpr int ordenes = 60;
    for (const bool enMedio : {false, true}) {
        int k = 1;
        for (bool muerto = true; muerto; ++k) {
            SCOPED_TRACE((enMedio ? "within write " : "after write ") + std::to_string(k));
            ArchivosMemoria memoria;
            memoria.sembrar(ruta, historia().bytes);
            ArchivosDefectuosos archivos(memoria);
            if (enMedio) {
                archivos.cortarEscritura(k, static_cast<std::size_t>(k) * 379 % 2500);
            } else {
                archivos.cortarCorriente(k);
            }
            ModeloTabla antes = historia().modelo;
            ModeloTabla despues = antes;
            muerto = hastaLaMuerte(archivos, ordenes, antes, despues);
            ASSERT_NO_FATAL_FAILURE(exigirEntero(memoria, antes, despues));
        }
        EXPECT_GT(k, ordenes);  // a writing command writes twice at least
    }
}

// Walks every key; what is answered is what the model has, until damage is met or the end. True when damaged.
bool recorrerContra(MotorIndexados& motor, const ModeloTabla& modelo) {
    for (unsigned clave = 1; clave <= modelo.cuantas(); ++clave) {
        std::string orden = "F\\" + std::to_string(clave) + "\\2";
        try {
            for (const auto& debida : modelo.clave(clave)) {
                const Contestado dado = mandar(motor, orden);
                EXPECT_EQ(dado, (Contestado{0, static_cast<std::int32_t>(debida.second)}));
                orden = "N\\2";
            }
            EXPECT_EQ(mandar(motor, orden).estado, 9);
        } catch (const motor::ErrorMotor&) {
            return true;
        }
    }
    return false;
}

// What no walk of the keys comes by may be lost, too: the free pages.
bool revisionVeDanno(motor::ArchivoClaves& archivo) {
    try {
        EXPECT_EQ(motor::revisar(archivo).fallo, "");
        return false;
    } catch (const motor::ErrorMotor&) {
        return true;
    }
}

// Any part of what was written since the last synchronisation is lost. The file is then sound, as of some
// commit, or damage is found out: no answer is ever wrong, and the next opening knows.
TEST(Muerte, corteDeCorriente) {
    const std::uint64_t semilla = semillaNueva();
    std::map<int, int> finales;
    for (std::uint64_t vuelta = 0; vuelta < 300; ++vuelta) {
        SCOPED_TRACE("seed " + std::to_string(semilla) + ", round " + std::to_string(vuelta));
        ArchivosMemoria memoria;
        memoria.sembrar(ruta, historia().bytes);
        std::map<std::uint64_t, ModeloTabla> estados;
        ModeloTabla modelo = historia().modelo;
        {
            MotorIndexados motor(memoria);
            ASSERT_EQ(mandar(motor, abrir).estado, 0);
            Trabajo trabajo(semilla + vuelta, modelo, {2}, 4);
            const auto apuntar = [&] {
                estados.insert_or_assign(motor::numeroDe(motor.archivo(2).cabecera().sello), modelo);
            };
            apuntar();
            for (std::uint64_t i = 0; i < 1 + vuelta % 40; ++i) {
                mandar(motor, trabajo.siguiente(5).comando);
                apuntar();
            }
        }
        memoria.perderNoSincronizado(semilla + vuelta);
        MotorIndexados motor(memoria);
        const int estado = mandar(motor, abrir).estado;
        bool dannado = estado == 1;
        if (!dannado) {
            ASSERT_EQ(estado, 0);
            const auto numero = motor::numeroDe(motor.archivo(2).cabecera().sello);
            ASSERT_TRUE(estados.contains(numero));
            dannado = recorrerContra(motor, estados.at(numero)) || revisionVeDanno(motor.archivo(2));
        }
        ++finales[dannado ? 1 : 0];
        if (!dannado) continue;
        // The next opening knows, and the file can be made anew.
        mandar(motor, "K");
        ASSERT_EQ(mandar(motor, abrir).estado, 1);
        ASSERT_EQ(mandar(motor, "/C//datos/EXTRA07.QZC/ 40/ 3/A/ 2").estado, 0);
        ASSERT_EQ(mandar(motor, "I\\2\\x\\y\\z"), (Contestado{0, 1}));
    }
    // Both ends have been met, else this proves nothing.
    EXPECT_GT(finales[0], 10);
    EXPECT_GT(finales[1], 10);
}

TEST(Muerte, trasSincronizarNadaSePierde) {
    ArchivosMemoria memoria;
    memoria.sembrarDirectorio("/datos");
    ModeloTabla modelo(40, 3);
    MotorIndexados motor(memoria, true);
    ASSERT_EQ(mandar(motor, "/C//datos/EXTRA07.QZC/ 40/ 3/A/ 2").estado, 0);
    memoria.sincronizarDirectorio("/datos");
    Trabajo trabajo(7, modelo, {2}, 4);
    for (int i = 0; i < 200; ++i)
        mandar(motor, trabajo.siguiente(7).comando);
    mandar(motor, "K");
    memoria.perderNoSincronizado(3);
    ASSERT_EQ(mandar(motor, abrir).estado, 0);
    exigirIgual(motor, 2, modelo);
}

// A command that cannot be written leaves everything as it was; after the head's own failure nothing is
// written until the file is opened again.
TEST(Muerte, escrituraRehusada) {
    ArchivosMemoria memoria;
    memoria.sembrar(ruta, historia().bytes);
    ArchivosDefectuosos archivos(memoria);
    MotorIndexados motor(archivos);
    ASSERT_EQ(mandar(motor, abrir).estado, 0);

    archivos.fallar(
        {.operacion = Operacion::escribir, .vez = 1, .numero = platform::error_archivo::discoLleno});
    EXPECT_EQ(mandar(motor, "I\\2\\x\\y\\z").estado, 29);
    EXPECT_TRUE(coincide(motor, historia().modelo));
    ASSERT_EQ(mandar(motor, "I\\2\\x\\y\\z").estado, 0);
    const std::string borrado = "D\\" + std::to_string(motor.ultimoRegistro(2)) + "\\Y\\2\\x\\y\\z";
    archivos.fallar({.operacion = Operacion::escribir, .vez = 1});
    EXPECT_THROW(mandar(motor, borrado), motor::ErrorMotor);

    archivos.olvidarCuentas();
    EXPECT_EQ(mandar(motor, "I\\2\\a\\b\\c").estado, 0);
    const int escrituras = archivos.cuenta(Operacion::escribir);  // the last one is the head's
    archivos.fallar({.operacion = Operacion::escribir, .vez = escrituras});
    int estado = mandar(motor, "I\\2\\a\\b\\d").estado;
    for (int i = 0; estado == 0 && i < 5; ++i) {
        archivos.sanar();
        archivos.fallar({.operacion = Operacion::escribir, .vez = escrituras});
        estado = mandar(motor, "I\\2\\a\\b\\d").estado;
    }
    archivos.sanar();
    ASSERT_EQ(estado, 29);
    EXPECT_EQ(mandar(motor, "S\\1\\2\\a").estado, 0);
}

}  // namespace
}  // namespace tarvoline::pruebas
