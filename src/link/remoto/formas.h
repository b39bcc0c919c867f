// The texts that go to the accounting service: one SOAP argument each. docs/remote-link.md has them all.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvoline::link::remoto {

// Who sends, and on which company. Empty folders and companies are left out.
struct Remite {
    std::string token;    // of the login
    std::string carpeta;  // folder in force
    std::string empresa;  // name of the company
};

// An operation with one text right behind its tag, and one in VALOR when it is not empty.
std::string formaSimple(const Remite& remite, std::string_view operacion, std::string_view texto,
                        std::string_view valor);

// An operation with fields. An item is "NAME=value" or "NAME:value", by whichever comes first; its value ends
// at the next such separator. Empty items are left out.
std::string formaCampos(const Remite& remite, std::string_view operacion,
                        const std::vector<std::string>& elementos);

// An item "NAME:value" whose value may hold colons: they travel as references.
std::string elementoEntero(std::string_view nombre, std::string_view valor);

// The text of a changed field, by position: "13=value" and a tab. "=" in the value becomes "-", tabs and line
// breaks blanks. The value "-1" gives nothing.
std::string cambioDeCampo(int posicion, std::string_view valor);
// The same of a part of so many characters: "13+4=value" and a tab.
std::string cambioDeCampo(int posicion, int longitud, std::string_view valor);

}  // namespace tarvoline::link::remoto
