#include "browser/EscritorZip.hpp"

#include <zlib.h>

#include <array>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace atipicos {

namespace {

    constexpr std::uint16_t version = 20; // deflated parts
    constexpr std::uint16_t modo = 0x0808; // sizes behind the part, names in UTF-8
    constexpr std::uint16_t empaquetada = 8; // by deflate
    constexpr std::uint32_t un_dia = 0x0021'0000; // 1 January 1980, midnight: the same list is the same file

    /// The smallest effort packs sheets half as well again as the greatest, in a fifth of its time.
    constexpr int esfuerzo = 3;

    /// Little-endian numbers one after the other.
    class Cabecera {
    public:
        Cabecera& dos(std::uint64_t valor) { return pon(valor, 2); }
        Cabecera& cuatro(std::uint64_t valor) { return pon(valor, 4); }
        [[nodiscard]] const std::string& bytes() const noexcept { return m_bytes; }

    private:
        Cabecera& pon(std::uint64_t valor, int cuantos)
        {
            for (; cuantos > 0; --cuantos, valor >>= 8U)
                m_bytes += static_cast<char>(valor & 0xFFU);
            return *this;
        }

        std::string m_bytes;
    };

}

struct EscritorZip::Compresor {
    Compresor()
    {
        if (deflateInit2(&corriente, esfuerzo, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    Compresor(const Compresor&) = delete;
    Compresor& operator=(const Compresor&) = delete;
    ~Compresor() { deflateEnd(&corriente); }

    z_stream corriente{};
};

EscritorZip::EscritorZip(std::ostream& salida)
    : m_salida(salida)
{
}

EscritorZip::~EscritorZip() = default;

void EscritorZip::pon(std::string_view bytes)
{
    m_escrito += bytes.size();
    if (m_escrito > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("zip");
    m_salida.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void EscritorZip::empieza(std::string nombre)
{
    m_compresor = std::make_unique<Compresor>();
    auto& parte = m_partes.emplace_back();
    parte.nombre = std::move(nombre);
    parte.comienzo = static_cast<std::uint32_t>(m_escrito);
    Cabecera local;
    local.cuatro(0x0403'4B50)
        .dos(version)
        .dos(modo)
        .dos(empaquetada)
        .cuatro(un_dia)
        .cuatro(0)
        .cuatro(0)
        .cuatro(0);
    local.dos(parte.nombre.size()).dos(0);
    pon(local.bytes() + parte.nombre);
}

void EscritorZip::escribe(std::string_view contenido)
{
    auto& parte = m_partes.back();
    parte.tamano += contenido.size();
    if (parte.tamano > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("zip");
    parte.crc = static_cast<std::uint32_t>(
        crc32_z(parte.crc, reinterpret_cast<const unsigned char*>(contenido.data()), contenido.size()));
    comprime(contenido, false);
}

void EscritorZip::comprime(std::string_view contenido, bool fin)
{
    auto& corriente = m_compresor->corriente;
    // zlib takes what it only reads as if it could be written
    corriente.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(contenido.data()));
    corriente.avail_in = static_cast<unsigned>(contenido.size());
    std::array<char, 16'384> empaquetado; // written before it is read
    do {
        corriente.next_out = reinterpret_cast<unsigned char*>(empaquetado.data());
        corriente.avail_out = empaquetado.size();
        deflate(&corriente, fin ? Z_FINISH : Z_NO_FLUSH);
        const std::string_view hecho(empaquetado.data(), empaquetado.size() - corriente.avail_out);
        m_partes.back().empaquetado += hecho.size();
        pon(hecho);
    } while (corriente.avail_out == 0);
}

void EscritorZip::termina_parte()
{
    comprime({}, true);
    m_compresor.reset();
    const auto& parte = m_partes.back();
    pon(Cabecera()
            .cuatro(0x0807'4B50)
            .cuatro(parte.crc)
            .cuatro(parte.empaquetado)
            .cuatro(parte.tamano)
            .bytes());
}

void EscritorZip::termina()
{
    const auto comienzo = m_escrito;
    for (const auto& parte : m_partes) {
        Cabecera entrada;
        entrada.cuatro(0x0201'4B50).dos(version).dos(version).dos(modo).dos(empaquetada).cuatro(un_dia);
        entrada.cuatro(parte.crc).cuatro(parte.empaquetado).cuatro(parte.tamano);
        entrada.dos(parte.nombre.size()).dos(0).dos(0).dos(0).dos(0).cuatro(0).cuatro(parte.comienzo);
        pon(entrada.bytes() + parte.nombre);
    }
    const auto directorio = m_escrito - comienzo;
    Cabecera final;
    final.cuatro(0x0605'4B50).dos(0).dos(0).dos(m_partes.size()).dos(m_partes.size());
    final.cuatro(directorio).cuatro(comienzo).dos(0);
    pon(final.bytes());
}

} // namespace atipicos
