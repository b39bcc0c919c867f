// What outlives a power cut: a file whose last piece was answered, and whatever a history line speaks of.
#include <gtest/gtest.h>

#include "apoyo/archivos_memoria.h"
#include "server/almacen_archivos.h"
#include "server/servicio_prueba.h"

namespace tarvoline {
namespace {

constexpr std::size_t paso = pruebas::ClientePrueba::paso;
const server::Ubicacion lugar{1, "U0000001", "DATOS", "PERSONAL", "copia"};

class Durabilidad : public testing::Test {
  protected:
    Durabilidad() { abrir(); }
    void abrir() {
        almacen_ = std::make_unique<server::AlmacenArchivos>(archivos_, base_, registro_, "/datos");
    }
    void subir(const std::string& contenido) {
        for (std::size_t desde = 0; desde + 1 < contenido.size(); desde += paso) {
            const std::string pieza = contenido.substr(desde, paso + 1);
            ASSERT_EQ(almacen_->guardarPieza(lugar, std::as_bytes(std::span(pieza)),
                                             static_cast<std::int32_t>(desde + 1), {}),
                      "");
        }
    }
    std::string trasElCorte(std::uint64_t semilla) {
        almacen_.reset();
        archivos_.perderNoSincronizado(semilla);
        abrir();
        std::string todo;
        soap::Bytes bytes;
        do {
            almacen_->leerPieza(lugar, static_cast<std::int32_t>(todo.size() + 1), paso, bytes);
            todo.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        } while (!bytes.empty());
        return todo;
    }

    pruebas::CarpetaPrueba carpeta_;
    pruebas::ArchivosMemoria archivos_;
    server::BaseDatos base_{carpeta_.ruta("s.sqlite")};
    core::RegistroMudo registro_;
    std::unique_ptr<server::AlmacenArchivos> almacen_;
};

TEST_F(Durabilidad, AnAnsweredFileIsWhole) {
    for (std::uint64_t semilla = 1; semilla <= 8; ++semilla) {
        SCOPED_TRACE("seed " + std::to_string(semilla));
        std::string contenido = pruebas::relleno(3 * paso + 500, static_cast<unsigned>(semilla));
        subir(contenido);
        EXPECT_TRUE(trasElCorte(semilla) == contenido);
        // Only the history line tells that a file which ends on a full piece is whole.
        contenido.resize(2 * paso + 1);
        subir(contenido);
        almacen_->sincronizar(lugar.usuario);
        EXPECT_TRUE(trasElCorte(semilla) == contenido);
    }
}

}  // namespace
}  // namespace tarvoline
