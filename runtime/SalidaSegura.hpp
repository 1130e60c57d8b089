#pragma once

#include <filesystem>
#include <fstream>
#include <iosfwd>

namespace atipicos {

/// Where a command writes: standard output, or a file that gets its name only when it is complete. What was
/// there under that name stays until then, and nothing is left behind when the writing fails. A link stays a
/// link: the file that it leads to is the one replaced. A device or a pipe is written to as it is.
class SalidaSegura {
public:
    /// `destino` empty: standard output. Raises an error that names the file when it cannot be written.
    explicit SalidaSegura(std::filesystem::path destino);
    SalidaSegura(const SalidaSegura&) = delete;
    SalidaSegura& operator=(const SalidaSegura&) = delete;
    ~SalidaSegura();

    [[nodiscard]] std::ostream& flujo();
    [[nodiscard]] const std::filesystem::path& provisional() const noexcept { return m_provisional; }

    /// Raises an error when something that was written so far is known not to have arrived: a reader of
    /// standard output that has gone, a disk that is full. For who writes for long.
    void comprueba();

    /// The end of the writing: raises an error when any of it did not reach the file.
    void termina();

private:
    [[noreturn]] void falla(const std::string& motivo) const;

    std::filesystem::path m_destino; ///< as it was named
    std::filesystem::path m_definitivo; ///< where a link of that name leads
    std::filesystem::path m_provisional;
    std::ofstream m_fichero;
};

} // namespace atipicos
