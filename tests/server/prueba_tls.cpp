// With a certificate: calls go over TLS only, and the plain port says where.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>

#include "core/texto.h"
#include "server/servicio_prueba.h"
#include "soap/cliente.h"

namespace tarvoline {
namespace {

template <auto liberar>
struct Liberador {
    template <typename T>
    void operator()(T* cosa) const {
        liberar(cosa);
    }
};

// A certificate for 127.0.0.1 that signs itself, good for a day.
void hacerCertificado(const std::string& rutaCertificado, const std::string& rutaClave) {
    const std::unique_ptr<EVP_PKEY, Liberador<EVP_PKEY_free>> clave(EVP_EC_gen("P-256"));
    const std::unique_ptr<X509, Liberador<X509_free>> certificado(X509_new());
    X509_set_version(certificado.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificado.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificado.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificado.get()), 86400);
    X509_set_pubkey(certificado.get(), clave.get());
    X509_NAME* const nombre = X509_get_subject_name(certificado.get());
    X509_NAME_add_entry_by_txt(nombre, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("prueba"),
                               -1, -1, 0);
    X509_set_issuer_name(certificado.get(), nombre);
    const std::unique_ptr<X509_EXTENSION, Liberador<X509_EXTENSION_free>> direccion(
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, "IP:127.0.0.1"));
    X509_add_ext(certificado.get(), direccion.get(), -1);
    X509_sign(certificado.get(), clave.get(), EVP_sha256());
    const std::unique_ptr<FILE, Liberador<std::fclose>> salida(std::fopen(rutaCertificado.c_str(), "w"));
    PEM_write_X509(salida.get(), certificado.get());
    const std::unique_ptr<FILE, Liberador<std::fclose>> salidaClave(std::fopen(rutaClave.c_str(), "w"));
    PEM_write_PrivateKey(salidaClave.get(), clave.get(), nullptr, nullptr, 0, nullptr, nullptr);
}

TEST(ServicioTls, CallsGoOverTlsOnly) {
    pruebas::CarpetaPrueba carpeta;
    server::OpcionesServicio opciones;
    opciones.certificado = carpeta.ruta("cert.pem");
    opciones.claveCertificado = carpeta.ruta("clave.pem");
    hacerCertificado(opciones.certificado, opciones.claveCertificado);
    const std::string& certificado = opciones.certificado;
    pruebas::ServicioEnMarcha servicio(opciones);

    // In clear only the contract is had, and it points to the other port.
    pruebas::ClientePrueba llano = servicio.cliente();
    EXPECT_THROW(llano.con("DatosUsuario"), pruebas::FalloSoap);
    const std::string seguro = "https://127.0.0.1:" + std::to_string(servicio.servicio->puertoTls());
    EXPECT_THAT(llano.http().Get("/qzbackup/service.asmx?wsdl")->body,
                testing::HasSubstr("\"" + seguro + "/qzbackup/service.asmx\""));

    soap::Conexion conexion({.certificados = certificado});
    soap::ClienteSoap cliente(conexion);
    cliente.Iniciar(core::Sustituir(servicio.servicio->url(), "/qzback/", "/qzbackup/"));
    const auto credencial = [&] {
        return core::CodificarClave(cliente.Llamar("DTS", {}) + "secreta1", core::fuenteAleatoria());
    };
    const std::string contenido = pruebas::relleno(262145);
    const auto* const octetos = reinterpret_cast<const std::byte*>(contenido.data());
    const soap::Bytes bytes(octetos, octetos + contenido.size());
    std::vector<soap::Valor> subida{"ANA",      credencial(), "AC01", "DATOS",
                                    "PERSONAL", "x",          bytes,  std::int32_t{1}};
    EXPECT_EQ(cliente.Llamar("Backup", subida), "");
    std::vector<soap::Valor> bajada{"ANA",           credencial(),         "DATOS",      "PERSONAL", "x",
                                    std::int32_t{1}, std::int32_t{262145}, soap::Bytes{}};
    EXPECT_EQ(cliente.Llamar("Restore", bajada), "");
    EXPECT_EQ(std::get<soap::Bytes>(bajada[7]), bytes);

    const auto fallo = [&](soap::OpcionesTransporte transporte, const std::string& url) -> std::string {
        soap::Conexion otra(std::move(transporte));
        soap::ClienteSoap desconfiado(otra);
        try {
            desconfiado.Iniciar(url);
            desconfiado.Llamar("DTS", {});
        } catch (const soap::ErrorServicio& error) {
            return error.what();
        }
        return {};
    };
    const std::string rechazo = "el certificado del servidor no es de confianza";
    const std::string ruta = "/qzback/service.asmx?wsdl";
    EXPECT_EQ(fallo({.certificados = certificado}, seguro + ruta), "");
    EXPECT_EQ(fallo({}, seguro + ruta), rechazo) << "not signed by one of the system's";
    EXPECT_EQ(fallo({}, servicio.servicio->url()), rechazo) << "nor where the contract leads";
    EXPECT_EQ(fallo({.certificados = certificado}, core::Sustituir(seguro, "127.0.0.1", "localhost") + ruta),
              rechazo)
        << "made out to another name";
    EXPECT_EQ(fallo({.certificados = carpeta.ruta("no hay")}, seguro + ruta),
              "no se puede leer el archivo de certificados");

    // A stranger who speaks in clear disturbs nobody; a key of another certificate stops the next start.
    httplib::Client enClaro("127.0.0.1", servicio.servicio->puertoTls());
    EXPECT_FALSE(enClaro.Get(ruta));
    EXPECT_EQ(fallo({.certificados = certificado}, seguro + ruta), "");
    hacerCertificado(carpeta.ruta("otro.pem"), opciones.claveCertificado);
    EXPECT_THROW(pruebas::ServicioEnMarcha otro(opciones), server::ErrorServidor);
}

}  // namespace
}  // namespace tarvoline
