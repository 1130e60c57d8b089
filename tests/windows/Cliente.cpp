// A C++ host on Windows: it makes the classes by their names, as the system knows them.
#include "automation/Anfitrion.hpp"
#include "automation/Componente.hpp"

#include <objbase.h>

#include <cstdio>

namespace {

using namespace atipicos::automation;

int bien = 0;
int mal = 0;

void comprueba(const char* que, bool cierto)
{
    ++(cierto ? bien : mal);
    if (!cierto)
        std::printf("MAL %s\n", que);
}

Despacho crea_por_nombre(const wchar_t* nombre)
{
    GUID clsid;
    void* objeto = nullptr;
    if (FAILED(CLSIDFromProgID(nombre, &clsid))
        || FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid_despacho, &objeto)))
        throw Fallo(429, "Cliente", "no such class");
    return Despacho::adopta(static_cast<IDispatch*>(objeto));
}

std::int32_t numero_de_error(const auto& uso)
{
    try {
        uso();
    } catch (const Fallo& fallo) {
        return fallo.numero();
    }
    return 0;
}

void usa(const char* fichero)
{
    const auto bases = crea_por_nombre(L"AtipicosPrueba.Bases");
    const auto cargo = crea_por_nombre(L"QVORComprasAtip.clsAtipico");
    cargo.pon("EmpresaOrvalin",
        Anfitrion::crea({
                            { "Codigo", [](const Argumentos&) { return Valor(std::int16_t{ 1 }); } },
                            { "DecimalesImporte", [](const Argumentos&) { return Valor(2); } },
                            { "Parametro", [](const Argumentos&) { return Valor("1"); } },
                        })
            .valor());
    cargo.pon("ConexionOrvalin", bases.llama("Abre", fichero));
    cargo.pon("Cod_Ejercicio", 2026);
    cargo.pon("Cod_Almacen", 1);
    cargo.pon("Fecha", Fecha{ 46347 });
    cargo.pon("Codigo", cargo.llama("Devuelve_Codigo", true, 2026));
    comprueba("the code", cargo.llama("Codigo").texto() == "AT260001");
    cargo.objeto("Lineas").llama("Add", 1010, "Queso añejo, 5 €", 2, Moneda{ 97500 });
    comprueba("inserted", !cargo.llama("Insertar").logico());
    comprueba("it exists", cargo.llama("Existe", 2026, 1, "AT260001").logico());
    comprueba("its line",
        bases.llama("Primero", "SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas").texto()
            == "Queso añejo, 5 €");
    comprueba("the type", cargo.llama("Cod_Ejercicio").tipo() == VT_I2);
    comprueba("out of range", numero_de_error([&] { cargo.llama("Devuelve_Codigo", true, 40000); }) == 6);
    comprueba("no member", numero_de_error([&] { cargo.llama("Cod_Empresa"); }) == 438);
    cargo.pon("Fecha", Fecha{});
    comprueba("raised", numero_de_error([&] { cargo.llama("Devuelve_Codigo", true, 2026); }) == 1);
}

}

int main(int argc, char** argv)
{
    if (argc != 2 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 2;
    try {
        usa(argv[1]);
        CoFreeUnusedLibrariesEx(0, 0);
        comprueba("unloaded", GetModuleHandleW(L"QVORComprasAtip.dll") == nullptr);
    } catch (const Fallo& fallo) {
        std::printf("MAL %d %s: %s\n", fallo.numero(), fallo.fuente().c_str(), fallo.what());
        ++mal;
    }
    CoUninitialize();
    std::printf("cliente: %d comprobaciones bien, %d mal\n", bien, mal);
    return mal == 0 ? 0 : 1;
}
