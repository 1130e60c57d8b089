#pragma once

#include <filesystem>
#include <string>
#include <sys/mount.h>
#include <utility>

namespace atipicos::pruebas {

/// A small disk of its own, mounted on a new folder while it lasts. Only root can have one.
class DiscoPequeno {
public:
    explicit DiscoPequeno(std::filesystem::path donde, const std::string& tamano = "900k")
        : m_donde(std::move(donde))
    {
        std::filesystem::create_directory(m_donde);
        m_montado = mount("tmpfs", m_donde.c_str(), "tmpfs", 0, ("size=" + tamano).c_str()) == 0;
    }
    DiscoPequeno(const DiscoPequeno&) = delete;
    DiscoPequeno& operator=(const DiscoPequeno&) = delete;
    ~DiscoPequeno()
    {
        if (m_montado)
            umount(m_donde.c_str());
    }

    [[nodiscard]] bool montado() const noexcept { return m_montado; }
    [[nodiscard]] bool protege() const noexcept ///< from now on it can only be read
    {
        return mount("tmpfs", m_donde.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    std::filesystem::path m_donde;
    bool m_montado = false;
};

} // namespace atipicos::pruebas
