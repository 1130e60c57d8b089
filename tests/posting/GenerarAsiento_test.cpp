#include "posting/GenerarAsiento.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::SizeIs;

    /// The context, a supplier and a warehouse as the management database would give them.
    struct Entorno {
        pruebas::Contexto contexto;
        DatosAsiento datos;
        std::string documento = "AT260017";
        std::int16_t empresa = 1;
        std::int32_t asiento = 0;

        Entorno()
        {
            datos.Fecha = dia("21/11/2026");
            datos.Proveedor = 17;
            datos.NombreProveedor = "Ñandú e Hijos, S.L.";
            datos.Almacen = 3;
            cuentas("", "", "");
            contexto.gestion->responde(
                "SELECT CtaIngresosAtipicos", { { "CtaIngresosAtipicos" }, { { "75900003" } } });
        }

        void cuentas(const std::string& proveedor, const std::string& deudor, const std::string& deuda) const
        {
            contexto.gestion->responde("SELECT Cta_Proveedor",
                { { "Cta_Proveedor", "Cta_Deudor", "Cta_DeudaCortoPlazo" },
                    { { proveedor, deudor, deuda } } });
        }

        void carga(const char* importe, const std::string& cuenta = "")
        {
            datos.Cargos.push_back({ moneda(importe), cuenta });
            datos.Total += moneda(importe);
        }

        std::string genera()
        {
            GenerarAsiento(documento, empresa, asiento, datos);
            std::string texto;
            for (const auto& linea : contexto.biblioteca->diario->escrito)
                texto += linea + "\n";
            for (const auto& aviso : contexto.avisos->dichos)
                texto += "aviso «" + aviso.titulo + "» " + aviso.texto.substr(aviso.texto.find("] ") + 2)
                    + "\n";
            return texto + "devuelve " + std::to_string(asiento) + "\n";
        }
    };

    /// One word of a case file and what it does to the document.
    void aplica(Entorno& entorno, const std::string& palabra, std::istringstream& resto)
    {
        std::string a;
        std::string b;
        std::string c;
        if (palabra == "cargo") {
            resto >> a >> b;
            entorno.carga(a.c_str(), b);
        } else if (palabra == "clave") {
            resto >> a >> std::ws;
            std::getline(resto, b);
            entorno.contexto.empresa->parametros[a] = b;
        } else if (palabra == "sin-clave") {
            resto >> a;
            entorno.contexto.empresa->parametros.erase(a);
        } else if (palabra == "cuentas") {
            resto >> a >> b >> c;
            entorno.cuentas(a, b, c);
        } else if (palabra == "franquiciado") {
            entorno.datos.Franquiciado = true;
        } else if (palabra == "empresa") {
            resto >> entorno.empresa;
        } else if (palabra == "rechaza") {
            resto >> a;
            entorno.contexto.biblioteca->diario->cuentas_rechazadas.insert(a);
        } else if (palabra == "prevision") {
            std::int16_t tipo = 0;
            resto >> a >> tipo >> b >> c;
            entorno.datos.Previsiones.push_back({ moneda(a.c_str()), tipo, dia(b.c_str()), c });
        } else {
            FAIL() << "unknown word in a case file: " << palabra;
        }
    }

    struct Caso : testing::TestWithParam<std::filesystem::path> { };

    TEST_P(Caso, posts_the_entry_below_the_document)
    {
        std::ifstream fichero(GetParam());
        Entorno entorno;
        std::string linea;
        while (std::getline(fichero, linea) && linea != "asiento") {
            if (linea.empty() || linea[0] == '#')
                continue;
            std::istringstream palabras(linea);
            std::string palabra;
            palabras >> palabra;
            aplica(entorno, palabra, palabras);
        }
        std::ostringstream resto;
        resto << fichero.rdbuf();
        const std::string esperado = resto.str();
        ASSERT_FALSE(esperado.empty());
        EXPECT_EQ(esperado, entorno.genera());
    }

    std::vector<std::filesystem::path> casos()
    {
        std::vector<std::filesystem::path> ficheros;
        for (const auto& uno :
            std::filesystem::directory_iterator(std::string(ATIPICOS_FUENTES) + "/tests/posting/asientos"))
            ficheros.push_back(uno.path());
        std::sort(ficheros.begin(), ficheros.end());
        return ficheros;
    }

    INSTANTIATE_TEST_SUITE_P(asientos, Caso, testing::ValuesIn(casos()),
        [](const auto& caso) { return caso.param.stem().string(); });

    TEST(GenerarAsiento, asks_for_the_accounts_letter_by_letter)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.genera();
        EXPECT_THAT(entorno.contexto.gestion->dichas,
            ElementsAre("OPEN static read-only SELECT Cta_Proveedor, Cta_Deudor, Cta_DeudaCortoPlazo FROM "
                        "Proveedores "
                        "WHERE Cod_Empresa =1 AND Codigo =17",
                "CLOSE",
                "OPEN static read-only SELECT CtaIngresosAtipicos FROM Almacenes WHERE Cod_Empresa =1 AND "
                "Codigo =3",
                "CLOSE"));
    }

    TEST(GenerarAsiento, a_company_that_does_not_exist_is_shown_with_the_line_that_found_out)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.empresa = 0;
        entorno.genera();
        const auto& avisos = entorno.contexto.avisos->dichos;
        ASSERT_THAT(avisos, SizeIs(1));
        EXPECT_EQ(avisos[0].titulo, "frmCompras_Atipicos:GenerarAsiento");
        EXPECT_THAT(avisos[0].texto, testing::EndsWith("] No existe empresa Contable en el Cargo"));
        EXPECT_THAT(pruebas::linea_nombrada(avisos[0].texto, "posting/GenerarAsiento.cpp"),
            testing::HasSubstr("No existe empresa Contable en el Cargo"));
        EXPECT_EQ(avisos[0].icono, Icono::critico);
        EXPECT_THAT(entorno.contexto.biblioteca->diario->escrito, IsEmpty());
    }

    TEST(GenerarAsiento, a_refused_line_names_the_line_that_stored_it)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.contexto.biblioteca->diario->cuentas_rechazadas.insert("75900003");
        entorno.genera();
        ASSERT_THAT(entorno.contexto.avisos->dichos, SizeIs(1));
        EXPECT_EQ(
            pruebas::linea_nombrada(entorno.contexto.avisos->dichos[0].texto, "posting/GenerarAsiento.cpp"),
            "guarda_linea(Currency(), cargo.Importe);");
    }

    TEST(GenerarAsiento,
        the_accounting_company_works_on_its_connection_in_the_year_and_on_the_day_of_the_charge)
    {
        Entorno entorno;
        entorno.datos.Fecha = dia("13/05/2027");
        entorno.carga("100");
        entorno.genera();
        const auto& empresa = entorno.contexto.biblioteca->diario->empresa;
        ASSERT_TRUE(empresa);
        EXPECT_EQ(empresa->conexion, entorno.contexto.contabilidad.get());
        EXPECT_EQ(empresa->ejercicio, 2027);
        EXPECT_EQ(empresa->fecha_trabajo, dia("13/05/2027"));
    }

    TEST(GenerarAsiento, an_unknown_tax_type_is_found_out_before_there_is_an_entry)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = "6";
        EXPECT_EQ(entorno.genera(),
            "aviso «frmCompras_Atipicos:GenerarAsiento» No existe el tipo de impuesto 6.\ndevuelve 0\n");
    }

    TEST(GenerarAsiento, what_has_been_put_into_a_concept_is_not_searched_again)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.datos.NombreProveedor = "A %NOMBREPROVEEDOR% B";
        entorno.contexto.empresa->parametros["Concepto_Atipicos_Ingreso"]
            = "%NOMBREPROVEEDOR%/%NOMBREPROVEEDOR%";
        EXPECT_THAT(entorno.genera(), testing::HasSubstr(" A %NOMBREPROVEEDOR% B/A %NOMBREPROVEEDOR% B |"));
    }

    TEST(GenerarAsiento, tax_of_a_great_amount_is_rounded_once)
    {
        Entorno entorno;
        entorno.carga("2000000000000.07"); // at 7 %: 140000000000.0049
        EXPECT_THAT(entorno.genera(), testing::HasSubstr("cuota 140000000000.0000 total 140000000000.0000"));
    }

    TEST(GenerarAsiento, a_failure_leaves_the_entry_number_of_the_caller_as_it_was)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.asiento = 55;
        entorno.contexto.biblioteca->diario->falla_registro = true;
        entorno.genera();
        EXPECT_EQ(entorno.asiento, 55);
        EXPECT_THAT(entorno.contexto.avisos->dichos, SizeIs(1));
        EXPECT_THAT(entorno.contexto.biblioteca->diario->escrito, SizeIs(4)) << "entry, A, B and C stay";
    }

    TEST(GenerarAsiento, a_failing_forecast_keeps_the_lines_and_hands_back_no_number)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.datos.Previsiones.push_back({ moneda("107"), 4, dia("21/12/2026"), "" });
        entorno.contexto.biblioteca->diario->falla_prevision = true;
        entorno.genera();
        EXPECT_EQ(entorno.asiento, 0);
        EXPECT_EQ(entorno.contexto.avisos->dichos.at(0).titulo, "frmCompras_Atipicos:GenerarAsiento");
    }

    TEST(GenerarAsiento, a_query_without_a_row_leaves_its_accounts_to_be_formed)
    {
        Entorno entorno;
        entorno.carga("100", "75900009");
        entorno.contexto.gestion->responde("SELECT Cta_Proveedor", { { "Cta_Proveedor" }, {} });
        EXPECT_THAT(entorno.genera(), testing::HasSubstr(" 44000017 debe 107.0000"));
    }

    TEST(GenerarAsiento, a_warehouse_that_is_not_there_has_no_income_account)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.carga("50", "75900009");
        entorno.contexto.gestion->responde("SELECT CtaIngresosAtipicos", { { "CtaIngresosAtipicos" }, {} });
        const auto escrito = entorno.genera();
        EXPECT_THAT(escrito, testing::HasSubstr("7001/2  haber 100.0000 "));
        EXPECT_THAT(escrito, testing::HasSubstr("7001/3 75900009 haber 50.0000 "));
    }

    TEST(GenerarAsiento, null_settings_are_settings_that_are_not_there)
    {
        Entorno entorno;
        entorno.carga("100");
        entorno.contexto.empresa->parametros["Proveedores_DptoIngresoRappels"] = Nulo{};
        entorno.contexto.empresa->parametros["Concepto_Atipicos_Deudor"] = Nulo{};
        EXPECT_THAT(entorno.genera(),
            testing::HasSubstr("7001/1 44000017 debe 107.0000 dto 3 doc AT260017 cto [47] \n"));
    }

    /// The amount after " debe " or " haber " in a diary line; zero when it has none.
    std::int64_t importe_de(const std::string& linea, const std::string& lado)
    {
        const auto lugar = linea.find(lado);
        if (lugar == std::string::npos)
            return 0;
        const auto inicio = lugar + lado.size();
        return moneda(linea.substr(inicio, linea.find(' ', inicio) - inicio).c_str()).crudo();
    }

    TEST(GenerarAsiento, entries_of_random_charges_balance)
    {
        std::mt19937_64 azar(7); // NOLINT: the same charges in every run
        std::uniform_int_distribution<std::int64_t> centimos(-10'000'000, 10'000'000);
        for (int vez = 0; vez < 2'000; ++vez) {
            Entorno entorno;
            const int lineas = 1 + vez % 12;
            for (int i = 0; i < lineas; ++i)
                entorno.carga(Currency::de_crudo(centimos(azar) * 100).texto().c_str());
            entorno.datos.Franquiciado = vez % 2 == 0;
            entorno.contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = std::to_string(vez % 3);
            entorno.genera();
            ASSERT_EQ(entorno.asiento, 7001);
            std::int64_t saldo = 0;
            for (const auto& linea : entorno.contexto.biblioteca->diario->escrito)
                saldo += importe_de(linea, " debe ") - importe_de(linea, " haber ");
            ASSERT_EQ(saldo, 0);
        }
    }

}
}
