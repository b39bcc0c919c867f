// What an unattended run did, collected while it works for whoever monitors it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarvoline::core {

// One pending company. A slot that is tried again in the same run keeps one entry, with its last outcome.
struct SlotResultado {
    int ranura = 0;    // number of its EMP key, 1..100
    std::string ruta;  // the company's file
    bool enviada = false;
    std::string texto;  // why it failed; "" when it was sent
};

// The interrupted upload that the run went on with.
struct ReanudacionResultado {
    std::string ruta;  // the archive
    bool enviada = false;
    std::string texto;
};

struct ResumenEjecucion {
    std::optional<ReanudacionResultado> reanudacion;
    std::vector<SlotResultado> empresas;  // in the order of their first try

    void anotar(SlotResultado resultado) {
        for (auto& anterior : empresas) {
            if (anterior.ranura == resultado.ranura && anterior.ruta == resultado.ruta) {
                anterior = std::move(resultado);
                return;
            }
        }
        empresas.push_back(std::move(resultado));
    }
};

}  // namespace tarvoline::core
