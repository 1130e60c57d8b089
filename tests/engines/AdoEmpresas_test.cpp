// The company libraries over automation objects of a host: which members are asked for, with which values.
#include "engines/ado/Connection.hpp"
#include "engines/ado/Conversion.hpp"
#include "engines/ado/EmpresaBexmor.hpp"
#include "engines/ado/EmpresaOrvalin.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::ado {
namespace {

    using automation::Anfitrion;
    using automation::Argumentos;
    using automation::Despacho;
    using automation::Valor;
    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;

    /// What was asked of the host's objects, as "Objeto.Miembro valores".
    using Dichas = std::shared_ptr<std::vector<std::string>>;

    std::string texto(const Valor& valor) { return CStr(variant_de(valor.get())); }

    Anfitrion::Miembro campo(const Dichas& dichas, const std::string& objeto, const char* nombre)
    {
        return { nombre, {}, [=](const Argumentos& a) {
                    dichas->push_back(objeto + "." + nombre + "=" + texto(a.valor(0)));
                    return Valor();
                } };
    }

    Anfitrion::Miembro metodo(
        const Dichas& dichas, const std::string& objeto, const char* nombre, Valor resultado)
    {
        return { nombre, [=](const Argumentos& a) {
                    std::string dicho = objeto + "." + nombre;
                    for (std::size_t i = 0; i < a.cuantos(); ++i)
                        dicho += " " + texto(a.valor(i));
                    dichas->push_back(dicho);
                    return resultado;
                } };
    }

    Despacho objeto(const Dichas& dichas, const std::string& nombre,
        std::initializer_list<const char*> campos, std::vector<std::pair<const char*, Valor>> metodos)
    {
        std::vector<Anfitrion::Miembro> miembros;
        for (const char* uno : campos)
            miembros.push_back(campo(dichas, nombre, uno));
        for (const auto& [suyo, resultado] : metodos)
            miembros.push_back(metodo(dichas, nombre, suyo, resultado));
        return Anfitrion::crea(std::move(miembros));
    }

    struct Bexmor : testing::Test {
        Dichas dichas = std::make_shared<std::vector<std::string>>();

        /// A company whose `miembro` gives `parte`.
        std::unique_ptr<qvbxemp::Empresa> empresa(const char* miembro, const Despacho& parte) const
        {
            const auto nueva
                = objeto(dichas, "Empresa", { "Codigo", "Ejercicio", "FechaTrabajo", "UsuarioActual" },
                    { { "Cargar", true }, { "Parametro", "Bexmor" }, { "CuentaBancoPago", "572000001" },
                        { "LongitudCuenta", 9 }, { miembro, parte.valor() } });
            const auto biblioteca = std::make_shared<BibliotecaBexmor>(
                objeto(dichas, "Raiz", {}, { { "NuevaEmpresa", nueva.valor() } }));
            auto cargada = biblioteca->NuevaEmpresa();
            cargada->Codigo = 2;
            EXPECT_TRUE(cargada->Cargar());
            cargada->Ejercicio = 2026;
            cargada->FechaTrabajo = dia("21/11/2026");
            cargada->UsuarioActual = "12";
            dichas->clear();
            return cargada;
        }
        static constexpr auto ligada
            = "Empresa.Ejercicio=2026;Empresa.FechaTrabajo=21/11/2026;Empresa.UsuarioActual=12";
        /// What was said after the company was told its year, day and user.
        std::vector<std::string> dichas_a(const char* miembro) const
        {
            EXPECT_EQ(dichas->at(0) + ";" + dichas->at(1) + ";" + dichas->at(2), ligada);
            EXPECT_EQ(dichas->at(3), std::string("Empresa.") + miembro);
            return { dichas->begin() + 4, dichas->end() };
        }
    };

    TEST_F(Bexmor, a_company_answers_for_its_settings)
    {
        const auto suya = empresa("NuevoAsiento", {});
        EXPECT_EQ(suya->Parametro("ODBCBaseDatos"), Variant("Bexmor"));
        EXPECT_EQ(suya->CuentaBancoPago(), "572000001");
        EXPECT_EQ(suya->LongitudCuenta(), 9);
        EXPECT_THAT(*dichas,
            ElementsAre(
                "Empresa.Parametro ODBCBaseDatos", "Empresa.CuentaBancoPago", "Empresa.LongitudCuenta"));
    }

    TEST_F(Bexmor, an_entry_is_made_and_numbered)
    {
        const auto suya = empresa("NuevoAsiento",
            objeto(dichas, "Asiento", { "Fecha" },
                { { "Crear", {} }, { "Numero", 33 }, { "SiguienteLinea", 1 } }));
        const auto asiento = suya->biblioteca().NuevoAsiento(*suya);
        asiento->Fecha = dia("12/11/2026");
        asiento->Crear();
        EXPECT_EQ(asiento->Numero, 33);
        EXPECT_EQ(asiento->SiguienteLinea(), 1);
        EXPECT_THAT(dichas_a("NuevoAsiento"),
            ElementsAre(
                "Asiento.Fecha=12/11/2026", "Asiento.Crear", "Asiento.Numero", "Asiento.SiguienteLinea"));
    }

    TEST_F(Bexmor, a_line_is_stored_or_says_why_not)
    {
        const auto campos = { "Asiento", "Linea", "Cuenta", "ConceptoAutomatico", "Concepto", "Documento",
            "Departamento", "Debe", "Haber", "TipoImpuesto", "PorcentajeImpuesto", "BaseImpuesto" };
        const auto suya = empresa("NuevoApunte",
            objeto(dichas, "Apunte", campos,
                { { "Guardar", false }, { "ErrorNumero", 1000 }, { "ErrorFuente", "QVBXEMP" },
                    { "ErrorDescripcion", "La cuenta no existe." } }));
        const auto apunte = suya->biblioteca().NuevoApunte(*suya);
        apunte->Asiento = 33;
        apunte->Linea = 1;
        apunte->Cuenta = "440000106";
        apunte->Debe = moneda("141.22");
        EXPECT_FALSE(apunte->Guardar());
        EXPECT_EQ(apunte->error().numero(), 1000);
        EXPECT_EQ(apunte->error().fuente(), "QVBXEMP");
        EXPECT_EQ(apunte->error().descripcion(), "La cuenta no existe.");
        const auto suyas = dichas_a("NuevoApunte");
        EXPECT_THAT(suyas, testing::SizeIs(campos.size() + 4));
        EXPECT_EQ(suyas.at(2), "Apunte.Cuenta=440000106");
        EXPECT_EQ(suyas.at(7), "Apunte.Debe=141,22");
    }

    TEST_F(Bexmor, a_line_whose_object_raises_is_refused_with_that_error)
    {
        const auto suya = empresa("NuevoApunte", Anfitrion::crea({}));
        const auto apunte = suya->biblioteca().NuevoApunte(*suya);
        EXPECT_FALSE(apunte->Guardar());
        EXPECT_EQ(apunte->error().numero(), 438);
    }

    TEST_F(Bexmor, tax_register_forecasts_and_accounts_are_reached_by_name)
    {
        {
            const auto suya = empresa("NuevoRegistroImpuesto",
                objeto(dichas, "R",
                    { "Clase", "Indicador", "Documento", "Base", "TipoImpuesto", "Cuota", "TotalImpuesto",
                        "Asiento", "Linea" },
                    { { "Guardar", {} } }));
            const auto registro = suya->biblioteca().NuevoRegistroImpuesto(*suya);
            registro->Cuota = moneda("9.24");
            registro->Guardar();
            EXPECT_THAT(dichas_a("NuevoRegistroImpuesto"), testing::Contains("R.Cuota=9,24"));
            EXPECT_EQ(dichas->back(), "R.Guardar");
        }
        {
            const auto suya = empresa("NuevaPrevision",
                objeto(dichas, "P",
                    { "Asiento", "Departamento", "Importe", "TipoDoc", "Vencimiento", "Banco", "Cuenta" },
                    { { "Guardar", {} } }));
            const auto prevision = suya->biblioteca().NuevaPrevision(*suya);
            prevision->Vencimiento = dia("15/03/2026");
            prevision->Guardar();
            EXPECT_THAT(dichas_a("NuevaPrevision"), testing::Contains("P.Vencimiento=15/03/2026"));
            EXPECT_EQ(dichas->back(), "P.Guardar");
        }
        const auto tipo = objeto(dichas, "T", {}, { { "Porcentaje", 7.0 }, { "Imp_CtaRep", "477000007" } });
        const auto suya = empresa("NuevoServicioCuentas",
            objeto(dichas, "S", {},
                { { "FormarCuenta", "440000106" }, { "ExisteCuenta", true },
                    { "LeerTipoImpuesto", tipo.valor() } }));
        const auto cuentas = suya->biblioteca().NuevoServicioCuentas(*suya);
        EXPECT_EQ(cuentas->FormarCuenta("440", 106, 9), "440000106");
        EXPECT_TRUE(cuentas->ExisteCuenta("440000106"));
        const auto leido = cuentas->LeerTipoImpuesto(1);
        EXPECT_EQ(leido.Porcentaje, moneda("7"));
        EXPECT_EQ(leido.Imp_CtaRep, "477000007");
        EXPECT_THAT(dichas_a("NuevoServicioCuentas"),
            ElementsAre("S.FormarCuenta 440 106 9", "S.ExisteCuenta 440000106", "S.LeerTipoImpuesto 1",
                "T.Porcentaje", "T.Imp_CtaRep"));
    }

    TEST_F(Bexmor, its_objects_serve_its_own_companies_only)
    {
        const auto biblioteca = std::make_shared<BibliotecaBexmor>(Anfitrion::crea({}));
        const pruebas::Contexto contexto;
        const auto ajena = contexto.biblioteca->NuevaEmpresa(Donde::aqui());
        EXPECT_THROW(static_cast<void>(biblioteca->NuevoAsiento(*ajena)), Error);
    }

    TEST(Orvalin, a_company_answers_for_its_settings)
    {
        const auto dichas = std::make_shared<std::vector<std::string>>();
        const EmpresaOrvalin empresa(objeto(dichas, "E", {},
            { { "Codigo", std::int16_t{ 1 } }, { "Nombre", "Ñandú, S.A." }, { "Parametro", Valor() },
                { "PorcentajeImpuesto", 7.5 }, { "DecimalesImporte", 2 }, { "DecimalesCosto", 3 },
                { "DecimalesPrecio", 4 }, { "AlmacenDefecto", 5 }, { "EnlaceContable", 1 },
                { "EmpresaProveedores", 6 }, { "RaizProveedores", 400 } }));
        EXPECT_EQ(empresa.Codigo(), 1);
        EXPECT_EQ(empresa.Nombre(), "Ñandú, S.A.");
        EXPECT_TRUE(empresa.Parametro("OficinaCentral").es_vacio());
        EXPECT_EQ(empresa.PorcentajeImpuesto(3), moneda("7.5"));
        EXPECT_EQ(empresa.DecimalesImporte(), 2);
        EXPECT_EQ(empresa.DecimalesCosto(), 3);
        EXPECT_EQ(empresa.DecimalesPrecio(), 4);
        EXPECT_EQ(empresa.AlmacenDefecto(), 5);
        EXPECT_EQ(empresa.EnlaceContable(), 1);
        EXPECT_EQ(empresa.EmpresaProveedores(), 6);
        EXPECT_EQ(empresa.RaizProveedores(), 400);
        EXPECT_EQ(dichas->at(2), "E.Parametro OficinaCentral");
        EXPECT_EQ(dichas->at(3), "E.PorcentajeImpuesto 3");
    }

    TEST(Orvalin, warehouse_supplier_and_printing_are_reached_by_name)
    {
        const auto dichas = std::make_shared<std::vector<std::string>>();
        const auto ficha = objeto(dichas, "F", { "Codigo" },
            { { "Cargar", true }, { "Nombre", "Sur" }, { "Domicilio", "C/ Sol, 1" },
                { "CodigoPostal", "35600" }, { "Poblacion", Valor::nulo() }, { "NIF", "B35000000" } });
        const auto impresion = objeto(dichas, "I",
            { "Ejercicio", "Almacen", "Codigo", "Proveedor", "Impresora", "Dispositivo" },
            { { "Imprimir", {} } });
        const EmpresaOrvalin empresa(objeto(dichas, "E", {},
            { { "NuevoAlmacen", ficha.valor() }, { "NuevoProveedor", ficha.valor() },
                { "NuevaImpresionCargo", impresion.valor() } }));
        const BibliotecaOrvalin biblioteca;
        const std::shared_ptr<qvoremp::Almacen> almacen = biblioteca.NuevoAlmacen(empresa);
        almacen->Codigo = 4;
        EXPECT_TRUE(almacen->Cargar());
        EXPECT_EQ(almacen->Nombre + ";" + almacen->CodigoPostal + ";" + almacen->Poblacion, "Sur;35600;");
        const std::shared_ptr<qvoremp::Proveedor> proveedor = biblioteca.NuevoProveedor(empresa);
        proveedor->Codigo = 106;
        EXPECT_TRUE(proveedor->Cargar());
        EXPECT_EQ(proveedor->NIF, "B35000000");

        dichas->clear();
        const auto impreso = biblioteca.NuevaImpresionCargo(empresa);
        impreso->Ejercicio = 2026;
        impreso->Codigo = "AT260001";
        impreso->almacen = almacen;
        impreso->proveedor = proveedor;
        impreso->Dispositivo = qvoremp::dispositivo::pantalla;
        impreso->Imprimir();
        EXPECT_THAT(*dichas,
            ElementsAre("E.NuevaImpresionCargo", "I.Ejercicio=2026", "I.Almacen=4", "I.Codigo=AT260001",
                "I.Proveedor=106", "I.Impresora=", "I.Dispositivo=2", "I.Imprimir"));
    }

}
}
