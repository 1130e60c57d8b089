// Two companies in one database, with charges of the same year, warehouse and code: what is done in the name
// of one leaves the other's as they are.
#include "charges/clsAtipico.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;

    struct DosEmpresas : testing::Test {
        pruebas::Contexto contexto;
        pruebas::CarpetaTemporal carpeta;
        std::shared_ptr<sqlite::Connection> base = sqlite::Connection::Abrir(
            { .fichero = carpeta / "orvalin.db", .crear = true, .sincronizacion_completa = false });
        std::shared_ptr<pruebas::EmpresaDePrueba> norte = empresa(4, "2", "3", 2, "21");
        std::shared_ptr<pruebas::EmpresaDePrueba> sur = empresa(9, "5", "6.5", 3, "22");
        clsAtipico cargo;

        DosEmpresas()
        {
            sql::ejecuta_guion(*base, guiones::orvalin());
            base->Execute("PRAGMA foreign_keys = OFF"); // the catalogues are not this test's business
            modComun::set_ConexionOrvalin(base);
            cargo.Cod_Ejercicio = 2025;
            cargo.Cod_Almacen = 8;
            cargo.Codigo = "AT250034";
            cargo.Proveedor = 40077;
            cargo.Fecha = dia("03/02/2025");
            cargo.Hora = dia("03/02/2025");
            cargo.Importe = moneda("150.25");
            cargo.AplicarImpuesto = true;
            cargo.Lineas->Add(2001, "Caja", moneda("1.5"), moneda("0.75"));
            cargo.Lineas->Add(2002, "Saco", moneda("2.5"), moneda("0.25"));
        }

        static std::shared_ptr<pruebas::EmpresaDePrueba> empresa(
            std::int16_t codigo, const char* tipo, const char* porcentaje, int decimales, const char* usuario)
        {
            auto nueva = std::make_shared<pruebas::EmpresaDePrueba>();
            nueva->codigo = codigo;
            nueva->parametros = { { "UsuarioActual", usuario }, { "Proveedores_AtipcosImpuesto", tipo } };
            nueva->porcentajes = { { CInt(Variant(tipo)), moneda(porcentaje) } };
            nueva->decimales_importe = decimales;
            return nueva;
        }
        std::vector<std::string> filas(const std::string& sql) const
        {
            std::vector<std::string> todas;
            const auto rs = base->CreateRecordset();
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext()) {
                std::string una;
                for (std::size_t i = 0; i < rs->Count(); ++i)
                    una += (i == 0 ? "" : " ") + CStr(rs->Fields(i).Value());
                todas.push_back(una);
            }
            return todas;
        }
        std::vector<std::string> cabeceras() const
        {
            return filas("SELECT Cod_Empresa, Importe, Impuesto, Impuesto_Importe, Usuario FROM "
                         "Proveedores_Cargos_Atipicos ORDER BY Cod_Empresa");
        }
        std::vector<std::string> lineas() const
        {
            return filas("SELECT Cod_Empresa, Num_Linea, Descripcion FROM Proveedores_Cargos_Atipicos_Lineas "
                         "ORDER BY Cod_Empresa, Num_Linea");
        }
        void inserta_en_las_dos()
        {
            for (const auto& una : { norte, sur }) {
                modComun::set_EmpresaOrvalin(una);
                EXPECT_FALSE(cargo.Existe(2025, 8, "AT250034"));
                EXPECT_FALSE(cargo.Insertar());
                EXPECT_TRUE(cargo.Existe(2025, 8, "AT250034"));
            }
            EXPECT_THAT(contexto.avisos->dichos, testing::IsEmpty());
        }
    };

    TEST_F(DosEmpresas, each_has_its_rate_its_decimals_and_its_user)
    {
        inserta_en_las_dos();
        EXPECT_THAT(cabeceras(), ElementsAre("4 150,25 3 4,51 21", "9 150,25 6,5 9,766 22"));
        EXPECT_THAT(lineas(), ElementsAre("4 1 Caja", "4 2 Saco", "9 1 Caja", "9 2 Saco"));
    }

    TEST_F(DosEmpresas, a_change_in_one_leaves_the_other)
    {
        inserta_en_las_dos();
        modComun::set_EmpresaOrvalin(norte);
        cargo.Importe = moneda("80");
        cargo.Impuesto = moneda("1.255");
        cargo.Lineas->Item(2)->Descripcion = "Bidón";
        cargo.Lineas->Add(2003, "Palé", moneda("1"), moneda("3"));
        EXPECT_FALSE(cargo.Modificar_Atipico());
        EXPECT_THAT(cabeceras(), ElementsAre("4 80 1,26 1,01 21", "9 150,25 6,5 9,766 22"));
        EXPECT_THAT(lineas(), ElementsAre("4 1 Caja", "4 2 Bidón", "4 3 Palé", "9 1 Caja", "9 2 Saco"));
    }

    TEST_F(DosEmpresas, a_deletion_in_one_leaves_the_other)
    {
        inserta_en_las_dos();
        modComun::set_EmpresaOrvalin(norte);
        cargo.Eliminar_Atipico();
        EXPECT_FALSE(cargo.Existe(2025, 8, "AT250034"));
        EXPECT_THAT(cabeceras(), ElementsAre("9 150,25 6,5 9,766 22"));
        EXPECT_THAT(lineas(), ElementsAre("9 1 Caja", "9 2 Saco"));
        modComun::set_EmpresaOrvalin(sur);
        EXPECT_TRUE(cargo.Existe(2025, 8, "AT250034"));
    }

    TEST_F(DosEmpresas, each_counts_its_own_numbers_in_each_year_and_warehouse)
    {
        const auto toma = [this](const auto& empresa, std::int16_t ejercicio, std::int16_t almacen) {
            modComun::set_EmpresaOrvalin(empresa);
            cargo.Cod_Almacen = almacen;
            return cargo.Devuelve_Codigo(true, ejercicio);
        };
        EXPECT_EQ(toma(norte, 2025, 8), "AT250001");
        EXPECT_EQ(toma(norte, 2025, 8), "AT250002");
        EXPECT_EQ(toma(sur, 2025, 8), "AT250001");
        EXPECT_EQ(toma(norte, 2024, 8), "AT250001") << "the year of the counter is the argument";
        EXPECT_EQ(toma(norte, 2025, 7), "AT250001");
        EXPECT_EQ(toma(norte, 2025, 8), "AT250003");
        EXPECT_THAT(filas("SELECT Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Numero FROM "
                          "Contador_Proveedores_Cargos_Atipicos ORDER BY 1, 2, 3"),
            ElementsAre("4 2024 8 250001", "4 2025 7 250001", "4 2025 8 250003", "9 2025 8 250001"));
    }

}
}
