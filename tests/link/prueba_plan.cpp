// Reading the charts and the master data, held against a plain filter of what was made.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "apoyo_libros.h"

namespace tarvoline::pruebas {
namespace {

namespace datos = link::posicion::datos;
namespace planc = link::posicion::planc;
namespace tabla = data::tabla;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

struct Plan : testing::Test, MundoLibros {
    // Analytic accounts, of which a new company has none.
    std::map<std::string, std::pair<std::string, std::string>> crearAnaliticas(std::mt19937& azar,
                                                                               int cuantas) {
        std::map<std::string, std::pair<std::string, std::string>> todas;
        while (static_cast<int>(todas.size()) < cuantas) {
            const std::string codigo = std::to_string(azar() % 30) + std::to_string(azar() % 30);
            const std::string titulo = "Título " + std::to_string(azar() % 9) + (azar() % 2 == 0 ? " Ñ" : "");
            const std::string nivel = std::to_string(azar() % 3);
            if (!todas.emplace(codigo, std::pair(titulo, nivel)).second) continue;
            fila(tabla::costo, {{planc::cuenta, codigo}, {planc::titulo, titulo}, {planc::nivel, nivel}});
        }
        return todas;
    }
    std::vector<std::string> leidas() {
        std::vector<std::string> codigos;
        for (int i = 1; i <= enlace.ContadorPlan(); ++i)
            codigos.push_back(enlace.Plan(i)->Cuenta);
        return codigos;
    }
};

TEST_F(Plan, RangosYPatronesAlAzar) {
    const unsigned semilla = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(semilla));
    std::mt19937 azar(semilla);
    const auto todas = crearAnaliticas(azar, 60);
    const auto algunos = [&](const auto& vale) {
        std::vector<std::string> codigos;
        for (const auto& [codigo, suyo] : todas)
            if (vale(codigo, suyo.first, suyo.second)) codigos.push_back(codigo);
        return codigos;
    };
    using Texto = const std::string&;
    EXPECT_EQ(enlace.LeerPlanEx(8), 60);
    EXPECT_EQ(leidas(), algunos([](Texto, Texto, Texto) { return true; })) << "all, by account";
    for (int vez = 0; vez < 20; ++vez) {
        const std::string desde = std::to_string(azar() % 30), hasta = std::to_string(azar() % 300);
        enlace.LeerPlanEx(8, desde, "", "", hasta);
        EXPECT_EQ(leidas(), algunos([&](Texto c, Texto, Texto) { return c >= desde && c <= hasta; }))
            << desde << hasta;
        enlace.LeerPlanEx(8, desde + "*", "1");
        EXPECT_EQ(leidas(),
                  algunos([&](Texto c, Texto, Texto n) { return c.starts_with(desde) && n == "1"; }))
            << desde;
        enlace.LeerPlanEx(8, desde);
        EXPECT_EQ(leidas(), algunos([&](Texto c, Texto, Texto) { return c == desde; })) << desde;
        enlace.LeerPlanEx(8, desde, "", "", "", 1);
        auto detras = algunos([&](Texto c, Texto, Texto) { return c > desde; });
        detras.resize(std::min<std::size_t>(detras.size(), 1));
        EXPECT_EQ(leidas(), detras) << "behind " << desde;
        enlace.LeerPlanEx(8, desde, "", "", "", 2);
        auto delante = algunos([&](Texto c, Texto, Texto) { return c < desde; });
        if (delante.size() > 1) delante.erase(delante.begin(), delante.end() - 1);
        EXPECT_EQ(leidas(), delante) << "before " << desde;
    }
    enlace.LeerPlanEx(8, "??", "", "título * ñ");
    EXPECT_THAT(leidas(), UnorderedElementsAreArray(algunos(
                              [](Texto c, Texto t, Texto) { return c.size() == 2 && t.ends_with("Ñ"); })));
    std::vector<std::string> titulos;
    for (int i = 1; i <= enlace.ContadorPlan(); ++i)
        titulos.push_back(enlace.Plan(i)->titulo);
    EXPECT_TRUE(std::ranges::is_sorted(titulos)) << "by title";
    EXPECT_EQ(enlace.LeerPlanEx(2), 0);
    EXPECT_EQ(enlace.ContadorPlan(), 0) << "there is no such chart";
}

TEST_F(Plan, UnaCuentaEntera) {
    fila(tabla::planc, {{planc::cuenta, "4300000001"},
                        {planc::titulo, "Núñez"},
                        {planc::nivel, "0"},
                        {planc::notas, "nota"},
                        {planc::clave347, "A"},
                        {planc::analitica, "1"},
                        {planc::omitir347, "1"},
                        {planc::omitir415, "2"},
                        {planc::criterioCaja, "3"},
                        {planc::nif, "B1"}});
    enlace.Fecha("15/02/26");
    enlace.Número("");
    for (const char* diario : {"A", "1", "B", "C"}) {
        enlace.AñadirApunte("4300000001", "", 1, 10, diario);
        enlace.AñadirApunte("4300000001", "", 2, 4, diario);
    }
    enlace.GrabarAsiento();
    EXPECT_TRUE(enlace.LeerPlan("4300000001"));
    const auto cuenta = enlace.Plan(1);
    EXPECT_EQ(cuenta->Cuenta + cuenta->titulo + cuenta->Nivel + cuenta->NOTAS + cuenta->Clave347 +
                  cuenta->OMITIR347 + cuenta->OMITIR415 + cuenta->CriterioCaja + cuenta->NIF,
              "4300000001Núñez0notaA123B1");
    EXPECT_TRUE(cuenta->EsAnalitica);
    for (int mes = -1; mes <= 15; ++mes) {
        const bool suyo = mes == 0 || mes == 2 || mes == 13 || mes == 14;
        EXPECT_EQ(enlace.PlanDebe(1, mes), suyo ? 10 : 0) << mes;
        EXPECT_EQ(enlace.PlanHaber(1, mes), suyo ? -4 : 0) << mes;
    }
    EXPECT_EQ(cuenta->DebeApertura + cuenta->DebeFebrero + cuenta->DebeRegularizacion + cuenta->DebeCierre,
              40);
    EXPECT_EQ(
        cuenta->HaberApertura + cuenta->HaberFebrero + cuenta->HaberRegularizacion + cuenta->HaberCierre,
        -16);
    EXPECT_EQ(enlace.PlanDebe(2, 0) + enlace.PlanHaber(0, 0), 0);
}

TEST_F(Plan, ListasYLoQueNoHay) {
    for (const char* codigo : {"4300000001", "4300000002", "5700000001"})
        cuenta(codigo);
    EXPECT_TRUE(enlace.LeerPlan("5700000001, 43000000*,4399999999"));
    EXPECT_THAT(leidas(), ElementsAre("5700000001", "4300000001", "4300000002"));
    const auto todas = enlace.LeerPlanEx(1);
    for (const char* pedida : {"", "?", ",?,"}) {
        EXPECT_TRUE(enlace.LeerPlan(pedida));
        EXPECT_EQ(enlace.ContadorPlan(), todas) << pedida;
    }
    EXPECT_TRUE(enlace.LeerPlan(",4300000001,"));
    EXPECT_THAT(leidas(), ElementsAre("4300000001")) << "an empty item is none";
    EXPECT_FALSE(enlace.LeerPlan("4399999999"));
    EXPECT_EQ(enlace.ContadorPlan(), 0);
    EXPECT_FALSE(enlace.LeerPlan("43000000*", "3"));
    EXPECT_TRUE(todoCerrado());
    enlace.CerrarEmpresa();
    esperarError([&] { enlace.LeerPlan("1"); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
    esperarError([&] { enlace.LeerDatos("1"); }, 0x8004C356,
                 "Empresa No Abierta ... Abrir Empresa y reintentar");
}

TEST_F(Plan, DatosMaestros) {
    CamposFila campos{{datos::cuenta, "4300000001"}, {datos::nombre, "Peña e hijos"}};
    const std::pair<int, const char*> textos[] = {{datos::nif, "B1"},         {datos::direccion, "C/ Mayor"},
                                                  {datos::cp, "28001"},       {datos::municipio, "M"},
                                                  {datos::provincia, "P"},    {datos::clave347, "A"},
                                                  {datos::telefono, "91"},    {datos::fax, "92"},
                                                  {datos::tipoIva, "01"},     {datos::notas, "n"},
                                                  {datos::pais, "ES"},        {datos::vencimientos, "30"},
                                                  {datos::diasDePago, "5"},   {datos::email, "a@b"},
                                                  {datos::paginaWeb, "w"},    {datos::omitir347, "1"},
                                                  {datos::omitir415, "0"},    {datos::criterioCaja, "1"},
                                                  {datos::importe347, "1.5"}, {datos::riesgo, "2.5"},
                                                  {datos::trimestre1, "10"},  {datos::trimestre2, "20"},
                                                  {datos::trimestre3, "30"},  {datos::trimestre4, "40"}};
    campos.insert(campos.end(), std::begin(textos), std::end(textos));
    fila(tabla::datos, campos);
    fila(tabla::datos, {{datos::cuenta, "4300000002"}, {datos::nombre, "Almacenes"}});
    fila(tabla::datos, {{datos::cuenta, "4000000001"}, {datos::nombre, "La peña"}});

    EXPECT_EQ(enlace.LeerDatos("4300000001"), 1);
    const auto uno = enlace.DATOS(1);
    EXPECT_EQ(uno->Cuenta + "|" + uno->titulo + "|" + uno->NIF + "|" + uno->Direccion + "|" + uno->cp + "|" +
                  uno->Municipio + uno->Provincia + uno->CVP + uno->Telefono + uno->Fax + uno->TipoIva +
                  uno->NOTAS + uno->Pais + uno->Vencimientos + uno->DiasDePago + uno->email + uno->PaginaWeb +
                  uno->OMITIR347 + uno->OMITIR415,
              "4300000001|Peña e hijos|B1|C/ Mayor|28001|MPA919201nES305a@bw10");
    EXPECT_TRUE(uno->EsCriterioCaja);
    EXPECT_EQ(uno->Importe_347 + uno->Riesgo, 4);
    EXPECT_EQ(
        uno->Trimestre1_347 + 2 * uno->Trimestre2_347 + 3 * uno->Trimestre3_347 + 4 * uno->Trimestre4_347,
        300);

    const auto cuentas = [&](const char* cuenta, const char* titulo) {
        const auto cuantas = enlace.LeerDatos(cuenta, titulo);
        EXPECT_EQ(cuantas, enlace.ContadorDatos());
        std::string todas;
        for (int i = 1; i <= cuantas; ++i)
            todas += enlace.DATOS(i)->Cuenta + " ";
        return todas;
    };
    EXPECT_EQ(cuentas("", ""), "4000000001 4300000001 4300000002 ");
    EXPECT_EQ(cuentas("43*", ""), "4300000001 4300000002 ");
    EXPECT_EQ(cuentas("", "PEÑA"), "4000000001 4300000001 ") << "in any place and case, by name";
    EXPECT_EQ(cuentas("43*", "peña"), "4300000001 ");
    EXPECT_EQ(cuentas("4300000002", "peña"), "");
    EXPECT_EQ(cuentas("4300000009", ""), "");
}

}  // namespace
}  // namespace tarvoline::pruebas
