// The restore button: each selected archive is fetched and restored, one after the other.
#include "core/texto.h"
#include "workflows/historico.h"
#include "workflows/lista.h"
#include "workflows/panel.h"
#include "workflows/restauracion.h"
#include "workflows/temporales.h"
#include "workflows/transferencia.h"

namespace tarvoline::workflows {

namespace {

constexpr int textoElegir = 213;
constexpr int textoNoRestaurada = 982;
constexpr int textoNoCompletado = 1227;
constexpr int panelPreparando = 0;
constexpr int panelBajada = 2;
constexpr int panelNinguno = 99;

// The rows that were chosen are chosen again on every way out.
class FilaActual {
  public:
    explicit FilaActual(core::Rejilla& rejilla)
        : rejilla_(rejilla), Row_(rejilla.Row), RowSel_(rejilla.RowSel) {}
    ~FilaActual() {
        rejilla_.Row = Row_;
        rejilla_.RowSel = RowSel_;
    }
    FilaActual(const FilaActual&) = delete;
    FilaActual& operator=(const FilaActual&) = delete;

  private:
    core::Rejilla& rejilla_;
    int Row_, RowSel_;
};

}  // namespace

void Restauracion::Restaurar_Click() {
    rutaRestaurada_.clear();
    flujos_.panel().entrada([&] {
        const auto opcion = vista().Option1;
        const bool deEmpresas = opcion == core::Opcion::veldorix || opcion == core::Opcion::vxcrm;
        if (!deEmpresas || vista().fx1.Row == 0 || vista().fx1.RowSel == 0) {
            avisar(texto(textoElegir));
            return;
        }
        flujos_.panel().Desabilitar_Formulario(false);
        try {
            restaurarFilas();
        } catch (const std::exception& error) {
            entorno_.escritorio.Puntero(false);
            avisar(std::string(error.what()) + "\r\n" + texto(textoNoRestaurada));
        }
        vista().avisar(core::Parte::rejilla);  // the choice is back where it was
    });
}

void Restauracion::restaurarFilas() {
    auto& panel = flujos_.panel();
    const auto [primera, ultima] = flujos_.lista().seleccion();
    const FilaActual eleccion(vista().fx1);
    int fila = primera;
    for (; fila <= ultima; ++fila) {
        vista().fx1.Row = fila;
        const auto archivo = flujos_.temporales().rutaDescarga(
            core::Recortar(vista().fx1.celda(fila, columna_rejilla::nombre)));
        const auto borrarArchivo = [&] {
            if (platform::existe(entorno_.archivos, archivo)) {
                core::ignorandoErrores(entorno_, "fetched archive",
                                       [&] { entorno_.archivos.borrar(archivo); });
            }
        };
        borrarArchivo();  // one of an earlier day would be restored in place of a download that fails
        panel.Adaptar_imagenes(panelBajada);
        flujos_.transferencia().DescargarArchivo(estado().gProducto, archivo);
        panel.Adaptar_imagenes(panelPreparando);
        if (estado().gDetener) {
            borrarArchivo();
            panel.Desabilitar_Formulario(true);
            avisar(texto(textoNoCompletado));
            estado().gDetener = false;
            estado().gInterrumpido = true;
            return;
        }
        RestaurarEmpresa(archivo);
        panel.Adaptar_imagenes(panelNinguno);
        borrarArchivo();
    }
    entorno_.escritorio.Puntero(false);
    panel.Desabilitar_Formulario(true);
    // The row behind the last one restored: the line names what stands there.
    flujos_.historico().anotarHecho(estado().gUsuario + estado().gTextosHistorico[core::haBajadoEmpresa] +
                                    core::Recortar(vista().fx1.celda(fila, columna_rejilla::nombre)));
}

}  // namespace tarvoline::workflows
