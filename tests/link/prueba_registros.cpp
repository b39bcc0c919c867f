// The two registers, budgets, master data, tables as texts, identifiers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apoyo/en_procesos.h"
#include "apoyo_libros.h"
#include "link/campos_registros.h"

namespace tarvoline::pruebas {
namespace {

namespace error = link::error_enlace;
using link::CampoRegistro;
using link::camposDe;
using link::DatosGlobalClass;
using link::InmoClass;
using testing::ElementsAre;
using testing::MatchesRegex;

// Every field at its full width, no two alike. `anchos` by position, of texts.
template <typename Registro>
Registro lleno(const data::DefinicionTabla& definicion) {
    using Forma = typename CampoRegistro<Registro>::Forma;
    constexpr std::array<const char*, 7> letras{"ñ", "Á", "é", "Ü", "ç", "º", "€"};
    Registro registro;
    int vez = 0;
    for (const auto& campo : camposDe<Registro>()) {
        ++vez;
        const auto ancho =
            static_cast<std::size_t>(definicion.campo(definicion.campoDePosicion(campo.posicion)).ancho);
        if (campo.forma == Forma::numero) {
            registro.*campo.numero = vez * 1000 + 0.25;
        } else if (campo.forma == Forma::fecha) {
            registro.*campo.texto = (vez < 29 ? core::conCeros(vez, 2) : "28") + "/02/27";
        } else if (campo.forma == Forma::cifras) {
            registro.*campo.texto = std::string(static_cast<std::size_t>(campo.cifras), '7');
            EXPECT_EQ(static_cast<std::size_t>(campo.cifras), ancho);
        } else {
            std::string& texto = registro.*campo.texto;
            for (std::size_t i = 0; i < ancho; ++i)
                texto += letras[(i + static_cast<std::size_t>(vez)) % letras.size()];
        }
    }
    return registro;
}

template <typename Registro>
void esperarIguales(const Registro& uno, const Registro& otro) {
    int vez = 0;
    for (const auto& campo : camposDe<Registro>()) {
        SCOPED_TRACE("field " + std::to_string(++vez));
        if (campo.numero != nullptr) {
            EXPECT_EQ(uno.*campo.numero, otro.*campo.numero);
        } else {
            EXPECT_EQ(uno.*campo.texto, otro.*campo.texto);
        }
    }
}

// No field of the class is left out and no place in the row is used twice.
template <typename Registro>
void esperarLugares(std::size_t cuantos, int ultimo) {
    std::set<int> posiciones;
    std::set<const void*> miembros;
    const Registro registro;
    for (const auto& campo : camposDe<Registro>()) {
        posiciones.insert(campo.posicion);
        miembros.insert(campo.texto != nullptr ? static_cast<const void*>(&(registro.*campo.texto))
                                               : static_cast<const void*>(&(registro.*campo.numero)));
    }
    EXPECT_EQ(posiciones.size(), cuantos);
    EXPECT_EQ(miembros.size(), cuantos);
    EXPECT_EQ(*posiciones.rbegin(), ultimo);
}

struct Registros : testing::Test, MundoLibros {
    data::DefinicionTabla definicion(const std::string& nombre) const {
        return data::interpretarDefinicion(platform::leerTodo(*mundo.archivos, programa() + nombre + ".QZA"));
    }
};

TEST_F(Registros, TodosLosCamposVanYVuelven) {
    esperarLugares<InmoClass>(50, 52);
    esperarLugares<DatosGlobalClass>(65, 74);
    const auto bien = lleno<InmoClass>(definicion("INMO3"));
    enlace.CrearInmovilizado(bien);
    ASSERT_EQ(enlace.LeerInmovilizado(bien.I01_Codigo_String_10), 1);
    esperarIguales(*enlace.inmovilizado(1), bien);
    const auto persona = lleno<DatosGlobalClass>(definicion("DATGL"));
    enlace.CrearDatosGloblales(persona);
    ASSERT_EQ(enlace.LeerDatosGlobales(persona.G01_NIF_String_18), 1);
    esperarIguales(*enlace.DatosGlobales(1), persona);
}

TEST_F(Registros, Inmovilizado) {
    InmoClass bien;
    esperarError([&] { enlace.CrearInmovilizado(bien); }, error::registroRehusado, "Codigo sin contenido");
    bien.I01_Codigo_String_10 = "B1";
    bien.I02_Descripcion_String_40 = std::string(45, 'x');
    bien.I04_Tipo_Elemento_ZeroFilled_2 = "5";
    bien.I20_Fecha_Compra_ddmmyy_8 = "  /  /  ";
    enlace.CrearInmovilizado(bien);
    bien.I02_Descripcion_String_40 = "Otro";
    esperarError([&] { enlace.CrearInmovilizado(bien); }, error::registroRehusado, "Codigo ya existe");
    bien.I01_Codigo_String_10 = "B2";
    bien.I24_Fecha_Baja_ddmmyy_8 = "31/02/26";
    EXPECT_THROW(enlace.CrearInmovilizado(bien), link::ErrorEnlace);
    ASSERT_EQ(enlace.LeerInmovilizado(), 1) << "a date that is none stores nothing";
    EXPECT_EQ(enlace.inmovilizado(1)->I02_Descripcion_String_40, std::string(40, 'x'));
    EXPECT_EQ(enlace.inmovilizado(1)->I04_Tipo_Elemento_ZeroFilled_2, "05");
    EXPECT_EQ(enlace.inmovilizado(1)->I20_Fecha_Compra_ddmmyy_8, "");
    EXPECT_EQ(enlace.LeerInmovilizado("B2"), 0);
    enlace.CerrarEmpresa();
    esperarError([&] { enlace.CrearInmovilizado(bien); }, error::registroRehusado, "Empresa no Abierta");
    EXPECT_THROW(enlace.LeerInmovilizado(), link::ErrorEnlace);
}

// They need no company.
TEST_F(Registros, DatosGlobales) {
    enlace.CerrarEmpresa();
    EXPECT_FALSE(enlace.ExisteNifDatosGlobales(""));
    DatosGlobalClass persona;
    esperarError([&] { enlace.CrearDatosGloblales(persona); }, error::registroRehusado, "Nif sin contenido");
    persona.G01_NIF_String_18 = " B12345678 ";
    persona.G02_Nombre_String_50 = "Ibáñez";
    enlace.CrearDatosGloblales(persona);
    persona.G02_Nombre_String_50 = "Otra";
    persona.G03_ApellidoRazonSocial_String_90 = "S.L.";
    enlace.CrearDatosGloblales(persona);
    ASSERT_EQ(enlace.LeerDatosGlobales("B12345678"), 1);
    EXPECT_EQ(enlace.DatosGlobales(1)->G02_Nombre_String_50, "Ibáñez") << "no mark, no change";
    persona.G66_Actualizar = true;
    enlace.CrearDatosGloblales(persona);
    ASSERT_EQ(enlace.LeerDatosGlobales(), 1);
    EXPECT_EQ(enlace.DatosGlobales(1)->G02_Nombre_String_50, "Otra");
    EXPECT_TRUE(enlace.ExisteNifDatosGlobales(""));
    EXPECT_TRUE(enlace.ExisteNifDatosGlobales("B12345678"));
    EXPECT_FALSE(enlace.ExisteNifDatosGlobales("B1234567"));
}

TEST_F(Registros, UnNifUnaVezAunqueVariosLoCreen) {
    enlace.CerrarEmpresa();
    enProcesos(3, 1, [&](int, int) {
        link::Contexto suyo(*mundo.archivos, mundo.ajustes, mundo.carpetas, mundo.reloj);
        link::Enlace con(suyo);
        for (int i = 0; i < 40; ++i) {
            DatosGlobalClass persona;
            persona.G01_NIF_String_18 = "N" + std::to_string(i);
            con.CrearDatosGloblales(persona);
        }
    });
    EXPECT_EQ(enlace.LeerDatosGlobales(), 40);
}

TEST_F(Registros, DatosMaestrosYSusGlobales) {
    enlace.CrearDatos({.Cuenta = "4300000001", .titulo = "Peña", .Riesgo = "1500,50", .NOTAS = "Larga"});
    EXPECT_EQ(enlace.LeerDatosGlobales(), 0) << "without a tax number";
    const auto datos = [&] {
        EXPECT_EQ(enlace.LeerDatos("4300000001"), 1);
        return *enlace.DATOS(1);
    };
    EXPECT_EQ(datos().Riesgo, 1500.5);
    enlace.CrearDatos({.Cuenta = "4300000001", .NIF = "B1", .cp = "28001", .Importe_347 = "7"});
    EXPECT_EQ(datos().titulo + datos().NIF + datos().cp + datos().NOTAS, "PeñaB128001Larga");
    EXPECT_EQ(datos().Importe_347, 7);
    EXPECT_EQ(datos().Riesgo, 1500.5) << "what is -1 stays";
    ASSERT_EQ(enlace.LeerDatosGlobales("B1"), 1);
    EXPECT_EQ(enlace.DatosGlobales(1)->G13_CP_String_8, "28001");
    EXPECT_EQ(enlace.DatosGlobales(1)->G02_Nombre_String_50, "") << "a field that was left alone";

    enlace.CrearDatos({.Cuenta = "4300000001", .titulo = "Núñez", .NIF = "B1"});
    ASSERT_EQ(enlace.LeerDatosGlobales("B1"), 1);
    EXPECT_EQ(enlace.DatosGlobales(1)->G02_Nombre_String_50, "") << "only with Actualizar";
    enlace.CrearDatos({.Cuenta = "4300000001", .titulo = "Núñez", .NIF = "B1", .Actualizar = true});
    ASSERT_EQ(enlace.LeerDatosGlobales("B1"), 1);
    EXPECT_EQ(enlace.DatosGlobales(1)->G02_Nombre_String_50, "Núñez");
    EXPECT_EQ(enlace.DatosGlobales(1)->G13_CP_String_8, "28001") << "the rest stays";
    EXPECT_EQ(enlace.LeerDatos("", "ÑEZ"), 1) << "its key went with its name";
    EXPECT_EQ(enlace.LeerDatos("", "Peña"), 0);
}

// What is not given stays as it is stored, also what could not be read and written back.
TEST_F(Registros, LosGlobalesCambianCampoACampo) {
    enlace.CrearDatos({.Cuenta = "4300000001", .titulo = "Uno", .NIF = "B1"});
    const auto constitucion = [&](const char* guardada) {
        data::TablaCursor cursor(contexto.interior().datos, tablas());
        cursor.Abrir(carpeta("global") + "Datgl00.QZD");
        cursor.Filtrar("NIF = B1");
        cursor.Primero();
        if (guardada != nullptr) {
            cursor.Editar();
            cursor.EscribirCampo(50, 0, guardada);
            cursor.Actualizar();
        }
        return cursor.LeerCampo(50);
    };
    for (const char* guardada : {"550315", "C60231", "G50315"}) {
        constitucion(guardada);
        enlace.CrearDatos({.Cuenta = "4300000001", .NIF = "B1", .Telefono = guardada, .Actualizar = true});
        EXPECT_EQ(constitucion(nullptr), guardada);
        enlace.LeerDatosGlobales("B1");
        EXPECT_EQ(enlace.DatosGlobales(1)->G19_Telefono1_String_15, guardada);
    }
}

TEST_F(Registros, Presupuestos) {
    enlace.ModificarPresupuesto("6290000000", 1, 5);
    EXPECT_EQ(enlace.Util_LeerDatos("Presu"), "") << "there is none to be changed";
    enlace.CrearPresupuesto("6290000000", "Otros", "0", true);
    enlace.ModificarPresupuesto("6290000000", 12, 12.5);
    enlace.ModificarPresupuesto("6290000000", 1, 1);
    for (const int mes : {0, 13, -1})
        enlace.ModificarPresupuesto("6290000000", mes, 99);
    enlace.CrearPresupuesto("6290000000", "Gastos", "-1");
    EXPECT_EQ(enlace.Util_LeerDatos("Presu", "CUENTA", "6290000000"),
              "6290000000\tGastos\t0\t1\t1\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t12.5\r\n");
}

TEST_F(Registros, TablasComoTextos) {
    enlace.CrearDatos({.Cuenta = "4300000001", .titulo = "Uno"});
    enlace.CrearDatos({.Cuenta = "4300000002", .titulo = "Dos\tcon\r\ncorte"});
    const auto contiene = [](const std::string& texto, const std::string& parte) {
        return texto.find(parte) != std::string::npos;
    };
    EXPECT_TRUE(contiene(enlace.Util_LeerDatos("datos", "", "", "CUENTA >= 4300000002"),
                         "4300000002\tDos con  corte\t"));
    const std::string uno = enlace.Util_LeerDatos(" DATOS ", " cuenta ", "4300000001");
    EXPECT_EQ(enlace.Util_TextoToArray(uno).size(), 26U);
    EXPECT_FALSE(contiene(uno, "4300000002"));
    EXPECT_TRUE(contiene(enlace.Util_LeerTablas(), "\r\nDATOS\tClientes y Proveedores\r\n") ||
                contiene(enlace.Util_LeerTablas(), "\r\nDATOS\tClientes Y Proveedores\r\n"));
    enlace.CerrarEmpresa();
    EXPECT_EQ(enlace.Util_LeerCampos("GUID1"), "ASIENTO\t1\t0\t6\r\nFECHA\t2\t5\t6\r\nGUID\t3\t0\t38\r\n");
    esperarError([&] { enlace.Util_LeerCampos("  "); }, error::registroRehusado, "Tabla Obligatorio");
    esperarError([&] { enlace.Util_LeerDatos(""); }, error::registroRehusado, "Tabla Obligatorio");
    esperarError([&] { enlace.Util_LeerDatos("DATOS"); }, error::registroRehusado, "Empresa no Abierta");
    for (const char* nombre : {"../DATOS", "NOHAY", "a/b"})
        EXPECT_THROW(enlace.Util_LeerCampos(nombre), platform::ErrorArchivo) << nombre;
    enlace.AbrirEmpresa("Prueba");
    EXPECT_THROW(enlace.Util_LeerDatos("INMO3"), platform::ErrorArchivo);
    EXPECT_THAT(enlace.Util_TextoToArray("a\t\tb"), ElementsAre("a", "", "b"));
}

TEST_F(Registros, IdentificadoresDeAsientos) {
    EXPECT_EQ(enlace.GUID("000001"), "");
    enlace.Fecha("31/01/26");
    enlace.Número("000001");
    enlace.GUID("000001", "");
    const std::string nuevo = enlace.GUID("000001");
    EXPECT_THAT(nuevo, MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    enlace.GUID("000002", "suyo");
    enlace.GUID("000003", "suyo");
    enlace.GUID("000001", "mío");
    EXPECT_EQ(enlace.GUID("000001"), "mío");
    EXPECT_THAT(enlace.LeerAsientosGuid("suyo"), ElementsAre("000002", "000003"));
    EXPECT_THAT(enlace.LeerFechasAsiento("000001"), ElementsAre("31/01/26"));
    EXPECT_THAT(enlace.LeerAsientosGuid(nuevo), ElementsAre());
}

}  // namespace
}  // namespace tarvoline::pruebas
