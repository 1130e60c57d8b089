// The views on every engine, against an arithmetic of integers without limit over the same claims file.
#include "host/resumen/LecturaResumen.hpp"

#include "host/bases/Bases.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/runtime/Oraculo.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

namespace atipicos::app {
namespace {

    using pruebas::dia;
    using pruebas::Entero;
    using pruebas::moneda;

    struct FilaReclamada {
        std::string referencia;
        int almacen = 0;
        int proveedor = 0;
        std::string fecha;
        int articulo = 0;
        Entero centimos; ///< of the line
    };

    /// "1.234,5" in ten-thousandths.
    Entero diezmilesimas(std::string texto)
    {
        std::erase(texto, '.');
        const auto coma = texto.find(',');
        auto decimales = coma == std::string::npos ? std::string() : texto.substr(coma + 1);
        decimales.resize(4, '0');
        const auto enteras = texto.substr(0, coma);
        const bool negativo = enteras.starts_with('-');
        const Entero valor
            = Entero(negativo ? enteras.substr(1) : enteras) * 10'000 + Entero("1" + decimales) - 10'000;
        return negativo ? Entero(-valor) : valor;
    }

    std::vector<std::string> campos_de(const std::string& linea)
    {
        std::vector<std::string> todos(1);
        bool entre_comillas = false;
        for (const char c : linea) {
            if (c == '"')
                entre_comillas = !entre_comillas;
            else if (c == ';' && !entre_comillas)
                todos.emplace_back();
            else
                todos.back() += c;
        }
        return todos;
    }

    std::vector<FilaReclamada> reclamadas()
    {
        std::ifstream fichero(ATIPICOS_FUENTES "/host/datos/reclamaciones.csv");
        std::vector<FilaReclamada> todas;
        std::string linea;
        std::getline(fichero, linea);
        while (std::getline(fichero, linea)) {
            const auto campos = campos_de(linea);
            const Entero producto = diezmilesimas(campos[8]) * diezmilesimas(campos[9]);
            const Entero centimos = pruebas::redondeada(
                pruebas::redondeada(producto, 10'000), 100); // fourth decimal, then second
            todas.push_back({ campos[0], std::stoi(campos[1]), std::stoi(campos[2]), campos[3],
                campos[6].empty() ? 0 : std::stoi(campos[6]), centimos });
        }
        return todas;
    }

    struct Sumas {
        std::int64_t cuantos = 0;
        Entero base;
        Entero impuesto; ///< by article in millionths of a cent, until it is rounded
        friend bool operator==(const Sumas&, const Sumas&) = default;
    };
    using PorClave = std::map<int, Sumas>;

    constexpr int tipo = 7; ///< percent, of the sample company

    int clave_esperada(const FilaReclamada& fila, VistaResumen por)
    {
        switch (por) {
        case VistaResumen::proveedor:
            return fila.proveedor;
        case VistaResumen::almacen:
            return fila.almacen;
        case VistaResumen::articulo:
            return fila.articulo;
        case VistaResumen::mes:
            break;
        }
        return std::stoi(fila.fecha.substr(6)) * 12 + std::stoi(fila.fecha.substr(3, 2)) - 1;
    }

    std::string al_reves(const std::string& fecha)
    {
        return fecha.substr(6) + fecha.substr(3, 2) + fecha.substr(0, 2);
    }

    /// What the claims of a range come to; `mas`: months by which a month is moved.
    PorClave esperado(const PeticionResumen& peticion, const Periodo& periodo, int mas)
    {
        PorClave sumas;
        std::map<std::string, std::pair<int, Entero>> cargos; // by reference: key and base
        static const auto todas = reclamadas();
        for (const auto& fila : todas) {
            const auto fecha = al_reves(fila.fecha);
            if (fecha < al_reves(periodo.desde.texto()) || fecha > al_reves(periodo.hasta.texto())
                || (peticion.almacen > 0 && fila.almacen != peticion.almacen)
                || (peticion.proveedor > 0 && fila.proveedor != peticion.proveedor))
                continue;
            const int clave = clave_esperada(fila, peticion.por) + mas;
            sumas[clave].base += fila.centimos;
            if (peticion.por == VistaResumen::articulo) {
                ++sumas[clave].cuantos;
                sumas[clave].impuesto += fila.centimos * tipo;
            } else {
                auto& cargo = cargos[fila.referencia];
                cargo.first = clave;
                cargo.second += fila.centimos;
            }
        }
        if (peticion.por == VistaResumen::articulo)
            for (auto& [clave, suma] : sumas)
                suma.impuesto = pruebas::redondeada(suma.impuesto, 100);
        for (const auto& [referencia, cargo] : cargos) {
            ++sumas[cargo.first].cuantos;
            sumas[cargo.first].impuesto += pruebas::redondeada(cargo.second * tipo, 100);
        }
        return sumas;
    }

    Sumas en_centimos(const Cifras& cifras)
    {
        return { cifras.cuantos, Entero(cifras.base.crudo() / 100), Entero(cifras.impuesto.crudo() / 100) };
    }

    void compara(const ResumenCargos& resumen)
    {
        const auto& peticion = resumen.peticion();
        const auto ahora = esperado(peticion, peticion.periodo, 0);
        const auto antes
            = esperado(peticion, un_anio_antes(peticion.periodo), peticion.por == VistaResumen::mes ? 12 : 0);
        std::set<int> claves;
        for (const auto* unas : { &ahora, &antes })
            for (const auto& [clave, suma] : *unas)
                claves.insert(clave);
        std::size_t con_cargos = 0;
        for (const auto& grupo : resumen.grupos()) {
            const auto sumas = [&](const PorClave& unas) {
                const auto lugar = unas.find(grupo.clave);
                return lugar == unas.end() ? Sumas() : lugar->second;
            };
            EXPECT_EQ(en_centimos(grupo.ahora), sumas(ahora)) << grupo.nombre;
            EXPECT_EQ(en_centimos(grupo.antes), sumas(antes)) << grupo.nombre;
            con_cargos += claves.count(grupo.clave);
        }
        EXPECT_EQ(con_cargos, claves.size()) << titulo(peticion);
        EXPECT_FALSE(claves.empty()) << titulo(peticion);
    }

    /// The sample company with its claims recorded, in any kind of place.
    struct ConReclamaciones {
        std::unique_ptr<pruebas::Muestra> muestra;
        bases::Bases abiertas;

        explicit ConReclamaciones(const pruebas::Sede& sede)
            : muestra(sede.muestra())
        {
            const auto lugar = muestra->lugar();
            OpcionesComunes opciones;
            if (lugar.clase() == bases::Lugar::Clase::carpeta)
                opciones.datos = lugar.carpeta();
            else
                opciones.conexion
                    = (lugar.clase() == bases::Lugar::Clase::odbc ? "odbc:" : "") + lugar.direccion();
            std::ostringstream tabla;
            auto* const pantalla = std::cout.rdbuf(tabla.rdbuf());
            const int estado = registrar(opciones, { ATIPICOS_FUENTES "/host/datos/reclamaciones.csv" });
            std::cout.rdbuf(pantalla);
            EXPECT_EQ(estado, hecho) << tabla.str();
            abiertas = bases::abre_bases(lugar);
        }

        [[nodiscard]] ResumenCargos lee(const PeticionResumen& peticion, std::int16_t empresa = 1) const
        {
            return lee_resumen(*abiertas.orvalin, { empresa, 1 }, peticion);
        }
    };

    constexpr std::array todas_las_vistas{ VistaResumen::proveedor, VistaResumen::mes, VistaResumen::almacen,
        VistaResumen::articulo };

    struct LecturaResumenEn : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    TEST_P(LecturaResumenEn, every_view_comes_to_what_the_claims_say_and_has_the_names_of_its_catalogue)
    {
        const ConReclamaciones empresa(GetParam());
        for (const auto por : todas_las_vistas) {
            compara(empresa.lee({ por, { dia("01/01/2026"), dia("31/12/2026") } }));
            compara(empresa.lee(
                { por, { dia("12/11/2025"), dia("20/10/2026") } })); // the first and last are claims' days
            compara(
                empresa.lee({ por, { dia("01/01/2025"), dia("31/12/2026") } })); // two years, which overlap
            compara(empresa.lee({ por, { dia("01/01/2025"), dia("31/12/9999") }, 3, 0 }).primeros(9999));
            compara(empresa.lee({ por, { dia("01/02/2026"), dia("30/11/2026") }, 0, 108 }));
        }
        const auto proveedores
            = empresa.lee({ VistaResumen::proveedor, { dia("01/01/2026"), dia("31/12/2026") } });
        EXPECT_EQ(proveedores.grupos().size(), 14U);
        EXPECT_GT(proveedores.total().antes.cuantos, 5);

        // The names are those of the catalogues, as they are now.
        const Periodo periodo{ dia("01/01/2025"), dia("31/12/2026") };
        const auto nombre = [&](VistaResumen por, int clave) {
            const auto resumen = empresa.lee({ por, periodo });
            for (const auto& grupo : resumen.grupos())
                if (grupo.clave == clave)
                    return grupo.nombre;
            return std::string("no group");
        };
        EXPECT_EQ(nombre(VistaResumen::proveedor, 108), "Envases y Cartón Achamán, S.A.");
        EXPECT_EQ(nombre(VistaResumen::almacen, 4), "Puerto del Rosario");
        EXPECT_EQ(nombre(VistaResumen::articulo, 1010), "Queso curado de cabra, kg");
        EXPECT_EQ(nombre(VistaResumen::articulo, 0), "(sin artículo)");
        empresa.abiertas.orvalin->Execute("DELETE FROM Articulos WHERE Codigo =1010");
        EXPECT_EQ(nombre(VistaResumen::articulo, 1010), "(ya no está en su catálogo)");
        EXPECT_TRUE(
            empresa.lee({ VistaResumen::articulo, periodo }, 2).grupos().empty()); // another company's
    }

    void inserta(adodb::Connection& conexion, const std::string& codigo, const std::string& fecha,
        const std::string& importe, const std::string& impuesto, int almacen = 2, int empresa = 1)
    {
        conexion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
            "Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, "
            "Documento, Impuesto, Impuesto_Importe, Tipo) VALUES ("
            + std::to_string(empresa) + ", 2031, " + std::to_string(almacen) + ", '" + codigo + "', 104, '"
            + fecha + "', " + importe + ", 0, 0, 0, 2, '9:05:03', 'Palé', 0, 0, 7.5, " + impuesto + ", 0)");
    }

    void inserta_linea(adodb::Connection& conexion, const std::string& codigo, int numero,
        const std::string& unidades, const std::string& precio)
    {
        conexion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
            "Codigo, "
            "Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (1, 2031, 2, '"
            + codigo + "', " + std::to_string(numero) + ", 1017, 'Papaya', " + unidades + ", " + precio
            + ", '')");
    }

    TEST_P(LecturaResumenEn, sums_are_exact_where_doubles_are_not)
    {
        const auto muestra = GetParam().muestra();
        const auto abiertas = bases::abre_bases(muestra->lugar());
        for (int i = 0; i < 300; ++i) // 0.1 three hundred times is 30.000000000000… in doubles
            inserta(*abiertas.orvalin, "AT" + std::to_string(1000 + i), "07/05/2031", "0.1", "0.0007");
        inserta(*abiertas.orvalin, "AT1", "08/05/2031", "90071992547.0993",
            "-0.0101"); // more digits than money needs
        inserta(*abiertas.orvalin, "AT2", "09/05/2031", "-90071992547.0993", "0.0101");
        inserta(*abiertas.orvalin, "AT3", "30/04/2031", "55", "5"); // a day too early
        inserta(*abiertas.orvalin, "AT4", "09/05/2031", "77", "7", 2, 2); // another company's
        const auto resumen = lee_resumen(
            *abiertas.orvalin, { 1, 1 }, { VistaResumen::mes, { dia("01/05/2031"), dia("31/05/2031") } });
        ASSERT_EQ(resumen.grupos().size(), 1U);
        EXPECT_EQ(resumen.grupos()[0].ahora, (Cifras{ 302, moneda("30"), moneda("0.21") }));
    }

    TEST_P(LecturaResumenEn, the_last_day_counts_until_its_midnight)
    {
        const auto muestra = GetParam().muestra();
        const auto abiertas = bases::abre_bases(muestra->lugar());
        inserta(*abiertas.orvalin, "AT5", "31/05/2031 23:59:59", "1", "0");
        inserta(*abiertas.orvalin, "AT6", "01/06/2031", "20", "0");
        inserta(*abiertas.orvalin, "AT7", "31/05/2030 0:00:01", "300", "0");
        inserta(*abiertas.orvalin, "AT8", "01/05/2031", "4000", "0");
        const PeticionResumen mayo{ VistaResumen::almacen, { dia("02/05/2031"), dia("31/05/2031") } };
        const auto resumen = lee_resumen(*abiertas.orvalin, { 1, 1 }, mayo);
        ASSERT_EQ(resumen.grupos().size(), 1U);
        EXPECT_EQ(resumen.grupos()[0].ahora, (Cifras{ 1, moneda("1"), {} }));
        EXPECT_EQ(resumen.grupos()[0].antes, (Cifras{ 1, moneda("300"), {} }));
    }

    TEST_P(LecturaResumenEn, lines_are_rounded_as_charges_round_them)
    {
        const auto muestra = GetParam().muestra();
        const auto abiertas = bases::abre_bases(muestra->lugar());
        inserta(*abiertas.orvalin, "AT9", "07/05/2031", "0", "0");
        int numero = 0;
        Entero esperados;
        for (const auto& [unidades, precio] :
            { std::pair{ "1.005", "1" }, { "0.3333", "0.015" }, { "-1.005", "1" }, { "-2.5", "0.33" },
                { "0.01", "0.4999" }, { "1", "2.675" }, { "33.3333", "0.0335" } }) {
            inserta_linea(*abiertas.orvalin, "AT9", ++numero, unidades, precio);
            std::string u = unidades;
            std::string p = precio;
            std::ranges::replace(u, '.', ',');
            std::ranges::replace(p, '.', ',');
            esperados
                += pruebas::redondeada(pruebas::redondeada(diezmilesimas(u) * diezmilesimas(p), 10'000), 100);
        }
        const auto resumen = lee_resumen(*abiertas.orvalin, { 1, 1 },
            { VistaResumen::articulo, { dia("01/05/2031"), dia("31/05/2031") } });
        ASSERT_EQ(resumen.grupos().size(), 1U);
        EXPECT_EQ(resumen.grupos()[0].nombre, "Papaya, kg");
        EXPECT_EQ(en_centimos(resumen.grupos()[0].ahora),
            (Sumas{ 7, esperados, pruebas::redondeada(esperados * 75, 1'000) })) // 7.5 percent
            << esperados;
    }

    INSTANTIATE_TEST_SUITE_P(sedes, LecturaResumenEn, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

    TEST(LecturaResumen, one_statement_is_asked)
    {
        for (const auto por : todas_las_vistas) {
            const auto sql
                = instruccion_resumen({ por, { dia("01/01/2026"), dia("31/12/2026") }, 3, 107 }, { 2, 1 });
            EXPECT_THAT(sql, testing::StartsWith("SELECT "));
            const bool de_proveedores = por == VistaResumen::proveedor; // which another company may keep
            EXPECT_THAT(sql + (por == VistaResumen::mes ? " f ON f.Cod_Empresa =2 AND " : ""),
                testing::HasSubstr(
                    de_proveedores ? " f ON f.Cod_Empresa =1 AND " : " f ON f.Cod_Empresa =2 AND "));
            EXPECT_THAT(sql,
                testing::HasSubstr("pc.Cod_Empresa =2 AND pc.Fecha >= '01/01/2025' AND pc.Fecha < "
                                   "'01/01/2026' AND pc.Cod_Almacen =3 AND pc.Proveedor =107"));
        }
    }

}
}
