// A clock that stands still until told otherwise, also by another thread. Its zone is UTC.
#pragma once

#include <atomic>
#include <chrono>

#include "platform/reloj.h"

namespace tarvoline::pruebas {

class RelojFijo final : public platform::Reloj {
  public:
    RelojFijo() : RelojFijo({2024, 5, 31, 18, 30, 15}) {}
    explicit RelojFijo(const platform::FechaHora& hora) { poner(hora); }

    void poner(const platform::FechaHora& hora) {
        using namespace std::chrono;
        const sys_days dia =
            year(hora.anio) / month(static_cast<unsigned>(hora.mes)) / day(static_cast<unsigned>(hora.dia));
        ahora_ = dia + hours(hora.hora) + minutes(hora.minuto) + seconds(hora.segundo);
    }
    void avanzar(std::chrono::seconds cuanto) { ahora_ = ahora_.load() + cuanto; }

    platform::FechaHora local() const override {
        using namespace std::chrono;
        const auto ahora = ahora_.load();
        const auto dia = floor<days>(ahora);
        const year_month_day fecha(dia);
        const hh_mm_ss hora(ahora - dia);
        return {int(fecha.year()),
                static_cast<int>(unsigned(fecha.month())),
                static_cast<int>(unsigned(fecha.day())),
                static_cast<int>(hora.hours().count()),
                static_cast<int>(hora.minutes().count()),
                static_cast<int>(hora.seconds().count())};
    }
    std::chrono::system_clock::time_point ahora() const override { return ahora_.load(); }

  private:
    std::atomic<std::chrono::sys_seconds> ahora_;
};

}  // namespace tarvoline::pruebas
