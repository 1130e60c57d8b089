// What the loaded component says of its classes against the type library that its .idl becomes: Tipos.exe
// FILE.tlb
#include "automation/Componente.hpp"

#include <objbase.h>

#include <cstdio>
#include <string>

namespace {

using namespace atipicos::automation;

int bien = 0;
int mal = 0;

/// One member as a line of text.
std::string texto_de(const TYPEDESC& tipo)
{
    return tipo.vt == VT_PTR ? texto_de(*tipo.lptdesc) + "*" : std::to_string(tipo.vt);
}

/// The member's name and those of its arguments; what a property is set to has a name in files alone.
std::string nombres_de(ITypeInfo& tipo, const FUNCDESC& funcion)
{
    const bool pone = (funcion.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
    BSTR nombres[10] = {};
    UINT cuantos = 0;
    std::string todos;
    if (FAILED(tipo.GetNames(funcion.memid, nombres, pone ? 1 : 10, &cuantos)))
        return "sin nombre";
    for (UINT i = 0; i < cuantos; ++i) {
        todos += " " + utf8(nombres[i]);
        SysFreeString(nombres[i]);
    }
    return todos;
}

std::string funcion_de(ITypeInfo& tipo, UINT lugar)
{
    FUNCDESC* funcion = nullptr;
    if (FAILED(tipo.GetFuncDesc(lugar, &funcion)))
        return "no hay";
    std::string texto = std::to_string(funcion->memid) + " uso " + std::to_string(funcion->invkind)
        + " clase " + std::to_string(funcion->funckind) + " notas " + std::to_string(funcion->wFuncFlags)
        + " da " + texto_de(funcion->elemdescFunc.tdesc) + nombres_de(tipo, *funcion);
    for (int i = 0; i < funcion->cParams; ++i) {
        const auto& parametro = funcion->lprgelemdescParam[i];
        constexpr int las_que_cuentan = PARAMFLAG_FIN | PARAMFLAG_FOUT | PARAMFLAG_FOPT;
        texto += ", " + texto_de(parametro.tdesc) + " "
            + std::to_string(parametro.paramdesc.wParamFlags & las_que_cuentan);
    }
    tipo.ReleaseFuncDesc(funcion);
    return texto;
}

/// How many functions an interface has of its own. What the system says beside them counts those that it
/// inherits, or not.
UINT cuantas_funciones(ITypeInfo& tipo)
{
    UINT cuantas = 0;
    FUNCDESC* funcion = nullptr;
    for (; SUCCEEDED(tipo.GetFuncDesc(cuantas, &funcion)); ++cuantas)
        tipo.ReleaseFuncDesc(funcion);
    return cuantas;
}

void comprueba(bool cierto, const std::string& que)
{
    ++(cierto ? bien : mal);
    if (!cierto)
        std::printf("MAL %s\n", que.c_str());
}

void compara(const std::string& clase, ITypeInfo& del_fichero, ITypeInfo& de_la_biblioteca)
{
    const UINT cuantas = cuantas_funciones(del_fichero);
    const UINT dadas = cuantas_funciones(de_la_biblioteca);
    comprueba(cuantas != 0 && cuantas == dadas,
        clase + ": " + std::to_string(dadas) + " functions instead of " + std::to_string(cuantas));
    for (UINT i = 0; i < cuantas; ++i) {
        const auto debida = funcion_de(del_fichero, i);
        const auto dada = funcion_de(de_la_biblioteca, i);
        comprueba(debida == dada, clase + ": " + dada + " instead of " + debida);
    }
}

/// The type information that an object of the class gives; null where this build has no such class.
ITypeInfo* tipo_de(const ClasePublica& clase)
{
    void* objeto = nullptr;
    if (FAILED(CoCreateInstance(clase.clsid, nullptr, CLSCTX_INPROC_SERVER, iid_despacho, &objeto)))
        return nullptr;
    const auto cargado = Despacho::adopta(static_cast<IDispatch*>(objeto));
    UINT cuantos = 0;
    comprueba(SUCCEEDED(cargado.get()->GetTypeInfoCount(&cuantos)) && cuantos == 1, "one type information");
    ITypeInfo* tipo = nullptr;
    comprueba(cargado.get()->GetTypeInfo(1, 0, &tipo) == DISP_E_BADINDEX, "and no other");
    const auto codigo = static_cast<std::uint32_t>(cargado.get()->GetTypeInfo(0, 0, &tipo));
    comprueba(codigo == 0 && tipo != nullptr, "it is given, and not " + std::to_string(codigo));
    return tipo;
}

void compara_todas(ITypeLib& fichero)
{
    int clases = 0;
    for (const auto& clase : clases_publicas) {
        ITypeInfo* cargado = tipo_de(clase);
        if (cargado == nullptr)
            continue;
        ++clases;
        ITypeInfo* escrito = nullptr;
        const std::string nombre(clase.nombre);
        if (FAILED(fichero.GetTypeInfoOfGuid(clase.iid, &escrito)))
            comprueba(false, nombre + ": it is not in the file");
        else {
            compara(nombre, *escrito, *cargado);
            escrito->Release();
        }
        cargado->Release();
    }
    comprueba(clases >= 3, "at least the classes without windows");
}

}

int main(int argc, char** argv)
{
    if (argc != 2 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 2;
    ITypeLib* fichero = nullptr;
    comprueba(SUCCEEDED(LoadTypeLib(utf16(argv[1]).c_str(), &fichero)), "the file is a type library");
    if (fichero != nullptr) {
        compara_todas(*fichero);
        fichero->Release();
    }
    CoUninitialize();
    std::printf("tipos: %d comprobaciones bien, %d mal\n", bien, mal);
    return mal == 0 ? 0 : 1;
}
