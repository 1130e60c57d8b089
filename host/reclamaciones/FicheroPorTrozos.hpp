#pragma once

#include "host/reclamaciones/Huella.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::app {

/// A file that is read from its beginning as often as wanted, a piece at a time. What can be read only once,
/// a pipe, is copied into a nameless file first.
class FicheroPorTrozos {
public:
    /// Raises an error that names the file when it is missing, a folder or not readable.
    explicit FicheroPorTrozos(std::filesystem::path fichero);

    void empieza(); ///< from the beginning, at the first reading too

    /// The next piece, which lasts until another is asked for; empty at the end. Only the last one is short.
    [[nodiscard]] std::string_view trozo();

    /// The digest of what this reading has gone through; to be asked for at its end.
    [[nodiscard]] std::string huella() { return m_huella.texto(); }

private:
    /// An open file of the operating system.
    class Descriptor {
    public:
        explicit Descriptor(int numero) noexcept
            : m_numero(numero)
        {
        }
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        ~Descriptor();
        [[nodiscard]] int operator*() const noexcept { return m_numero; }
        void cambia(Descriptor& otro) noexcept { std::swap(m_numero, otro.m_numero); }

    private:
        int m_numero;
    };

    [[nodiscard]] std::size_t lee();
    void copia();
    void escribe(const Descriptor& copia, std::string_view texto) const;
    [[noreturn]] void falla(const std::string& que, int numero) const;

    std::filesystem::path m_fichero;
    Descriptor m_descriptor;
    std::vector<char> m_trozo;
    Huella m_huella;
};

} // namespace atipicos::app
