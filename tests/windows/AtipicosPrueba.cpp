// A component of the tests: "AtipicosPrueba.Bases", whose `Abre` makes a database of the management product
// and gives a connection with ADO's surface, and whose `Primero` reads what stands in it. `AbreMuestra` makes
// the sample company of both products; its connections are `Orvalin` and `Bexmor` of what it gives.
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/support/AdoDePrueba.hpp"

#include <string>

namespace {

using namespace atipicos;
using namespace atipicos::automation;

constexpr GUID clsid_bases{ 0xcf6c759c, 0xfc83, 0x4f53, { 0x81, 0xc6, 0x1d, 0xeb, 0x62, 0x8e, 0x72, 0xd7 } };
constexpr auto ruta_clsid = L"Software\\Classes\\CLSID\\{cf6c759c-fc83-4f53-81c6-1deb628e72d7}";
constexpr auto ruta_nombre = L"Software\\Classes\\AtipicosPrueba.Bases";

using Conexion = std::shared_ptr<adodb::Connection>;

Valor abre(Conexion& base, const Argumentos& argumentos)
{
    return pruebas::como_fallo([&] {
        base = sqlite::Connection::Abrir({ .fichero = argumentos.valor(0).texto(), .crear = true });
        sql::ejecuta_guion(*base, guiones::orvalin());
        base->Execute("PRAGMA foreign_keys = OFF");
        return pruebas::ado_de(base).valor();
    });
}

Valor abre_muestra(Conexion& base, const Argumentos& argumentos)
{
    return pruebas::como_fallo([&] {
        const auto pareja
            = sqlite::Connection::AbrirPareja({ .fichero = argumentos.valor(0).texto(), .crear = true });
        for (const auto guion : { guiones::bexmor(), guiones::regularizaciones(), guiones::muestra_bexmor() })
            sql::ejecuta_guion(*pareja.contabilidad, guion);
        for (const auto guion : { guiones::orvalin(), guiones::muestra_orvalin() })
            sql::ejecuta_guion(*pareja.gestion, guion);
        base = pareja.gestion;
        const auto fijo = [](const char* nombre, const Conexion& conexion) {
            return Anfitrion::Miembro{ nombre,
                [ado = pruebas::ado_de(conexion)](const Argumentos&) { return ado.valor(); } };
        };
        return Anfitrion::crea({ fijo("Orvalin", pareja.gestion), fijo("Bexmor", pareja.contabilidad) })
            .valor();
    });
}

Valor primero(adodb::Connection& base, const Argumentos& argumentos)
{
    return pruebas::como_fallo([&] {
        const auto rs = base.CreateRecordset();
        rs->Open(argumentos.valor(0).texto(), adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return Valor(rs->Eof() ? "sin filas" : CStr(rs->Fields(std::size_t{ 0 }).Value()));
    });
}

Despacho bases()
{
    auto base = std::make_shared<Conexion>();
    return Anfitrion::crea({
        { "Abre", [base](const Argumentos& a) { return abre(*base, a); } },
        { "AbreMuestra", [base](const Argumentos& a) { return abre_muestra(*base, a); } },
        { "Primero", [base](const Argumentos& a) { return primero(**base, a); } },
    });
}

/// One for the whole process: it is not counted, because the library stays until the process ends.
class Fabrica final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& iid, void** objeto) override
    {
        const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_fabrica);
        *objeto = suya ? this : nullptr;
        return suya ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, const GUID& iid, void** objeto) override
    {
        return bases().get()->QueryInterface(iid, objeto);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

bool escribe(const std::wstring& clave, const std::wstring& valor)
{
    return RegSetKeyValueW(HKEY_CURRENT_USER, clave.c_str(), nullptr, REG_SZ, valor.c_str(),
               static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t)))
        == ERROR_SUCCESS;
}

}

extern "C" HRESULT STDMETHODCALLTYPE DllGetClassObject(const GUID& clsid, const GUID& iid, void** objeto)
{
    static Fabrica unica;
    return iguales(clsid, clsid_bases) ? unica.QueryInterface(iid, objeto) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" HRESULT STDMETHODCALLTYPE DllCanUnloadNow() { return S_FALSE; }

extern "C" HRESULT STDMETHODCALLTYPE DllRegisterServer()
{
    HMODULE modulo = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&DllRegisterServer), &modulo);
    std::wstring ruta(MAX_PATH, L'\0');
    ruta.resize(GetModuleFileNameW(modulo, ruta.data(), MAX_PATH));
    const std::wstring id(std::wstring(ruta_clsid).substr(std::wstring(ruta_clsid).find(L'{')));
    return escribe(std::wstring(ruta_nombre) + L"\\CLSID", id)
            && escribe(std::wstring(ruta_clsid) + L"\\InprocServer32", ruta)
        ? S_OK
        : E_FAIL;
}

extern "C" HRESULT STDMETHODCALLTYPE DllUnregisterServer()
{
    RegDeleteTreeW(HKEY_CURRENT_USER, ruta_clsid);
    RegDeleteTreeW(HKEY_CURRENT_USER, ruta_nombre);
    return S_OK;
}
