// The program ends at any write of its work on records. What was answered stands; what was not has happened
// whole, not at all, or up to one of the few states between that docs/reliability.md names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "apoyo/archivos_defectuosos.h"
#include "data/apoyo_tablas.h"

namespace {

using namespace tarvoline;
using namespace tarvoline::pruebas;
using data::EstadoRegistro;
using data::Tablas;

constexpr int tabla = data::tabla::extra;

// What is found of a record: in how many of the three keys it stands, and under which text of the first one.
struct Hallado {
    EstadoRegistro registro = EstadoRegistro::sinEscribir;
    std::size_t claves = 0;
    std::string clave1;
    std::string asiento;
    auto operator<=>(const Hallado&) const = default;
};

constexpr const char* antesDeNada = "as before";
constexpr const char* entero = "whole";
constexpr const char* claveSinRegistro = "keys without record";
constexpr const char* registroSinClave = "record without keys";
constexpr const char* claveNueva = "new key over an old field";

// One table in memory, which outlives the programs that use it.
struct Escena : MundoTablas {
    ArchivosMemoria memoria;
    ArchivosDefectuosos defectuosos{memoria};
    data::CapaDatos suya{defectuosos, ajustes, carpetas, reloj};

    Escena() {
        memoria.sembrar(programa("EXTRA.QZA"), definicionLineas());
        memoria.sembrarDirectorio(datos());
        suya.enVigor = capa.enVigor;
        suya.gMultiusuario = true;
        suya.reintentosTablas = capa.reintentosTablas;
        suya.alAvisar = capa.alAvisar;
        vistas.escuchar(suya);
        Tablas t(suya);
        EXPECT_TRUE(abrir(t, tabla, "EXTRA"));
        for (const char* asiento : {"000001", "000002", "000003"}) {
            ponerLinea(t, tabla, "260309", "6400000", asiento, "SUELDOS");
            t.AnadirRegistro(tabla);
        }
        t.CerrarTodo();
    }

    // Runs `paso` in a program that ends at its k-th write; whether it ended.
    bool morirEn(int k, bool aMedias, const std::function<void(Tablas&)>& paso) {
        Tablas t(suya);
        EXPECT_TRUE(abrir(t, tabla, "EXTRA"));
        int escrituras = 0;
        if (aMedias) defectuosos.cortarEscritura(k, static_cast<std::size_t>(k) * 13 % 50);
        defectuosos.alEmpezar([&](Operacion operacion, const std::string&) {
            if (escrituras >= k) throw CorteDeCorriente();
            if (operacion == Operacion::escribir) ++escrituras;
        });
        bool muerto = false;
        try {
            paso(t);
        } catch (const std::exception&) {
            muerto = true;
        }
        if (t.gEstado != 0) muerto = true;  // a refused write told as a status
        defectuosos.alEmpezar({});
        defectuosos.sanar();
        return muerto || escrituras >= k;
    }

    Hallado mirar(Tablas& t, std::int32_t registro) {
        Hallado hallado;
        hallado.registro = t.LeerRegistro(tabla, registro);
        hallado.asiento = t.gCampos(tabla, linea::asiento);
        for (int clave = 1; clave <= 3; ++clave) {
            for (const auto r : recorrido(t, tabla, clave))
                hallado.claves += r == registro ? 1U : 0U;
        }
        for (const char* texto :
             {"260309000001", "260309000002", "260309000003", "260309000004", "260309000077"}) {
            if (t.orden("S\\1\\2\\" + std::string(texto)) == 0 && t.gRegistro == registro)
                hallado.clave1 = texto;
        }
        return hallado;
    }

    // The keys made anew agree with the records, whatever the death left.
    void exigirRemedio(Tablas& t) {
        t.CerrarTodo();
        memoria.borrar(datos("EXTRA07.QZC"));
        EXPECT_TRUE(abrir(t, tabla, "EXTRA"));
        for (std::int32_t r = 1; r <= t.cuantosRegistros(tabla); ++r) {
            const Hallado hallado = mirar(t, r);
            const bool vivo = hallado.registro == EstadoRegistro::vivo;
            EXPECT_EQ(hallado.claves, vivo ? 3U : 0U) << r;
            EXPECT_TRUE(!vivo || t.orden("S\\1\\2" + t.textoClave(tabla, 1)) == 0) << r;
        }
    }
};

using Jueces = std::map<Hallado, const char*>;

// Every kill point of `paso`, which concerns `registro`; gives how often each end was met.
std::map<std::string, int> matar(std::int32_t registro, const std::function<void(Tablas&)>& paso,
                                 const Jueces& finales) {
    std::map<std::string, int> cuentas;
    for (const bool aMedias : {false, true}) {
        for (int k = 1;; ++k) {
            SCOPED_TRACE((aMedias ? "within write " : "after write ") + std::to_string(k));
            Escena escena;
            const bool muerto = escena.morirEn(k, aMedias, paso);
            Tablas t(escena.suya);
            escena.vistas.cajas.clear();
            EXPECT_TRUE(escena.abrir(t, tabla, "EXTRA"));
            const Hallado hallado = escena.mirar(t, registro);
            const auto fin = finales.find(hallado);
            if (fin == finales.end()) {
                ADD_FAILURE() << static_cast<int>(hallado.registro) << ", " << hallado.claves << " keys, "
                              << hallado.clave1 << ", " << hallado.asiento;
                return cuentas;
            }
            if (!muerto) {
                EXPECT_STREQ(fin->second, entero);
                break;
            }
            ++cuentas[fin->second];
            // The others stand, and the work goes on behind all numbers given.
            EXPECT_EQ(escena.mirar(t, 1), (Hallado{EstadoRegistro::vivo, 3, "260309000001", "000001"}));
            EXPECT_EQ(escena.mirar(t, 3), (Hallado{EstadoRegistro::vivo, 3, "260309000003", "000003"}));
            ponerLinea(t, tabla, "260310", "570", "000099", "LATER");
            t.AnadirRegistro(tabla);
            EXPECT_EQ(t.gEstado, 0);
            EXPECT_GE(t.gRegistro, 4);
            EXPECT_EQ(t.LeerRegistro(tabla, t.gRegistro), EstadoRegistro::vivo);
            EXPECT_TRUE(escena.vistas.cajas.empty()) << escena.vistas.textos();
            escena.exigirRemedio(t);
            if (testing::Test::HasFailure()) return cuentas;
        }
    }
    return cuentas;
}

const std::string ceros(6, '\0');
const std::string blancos(6, ' ');

TEST(MuerteDeTablas, AlAnadir) {
    const auto cuentas = matar(
        4,
        [](Tablas& t) {
            ponerLinea(t, tabla, "260309", "570", "000004", "NUEVO", "5");
            t.AnadirRegistro(tabla);
        },
        {{{EstadoRegistro::sinEscribir, 0, "", ceros}, antesDeNada},
         {{EstadoRegistro::sinEscribir, 3, "260309000004", ceros}, claveSinRegistro},
         // Cut off within the write: as good as not written.
         {{EstadoRegistro::sinEscribir, 3, "260309000004", "000004"}, claveSinRegistro},
         {{EstadoRegistro::sinEscribir, 3, "260309000004", "00" + std::string(4, '\0')}, claveSinRegistro},
         {{EstadoRegistro::vivo, 3, "260309000004", "000004"}, entero}});
    EXPECT_GE(cuentas.at(antesDeNada), 1);
    EXPECT_GE(cuentas.at(claveSinRegistro), 1);
    EXPECT_GE(cuentas.at(entero), 1);
}

TEST(MuerteDeTablas, AlBorrar) {
    const auto cuentas = matar(2, [](Tablas& t) { t.BorrarRegistro(tabla, 2); },
                               {{{EstadoRegistro::vivo, 3, "260309000002", "000002"}, antesDeNada},
                                {{EstadoRegistro::vivo, 0, "", "000002"}, registroSinClave},
                                // The mark and the first blanks have been written, the rest is still there.
                                {{EstadoRegistro::vivo, 0, "", blancos}, registroSinClave},
                                {{EstadoRegistro::anulado, 0, "", blancos}, entero}});
    EXPECT_GE(cuentas.at(antesDeNada), 1);
    EXPECT_GE(cuentas.at(registroSinClave), 1);
    EXPECT_GE(cuentas.at(entero), 1);
}

TEST(MuerteDeTablas, AlCambiarUnCampoDeClave) {
    const auto cuentas = matar(2, [](Tablas& t) { t.GrabarCampoClave(tabla, 2, linea::asiento, "000077"); },
                               {{{EstadoRegistro::vivo, 3, "260309000002", "000002"}, antesDeNada},
                                {{EstadoRegistro::vivo, 3, "260309000077", "000002"}, claveNueva},
                                {{EstadoRegistro::vivo, 3, "260309000077", "000077"}, entero}});
    EXPECT_GE(cuentas.at(antesDeNada), 1);
    EXPECT_GE(cuentas.at(claveNueva), 1);
    EXPECT_GE(cuentas.at(entero), 1);
}

}  // namespace
