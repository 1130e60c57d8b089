#pragma once

#include "automation/Despacho.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace atipicos::automation {

/// The arguments of a call, in their order.
class Argumentos {
public:
    explicit Argumentos(const DISPPARAMS& parametros) noexcept
        : m_parametros(parametros)
    {
    }
    [[nodiscard]] std::size_t cuantos() const noexcept { return m_parametros.cArgs; }
    [[nodiscard]] Valor valor(std::size_t i) const ///< empty when it was not given
    {
        return i < cuantos() && lugar(i).vt != VT_ERROR ? Valor::copia_de(sin_referencia(lugar(i))) : Valor();
    }
    /// Writes into the caller's variable; nothing happens when none was lent.
    void escribe(std::size_t i, Valor valor) const
    {
        if (i < cuantos() && lugar(i).vt == (VT_BYREF | VT_VARIANT))
            std::swap(*lugar(i).pvarVal, valor.get());
    }

private:
    [[nodiscard]] const VARIANT& lugar(std::size_t i) const noexcept
    {
        return m_parametros.rgvarg[cuantos() - 1 - i];
    }
    const DISPPARAMS& m_parametros;
};

/// An automation object made of functions, for hosts written in C++: what a company object or a connection is
/// to this component. A function that throws a `Fallo` raises that error in the caller.
class Anfitrion final : public IDispatch {
public:
    using Funcion = std::function<Valor(const Argumentos&)>;
    struct Miembro {
        std::string nombre;
        Funcion lee; ///< calls the method or reads the property
        Funcion pone = {}; ///< sets the property, to the last argument
    };

    [[nodiscard]] static Despacho crea(std::vector<Miembro> miembros)
    {
        return Despacho::adopta(new Anfitrion(std::move(miembros)));
    }

    Anfitrion(const Anfitrion&) = delete;
    Anfitrion& operator=(const Anfitrion&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) noexcept override
    {
        if (objeto == nullptr)
            return E_POINTER;
        const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_despacho);
        *objeto = suya ? static_cast<IDispatch*>(this) : nullptr;
        if (suya)
            AddRef();
        return suya ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++m_referencias; }
    ULONG STDMETHODCALLTYPE Release() noexcept override
    {
        const ULONG quedan = --m_referencias;
        if (quedan == 0)
            delete this;
        return quedan;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* cuantos) noexcept override
    {
        *cuantos = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*cual*/, LCID /*idioma*/, ITypeInfo** tipo) noexcept override
    {
        *tipo = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(
        const GUID& /*iid*/, OLECHAR** nombres, UINT cuantos, LCID /*idioma*/, DISPID* ids) noexcept override
    {
        for (UINT i = 0; i < cuantos; ++i)
            ids[i] = DISPID_UNKNOWN;
        try {
            const std::string buscado = utf8(VistaAncha(nombres[0]));
            for (std::size_t i = 0; i < m_miembros.size(); ++i)
                if (iguales_sin_caja(m_miembros[i].nombre, buscado))
                    ids[0] = static_cast<DISPID>(i) + 1;
        } catch (...) {
            return E_OUTOFMEMORY;
        }
        return ids[0] == DISPID_UNKNOWN || cuantos > 1 ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const GUID& /*iid*/, LCID /*idioma*/, WORD uso,
        DISPPARAMS* argumentos, VARIANT* resultado, EXCEPINFO* donde,
        UINT* /*argumento_malo*/) noexcept override
    {
        try {
            return llama(id, uso, *argumentos, resultado, donde);
        } catch (...) { // not even what went wrong could be told
            return E_OUTOFMEMORY;
        }
    }

private:
    explicit Anfitrion(std::vector<Miembro> miembros)
        : m_miembros(std::move(miembros))
    {
    }
    ~Anfitrion() = default;

    /// Throws only where there is no memory for what an error says.
    [[nodiscard]] HRESULT llama(
        DISPID id, WORD uso, const DISPPARAMS& argumentos, VARIANT* resultado, EXCEPINFO* donde) const
    {
        if (id < 1 || static_cast<std::size_t>(id) > m_miembros.size())
            return DISP_E_MEMBERNOTFOUND;
        const auto& miembro = m_miembros[static_cast<std::size_t>(id) - 1];
        const bool pone = (uso & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const auto& funcion = pone ? miembro.pone : miembro.lee;
        if (!funcion)
            return DISP_E_MEMBERNOTFOUND;
        try {
            Valor dado = funcion(Argumentos(argumentos));
            if (resultado != nullptr)
                *resultado = dado.suelta();
            return S_OK;
        } catch (const Fallo& fallo) {
            return excepcion(donde, fallo.numero(), fallo.fuente(), fallo.what());
        } catch (const std::exception& otro) {
            return excepcion(donde, 51, "", otro.what());
        } catch (...) {
            return excepcion(donde, 51, "", "Error interno");
        }
    }

    [[nodiscard]] static bool iguales_sin_caja(const std::string& a, const std::string& b)
    {
        const auto minuscula
            = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [&](char x, char y) {
            return minuscula(x) == minuscula(y);
        });
    }

    std::vector<Miembro> m_miembros;
    std::atomic<ULONG> m_referencias = 1;
};

} // namespace atipicos::automation
