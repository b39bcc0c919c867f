// enlace-diferencia: runs one script of calls to `Enlace` on two companies, one on files and a copy of it
// behind the accounting service (or on files, too), and prints where they differ, by entry, line and field.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "core/carpetas.h"
#include "core/linea_ordenes.h"
#include "data/capa_datos.h"
#include "tarvoline/enlace.h"
#include "tools/diferencia_caminos.h"
#include "tools/diferencia_guion.h"
#include "tools/taller_enlace.h"

namespace {

using namespace tarvoline;

struct Encargo {
    std::string guion, local, otra;
    std::string servicio, usuario, clave, carpeta, empresa;
    std::string caminos;
    bool cotejar = false;
};

// A road to a company.
struct Camino {
    explicit Camino(const std::string& carpeta) : taller(carpeta), enlace(taller.contexto()) {}
    tools::TallerEnlace taller;
    link::Enlace enlace;
};

std::string leerArchivo(const std::string& ruta) {
    return platform::leerTodo(*platform::crearSistemaArchivos(), ruta);
}

std::string rutaCaminos(const Encargo& encargo) {
    if (!encargo.caminos.empty()) return encargo.caminos;
    tools::TallerEnlace taller("");
    return taller.contexto().datos().carpetas.DirectorioPrograma() + "remote-link.md";
}

// What a reading call stands on: the entry of the session.
std::string asientoDe(const link::Enlace& enlace) {
    return enlace.Fecha() + " " + enlace.Número();
}

class Cotejo {
  public:
    Cotejo(link::Enlace& una, link::Enlace& otra, std::vector<tools::Excepcion> excepciones)
        : una_(una), otra_(otra), excepciones_(std::move(excepciones)) {}

    // Returns whether the call gave an entry, or more than the outcome of the call, in the first company.
    bool llamar(const tools::Llamada& llamada) {
        const tools::Vista suya = tools::llamar(una_, llamada);
        const tools::Vista ajena = tools::llamar(otra_, llamada);
        for (const auto& una : tools::comparar(suya, ajena)) {
            if (tools::exceptuado(excepciones_, llamada.miembro, una.una.coleccion, una.una.campo)) continue;
            decir(llamada, una);
        }
        return std::ranges::any_of(suya, [](const tools::Dato& dato) { return dato.lugar > 0; });
    }
    int diferencias() const { return diferencias_; }

  private:
    void decir(const tools::Llamada& llamada, const tools::Diferencia& una) {
        if (llamada.linea > 0) std::cout << llamada.linea << ": ";
        std::cout << llamada.miembro << ", " << asientoDe(una_) << ", " << una.una.coleccion;
        if (una.una.lugar > 0) std::cout << ' ' << una.una.lugar;
        if (!una.una.campo.empty()) std::cout << ", " << una.una.campo;
        std::cout << ": " << una.una.valor << " | " << una.otra << '\n';
        ++diferencias_;
    }

    link::Enlace& una_;
    link::Enlace& otra_;
    std::vector<tools::Excepcion> excepciones_;
    int diferencias_ = 0;
};

// The whole of the books: every entry, the charts with their columns, the master data, the portfolio.
void cotejarLibros(Cotejo& cotejo) {
    bool hay = cotejo.llamar({0, "LeerPrimerAsiento", {}});
    while (hay)
        hay = cotejo.llamar({0, "LeerProximoAsiento", {}});
    for (const char* plan : {"1", "8", "9"})
        cotejo.llamar({0, "LeerPlanEx", {plan, "*"}});
    cotejo.llamar({0, "LeerDatos", {"*"}});
    cotejo.llamar({0, "LeerCartera", {}});
}

void abrir(Camino& primero, Camino& segundo, const Encargo& encargo) {
    primero.enlace.AbrirEmpresa(core::rutaCompleta(encargo.local));
    if (encargo.servicio.empty()) {
        segundo.enlace.AbrirEmpresa(core::rutaCompleta(encargo.otra));
        return;
    }
    segundo.enlace.Login(encargo.usuario, encargo.clave, encargo.servicio);
    if (!segundo.enlace.ModoRemoto()) throw std::runtime_error("el servicio no ha dejado entrar al usuario");
    if (!encargo.carpeta.empty()) segundo.enlace.Carpeta(encargo.carpeta);
    segundo.enlace.AbrirEmpresa(encargo.empresa);
}

// 0: no difference; 1: some.
int ejecutar(const Encargo& encargo) {
    const auto guion = encargo.guion.empty() ? std::vector<tools::Llamada>()
                                             : tools::interpretarGuion(leerArchivo(encargo.guion));
    auto excepciones = encargo.servicio.empty() ? std::vector<tools::Excepcion>()
                                                : tools::leerCaminos(leerArchivo(rutaCaminos(encargo)));
    const std::string carpeta = core::SepararRuta(core::rutaCompleta(encargo.local)).directorio;
    Camino primero(carpeta), segundo(carpeta);
    abrir(primero, segundo, encargo);
    Cotejo cotejo(primero.enlace, segundo.enlace, std::move(excepciones));
    for (const auto& llamada : guion)
        cotejo.llamar(llamada);
    if (encargo.cotejar || guion.empty()) cotejarLibros(cotejo);
    return cotejo.diferencias() == 0 ? 0 : 1;
}

void declararOpciones(CLI::App& programa, Encargo& encargo) {
    programa.add_option("GUION", encargo.guion, "Llamadas, una por línea, con tabuladores entre argumentos");
    programa.add_option("--local", encargo.local, "Archivo de la empresa (.QZT)")->required();
    auto* otra =
        programa.add_option("--otra", encargo.otra, "Archivo de la otra empresa, en lugar del servicio");
    auto* servicio = programa.add_option("--servicio", encargo.servicio, "Dirección del servicio contable");
    otra->excludes(servicio);
    programa.add_option("--usuario", encargo.usuario, "Usuario del servicio")->needs(servicio);
    programa.add_option("--clave", encargo.clave, "Su clave")->needs(servicio);
    programa.add_option("--carpeta", encargo.carpeta, "Carpeta en el servicio")->needs(servicio);
    programa.add_option("--empresa", encargo.empresa, "Nombre de la empresa en el servicio")->needs(servicio);
    programa.add_option("--caminos", encargo.caminos, "Tabla de lo que un camino no lleva");
    programa.add_flag("--cotejar", encargo.cotejar,
                      "Después del guion, todos los libros (sin guion, siempre)");
}

constexpr int fallo = 2;

int correr(int argc, char** argv) {
    CLI::App programa("Compara dos caminos a una empresa, llamada por llamada; 0: sin diferencias",
                      "enlace-diferencia");
    core::hablarEspanol(programa);
    Encargo encargo;
    declararOpciones(programa, encargo);
    try {
        programa.parse(argc, argv);
        if (encargo.otra.empty() && encargo.servicio.empty()) throw CLI::RequiredError("--otra o --servicio");
    } catch (const CLI::ParseError& error) {
        return programa.exit(error) == 0 ? 0 : fallo;
    }
    return ejecutar(encargo);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return correr(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "enlace-diferencia: " << error.what() << '\n';
        return fallo;
    }
}
