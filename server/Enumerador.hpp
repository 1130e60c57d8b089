#pragma once

#include "server/Clase.hpp"

#include <atomic>

namespace atipicos::server {

/// Walks over a collection by position, as it is at each step: an element that is removed before its turn is
/// not met, and one added behind is.
class Enumerador final : public IEnumVARIANT {
public:
    [[nodiscard]] static Valor nuevo(const Clase& clase, std::shared_ptr<void> coleccion);

    Enumerador(const Enumerador&) = delete;
    Enumerador& operator=(const Enumerador&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Next(ULONG cuantos, VARIANT* valores, ULONG* entregados) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG cuantos) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** otro) override;

private:
    Enumerador(const Clase& clase, std::shared_ptr<void> coleccion, std::int32_t posicion) noexcept;
    ~Enumerador();

    const Clase& m_clase;
    std::shared_ptr<void> m_coleccion;
    std::int32_t m_posicion; ///< of the next element
    std::atomic<ULONG> m_referencias = 1;
};

} // namespace atipicos::server
