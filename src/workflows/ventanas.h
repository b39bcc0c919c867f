// The windows that open over the main one, as the workflows ask for them. The floor that has windows fulfils
// it; a test hands in its own.
#pragma once

namespace tarvoline::workflows {

class FormularioConfiguracion;
class Terminos;

class Ventanas {
  public:
    Ventanas() = default;
    Ventanas(const Ventanas&) = delete;
    Ventanas& operator=(const Ventanas&) = delete;
    virtual ~Ventanas() = default;
    // Both are modal and return when the person has closed the window. The forms are borrowed; they hold what
    // the window shows and do what it asks for.
    virtual void frmconfig(FormularioConfiguracion& formulario) = 0;
    virtual void Form1(Terminos& terminos) = 0;
};

}  // namespace tarvoline::workflows
