// A table of 300 lines, sound, and the ways in which it and its keys come to disagree.
#pragma once

#include <filesystem>

#include "data/apoyo_tablas.h"
#include "data/verificacion.h"
#include "motor/carga.h"

namespace tarvoline::pruebas {

// Two marks (256 records each) go into the check.
struct TablaEntera : MundoTablas {
    static constexpr int tabla = data::tabla::extra;
    static constexpr int registros = 300;
    data::Tablas tablas{capa};
    std::shared_ptr<const data::DefinicionTabla> definicion =
        data::definicionDeTabla(*archivos, programa(), ruta());

    // Record 2 is removed.
    TablaEntera() {
        EXPECT_TRUE(abrir(tablas, tabla, "EXTRA"));
        for (int i = 1; i <= registros; ++i)
            anadir(i);
        tablas.BorrarRegistro(tabla, 2);
    }
    void poner(int i) {
        const std::string asiento = std::to_string(100000 + i);
        ponerLinea(tablas, tabla, "C41231", "5700000", asiento, "N." + asiento, "1.5");
    }
    void anadir(int i) {
        poner(i);
        tablas.AnadirRegistro(tabla);
        EXPECT_EQ(tablas.gEstado, 0);
    }
    std::string ruta() const { return datos("EXTRA07.QZD"); }
    std::string rutaClaves() const { return datos("EXTRA07.QZC"); }
    // The keys of record i as they were.
    std::string claves(int i) {
        poner(i);
        return tablas.textosClave(tabla);
    }

    data::Verificacion verificar(const data::AlDiscrepar& alDiscrepar = {}) {
        data::TablaSuelta suelta(*archivos, ruta(), definicion);
        return data::verificarTabla(*archivos, suelta, alDiscrepar);
    }
    std::vector<std::string> frases() {
        std::vector<std::string> todas;
        const auto v = verificar([&](const data::Discrepancia& una) { todas.push_back(data::frase(una)); });
        EXPECT_EQ(v.discrepancias, todas.size());
        return todas;
    }
};

struct Danno {
    const char* nombre;
    void (*hacer)(TablaEntera&);  // may leave the table open
    std::vector<std::string> frases;
    std::vector<std::int64_t> adoptados;
    bool quedaCortado = false;
};

inline void voltear(const std::string& ruta, std::uint64_t posicion) {
    std::fstream archivo(ruta, std::ios::in | std::ios::out | std::ios::binary);
    archivo.seekg(static_cast<std::streamoff>(posicion));
    const int octeto = archivo.get();
    archivo.seekp(static_cast<std::streamoff>(posicion));
    archivo.put(static_cast<char>(octeto ^ 1));
}

inline void alargar(const std::string& ruta, std::string_view bytes) {
    std::ofstream(ruta, std::ios::binary | std::ios::app) << bytes;
}

inline const std::vector<Danno>& dannos() {
    using T = TablaEntera;
    static const std::vector<Danno> todos{
        {"none", [](T&) {}, {}, {}},
        {"table cut",
         [](T& m) { std::filesystem::resize_file(m.ruta(), std::uintmax_t{298} * linea::bytes); },
         {"Registro 299: no está escrito, pero está en las claves con «C41231100299».",
          "Registro 300: no está escrito, pero está en las claves con «C41231100300»."},
         {}},
        {"half a record",
         [](T& m) { alargar(m.ruta(), "C4123"); },
         {"El contador de registros está en 300 y la tabla llega hasta el 301.",
          "Registro 301: está cortado: solo tiene 5 bytes."},
         {},
         true},
        {"a record that the keys do not know",
         [](T& m) { alargar(m.ruta(), m.leer("EXTRA07.QZD").substr(0, linea::bytes)); },
         {"El contador de registros está en 300 y la tabla llega hasta el 301.",
          "Registro 301: no está en ninguna clave."},
         {301}},
        {"keys taken, record not",
         [](T& m) { m.tablas.orden("D\\257\\Y\\2" + m.claves(257)); },
         {"Registro 257: no está en ninguna clave."},
         {257}},
        {"one entry gone",
         [](T& m) { m.tablas.orden("D\\5\\Y\\2\\none\\5700000   C41231\\none"); },
         {"Registro 5: falta en la clave 2 («5700000   C41231»)."},
         {}},
        {"field without its key",
         [](T& m) { m.tablas.GrabarCampo(m.tabla, 7, linea::asiento, "A\tB"); },
         {"Registro 7: la clave 1 lo tiene con «C41231100007» y sus campos dicen «C41231A\\tB»."},
         {}},
        {"two records that changed places",
         [](T& m) {
             m.poner(9);
             m.tablas.EscribirRegistro(m.tabla, 8);
             m.poner(8);
             m.tablas.EscribirRegistro(m.tabla, 9);
         },
         {"Registro 8: la clave 1 lo tiene con «C41231100008» y sus campos dicen «C41231100009».",
          "Registro 8: la clave 3 lo tiene con «100008» y sus campos dicen «100009».",
          "Registro 9: la clave 1 lo tiene con «C41231100009» y sus campos dicen «C41231100008».",
          "Registro 9: la clave 3 lo tiene con «100009» y sus campos dicen «100008»."},
         {}},
        {"keys without their record",
         [](T& m) { m.tablas.orden("I\\2" + m.claves(301)); },
         {"Registro 301: no está escrito, pero está en las claves con «C41231100301»."},
         {}},
        {"removed, keys not",
         [](T& m) {
             m.tablas.orden("D\\10\\Y\\2\\none" + m.claves(10).substr(m.claves(10).find('\\', 1)));
             m.tablas.blanquear(m.tabla);
             m.tablas.ponerCampo(m.tabla, 1, "ANULAD");
             m.tablas.ponerCampo(m.tabla, 2, "O");
             m.tablas.EscribirRegistro(m.tabla, 10);
         },
         {"Registro 10: está anulado, pero está en la clave 1 con «C41231100010»."},
         {}},
        {"entries too many",
         [](T& m) {
             m.tablas.CerrarTodo();
             auto abierto = motor::ArchivoClaves::abrir(*m.archivos, m.rutaClaves());
             motor::LoteEntradas lote{{{"twice", 11}, {"nobody", 9999}}, {}, {}};
             motor::cargarLote(*abierto.archivo, lote, 0);
         },
         {"Registro 9999: no está escrito, pero está en la clave 1 con «nobody».",
          "Registro 11: la clave 1 lo tiene además con «twice»."},
         {}},
        {"no key file",
         [](T& m) { std::filesystem::remove(m.rutaClaves()); },
         {"Falta el archivo de claves."},
         {}},
        {"both heads broken",
         [](T& m) {
             voltear(m.rutaClaves(), 3600);
             voltear(m.rutaClaves(), 7700);
         },
         {"El archivo de claves está dañado o no se puede abrir."},
         {}},
        {"keys of another definition",
         [](T& m) {
             std::filesystem::remove(m.rutaClaves());
             motor::ArchivoClaves::crear(*m.archivos, m.rutaClaves(), 12, 2);
         },
         {"El archivo de claves es de otra definición: tiene 2 de hasta 12 caracteres y debería tener 3 de "
          "hasta 16 caracteres."},
         {}},
    };
    return todos;
}

}  // namespace tarvoline::pruebas
