// The nth allocation behind each entry of the loaded component fails: the caller gets a result that says so,
// no exception, and what it asks again is done.
#include "tests/server/Cargado.hpp"

#include <cstdlib>
#include <functional>
#include <new>

namespace {

bool contando = false;
std::size_t asignadas = 0;
std::size_t falla_la = 0;

}

// The component has none of its own: it takes the program's.
void* operator new(std::size_t tamano)
{
    if (contando && ++asignadas == falla_la)
        throw std::bad_alloc();
    if (void* memoria = std::malloc(tamano == 0 ? 1 : tamano))
        return memoria;
    throw std::bad_alloc();
}
void operator delete(void* memoria) noexcept { std::free(memoria); }
void operator delete(void* memoria, std::size_t) noexcept { std::free(memoria); }

namespace atipicos::pruebas {
namespace {

    struct SinMemoria : Cargado {
        Despacho cargo = crea("clsAtipico");
        Despacho lineas = cargo.objeto("Lineas");

        SinMemoria()
        {
            lineas.llama("Add", 1010, "Un queso de nombre tan largo que pide memoria");
            lineas.llama("Add", 1011, "Otro queso de nombre tan largo que la pide también");
        }
        ~SinMemoria() override { cargo = lineas = {}; }
        SinMemoria(const SinMemoria&) = delete;
        SinMemoria& operator=(const SinMemoria&) = delete;

        /// Asks with the first allocation failing, then with the second, until none fails. How many did.
        static std::size_t hasta_que_salga(const std::function<HRESULT()>& pide)
        {
            for (std::size_t n = 1;; ++n) {
                asignadas = 0;
                falla_la = n;
                contando = true;
                HRESULT salido = S_OK;
                try {
                    salido = pide();
                } catch (...) {
                    contando = false;
                    ADD_FAILURE() << "an exception came out of allocation " << n;
                    return n;
                }
                contando = false;
                if (asignadas < n) {
                    EXPECT_GE(salido, 0);
                    return n - 1;
                }
                EXPECT_TRUE(salido == HRESULT{ E_OUTOFMEMORY } || salido == HRESULT{ DISP_E_EXCEPTION })
                    << std::hex << salido << " at allocation " << std::dec << n;
            }
        }
    };

    TEST_F(SinMemoria, an_object_is_made_when_there_is_memory_again)
    {
        const auto dame = dame_clase();
        Despacho nuevo;
        EXPECT_GT(hasta_que_salga([&] {
            void* fabrica = nullptr;
            const auto dada = dame(clases_publicas[2].clsid, iid_fabrica, &fabrica);
            if (FAILED(dada))
                return dada;
            void* objeto = nullptr;
            const auto codigo
                = static_cast<IClassFactory*>(fabrica)->CreateInstance(nullptr, iid_despacho, &objeto);
            static_cast<IClassFactory*>(fabrica)->Release();
            nuevo = Despacho::adopta(static_cast<IDispatch*>(objeto));
            return codigo;
        }),
            2U);
        EXPECT_EQ(nuevo.llama("Cod_Articulo").entero(), 0);
    }

    TEST_F(SinMemoria, a_member_is_called_when_there_is_memory_again)
    {
        const auto agrega = lineas.id("Add");
        Valor descripcion("Un tercer queso de nombre tan largo que pide memoria");
        EXPECT_GT(hasta_que_salga([&] {
            VARIANT argumentos[2] = { descripcion.get(), {} };
            argumentos[1].vt = VT_I4;
            argumentos[1].lVal = 1012;
            DISPPARAMS parametros{ argumentos, nullptr, 2, 0 };
            Valor linea;
            EXCEPINFO excepcion{};
            const auto codigo = lineas.get()->Invoke(
                agrega, iid_nulo, 0, DISPATCH_METHOD, &parametros, &linea.get(), &excepcion, nullptr);
            if (codigo == DISP_E_EXCEPTION) {
                EXPECT_EQ(excepcion.scode, static_cast<HRESULT>(0x800A0007));
                SysFreeString(excepcion.bstrSource);
                SysFreeString(excepcion.bstrDescription);
            }
            return codigo;
        }),
            2U);
        const auto cuantas = lineas.llama("Count").entero();
        EXPECT_EQ(lineas.objeto("Item", cuantas).llama("Descripcion").texto(), descripcion.texto());
    }

    TEST_F(SinMemoria, a_walk_goes_on_where_it_was_when_there_is_memory_again)
    {
        Valor enumerador = lineas.llama(DISPID{ DISPID_NEWENUM });
        void* cara = nullptr;
        ASSERT_EQ(enumerador.get().punkVal->QueryInterface(iid_enumerador, &cara), HRESULT{ S_OK });
        auto* paseo = static_cast<IEnumVARIANT*>(cara);
        VARIANT dos[2] = {};
        ULONG dados = 9;
        EXPECT_GT(hasta_que_salga([&] {
            const auto codigo = paseo->Next(2, dos, &dados);
            EXPECT_EQ(dados, FAILED(codigo) ? 0U : 2U) << "all or none";
            return codigo;
        }),
            2U);
        EXPECT_EQ(Despacho::de(dos[0]).llama("Cod_Articulo").entero(), 1010);
        EXPECT_EQ(Despacho::de(dos[1]).llama("Cod_Articulo").entero(), 1011);
        for (auto& una : dos)
            VariantClear(&una);
        EXPECT_GT(hasta_que_salga([&] {
            IEnumVARIANT* gemelo = nullptr;
            const auto codigo = paseo->Clone(&gemelo);
            EXPECT_EQ(gemelo == nullptr, FAILED(codigo));
            if (gemelo != nullptr)
                gemelo->Release();
            return codigo;
        }),
            0U);
        paseo->Reset();
        EXPECT_GT(hasta_que_salga([&] { return paseo->Reset(), paseo->Skip(2); }), 0U);
        paseo->Release();
    }

}
}
