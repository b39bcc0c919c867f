// The members of Enlace that add a line to the entry, and those that give back what has been read.
#include <limits>
#include <stdexcept>

#include "core/texto.h"
#include "link/enlace_interior.h"
#include "link/fechas_enlace.h"

namespace tarvoline::link {

namespace {

std::uint8_t comoByte(int numero, const char* campo) {
    if (numero < 0 || numero > std::numeric_limits<std::uint8_t>::max()) {
        throw std::overflow_error(std::string(campo) + " es un número de 0 a 255: " + std::to_string(numero));
    }
    return static_cast<std::uint8_t>(numero);
}

bool esPeriodo(int mes) {
    return mes >= 0 && static_cast<std::size_t>(mes) < periodosPlan;
}

}  // namespace

std::shared_ptr<ApunteClass> Enlace::AñadirApunte(std::string_view cuenta, std::string_view descripción,
                                                  int tipo, double importe, std::string_view diario,
                                                  int punteo, std::string_view canal,
                                                  std::string_view referencia, std::string_view notas,
                                                  std::string_view archivoImagen) {
    ApunteClass linea;
    linea.Cuenta = cuenta;
    linea.Descripción = descripción;
    linea.TIPO = tipo;
    linea.Importe = importe;
    linea.Diario = diario;
    linea.Punteo = comoByte(punteo, "Punteo");
    linea.Canal = canal;
    linea.Referencia = referencia;
    linea.NOTAS = notas;
    linea.ArchivoImagen = archivoImagen;
    return interior_->sesion.pendientes.anadir(std::move(linea));
}

std::shared_ptr<AnaliticaClass> Enlace::AñadirAnalitica(std::string_view cuentaContable,
                                                        std::string_view cuentaAnalitica,
                                                        std::string_view descripción, int /*tipo*/,
                                                        double importe, std::string_view /*diario*/,
                                                        int /*punteo*/, std::string_view /*canal*/) {
    return interior_->sesion.pendientes.anadir(AnaliticaClass{
        std::string(cuentaContable), std::string(cuentaAnalitica), std::string(descripción), importe});
}

std::shared_ptr<CarteraClass> Enlace::AñadirCartera(std::string_view fechaVencimiento,
                                                    std::string_view cuenta, std::string_view cartera,
                                                    std::string_view notas, double importe,
                                                    std::string_view fechaApunte, std::string_view marca) {
    CarteraClass linea;
    linea.FechaVencimiento = fechaVencimiento;
    linea.Cuenta = cuenta;
    linea.cartera = cartera;
    linea.NOTAS = notas;
    linea.Importe = importe;
    linea.Fecha = fechaApunte;
    linea.Marca = marca;
    return interior_->sesion.pendientes.anadir(std::move(linea));
}

std::shared_ptr<IVAClass> Enlace::AñadirIVA(const IVAClass& linea) {
    IVAClass nueva = linea;
    const Sesion& sesion = interior_->sesion;
    nueva.FechaFactura = fechaCorta(sesion, fechaDeTexto(sesion, linea.FechaFactura));
    for (std::string* texto :
         {&nueva.SII_Codigo, &nueva.SII_DescripcionDocumento, &nueva.SII_Id, &nueva.SII_FacturaExtendida,
          &nueva.SII_FacturaRectificativa_DUA, &nueva.SII_PeriodoPresentacion}) {
        *texto = core::Recortar(*texto);
    }
    return interior_->sesion.pendientes.anadir(std::move(nueva));
}

std::shared_ptr<IVAClass> Enlace::AñadirIVA(
    std::string_view cuentaClienteProveedor, std::string_view cuentaIVA, std::string_view factura,
    std::string_view fechaFactura, std::string_view tipoIva, std::string_view srtc, double base, double total,
    int prorata, std::string_view titulo, std::string_view nif, std::string_view numeroOrden,
    std::string_view claveOperacion, std::string_view referencia, std::string_view serieFacturas,
    double porcRetencion, std::string_view regimenEspecial, std::string_view codigoSII,
    std::string_view descripcionSII, std::string_view idSII, std::string_view factura60Caracteres,
    std::string_view noFacturaRectificativaDUA, std::string_view periodoPresentacion) {
    IVAClass linea;
    linea.CuentaClienteProveedor = cuentaClienteProveedor;
    linea.CuentaIVA = cuentaIVA;
    linea.Factura = factura;
    linea.FechaFactura = fechaFactura;
    linea.TipoIva = tipoIva;
    linea.SRTC = srtc;
    linea.Base = base;
    linea.TOTAL = total;
    linea.Prorata = comoByte(prorata, "Prorata");
    linea.titulo = titulo;
    linea.NIF = nif;
    linea.NumeroOrden = numeroOrden;
    linea.CLAVEOPERACION = claveOperacion;
    linea.Referencia = referencia;
    linea.SerieFacturas = serieFacturas;
    linea.PorcRetencion = porcRetencion;
    linea.RegimenEspecial = regimenEspecial;
    linea.SII_Codigo = codigoSII;
    linea.SII_DescripcionDocumento = descripcionSII;
    linea.SII_Id = idSII;
    linea.SII_FacturaExtendida = factura60Caracteres;
    linea.SII_FacturaRectificativa_DUA = noFacturaRectificativaDUA;
    linea.SII_PeriodoPresentacion = periodoPresentacion;
    return AñadirIVA(linea);
}

// --- Results

std::int32_t Enlace::ContadorApuntes() const {
    return interior_->sesion.pendientes.apuntes.contar();
}

std::int32_t Enlace::ContadorAnalitica() const {
    return interior_->sesion.pendientes.analiticas.contar();
}

std::int32_t Enlace::ContadorIva() const {
    return interior_->sesion.pendientes.ivas.contar();
}

std::int32_t Enlace::ContadorCartera() const {
    return interior_->sesion.pendientes.carteras.contar();
}

std::int32_t Enlace::ContadorExtracto() const {
    return interior_->sesion.resultados.extracto.contar();
}

std::int32_t Enlace::ContadorPlan() const {
    return interior_->sesion.resultados.plan.contar();
}

std::int32_t Enlace::ContadorDatos() const {
    return interior_->sesion.resultados.datos.contar();
}

std::int32_t Enlace::ContadorDatosGlobal() const {
    return interior_->sesion.resultados.datosGlobales.contar();
}

std::int32_t Enlace::ContadorInmovilizado() const {
    return interior_->sesion.resultados.inmovilizado.contar();
}

std::shared_ptr<ApunteClass> Enlace::Apunte(std::int32_t index) const {
    return interior_->sesion.pendientes.apuntes(index);
}

std::shared_ptr<AnaliticaClass> Enlace::Analitica(std::int32_t index) const {
    return interior_->sesion.pendientes.analiticas(index);
}

std::shared_ptr<IVAClass> Enlace::iva(std::int32_t index) const {
    return interior_->sesion.pendientes.ivas(index);
}

std::shared_ptr<CarteraClass> Enlace::cartera(std::int32_t index) const {
    return interior_->sesion.pendientes.carteras(index);
}

std::shared_ptr<ExtractoClass> Enlace::Extracto(std::int32_t index) const {
    return interior_->sesion.resultados.extracto(index);
}

std::shared_ptr<PlanClass> Enlace::Plan(std::int32_t index) const {
    return interior_->sesion.resultados.plan(index);
}

double Enlace::PlanDebe(std::int32_t index, int mes) const {
    const auto cuenta = Plan(index);
    return cuenta && esPeriodo(mes) ? cuenta->coldebe[static_cast<std::size_t>(mes)].Importe : 0;
}

double Enlace::PlanHaber(std::int32_t index, int mes) const {
    const auto cuenta = Plan(index);
    return cuenta && esPeriodo(mes) ? cuenta->colhaber[static_cast<std::size_t>(mes)].Importe : 0;
}

std::shared_ptr<DatosClass> Enlace::DATOS(std::int32_t index) const {
    return interior_->sesion.resultados.datos(index);
}

std::shared_ptr<DatosGlobalClass> Enlace::DatosGlobales(std::int32_t index) const {
    return interior_->sesion.resultados.datosGlobales(index);
}

std::shared_ptr<InmoClass> Enlace::inmovilizado(std::int32_t index) const {
    return interior_->sesion.resultados.inmovilizado(index);
}

}  // namespace tarvoline::link
