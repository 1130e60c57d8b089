#pragma once

#include <filesystem>
#include <memory>

namespace atipicos::app {

/// Says that a draft is somebody's: as long as it lives, in whatever process, nobody else takes that draft.
/// It ends with its process, however that ends.
class CerrojoDeBorrador {
public:
    /// Nothing when somebody else holds it. Raises an error that names the file when none can be made there.
    [[nodiscard]] static std::unique_ptr<CerrojoDeBorrador> toma(const std::filesystem::path& borrador);

    /// Somebody holds it at this moment.
    [[nodiscard]] static bool tomado(const std::filesystem::path& borrador);

    CerrojoDeBorrador(const CerrojoDeBorrador&) = delete;
    CerrojoDeBorrador& operator=(const CerrojoDeBorrador&) = delete;
    ~CerrojoDeBorrador();

    [[nodiscard]] const std::filesystem::path& borrador() const noexcept { return m_borrador; }

    /// The file that is written until it can take the place of the draft.
    [[nodiscard]] std::filesystem::path parcial() const;

    void borra_borrador() const noexcept; ///< with what may be left of writing it

private:
    CerrojoDeBorrador(int descriptor, std::filesystem::path borrador);

    int m_descriptor;
    std::filesystem::path m_borrador;
};

} // namespace atipicos::app
