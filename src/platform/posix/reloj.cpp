#include "platform/reloj.h"

#include <climits>
#include <clocale>
#include <ctime>

namespace tarvoline::platform {

namespace {

class RelojSistema final : public Reloj {
  public:
    FechaHora local() const override { return aLocal(ahora()); }
    std::chrono::system_clock::time_point ahora() const override { return std::chrono::system_clock::now(); }
};

}  // namespace

std::unique_ptr<Reloj> crearReloj() {
    return std::make_unique<RelojSistema>();
}

FechaHora aLocal(std::chrono::system_clock::time_point instante) {
    const std::time_t segundos =
        std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(instante));
    std::tm partes{};
    ::localtime_r(&segundos, &partes);
    return {partes.tm_year + 1900, partes.tm_mon + 1, partes.tm_mday,
            partes.tm_hour,        partes.tm_min,     partes.tm_sec};
}

std::optional<int> digitosMonedaLocal() {
    // The user's locale for this one question, whatever locale the program itself runs in.
    const locale_t usuario = ::newlocale(LC_MONETARY_MASK, "", locale_t{});
    if (usuario == locale_t{}) return std::nullopt;
    const locale_t anterior = ::uselocale(usuario);
    const char digitos = ::localeconv()->frac_digits;
    ::uselocale(anterior);
    ::freelocale(usuario);
    return digitos == CHAR_MAX ? std::nullopt : std::optional<int>(digitos);
}

}  // namespace tarvoline::platform
