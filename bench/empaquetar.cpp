// Packs one made-up company (seeded) with this packer and with others, in one run, and prints speed, size and
// memory of each: empaquetar [megabytes of records [megabytes of images [folder]]].
//
// Needs zip, pigz and 7z; one that is missing is passed over. Every candidate runs in a process of its own.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "zip/zip.h"

namespace {

namespace fs = std::filesystem;
using tarvoline::zip::Zip;

constexpr std::uint64_t mega = std::uint64_t{1} << 20;

unsigned hasta(std::mt19937& azar, unsigned limite) {
    return static_cast<unsigned>(azar()) % limite;
}

std::string relleno(std::string texto, std::size_t ancho) {
    texto.resize(ancho, ' ');
    return texto;
}

// One bookkeeping record of 256 bytes: date, accounts, running number, text, amounts.
std::string apunte(std::mt19937& azar, unsigned numero) {
    static const std::array<const char*, 12> conceptos{
        "N/FRA.",   "S/FRA.",        "COBRO EFECTO",    "PAGO RECIBO",    "NOMINA",       "SEG. SOCIAL",
        "TRASPASO", "IVA SOPORTADO", "IVA REPERCUTIDO", "COMISION BANCO", "AMORTIZACION", "REGULARIZACION"};
    static const std::array<const char*, 8> nombres{"TALLERES GARCIA SL",    "SUMINISTROS DEL NORTE SA",
                                                    "GESTORIA PEREZ",        "TRANSPORTES LOPEZ E HIJOS",
                                                    "ELECTRICA MERIDIONAL",  "PAPELERIA CENTRAL",
                                                    "CONSTRUCCIONES IBAÑEZ", "ALIMENTACION Y BEBIDAS RUIZ"};
    std::array<char, 64> cifras{};
    std::snprintf(cifras.data(), cifras.size(), "%08u2023%02u%02u", numero, 1 + hasta(azar, 12),
                  1 + hasta(azar, 28));
    std::string registro = cifras.data();
    std::snprintf(cifras.data(), cifras.size(), "%04u%08u%04u%08u", 4300 + hasta(azar, 2) * 400,
                  hasta(azar, 1500), 7000 + hasta(azar, 8), hasta(azar, 40));
    registro += cifras.data();
    registro += relleno(
        std::string(conceptos[azar() % conceptos.size()]) + " " + std::to_string(azar() % 100'000), 40);
    registro += relleno(nombres[azar() % nombres.size()], 60);
    std::snprintf(cifras.data(), cifras.size(), "%14u.%02u%14u.%02u", hasta(azar, 900'000), hasta(azar, 100),
                  hasta(azar, 900'000), hasta(azar, 100));
    registro += cifras.data();
    for (int i = 0; i < 8; ++i)
        registro += static_cast<char>(azar());  // binary links to other records
    return relleno(registro, 256);
}

void hacerTabla(const fs::path& ruta, std::uint64_t bytes, std::mt19937& azar) {
    std::ofstream salida(ruta, std::ios::binary);
    unsigned numero = 0;
    for (std::uint64_t van = 0; van < bytes; van += 256)
        salida << apunte(azar, ++numero);
}

void hacerImagen(const fs::path& ruta, std::uint64_t bytes, std::mt19937& azar) {
    std::vector<std::uint32_t> datos(static_cast<std::size_t>(bytes / 4));
    for (auto& dato : datos)
        dato = static_cast<std::uint32_t>(azar());
    std::ofstream(ruta, std::ios::binary)
        .write(reinterpret_cast<const char*>(datos.data()), static_cast<std::streamsize>(datos.size() * 4));
}

void hacerEmpresa(const fs::path& carpeta, std::uint64_t registros, std::uint64_t imagenes) {
    std::mt19937 azar(20240305);
    fs::create_directories(carpeta / "DEMO");
    // A few large tables and many small ones, as companies have them.
    std::uint64_t quedan = registros;
    for (int i = 0; quedan > 0; ++i) {
        const std::uint64_t suya = i < 30 ? std::max<std::uint64_t>(quedan / 4, 64 * 1024) : quedan;
        std::array<char, 32> nombre{};
        std::snprintf(nombre.data(), nombre.size(), "TAB%02d07.QZD", i);
        hacerTabla(carpeta / nombre.data(), std::min(suya, quedan), azar);
        quedan -= std::min(suya, quedan);
    }
    constexpr std::uint64_t porImagen = mega / 2;
    for (std::uint64_t i = 0; i < imagenes / porImagen; ++i) {
        hacerImagen(carpeta / "DEMO" / ("IMG" + std::to_string(i) + ".JPG"), porImagen, azar);
    }
}

// The library that writes our archives, doing its own compression.
int libzipSolo(const fs::path& base, const fs::path& destino) {
    int error = 0;
    zip_t* archivo = zip_open(destino.c_str(), ZIP_CREATE, &error);
    for (const auto& entrada : fs::recursive_directory_iterator(base)) {
        if (!entrada.is_regular_file()) continue;
        zip_source_t* fuente = zip_source_file(archivo, entrada.path().c_str(), 0, -1);
        const auto indice =
            zip_file_add(archivo, fs::relative(entrada.path(), base).c_str(), fuente, ZIP_FL_ENC_UTF_8);
        zip_set_file_compression(archivo, static_cast<zip_uint64_t>(indice), ZIP_CM_DEFLATE, 9);
    }
    return zip_close(archivo);
}

int conZip(const fs::path& base, const fs::path& destino, std::uint64_t presupuesto) {
    const auto archivos = tarvoline::platform::crearSistemaArchivos();
    Zip zip(*archivos);
    zip.destino = destino.string();
    zip.recursivo = true;
    zip.presupuesto = presupuesto;
    return zip.comprimir(base.parent_path().string(), {base.filename().string()});
}

struct Candidato {
    std::string nombre;
    std::function<int(const fs::path& base, const fs::path& destino)> hacer;
};

int orden(const std::string& texto) {
    return std::system(texto.c_str());
}

std::vector<Candidato> candidatos() {
    const auto q = [](const fs::path& ruta) { return "'" + ruta.string() + "'"; };
    return {
        {"zip -9 -r",
         [q](auto& b, auto& d) { return orden("cd " + q(b) + " && zip -9 -r -q " + q(d) + " ."); }},
        {"libzip, level 9", libzipSolo},
        {"pigz -9 (tar)",
         [q](auto& b, auto& d) { return orden("tar -C " + q(b) + " -cf - . | pigz -9 > " + q(d)); }},
        {"tarvoline", [](auto& b, auto& d) { return conZip(b, d, 256 * mega); }},
        {"tarvoline, 16 MiB", [](auto& b, auto& d) { return conZip(b, d, 16 * mega); }},
        {"7z -tzip -mx=9",
         [q](auto& b, auto& d) {
             return orden("cd " + q(b) + " && 7z a -tzip -mx=9 -bd " + q(d) + " . > /dev/null");
         }},
    };
}

struct Medida {
    double segundos = 0;
    std::uint64_t bytes = 0;
    double procesador = 0;  // seconds, of all threads
    long memoria = 0;       // KiB at the peak, of the process and what it started
    bool bien = false;
};

Medida medir(const Candidato& candidato, const fs::path& base, const fs::path& destino) {
    fs::remove(destino);
    const auto antes = std::chrono::steady_clock::now();
    const pid_t hijo = fork();
    if (hijo == 0) _exit(candidato.hacer(base, destino) == 0 ? 0 : 1);
    int estado = 0;
    rusage uso{};
    wait4(hijo, &estado, 0, &uso);
    Medida medida;
    medida.segundos = std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
    medida.memoria = uso.ru_maxrss;
    for (const timeval& tiempo : {uso.ru_utime, uso.ru_stime}) {
        medida.procesador += static_cast<double>(tiempo.tv_sec) + static_cast<double>(tiempo.tv_usec) / 1e6;
    }
    medida.bien = estado == 0 && fs::exists(destino);
    if (medida.bien) medida.bytes = fs::file_size(destino);
    return medida;
}

std::uint64_t bytesDe(const fs::path& carpeta) {
    std::uint64_t total = 0;
    for (const auto& entrada : fs::recursive_directory_iterator(carpeta)) {
        if (entrada.is_regular_file()) total += entrada.file_size();
    }
    return total;
}

void comparar(const std::string& titulo, const fs::path& base, const fs::path& carpeta) {
    const auto total = bytesDe(base);
    std::printf("%s: %.0f MB\n%-20s %8s %8s %8s %8s %9s\n", titulo.c_str(), static_cast<double>(total) / 1e6,
                "", "MB/s", "ratio", "times", "CPU s", "peak MiB");
    double referencia = 0;
    for (const auto& candidato : candidatos()) {
        const Medida medida = medir(candidato, base, carpeta / "salida.zip");
        if (!medida.bien) {
            std::printf("%-20s not available\n", candidato.nombre.c_str());
            continue;
        }
        const double ritmo = static_cast<double>(total) / 1e6 / medida.segundos;
        if (referencia == 0) referencia = ritmo;
        std::printf("%-20s %8.1f %8.4f %8.2f %8.1f %9ld\n", candidato.nombre.c_str(), ritmo,
                    static_cast<double>(medida.bytes) / static_cast<double>(total), ritmo / referencia,
                    medida.procesador, medida.memoria / 1024);
        std::fflush(stdout);
    }
}

}  // namespace

int main(int cuantos, char** argumentos) {
    const std::vector<std::string> args(argumentos, argumentos + cuantos);
    const std::uint64_t registros = (args.size() > 1 ? std::stoull(args[1]) : 200) * mega;
    const std::uint64_t imagenes = (args.size() > 2 ? std::stoull(args[2]) : 50) * mega;
    const fs::path raiz = args.size() > 3 ? fs::path(args[3]) : fs::temp_directory_path();
    const fs::path carpeta = fs::absolute(raiz / ("empaquetar-" + std::to_string(getpid())));
    hacerEmpresa(carpeta / "empresa", registros, imagenes);
    comparar("A company", carpeta / "empresa", carpeta);
    fs::create_directories(carpeta / "grande");
    std::mt19937 azar(1);
    hacerTabla(carpeta / "grande" / "DIARI07.QZD", registros * 3 / 2, azar);
    comparar("One table", carpeta / "grande", carpeta);
    fs::remove_all(carpeta);
    return 0;
}
