#pragma once

#include "automation/Valor.hpp"

#include <array>
#include <span>

namespace atipicos::automation {

/// A held reference to an automation object, reached by the names of its members. Every failure throws a
/// `Fallo`: what the object raised, 438 for a member that it does not have, 91 when there is no object.
class Despacho {
public:
    Despacho() noexcept = default; ///< no object
    explicit Despacho(IDispatch* objeto) noexcept ///< takes a hold of its own
        : m_objeto(objeto)
    {
        if (m_objeto != nullptr)
            m_objeto->AddRef();
    }
    [[nodiscard]] static Despacho adopta(IDispatch* objeto) noexcept ///< takes over a hold
    {
        Despacho despacho;
        despacho.m_objeto = objeto;
        return despacho;
    }
    /// The object's late-bound face; no object when it has none. Objects written in a script offer the
    /// extended one only, which begins like the other.
    [[nodiscard]] static Despacho de(IUnknown* objeto)
    {
        void* cara = nullptr;
        if (objeto != nullptr
            && (SUCCEEDED(objeto->QueryInterface(iid_despacho_ex, &cara))
                || SUCCEEDED(objeto->QueryInterface(iid_despacho, &cara))))
            return adopta(static_cast<IDispatch*>(cara));
        return {};
    }
    /// The object in a value, also behind references; no object for what is empty, null or `Nothing`.
    [[nodiscard]] static Despacho de(const VARIANT& valor)
    {
        switch (valor.vt) {
        case VT_DISPATCH:
            return Despacho(valor.pdispVal);
        case VT_UNKNOWN:
            return de(valor.punkVal);
        case VT_BYREF | VT_DISPATCH:
            return Despacho(*static_cast<IDispatch**>(valor.byref));
        case VT_BYREF | VT_UNKNOWN:
            return de(*static_cast<IUnknown**>(valor.byref));
        case VT_BYREF | VT_VARIANT:
            return de(*valor.pvarVal);
        case VT_EMPTY:
        case VT_NULL:
            return {};
        default:
            throw Fallo(13, "QVORComprasAtip", "No coinciden los tipos");
        }
    }

    Despacho(const Despacho& otro) noexcept
        : Despacho(otro.m_objeto)
    {
    }
    Despacho(Despacho&& otro) noexcept
        : m_objeto(std::exchange(otro.m_objeto, nullptr))
    {
    }
    Despacho& operator=(Despacho otro) noexcept
    {
        std::swap(m_objeto, otro.m_objeto);
        return *this;
    }
    ~Despacho()
    {
        if (m_objeto != nullptr && !proceso_acaba)
            m_objeto->Release();
    }

    [[nodiscard]] explicit operator bool() const noexcept { return m_objeto != nullptr; }
    [[nodiscard]] IDispatch* get() const noexcept { return m_objeto; }
    [[nodiscard]] Valor valor() const noexcept { return Valor(m_objeto); }

    [[nodiscard]] bool tiene(const char* miembro) const
    {
        DISPID id = DISPID_UNKNOWN;
        return m_objeto != nullptr && busca(miembro, id);
    }

    /// The number of a member, for whoever asks for it often.
    [[nodiscard]] DISPID id(const char* miembro) const
    {
        if (m_objeto == nullptr)
            throw Fallo(91, "QVORComprasAtip", "La variable de objeto no está establecida");
        DISPID encontrado = DISPID_UNKNOWN;
        if (!busca(miembro, encontrado))
            throw Fallo(438, "QVORComprasAtip",
                "El objeto no admite esta propiedad o método: " + std::string(miembro));
        return encontrado;
    }

    /// Calls a method, or reads a property, whichever the member is.
    template <class... Argumentos> Valor llama(const char* miembro, Argumentos&&... argumentos) const
    {
        return llama(id(miembro), std::forward<Argumentos>(argumentos)...);
    }
    template <class... Argumentos> Valor llama(DISPID miembro, Argumentos&&... argumentos) const
    {
        std::array<Valor, sizeof...(Argumentos)> valores{ Valor(std::forward<Argumentos>(argumentos))... };
        return invoca(miembro, DISPATCH_METHOD | DISPATCH_PROPERTYGET, valores);
    }
    void pon(const char* miembro, Valor valor) const { pon(id(miembro), std::move(valor)); }
    void pon(DISPID miembro, Valor valor) const
    {
        std::array<Valor, 1> valores{ std::move(valor) };
        invoca(miembro, valores[0].tipo() == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT,
            valores);
    }

    /// The object that the member gives.
    template <class... Argumentos> Despacho objeto(const char* miembro, Argumentos&&... argumentos) const
    {
        return de(llama(miembro, std::forward<Argumentos>(argumentos)...).get());
    }

    /// What `Invoke` does, with the arguments in their order.
    Valor invoca(DISPID miembro, unsigned uso, std::span<const Valor> argumentos) const
    {
        if (m_objeto == nullptr)
            throw Fallo(91, "QVORComprasAtip", "La variable de objeto no está establecida");
        constexpr std::size_t los_mas = 16;
        std::array<VARIANT, los_mas> al_reves;
        if (argumentos.size() > los_mas)
            throw Fallo(450, "QVORComprasAtip", "Número de argumentos incorrecto");
        for (std::size_t i = 0; i < argumentos.size(); ++i)
            al_reves[argumentos.size() - 1 - i] = argumentos[i].get(); // lent, not given
        DISPID pone = DISPID_PROPERTYPUT;
        const bool asigna = (uso & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        DISPPARAMS parametros{ al_reves.data(), asigna ? &pone : nullptr,
            static_cast<unsigned>(argumentos.size()), asigna ? 1u : 0u };
        Valor resultado;
        EXCEPINFO excepcion{};
        const auto codigo = llama_crudo(
            miembro, static_cast<WORD>(uso), parametros, asigna ? nullptr : &resultado.get(), excepcion);
        if (FAILED(codigo))
            falla(codigo, excepcion);
        return resultado;
    }

    /// Set while the process ends: objects of libraries that may already be gone are not released any more.
    inline static bool proceso_acaba = false;

private:
#ifdef _WIN32
    /// Objects written in a script serve only the extended face, whatever they say of the other; null where
    /// an object has none.
    [[nodiscard]] IDispatchEx* extendida() const noexcept
    {
        void* cara = nullptr;
        m_objeto->QueryInterface(iid_despacho_ex, &cara);
        return static_cast<IDispatchEx*>(cara);
    }

    [[nodiscard]] bool busca(const char* miembro, DISPID& id) const
    {
        auto* otra = extendida();
        if (otra == nullptr)
            return busca_aqui(miembro, id);
        auto* nombre = bstr(miembro);
        const auto codigo = otra->GetDispID(nombre, fdexNameCaseInsensitive, &id);
        SysFreeString(nombre);
        otra->Release();
        return SUCCEEDED(codigo);
    }

    HRESULT llama_crudo(
        DISPID miembro, WORD uso, DISPPARAMS& parametros, VARIANT* resultado, EXCEPINFO& excepcion) const
    {
        auto* otra = extendida();
        if (otra == nullptr)
            return m_objeto->Invoke(miembro, iid_nulo, 0, uso, &parametros, resultado, &excepcion, nullptr);
        const auto codigo = otra->InvokeEx(miembro, 0, uso, &parametros, resultado, &excepcion, nullptr);
        otra->Release();
        return codigo;
    }
#else
    [[nodiscard]] bool busca(const char* miembro, DISPID& id) const { return busca_aqui(miembro, id); }

    HRESULT llama_crudo(
        DISPID miembro, WORD uso, DISPPARAMS& parametros, VARIANT* resultado, EXCEPINFO& excepcion) const
    {
        return m_objeto->Invoke(miembro, iid_nulo, 0, uso, &parametros, resultado, &excepcion, nullptr);
    }
#endif

    [[nodiscard]] bool busca_aqui(const char* miembro, DISPID& id) const
    {
        auto nombre = utf16(miembro);
        auto* uno = nombre.data();
        return SUCCEEDED(m_objeto->GetIDsOfNames(iid_nulo, &uno, 1, 0, &id));
    }

    [[noreturn]] static void falla(HRESULT codigo, EXCEPINFO& excepcion)
    {
        if (codigo == DISP_E_EXCEPTION) {
            if (excepcion.pfnDeferredFillIn != nullptr)
                excepcion.pfnDeferredFillIn(&excepcion);
            const std::string fuente = utf8(excepcion.bstrSource);
            const std::string descripcion = utf8(excepcion.bstrDescription);
            SysFreeString(excepcion.bstrSource);
            SysFreeString(excepcion.bstrDescription);
            SysFreeString(excepcion.bstrHelpFile);
            throw Fallo(
                excepcion.wCode != 0 ? excepcion.wCode : numero(excepcion.scode), fuente, descripcion);
        }
        if (codigo == DISP_E_TYPEMISMATCH)
            throw Fallo(13, "QVORComprasAtip", "No coinciden los tipos");
        if (codigo == DISP_E_OVERFLOW)
            throw Fallo(6, "QVORComprasAtip", "Desbordamiento");
        if (codigo == DISP_E_MEMBERNOTFOUND || codigo == DISP_E_UNKNOWNNAME)
            throw Fallo(438, "QVORComprasAtip", "El objeto no admite esta propiedad o método");
        if (codigo == DISP_E_BADPARAMCOUNT)
            throw Fallo(450, "QVORComprasAtip", "Número de argumentos incorrecto");
        if (codigo == DISP_E_PARAMNOTOPTIONAL)
            throw Fallo(449, "QVORComprasAtip", "El argumento no es opcional");
        throw Fallo(codigo, "QVORComprasAtip", "Error de automatización");
    }

    /// Run-time errors travel as 0x800A0000 and their number.
    [[nodiscard]] static std::int32_t numero(HRESULT codigo) noexcept
    {
        const auto bits = static_cast<std::uint32_t>(codigo);
        return (bits & 0xFFFF0000) == 0x800A0000 ? static_cast<std::int32_t>(bits & 0xFFFF) : codigo;
    }

    IDispatch* m_objeto = nullptr;
};

} // namespace atipicos::automation
