#pragma once

#include "server/Cara.hpp"
#include "server/Clase.hpp"

namespace atipicos::server {

/// Makes objects of one public class.
class Fabrica final : public CaraDeFabrica {
public:
    explicit Fabrica(const Clase& clase) noexcept ///< held once
        : m_clase(clase)
    {
    }

protected:
    [[nodiscard]] void* cara_de(const GUID& iid) override;
    [[nodiscard]] HRESULT crea(const GUID& iid, void** objeto) override;
    void bloquea(bool retener) override;

private:
    const Clase& m_clase;
};

} // namespace atipicos::server
