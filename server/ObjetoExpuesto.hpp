#pragma once

#include "server/Cara.hpp"
#include "server/Clase.hpp"

namespace atipicos::server {

/// The late-bound face of one native object. Native and automation object are one to one while anybody holds
/// the latter, so that two references to the same line are the same object.
class ObjetoExpuesto final : public CaraDeDespacho {
public:
    /// The face of `objeto`, held once more.
    [[nodiscard]] static ObjetoExpuesto* de(const Clase& clase, std::shared_ptr<void> objeto);

    [[nodiscard]] const Clase& clase() const noexcept { return m_clase; }
    [[nodiscard]] const std::shared_ptr<void>& nativo() const noexcept { return m_nativo; }

protected:
    [[nodiscard]] void* cara_de(const GUID& iid) override;
    ULONG quita_una() noexcept override;
    [[nodiscard]] UINT tipos() const override;
    [[nodiscard]] HRESULT informa(UINT cual, ITypeInfo** tipo) const override;
    [[nodiscard]] HRESULT identifica(const GUID& iid, OLECHAR** nombres, UINT cuantos, DISPID* ids) override;
    [[nodiscard]] HRESULT invoca(DISPID id, const GUID& iid, WORD uso, DISPPARAMS* argumentos,
        VARIANT* resultado, EXCEPINFO* donde, UINT* malo) override;

private:
    ObjetoExpuesto(const Clase& clase, std::shared_ptr<void> objeto) noexcept;

    [[nodiscard]] HRESULT ejecuta(
        DISPID id, WORD uso, const DISPPARAMS& argumentos, VARIANT* resultado, EXCEPINFO* donde);

    const Clase& m_clase;
    std::shared_ptr<void> m_nativo;
};

/// By which the component knows its own objects.
inline constexpr GUID iid_propio{ 0xb6a4befd, 0x9120, 0x4aad,
    { 0xad, 0xb5, 0xee, 0x6a, 0xe3, 0xde, 0x34, 0x48 } };

} // namespace atipicos::server
