// Entries whose charge is there no more, reversed: what is left is what the charges that exist come to,
// reckoned apart, on every database; with everything failing, by two at once, and after whatever was done
// before.
#include "charges/clsAtipico.hpp"
#include "host/comprobacion/Contrario.hpp"
#include "host/comprobacion/Verificacion.hpp"

#include "browser/EliminarAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "posting/GenerarPrev.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <optional>
#include <random>
#include <thread>

namespace atipicos {
namespace {

    using app::ClaveAsiento;
    using app::Procedencia;
    using pruebas::Banco;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::IsEmpty;
    using testing::SizeIs;

    using Saldos = std::map<std::pair<std::int32_t, std::string>, std::int64_t>; ///< by company and account

    const app::Regularizador quien{ pruebas::dia("19/03/2026"), "12",
        pruebas::dia_y_hora("22/11/2026", 10, 20, 30) };

    Saldos sin_ceros(Saldos saldos)
    {
        std::erase_if(saldos, [](const auto& uno) { return uno.second == 0; });
        return saldos;
    }

    std::vector<std::vector<std::string>> filas(adodb::Connection& conexion, const std::string& sql)
    {
        std::vector<std::vector<std::string>> todas;
        const auto rs = conexion.CreateRecordset();
        for (rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly); !rs->Eof();
             rs->MoveNext()) {
            auto& fila = todas.emplace_back();
            for (std::size_t i = 0; i < rs->Count(); ++i)
                fila.push_back(CStr(rs->Fields(i).Value()));
        }
        return todas;
    }

    /// Amounts, in ten-thousandths and times `signo`.
    std::vector<std::vector<std::int64_t>> importes(
        adodb::Connection& conexion, const std::string& sql, std::int64_t signo = 1)
    {
        std::vector<std::vector<std::int64_t>> todos;
        const auto rs = conexion.CreateRecordset();
        for (rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly); !rs->Eof();
             rs->MoveNext()) {
            auto& fila = todos.emplace_back();
            for (std::size_t i = 0; i < rs->Count(); ++i)
                fila.push_back(signo * CCur(rs->Fields(i).Value()).crudo());
        }
        return todos;
    }

    /// Of every account, all entries together.
    Saldos saldos_de(adodb::Connection& bexmor)
    {
        Saldos saldos;
        const auto rs = bexmor.CreateRecordset();
        for (rs->Open("SELECT Cod_Empresa, Cuenta, Debe, Haber FROM Apuntes", adodb::CursorType::Static,
                 adodb::LockType::ReadOnly);
             !rs->Eof(); rs->MoveNext())
            saldos[{ CLng(rs->Fields("Cod_Empresa").Value()), CStr(rs->Fields("Cuenta").Value()) }]
                += CCur(rs->Fields("Debe").Value()).crudo() - CCur(rs->Fields("Haber").Value()).crudo();
        return sin_ceros(saldos);
    }

    /// Of every account and day, all forecasts together; and the tax register, by record.
    Saldos pendiente_en(adodb::Connection& bexmor)
    {
        Saldos saldos;
        const std::string previsiones
            = " FROM Previsiones ORDER BY Cod_Empresa, Cod_Ejercicio, Asiento, Numero";
        const auto cuales = filas(bexmor, "SELECT Cod_Empresa, Cuenta, Vencimiento" + previsiones);
        const auto cuanto = importes(bexmor, "SELECT Importe" + previsiones);
        for (std::size_t i = 0; i < cuales.size(); ++i)
            saldos[{ std::stoi(cuales[i][0]), cuales[i][1] + " " + cuales[i][2] }] += cuanto[i][0];
        for (const auto& fila :
            importes(bexmor, "SELECT Base, Cuota, TotalImpuesto FROM Registro_Impuestos")) {
            saldos[{ 0, "base" }] += fila[0];
            saldos[{ 0, "cuota" }] += fila[1];
            saldos[{ 0, "total" }] += fila[2];
        }
        return sin_ceros(saldos);
    }

    struct Regularizar : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    std::vector<ClaveAsiento> los_que_sobran(const bases::Bases& bases)
    {
        std::vector<ClaveAsiento> cuales;
        for (const auto& uno : app::verifica(bases).sin_cargo)
            if (uno.sobra())
                cuales.push_back(uno.asiento);
        return cuales;
    }

    std::string error_de(const std::function<void()>& accion)
    {
        try {
            accion();
        } catch (const Error& error) {
            return error.descripcion();
        }
        return "no error";
    }

    TEST_P(Regularizar, the_new_entry_mirrors_the_old_one_and_both_are_linked)
    {
        Banco banco(GetParam());
        banco.guarda({}, 2);
        const auto codigo = banco.guarda().Codigo;
        auto& bexmor = *banco.bases().bexmor;
        const auto antes = saldos_de(bexmor);
        const auto vencia = pendiente_en(bexmor);
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, codigo }));
        const auto resultado = app::regulariza(banco.bases(), los_que_sobran(banco.bases()), quien);
        ASSERT_THAT(resultado.hechas, SizeIs(1));
        EXPECT_EQ(resultado.hechas[0].asiento, (ClaveAsiento{ 1, 2026, 2 }));
        EXPECT_EQ(resultado.hechas[0].por, (ClaveAsiento{ 1, 2026, 3 }));
        const auto de = [](const char* columnas, const char* tabla, const char* asiento) {
            return std::string("SELECT ") + columnas + " FROM " + tabla + " WHERE Asiento =" + asiento
                + " ORDER BY 1, 2";
        };
        constexpr auto iguales = "Linea, Cuenta, ConceptoAutomatico, Concepto, Documento, Departamento, "
                                 "TipoImpuesto, PorcentajeImpuesto";
        EXPECT_THAT(filas(bexmor, de(iguales, "Apuntes", "3")), SizeIs(7));
        EXPECT_EQ(filas(bexmor, de(iguales, "Apuntes", "3")), filas(bexmor, de(iguales, "Apuntes", "2")));
        EXPECT_EQ(importes(bexmor, de("Linea, Debe, Haber", "Apuntes", "3")),
            importes(bexmor, de("Linea, Haber, Debe", "Apuntes", "2")));
        EXPECT_EQ(importes(bexmor, de("BaseImpuesto, Debe", "Apuntes", "3 AND Linea =2")),
            (std::vector<std::vector<std::int64_t>>{ { -675'900, 675'900 } }));
        EXPECT_EQ(filas(bexmor, "SELECT Fecha, Usuario FROM Asientos WHERE Numero =3"),
            (std::vector<std::vector<std::string>>{ { "19/03/2026", "12" } }));
        EXPECT_EQ(filas(bexmor,
                      "SELECT Linea, Clase, Indicador, Fecha, Documento, TipoImpuesto FROM "
                      "Registro_Impuestos WHERE Asiento =3"),
            (std::vector<std::vector<std::string>>{ { "5", "2", "1", "19/03/2026", "AT260001", "1" } }));
        EXPECT_EQ(importes(bexmor, de("Base, Cuota, TotalImpuesto", "Registro_Impuestos", "3")),
            (std::vector<std::vector<std::int64_t>>{ { -2'319'600, -162'400, -162'400 } }));
        constexpr auto de_prevision = "Numero, Cuenta, Departamento, TipoDoc, Vencimiento, Banco";
        EXPECT_THAT(filas(bexmor, de(de_prevision, "Previsiones", "3")), SizeIs(3));
        EXPECT_EQ(filas(bexmor, de(de_prevision, "Previsiones", "3")),
            filas(bexmor, de(de_prevision, "Previsiones", "2")));
        EXPECT_EQ(importes(bexmor, "SELECT Importe FROM Previsiones WHERE Asiento =3 ORDER BY Numero"),
            importes(bexmor, "SELECT Importe FROM Previsiones WHERE Asiento =2 ORDER BY Numero", -1));
        EXPECT_EQ(filas(bexmor, "SELECT * FROM Regularizaciones"),
            (std::vector<std::vector<std::string>>{
                { "1", "2026", "2", "2026", "3", "12", "22/11/2026 10:20:30" } }));
        EXPECT_NE(saldos_de(bexmor), antes);
        Saldos del_otro = vencia; // of both charges, alike; half of it is due still
        for (auto& [que, importe] : del_otro)
            importe /= 2;
        EXPECT_EQ(pendiente_en(bexmor), del_otro);
        const auto verificado = app::verifica(banco.bases());
        EXPECT_THAT(verificado.diferencias, IsEmpty());
        EXPECT_THAT(verificado.sin_cargo, IsEmpty());
        EXPECT_THAT(verificado.saldos, IsEmpty());
        EXPECT_EQ(verificado.regularizados, 1U);
    }

    TEST_P(Regularizar, twice_is_once)
    {
        Banco banco(GetParam());
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        const auto cuales = los_que_sobran(banco.bases());
        ASSERT_THAT(app::regulariza(banco.bases(), cuales, quien).hechas, SizeIs(1));
        const auto estado = banco.estado();
        const auto otra_vez = app::regulariza(banco.bases(), cuales, quien);
        EXPECT_THAT(otra_vez.hechas, IsEmpty());
        ASSERT_THAT(otra_vez.omitidas, SizeIs(1));
        EXPECT_EQ(otra_vez.omitidas[0].second, "otro usuario acaba de regularizarlo");
        EXPECT_EQ(banco.estado(), estado);
        EXPECT_THAT(los_que_sobran(banco.bases()), IsEmpty());
    }

    TEST_P(Regularizar, by_two_at_once_is_once)
    {
        Banco banco(GetParam());
        for (int i = 0; i < 4; ++i)
            ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        const auto cuales = los_que_sobran(banco.bases());
        ASSERT_THAT(cuales, SizeIs(4));
        const auto lugar = banco.lugar();
        std::array<std::size_t, 2> hechas{};
        std::array<std::string, 2> errores;
        std::array<std::thread, 2> hilos;
        for (std::size_t i = 0; i < hilos.size(); ++i)
            hilos[i] = std::thread([&, i] {
                errores[i] = error_de([&] {
                    hechas[i] = app::regulariza(bases::abre_bases(lugar), cuales, quien).hechas.size();
                });
            });
        for (auto& hilo : hilos)
            hilo.join();
        EXPECT_THAT(errores, testing::Each("no error"));
        EXPECT_EQ(hechas[0] + hechas[1], 4U);
        EXPECT_EQ(banco.estado().at("Bexmor.dbo.Asientos"), 8);
        EXPECT_TRUE(saldos_de(*banco.bases().bexmor).empty());
    }

    TEST_P(Regularizar, with_any_operation_failing_leaves_all_or_nothing)
    {
        Banco banco(GetParam());
        for (const auto almacen : { std::int16_t{ 1 }, std::int16_t{ 3 } }) // of two accounting companies
            ASSERT_TRUE(EliminarAtipico({ 2026, almacen, banco.guarda({}, almacen).Codigo }));
        const auto cuales = los_que_sobran(banco.bases());
        ASSERT_THAT(cuales, SizeIs(2));
        const bases::Bases espiadas{ std::make_shared<pruebas::ConexionEspia>(
                                         "gestion", banco.bases().orvalin, banco.parte),
            std::make_shared<pruebas::ConexionEspia>("contabilidad", banco.bases().bexmor, banco.parte) };
        const auto antes = banco.estado();
        std::size_t n = 0;
        for (std::string error = "fallo"; error != "no error";) {
            banco.parte->dichas.clear();
            banco.parte->falla_en = ++n;
            error = error_de([&] { static_cast<void>(app::regulariza(espiadas, cuales, quien)); });
            if (error == "no error")
                break;
            EXPECT_THAT(error, HasSubstr(pruebas::Parte::descripcion)) << n;
            ASSERT_EQ(banco.estado(), antes) << n;
            ASSERT_THAT(filas(*banco.bases().bexmor, "SELECT * FROM Regularizaciones"), IsEmpty()) << n;
        }
        EXPECT_GT(n, 50U);
        EXPECT_THAT(filas(*banco.bases().bexmor, "SELECT * FROM Regularizaciones"), SizeIs(2));
        EXPECT_TRUE(saldos_de(*banco.bases().bexmor).empty());
        EXPECT_TRUE(pendiente_en(*banco.bases().bexmor).empty());
    }

    TEST_P(Regularizar, that_cannot_be_done_names_the_entry_and_changes_nothing)
    {
        Banco banco(GetParam());
        auto& bexmor = *banco.bases().bexmor;
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        banco.guarda({}, 2);
        ASSERT_TRUE(EliminarAtipico({ 2026, 2, "AT260001" }));
        const auto cuales = los_que_sobran(banco.bases());
        const auto antes = banco.estado();
        const auto con_fecha = [&](const char* fecha) {
            auto otro = quien;
            otro.fecha = pruebas::dia(fecha);
            return error_de([&] { static_cast<void>(app::regulariza(banco.bases(), cuales, otro)); });
        };
        EXPECT_EQ(con_fecha("05/02/2031"),
            "No se puede anular el asiento 1 (empresa contable 1, ejercicio 2026): El ejercicio 2031 no está "
            "abierto en la empresa contable 1. No se ha anulado ninguno.");
        bexmor.Execute("INSERT INTO Ejercicios (Cod_Empresa, Ejercicio, Inicio, Fin) VALUES (1, 2028, "
                       "'01/01/2028', '31/12/2028')");
        EXPECT_THAT(con_fecha("05/02/2028"), HasSubstr("La cuenta 44000104 no existe en el plan de"));
        bexmor.Execute("UPDATE Apuntes SET Haber = Haber + 1 WHERE Asiento =2 AND Linea =2");
        EXPECT_THAT(con_fecha("05/02/2026"),
            HasSubstr("el asiento 2 (empresa contable 1, ejercicio 2026): No cuadra, así que su contrario "
                      "tampoco."));
        EXPECT_EQ(banco.estado(), antes);
        EXPECT_THAT(filas(bexmor, "SELECT * FROM Regularizaciones"), IsEmpty());
    }

    TEST_P(Regularizar, leaves_what_a_charge_has_and_what_is_not_there)
    {
        Banco banco(GetParam());
        banco.guarda();
        const auto antes = banco.estado();
        const std::vector<ClaveAsiento> cuales{ { 1, 2026, 1 }, { 1, 2026, 7 } };
        const auto resultado = app::regulariza(banco.bases(), cuales, quien);
        EXPECT_THAT(resultado.hechas, IsEmpty());
        ASSERT_THAT(resultado.omitidas, SizeIs(2));
        EXPECT_EQ(resultado.omitidas[0].second, "es el de un cargo que existe");
        EXPECT_EQ(resultado.omitidas[1].second, "ya no está en Contabilidad");
        EXPECT_EQ(banco.estado(), antes);
    }

    TEST_P(Regularizar, settled_by_hand_posts_nothing_and_is_not_asked_for_again)
    {
        Banco banco(GetParam());
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        const auto antes = banco.estado();
        const auto resultado = app::da_por_saldados(banco.bases(), los_que_sobran(banco.bases()), quien);
        ASSERT_THAT(resultado.hechas, SizeIs(1));
        EXPECT_TRUE(resultado.hechas[0].a_mano());
        EXPECT_EQ(banco.estado(), antes);
        const auto verificado = app::verifica(banco.bases());
        EXPECT_THAT(verificado.sin_cargo, IsEmpty());
        EXPECT_THAT(verificado.saldos, IsEmpty()) << "the other half is somebody else's";
        EXPECT_THAT(verificado.diferencias, IsEmpty());
        EXPECT_EQ(verificado.saldados, 1U);
        EXPECT_EQ(verificado.regularizados, 0U);
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Regularizar, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

    /// A charge as the history below has it, in ten-thousandths, and what it comes to on the accounts.
    struct CargoDeHistoria {
        std::int16_t almacen = 1;
        std::int32_t proveedor = 101;
        bool franquiciado = false;
        std::string codigo;
        Date fecha;
        std::vector<std::int64_t> lineas; ///< amounts

        [[nodiscard]] std::int64_t total() const
        {
            return std::accumulate(lineas.begin(), lineas.end(), std::int64_t{ 0 });
        }
        /// 7 %, to cents, halves away from zero.
        [[nodiscard]] std::int64_t impuesto() const
        {
            const auto siete = total() * 7;
            const auto medio = siete < 0 ? -5'000 : 5'000;
            return (siete + medio) / 10'000 * 100;
        }
        void suma_en(Saldos& saldos) const
        {
            const std::int32_t empresa = almacen <= 2 ? 1 : 2;
            const std::string ceros = empresa == 1 ? "00" : "000";
            const auto n = std::to_string(proveedor);
            saldos[{ empresa, (franquiciado ? "521" : "400") + ceros + n }] += total() + impuesto();
            saldos[{ empresa, "759" + ceros + "00" + std::to_string(almacen) }] -= total();
            saldos[{ empresa, "477" + ceros + "007" }] -= impuesto();
        }
    };

    /// Saves, changes, deletions and reversals at random, with the balances reckoned beside them.
    class Historia {
    public:
        Historia(const pruebas::Sede& sede, std::uint32_t semilla)
            : m_banco(sede)
            , m_azar(semilla)
        {
        }

        void da_un_paso()
        {
            const auto tirada = m_azar() % 100;
            if (tirada < 45 || m_vivos.empty())
                guarda(std::nullopt);
            else if (tirada < 67)
                guarda(m_azar() % m_vivos.size());
            else if (tirada < 87)
                elimina();
            else
                regulariza();
        }

        void regulariza()
        {
            const auto verificado = app::verifica(m_banco.bases());
            ASSERT_THAT(verificado.diferencias, IsEmpty());
            ASSERT_EQ(verificado.sin_cargo.size(), m_huerfanos.size());
            std::vector<ClaveAsiento> cuales;
            for (const auto& uno : verificado.sin_cargo) {
                const auto suyo = m_huerfanos.find(uno.asiento);
                ASSERT_NE(suyo, m_huerfanos.end());
                ASSERT_EQ(
                    uno.procedencia, vive(suyo->second) ? Procedencia::cambiado : Procedencia::eliminado)
                    << uno.explicacion;
                cuales.push_back(uno.asiento);
            }
            ASSERT_EQ(sobra_segun(verificado), sobra());
            auto hoy = quien;
            hoy.fecha = pruebas::dia("01/01/2025").mas_dias(static_cast<std::int32_t>(m_azar() % 730));
            ASSERT_EQ(app::regulariza(m_banco.bases(), cuales, hoy).hechas.size(), cuales.size());
            m_huerfanos.clear();
            ASSERT_EQ(saldos_de(*m_banco.bases().bexmor), debidos());
            const auto despues = app::verifica(m_banco.bases());
            ASSERT_THAT(despues.diferencias, IsEmpty());
            ASSERT_THAT(despues.sin_cargo, IsEmpty());
            ASSERT_THAT(despues.saldos, IsEmpty());
            ASSERT_THAT(app::regulariza(m_banco.bases(), cuales, hoy).hechas, IsEmpty());
            ++regularizaciones;
        }

        int regularizaciones = 0;

    private:
        struct Identidad {
            std::int16_t almacen;
            int ejercicio;
            std::string codigo;
        };

        [[nodiscard]] bool vive(const Identidad& cual) const
        {
            return std::any_of(m_vivos.begin(), m_vivos.end(), [&](const auto& uno) {
                return uno.codigo == cual.codigo && uno.almacen == cual.almacen
                    && uno.fecha.anio() == cual.ejercicio;
            });
        }

        [[nodiscard]] Saldos debidos() const
        {
            Saldos saldos;
            for (const auto& uno : m_vivos)
                uno.suma_en(saldos);
            return sin_ceros(saldos);
        }

        /// What accounts have beyond the charges that exist.
        [[nodiscard]] Saldos sobra() const
        {
            auto saldos = saldos_de(*m_banco.bases().bexmor);
            for (const auto& [cuenta, importe] : debidos())
                saldos[cuenta] -= importe;
            return sin_ceros(saldos);
        }
        [[nodiscard]] static Saldos sobra_segun(const app::Verificacion& verificado)
        {
            Saldos saldos;
            for (const auto& uno : verificado.saldos)
                saldos[{ uno.empresa, uno.cuenta }] = uno.importe.crudo();
            return saldos;
        }

        void guarda(std::optional<std::size_t> cual)
        {
            CargoDeHistoria nuevo;
            if (!cual) {
                nuevo.almacen = static_cast<std::int16_t>(1 + m_azar() % 4);
                nuevo.fecha = pruebas::dia("01/01/2025").mas_dias(static_cast<std::int32_t>(m_azar() % 730));
            } else {
                const auto lugar = m_vivos.begin() + static_cast<std::ptrdiff_t>(*cual);
                nuevo.almacen = lugar->almacen;
                nuevo.codigo = lugar->codigo;
                nuevo.fecha = lugar->fecha;
                anota_huerfano(*lugar);
                m_vivos.erase(lugar);
            }
            nuevo.proveedor = 101 + static_cast<std::int32_t>(m_azar() % 9);
            nuevo.franquiciado = m_azar() % 5 == 0;
            clsAtipico cargo;
            CargoTecleado tecleado{ nuevo.codigo, nuevo.almacen, nuevo.proveedor, "Uno cualquiera",
                nuevo.fecha, "Palé dañado", nuevo.franquiciado, {}, {} };
            for (auto n = 1 + m_azar() % 3; n > 0; --n) {
                const auto unidades = Currency::de_crudo(static_cast<std::int64_t>(1 + m_azar() % 900) * 100);
                const auto costo = Currency::de_crudo(
                    (m_azar() % 8 == 0 ? -1 : 1) * static_cast<std::int64_t>(1 + m_azar() % 500'000));
                const auto importe = importe_linea(unidades, costo);
                cargo.Lineas->Add(1006, "Lata abollada", unidades, costo);
                tecleado.Cargos.push_back({ importe, "" });
                tecleado.Total += importe;
                nuevo.lineas.push_back(importe.crudo());
            }
            const auto resultado = GuardarAtipico(cargo, tecleado, [](const Contabilizacion& datos) {
                std::vector<Prevision> previsiones;
                for (const auto& propuesta : GenerarPrev(datos).previsiones)
                    previsiones.push_back(propuesta.prevision);
                return std::optional(previsiones);
            });
            ASSERT_EQ(resultado.estado, ResultadoGuardado::Estado::Guardado);
            ASSERT_THAT(m_banco.titulos(), IsEmpty());
            nuevo.codigo = resultado.Codigo;
            m_asientos[{ nuevo.almacen, nuevo.fecha.anio(), nuevo.codigo }]
                = { static_cast<std::int16_t>(nuevo.almacen <= 2 ? 1 : 2),
                      static_cast<std::int16_t>(nuevo.fecha.anio()), resultado.Asiento };
            m_vivos.push_back(nuevo);
        }

        void elimina()
        {
            const auto lugar = m_vivos.begin() + static_cast<std::ptrdiff_t>(m_azar() % m_vivos.size());
            ASSERT_TRUE(EliminarAtipico(
                { static_cast<std::int16_t>(lugar->fecha.anio()), lugar->almacen, lugar->codigo }));
            anota_huerfano(*lugar);
            m_vivos.erase(lugar);
        }

        void anota_huerfano(const CargoDeHistoria& cargo)
        {
            m_huerfanos.insert({ m_asientos.at({ cargo.almacen, cargo.fecha.anio(), cargo.codigo }),
                { cargo.almacen, cargo.fecha.anio(), cargo.codigo } });
        }

        Banco m_banco;
        std::mt19937 m_azar;
        std::vector<CargoDeHistoria> m_vivos;
        std::map<std::tuple<std::int16_t, int, std::string>, ClaveAsiento> m_asientos;
        std::map<ClaveAsiento, Identidad> m_huerfanos;
    };

    struct HistoriaAlAzar : Regularizar { };

    TEST_P(HistoriaAlAzar, leaves_on_every_account_what_the_charges_that_exist_come_to)
    {
        int regularizaciones = 0;
        for (std::uint32_t semilla = 1; semilla <= 8 && !HasFatalFailure(); ++semilla) {
            SCOPED_TRACE("seed " + std::to_string(semilla));
            Historia historia(GetParam(), semilla);
            for (int paso = 0; paso < 60 && !HasFatalFailure(); ++paso)
                historia.da_un_paso();
            if (!HasFatalFailure())
                historia.regulariza();
            regularizaciones += historia.regularizaciones;
        }
        EXPECT_GT(regularizaciones, 30);
    }

    INSTANTIATE_TEST_SUITE_P(sedes, HistoriaAlAzar, testing::ValuesIn(pruebas::sedes_sin_odbc()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
