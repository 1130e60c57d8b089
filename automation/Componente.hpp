#pragma once

#include "automation/Despacho.hpp"

#include <array>
#include <string_view>

/// The public classes of the component: their names and identifiers, and how a C++ host makes them.
namespace atipicos::automation {

struct ClasePublica {
    std::string_view nombre; ///< after "QVORComprasAtip."
    GUID clsid;
    GUID iid; ///< of its late-bound interface
};

/// In the component's own order. The identifiers never change.
inline constexpr std::array<ClasePublica, 7> clases_publicas{ {
    { "clsView", { 0xe4ed6e13, 0x6824, 0x462c, { 0x91, 0xa5, 0xa5, 0x43, 0xed, 0x3d, 0xab, 0x3e } },
        { 0x8019298e, 0x50a9, 0x4c32, { 0xbb, 0x22, 0x12, 0xc5, 0x43, 0xc3, 0x31, 0x2b } } },
    { "clsAtipico_Lineas", { 0x07882ef8, 0xfad8, 0x4636, { 0xaf, 0x16, 0x6a, 0x63, 0x08, 0x64, 0x4c, 0xd4 } },
        { 0x90a553c8, 0xc480, 0x49bb, { 0x96, 0x1f, 0xdc, 0x01, 0x23, 0x00, 0x87, 0xf4 } } },
    { "clsAtipico_Linea", { 0x61782ab2, 0x86a5, 0x4cf7, { 0xa4, 0xd4, 0x7d, 0xf0, 0x99, 0x38, 0xd0, 0x88 } },
        { 0x1b995994, 0xda04, 0x40d6, { 0x94, 0x96, 0x48, 0xdb, 0x28, 0x31, 0x58, 0xdc } } },
    { "clsAtipico", { 0x505ec83b, 0x6d96, 0x4e88, { 0xbe, 0xdb, 0x3f, 0x59, 0x57, 0x31, 0x89, 0x4b } },
        { 0x529d7e2a, 0xb1b5, 0x4f9f, { 0xa9, 0xbf, 0x77, 0x95, 0x8a, 0x51, 0x0a, 0x13 } } },
    { "frmclsCopiasImpresion",
        { 0x23319660, 0xe5b6, 0x47e8, { 0x8a, 0xb2, 0x66, 0x95, 0x2a, 0x80, 0x54, 0x29 } },
        { 0xf28fbd45, 0x15cb, 0x4e4a, { 0xa4, 0xc2, 0x33, 0x86, 0x0e, 0x9a, 0xcf, 0x3a } } },
    { "frmclsComprasAtipVisor",
        { 0x204e41e1, 0xd693, 0x40b0, { 0x82, 0x75, 0x14, 0xa3, 0x9b, 0x61, 0xf0, 0xad } },
        { 0xc9aa052d, 0x9022, 0x493b, { 0xb1, 0x37, 0x8d, 0x92, 0xd1, 0x7d, 0x0d, 0x33 } } },
    { "frmclsCompras_Atipicos",
        { 0x83313cb6, 0xd811, 0x4124, { 0x9e, 0x36, 0x1d, 0x2c, 0x98, 0xac, 0xde, 0x31 } },
        { 0xa76f4793, 0xa883, 0x4873, { 0xbf, 0x0d, 0x7f, 0x33, 0xb7, 0x4b, 0x85, 0xac } } },
} };

inline constexpr std::string_view nombre_componente = "QVORComprasAtip";

/// What `DllGetClassObject` is.
using DameClase = HRESULT(STDMETHODCALLTYPE*)(const GUID& clsid, const GUID& iid, void** objeto);

/// A new object of the class called so, "QVORComprasAtip.clsAtipico" or "clsAtipico", from the component
/// whose entry point is given. Throws a `Fallo` 429 when it has no such class.
[[nodiscard]] inline Despacho crea(std::string_view nombre, DameClase dame_clase)
{
    const auto punto = nombre.find('.');
    const auto clase = punto == std::string_view::npos ? nombre : nombre.substr(punto + 1);
    for (const auto& publica : clases_publicas) {
        if (publica.nombre != clase)
            continue;
        void* fabrica = nullptr;
        if (FAILED(dame_clase(publica.clsid, iid_fabrica, &fabrica)))
            break;
        void* objeto = nullptr;
        const auto codigo
            = static_cast<IClassFactory*>(fabrica)->CreateInstance(nullptr, iid_despacho, &objeto);
        static_cast<IClassFactory*>(fabrica)->Release();
        if (FAILED(codigo))
            throw Fallo(codigo, "QVORComprasAtip", "No se pudo crear el objeto " + std::string(nombre));
        return Despacho::adopta(static_cast<IDispatch*>(objeto));
    }
    throw Fallo(429, "QVORComprasAtip", "El componente no puede crear el objeto " + std::string(nombre));
}

} // namespace atipicos::automation

#ifndef _WIN32
// The entry points of the component. On Windows they are asked of the system, as for any other component.
extern "C" {
atipicos::automation::HRESULT DllGetClassObject(
    const atipicos::automation::GUID& clsid, const atipicos::automation::GUID& iid, void** objeto);
atipicos::automation::HRESULT DllCanUnloadNow();
atipicos::automation::HRESULT DllRegisterServer();
atipicos::automation::HRESULT DllUnregisterServer();
}
#endif
