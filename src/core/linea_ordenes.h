#pragma once
// What CLI11 says around a program's own options, in the language of the options.

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvoline::core {

// What is wrong with a command line. A kind of error that the programs do not use keeps the library's words.
inline std::string motivoDeLinea(const CLI::Error& error) {
    const std::string suyo = error.what();
    const auto antesDe = [&](std::string_view corte) { return suyo.substr(0, suyo.find(corte)); };
    const auto detrasDe = [&](std::string_view corte) {
        return suyo.substr(suyo.find(corte) + corte.size());
    };
    const auto lleva = [&](std::string_view parte) { return suyo.find(parte) != std::string::npos; };
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
        case CLI::ExitCodes::RequiredError:
            if (lleva("subcommand")) return "falta la orden";
            if (lleva("option from ["))
                return "hace falta una sola de " + antesDe("]").substr(suyo.find('[')) + "]";
            if (lleva(" is required")) return "falta " + antesDe(" is required");
            break;
        case CLI::ExitCodes::ExtrasError:
            if (lleva(": ")) return "sobra " + detrasDe(": ");
            break;
        case CLI::ExitCodes::ConversionError:
            if (lleva(": ")) return "no se entiende " + detrasDe(": ");
            break;
        case CLI::ExitCodes::ArgumentMismatch:
            if (lleva(": ")) return antesDe(": ") + ": no lleva esa cantidad de valores";
            break;
        case CLI::ExitCodes::ValidationError:
            if (lleva("does not exist: ")) return antesDe(": ") + ": no existe " + detrasDe("exist: ");
            if (lleva(": ")) return antesDe(": ") + ": no se admite ese valor";
            break;
        case CLI::ExitCodes::ExcludesError:
            if (lleva(" excludes ")) return antesDe(" excludes ") + " no va con " + detrasDe(" excludes ");
            break;
        case CLI::ExitCodes::RequiresError:
            if (lleva(" requires ")) return antesDe(" requires ") + " pide " + detrasDe(" requires ");
            break;
        default:
            break;
    }
    return suyo;
}

// Gives the groups of options their label too.
class FormatoAyuda : public CLI::Formatter {
  public:
    std::string make_group(std::string grupo, bool posicionales,
                           std::vector<const CLI::Option*> opciones) const override {
        return CLI::Formatter::make_group(get_label(grupo), posicionales, std::move(opciones));
    }
};

// Options and commands inherit it, so it comes before any of them is added.
inline void hablarEspanol(CLI::App& programa) {
    const auto formato = std::make_shared<FormatoAyuda>();
    formato->label("Usage", "Uso");
    formato->label("OPTIONS", "OPCIONES");
    formato->label("Options", "Opciones");
    formato->label("SUBCOMMAND", "ORDEN");
    formato->label("Positionals", "Argumentos");
    formato->label("REQUIRED", "(obligatorio)");
    formato->label("Needs", "Con");
    formato->label("Excludes", "Sin");
    formato->label("TEXT", "TEXTO");
    formato->label("INT", "ENTERO");
    formato->label("UINT", "ENTERO");
    programa.formatter(formato);
    programa.group("Órdenes");
    programa.set_help_flag("-h,--help", "Muestra esta ayuda y termina");
    programa.failure_message([](const CLI::App* app, const CLI::Error& error) {
        return app->get_name() + ": " + motivoDeLinea(error) + "\nCon --help, la ayuda.\n";
    });
}

}  // namespace tarvoline::core
