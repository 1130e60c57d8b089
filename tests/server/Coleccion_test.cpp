// The lines of a charge as a host walks over them, and who holds what.
#include "tests/server/Cargado.hpp"

#include <atomic>
#include <cstdlib>
#include <thread>

namespace atipicos::pruebas {
namespace {

    using testing::ElementsAre;

    std::vector<std::string> descripciones(const Despacho& lineas)
    {
        std::vector<std::string> todas;
        for (std::int32_t i = 1; i <= lineas.llama("Count").entero(); ++i)
            todas.push_back(lineas.objeto("Item", i).llama("Descripcion").texto());
        return todas;
    }

    void agrega(const Despacho& lineas, const char* descripcion, std::int32_t tras = 0)
    {
        lineas.llama("Add", 1, descripcion, 2, 3, "", 4, tras);
    }

    /// A walk as `For Each` does it.
    struct Paseo {
        IEnumVARIANT* enumerador = nullptr;

        explicit Paseo(const Despacho& lineas)
        {
            const Crudo pedido(lineas, DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
            EXPECT_EQ(pedido.codigo, HRESULT{ S_OK });
            void* cara = nullptr;
            EXPECT_EQ(pedido.resultado.get().punkVal->QueryInterface(iid_enumerador, &cara), HRESULT{ S_OK });
            enumerador = static_cast<IEnumVARIANT*>(cara);
        }
        Paseo(const Paseo&) = delete;
        Paseo& operator=(const Paseo&) = delete;
        ~Paseo() { enumerador->Release(); }

        [[nodiscard]] std::string siguiente() const
        {
            Valor linea;
            ULONG dados = 0;
            const auto codigo = enumerador->Next(1, &linea.get(), &dados);
            EXPECT_EQ(codigo, dados == 1 ? HRESULT{ S_OK } : HRESULT{ S_FALSE });
            return dados == 0 ? "fin" : Despacho::de(linea.get()).llama("Descripcion").texto();
        }
    };

    struct Coleccion : Cargado {
        Despacho lineas = crea("clsAtipico_Lineas");

        Coleccion()
        {
            for (const char* una : { "uno", "dos", "tres" })
                agrega(lineas, una);
        }
    };

    TEST_F(Coleccion, lines_are_added_removed_and_copied_by_position)
    {
        agrega(lineas, "nueva", 2);
        EXPECT_THAT(descripciones(lineas), ElementsAre("uno", "dos", "nueva", "tres"));
        lineas.llama("Remove", 1);
        EXPECT_THAT(descripciones(lineas), ElementsAre("dos", "nueva", "tres"));

        const auto copia = lineas.objeto("Clone");
        copia.objeto("Item", 1).pon("Descripcion", "cambiada");
        EXPECT_THAT(descripciones(copia), ElementsAre("cambiada", "nueva", "tres"));
        EXPECT_THAT(descripciones(lineas), ElementsAre("dos", "nueva", "tres"));

        const auto linea = lineas.objeto("Item", 3);
        linea.pon("NumLinea", 9);
        copia.llama("AddByClass", linea.get());
        EXPECT_EQ(copia.objeto("Item", 4).llama("NumLinea").entero(), 9);
        const auto otra = crea("clsAtipico_Linea");
        otra.llama("Copiar", linea.get());
        EXPECT_EQ(otra.llama("NumLinea").entero(), 0);
        EXPECT_EQ(otra.llama("Descripcion").texto(), "tres");

        lineas.llama("Clear");
        EXPECT_EQ(lineas.llama("Count").entero(), 0);
        EXPECT_EQ(linea.llama("Descripcion").texto(), "tres") << "a line outlives its place";
        for (const std::int32_t fuera : { 0, -1, 1 })
            EXPECT_EQ(error_de([&] { lineas.llama("Remove", fuera); }), 5) << fuera;
        EXPECT_EQ(error_de([&] { lineas.llama("Item", 40000); }), 6);
        EXPECT_EQ(error_de([&] { agrega(lineas, "mal", 5); }), 5);
    }

    TEST_F(Coleccion, the_same_line_is_the_same_object)
    {
        const auto una = lineas.objeto("Item", 2);
        EXPECT_EQ(lineas.objeto("Item", 2).get(), una.get());
        EXPECT_NE(lineas.objeto("Item", 1).get(), una.get());
        const auto cargo = crea("clsAtipico");
        EXPECT_EQ(cargo.objeto("Lineas").get(), cargo.objeto("Lineas").get());
        cargo.pon("Lineas", lineas.valor());
        EXPECT_EQ(cargo.objeto("Lineas").get(), lineas.get());
    }

    TEST_F(Coleccion, an_index_alone_means_the_item)
    {
        EXPECT_EQ(Despacho::de(lineas.llama(DISPID_VALUE, 2).get()).llama("Descripcion").texto(), "dos");
        const auto cargo = crea("clsAtipico");
        cargo.pon("Lineas", lineas.valor());
        EXPECT_EQ(cargo.objeto("Lineas", 3).llama("Descripcion").texto(), "tres");
        EXPECT_EQ(Crudo(cargo, cargo.id("Lineas"), DISPATCH_PROPERTYGET, { 4 }).numero, 5);
    }

    TEST_F(Coleccion, it_is_walked_over_from_first_to_last)
    {
        const Paseo paseo(lineas);
        EXPECT_EQ(paseo.siguiente(), "uno");
        IEnumVARIANT* gemelo = nullptr;
        ASSERT_EQ(paseo.enumerador->Clone(&gemelo), HRESULT{ S_OK });
        EXPECT_EQ(paseo.siguiente(), "dos");
        lineas.llama("Remove", 3);
        EXPECT_EQ(paseo.siguiente(), "fin");
        EXPECT_EQ(paseo.siguiente(), "fin");
        agrega(lineas, "cuatro");
        EXPECT_EQ(paseo.siguiente(), "cuatro");

        VARIANT dos[3] = {};
        ULONG dados = 0;
        EXPECT_EQ(gemelo->Next(3, dos, &dados), HRESULT{ S_FALSE });
        EXPECT_EQ(dados, 2U) << "it stood behind the first one";
        for (auto& una : dos)
            VariantClear(&una);
        EXPECT_EQ(gemelo->Reset(), HRESULT{ S_OK });
        EXPECT_EQ(gemelo->Skip(2), HRESULT{ S_OK });
        EXPECT_EQ(gemelo->Skip(2), HRESULT{ S_FALSE });
        EXPECT_EQ(gemelo->Next(2, dos, nullptr), HRESULT{ E_POINTER });
        EXPECT_EQ(gemelo->Clone(nullptr), HRESULT{ E_POINTER });
        gemelo->Release();
    }

    TEST_F(Coleccion, a_walk_ends_with_the_overflow_error_behind_the_last_position_there_is)
    {
        constexpr int ultima = 32767;
        for (int i = lineas.llama("Count").entero(); i < 40'000; ++i)
            lineas.llama("Add", i);
        const Paseo paseo(lineas);
        for (int i = 1; i < ultima; ++i)
            ASSERT_EQ(paseo.enumerador->Skip(1), HRESULT{ S_OK }) << i;
        VARIANT dos[2] = {};
        ULONG dados = 9;
        EXPECT_EQ(paseo.enumerador->Next(2, dos, &dados), HRESULT{ DISP_E_OVERFLOW });
        EXPECT_EQ(dados, 0U) << "what was taken is given back with the error";
        EXPECT_EQ(dos[0].vt, VARTYPE{ VT_EMPTY });
        EXPECT_EQ(paseo.enumerador->Next(1, dos, &dados), HRESULT{ S_OK }) << "the walk has not moved";
        EXPECT_EQ(Despacho::de(dos[0]).llama("Cod_Articulo").entero(), ultima - 1);
        VariantClear(&dos[0]);
        for (int vez = 0; vez < 2; ++vez) {
            EXPECT_EQ(paseo.enumerador->Next(1, dos, &dados), HRESULT{ DISP_E_OVERFLOW });
            EXPECT_EQ(paseo.enumerador->Skip(1), HRESULT{ DISP_E_OVERFLOW });
        }
        EXPECT_EQ(lineas.llama("Count").entero(), 40'000) << "the component goes on";
    }

    using Vida = Cargado;

    TEST_F(Vida, references_are_counted_exactly)
    {
        const auto cargo = crea("clsAtipico");
        EXPECT_EQ(cargo.get()->AddRef(), 2U);
        EXPECT_EQ(cargo.get()->Release(), 1U);
        void* cara = nullptr;
        ASSERT_EQ(cargo.get()->QueryInterface(iid_desconocido, &cara), HRESULT{ S_OK });
        EXPECT_EQ(static_cast<IUnknown*>(cara)->Release(), 1U);
        ASSERT_EQ(cargo.get()->QueryInterface(clases_publicas[3].iid, &cara), HRESULT{ S_OK });
        EXPECT_EQ(static_cast<IUnknown*>(cara)->Release(), 1U);
        EXPECT_EQ(error_de([&] { cargo.pon("Lineas", 1); }), 13);
        EXPECT_EQ(error_de([&] { cargo.llama("Existe", 1, 1, "x"); }), 91);
        const auto lineas = cargo.objeto("Lineas");
        lineas.llama("AddByClass", crea("clsAtipico_Linea").get());
        EXPECT_EQ(lineas.get()->AddRef(), 2U) << "no call kept a hold";
        EXPECT_EQ(lineas.get()->Release(), 1U);
        EXPECT_EQ(cargo.get()->AddRef(), 2U);
        EXPECT_EQ(cargo.get()->Release(), 1U);
    }

    TEST_F(Vida, a_part_outlives_the_whole)
    {
        Despacho linea;
        {
            const auto cargo = crea("clsAtipico");
            const auto lineas = cargo.objeto("Lineas");
            linea = lineas.objeto("Add", 1010, "queda");
        }
        EXPECT_EQ(linea.llama("Descripcion").texto(), "queda");
        EXPECT_EQ(descargable(), HRESULT{ S_FALSE });
    }

    TEST_F(Vida, the_library_is_unloaded_when_nothing_is_held)
    {
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        void* objeto = nullptr;
        ASSERT_EQ(dame_clase()(clases_publicas[3].clsid, iid_fabrica, &objeto), HRESULT{ S_OK });
        EXPECT_EQ(descargable(), HRESULT{ S_FALSE }) << "a factory is held";
        auto* fabrica = static_cast<IClassFactory*>(objeto);
        fabrica->LockServer(1);
        fabrica->Release();
        EXPECT_EQ(descargable(), HRESULT{ S_FALSE }) << "it is locked";
        {
            const auto cargo = crea("clsAtipico");
            EXPECT_EQ(descargable(), HRESULT{ S_FALSE }) << "it is locked, and in use";
        }
        ASSERT_EQ(dame_clase()(clases_publicas[3].clsid, iid_fabrica, &objeto), HRESULT{ S_OK });
        static_cast<IClassFactory*>(objeto)->LockServer(0);
        static_cast<IClassFactory*>(objeto)->Release();
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        {
            const auto cargo = crea("clsAtipico");
            EXPECT_EQ(descargable(), HRESULT{ S_FALSE });
        }
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        dlclose(biblioteca);
        EXPECT_EQ(dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it is gone";
        biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
        EXPECT_EQ(crea("clsAtipico").llama("Codigo").texto(), "") << "and comes back";
    }

    TEST_F(Vida, the_hosts_objects_are_held_until_it_is_unloaded)
    {
        const auto empresa = Anfitrion::crea({});
        const auto sostenes = [&] {
            empresa.get()->AddRef();
            return empresa.get()->Release();
        };
        crea("clsAtipico").pon("EmpresaOrvalin", empresa.valor());
        EXPECT_EQ(sostenes(), 2U) << "the context holds it, and outlives the charge";
        EXPECT_EQ(descargable(), HRESULT{ S_OK });
        EXPECT_EQ(sostenes(), 2U) << "that it may be unloaded takes nothing from it";
        crea("clsAtipico").pon("EmpresaOrvalin", empresa.valor());
        EXPECT_EQ(sostenes(), 2U) << "the hold of before was given up";
        dlclose(biblioteca);
        EXPECT_EQ(sostenes(), 1U);
        biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL);
        EXPECT_EQ(error_de([&] { crea("clsAtipico").llama("Existe", 1, 1, "x"); }), 91) << "it begins anew";
    }

    TEST_F(Vida, what_the_host_takes_back_is_let_go_at_once)
    {
        const auto empresa = Anfitrion::crea({});
        const auto cargo = crea("clsAtipico");
        cargo.pon("EmpresaOrvalin", empresa.valor());
        cargo.pon("EmpresaOrvalin", Despacho().valor());
        EXPECT_EQ(empresa.get()->AddRef(), 2U);
        empresa.get()->Release();
    }

    /// A host whose own parts are gone by then, as those of an interpreter are, would crash.
    TEST_F(Vida, a_process_that_ends_is_not_called_back)
    {
        struct Ultima {
            ~Ultima() { std::_Exit(3); }
        };
        const auto empresa = [] {
            return Anfitrion::crea(
                { { "Codigo", [u = std::make_shared<Ultima>()](const Argumentos&) { return Valor(); } } });
        };
        [[maybe_unused]] static const void* visto = nullptr; // it is known about, and not lost
        const auto termina = [&] {
            auto prestada = empresa();
            visto = prestada.get();
            crea("clsAtipico").pon("EmpresaOrvalin", prestada.valor());
            prestada = {};
            std::exit(0);
        };
        EXPECT_EXIT(termina(), testing::ExitedWithCode(0), "");
    }

    TEST_F(Vida, registering_has_nothing_to_write_here)
    {
        EXPECT_EQ(funcion<HRESULT (*)()>("DllRegisterServer")(), HRESULT{ S_OK });
        EXPECT_EQ(funcion<HRESULT (*)()>("DllUnregisterServer")(), HRESULT{ S_OK });
    }

    TEST_F(Vida, another_thread_is_refused_while_something_is_held)
    {
        auto cargo = crea("clsAtipico");
        const auto lineas = cargo.objeto("Lineas");
        const Paseo paseo(lineas);
        std::thread([&] {
            EXPECT_EQ(Crudo(cargo, 1, DISPATCH_PROPERTYGET, {}).codigo, HRESULT{ RPC_E_WRONG_THREAD });
            EXPECT_EQ(
                error_de([&] { static_cast<void>(crea("clsAtipico")); }), std::int32_t{ RPC_E_WRONG_THREAD });
            Valor linea;
            EXPECT_EQ(paseo.enumerador->Next(1, &linea.get(), nullptr), HRESULT{ RPC_E_WRONG_THREAD });
            EXPECT_EQ(paseo.enumerador->Skip(1), HRESULT{ RPC_E_WRONG_THREAD });
        }).join();
        EXPECT_EQ(cargo.llama("Cod_Ejercicio").entero(), 0) << "its own is served";
    }

    TEST_F(Vida, another_thread_is_served_when_nothing_is_held_any_more)
    {
        crea("clsAtipico").pon("Codigo", "uno");
        std::thread([&] { EXPECT_EQ(crea("clsAtipico").llama("Codigo").texto(), ""); }).join();
    }

    TEST_F(Vida, holds_may_be_taken_and_given_up_by_many_threads_at_once)
    {
        const auto cargo = crea("clsAtipico");
        std::atomic<int> veces = 0;
        std::vector<std::thread> hilos;
        for (int i = 0; i < 4; ++i)
            hilos.emplace_back([&] {
                for (int n = 0; n < 10'000; ++n) {
                    const Despacho mia = cargo;
                    veces += mia ? 1 : 0;
                }
            });
        for (auto& hilo : hilos)
            hilo.join();
        EXPECT_EQ(veces, 40'000);
        EXPECT_EQ(cargo.get()->AddRef(), 2U);
        cargo.get()->Release();
    }

}
}
