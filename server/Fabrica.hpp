#pragma once

#include "server/Clase.hpp"

#include <atomic>

namespace atipicos::server {

/// Makes objects of one public class.
class Fabrica final : public IClassFactory {
public:
    explicit Fabrica(const Clase& clase) noexcept; ///< held once

    Fabrica(const Fabrica&) = delete;
    Fabrica& operator=(const Fabrica&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* exterior, const GUID& iid, void** objeto) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL retener) override;

private:
    ~Fabrica();

    const Clase& m_clase;
    std::atomic<ULONG> m_referencias = 1;
};

} // namespace atipicos::server
