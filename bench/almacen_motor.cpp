// The index engine, driven by its commands.
#include <filesystem>
#include <stdexcept>

#include "almacenes.h"
#include "motor/motor_indexados.h"

namespace tarvoline::bench {

namespace {

class PorMotor final : public Almacen {
  public:
    PorMotor(const std::string& carpeta, bool nuevo) : ruta_(carpeta + "/EXTRA07.QZC") {
        mandar((nuevo ? "/C/" + ruta_ + "/ 30/ 4/A/ 2" : "/O/" + ruta_ + "/ 2"));
    }

    void insertar(const Textos& textos) override {
        comando_ = "I\\ 2";
        for (const std::string& texto : textos)
            comando_.append(1, '\\').append(texto);
        mandar();
    }
    void borrar(std::uint32_t registro, const Textos& textos) override {
        comando_ = "D\\ " + std::to_string(registro) + "\\Y\\ 2";
        for (const std::string& texto : textos)
            comando_.append(1, '\\').append(texto);
        mandar();
    }
    bool buscar(unsigned clave, const std::string& texto) override {
        comando_ = "S\\0\\2\\";
        comando_[2] = static_cast<char>('1' + clave);
        comando_ += texto;
        motor_.Ejecutar(comando_, registro_, estado_);
        return estado_ == 0;
    }
    std::size_t recorrer(unsigned clave) override {
        mandar("F\\" + std::to_string(clave + 1) + "\\2");
        comando_ = "N\\2";
        std::size_t n = 0;
        for (; estado_ == 0; ++n)
            motor_.Ejecutar(comando_, registro_, estado_);
        return n;
    }
    double megas() override { return static_cast<double>(std::filesystem::file_size(ruta_)) / 1e6; }

  private:
    void mandar(const std::string& comando) {
        comando_ = comando;
        mandar();
    }
    void mandar() {
        motor_.Ejecutar(comando_, registro_, estado_);
        if (estado_ != 0) throw std::runtime_error(comando_ + ": status " + std::to_string(estado_));
    }

    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    motor::MotorIndexados motor_{*archivos_};
    std::string ruta_;
    std::string comando_;
    std::int32_t registro_ = 0;
    std::int16_t estado_ = 0;
};

class NueveMotor final : public Nueve {
  public:
    explicit NueveMotor(std::string carpeta) : carpeta_(std::move(carpeta)) {}
    void crear() override {
        for (int i = 1; i <= 9; ++i)
            mandar("/C/" + ruta(i) + "/ 30/ 4/A/ " + std::to_string(i));
        mandar("K");
    }
    void abrirYCerrar() override {
        for (int i = 1; i <= 9; ++i)
            mandar("/O/" + ruta(i) + "/ " + std::to_string(i));
        mandar("K");
    }

  private:
    std::string ruta(int i) const { return carpeta_ + "/TABLA0" + std::to_string(i) + ".QZC"; }
    void mandar(std::string comando) {
        motor_.Ejecutar(comando, registro_, estado_);
        if (estado_ != 0) throw std::runtime_error(comando);
    }

    std::unique_ptr<platform::SistemaArchivos> archivos_ = platform::crearSistemaArchivos();
    motor::MotorIndexados motor_{*archivos_};
    std::string carpeta_;
    std::int32_t registro_ = 0;
    std::int16_t estado_ = 0;
};

}  // namespace

Rival rivalMotor() {
    return {"engine",
            [](const std::string& carpeta, bool nuevo) -> std::unique_ptr<Almacen> {
                return std::make_unique<PorMotor>(carpeta, nuevo);
            },
            [](const std::string& carpeta) -> std::unique_ptr<Nueve> {
                return std::make_unique<NueveMotor>(carpeta);
            }};
}

}  // namespace tarvoline::bench
