// The balances of a company set to what its lines add up to: what a program that ended in the middle of a
// posting, or a lost file, has left wrong.
//
// A posting writes its line first and its totals then, and holds nothing between the two. So the sums are
// only right while nobody posts: both tables of lines are held for this alone from before the first line is
// read until the last total is written. Others who want to open the company meanwhile wait as they do for any
// file in use; when somebody has it open already, nothing is done.
//
// Interrupted at any moment, done again it finishes: what is written is right by itself, column by column.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "data/verificacion_totales.h"

namespace tarvoline::data {

struct Recalculo {
    enum class Fin {
        hecho,          // the totals are right (they may have been before)
        enUso,          // somebody has a table of lines open
        clavesMalas,    // keys of `tabla` disagree with its records: they are to be made anew first
        importesMalos,  // lines of `cambios` have no amount: nothing says what is right
        aMedias,        // an account or column could not be written; `cambios` are those that remain
    };
    Fin fin = Fin::hecho;
    std::string tabla;
    // What is (or was) wrong, as found before anything was written.
    std::vector<DiferenciaTotal> cambios;
};

// Of the company in force. Makes missing parents and analytic accounts as postings do, sets every column of
// PLANC and Costo that disagrees and the totals in the head, and raises the analytic counter to the highest
// number in use. `alEmpezar` sees what is to be changed before the first change. Unless the end is `hecho` or
// `aMedias` nothing was written. Throws platform::ErrorArchivo, ErrorDefinicion, motor::ErrorMotor.
Recalculo recalcular(CapaDatos& capa,
                     const std::function<void(const std::vector<DiferenciaTotal>&)>& alEmpezar,
                     const Progreso& progreso = {});

}  // namespace tarvoline::data
