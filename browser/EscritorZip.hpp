#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos {

/// Writes a ZIP file from its first byte to its last: parts are packed as they come, nothing is held and
/// nothing is gone back to, so that it can be written into a pipe. Errors of the stream are its owner's.
///
/// What 32 bits cannot count (a part, or all of it, of 4 GiB) raises an `std::length_error`.
class EscritorZip {
public:
    explicit EscritorZip(std::ostream& salida); ///< which outlives it
    EscritorZip(const EscritorZip&) = delete;
    EscritorZip& operator=(const EscritorZip&) = delete;
    ~EscritorZip();

    void empieza(std::string nombre); ///< the next part
    void escribe(std::string_view contenido); ///< more of it
    void termina_parte();
    void termina(); ///< the directory of the parts; nothing comes after it

private:
    struct Parte {
        std::string nombre;
        std::uint32_t comienzo = 0;
        std::uint32_t crc = 0;
        std::uint64_t tamano = 0;
        std::uint64_t empaquetado = 0;
    };
    struct Compresor; ///< of zlib

    void pon(std::string_view bytes);
    void comprime(std::string_view contenido, bool fin);

    std::ostream& m_salida;
    std::vector<Parte> m_partes;
    std::unique_ptr<Compresor> m_compresor;
    std::uint64_t m_escrito = 0;
};

} // namespace atipicos
