#pragma once

#include "host/bases/Lugar.hpp"
#include "host/sesion/BorradorEnTexto.hpp"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::app {

/// A charge that somebody was keying in, in a process or window that is there no more.
struct BorradorOfrecido {
    std::filesystem::path fichero;
    std::optional<BorradorLeido> leido; ///< nothing in a file that cannot be read
    std::string motivo; ///< why not, in Spanish
};

/// Keeps what is keyed in as files that their owner alone can read: in one folder for each company, user and
/// place of databases, one file for each open editor. A file has its name when all of it is on the disk, and
/// takes the place of the one before in one step.
class BorradoresEnCarpeta final : public Borradores {
public:
    /// `carpeta`: where the drafts of this owner are; made with the first one.
    BorradoresEnCarpeta(std::filesystem::path carpeta, DuenoDeBorradores dueno);

    /// Of this person: in the place for state data, XDG_STATE_HOME or ~/.local/state. Nothing when there is
    /// no home.
    [[nodiscard]] static std::shared_ptr<BorradoresEnCarpeta> de_la_persona(
        const bases::Lugar& lugar, std::int16_t empresa, std::int32_t usuario);

    [[nodiscard]] std::unique_ptr<BorradorAbierto> Abrir() override;

    /// Those that no open editor holds, the latest first. A folder that cannot be read holds none.
    [[nodiscard]] std::vector<BorradorOfrecido> ofrecidos() const;

    [[nodiscard]] const std::filesystem::path& carpeta() const noexcept { return m_carpeta; }

    /// The draft in that file. Raises an error that says in Spanish why it cannot be read.
    [[nodiscard]] BorradorLeido lee(const std::filesystem::path& fichero) const;

private:
    class Abierto;

    std::filesystem::path m_carpeta;
    DuenoDeBorradores m_dueno;
};

} // namespace atipicos::app
