#include "browser/ListaAtipicos.hpp"
#include "context/claves.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/host/Suite.hpp"

#include <array>
#include <map>
#include <set>

namespace atipicos {
namespace {

    using pruebas::columna;
    using Muestra = pruebas::Suite;

    constexpr std::array<std::int16_t, 2> empresas{ 1, 2 }; // the codes of both kinds of company
    constexpr std::array ejercicios{ 2024, 2025, 2026, 2027 };

    std::set<std::string> plan(adodb::Connection& bexmor, int empresa, int ejercicio)
    {
        const auto cuentas = columna(bexmor,
            "SELECT Cuenta FROM Cuentas WHERE Cod_Empresa =" + std::to_string(empresa)
                + " AND Cod_Ejercicio =" + std::to_string(ejercicio));
        return { cuentas.begin(), cuentas.end() };
    }

    struct CuentaDeProveedor {
        const char* campo;
        std::string raiz;
    };

    std::vector<CuentaDeProveedor> cuentas_de_proveedor()
    {
        const auto empresa = modComun::EmpresaOrvalin();
        return { { "Cta_Proveedor", std::to_string(empresa->RaizProveedores()) },
            { "Cta_Deudor", CStr(empresa->Parametro(claves::Raiz_ProveedoresDeudor)) },
            { "Cta_DeudaCortoPlazo", CStr(empresa->Parametro(claves::Raiz_ProveedoresDeudaCortoPlazo)) } };
    }

    /// The accounts that posting takes or forms for every supplier, in an accounting company.
    std::vector<std::string> cuentas_formadas(
        adodb::Connection& orvalin, const qvbxemp::Biblioteca& biblioteca, const qvbxemp::Empresa& empresa)
    {
        std::vector<std::string> formadas;
        const auto servicio = biblioteca.NuevoServicioCuentas(empresa);
        const auto rs = orvalin.CreateRecordset();
        rs->Open("SELECT * FROM Proveedores", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext())
            for (const auto& [campo, raiz] : cuentas_de_proveedor()) {
                const auto propia = CStr(rs->Fields(campo).Value());
                const auto codigo = CLng(rs->Fields("Codigo").Value());
                formadas.push_back(
                    propia.empty() ? servicio->FormarCuenta(raiz, codigo, empresa.LongitudCuenta()) : propia);
            }
        return formadas;
    }

    TEST_F(Muestra, every_account_of_every_supplier_is_in_every_plan)
    {
        for (const auto contable : empresas) {
            const auto empresa = biblioteca.NuevaEmpresa();
            empresa->Codigo = contable;
            ASSERT_TRUE(empresa->Cargar());
            const auto formadas = cuentas_formadas(*bases.orvalin, biblioteca, *empresa);
            EXPECT_GE(formadas.size(), 12U * 3U);
            for (const auto ejercicio : ejercicios) {
                const auto cuentas = plan(*bases.bexmor, contable, ejercicio);
                for (const auto& formada : formadas)
                    EXPECT_TRUE(cuentas.contains(formada)) << contable << "/" << ejercicio << " " << formada;
            }
        }
    }

    TEST_F(Muestra, the_accounts_of_warehouses_and_articles_and_taxes_and_banks_are_in_the_plan)
    {
        for (const auto ejercicio : ejercicios)
            for (const auto contable : empresas) {
                const auto cuentas = plan(*bases.bexmor, contable, ejercicio);
                const auto comprueba = [&](adodb::Connection& base, const std::string& sql) {
                    const auto buscadas = columna(base, sql);
                    EXPECT_FALSE(buscadas.empty()) << sql;
                    for (const auto& buscada : buscadas)
                        EXPECT_TRUE(cuentas.contains(buscada))
                            << contable << "/" << ejercicio << " " << buscada;
                };
                const auto de_empresa = std::to_string(contable);
                comprueba(*bases.orvalin,
                    "SELECT CtaIngresosAtipicos FROM Almacenes WHERE EmpContable =" + de_empresa);
                comprueba(*bases.orvalin,
                    "SELECT DISTINCT CtaIngresosAtipicos FROM Articulos WHERE CtaIngresosAtipicos <> ''");
                comprueba(
                    *bases.bexmor, "SELECT Imp_CtaRep FROM Tipos_Impuesto WHERE Cod_Empresa =" + de_empresa);
                comprueba(*bases.bexmor, "SELECT CuentaBancoPago FROM Empresas WHERE Codigo =" + de_empresa);
            }
    }

    TEST_F(Muestra, has_every_configuration_key_in_both_companies)
    {
        for (const auto codigo : empresas) {
            usa_empresa(codigo);
            for (const auto clave :
                { claves::UsuarioActual, claves::OficinaCentral, claves::Proveedores_AtipcosImpuesto,
                    claves::Raiz_ProveedoresDeudor, claves::Raiz_ProveedoresDeudaCortoPlazo,
                    claves::Conta_CtoAutIgicDebe, claves::Concepto_Atipicos_Deudor,
                    claves::Concepto_Atipicos_Ingreso, claves::Concepto_Atipicos_Impuesto,
                    claves::Concepto_Atipicos_Proveedor, claves::Proveedores_DptoIngresoRappels,
                    claves::GenerarPrevPagos, claves::Proveedores_AtipicosDispImpresoDefault,
                    claves::Proveedores_AtipicosDisp2ImpresoDefault })
                EXPECT_FALSE(modComun::EmpresaOrvalin()->Parametro(clave).es_vacio())
                    << codigo << " " << clave;
        }
    }

    TEST_F(Muestra, proposes_the_instalments_of_each_suppliers_terms)
    {
        const std::map<std::int32_t, std::size_t> plazos{ { 101, 1 }, { 102, 1 }, { 103, 1 }, { 104, 3 },
            { 105, 3 }, { 106, 3 }, { 107, 12 }, { 108, 12 }, { 109, 12 }, { 110, 1 }, { 111, 1 },
            { 112, 1 }, // has no terms of its own: those of the company
            { 113, 0 }, // its terms produce no forecasts
            { 114, 1 } };
        EXPECT_EQ(columna(*bases.orvalin, "SELECT Codigo FROM Proveedores WHERE Cod_Empresa =1").size(),
            plazos.size());
        for (const auto& [proveedor, cuantos] : plazos)
            for (const auto contable : empresas) {
                const auto propuesta = GenerarPrev(
                    { pruebas::moneda("1234.56"), proveedor, pruebas::dia("21/11/2026"), contable, true });
                EXPECT_EQ(propuesta.previsiones.size(), cuantos) << proveedor;
                EXPECT_EQ(propuesta.suma, cuantos == 0 ? Currency() : pruebas::moneda("1234.56"));
                for (const auto& una : propuesta.previsiones) {
                    EXPECT_NE(una.NombreBanco, "") << proveedor;
                    EXPECT_NE(una.NombTipoDoc, "") << proveedor;
                }
            }
        EXPECT_EQ(avisos->dichos, std::vector<Mensaje>{});
    }

    TEST_F(Muestra, a_suppliers_own_bank_wins_over_the_companys)
    {
        const auto banco = [](std::int32_t proveedor, std::int16_t contable) {
            return GenerarPrev(
                { pruebas::moneda("10"), proveedor, pruebas::dia("21/11/2026"), contable, true })
                .previsiones.at(0)
                .prevision.Banco;
        };
        EXPECT_EQ(banco(102, 1), "57200002");
        EXPECT_EQ(banco(103, 1), "57200001");
        EXPECT_EQ(banco(103, 2), "572000001");
        EXPECT_EQ(banco(112, 1), "57200001"); // by the company's terms
    }

    TEST_F(Muestra, the_list_comes_in_order_from_the_index_without_sorting)
    {
        const auto pasos = bases.orvalin->CreateRecordset();
        pasos->Open("EXPLAIN QUERY PLAN " + instruccion_lista({ "01/01/2026", "31/12/2026", 0, 0 }, 1, 1),
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        std::string todos;
        for (; !pasos->Eof(); pasos->MoveNext())
            todos += CStr(pasos->Fields("detail").Value()) + "\n";
        EXPECT_THAT(todos, testing::HasSubstr("Proveedores_Cargos_Atipicos_Lista"));
        EXPECT_THAT(todos, testing::Not(testing::HasSubstr("TEMP B-TREE")));
        EXPECT_THAT(todos, testing::Not(testing::HasSubstr("SCAN")));
    }

}
} // namespace atipicos
