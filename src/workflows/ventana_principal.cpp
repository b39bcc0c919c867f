#include "workflows/ventana_principal.h"

namespace tarvoline::workflows {

void VentanaPrincipal::cargar() {}
void VentanaPrincipal::activar() {}
void VentanaPrincipal::ButtonClick(int, int) {}
void VentanaPrincipal::Picture2_Click(Imagen) {}
void VentanaPrincipal::elegirVista(int) {}
void VentanaPrincipal::Imgcapacidad_Click() {}
void VentanaPrincipal::Label4_Click() {}
void VentanaPrincipal::Label6_Click() {}
void VentanaPrincipal::DeshabilitarFrm(bool) {}

}  // namespace tarvoline::workflows
