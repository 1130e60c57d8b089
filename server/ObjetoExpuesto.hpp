#pragma once

#include "server/Clase.hpp"

#include <atomic>

namespace atipicos::server {

/// The late-bound face of one native object. Native and automation object are one to one while anybody holds
/// the latter, so that two references to the same line are the same object.
class ObjetoExpuesto final : public IDispatch {
public:
    /// The face of `objeto`, held once more.
    [[nodiscard]] static ObjetoExpuesto* de(const Clase& clase, std::shared_ptr<void> objeto);

    ObjetoExpuesto(const ObjetoExpuesto&) = delete;
    ObjetoExpuesto& operator=(const ObjetoExpuesto&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* cuantos) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT cual, LCID idioma, ITypeInfo** tipo) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(
        const GUID& iid, OLECHAR** nombres, UINT cuantos, LCID idioma, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const GUID& iid, LCID idioma, WORD uso,
        DISPPARAMS* argumentos, VARIANT* resultado, EXCEPINFO* excepcion, UINT* argumento_malo) override;

    [[nodiscard]] const Clase& clase() const noexcept { return m_clase; }
    [[nodiscard]] const std::shared_ptr<void>& nativo() const noexcept { return m_nativo; }

private:
    ObjetoExpuesto(const Clase& clase, std::shared_ptr<void> objeto) noexcept;
    ~ObjetoExpuesto();

    [[nodiscard]] HRESULT ejecuta(
        DISPID id, WORD uso, const DISPPARAMS& argumentos, VARIANT* resultado, EXCEPINFO* donde);

    const Clase& m_clase;
    std::shared_ptr<void> m_nativo;
    std::atomic<ULONG> m_referencias = 0;
};

/// By which the component knows its own objects.
inline constexpr GUID iid_propio{ 0xb6a4befd, 0x9120, 0x4aad,
    { 0xad, 0xb5, 0xee, 0x6a, 0xe3, 0xde, 0x34, 0x48 } };

} // namespace atipicos::server
