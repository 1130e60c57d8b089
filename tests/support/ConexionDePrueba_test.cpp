#include "tests/support/ConexionDePrueba.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::pruebas {
namespace {

    using testing::AllOf;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    struct ConexionDePrueba_ : testing::Test {
        ConexionDePrueba conexion;
        std::unique_ptr<adodb::Recordset> rs = conexion.CreateRecordset();

        void abre(const std::string& sql = "SELECT Nombre, NIF FROM Proveedores") const
        {
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        }
        /// What it raises; the same has been said aloud.
        template <class Accion> std::string reproche(Accion accion) const
        {
            testing::internal::CaptureStderr();
            std::string motivo;
            try {
                accion();
            } catch (const Error& error) {
                motivo = error.descripcion();
            }
            EXPECT_EQ(testing::internal::GetCapturedStderr(), motivo.empty() ? "" : motivo + "\n");
            return motivo;
        }
    };

    TEST_F(ConexionDePrueba_, asked_for_a_column_that_it_was_not_given_says_which_and_where)
    {
        conexion.responde("SELECT Nombre", { { "Nombre", "NIF" }, { { "Ñandú", "B1" } } });
        abre();
        EXPECT_EQ(CStr(rs->Fields("NIF").Value()), "B1");
        const auto linea = std::to_string(__LINE__ + 1);
        const auto motivo = reproche([&] { static_cast<void>(rs->Fields("EmpContable")); });
        EXPECT_THAT(motivo,
            AllOf(StartsWith("A la respuesta de prueba le falta la columna «EmpContable», que pide "),
                EndsWith("tests/support/ConexionDePrueba_test.cpp:" + linea
                    + ". Respuesta a: SELECT Nombre, NIF FROM Proveedores. Columnas: Nombre NIF")));
        EXPECT_THAT(reproche([&] { static_cast<void>(rs->Fields(std::size_t{ 2 })); }),
            HasSubstr("la columna número 2,"));
    }

    TEST_F(ConexionDePrueba_, says_that_a_row_has_too_few_values_or_too_many)
    {
        for (const auto& fila :
            { std::vector<Variant>{ "Ñandú" }, std::vector<Variant>{ "Ñandú", "B1", "x" } }) {
            conexion.responde("SELECT Nombre", { { "Nombre", "NIF" }, { fila } });
            EXPECT_THAT(reproche([&] { abre(); }),
                AllOf(HasSubstr("le falta una fila con 2 valores"), HasSubstr("SELECT Nombre, NIF")));
        }
    }

    TEST_F(ConexionDePrueba_, takes_any_column_of_a_row_that_is_added)
    {
        abre("SELECT * FROM Contador");
        rs->AddNew();
        EXPECT_EQ(reproche([&] { rs->Fields("Numero").Value(Variant(7)); }), "");
        rs->Update();
        EXPECT_EQ(conexion.dichas.back(), "UPDATE Numero=7");
    }

    TEST(Valores, that_a_test_has_written_wrongly_name_its_line)
    {
        const auto motivo = [](auto accion) {
            try {
                accion();
            } catch (const Error& error) {
                return error.descripcion();
            }
            return std::string();
        };
        const auto linea = std::to_string(__LINE__ + 1);
        const auto importe = motivo([] { static_cast<void>(moneda("141,22")); });
        EXPECT_THAT(importe,
            EndsWith("tests/support/ConexionDePrueba_test.cpp:" + linea
                + ": «141,22»: en las pruebas se escribe 1234.56"));
        EXPECT_THAT(motivo([] { static_cast<void>(dia("2026-11-21")); }),
            HasSubstr("«2026-11-21»: en las pruebas se escribe 21/11/2026"));
    }

}
} // namespace atipicos::pruebas
