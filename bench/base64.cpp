// Base64 and envelopes at the size of a file piece: what the wire format costs beside the network.
#include <benchmark/benchmark.h>

#include <random>

#include "soap/base64.h"
#include "soap/servidor.h"

namespace {

using namespace tarvoline::soap;

Bytes pieza() {
    std::mt19937 azar(1);
    Bytes bytes(262145);
    for (auto& b : bytes)
        b = static_cast<std::byte>(azar());
    return bytes;
}

void contar(benchmark::State& estado, const Bytes& bytes) {
    estado.SetBytesProcessed(estado.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void codificar(benchmark::State& estado) {
    const Bytes bytes = pieza();
    std::string texto;
    for ([[maybe_unused]] auto _ : estado) {
        texto.clear();
        CodificarBase64(bytes, texto);
        benchmark::DoNotOptimize(texto.data());
    }
    contar(estado, bytes);
}
BENCHMARK(codificar);

void decodificar(benchmark::State& estado) {
    const Bytes bytes = pieza();
    std::string texto;
    CodificarBase64(bytes, texto);
    for ([[maybe_unused]] auto _ : estado)
        benchmark::DoNotOptimize(DecodificarBase64(texto).data());
    contar(estado, bytes);
}
BENCHMARK(decodificar);

// The server's part of one piece of an upload, and of one of a download.
void leerPeticion(benchmark::State& estado) {
    const Contrato contrato{"S", "urn:s", {{"Backup", {{"nombre"}, {"bytes", TipoValor::bytes}}}}};
    const Bytes bytes = pieza();
    std::string xml = "<e:Envelope xmlns:e=\"urn:e\"><e:Body><Backup><nombre>a</nombre><bytes>";
    CodificarBase64(bytes, xml);
    xml += "</bytes></Backup></e:Body></e:Envelope>";
    for ([[maybe_unused]] auto _ : estado)
        benchmark::DoNotOptimize(LeerPeticion(contrato, xml).argumentos.data());
    contar(estado, bytes);
}
BENCHMARK(leerPeticion);

void escribirRespuesta(benchmark::State& estado) {
    const Contrato contrato{"S", "urn:s", {{"Restore", {{"bytes", TipoValor::bytes, true}}}}};
    const Bytes bytes = pieza();
    const PeticionSoap peticion{contrato.operacion("Restore"), {bytes}};
    for ([[maybe_unused]] auto _ : estado) {
        benchmark::DoNotOptimize(EscribirRespuesta(contrato, peticion, "").data());
    }
    contar(estado, bytes);
}
BENCHMARK(escribirRespuesta);

}  // namespace

BENCHMARK_MAIN();
