// Whatever is thrown behind an entry of an interface comes out as a result, and never as an exception.
#include "runtime/Error.hpp"
#include "server/Cara.hpp"
#include "server/Llamada.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace atipicos::server {
namespace {

    /// What is thrown, and what comes out of it.
    struct Lanzado {
        const char* que;
        std::function<void()> lanza;
        HRESULT sale;
    };

    const std::vector<Lanzado>& lanzados()
    {
        static const std::vector<Lanzado> todos{
            { "error 6", [] { throw Error::de_ejecucion(6); }, DISP_E_OVERFLOW },
            { "error 7", [] { throw Error::de_ejecucion(7); }, E_OUTOFMEMORY },
            { "error 13", [] { throw Error::de_ejecucion(13); }, DISP_E_TYPEMISMATCH },
            { "error 91", [] { throw Error::de_ejecucion(91); }, static_cast<HRESULT>(0x800A005B) },
            { "error 1000", [] { throw Error(1000, "x", "y"); }, static_cast<HRESULT>(0x800A03E8) },
            { "of a database", [] { throw Error(-2147217900, "x", "y"); }, -2147217900 },
            { "error 0", [] { throw Error(0, "x", "y"); }, E_FAIL },
            { "of the host", [] { throw Fallo(438, "x", "y"); }, static_cast<HRESULT>(0x800A01B6) },
            { "badly passed", [] { throw Llamada::Malo{ DISP_E_BADPARAMCOUNT }; }, DISP_E_BADPARAMCOUNT },
            { "no memory", [] { throw std::bad_alloc(); }, E_OUTOFMEMORY },
            { "foreign", [] { throw std::runtime_error("otra"); }, E_FAIL },
            { "no exception at all", [] { throw 5; }, E_FAIL },
        };
        return todos;
    }

    struct Despachado final : CaraDeDespacho {
        std::function<void()> lanza;
        void* cara_de(const GUID& /*iid*/) override { return lanza(), this; }
        UINT tipos() const override { return lanza(), 1; }
        HRESULT informa(UINT /*cual*/, ITypeInfo** /*tipo*/) const override { return lanza(), S_OK; }
        HRESULT identifica(const GUID&, OLECHAR**, UINT, DISPID*) override { return lanza(), S_OK; }
        HRESULT invoca(DISPID, const GUID&, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
        {
            return lanza(), S_OK;
        }
    };

    struct Enumerado final : CaraDeEnumerador {
        std::function<void()> lanza;
        void* cara_de(const GUID& /*iid*/) override { return lanza(), this; }
        HRESULT entrega(ULONG, VARIANT*, ULONG*) override { return lanza(), S_OK; }
        HRESULT salta(ULONG) override { return lanza(), S_OK; }
        HRESULT vuelve() override { return lanza(), S_OK; }
        IEnumVARIANT* gemelo() const override { return lanza(), nullptr; }
    };

    struct Fabricado final : CaraDeFabrica {
        std::function<void()> lanza;
        void* cara_de(const GUID& /*iid*/) override { return lanza(), this; }
        HRESULT crea(const GUID&, void**) override { return lanza(), S_OK; }
        void bloquea(bool) override { lanza(); }
    };

    /// Every entry of an interface, as a host calls it.
    template <class Objeto> using Entradas = std::vector<std::pair<const char*, HRESULT (*)(Objeto&)>>;

    template <class Objeto> void prueba(const Entradas<Objeto>& entradas)
    {
        for (const auto& lanzado : lanzados()) {
            auto* objeto = new Objeto;
            objeto->lanza = lanzado.lanza;
            for (const auto& [nombre, llama] : entradas) {
                HRESULT salido = S_OK;
                EXPECT_NO_THROW(salido = llama(*objeto)) << nombre << ", " << lanzado.que;
                EXPECT_EQ(salido, lanzado.sale) << nombre << ", " << lanzado.que;
            }
            EXPECT_EQ(objeto->Release(), 0U) << "what failed has taken no hold";
        }
        EXPECT_FALSE(servidor::en_uso());
    }

    /// An entry that could throw at all would not be of this type.
    template <class Objeto> HRESULT se_pregunta(Objeto& objeto) noexcept
    {
        static_assert(noexcept(objeto.QueryInterface(iid_nulo, nullptr))&& noexcept(
            objeto.AddRef())&& noexcept(objeto.Release()));
        void* cara = &objeto;
        const auto salido = objeto.QueryInterface(iid_nulo, &cara);
        EXPECT_EQ(cara, nullptr);
        return salido;
    }

    TEST(Frontera, a_late_bound_face_lets_nothing_through)
    {
        prueba<Despachado>({
            { "QueryInterface", se_pregunta<Despachado> },
            { "GetTypeInfoCount",
                [](Despachado& d) {
                    UINT cuantos = 9;
                    const auto salido = d.GetTypeInfoCount(&cuantos);
                    EXPECT_EQ(cuantos, 0U);
                    return salido;
                } },
            { "GetTypeInfo",
                [](Despachado& d) {
                    ITypeInfo* tipo = nullptr;
                    return d.GetTypeInfo(0, 0, &tipo);
                } },
            { "GetIDsOfNames",
                [](Despachado& d) { return d.GetIDsOfNames(iid_nulo, nullptr, 0, 0, nullptr); } },
            { "Invoke",
                [](Despachado& d) {
                    return d.Invoke(1, iid_nulo, 0, 0, nullptr, nullptr, nullptr, nullptr);
                } },
        });
    }

    TEST(Frontera, an_enumerator_lets_nothing_through)
    {
        prueba<Enumerado>({
            { "QueryInterface", se_pregunta<Enumerado> },
            { "Next", [](Enumerado& e) { return e.Next(1, nullptr, nullptr); } },
            { "Skip", [](Enumerado& e) { return e.Skip(1); } },
            { "Reset", [](Enumerado& e) { return e.Reset(); } },
            { "Clone",
                [](Enumerado& e) {
                    IEnumVARIANT* otro = &e;
                    const auto salido = e.Clone(&otro);
                    EXPECT_EQ(otro, nullptr);
                    return salido;
                } },
        });
    }

    TEST(Frontera, a_factory_lets_nothing_through)
    {
        prueba<Fabricado>({
            { "QueryInterface", se_pregunta<Fabricado> },
            { "CreateInstance",
                [](Fabricado& f) {
                    void* objeto = &f;
                    const auto salido = f.CreateInstance(nullptr, iid_nulo, &objeto);
                    EXPECT_EQ(objeto, nullptr);
                    return salido;
                } },
            { "LockServer", [](Fabricado& f) { return f.LockServer(1); } },
        });
    }

    TEST(Frontera, what_went_well_passes_unchanged)
    {
        EXPECT_EQ(en_frontera([] { return HRESULT{ S_FALSE }; }), HRESULT{ S_FALSE });
    }

}
}
