#pragma once

#include "automation/Anfitrion.hpp"
#include "automation/Componente.hpp"

#include <gmock/gmock.h>

#include <dlfcn.h>
#include <string>

namespace atipicos::pruebas {

using namespace automation;

/// A library below Qt that leaves eight bytes behind each time it is unloaded, which would be counted as a
/// leak of ours: it stays.
inline void* const openmp = dlopen("libgomp.so.1", RTLD_NOW | RTLD_NODELETE);

/// The component as a host without its sources has it: a library loaded by name, with four functions.
struct Cargado : testing::Test {
    void* biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);

    Cargado() { EXPECT_NE(biblioteca, nullptr) << dlerror(); }
    ~Cargado() override
    {
        EXPECT_EQ(descargable(), HRESULT{ S_OK }) << "something is still held";
        dlclose(biblioteca);
    }
    Cargado(const Cargado&) = delete;
    Cargado& operator=(const Cargado&) = delete;

    template <class Funcion> Funcion funcion(const char* nombre) const
    {
        void* simbolo = dlsym(biblioteca, nombre);
        EXPECT_NE(simbolo, nullptr) << nombre;
        return reinterpret_cast<Funcion>(simbolo);
    }

    DameClase dame_clase() const { return funcion<DameClase>("DllGetClassObject"); }
    HRESULT descargable() const { return funcion<HRESULT (*)()>("DllCanUnloadNow")(); }
    Despacho crea(const char* nombre) const { return automation::crea(nombre, dame_clase()); }
};

/// `Invoke` as it is, for what no well-behaved caller would do.
struct Crudo {
    HRESULT codigo = S_OK;
    Valor resultado;
    UINT argumento_malo = 99;
    std::int32_t numero = 0; ///< of the exception
    std::string fuente;
    std::string descripcion;

    Crudo(const Despacho& objeto, DISPID id, unsigned uso, std::vector<Valor> argumentos,
        std::vector<DISPID> nombrados = {})
    {
        std::vector<VARIANT> al_reves;
        for (auto i = argumentos.rbegin(); i != argumentos.rend(); ++i)
            al_reves.push_back(i->get());
        if (uso >= DISPATCH_PROPERTYPUT)
            nombrados = { DISPID_PROPERTYPUT };
        DISPPARAMS parametros{ al_reves.data(), nombrados.data(), static_cast<UINT>(al_reves.size()),
            static_cast<UINT>(nombrados.size()) };
        EXCEPINFO excepcion{};
        codigo = objeto.get()->Invoke(id, iid_nulo, 0, static_cast<WORD>(uso), &parametros, &resultado.get(),
            &excepcion, &argumento_malo);
        numero = excepcion.scode & 0xFFFF;
        fuente = utf8(excepcion.bstrSource);
        descripcion = utf8(excepcion.bstrDescription);
        SysFreeString(excepcion.bstrSource);
        SysFreeString(excepcion.bstrDescription);
    }
};

/// The number of the error that something raises; 0 when it raises none.
template <class Uso> std::int32_t error_de(Uso uso)
{
    try {
        uso();
    } catch (const Fallo& fallo) {
        return fallo.numero();
    }
    return 0;
}

} // namespace atipicos::pruebas
