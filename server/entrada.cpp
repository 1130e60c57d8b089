// The four entry points of an in-process server: the only symbols that the library shows.
#include "server/Fabrica.hpp"
#include "server/Registro.hpp"
#include "server/Servidor.hpp"

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
    return en_frontera([&] {
        for (const auto* clase : clases()) {
            if (!iguales(clase->publica.clsid, clsid))
                continue;
            auto* fabrica = new Fabrica(*clase);
            const auto codigo = fabrica->QueryInterface(iid, objeto);
            fabrica->Release();
            return codigo;
        }
        return HRESULT{ CLASS_E_CLASSNOTAVAILABLE };
    });
}

ATIPICOS_ENTRADA DllCanUnloadNow() { return servidor::en_uso() || hay_ventanas() ? S_FALSE : S_OK; }

ATIPICOS_ENTRADA DllRegisterServer() { return en_frontera(registra); }

ATIPICOS_ENTRADA DllUnregisterServer() { return en_frontera(borra_registro); }

#ifdef _WIN32
BOOL WINAPI DllMain(HINSTANCE /*modulo*/, DWORD motivo, void* fin_del_proceso)
{
    if (motivo == DLL_PROCESS_DETACH) {
        if (fin_del_proceso == nullptr)
            servidor::olvida();
        Despacho::proceso_acaba = true;
    }
    return TRUE;
}
#else
// Unloaded by hand, this runs before the library's own objects are destroyed; at the end of the process,
// after.
__attribute__((destructor)) static void al_descargar() { servidor::olvida(); }
#endif
