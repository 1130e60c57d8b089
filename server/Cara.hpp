#pragma once

#include "automation/com.hpp"
#include "server/Frontera.hpp"
#include "server/Servidor.hpp"

#include <atomic>

/// The interfaces that the component shows, each with the border of the library around all of its entries. A
/// class of the component derives from one of these, says what it does, and may throw.
namespace atipicos::server {

using namespace automation;

/// What all of them have: holds are counted, and keep the component loaded.
template <class Interfaz> class Cara : public Interfaz {
public:
    Cara(const Cara&) = delete;
    Cara& operator=(const Cara&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) noexcept final
    {
        if (objeto == nullptr)
            return E_POINTER;
        return en_frontera([&] {
            *objeto = nullptr;
            *objeto = cara_de(iid);
            if (*objeto == nullptr)
                return HRESULT{ E_NOINTERFACE };
            AddRef();
            return HRESULT{ S_OK };
        });
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return ++m_referencias; }
    ULONG STDMETHODCALLTYPE Release() noexcept final
    {
        const ULONG quedan = quita_una();
        if (quedan == 0)
            delete this;
        return quedan;
    }

protected:
    explicit Cara(ULONG referencias = 1) noexcept
        : m_referencias(referencias)
    {
        servidor::retiene();
    }
    virtual ~Cara() { servidor::suelta(); }

    [[nodiscard]] virtual void* cara_de(const GUID& iid) = 0; ///< null: it is nothing of that kind
    virtual ULONG quita_una() noexcept { return --m_referencias; } ///< one hold less; how many are left

    /// What is used by the thread that made it, and by no other.
    template <class Trabajo> [[nodiscard]] static HRESULT en_su_hilo(Trabajo&& trabajo) noexcept
    {
        return servidor::hilo_ajeno() ? HRESULT{ RPC_E_WRONG_THREAD }
                                      : en_frontera(std::forward<Trabajo>(trabajo));
    }

    std::atomic<ULONG> m_referencias;
};

class CaraDeDespacho : public Cara<IDispatch> {
public:
    using Cara<IDispatch>::Cara;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* cuantos) noexcept final
    {
        return cuantos == nullptr ? HRESULT{ E_POINTER } : en_frontera([&] {
            *cuantos = 0;
            *cuantos = tipos();
            return HRESULT{ S_OK };
        });
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT cual, LCID /*idioma*/, ITypeInfo** tipo) noexcept final
    {
        return tipo == nullptr ? HRESULT{ E_POINTER } : en_frontera([&] {
            *tipo = nullptr;
            return informa(cual, tipo);
        });
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(
        const GUID& iid, OLECHAR** nombres, UINT cuantos, LCID /*idioma*/, DISPID* ids) noexcept final
    {
        return en_frontera([&] { return identifica(iid, nombres, cuantos, ids); });
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const GUID& iid, LCID /*idioma*/, WORD uso,
        DISPPARAMS* argumentos, VARIANT* resultado, EXCEPINFO* donde, UINT* malo) noexcept final
    {
        return en_su_hilo([&] { return invoca(id, iid, uso, argumentos, resultado, donde, malo); });
    }

protected:
    [[nodiscard]] virtual UINT tipos() const { return 0; }
    [[nodiscard]] virtual HRESULT informa(UINT /*cual*/, ITypeInfo** /*tipo*/) const { return E_NOTIMPL; }
    [[nodiscard]] virtual HRESULT identifica(const GUID& iid, OLECHAR** nombres, UINT cuantos, DISPID* ids)
        = 0;
    [[nodiscard]] virtual HRESULT invoca(DISPID id, const GUID& iid, WORD uso, DISPPARAMS* argumentos,
        VARIANT* resultado, EXCEPINFO* donde, UINT* malo)
        = 0;
};

class CaraDeEnumerador : public Cara<IEnumVARIANT> {
public:
    using Cara<IEnumVARIANT>::Cara;

    HRESULT STDMETHODCALLTYPE Next(ULONG cuantos, VARIANT* valores, ULONG* entregados) noexcept final
    {
        return en_su_hilo([&] { return entrega(cuantos, valores, entregados); });
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG cuantos) noexcept final
    {
        return en_su_hilo([&] { return salta(cuantos); });
    }
    HRESULT STDMETHODCALLTYPE Reset() noexcept final
    {
        return en_su_hilo([&] { return vuelve(); });
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** otro) noexcept final
    {
        return otro == nullptr ? HRESULT{ E_POINTER } : en_su_hilo([&] {
            *otro = nullptr;
            *otro = gemelo();
            return HRESULT{ S_OK };
        });
    }

protected:
    [[nodiscard]] virtual HRESULT entrega(ULONG cuantos, VARIANT* valores, ULONG* entregados) = 0;
    [[nodiscard]] virtual HRESULT salta(ULONG cuantos) = 0;
    [[nodiscard]] virtual HRESULT vuelve() = 0;
    [[nodiscard]] virtual IEnumVARIANT* gemelo() const = 0;
};

class CaraDeFabrica : public Cara<IClassFactory> {
public:
    using Cara<IClassFactory>::Cara;

    HRESULT STDMETHODCALLTYPE CreateInstance(
        IUnknown* exterior, const GUID& iid, void** objeto) noexcept final
    {
        if (objeto == nullptr)
            return E_POINTER;
        *objeto = nullptr;
        if (exterior != nullptr)
            return CLASS_E_NOAGGREGATION;
        return en_su_hilo([&] { return crea(iid, objeto); });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL retener) noexcept final
    {
        return en_frontera([&] {
            bloquea(retener != 0);
            return HRESULT{ S_OK };
        });
    }

protected:
    [[nodiscard]] virtual HRESULT crea(const GUID& iid, void** objeto) = 0;
    virtual void bloquea(bool retener) = 0;
};

} // namespace atipicos::server
