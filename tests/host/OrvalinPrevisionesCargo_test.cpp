#include "host/orvalin/PrevisionesCargo.hpp"

#include "host/orvalin/Empresa.hpp"
#include "tests/host/BasesDeMuestra.hpp"

#include <gmock/gmock.h>

namespace atipicos::orvalin {
namespace {

    struct PrevisionesCargoDeMuestra : pruebas::BasesDeMuestra {
        std::shared_ptr<Empresa> empresa = std::make_shared<Empresa>(bases.orvalin, 1, 1);
        PrevisionesCargo previsiones{ bases.orvalin, empresa };

        void registra(const char* codigo, int asiento) const
        {
            bases.orvalin->Execute(std::string("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, "
                                               "Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, "
                                               "Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
                                               "Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, "
                                               "Tipo) VALUES (1, 2026, 4, '")
                + codigo + "', 106, '10/02/2026', 30, " + std::to_string(asiento)
                + ", 2, 2026, 1, '10/02/2026', '', 0, 0, 7, 2.1, 0)");
        }
        void preve(int asiento, int numero, const char* importe, int tipo, const char* vence) const
        {
            bases.bexmor->Execute("INSERT INTO Previsiones VALUES (2, 2026, " + std::to_string(asiento) + ", "
                + std::to_string(numero) + ", '" + cuenta() + "', '90', " + importe + ", "
                + std::to_string(tipo) + ", '" + vence + "', '')");
        }
        std::string cuenta() const
        {
            auto rs = bases.bexmor->CreateRecordset();
            rs->Open("SELECT MIN(Cuenta) FROM Cuentas WHERE Cod_Empresa =2 AND Cod_Ejercicio =2026",
                adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return CStr(rs->Fields(std::size_t{ 0 }).Value());
        }
    };

    TEST_F(PrevisionesCargoDeMuestra, are_those_of_the_entry_of_the_charge_in_their_order)
    {
        registra("AT260009", 7);
        registra("AT260010", 8);
        for (const int asiento : { 7, 8 })
            bases.bexmor->Execute(
                "INSERT INTO Asientos VALUES (2, 2026, " + std::to_string(asiento) + ", '10/02/2026', '1')");
        preve(7, 2, "20.5", 0, "15/05/2026");
        preve(7, 1, "11.6", 3, "15/03/2026");
        preve(8, 1, "99", 2, "16/03/2026");
        const auto leidas = previsiones.lee(2026, 4, "AT260009");
        ASSERT_EQ(leidas.size(), 2U);
        EXPECT_EQ(leidas[0],
            (qvoremp::PrevisionCargo{
                1, Date::de_dia(2026, 3, 15).value(), "Pagaré", Currency::de_texto("11.6") }));
        EXPECT_EQ(leidas[1],
            (qvoremp::PrevisionCargo{
                2, Date::de_dia(2026, 5, 15).value(), "", Currency::de_texto("20.5") }));
    }

    TEST_F(PrevisionesCargoDeMuestra, there_are_none_of_a_charge_without_entry_or_of_none)
    {
        registra("SUELTO", 0);
        EXPECT_TRUE(previsiones.lee(2026, 4, "SUELTO").empty());
        EXPECT_TRUE(previsiones.lee(2026, 4, "O'Tro").empty());
    }

}
}
