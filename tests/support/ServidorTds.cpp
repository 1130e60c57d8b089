#include "tests/support/ServidorTds.hpp"

#include "runtime/Unicode.hpp"
#include "tests/support/ControladorOdbc.hpp"

#include <array>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

namespace atipicos::pruebas {

namespace {

    constexpr std::uint8_t lote = 0x01; // kinds of packets
    constexpr std::uint8_t respuesta = 0x04;
    constexpr std::uint8_t entrada = 0x10;
    constexpr std::uint8_t saludo = 0x12;

    std::string de_pocas(std::uint64_t valor, std::size_t bytes) // the lowest one first
    {
        std::string texto;
        for (std::size_t i = 0; i < bytes; ++i)
            texto += static_cast<char>(valor >> (8 * i));
        return texto;
    }

    std::string ancho(const std::string& texto)
    {
        std::string bytes;
        for (const char16_t letra : a_utf16(texto))
            bytes += de_pocas(letra, 2);
        return bytes;
    }

    std::string con_largo(const std::string& texto, std::size_t bytes)
    {
        return de_pocas(static_cast<std::uint32_t>(a_utf16(texto).size()), bytes) + ancho(texto);
    }

    std::string hecho(std::uint16_t estado)
    {
        return "\xFD" + de_pocas(estado, 2) + de_pocas(0, 2) + de_pocas(0, 8);
    }

    std::string fallo(std::int32_t numero)
    {
        const auto cuerpo = de_pocas(static_cast<std::uint32_t>(numero), 4) + "\x01\x10"
            + con_largo("failure " + std::to_string(numero), 2) + con_largo("uno", 1) + con_largo("", 1)
            + de_pocas(1, 4);
        return "\xAA" + de_pocas(static_cast<std::uint32_t>(cuerpo.size()), 2) + cuerpo + hecho(2);
    }

    std::string admitida()
    {
        const auto cuerpo = std::string("\x01\x74\x00\x00\x04", 5) + con_largo("Microsoft SQL Server", 1)
            + std::string("\x10\x00\x10\x00", 4);
        return "\xAD" + de_pocas(static_cast<std::uint32_t>(cuerpo.size()), 2) + cuerpo + hecho(0);
    }

    /// A version, and that nothing is to be encrypted.
    std::string saluda()
    {
        return std::string("\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF", 11)
            + std::string("\x10\x00\x10\x00\x00\x00\x02", 7);
    }

    std::uint8_t byte(const std::string& texto, std::size_t i)
    {
        return static_cast<std::uint8_t>(texto.at(i));
    }
    std::size_t dos_bytes(const std::string& texto, std::size_t i)
    {
        return byte(texto, i) + std::size_t{ 256 } * byte(texto, i + 1);
    }

    std::string de_ancho(const std::string& bytes)
    {
        std::u16string letras;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            letras += static_cast<char16_t>(dos_bytes(bytes, i));
        return a_utf8(letras);
    }

    bool lee(int cliente, std::string& destino, std::size_t cuantos)
    {
        const auto antes = destino.size();
        destino.resize(antes + cuantos);
        for (std::size_t leidos = 0; leidos < cuantos;) {
            const auto parte = read(cliente, destino.data() + antes + leidos, cuantos - leidos);
            if (parte <= 0)
                return false;
            leidos += static_cast<std::size_t>(parte);
        }
        return true;
    }

}

ServidorTds::ServidorTds()
    : m_oyente([this](int cliente) { conversa(cliente); })
{
}

std::string ServidorTds::falta()
{
    if (std::getenv("ATIPICOS_TEST_FREETDS") != nullptr)
        return {};
    const auto registrado = falta_controlador("FreeTDS", "tdsodbc");
    return registrado.empty() ? "" : registrado + ", or set ATIPICOS_TEST_FREETDS to the path of its driver";
}

std::string ServidorTds::cadena() const
{
    const char* camino = std::getenv("ATIPICOS_TEST_FREETDS");
    return "DRIVER=" + (camino == nullptr ? std::string("{FreeTDS}") : std::string(camino))
        + ";SERVER=127.0.0.1;PORT=" + std::to_string(m_oyente.puerto())
        + ";TDS_Version=7.4;ClientCharset=UTF-8";
}

std::vector<ServidorTds::Entrada> ServidorTds::entradas() const
{
    const std::scoped_lock cerrado(m_cerrojo);
    return m_entradas;
}

void ServidorTds::falla(const std::string& comienzo, std::int32_t numero)
{
    const std::scoped_lock cerrado(m_cerrojo);
    m_fallos[comienzo] = numero;
}

void ServidorTds::calla_ante(const std::string& comienzo)
{
    const std::scoped_lock cerrado(m_cerrojo);
    m_calla = comienzo;
}

/// Packets have a head of eight bytes: kind, whether it is the last one, length (the highest byte first).
void ServidorTds::conversa(int cliente)
{
    bool callada = false;
    for (std::string contenido;;) {
        std::string cabeza;
        if (!lee(cliente, cabeza, 8)
            || !lee(cliente, contenido, 256U * byte(cabeza, 2) + byte(cabeza, 3) - 8U))
            return;
        if ((byte(cabeza, 1) & 1U) == 0)
            continue;
        auto dicho = responde(byte(cabeza, 0), contenido, callada);
        contenido.clear();
        if (callada)
            continue;
        const auto largo = static_cast<std::uint32_t>(dicho.size() + 8);
        dicho.insert(0,
            std::string{ static_cast<char>(respuesta), 1, static_cast<char>(largo >> 8U),
                static_cast<char>(largo), 0, 0, 1, 0 });
        if (send(cliente, dicho.data(), dicho.size(), MSG_NOSIGNAL) < 0)
            return;
    }
}

std::string ServidorTds::responde(std::uint8_t clase, const std::string& contenido, bool& callada)
{
    if (clase == saludo)
        return saluda();
    if (clase == entrada)
        return entra(contenido);
    if (clase != lote)
        return hecho(0x20); // something was called off
    // Headers, whose length stands first, come before the text.
    const auto sql = de_ancho(contenido.substr(dos_bytes(contenido, 0)));
    const std::scoped_lock cerrado(m_cerrojo);
    callada = callada || (!m_calla.empty() && sql.starts_with(m_calla));
    for (const auto& [comienzo, numero] : m_fallos)
        if (!comienzo.empty() && sql.starts_with(comienzo))
            return fallo(numero);
    return hecho(0);
}

std::string ServidorTds::entra(const std::string& contenido)
{
    const auto campo = [&](std::size_t lugar) {
        return contenido.substr(dos_bytes(contenido, lugar), 2 * dos_bytes(contenido, lugar + 2));
    };
    auto clave = campo(44);
    for (auto& letra : clave) { // each byte comes with its halves exchanged, and changed
        const auto uno = static_cast<std::uint8_t>(static_cast<std::uint8_t>(letra) ^ 0xA5U);
        letra = static_cast<char>((uno << 4U) | (uno >> 4U));
    }
    const std::scoped_lock cerrado(m_cerrojo);
    m_entradas.push_back({ de_ancho(campo(40)), de_ancho(clave), de_ancho(campo(68)) });
    const auto lugar = m_fallos.find("");
    return lugar == m_fallos.end() ? admitida() : fallo(lugar->second);
}

} // namespace atipicos::pruebas
