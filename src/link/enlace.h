// The accounting link: an object is a session on one company.
//
// Order of a caller: make the object, AbrirEmpresa, any operation, CerrarEmpresa. All members throw
// ErrorEnlace; failures of the file system itself (a file held by another program, a full disk) pass through
// as platform::ErrorArchivo. Several objects may live in one process; each works on its own company. One
// thread.
//
// The class is a face: each theme is a worker of its own beside it, over one `Sesion`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "link/acceso_empresa.h"
#include "link/contexto.h"
#include "link/error_enlace.h"
#include "link/sesion.h"
#include "link/valores_empresa.h"

namespace tarvoline::link {

// Arguments of a new company; an empty one takes its default.
struct EmpresaNueva {
    std::string NombreEmpresa;
    std::string año;                     // its last two characters count
    std::string Niveles;                 // five digits
    std::string Auxiliares;              // four digits
    std::string MonedaBase;              // number of the base currency's file
    std::string MesApertura;             // first month of the accounting year
    std::string PlanContablePorDefecto;  // template plan to copy: 0 and 1, 4 to 6, any other
    std::string IvaIgic;
};

class Enlace {
  public:
    // Fills `Empresas`. Throws noInstalado when no settings name the data directory.
    explicit Enlace(Contexto& contexto, OpcionesEnlace opciones = {});
    ~Enlace();
    Enlace(const Enlace&) = delete;
    Enlace& operator=(const Enlace&) = delete;

    // "major.minor.revision" of the program.
    static std::string Version();

    // Full paths of the company files in the data directory, sorted by name, case ignored.
    const std::vector<std::string>& Empresas() const { return sesion_.Empresas; }
    void LoadEmpresas() { acceso_.LoadEmpresas(); }
    bool ModoRemoto() const { return sesion_.ModoRemoto; }

    // Opens a company by path, or by name in the data directory, with or without ".QZT"; an empty name means
    // the product's last company. A protected company wants its password here or from
    // OpcionesEnlace::pedirClave. Throws empresaNoExiste (no file, or an empty one), versionPosterior,
    // numeroNoValido, claveNoValida. After claveNoValida the company counts as open all the same: a caller
    // that does not want it open calls CerrarEmpresa.
    //
    // A password that begins with "/C" creates the company instead (the options of
    // data::CrearEmpresaArchivos); it is not open afterwards, `Empresa` gives its path.
    void AbrirEmpresa(std::string_view empresa, std::string_view clave) {
        acceso_.AbrirEmpresa(empresa, clave);
    }
    void CerrarEmpresa() { acceso_.CerrarEmpresa(); }
    void CrearEmpresa(const EmpresaNueva& nueva);

    // Path and two-character number of the company last opened; the number is "" when none is open.
    const std::string& Empresa() const { return sesion_.empresa.gArchivoEmpresa; }
    const std::string& NumeroEmpresa() const { return sesion_.empresa.gEmpresaActual; }
    // Two digits; the accounting year's first month.
    std::string MesInicioEjercicio() const;
    // Calendar year of a month of the accounting year, two digits or more ("100" follows "99"); 13 and 14 are
    // the closing periods.
    std::string año(int mes) const { return valores_.año(mes); }
    std::string year(int mes) const { return año(mes); }
    // Path of the company of the year before; "" when there is none.
    std::string EmpresaAñoAnterior() { return valores_.EmpresaAñoAnterior(); }
    std::string PreviousYearCompany() { return EmpresaAñoAnterior(); }

    // A named value of the company: a field of its head, or a line of its text section; without zero
    // characters and outer blanks, "" when there is none. Names in any case. Throws empresaNoAbierta.
    std::string Config(std::string_view descripcion) { return valores_.leer(descripcion); }
    // Writing "" removes a text line. Throws empresaNoAbierta, and ErrorArchivo permisoDenegado when the file
    // stays held.
    void Config(std::string_view descripcion, std::string_view valor) { valores_.grabar(descripcion, valor); }

    // The two stores behind Config, without its test and trimming (data/vista_nombrada.h,
    // data/seccion_textos.h).
    std::string GetTotal(std::string_view nombre) { return valores_.GetTotal(nombre); }
    void PutTotal(std::string_view nombre, std::string_view valor) { valores_.PutTotal(nombre, valor); }
    std::string GET_TOTAL(std::string_view nombre) { return valores_.GET_TOTAL(nombre); }
    void PUT_TOTAL(std::string_view nombre, std::string_view valor, std::string_view archivo = {}) {
        valores_.PUT_TOTAL(nombre, valor, archivo);
    }

    // Two-digit code of the user that entries are posted under, "99" from the start.
    const std::string& Usuario() const { return sesion_.Usuario; }
    void Usuario(std::string_view usuario);

  private:
    Sesion sesion_;
    AccesoEmpresa acceso_;
    ValoresEmpresa valores_;
};

}  // namespace tarvoline::link
