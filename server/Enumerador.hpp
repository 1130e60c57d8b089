#pragma once

#include "server/Cara.hpp"
#include "server/Clase.hpp"

namespace atipicos::server {

/// Walks over a collection by position, as it is at each step: an element that is removed before its turn is
/// not met, and one added behind is. A step that fails hands nothing over and stays where it was.
class Enumerador final : public CaraDeEnumerador {
public:
    [[nodiscard]] static Valor nuevo(const Clase& clase, std::shared_ptr<void> coleccion);

protected:
    [[nodiscard]] void* cara_de(const GUID& iid) override;
    [[nodiscard]] HRESULT entrega(ULONG cuantos, VARIANT* valores, ULONG* entregados) override;
    [[nodiscard]] HRESULT salta(ULONG cuantos) override;
    [[nodiscard]] HRESULT vuelve() override;
    [[nodiscard]] IEnumVARIANT* gemelo() const override;

private:
    Enumerador(const Clase& clase, std::shared_ptr<void> coleccion, std::int32_t posicion) noexcept;

    const Clase& m_clase;
    std::shared_ptr<void> m_coleccion;
    std::int32_t m_posicion; ///< of the next element
};

} // namespace atipicos::server
