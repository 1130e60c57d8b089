#include "host/reclamaciones/Huella.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Error.hpp"

#include <openssl/evp.h>

#include <cstring>

namespace atipicos::app {

namespace {

    void exige(int resultado)
    {
        if (resultado != 1)
            throw Error(no_hecho, "atipicos", "No se pudo calcular la huella del fichero.");
    }

}

void Huella::Libera::operator()(evp_md_ctx_st* contexto) const noexcept { EVP_MD_CTX_free(contexto); }

Huella::Huella()
    : m_contexto(EVP_MD_CTX_new())
{
    exige(m_contexto ? EVP_DigestInit_ex(m_contexto.get(), EVP_sha256(), nullptr) : 0);
}

void Huella::agrega(std::string_view trozo)
{
    exige(EVP_DigestUpdate(m_contexto.get(), trozo.data(), trozo.size()));
}

std::string Huella::texto()
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> resumen{};
    unsigned tamano = 0;
    exige(EVP_DigestFinal_ex(m_contexto.get(), resumen.data(), &tamano));
    static constexpr std::string_view cifras = "0123456789abcdef";
    std::string texto;
    for (unsigned i = 0; i < tamano; ++i) {
        texto += cifras[resumen[i] >> 4];
        texto += cifras[resumen[i] & 0xf];
    }
    return texto;
}

Resumen resumen_de(std::string_view texto)
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> entero{};
    exige(EVP_Digest(texto.data(), texto.size(), entero.data(), nullptr, EVP_sha256(), nullptr));
    Resumen mitad{};
    std::memcpy(mitad.data(), entero.data(), sizeof mitad);
    return mitad;
}

} // namespace atipicos::app
