#pragma once

/// The binary face of automation objects: the interfaces, values and results that a host and this component
/// exchange. On Windows they are the system's own; elsewhere they are declared here with the same layout, so
/// that the same sources serve both.
///
/// Elsewhere, texts (`BSTR`) and whatever else changes hands are allocated with `malloc` and freed with
/// `free`.

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <dispex.h>
#include <oaidl.h>
#include <ocidl.h>
#include <oleauto.h>

#include <cstring>

namespace atipicos::automation {

using ::BSTR;
using ::DISPID;
using ::DISPPARAMS;
using ::EXCEPINFO;
using ::GUID;
using ::HRESULT;
using ::IClassFactory;
using ::IDispatch;
using ::IEnumVARIANT;
using ::ITypeInfo;
using ::IUnknown;
using ::LCID;
using ::OLECHAR;
using ::VARIANT;

inline constexpr GUID iid_desconocido{ 0x00000000, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_fabrica{ 0x00000001, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_despacho{ 0x00020400, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_enumerador{ 0x00020404, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_despacho_ex{ 0xA6EF9860, 0xC720, 0x11D0,
    { 0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9 } };
inline constexpr GUID iid_nulo{};

[[nodiscard]] inline bool iguales(const GUID& a, const GUID& b) noexcept
{
    return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

} // namespace atipicos::automation

#else

#include <cstdint>
#include <cstdlib>
#include <cstring>

#define STDMETHODCALLTYPE

namespace atipicos::automation {

using HRESULT = std::int32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using WORD = std::uint16_t;
using LCID = std::uint32_t;
using BOOL = std::int32_t;
using DISPID = std::int32_t;
using OLECHAR = char16_t;
using BSTR = OLECHAR*;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};

[[nodiscard]] inline bool iguales(const GUID& a, const GUID& b) noexcept
{
    return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

[[nodiscard]] constexpr HRESULT resultado(std::uint32_t codigo) noexcept
{
    return static_cast<HRESULT>(codigo);
}
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = resultado(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = resultado(0x80004002);
inline constexpr HRESULT E_POINTER = resultado(0x80004003);
inline constexpr HRESULT E_FAIL = resultado(0x80004005);
inline constexpr HRESULT E_OUTOFMEMORY = resultado(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = resultado(0x80070057);
inline constexpr HRESULT RPC_E_WRONG_THREAD = resultado(0x8001010E);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = resultado(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = resultado(0x80040111);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = resultado(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = resultado(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = resultado(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = resultado(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = resultado(0x80020006);
inline constexpr HRESULT DISP_E_EXCEPTION = resultado(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = resultado(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = resultado(0x8002000B);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = resultado(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = resultado(0x8002000F);

[[nodiscard]] constexpr bool SUCCEEDED(HRESULT resultado) noexcept { return resultado >= 0; }
[[nodiscard]] constexpr bool FAILED(HRESULT resultado) noexcept { return resultado < 0; }

inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;
inline constexpr DISPID DISPID_NEWENUM = -4;
inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_NULL = 1;
inline constexpr VARTYPE VT_I2 = 2;
inline constexpr VARTYPE VT_I4 = 3;
inline constexpr VARTYPE VT_R4 = 4;
inline constexpr VARTYPE VT_R8 = 5;
inline constexpr VARTYPE VT_CY = 6;
inline constexpr VARTYPE VT_DATE = 7;
inline constexpr VARTYPE VT_BSTR = 8;
inline constexpr VARTYPE VT_DISPATCH = 9;
inline constexpr VARTYPE VT_ERROR = 10;
inline constexpr VARTYPE VT_BOOL = 11;
inline constexpr VARTYPE VT_VARIANT = 12;
inline constexpr VARTYPE VT_UNKNOWN = 13;
inline constexpr VARTYPE VT_DECIMAL = 14;
inline constexpr VARTYPE VT_I1 = 16;
inline constexpr VARTYPE VT_UI1 = 17;
inline constexpr VARTYPE VT_UI2 = 18;
inline constexpr VARTYPE VT_UI4 = 19;
inline constexpr VARTYPE VT_I8 = 20;
inline constexpr VARTYPE VT_UI8 = 21;
inline constexpr VARTYPE VT_INT = 22;
inline constexpr VARTYPE VT_UINT = 23;
inline constexpr VARTYPE VT_BYREF = 0x4000;

inline constexpr GUID iid_desconocido{ 0x00000000, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_fabrica{ 0x00000001, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_despacho{ 0x00020400, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_enumerador{ 0x00020404, 0, 0, { 0xC0, 0, 0, 0, 0, 0, 0, 0x46 } };
inline constexpr GUID iid_despacho_ex{ 0xA6EF9860, 0xC720, 0x11D0,
    { 0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9 } };
inline constexpr GUID iid_nulo{};

class IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default; // no slot in the table: objects are destroyed by their last `Release`
};

class IClassFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* exterior, const GUID& iid, void** objeto) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL retener) = 0;

protected:
    ~IClassFactory() = default;
};

class IDispatch;

union CY {
    std::int64_t int64; ///< ten-thousandths
};

/// A value and its type. Of a decimal, `wReserved1` to `wReserved3` hold scale, sign and high digits.
struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        std::int64_t llVal;
        std::uint64_t ullVal;
        std::int32_t lVal;
        std::uint32_t ulVal;
        std::int16_t iVal;
        std::uint16_t uiVal;
        std::uint8_t bVal;
        signed char cVal;
        std::int32_t intVal;
        std::uint32_t uintVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        std::int32_t scode;
        CY cyVal;
        double date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        VARIANT* pvarVal;
        void* byref;
        void* registro[2]; ///< makes it as large as it is
    };
};
static_assert(sizeof(VARIANT) == 8 + 2 * sizeof(void*));

struct DISPPARAMS {
    VARIANT* rgvarg; ///< the last argument first
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO {
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    std::uint32_t dwHelpContext;
    void* pvReserved;
    HRESULT(STDMETHODCALLTYPE* pfnDeferredFillIn)(EXCEPINFO*);
    HRESULT scode;
};

class ITypeInfo;

class IDispatch : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* cuantos) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT cual, LCID idioma, ITypeInfo** tipo) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(
        const GUID& iid, OLECHAR** nombres, UINT cuantos, LCID idioma, DISPID* ids)
        = 0;
    virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID id, const GUID& iid, LCID idioma, WORD uso,
        DISPPARAMS* argumentos, VARIANT* resultado, EXCEPINFO* excepcion, UINT* argumento_malo)
        = 0;

protected:
    ~IDispatch() = default;
};

class IEnumVARIANT : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Next(ULONG cuantos, VARIANT* valores, ULONG* entregados) = 0;
    virtual HRESULT STDMETHODCALLTYPE Skip(ULONG cuantos) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** otro) = 0;

protected:
    ~IEnumVARIANT() = default;
};

/// A text as automation passes it: its length in bytes stands in the four bytes before it, a zero after it.
[[nodiscard]] inline BSTR SysAllocStringLen(const OLECHAR* texto, UINT longitud) noexcept
{
    constexpr std::size_t antes = 8; // keeps what follows aligned
    const std::uint32_t bytes = longitud * static_cast<std::uint32_t>(sizeof(OLECHAR));
    auto* bloque = static_cast<char*>(std::malloc(antes + bytes + sizeof(OLECHAR)));
    if (bloque == nullptr)
        return nullptr;
    std::memcpy(bloque + antes - sizeof bytes, &bytes, sizeof bytes);
    if (texto != nullptr)
        std::memcpy(bloque + antes, texto, bytes);
    std::memset(bloque + antes + bytes, 0, sizeof(OLECHAR));
    return static_cast<BSTR>(static_cast<void*>(bloque + antes));
}

inline void SysFreeString(BSTR texto) noexcept
{
    if (texto != nullptr)
        std::free(static_cast<char*>(static_cast<void*>(texto)) - 8);
}

[[nodiscard]] inline UINT SysStringLen(BSTR texto) noexcept
{
    if (texto == nullptr)
        return 0;
    std::uint32_t bytes = 0;
    std::memcpy(
        &bytes, static_cast<const char*>(static_cast<const void*>(texto)) - sizeof bytes, sizeof bytes);
    return bytes / static_cast<UINT>(sizeof(OLECHAR));
}

inline void VariantInit(VARIANT* valor) noexcept { std::memset(valor, 0, sizeof *valor); }

/// Gives up what the value holds; one that refers to another's place leaves that as it is.
inline HRESULT VariantClear(VARIANT* valor) noexcept
{
    if (valor->vt == VT_BSTR)
        SysFreeString(valor->bstrVal);
    else if ((valor->vt == VT_DISPATCH || valor->vt == VT_UNKNOWN) && valor->punkVal != nullptr)
        valor->punkVal->Release();
    VariantInit(valor);
    return S_OK;
}

/// `destino` must be empty or hold a value; it is cleared first.
inline HRESULT VariantCopy(VARIANT* destino, VARIANT* origen) noexcept
{
    if (destino == origen)
        return S_OK;
    VariantClear(destino);
    *destino = *origen;
    if (origen->vt == VT_BSTR && origen->bstrVal != nullptr) {
        destino->bstrVal = SysAllocStringLen(origen->bstrVal, SysStringLen(origen->bstrVal));
        if (destino->bstrVal == nullptr) {
            VariantInit(destino);
            return E_OUTOFMEMORY;
        }
    } else if ((origen->vt == VT_DISPATCH || origen->vt == VT_UNKNOWN) && origen->punkVal != nullptr) {
        origen->punkVal->AddRef();
    }
    return S_OK;
}

} // namespace atipicos::automation

#endif
