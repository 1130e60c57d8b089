#include "server/Fabrica.hpp"

#include "server/ObjetoExpuesto.hpp"
#include "server/Servidor.hpp"

#include <new>

namespace atipicos::server {

Fabrica::Fabrica(const Clase& clase) noexcept
    : m_clase(clase)
{
    servidor::retiene();
}

Fabrica::~Fabrica() { servidor::suelta(); }

HRESULT Fabrica::QueryInterface(const GUID& iid, void** objeto)
{
    if (objeto == nullptr)
        return E_POINTER;
    const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_fabrica);
    *objeto = suya ? static_cast<IClassFactory*>(this) : nullptr;
    if (suya)
        AddRef();
    return suya ? HRESULT{ S_OK } : HRESULT{ E_NOINTERFACE };
}

ULONG Fabrica::AddRef() { return ++m_referencias; }

ULONG Fabrica::Release()
{
    const ULONG quedan = --m_referencias;
    if (quedan == 0)
        delete this;
    return quedan;
}

HRESULT Fabrica::CreateInstance(IUnknown* exterior, const GUID& iid, void** objeto)
{
    if (objeto == nullptr)
        return E_POINTER;
    *objeto = nullptr;
    if (exterior != nullptr)
        return CLASS_E_NOAGGREGATION;
    if (servidor::hilo_ajeno())
        return RPC_E_WRONG_THREAD;
    try {
        servidor::prepara();
        auto* nuevo = ObjetoExpuesto::de(m_clase, m_clase.crea());
        const auto codigo = nuevo->QueryInterface(iid, objeto);
        nuevo->Release();
        return codigo;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT Fabrica::LockServer(BOOL retener)
{
    if (retener != 0)
        servidor::retiene();
    else
        servidor::suelta();
    return S_OK;
}

} // namespace atipicos::server
