#include "motor/escritura.h"

#include <algorithm>
#include <limits>
#include <random>

#include "motor/lista_libres.h"

namespace tarvoline::motor {

namespace {

// The head has room for more runs of free pages; but every commit looks through them and writes them.
constexpr std::size_t tramosHolgados = 160;
static_assert(tramosHolgados <= maxTramos);
// So many go to a list at once.
constexpr std::size_t tramosPorLista = 120;
static_assert(tramosPorLista <= maxTramosLista);

constexpr std::size_t bytesMayorTanda = std::size_t{256} * 1024;

std::span<const std::byte> bytesDe(const Octeto* datos, std::size_t cuantos) {
    return std::as_bytes(std::span(datos, cuantos));
}

}  // namespace

Escritura::Escritura(ArchivoClaves& archivo, const std::function<void()>& mientras)
    : archivo_(archivo),
      turno_(*archivo.archivo_, platform::TipoBloqueo::exclusivo, !archivo.sinTurno_, mientras),
      libres_(archivo.libres_),
      reservas_(archivo.taller_.reservas),
      sucias_(archivo.taller_.sucias),
      liberadas_(archivo.taller_.liberadas),
      tanda_(archivo.taller_.tanda) {
    for (auto& una : reservas_)
        una.clear();
    sucias_.clear();
    liberadas_.clear();
    if (archivo.fallida_) throw ErrorMotor("el archivo de claves está dañado o falló mientras se escribía");
    archivo.refrescar();
    archivo.cargarLibres();
    archivo.cache_.recortar();
    nueva_ = archivo.cabecera_;
    if (!archivo.azar_) archivo.azar_ = std::random_device()() & ((1U << bitsAzar) - 1);
    nueva_.sello = ((numeroDe(nueva_.sello) + 1) << bitsAzar) | *archivo.azar_;
}

Escritura::~Escritura() {
    if (confirmada_) return;
    for (const std::uint32_t numero : sucias_)
        archivo_.cache_.olvidar(numero);
    archivo_.libresDe_ = 0;
    archivo_.azar_.reset();
}

void Escritura::prever(unsigned hojas, unsigned interiores) {
    if (hojas > 0) conseguir(hojas, Para::hojas);
    if (interiores > 0) conseguir(interiores, Para::interiores);
}

const Pagina& Escritura::leer(const Hijo& hijo, unsigned clave, unsigned nivel) {
    return archivo_.pagina(hijo, clave, nivel);
}

Pagina& Escritura::propia(Hijo& hijo, unsigned clave, unsigned nivel) {
    const Pagina& antes = leer(hijo, clave, nivel);
    // The copies in the cache are this object's to change once their seal is this commit's.
    if (hijo.sello == nueva_.sello) return const_cast<Pagina&>(antes);
    liberadas_.push_back({hijo.pagina, 1});
    Pagina& copia = nueva(hijo, nivel);
    std::memcpy(copia.datos.data(), antes.datos.data(), leerEntero<std::uint16_t>(antes.datos.data() + 4));
    ponerEntero(copia.datos.data() + 8, nueva_.sello);
    return copia;
}

Pagina& Escritura::nueva(Hijo& hijo, unsigned nivel) {
    hijo = {asignar(nivel), nueva_.sello};
    sucias_.push_back(hijo.pagina);
    Pagina& pagina = archivo_.cache_.preparar(hijo.pagina, hijo.sello);
    ponerEntero(pagina.datos.data() + 8, nueva_.sello);
    return pagina;
}

void Escritura::liberar(const Hijo& hijo) {
    if (hijo.sello != nueva_.sello) {
        liberadas_.push_back({hijo.pagina, 1});
        return;
    }
    std::erase(sucias_, hijo.pagina);
    archivo_.cache_.olvidar(hijo.pagina);
    reserva(Para::hojas).push_back(hijo.pagina);
}

void Escritura::liberarTodo() {
    nueva_.raices = {};
    nueva_.lista = {};
    nueva_.enLista = 0;
    todoLibre_ = true;
}

std::uint32_t Escritura::asignar(unsigned nivel) {
    const Para para = nivel == 0 ? Para::hojas : Para::interiores;
    auto& suya = reserva(para);
    if (suya.empty()) conseguir(1, para);
    // The higher up a page stands the sooner it is written again: those of a level leave their places
    // together.
    const auto sitio = nivel > 1 ? suya.end() - 1 : suya.begin();
    const std::uint32_t pagina = *sitio;
    suya.erase(sitio);
    return pagina;
}

// Pages in one run make one write. Where none is long enough the file grows, unless two fifths of it are
// free.
void Escritura::conseguir(std::uint32_t cuantas, Para para) {
    auto& suya = reserva(para);
    const auto tomar = [&](std::uint32_t primera) {
        for (std::uint32_t i = 0; i < cuantas; ++i)
            suya.push_back(primera + i);
    };
    if (const std::uint32_t primera = libres_.tomarSeguidas(cuantas, para); primera != 0) {
        tomar(primera);
        return;
    }
    const std::uint64_t libres = libres_.total() + nueva_.enLista;
    if (libres < cuantas || 5 * libres < 2 * std::uint64_t{nueva_.marca}) {
        tomar(alargar(cuantas));
        return;
    }
    while (libres_.total() < cuantas && nueva_.lista.pagina != 0)
        sacarDeLista();
    const std::size_t antes = suya.size();
    libres_.tomarSueltas(cuantas, para, suya);
    if (suya.size() < antes + cuantas) {
        throw Danno("la lista de páginas libres del archivo de claves es más corta de lo que dice");
    }
}

std::uint32_t Escritura::alargar(std::uint32_t cuantas) {
    if (nueva_.marca > std::numeric_limits<std::uint32_t>::max() - cuantas) {
        throw ErrorMotor("el archivo de claves está lleno");
    }
    const std::uint32_t primera = nueva_.marca;
    nueva_.marca += cuantas;
    return primera;
}

void Escritura::sacarDeLista() {
    ListaLibres lista = leerLista(leer(nueva_.lista, 0, nivelLibres));
    std::uint64_t total = 0;
    for (const Tramo& tramo : lista.tramos)
        total += tramo.cuantas;
    if (total == 0 || total > nueva_.enLista) throw Danno("una lista de páginas libres está dañada");
    liberadas_.push_back({nueva_.lista.pagina, 1});
    nueva_.lista = lista.siguiente;
    nueva_.enLista -= static_cast<std::uint32_t>(total);
    libres_.devolver(lista.tramos);
}

// Of the pages that this commit frees, those that the map does not show.
std::size_t Escritura::tramosQueVuelven() const {
    return static_cast<std::size_t>(std::ranges::count_if(liberadas_, [](const Tramo& tramo) {
        return tramo.pagina + tramo.cuantas > primeraPagina + paginasDelMapa;
    }));
}

// From here on the free pages are those of the head to be.
void Escritura::ordenarLibres() {
    if (todoLibre_) {
        libres_.poner({});
        if (nueva_.marca > primeraPagina) libres_.devolver({{primeraPagina, nueva_.marca - primeraPagina}});
        return;
    }
    for (auto& una : reservas_) {
        for (const std::uint32_t pagina : una)
            liberadas_.push_back({pagina, 1});
        una.clear();
    }
    // Lists take their pages before those that this commit frees come in (2).
    std::vector<std::uint32_t> paraListas;
    const auto sobran = [&] {
        const std::size_t caben = tramosHolgados + paraListas.size() * (tramosPorLista - 1);
        return libres_.huecos().tramos.size() + tramosQueVuelven() > caben;
    };
    while (sobran()) {
        conseguir(1, Para::interiores);
        paraListas.push_back(reserva(Para::interiores).back());
        reserva(Para::interiores).pop_back();
    }
    libres_.devolver(liberadas_);
    for (const std::uint32_t pagina : paraListas) {
        if (!libres_.huecos().tramos.empty()) {
            guardarEnLista(pagina);
            continue;
        }
        std::vector<Tramo> vuelve{{pagina, 1}};
        libres_.devolver(vuelve);
    }
}

void Escritura::guardarEnLista(std::uint32_t numero) {
    const ListaLibres lista{nueva_.lista, libres_.apartar(tramosPorLista)};
    for (const Tramo& tramo : lista.tramos)
        nueva_.enLista += tramo.cuantas;
    sucias_.push_back(numero);
    ponerLista(lista, nueva_.sello, archivo_.cache_.preparar(numero, nueva_.sello));
    nueva_.lista = {numero, nueva_.sello};
}

void Escritura::escribirPaginas() {
    std::sort(sucias_.begin(), sucias_.end());
    constexpr std::size_t mayor = bytesMayorTanda / bytesPagina;
    for (std::size_t desde = 0; desde < sucias_.size();) {
        std::size_t hasta = desde + 1;
        while (hasta < sucias_.size() && hasta - desde < mayor && sucias_[hasta] == sucias_[hasta - 1] + 1)
            ++hasta;
        escribirTanda(desde, hasta);
        desde = hasta;
    }
}

void Escritura::escribirTanda(std::size_t desde, std::size_t hasta) {
    tanda_.resize((hasta - desde) * bytesPagina);
    for (std::size_t i = desde; i < hasta; ++i) {
        Octeto* const datos = archivo_.cache_.buscar(sucias_[i], nueva_.sello)->datos.data();
        ponerEntero(datos, sumaDePagina(datos, sucias_[i], nueva_.archivo));
        const std::size_t usados = leerEntero<std::uint16_t>(datos + 4);
        Octeto* const sitio = tanda_.data() + (i - desde) * bytesPagina;
        std::memcpy(sitio, datos, usados);
        std::memset(sitio + usados, 0, bytesPagina - usados);
    }
    archivo_.archivo_->escribir(posicionDePagina(sucias_[desde]), bytesDe(tanda_.data(), tanda_.size()));
}

void Escritura::escribirCabecera() {
    std::array<Octeto, bytesCabecera> bytes;
    const std::size_t comienzo = codificarCabecera(nueva_, libres_.huecos(), bytes.data());
    archivo_.fallida_ = true;
    archivo_.archivo_->escribir(nueva_.lugar() * bytesCabecera + comienzo,
                                bytesDe(bytes.data() + comienzo, bytes.size() - comienzo));
    archivo_.fallida_ = false;
}

void Escritura::confirmar() {
    ordenarLibres();
    escribirPaginas();
    escribirCabecera();
    confirmada_ = true;
    archivo_.cabecera_ = nueva_;
    archivo_.libresDe_ = nueva_.sello;
}

}  // namespace tarvoline::motor
