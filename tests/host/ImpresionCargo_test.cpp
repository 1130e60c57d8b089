// The charge document on the sample company: what it says, on which devices, and what it refuses.
#include "host/documento/ImpresionCargo.hpp"

#include "host/orvalin/Biblioteca.hpp"
#include "host/orvalin/Empresa.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/host/LienzoDePrueba.hpp"
#include "tests/host/MedidorFijo.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace atipicos::orvalin {
namespace {

    using testing::Contains;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::Not;

    /// Writes down where each report went.
    class SalidaDePrueba final : public SalidaReport {
    public:
        std::vector<std::string> pedido;
        std::vector<std::string> textos;
        std::string nombre_de_fichero;
        std::string asunto;
        std::vector<Adjunto> adjuntos;

        const Medidor& medidor() const override { return m_medidor; }
        void imprime(const Report& report, const std::string& impresora, Donde) override
        {
            anota("impresora " + impresora, report);
        }
        void muestra(std::shared_ptr<const Report> report, Donde) override { anota("pantalla", *report); }
        void guarda(const Report& report, Donde) override { anota("PDF", report); }
        void envia(const Report& report, Donde) override
        {
            anota("correo", report);
            asunto = report.asunto();
        }

    private:
        void anota(const std::string& donde, const Report& report)
        {
            pedido.push_back(donde + ": " + report.titulo());
            textos = pruebas::textos(report);
            nombre_de_fichero = report.nombre_de_fichero();
            adjuntos = report.adjuntos();
        }

        pruebas::MedidorFijo m_medidor;
    };

    struct ImpresionCargoDeMuestra : pruebas::BasesDeMuestra {
        std::shared_ptr<SalidaDePrueba> salida = std::make_shared<SalidaDePrueba>();
        Empresa empresa{ bases.orvalin, 1, 1 };
        Biblioteca biblioteca{ bases.orvalin, salida };

        void SetUp() override
        {
            bases.orvalin->Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                                   "Cod_Almacen, Codigo, Proveedor,"
                                   " Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
                                   "Observ, Cod_Compra, Documento,"
                                   " Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2026, 4, 'AT260001', 106, "
                                   "'10/02/2026', 1234.56, 0, 2,"
                                   " 2026, 1, '10/02/2026 9:00:00', 'Piñas dañadas', 0, 0, 7, 86.42, 0)");
            agrega_linea(1, "1010, 'Queso curado', 12.485, 9.75, 'Se vende como segunda'");
            agrega_linea(2, "0, 'Gastos', -2, 1.1255, NULL");
        }

        void agrega_linea(int numero, const std::string& valores) const
        {
            bases.orvalin->Execute(
                "INSERT INTO Proveedores_Cargos_Atipicos_Lineas VALUES (1, 2026, 4, 'AT260001', "
                + std::to_string(numero) + ", " + valores + ")");
        }

        std::unique_ptr<qvoremp::ImpresionCargo> impresion(std::int16_t dispositivo) const
        {
            auto almacen = biblioteca.NuevoAlmacen(empresa);
            almacen->Codigo = 4;
            EXPECT_TRUE(almacen->Cargar());
            auto proveedor = biblioteca.NuevoProveedor(empresa);
            proveedor->Codigo = 106;
            EXPECT_TRUE(proveedor->Cargar());
            auto nueva = biblioteca.NuevaImpresionCargo(empresa);
            nueva->Ejercicio = 2026;
            nueva->Codigo = "AT260001";
            nueva->almacen = std::move(almacen);
            nueva->proveedor = std::move(proveedor);
            nueva->Impresora = "Laser";
            nueva->Dispositivo = dispositivo;
            return nueva;
        }
    };

    TEST_F(ImpresionCargoDeMuestra, its_file_is_called_after_year_and_warehouse_too)
    {
        impresion(qvoremp::dispositivo::fichero_pdf)->Imprimir();
        EXPECT_THAT(salida->pedido, ElementsAre("PDF: Reclamación AT260001"));
        EXPECT_EQ(salida->nombre_de_fichero, "AT260001-2026-4");
    }

    TEST_F(ImpresionCargoDeMuestra, each_device_is_served_and_none_does_nothing)
    {
        const auto impresa = impresion(0);
        impresa->Imprimir();
        EXPECT_THAT(salida->pedido, IsEmpty());
        for (const auto dispositivo : { qvoremp::dispositivo::impresora, qvoremp::dispositivo::pantalla,
                 qvoremp::dispositivo::fichero_pdf, qvoremp::dispositivo::correo }) {
            impresa->Dispositivo = dispositivo;
            impresa->Imprimir();
        }
        EXPECT_THAT(salida->pedido,
            ElementsAre("impresora Laser: Reclamación AT260001", "pantalla: Reclamación AT260001",
                "PDF: Reclamación AT260001", "correo: Reclamación AT260001"));
        EXPECT_EQ(salida->asunto, "Reclamación AT260001 de Comercial Drago Sur, S.L.");
    }

    TEST_F(ImpresionCargoDeMuestra, its_data_go_along_for_a_program_to_read)
    {
        impresion(2)->Imprimir();
        ASSERT_EQ(salida->adjuntos.size(), 1U);
        EXPECT_EQ(salida->adjuntos[0].nombre, "AT260001-2026-4.json");
        EXPECT_EQ(salida->adjuntos[0].tipo, "application/json");
        const auto json = nlohmann::json::parse(salida->adjuntos[0].contenido);
        EXPECT_EQ(json["formato"], "atipicos/cargo");
        EXPECT_EQ(json["version"], 1);
        EXPECT_EQ(json["codigo"], "AT260001");
        EXPECT_EQ(json["ejercicio"], 2026);
        EXPECT_EQ(json["fecha"], "2026-02-10");
        EXPECT_EQ(json["observaciones"], "Piñas dañadas");
        EXPECT_EQ(json["emisor"],
            (nlohmann::json{ { "nombre", "Comercial Drago Sur, S.L." }, { "nif", "B38000011" },
                { "domicilio", "Polígono Valle de Güímar, manzana 7" }, { "codigo_postal", "38509" },
                { "poblacion", "Güímar" }, { "provincia", "Santa Cruz de Tenerife" } }));
        EXPECT_EQ(json["almacen"]["codigo"], 4);
        EXPECT_EQ(json["almacen"]["nombre"], "Puerto del Rosario");
        EXPECT_EQ(json["almacen"]["domicilio"], "Calle El Matorral, 40");
        EXPECT_EQ(json["almacen"]["codigo_postal"], "35610");
        EXPECT_EQ(json["almacen"]["poblacion"], "Puerto del Rosario");
        EXPECT_EQ(json["proveedor"]["codigo"], 106);
        EXPECT_EQ(json["proveedor"]["nombre"], "Quesería Majorera Tiscamanita");
        EXPECT_EQ(json["proveedor"]["nif"], "X1100106L");
        EXPECT_EQ(json["proveedor"]["domicilio"], "Calle La Rosa, 5");
        EXPECT_EQ(json["proveedor"]["codigo_postal"], "35638");
        EXPECT_EQ(json["proveedor"]["poblacion"], "Tuineje");
        ASSERT_EQ(json["lineas"].size(), 2U);
        EXPECT_EQ(json["lineas"][0],
            (nlohmann::json{ { "articulo", 1010 }, { "descripcion", "Queso curado" }, { "unidades", 12.485 },
                { "precio", 9.75 }, { "importe", 121.73 }, { "observaciones", "Se vende como segunda" } }));
        EXPECT_EQ(json["lineas"][1]["precio"], 1.1255);
        EXPECT_EQ(json["importe"], 1234.56);
        EXPECT_EQ(json["porcentaje_impuesto"], 7);
        EXPECT_EQ(json["impuesto"], 86.42);
        EXPECT_EQ(json["total"], 1320.98);
        EXPECT_TRUE(json["asiento"].is_null());
        EXPECT_TRUE(json["previsiones"].empty());
    }

    TEST_F(ImpresionCargoDeMuestra, says_all_of_the_charge)
    {
        impresion(2)->Imprimir();
        for (const auto* texto :
            { "Comercial Drago Sur, S.L.", "NIF B38000011", "Polígono Valle de Güímar, manzana 7",
                "38509 Güímar", "Santa Cruz de Tenerife", "AT260001", "10/02/2026", "4  Puerto del Rosario",
                "35610 Puerto del Rosario", "Quesería Majorera Tiscamanita", "Calle La Rosa, 5",
                "35638 Tuineje", "NIF X1100106L", "Piñas dañadas", "1010", "Queso curado",
                "Se vende como segunda", "12,485", "9,7500", "121,73", "Gastos", "-2,000", "1,1255", "-2,25",
                "1.234,56 €", "Impuesto (7 %)", "86,42 €", "1.320,98 €", "Página 1 de 1" })
            EXPECT_THAT(salida->textos, Contains(texto));
        EXPECT_THAT(salida->textos, Not(Contains("Previsión de vencimientos")));
        EXPECT_THAT(salida->textos, Not(Contains(testing::StartsWith("Asiento"))));
    }

    TEST_F(ImpresionCargoDeMuestra, a_posted_charge_has_its_entry_and_its_forecasts)
    {
        bases.orvalin->Execute("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 7");
        bases.bexmor->Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario)"
                              " VALUES (2, 2026, 7, '10/02/2026', '1')");
        const auto cuenta = pruebas::columna(
            *bases.bexmor, "SELECT Cuenta FROM Cuentas WHERE Cod_Empresa =2 AND Cod_Ejercicio =2026");
        bases.bexmor->Execute("INSERT INTO Previsiones VALUES (2, 2026, 7, 1, '" + cuenta.at(0)
            + "', '90', 1320.98, 0, '15/03/2026', '')");
        impresion(2)->Imprimir();
        for (const auto* texto :
            { "Previsión de vencimientos", "1", "15/03/2026", "1.320,98", "Asiento contable n.º 7" })
            EXPECT_THAT(salida->textos, Contains(texto));
        const auto json = nlohmann::json::parse(salida->adjuntos.at(0).contenido);
        EXPECT_EQ(json["asiento"], 7);
        EXPECT_EQ(json["previsiones"],
            nlohmann::json::array({ { { "numero", 1 }, { "vencimiento", "2026-03-15" }, { "documento", "" },
                { "importe", 1320.98 } } }));
    }

    TEST_F(ImpresionCargoDeMuestra, no_line_is_lost_at_any_number_of_lines)
    {
        // 31 rows fit on the first page and 38 on the others; the last row and the totals stay together.
        for (const auto& [lineas, paginas] : { std::pair{ 20, 1 }, { 30, 2 }, { 31, 2 }, { 500, 14 } }) {
            bases.orvalin->Execute("DELETE FROM Proveedores_Cargos_Atipicos_Lineas");
            for (int i = 1; i <= lineas; ++i)
                agrega_linea(i, "1010, 'línea " + std::to_string(i) + ".', 1, 1, ''");
            impresion(2)->Imprimir();
            for (int i = 1; i <= lineas; ++i)
                EXPECT_EQ(std::ranges::count(salida->textos, "línea " + std::to_string(i) + "."), 1);
            const auto pagina = "Página " + std::to_string(paginas) + " de " + std::to_string(paginas);
            EXPECT_THAT(salida->textos, Contains(pagina));
        }
    }

    TEST_F(ImpresionCargoDeMuestra, a_supplier_that_is_gone_leaves_its_code)
    {
        bases.orvalin->Execute("DELETE FROM Proveedores WHERE Codigo =106");
        auto proveedor = biblioteca.NuevoProveedor(empresa);
        proveedor->Codigo = 106;
        EXPECT_FALSE(proveedor->Cargar());
        EXPECT_EQ(proveedor->Nombre, "");
        auto almacen = biblioteca.NuevoAlmacen(empresa);
        almacen->Codigo = 4;
        const auto impresa = biblioteca.NuevaImpresionCargo(empresa);
        impresa->Ejercicio = 2026;
        impresa->Codigo = "AT260001";
        impresa->almacen = std::move(almacen);
        impresa->proveedor = std::move(proveedor);
        impresa->Dispositivo = qvoremp::dispositivo::pantalla;
        impresa->Imprimir();
        EXPECT_THAT(salida->textos, Contains("Proveedor n.º 106"));
        EXPECT_THAT(salida->textos, Not(Contains(testing::HasSubstr("X1100106L"))));
    }

    TEST_F(ImpresionCargoDeMuestra, what_cannot_be_printed_is_an_error)
    {
        EXPECT_EQ(
            pruebas::error_de([&] { impresion(5)->Imprimir(); }), "No se conoce el dispositivo de salida 5.");
        EXPECT_EQ(pruebas::error_de([&] { impresion(-1)->Imprimir(); }),
            "No se conoce el dispositivo de salida -1.");
        const auto impresa = impresion(1);
        impresa->Codigo = "AT'1";
        EXPECT_EQ(pruebas::error_de([&] { impresa->Imprimir(); }),
            "No existe el cargo AT'1 del ejercicio 2026 en el almacén 4.");
        impresa->almacen = nullptr;
        EXPECT_EQ(
            pruebas::error_de([&] { impresa->Imprimir(); }), "La variable de objeto no está establecida");
        EXPECT_EQ(pruebas::error_de([&] {
            static_cast<void>(Biblioteca(bases.orvalin, nullptr).NuevaImpresionCargo(empresa));
        }),
            "La variable de objeto no está establecida");
        EXPECT_THAT(salida->pedido, IsEmpty());
    }

}
}
