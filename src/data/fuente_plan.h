// Readable sources of the charts that a new company may start with, and the table made of one.
//
//     # what the chart is for
//     cuentas de comun.plan
//     57          Tesorería
//     5700000000  Caja, euros
//
// A line: account and title. One to four digits make a parent of that level, ten a subaccount. "cuentas de"
// takes the accounts of another source. The order of the lines is free.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/fuente_lineas.h"
#include "data/tablas.h"

namespace tarvoline::data {

struct CuentaPlan {
    std::string cuenta;
    std::string titulo;  // UTF-8
    int nivel = 0;       // 0: a subaccount

    bool operator==(const CuentaPlan&) const = default;
};

// The accounts by their codes. Throws ErrorFuente: a line of another form, an account given twice or without
// each of its parents, no account at all.
std::vector<CuentaPlan> leerFuentePlan(std::string_view archivo, std::string_view utf8,
                                       const LectorFuente& otra);

// Adds the accounts, with their keys and without amounts, to a table that has the fields of PLANC and is
// open. Throws std::runtime_error when one is not stored.
void grabarPlan(Tablas& tablas, int tabla, const std::vector<CuentaPlan>& cuentas);

}  // namespace tarvoline::data
