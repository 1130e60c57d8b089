// The sample claims file against the sample company: what it holds, and that all of it can be recorded.
#include "browser/ListaAtipicos.hpp"
#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/bexmor/Asiento.hpp"
#include "posting/GenerarPrev.hpp"
#include "runtime/Formato.hpp"
#include "tests/host/Suite.hpp"

#include <fstream>
#include <map>
#include <set>

namespace atipicos {
namespace {

    using pruebas::cuenta;

    struct Fila {
        std::string referencia, almacen, proveedor, fecha, observaciones, franquiciado, articulo, descripcion,
            unidades, costo, observaciones_linea;
    };

    std::vector<std::string> campos(const std::string& linea)
    {
        std::vector<std::string> todos(1);
        bool entrecomillado = false;
        for (const char c : linea) {
            if (c == '"')
                entrecomillado = !entrecomillado; // a doubled quote closes and opens again
            else if (c == ';' && !entrecomillado)
                todos.emplace_back();
            else
                todos.back() += c;
        }
        return todos;
    }

    std::vector<Fila> lee_filas()
    {
        std::ifstream fichero(std::string(ATIPICOS_FUENTES) + "/host/datos/reclamaciones.csv");
        std::string linea;
        EXPECT_TRUE(std::getline(fichero, linea));
        EXPECT_EQ(linea,
            "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
            "costo;"
            "observaciones_linea");
        std::vector<Fila> filas;
        while (std::getline(fichero, linea)) {
            const auto c = campos(linea);
            EXPECT_EQ(c.size(), 11U) << linea;
            filas.push_back({ c.at(0), c.at(1), c.at(2), c.at(3), c.at(4), c.at(5), c.at(6), c.at(7), c.at(8),
                c.at(9), c.at(10) });
        }
        return filas;
    }

    struct Reclamaciones : pruebas::Suite {
        std::vector<Fila> filas = lee_filas();

        /// The rows of each charge, in the order of the file.
        std::vector<std::vector<Fila>> cargos() const
        {
            std::vector<std::vector<Fila>> todos;
            for (const auto& fila : filas) {
                if (todos.empty() || todos.back().front().referencia != fila.referencia)
                    todos.emplace_back();
                todos.back().push_back(fila);
            }
            return todos;
        }

        ResultadoGuardado registra(const std::vector<Fila>& lineas) const
        {
            const auto& cabecera = lineas.front();
            clsAtipico cargo;
            CargoTecleado tecleado;
            tecleado.Almacen = CInt(std::stoi(cabecera.almacen));
            tecleado.Proveedor = std::stoi(cabecera.proveedor);
            tecleado.NombreProveedor = catalogos.proveedor(tecleado.Proveedor).value();
            tecleado.Fecha = pruebas::dia(cabecera.fecha.c_str());
            tecleado.Observaciones = cabecera.observaciones;
            tecleado.Franquiciado = cabecera.franquiciado == "S";
            for (const auto& fila : lineas) {
                const auto articulo = fila.articulo.empty() ? 0 : std::stoi(fila.articulo);
                const auto unidades = lee_pantalla(fila.unidades);
                const auto costo = lee_pantalla(fila.costo);
                const auto importe = importe_linea(unidades, costo);
                cargo.Lineas->Add(articulo, fila.descripcion, unidades, costo, fila.observaciones_linea);
                tecleado.Cargos.push_back({ importe,
                    articulo == 0 ? "" : catalogos.articulo(articulo).value().CtaIngresosAtipicos });
                tecleado.Total += importe;
            }
            return GuardarAtipico(cargo, tecleado, [](const Contabilizacion& datos) {
                std::vector<Prevision> previsiones;
                for (const auto& una : GenerarPrev(datos).previsiones)
                    previsiones.push_back(una.prevision);
                return previsiones;
            });
        }
    };

    TEST_F(Reclamaciones, are_enough_and_each_reference_is_one_run_of_rows)
    {
        EXPECT_GE(filas.size(), 180U);
        EXPECT_GE(cargos().size(), 60U);
        std::set<std::string> referencias;
        for (const auto& cargo : cargos())
            EXPECT_TRUE(referencias.insert(cargo.front().referencia).second) << cargo.front().referencia;
    }

    TEST_F(Reclamaciones, name_only_what_the_sample_company_has)
    {
        for (const auto& fila : filas) {
            const auto almacen = catalogos.almacen(CInt(std::stoi(fila.almacen)));
            ASSERT_TRUE(almacen) << fila.referencia;
            EXPECT_NE(almacen->EmpContable, 0) << fila.referencia;
            EXPECT_TRUE(catalogos.proveedor(std::stoi(fila.proveedor))) << fila.referencia;
            EXPECT_TRUE(fila.articulo.empty() || catalogos.articulo(std::stoi(fila.articulo)))
                << fila.referencia;
            const auto fecha = Date::de_texto(fila.fecha);
            ASSERT_TRUE(fecha) << fila.referencia;
            EXPECT_TRUE(fecha->anio() == 2025 || fecha->anio() == 2026) << fila.fecha;
            EXPECT_FALSE(fila.articulo.empty() && fila.descripcion.empty()) << fila.referencia;
            for (const auto& texto : { fila.observaciones, fila.descripcion, fila.observaciones_linea })
                EXPECT_EQ(texto.find('\''), std::string::npos) << texto;
        }
    }

    TEST_F(Reclamaciones, have_every_supplier_and_the_cases_that_a_year_brings)
    {
        std::set<std::string> proveedores;
        int abonos = 0, franquiciados = 0, sin_articulo = 0, con_tres_decimales = 0, con_cuatro_decimales = 0;
        for (const auto& fila : filas) {
            proveedores.insert(fila.proveedor);
            abonos += lee_pantalla(fila.unidades) < Currency() ? 1 : 0;
            franquiciados += fila.franquiciado == "S" ? 1 : 0;
            sin_articulo += fila.articulo.empty() ? 1 : 0;
            con_tres_decimales += lee_pantalla(fila.unidades).crudo() % 100 != 0 ? 1 : 0;
            con_cuatro_decimales += lee_pantalla(fila.costo).crudo() % 10 != 0 ? 1 : 0;
        }
        EXPECT_EQ(
            static_cast<int>(proveedores.size()), cuenta(*bases.orvalin, "Proveedores WHERE Cod_Empresa =1"));
        EXPECT_GT(abonos, 3);
        EXPECT_GT(franquiciados, 5);
        EXPECT_GT(sin_articulo, 20);
        EXPECT_GT(con_tres_decimales, 5);
        EXPECT_GT(con_cuatro_decimales, 5);
    }

    TEST_F(Reclamaciones, are_all_recorded_and_posted_and_every_entry_balances)
    {
        for (const auto& lineas : cargos()) {
            const auto resultado = registra(lineas);
            ASSERT_EQ(resultado.estado, ResultadoGuardado::Estado::Guardado) << lineas.front().referencia;
            EXPECT_FALSE(resultado.InsertarFallido) << lineas.front().referencia;
            EXPECT_GT(resultado.Asiento, 0) << lineas.front().referencia;
            const auto almacen = catalogos.almacen(CInt(std::stoi(lineas.front().almacen))).value();
            const auto empresa = biblioteca.NuevaEmpresa();
            empresa->Codigo = almacen.EmpContable;
            empresa->Ejercicio = CInt(pruebas::dia(lineas.front().fecha.c_str()).anio());
            bexmor::Asiento asiento(*empresa);
            asiento.Numero = resultado.Asiento;
            EXPECT_EQ(asiento.Descuadre(), Currency()) << resultado.Codigo;
        }
        EXPECT_EQ(avisos->dichos, std::vector<Mensaje>{});
        const auto registrados = static_cast<std::int32_t>(cargos().size());
        EXPECT_EQ(cuenta(*bases.orvalin, "Proveedores_Cargos_Atipicos"), registrados);
        EXPECT_EQ(
            cuenta(*bases.orvalin, "Proveedores_Cargos_Atipicos_Lineas"), static_cast<int>(filas.size()));
        EXPECT_EQ(cuenta(*bases.bexmor, "Asientos"), registrados);
        EXPECT_EQ(cuenta(*bases.bexmor, "Registro_Impuestos"), registrados);
        // Each line, and beside them debtor twice, tax and supplier.
        EXPECT_EQ(cuenta(*bases.bexmor, "Apuntes"), static_cast<int>(filas.size()) + 4 * registrados);
    }

    TEST_F(Reclamaciones, once_recorded_are_listed_with_the_names_of_all_that_they_refer_to)
    {
        for (std::size_t i = 0; i < 20; ++i)
            static_cast<void>(registra(cargos().at(i)));
        std::size_t listados = 0;
        Cargar_Atipicos({ "01/01/2025", "31/12/2026", 0, 0 }, [&](const CargoListado& cargo) {
            ++listados;
            EXPECT_NE(cargo.Nombre_Almacen, "") << cargo.Codigo;
            EXPECT_NE(cargo.Nombre_Proveedor, "") << cargo.Codigo;
            EXPECT_EQ(cargo.Nombre_Usuario, "Turno de noche");
            EXPECT_EQ(cargo.Impuesto, Currency::de_entero(7));
        });
        EXPECT_EQ(listados, 20U);
    }

    TEST_F(Reclamaciones, the_forecasts_of_each_entry_add_up_to_what_the_supplier_owes)
    {
        for (const auto& lineas : cargos())
            static_cast<void>(registra(lineas));
        const auto rs = bases.orvalin->CreateRecordset();
        rs->Open("SELECT pc.Codigo, pc.Proveedor, pc.Importe, pc.Impuesto_Importe, p.Importe AS Plazo, "
                 "pc.Cod_Almacen"
                 " FROM Proveedores_Cargos_Atipicos pc LEFT JOIN Bexmor.dbo.Previsiones p"
                 " ON p.Cod_Empresa = pc.EmpContable AND p.Cod_Ejercicio = pc.Cod_Ejercicio"
                 " AND p.Asiento = pc.Asiento",
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        std::map<std::string, Currency> por_pagar;
        for (; !rs->Eof(); rs->MoveNext()) {
            const auto plazo = rs->Fields("Plazo").Value();
            const bool sin_previsiones = CLng(rs->Fields("Proveedor").Value()) == 113;
            ASSERT_EQ(plazo.es_nulo(), sin_previsiones) << CStr(rs->Fields("Codigo").Value());
            if (sin_previsiones)
                continue;
            const auto clave = CStr(rs->Fields("Cod_Almacen").Value()) + CStr(rs->Fields("Codigo").Value());
            auto& resto
                = por_pagar
                      .try_emplace(clave,
                          CCur(rs->Fields("Importe").Value()) + CCur(rs->Fields("Impuesto_Importe").Value()))
                      .first->second;
            resto -= CCur(plazo);
        }
        EXPECT_GT(por_pagar.size(), 50U);
        for (const auto& [clave, resto] : por_pagar)
            EXPECT_EQ(resto, Currency()) << clave;
    }

}
} // namespace atipicos
