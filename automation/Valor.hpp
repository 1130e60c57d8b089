#pragma once

#include "automation/Texto.hpp"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace atipicos::automation {

/// An error that crossed the border of an automation object: its number as the caller's `Err` shows it, its
/// source, and its description as what().
class Fallo : public std::runtime_error {
public:
    Fallo(std::int32_t numero, std::string fuente, const std::string& descripcion)
        : std::runtime_error(descripcion)
        , m_numero(numero)
        , m_fuente(std::move(fuente))
    {
    }
    [[nodiscard]] std::int32_t numero() const noexcept { return m_numero; }
    [[nodiscard]] const std::string& fuente() const noexcept { return m_fuente; }

private:
    std::int32_t m_numero;
    std::string m_fuente;
};

struct Moneda { ///< an amount, in ten-thousandths
    std::int64_t diezmilesimas = 0;
    friend constexpr bool operator==(Moneda, Moneda) noexcept = default;
};

struct Fecha { ///< days since 30 December 1899, the time of day as fraction
    double dias = 0;
    friend constexpr bool operator==(Fecha, Fecha) noexcept = default;
};

/// What a value stands for when it refers to another's place, as a view that owns nothing; else the value
/// itself.
[[nodiscard]] inline VARIANT sin_referencia(const VARIANT& valor) noexcept
{
    if (valor.vt == (VT_BYREF | VT_VARIANT))
        return sin_referencia(*valor.pvarVal);
    if ((valor.vt & VT_BYREF) == 0)
        return valor;
    VARIANT vista;
    VariantInit(&vista);
    vista.vt = static_cast<VARTYPE>(valor.vt & ~VT_BYREF);
    std::size_t bytes = sizeof(std::int64_t); // currency, dates, texts, objects, large numbers
    if (vista.vt == VT_I1 || vista.vt == VT_UI1)
        bytes = 1;
    else if (vista.vt == VT_I2 || vista.vt == VT_UI2 || vista.vt == VT_BOOL)
        bytes = 2;
    else if (vista.vt == VT_BSTR || vista.vt == VT_DISPATCH || vista.vt == VT_UNKNOWN)
        bytes = sizeof(void*);
    else if (vista.vt == VT_I4 || vista.vt == VT_UI4 || vista.vt == VT_INT || vista.vt == VT_UINT
        || vista.vt == VT_R4 || vista.vt == VT_ERROR)
        bytes = 4;
    if (vista.vt == VT_DECIMAL) {
        std::memcpy(&vista, valor.byref, 16);
        vista.vt = VT_DECIMAL;
    } else {
        std::memcpy(&vista.llVal, valor.byref, bytes);
    }
    return vista;
}

/// The result that an error travels as. Numbers from 1 to 65535 are those of run-time errors; others are
/// results of their own.
[[nodiscard]] inline HRESULT codigo_de(std::int32_t numero) noexcept
{
    const bool de_ejecucion = numero > 0 && numero <= 0xFFFF;
    const auto bits = de_ejecucion ? 0x800A0000u | static_cast<std::uint32_t>(numero)
                                   : static_cast<std::uint32_t>(numero < 0 ? HRESULT{ numero } : E_FAIL);
    return static_cast<HRESULT>(bits);
}

/// Fills in what an object raises for its caller, and is the result of its `Invoke`.
inline HRESULT excepcion(
    EXCEPINFO* donde, std::int32_t numero, std::string_view fuente, std::string_view descripcion)
{
    if (donde == nullptr)
        return DISP_E_EXCEPTION;
    std::memset(donde, 0, sizeof *donde);
    auto* const texto = bstr(descripcion);
    try {
        donde->bstrSource = bstr(fuente);
    } catch (...) {
        SysFreeString(texto);
        throw;
    }
    donde->bstrDescription = texto;
    donde->scode = codigo_de(numero);
    return DISP_E_EXCEPTION;
}

/// A value of a type known at run time, which it owns. Texts go in and out as UTF-8.
class Valor {
public:
    Valor() noexcept { VariantInit(&m_valor); } ///< empty
    Valor(bool valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_BOOL;
        m_valor.boolVal = valor ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Valor(std::int16_t valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_I2;
        m_valor.iVal = valor;
    }
    Valor(std::int32_t valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_I4;
        m_valor.lVal = valor;
    }
    Valor(double valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_R8;
        m_valor.dblVal = valor;
    }
    Valor(Moneda valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_CY;
        m_valor.cyVal.int64 = valor.diezmilesimas;
    }
    Valor(Fecha valor) noexcept
        : Valor()
    {
        m_valor.vt = VT_DATE;
        m_valor.date = valor.dias;
    }
    Valor(std::string_view texto)
        : Valor()
    {
        m_valor.bstrVal = bstr(texto);
        m_valor.vt = VT_BSTR;
    }
    Valor(const std::string& texto)
        : Valor(std::string_view(texto))
    {
    }
    Valor(const char* texto)
        : Valor(std::string_view(texto))
    {
    }
    Valor(IDispatch* objeto) noexcept ///< takes a hold of its own; null: no object
        : Valor()
    {
        if (objeto != nullptr)
            objeto->AddRef();
        m_valor.vt = VT_DISPATCH;
        m_valor.pdispVal = objeto;
    }
    [[nodiscard]] static Valor nulo() noexcept
    {
        Valor valor;
        valor.m_valor.vt = VT_NULL;
        return valor;
    }
    [[nodiscard]] static Valor omitido() noexcept ///< an optional argument that is not given
    {
        Valor valor;
        valor.m_valor.vt = VT_ERROR;
        valor.m_valor.scode = DISP_E_PARAMNOTFOUND;
        return valor;
    }
    /// An argument by reference: whoever is called may change `otro`, which must outlive the call.
    [[nodiscard]] static Valor referencia(Valor& otro) noexcept
    {
        Valor valor;
        valor.m_valor.vt = VT_BYREF | VT_VARIANT;
        valor.m_valor.pvarVal = &otro.m_valor;
        return valor;
    }
    [[nodiscard]] static Valor copia_de(const VARIANT& origen)
    {
        Valor valor;
        auto* de = const_cast<VARIANT*>(&origen); // which is only read
        if (FAILED(VariantCopy(&valor.m_valor, de)))
            throw std::bad_alloc();
        return valor;
    }

    Valor(const Valor& otro)
        : Valor(copia_de(otro.m_valor))
    {
    }
    Valor(Valor&& otro) noexcept
        : m_valor(otro.m_valor)
    {
        VariantInit(&otro.m_valor);
    }
    Valor& operator=(Valor otro) noexcept
    {
        std::swap(m_valor, otro.m_valor);
        return *this;
    }
    ~Valor() { VariantClear(&m_valor); }

    [[nodiscard]] unsigned tipo() const noexcept { return m_valor.vt; } ///< `VT_I2` …
    [[nodiscard]] bool es_vacio() const noexcept { return tipo() == VT_EMPTY; }

    // The value of exactly that kind; anything else throws a `Fallo` 13.
    [[nodiscard]] bool logico() const { return de_tipo(VT_BOOL).boolVal != VARIANT_FALSE; }
    [[nodiscard]] std::int32_t entero() const ///< of 16 or 32 bits
    {
        return tipo() == VT_I2 ? m_valor.iVal : static_cast<std::int32_t>(de_tipo(VT_I4).lVal);
    }
    [[nodiscard]] double real() const { return de_tipo(VT_R8).dblVal; }
    [[nodiscard]] Moneda moneda() const { return { de_tipo(VT_CY).cyVal.int64 }; }
    [[nodiscard]] Fecha fecha() const { return { de_tipo(VT_DATE).date }; }
    [[nodiscard]] std::string texto() const { return utf8(de_tipo(VT_BSTR).bstrVal); }
    [[nodiscard]] IDispatch* objeto() const { return de_tipo(VT_DISPATCH).pdispVal; } ///< still held by this

    [[nodiscard]] const VARIANT& get() const noexcept { return m_valor; }
    [[nodiscard]] VARIANT& get() noexcept { return m_valor; }
    /// Gives the value away, to whoever will clear it.
    [[nodiscard]] VARIANT suelta() noexcept
    {
        const VARIANT valor = m_valor;
        VariantInit(&m_valor);
        return valor;
    }

private:
    [[nodiscard]] const VARIANT& de_tipo(unsigned tipo) const
    {
        if (m_valor.vt != tipo)
            throw Fallo(13, "QVORComprasAtip", "No coinciden los tipos");
        return m_valor;
    }

    VARIANT m_valor;
};

} // namespace atipicos::automation
