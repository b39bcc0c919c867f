#include "link/campos_plan.h"

#include <array>

namespace tarvoline::link {

namespace {

using Importe = double PlanClass::*;
constexpr std::array<Importe, periodosPlan> camposDebe{
    &PlanClass::DebeApertura,   &PlanClass::DebeEnero,          &PlanClass::DebeFebrero,
    &PlanClass::DebeMarzo,      &PlanClass::DebeAbril,          &PlanClass::DebeMayo,
    &PlanClass::DebeJunio,      &PlanClass::DebeJulio,          &PlanClass::DebeAgosto,
    &PlanClass::DebeSeptiembre, &PlanClass::DebeOctubre,        &PlanClass::DebeNoviembre,
    &PlanClass::DebeDiciembre,  &PlanClass::DebeRegularizacion, &PlanClass::DebeCierre};
constexpr std::array<Importe, periodosPlan> camposHaber{
    &PlanClass::HaberApertura,   &PlanClass::HaberEnero,          &PlanClass::HaberFebrero,
    &PlanClass::HaberMarzo,      &PlanClass::HaberAbril,          &PlanClass::HaberMayo,
    &PlanClass::HaberJunio,      &PlanClass::HaberJulio,          &PlanClass::HaberAgosto,
    &PlanClass::HaberSeptiembre, &PlanClass::HaberOctubre,        &PlanClass::HaberNoviembre,
    &PlanClass::HaberDiciembre,  &PlanClass::HaberRegularizacion, &PlanClass::HaberCierre};

}  // namespace

void ponerPeriodo(PlanClass& cuenta, std::size_t periodo, double debe, double haber) {
    cuenta.coldebe[periodo].Importe = cuenta.*camposDebe[periodo] = debe;
    cuenta.colhaber[periodo].Importe = cuenta.*camposHaber[periodo] = haber;
}

}  // namespace tarvoline::link
