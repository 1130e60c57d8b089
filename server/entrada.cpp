// The four entry points of an in-process server: the only symbols that the library shows.
#include "server/Fabrica.hpp"
#include "server/Registro.hpp"
#include "server/Servidor.hpp"

#include <new>

#ifdef _WIN32
#define ATIPICOS_ENTRADA extern "C" HRESULT STDMETHODCALLTYPE
#else
#define ATIPICOS_ENTRADA extern "C" __attribute__((visibility("default"))) atipicos::automation::HRESULT
#endif

using namespace atipicos::server;

ATIPICOS_ENTRADA DllGetClassObject(const GUID& clsid, const GUID& iid, void** objeto)
{
    if (objeto == nullptr)
        return E_POINTER;
    *objeto = nullptr;
    for (const auto* clase : clases()) {
        if (!iguales(clase->publica.clsid, clsid))
            continue;
        auto* fabrica = new (std::nothrow) Fabrica(*clase);
        if (fabrica == nullptr)
            return E_OUTOFMEMORY;
        const auto codigo = fabrica->QueryInterface(iid, objeto);
        fabrica->Release();
        return codigo;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

ATIPICOS_ENTRADA DllCanUnloadNow()
{
    if (servidor::en_uso() || hay_ventanas())
        return S_FALSE;
    servidor::olvida();
    return S_OK;
}

ATIPICOS_ENTRADA DllRegisterServer() { return registra(); }

ATIPICOS_ENTRADA DllUnregisterServer() { return borra_registro(); }

#ifdef _WIN32
BOOL WINAPI DllMain(HINSTANCE /*modulo*/, DWORD motivo, void* /*reservado*/)
{
    if (motivo == DLL_PROCESS_DETACH)
        Despacho::proceso_acaba = true; // what held the host's objects was dropped, or they may be gone
    return TRUE;
}
#endif
