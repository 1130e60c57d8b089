#include "charges/clsAtipico.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using testing::ElementsAre;
    using testing::IsEmpty;

    constexpr auto consulta = "SELECT * FROM Contador_Proveedores_Cargos_Atipicos WHERE Cod_Empresa =1 "
                              "AND Cod_Ejercicio =2024 AND Cod_Almacen =3";
    const std::string apertura = std::string("OPEN keyset pessimistic ") + consulta;

    struct Numeracion : testing::Test {
        pruebas::Contexto contexto;
        clsAtipico cargo;

        Numeracion()
        {
            cargo.Cod_Almacen = 3;
            cargo.Fecha = dia("15/03/2024");
            cargo.Cod_Ejercicio = 1999; // not consulted: the year is the argument
        }

        void hay_contador(std::int32_t numero) const
        {
            contexto.gestion->responde("SELECT * FROM Contador_",
                { { "Cod_Empresa", "Cod_Ejercicio", "Cod_Almacen", "Numero" }, { { 1, 2024, 3, numero } } });
        }
    };

    TEST_F(Numeracion, the_first_number_of_2024_is_taken_and_the_row_created)
    {
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2024), "AT240001");
        EXPECT_THAT(contexto.gestion->dichas,
            ElementsAre(apertura, "ADDNEW",
                "UPDATE Cod_Empresa=1 Cod_Ejercicio=2024 Cod_Almacen=3 Numero=240001", "CLOSE"));
        EXPECT_EQ(cargo.Codigo, "") << "the caller assigns the result";
    }

    TEST_F(Numeracion, showing_the_first_number_creates_no_row)
    {
        EXPECT_EQ(cargo.Devuelve_Codigo(false, 2024), "AT240001");
        EXPECT_THAT(contexto.gestion->dichas, ElementsAre(apertura, "CLOSE"));
    }

    TEST_F(Numeracion, year_2005_gives_five_digits_and_year_2000_gives_1)
    {
        cargo.Fecha = dia("31/12/2005");
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2005), "AT50001");
        cargo.Fecha = dia("31/12/2000");
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2000), "AT1");
    }

    TEST_F(Numeracion, an_existing_counter_advances_by_one_and_the_year_is_not_looked_at_again)
    {
        hay_contador(240'017);
        cargo.Fecha = dia("02/01/2026");
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2024), "AT240018");
        EXPECT_THAT(contexto.gestion->dichas, ElementsAre(apertura, "UPDATE Numero=240018", "CLOSE"));
    }

    TEST_F(Numeracion, showing_the_next_number_changes_nothing)
    {
        hay_contador(240'017);
        EXPECT_EQ(cargo.Devuelve_Codigo(false, 2024), "AT240018");
        EXPECT_THAT(contexto.gestion->dichas, ElementsAre(apertura, "CLOSE"));
    }

    TEST_F(Numeracion, runs_on_into_the_next_years_range_after_9999)
    {
        hay_contador(249'999);
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2024), "AT250000");
        hay_contador(250'000);
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2024), "AT250001");
    }

    TEST_F(Numeracion, the_32_bit_limit_is_an_overflow_and_nothing_is_written)
    {
        hay_contador(2'147'483'647);
        EXPECT_THROW(
            {
                try {
                    static_cast<void>(cargo.Devuelve_Codigo(true, 2024));
                } catch (const Error& error) {
                    EXPECT_EQ(error.numero(), 6);
                    throw;
                }
            },
            Error);
        EXPECT_THAT(contexto.gestion->dichas, ElementsAre(apertura));
    }

    TEST_F(Numeracion, the_first_of_january_2000_is_accepted)
    {
        cargo.Fecha = dia("01/01/2000");
        EXPECT_EQ(cargo.Devuelve_Codigo(true, 2000), "AT1");
    }

    TEST_F(Numeracion, a_date_before_2000_or_none_is_refused_before_anything_is_read)
    {
        for (const Date fecha : { dia("31/12/1999"), Date() }) {
            cargo.Fecha = fecha;
            try {
                static_cast<void>(cargo.Devuelve_Codigo(true, 2024));
                ADD_FAILURE() << "no error was raised";
            } catch (const Error& error) {
                EXPECT_EQ(error.numero(), 1);
                EXPECT_EQ(error.fuente(), "QVORComprasAtip:DevCodigo");
                EXPECT_EQ(error.descripcion(), "Se necesita la fecha para devolver el código de cargo/abono");
            }
        }
        EXPECT_THAT(contexto.gestion->dichas, IsEmpty());
    }

    TEST_F(Numeracion, a_failing_update_reaches_the_caller_without_a_box)
    {
        contexto.gestion->falla("UPDATE", "bloqueado");
        EXPECT_THROW(static_cast<void>(cargo.Devuelve_Codigo(true, 2024)), adodb::ErrorBaseDatos);
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
    }

}
}
