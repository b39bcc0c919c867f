#include "tools/demo_registros.h"

#include <array>
#include <string_view>

#include "core/texto.h"
#include "data/utilidades.h"

namespace tarvoline::tools {

namespace {

struct Lugar {
    std::string_view cp, municipio, provincia;
};
constexpr std::array<Lugar, 4> lugares{{{"35001", "Las Palmas de Gran Canaria", "Las Palmas"},
                                        {"48001", "Bilbao", "Vizcaya"},
                                        {"15001", "A Coruña", "A Coruña"},
                                        {"08001", "Barcelona", "Barcelona"}}};
constexpr std::array<std::string_view, 4> calles{"Calle del Horno", "Avenida de la Constitución",
                                                 "Plaza de España", "Camino Viñas Altas"};

struct Bien {
    const char *codigo, *descripcion, *cuenta, *amortizacion;
    double valor;
    const char* vida;
    int anos;  // since it was bought
};
constexpr std::array<Bien, 3> bienes{{
    {"HORNO", "Horno de pisos", "2130000000", "2813000000", 38500, "12", 4},
    {"FURGONETA", "Furgoneta de reparto", "2180000000", "2818000000", 21900.5, "6", 2},
    {"CAJAS", "Cajas registradoras", "2170000000", "2817000000", 3200, "4", 1},
}};

struct Partida {
    const char *cuenta, *titulo;
    int media;  // euros a month
};
constexpr std::array<Partida, 3> partidas{{{"7000000000", "Ventas de mercaderías", 9000},
                                           {"6000000000", "Compras de mercaderías", 3800},
                                           {"6210000001", "Alquiler de las tiendas", 1450}}};

double centimos(double importe) {
    return data::Redondear(importe, 2);
}

}  // namespace

void crearDatos(link::Enlace& enlace, Azar& azar, const PersonaDemo& persona) {
    const Lugar& lugar = lugares[static_cast<std::size_t>(azar.entre(0, lugares.size() - 1))];
    link::DatosNuevos datos;
    datos.Cuenta = persona.cuenta;
    datos.titulo = persona.nombre;
    datos.NIF = persona.nif;
    datos.Direccion = std::string(azar.uno(calles)) + ", " + std::to_string(azar.entre(1, 90));
    datos.cp = lugar.cp;
    datos.Municipio = lugar.municipio;
    datos.Provincia = lugar.provincia;
    datos.Pais = "ES";
    datos.Telefono = "9" + azar.cifras(8);
    datos.Vencimientos = "30";
    datos.CriterioCaja = persona.criterioCaja ? "1" : "0";
    enlace.CrearDatos(datos);
}

void crearPresupuestos(link::Enlace& enlace, Azar& azar) {
    constexpr int meses = 12;
    for (const Partida& partida : partidas) {
        enlace.CrearPresupuesto(partida.cuenta, partida.titulo);
        for (int mes = 1; mes <= meses; ++mes)
            enlace.ModificarPresupuesto(partida.cuenta, mes, partida.media + azar.entre(0, 9) * 50);
    }
}

void crearInmovilizado(link::Enlace& enlace, int anio) {
    for (const Bien& bien : bienes) {
        const double vida = core::Val(bien.vida);
        link::InmoClass uno;
        uno.I01_Codigo_String_10 = bien.codigo;
        uno.I02_Descripcion_String_40 = bien.descripcion;
        uno.I03_Material_Inmaterial_String_1 = "M";
        uno.I08_Cuenta_Activo_String_10 = bien.cuenta;
        uno.I09_Cuenta_Amortizacion_String_10 = bien.amortizacion;
        uno.I10_Cuenta_Gastos_String_10 = "6810000000";
        uno.I11_Valor_Inicial_Long_12 = bien.valor;
        uno.I12_Importe_Amortizado_Long_12 = centimos(bien.valor * bien.anos / vida);
        uno.I13_Valor_Actual_Long_12 = centimos(bien.valor - uno.I12_Importe_Amortizado_Long_12);
        uno.I16_Porcentaje_Long_5 = centimos(100 / vida);
        uno.I17_Vida_Util_Anos_ZeroFilled_3 = bien.vida;
        uno.I20_Fecha_Compra_ddmmyy_8 = "01/01/" + core::conCeros((anio - bien.anos) % 100, 2);
        uno.I49_Unidades_Long_12 = 1;
        enlace.CrearInmovilizado(uno);
    }
}

}  // namespace tarvoline::tools
