// Transactions and units of a pair in random order, with statements of every kind that fail and that do not
// and a line that is cut at times, against what each of them should leave. ATIPICOS_PRUEBA_LARGA makes many
// more of them.
#include "tests/engines/ParPostgresql.hpp"

#include <array>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <random>
#include <set>

namespace atipicos::postgresql {
namespace {

    constexpr auto contenido
        = "SELECT (SELECT COALESCE(string_agg(id::text, ' ' ORDER BY id), '') FROM propio.cargos) || '/' ||"
          " (SELECT COALESCE(string_agg(id::text, ' ' ORDER BY id), '') FROM dbo.apuntes)";

    /// The charges and lines of accounting, as they should be.
    struct Contenido {
        std::set<int> cargos;
        std::set<int> apuntes;

        [[nodiscard]] std::string texto() const
        {
            std::string todo;
            for (const auto* unos : { &cargos, &apuntes }) {
                std::string numeros;
                for (const int uno : *unos)
                    numeros.append(numeros.empty() ? "" : " ").append(std::to_string(uno));
                todo += (todo.empty() ? numeros + "/" : numeros);
            }
            return todo;
        }
    };

    struct PostgresqlAzar : ParPostgresql {
        std::minstd_rand azar{ 20'261'121 };
        Contenido guardados; ///< what others see
        Contenido ahora; ///< what the pair sees
        Contenido al_empezar; ///< the transaction
        std::optional<Contenido> antes_de_la_ultima; ///< transaction of the unit
        std::unique_ptr<sql::Unidad> unidad;
        bool dentro_gestion = false;
        bool dentro_contabilidad = false;
        int siguiente = 1;
        int cortes = 0; ///< with which something was lost

        unsigned uno_de(unsigned cuantos) { return static_cast<unsigned>(azar()) % cuantos; }

        void abre_transaccion()
        {
            al_empezar = ahora;
            dentro_gestion = uno_de(4) != 0;
            dentro_contabilidad = !dentro_gestion || uno_de(4) != 0;
            if (dentro_gestion)
                gestion->BeginTrans();
            if (dentro_contabilidad)
                contabilidad->BeginTrans();
        }

        void acaba_transaccion(bool bien)
        {
            const bool gestion_primero = uno_de(2) == 0;
            for (const bool de_gestion : { gestion_primero, !gestion_primero }) {
                if (!(de_gestion ? dentro_gestion : dentro_contabilidad))
                    continue;
                auto& una = de_gestion ? *gestion : *contabilidad;
                bien ? una.CommitTrans() : una.RollbackTrans();
            }
            dentro_gestion = dentro_contabilidad = false;
            if (!bien)
                ahora = al_empezar;
            if (unidad)
                antes_de_la_ultima = bien ? std::optional(al_empezar) : std::nullopt;
            else
                guardados = ahora;
        }

        void acaba_unidad()
        {
            const auto como = uno_de(4);
            if (como == 0 && antes_de_la_ultima) {
                ahora = *antes_de_la_ultima;
                antes_de_la_ultima.reset();
                unidad->deshace_ultima();
            } else if (como == 1) {
                unidad.reset();
                ahora = guardados;
            } else if (como == 2) {
                unidad->confirma();
                unidad.reset();
                guardados = ahora;
            }
        }

        [[nodiscard]] bool dentro() const { return dentro_gestion || dentro_contabilidad; }

        /// A change by a side that may make one now.
        void cambia()
        {
            const bool libre = !dentro() && !unidad;
            if (!libre && !dentro())
                return;
            const bool de_gestion = libre ? uno_de(2) == 0 : dentro_gestion;
            auto& una = de_gestion ? *gestion : *contabilidad;
            auto& suyos = de_gestion ? ahora.cargos : ahora.apuntes;
            const std::string tabla = de_gestion ? "Cargos" : "Apuntes";
            switch (suyos.size() > 20 ? 0 : uno_de(4)) {
            case 0:
                if (!suyos.empty()) {
                    una.Execute("DELETE FROM " + tabla + " WHERE Id =" + std::to_string(*suyos.begin()));
                    suyos.erase(suyos.begin());
                }
                break;
            case 1:
                una.Execute("INSERT INTO " + tabla + " (Id) SELECT " + std::to_string(siguiente)
                    + " WHERE 'a;b' <> 'a'"); // travels otherwise than one without a semicolon
                suyos.insert(siguiente++);
                break;
            case 2:
                if (!suyos.empty())
                    bloquea(una, tabla, *suyos.begin());
                break;
            default:
                una.Execute("INSERT INTO " + tabla + " (Id) VALUES (" + std::to_string(siguiente) + ")");
                suyos.insert(siguiente++);
            }
            if (libre)
                guardados = ahora;
        }

        static void bloquea(Connection& una, const std::string& tabla, int numero)
        {
            auto rs = una.CreateRecordset();
            rs->Open("SELECT * FROM " + tabla + " WHERE Id =" + std::to_string(numero),
                adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
            ASSERT_EQ(CLng(rs->Fields("Id").Value()), numero);
            rs->Fields("Id").Value(numero);
            rs->Update();
        }

        void falla()
        {
            static const std::array<std::string, 7> malas{ "SELECT 1/0 AS x", "SELECT 1/0 AS x, ';' AS y",
                "SELCT 1", "SELCT ';'", "UPDATE pg_database SET datname = 1/0",
                "DELETE FROM pg_database WHERE 1/0 = 1 AND ';' <> ''", "SELECT Id FROM NoHay" };
            auto& una = uno_de(2) == 0 ? *gestion : *contabilidad;
            EXPECT_NE(al_ejecutar(una, malas[uno_de(malas.size())]).descripcion, "no error");
        }

        void mira()
        {
            auto& una = uno_de(2) == 0 ? *gestion : *contabilidad;
            EXPECT_EQ(lee(una, contenido), ahora.texto());
        }

        /// The line is cut. Of what the server has been told in a transaction or a unit nothing is left;
        /// otherwise nobody hears of it.
        void corta()
        {
            mata();
            auto& una = dentro_contabilidad ? *contabilidad : *gestion;
            if (fallo_de([&] { lee(una, "SELECT 1 AS uno"); }).categoria != adodb::Categoria::conexion)
                return;
            EXPECT_TRUE(dentro() || unidad) << "there was nothing to lose";
            if (dentro_gestion)
                gestion->RollbackTrans();
            if (dentro_contabilidad)
                contabilidad->RollbackTrans();
            dentro_gestion = dentro_contabilidad = false;
            unidad.reset();
            ahora = guardados;
            ++cortes;
        }

        void da_un_paso()
        {
            if (uno_de(100) == 0)
                return corta();
            switch (uno_de(8)) {
            case 0:
            case 1:
                return falla();
            case 2:
                return mira();
            case 3:
            case 4:
                return cambia();
            case 5:
                return dentro() ? acaba_transaccion(uno_de(3) != 0) : abre_transaccion();
            default:
                if (dentro())
                    cambia();
                else if (unidad)
                    acaba_unidad();
                else if (uno_de(2) == 0) {
                    unidad = std::make_unique<sql::Unidad>(transacciones);
                    antes_de_la_ultima.reset();
                }
            }
        }
    };

    TEST_F(PostgresqlAzar, whatever_the_order_each_of_them_keeps_or_undoes_what_it_should)
    {
        const int pasos = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 50'000 : 3'000;
        const auto otra = Connection::Abrir(opciones());
        for (int paso = 0; paso < pasos && !HasFailure(); ++paso) {
            SCOPED_TRACE(paso);
            da_un_paso();
            EXPECT_EQ(lee(*otra, contenido), guardados.texto());
        }
        std::cout << pasos << " steps, " << siguiente - 1 << " rows written, " << cortes
                  << " times the line lost with a transaction\n";
        unidad.reset();
    }

}
}
