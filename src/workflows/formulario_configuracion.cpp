#include "workflows/formulario_configuracion.h"

#include <algorithm>

#include "core/texto.h"
#include "workflows/configuracion_empresa.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoSiempre = 1347;
constexpr int textoQuitar = 1365;
constexpr int textoDeLaLista = 1366;
constexpr int textoElegirCarpeta = 1367;

constexpr int pasoMinutos = 10;
constexpr int minutosMayor = 600;
constexpr int adjuntoMayor = 100;
constexpr int botonNueva = 0;
constexpr int botonBorrar = 78;
constexpr std::string_view seccion = "BACKUP";

std::string claveAdjunto(std::size_t indice) {
    return "ADJUNTARCARPETAS" + std::to_string(indice);
}

}  // namespace

FormularioConfiguracion::~FormularioConfiguracion() {
    if (Enlace_) {
        core::ignorandoErrores(entorno_, "configured company", [this] { Enlace_->CerrarEmpresa(); });
    }
}

const std::vector<std::string>& FormularioConfiguracion::unidades() {
    static const std::vector<std::string> nombres = {"Bytes (B)", "KiloBytes (KB)", "Megas (MB)",
                                                     "Gigas (GB)", "Teras (TB)"};
    return nombres;
}

void FormularioConfiguracion::DatosIniciales() {
    Enlace_ = std::make_unique<link::Enlace>(flujos_.enlaces());
    flujos_.configuracion().AbrirEmpresaActiva(*Enlace_);
    auto& enlace = *Enlace_;
    lbemrpesa = core::SoloNombre(enlace.Empresa());
    TarvolineUser = enlace.Config("TVUSER");
    TarvolinePassword = enlace.Config("TVPASSWORD");
    TarvolineCarpeta = enlace.Config("TVCARPETA");
    TarvolineActivar = core::ValEntero(enlace.Config("borrador")) == 1;
    INCLUYEIMAGENES = core::ValEntero(entorno_.almacen.Leer("IncluirImagenesTarvoline", seccion, "0")) != 0;
    datosen = std::clamp(core::ValEntero(entorno_.almacen.Leer("Visualiza datos en", seccion, "2")), 0,
                         static_cast<int>(unidades().size()) - 1);
    minutos = {texto(textoSiempre)};
    for (int cuantos = pasoMinutos; cuantos <= minutosMayor; cuantos += pasoMinutos) {
        minutos.push_back(std::to_string(cuantos));
    }
    const auto guardados = std::to_string(core::ValEntero(enlace.Config("TVMINUTOS")));
    const auto hallado = std::find(minutos.begin(), minutos.end(), guardados);
    TarvolineMinutos = hallado == minutos.end() ? 0 : static_cast<int>(hallado - minutos.begin());
    List1.clear();
    for (std::size_t i = 0; i <= adjuntoMayor; ++i) {
        auto carpeta = enlace.Config(claveAdjunto(i));
        if (carpeta.empty()) {
            break;
        }
        List1.push_back(std::move(carpeta));
    }
    Modificado = false;
}

void FormularioConfiguracion::INCLUYEIMAGENES_Click(bool marcada) {
    INCLUYEIMAGENES = marcada;
    entorno_.almacen.Grabar("IncluirImagenesTarvoline", marcada ? "1" : "0", "Backup");
}

void FormularioConfiguracion::Toolbar1_ButtonClick(int numero, int elegida) {
    if (numero == botonNueva) {
        auto carpeta = entorno_.almacen.ElegirCarpeta(texto(textoElegirCarpeta));
        if (!carpeta.empty()) {
            List1.push_back(std::move(carpeta));
            Modificado = true;
        }
    } else if (numero == botonBorrar && elegida >= 0 && elegida < static_cast<int>(List1.size())) {
        const auto& entrada = List1[static_cast<std::size_t>(elegida)];
        if (entorno_.escritorio.Preguntar({texto(textoQuitar) + "\n" + entrada + "\n" + texto(textoDeLaLista),
                                           core::Icono::pregunta, ""})) {
            List1.erase(List1.begin() + elegida);
        }
        Modificado = true;
    }
}

void FormularioConfiguracion::Salir(bool grabar) {
    if (grabar && Modificado) {
        GrabarConfigTarvoline();
    }
    Enlace_->CerrarEmpresa();
    estado().gRefrescarEspacio = true;
    entorno_.escritorio.Turno();
}

void FormularioConfiguracion::GrabarConfigTarvoline() {
    entorno_.almacen.Grabar("Visualiza datos en", std::to_string(datosen), seccion);
    estado().gUnidadTamano = core::ValEntero(entorno_.almacen.Leer("Visualiza datos en", seccion, "2"));
    auto& enlace = *Enlace_;
    enlace.Config("TVUSER", TarvolineUser);
    enlace.Config("TVPASSWORD", TarvolinePassword);
    if (!TarvolineActivar) {
        enlace.Config("Borrador", "0");
        return;
    }
    if (core::Recortar(TarvolineUser).empty() && TarvolinePassword.empty()) {
        enlace.Config("Borrador", "0");  // the mark without a user activates nothing
    } else {
        const auto& elegidos = minutos.at(static_cast<std::size_t>(TarvolineMinutos));
        enlace.Config("TVMinutos", elegidos);
        enlace.Config("TVCARPETA", TarvolineCarpeta);
        enlace.Config("TarvolineMinutos", std::to_string(core::ValEntero(elegidos) + 1));
        enlace.Config("Borrador", "1");
    }
    grabarCarpetas();
}

// The first empty value ends the list for whoever reads it, so old values behind it may stay.
void FormularioConfiguracion::grabarCarpetas() {
    for (std::size_t i = 0; i < List1.size(); ++i) {
        Enlace_->Config(claveAdjunto(i), List1[i]);
    }
    if (!core::Recortar(Enlace_->Config(claveAdjunto(List1.size()))).empty()) {
        Enlace_->Config(claveAdjunto(List1.size()), "");
    }
}

}  // namespace tarvoline::workflows
