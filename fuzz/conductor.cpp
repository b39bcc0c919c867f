// Drives a fuzz entry without a fuzzer: every file of a corpus folder, then seeded mutations of them.
//
//     fuzz_x ROUNDS FOLDER [SEED]
//
// The seed is printed; a run with the same seed does the same. A crash or an exception that leaves the entry
// is the failure. The input under way lies in fuzz_x.entrada (beside the working directory's files) until the
// run ends well, so that a crash can be looked into.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t longitud);

namespace {

using Azar = std::mt19937_64;

std::vector<std::string> leerCorpus(const std::filesystem::path& carpeta) {
    std::vector<std::filesystem::path> rutas;
    for (const auto& entrada : std::filesystem::directory_iterator(carpeta))
        rutas.push_back(entrada.path());
    std::sort(rutas.begin(), rutas.end());
    std::vector<std::string> corpus;
    for (const auto& ruta : rutas) {
        std::ifstream archivo(ruta, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(archivo), std::istreambuf_iterator<char>());
    }
    return corpus;
}

std::size_t hasta(Azar& azar, std::size_t tope) {
    return tope == 0 ? 0 : static_cast<std::size_t>(azar() % tope);
}

// One small change: a bit, a byte, a piece dropped, doubled, or taken from another input.
void alterar(std::string& entrada, const std::string& otra, Azar& azar) {
    const std::size_t lugar = hasta(azar, entrada.size());
    const std::size_t tramo = hasta(azar, 1 + (entrada.size() - lugar) / 2);
    switch (azar() % 6) {
        case 0:
            if (!entrada.empty()) entrada[lugar] = static_cast<char>(entrada[lugar] ^ (1 << azar() % 8));
            break;
        case 1:
            if (!entrada.empty()) entrada[lugar] = static_cast<char>(azar());
            break;
        case 2:
            entrada.erase(lugar, tramo);
            break;
        case 3:
            entrada.insert(lugar, entrada.substr(lugar, tramo));
            break;
        case 4:
            entrada.insert(lugar, otra.substr(hasta(azar, otra.size()), tramo));
            break;
        default:
            entrada.resize(lugar);
            break;
    }
}

void probar(const std::string& entrada, const std::string& huella) {
    std::ofstream(huella, std::ios::binary | std::ios::trunc) << entrada;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(entrada.data()), entrada.size());
}

}  // namespace

int main(int cuantos, char** argumentos) {
    if (cuantos < 3) return EXIT_FAILURE;
    const auto corpus = leerCorpus(argumentos[2]);
    if (corpus.empty()) {
        std::cerr << "no corpus in " << argumentos[2] << '\n';
        return EXIT_FAILURE;
    }
    const std::uint64_t semilla = cuantos > 3 ? std::strtoull(argumentos[3], nullptr, 10) : 1;
    const std::string huella = std::filesystem::path(argumentos[0]).filename().string() + ".entrada";
    std::cout << "seed " << semilla << ", " << corpus.size() << " inputs" << std::endl;
    for (const auto& entrada : corpus)
        probar(entrada, huella);
    Azar azar(semilla);
    const long vueltas = std::strtol(argumentos[1], nullptr, 10);
    for (long i = 0; i < vueltas; ++i) {
        std::string entrada = corpus[hasta(azar, corpus.size())];
        for (std::uint64_t cambios = 1 + azar() % 4; cambios > 0; --cambios) {
            alterar(entrada, corpus[hasta(azar, corpus.size())], azar);
        }
        probar(entrada, huella);
    }
    std::filesystem::remove(huella);
    return EXIT_SUCCESS;
}
