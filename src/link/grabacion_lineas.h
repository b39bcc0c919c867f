// The lines of an entry on their way to disk, one routine a kind. All throw what the record layer throws; a
// line whose keys were refused is passed over with all that would follow from it, which has been shown.
#pragma once

#include "link/asiento_en_curso.h"
#include "tarvoline/clases.h"

namespace tarvoline::link {

// A line of the journal: the account (made when it is not there), the record, its notes and its PDF, the
// totals.
void grabarApunte(AsientoEnCurso& asiento, const ApunteClass& linea);
// A row of the portfolio.
void grabarCartera(AsientoEnCurso& asiento, const CarteraClass& linea);
// What belongs to the first journal line of its account that has not been divided up; without one it is
// dropped.
void grabarAnalitica(AsientoEnCurso& asiento, const AnaliticaClass& linea);

// Keeps the PDF of a line in the company's folder. Another kind of file is told when the entry has been
// stored; one that is not there is passed over.
void guardarPdf(AsientoEnCurso& asiento, const ApunteClass& linea);

}  // namespace tarvoline::link
