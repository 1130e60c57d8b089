#include "server/Registro.hpp"

#include "automation/Texto.hpp"
#include "server/Clase.hpp"

#ifdef _WIN32
#include <array>
#include <cstdio>
#include <string>
#endif

namespace atipicos::server {

#ifndef _WIN32

HRESULT registra() { return S_OK; }

HRESULT borra_registro() { return S_OK; }

#else

namespace {

    using Ruta = std::wstring;

    const Ruta raiz = L"Software\\Classes\\";

    Ruta texto_de(const GUID& id)
    {
        std::array<wchar_t, 39> texto{};
        std::swprintf(texto.data(), texto.size(), L"{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
            id.Data1, unsigned{ id.Data2 }, unsigned{ id.Data3 }, unsigned{ id.Data4[0] },
            unsigned{ id.Data4[1] }, unsigned{ id.Data4[2] }, unsigned{ id.Data4[3] },
            unsigned{ id.Data4[4] }, unsigned{ id.Data4[5] }, unsigned{ id.Data4[6] },
            unsigned{ id.Data4[7] });
        return texto.data();
    }

    Ruta ruta_de_esta_biblioteca()
    {
        HMODULE modulo = nullptr;
        GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<const wchar_t*>(&registra), &modulo);
        Ruta ruta(MAX_PATH, L'\0');
        for (;;) {
            const auto longitud = GetModuleFileNameW(modulo, ruta.data(), static_cast<DWORD>(ruta.size()));
            if (longitud < ruta.size()) {
                ruta.resize(longitud);
                return ruta;
            }
            ruta.resize(ruta.size() * 2);
        }
    }

    bool escribe(const Ruta& clave, const wchar_t* nombre, const Ruta& valor)
    {
        const auto bytes = static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t));
        return RegSetKeyValueW(
                   HKEY_CURRENT_USER, (raiz + clave).c_str(), nombre, REG_SZ, valor.c_str(), bytes)
            == ERROR_SUCCESS;
    }

    bool registra(const ClasePublica& clase, const Ruta& biblioteca)
    {
        const Ruta id = texto_de(clase.clsid);
        const Ruta nombre = utf16(std::string(nombre_componente) + "." + std::string(clase.nombre));
        const Ruta servidor = L"CLSID\\" + id + L"\\InprocServer32";
        return escribe(nombre, nullptr, nombre) && escribe(nombre + L"\\CLSID", nullptr, id)
            && escribe(L"CLSID\\" + id, nullptr, nombre) && escribe(servidor, nullptr, biblioteca)
            && escribe(servidor, L"ThreadingModel", L"Apartment")
            && escribe(L"CLSID\\" + id + L"\\ProgID", nullptr, nombre);
    }

    bool borra(const Ruta& clave)
    {
        const auto codigo = RegDeleteTreeW(HKEY_CURRENT_USER, (raiz + clave).c_str());
        return codigo == ERROR_SUCCESS || codigo == ERROR_FILE_NOT_FOUND;
    }

}

HRESULT registra()
{
    const Ruta biblioteca = ruta_de_esta_biblioteca();
    bool bien = true;
    for (const auto* clase : clases())
        bien = bien && registra(clase->publica, biblioteca);
    if (!bien)
        static_cast<void>(borra_registro());
    return bien ? S_OK : E_FAIL;
}

HRESULT borra_registro()
{
    bool bien = true;
    for (const auto& clase : clases_publicas) {
        const Ruta nombre = utf16(std::string(nombre_componente) + "." + std::string(clase.nombre));
        bien = borra(L"CLSID\\" + texto_de(clase.clsid)) && bien;
        bien = borra(nombre) && bien;
    }
    return bien ? S_OK : E_FAIL;
}

#endif

} // namespace atipicos::server
