#include "engines/sqlite/Traslado.hpp"

#include "engines/sqlite/Connection.hpp"
#include "engines/sqlite/Examen.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

namespace atipicos::sqlite {
namespace {

    using testing::ElementsAre;
    using testing::HasSubstr;

    using Renglones = std::vector<std::string>;

    /// Two files whose tables have the same names.
    struct Traslado : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::shared_ptr<Sesion> uno = abre("uno.db");
        std::shared_ptr<Sesion> dos = abre("dos.db");
        std::shared_ptr<Sesion> ambos = abre("ambos.db");
        int filas = 0;

        Traslado()
        {
            for (const auto* sql : { "CREATE TABLE Padres (Id INT PRIMARY KEY, Nombre TEXT, "
                                     "Doble INT GENERATED ALWAYS AS (Id * 2) STORED, Otro INT AS (Id + 1))",
                     "CREATE TABLE Hijos (Id INTEGER PRIMARY KEY, Padre INT NOT NULL REFERENCES Padres (Id), "
                     "Valor, FOREIGN KEY (Padre) REFERENCES Padres (Id))",
                     "CREATE UNIQUE INDEX Hijos_Padre ON Hijos (Padre, Id)",
                     "CREATE TRIGGER Sin_nombre AFTER INSERT ON Padres WHEN NEW.Nombre IS NULL BEGIN "
                     "UPDATE Padres SET Nombre = 'sin nombre' WHERE Id = NEW.Id; END",
                     "INSERT INTO Padres (Id, Nombre) VALUES (7, 'Ñandú ''7'''), (3, NULL)",
                     "UPDATE Padres SET Nombre = NULL WHERE Id = 3", // as no trigger left it
                     "INSERT INTO Hijos VALUES (40, 7, 1.5), (41, 7, '1.5'), (42, 3, x'00ff'), (99, 3, "
                     "NULL)" })
                uno->ejecuta(sql, nullptr, Donde());
            for (const auto* sql : { "CREATE TABLE Padres (Id INT PRIMARY KEY, Edad INT)",
                     "INSERT INTO Padres VALUES (7, 77)", "CREATE VIEW Mayores AS SELECT Id FROM Padres" })
                dos->ejecuta(sql, nullptr, Donde());
            ambos->ejecuta("PRAGMA foreign_keys=OFF", nullptr, Donde());
        }

        std::shared_ptr<Sesion> abre(const char* nombre) const
        {
            return Sesion::abre(
                { .fichero = carpeta / nombre, .crear = true, .sincronizacion_completa = false }, Donde());
        }
        void mueve(Sesion& origen, const std::string& prefijo)
        {
            traslada(origen, *ambos, prefijo, [this] { ++filas; });
        }
        static Renglones pide(Sesion& sesion, const std::string& sql)
        {
            Renglones todas;
            Instruccion consulta(sesion.base(), sql, Donde());
            while (consulta.avanza(Donde())) {
                std::string fila;
                for (int i = 0; i < sqlite3_column_count(consulta.get()); ++i) {
                    const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(consulta.get(), i));
                    fila += (i == 0 ? "" : "|") + std::string(texto == nullptr ? "null" : texto);
                }
                todas.push_back(fila);
            }
            return todas;
        }
    };

    TEST_F(Traslado, keeps_every_value_as_it_is)
    {
        mueve(*uno, "P_");
        EXPECT_EQ(filas, 6);
        EXPECT_THAT(pide(*ambos, "SELECT Id, Nombre, Doble, Otro FROM P_Padres"),
            ElementsAre("7|Ñandú '7'|14|8", "3|null|6|4"));
        EXPECT_THAT(pide(*ambos, "SELECT Id, Padre, quote(Valor) FROM P_Hijos"),
            ElementsAre("40|7|1.5", "41|7|'1.5'", "42|3|X'00FF'", "99|3|NULL"));
    }

    TEST_F(Traslado, brings_two_products_with_the_same_names_together)
    {
        mueve(*uno, "P_");
        mueve(*dos, "");
        EXPECT_THAT(tablas(*ambos), ElementsAre("P_Padres", "P_Hijos", "Padres"));
        EXPECT_THAT(pide(*ambos, "SELECT * FROM Padres"), ElementsAre("7|77"));
        EXPECT_THAT(pide(*ambos, "SELECT * FROM Mayores"), ElementsAre("7"));
        exige_integridad(*ambos);
    }

    TEST_F(Traslado, computes_checks_and_triggers_as_before_under_the_new_names)
    {
        mueve(*uno, "P_");
        ambos->ejecuta("PRAGMA foreign_keys=ON", nullptr, Donde());
        EXPECT_THAT(pide(*ambos, "PRAGMA foreign_key_list(P_Hijos)"),
            testing::Each(HasSubstr("|P_Padres|Padre|Id|")));
        EXPECT_THROW(
            ambos->ejecuta("INSERT INTO P_Hijos VALUES (1, 8, 0)", nullptr, Donde()), adodb::ErrorBaseDatos);
        ambos->ejecuta("INSERT INTO P_Padres (Id) VALUES (8)", nullptr, Donde());
        EXPECT_THAT(
            pide(*ambos, "SELECT Nombre, Doble FROM P_Padres WHERE Id = 8"), ElementsAre("sin nombre|16"));
        EXPECT_THAT(pide(*ambos, "SELECT name, \"unique\" FROM pragma_index_list('P_Hijos')"),
            ElementsAre("P_Hijos_Padre|1"));
    }

    TEST_F(Traslado, onto_a_name_that_is_taken_is_refused)
    {
        mueve(*dos, "");
        EXPECT_THROW(mueve(*uno, ""), adodb::ErrorBaseDatos);
        EXPECT_THROW(mueve(*uno, "P_"), adodb::ErrorBaseDatos) << "the plain name is needed on the way";
    }

    TEST_F(Traslado, leaves_the_source_as_it_was)
    {
        const auto antes = pide(*uno, "SELECT * FROM sqlite_master");
        mueve(*uno, "P_");
        EXPECT_EQ(pide(*uno, "SELECT * FROM sqlite_master"), antes);
        EXPECT_THAT(
            filas_por_tabla(*uno), ElementsAre(testing::Pair("Hijos", 4), testing::Pair("Padres", 2)));
    }

}
}
