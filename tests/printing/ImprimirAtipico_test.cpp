#include "printing/ImprimirAtipico.hpp"

#include "platform/qvoremp/ImpresionCargo.hpp"
#include "tests/support/Relevo.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using testing::ElementsAre;
    using testing::IsEmpty;

    using Diario = std::vector<std::string>;

    class AlmacenDePrueba final : public qvoremp::Almacen {
    public:
        explicit AlmacenDePrueba(Diario& diario)
            : m_diario(diario)
        {
        }
        bool Cargar(Donde) override
        {
            m_diario.push_back("almacén " + std::to_string(Codigo));
            return false;
        }

    private:
        Diario& m_diario;
    };

    class ProveedorDePrueba final : public qvoremp::Proveedor {
    public:
        explicit ProveedorDePrueba(Diario& diario)
            : m_diario(diario)
        {
        }
        bool Cargar(Donde) override
        {
            m_diario.push_back("proveedor " + std::to_string(Codigo));
            return true;
        }

    private:
        Diario& m_diario;
    };

    class ImpresionDePrueba final : public qvoremp::ImpresionCargo {
    public:
        ImpresionDePrueba(Diario& diario, std::int16_t falla_en)
            : m_diario(diario)
            , m_falla_en(falla_en)
        {
        }
        void Imprimir(Donde donde) override
        {
            if (Dispositivo == m_falla_en)
                throw Error(1000, "QVOREMP", "No hay papel", donde);
            m_diario.push_back(Codigo + " de " + std::to_string(Ejercicio) + ", almacén "
                + std::to_string(almacen->Codigo) + ", proveedor " + std::to_string(proveedor->Codigo)
                + ", en " + Impresora + ", dispositivo " + std::to_string(Dispositivo));
        }

    private:
        Diario& m_diario;
        std::int16_t m_falla_en;
    };

    /// A management library that writes down what it is asked for.
    class BibliotecaQueAnota final : public qvoremp::Biblioteca {
    public:
        mutable Diario diario;
        std::int16_t falla_en = -1;

        std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(const qvoremp::Empresa&, Donde) const override
        {
            return std::make_unique<AlmacenDePrueba>(diario);
        }
        std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(const qvoremp::Empresa&, Donde) const override
        {
            return std::make_unique<ProveedorDePrueba>(diario);
        }
        std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
            const qvoremp::Empresa&, Donde) const override
        {
            return std::make_unique<ImpresionDePrueba>(diario, falla_en);
        }
    };

    /// One in whose place, and in that of the company, the host lends none as soon as it is asked for
    /// something.
    class BibliotecaRelevada final : public qvoremp::Biblioteca,
                                     public std::enable_shared_from_this<BibliotecaRelevada> {
    public:
        explicit BibliotecaRelevada(std::shared_ptr<BibliotecaQueAnota> real)
            : m_real(std::move(real))
        {
        }
        std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(
            const qvoremp::Empresa& empresa, Donde donde) const override
        {
            const auto real = m_real;
            const std::weak_ptr<const BibliotecaRelevada> yo = weak_from_this();
            modComun::set_BibliotecaOrvalin(nullptr);
            modComun::set_EmpresaOrvalin(nullptr);
            pruebas::exige_vivo(yo);
            return real->NuevoAlmacen(empresa, donde);
        }
        std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(
            const qvoremp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevoProveedor(empresa, donde);
        }
        std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
            const qvoremp::Empresa& empresa, Donde donde) const override
        {
            EXPECT_EQ(empresa.Codigo(), 6) << "the company is held as long";
            return m_real->NuevaImpresionCargo(empresa, donde);
        }

    private:
        std::shared_ptr<BibliotecaQueAnota> m_real;
    };

    struct ImprimirAtipicoConBiblioteca : testing::Test {
        pruebas::Contexto contexto;
        std::shared_ptr<BibliotecaQueAnota> biblioteca = std::make_shared<BibliotecaQueAnota>();
        const CargoAImprimir cargo{ 2026, 4, "AT260001", 106 };

        ImprimirAtipicoConBiblioteca() { modComun::set_BibliotecaOrvalin(biblioteca); }

        static PedirDestino elige(std::int16_t primero, std::int16_t segundo)
        {
            return [=] { return DestinoImpresion{ "Laser", primero, segundo, 1 }; };
        }
    };

    TEST_F(ImprimirAtipicoConBiblioteca, prints_twice_in_the_order_of_the_devices)
    {
        EXPECT_TRUE(ImprimirAtipico(cargo, elige(1, 3)));
        EXPECT_THAT(biblioteca->diario,
            ElementsAre("almacén 4", "proveedor 106",
                "AT260001 de 2026, almacén 4, proveedor 106, en Laser, dispositivo 1",
                "AT260001 de 2026, almacén 4, proveedor 106, en Laser, dispositivo 3"));
        biblioteca->diario.clear();
        EXPECT_TRUE(ImprimirAtipico(cargo, elige(3, 1)));
        EXPECT_THAT(biblioteca->diario.at(2), testing::EndsWith("dispositivo 3"));
        EXPECT_THAT(biblioteca->diario.at(3), testing::EndsWith("dispositivo 1"));
    }

    TEST_F(ImprimirAtipicoConBiblioteca, prints_to_the_end_though_the_host_takes_library_and_company_away)
    {
        modComun::set_BibliotecaOrvalin(std::make_shared<BibliotecaRelevada>(biblioteca));
        const auto propia = std::make_shared<pruebas::EmpresaDePrueba>();
        propia->codigo = 6;
        modComun::set_EmpresaOrvalin(propia);
        EXPECT_TRUE(ImprimirAtipico(cargo, elige(1, 3)));
        EXPECT_EQ(biblioteca->diario.size(), 4);
        EXPECT_THROW(static_cast<void>(modComun::BibliotecaOrvalin()), Error);
    }

    TEST_F(ImprimirAtipicoConBiblioteca, both_prints_are_asked_for_whatever_the_devices)
    {
        EXPECT_TRUE(ImprimirAtipico(cargo, elige(0, 0)));
        EXPECT_EQ(biblioteca->diario.size(), 4);
    }

    TEST_F(ImprimirAtipicoConBiblioteca, cancelled_it_asks_nothing_of_the_library)
    {
        EXPECT_FALSE(ImprimirAtipico(cargo, [] { return std::nullopt; }));
        EXPECT_THAT(biblioteca->diario, IsEmpty());
        modComun::set_BibliotecaOrvalin(nullptr);
        EXPECT_FALSE(ImprimirAtipico(cargo, [] { return std::nullopt; }));
    }

    TEST_F(ImprimirAtipicoConBiblioteca, an_error_reaches_the_caller_and_ends_it)
    {
        biblioteca->falla_en = 1;
        EXPECT_THROW(ImprimirAtipico(cargo, elige(1, 3)), Error);
        EXPECT_EQ(biblioteca->diario.size(), 2);
        EXPECT_THROW(ImprimirAtipico(cargo, elige(3, 1)), Error);
        EXPECT_EQ(biblioteca->diario.size(), 5) << "what the first device got stays printed";
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
    }

    TEST_F(ImprimirAtipicoConBiblioteca, a_host_that_cannot_print_is_error_91_at_the_line_of_the_caller)
    {
        modComun::set_BibliotecaOrvalin(nullptr);
        try {
            ImprimirAtipico(cargo, elige(1, 1));
            FAIL() << "no error was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.numero(), 91);
            EXPECT_EQ(error.donde().linea(), __LINE__ - 4);
        }
    }

}
}
