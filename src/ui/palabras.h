// Words of the window that the language table does not hold.
#pragma once

#include <QString>

namespace tarvoline::ui {

// Chooses between the two languages that ship: palabras("Salir", "Quit").
class Palabras {
  public:
    explicit Palabras(bool espanol) : espanol_(espanol) {}
    QString operator()(const char* espanol, const char* ingles) const {
        return QString::fromUtf8(espanol_ ? espanol : ingles);
    }

    bool espanol() const { return espanol_; }

  private:
    bool espanol_;
};

}  // namespace tarvoline::ui
