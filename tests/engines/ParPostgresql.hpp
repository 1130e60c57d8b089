#pragma once

#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Unidad.hpp"
#include "tests/engines/FalloDe.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/TrazaPostgresql.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>

namespace atipicos::postgresql {

inline constexpr auto de_gestion = "CREATE TABLE Cargos (Id INT NOT NULL PRIMARY KEY, Texto NVARCHAR(9))";
inline constexpr auto de_contabilidad = R"(
    CREATE TABLE Apuntes (Id INT NOT NULL PRIMARY KEY, Dia DATETIME);
    CREATE TABLE Nombres (Nombre NVARCHAR(20));
    INSERT INTO Nombres (Nombre) VALUES ('Contable');
    CREATE TABLE Firmas (Id INT NOT NULL PRIMARY KEY,
                         Apunte INT NOT NULL REFERENCES Apuntes (Id) DEFERRABLE INITIALLY DEFERRED))";
inline constexpr auto inserta_cargo = "INSERT INTO Cargos (Id) VALUES (1)";
inline constexpr auto inserta_apunte = "INSERT INTO Apuntes (Id) VALUES (1)";
inline constexpr auto perdida_con_la_linea
    = "La transacción se ha perdido con la conexión: sólo se puede deshacer.";

/// Two connections over one session of a server of the test's own, on one table of each product.
struct ParPostgresql : testing::Test {
    static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
    std::shared_ptr<Connection> gestion;
    std::shared_ptr<Connection> contabilidad;
    std::shared_ptr<sql::Transacciones> transacciones;

    static void TearDownTestSuite() { servidor.reset(); }

    void SetUp() override
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        if (!servidor)
            servidor = std::make_unique<pruebas::ServidorPostgresql>();
        servidor->crea_base("par");
        const auto conexion = Connection::Abrir(opciones());
        conexion->BeginTrans();
        sql::crea_esquema_postgresql(*conexion, "dbo");
        sql::ejecuta_guion(*conexion, de_contabilidad);
        sql::crea_esquema_postgresql(*conexion, "propio");
        sql::ejecuta_guion(*conexion, de_gestion);
        conexion->CommitTrans();
        abre(opciones());
    }

    void TearDown() override
    {
        suelta();
        if (servidor)
            servidor->borra_base("par");
    }

    static Opciones opciones() { return { .direccion = servidor->direccion("par"), .esquema = "propio" }; }

    void abre(const Opciones& con, const LeeBases& lee_bases = {})
    {
        const auto pareja = Connection::AbrirPareja(con, lee_bases);
        gestion = std::dynamic_pointer_cast<Connection>(pareja.gestion);
        contabilidad = std::dynamic_pointer_cast<Connection>(pareja.contabilidad);
        transacciones = pareja.transacciones;
        for (auto* una : { gestion.get(), contabilidad.get() })
            lee(*una, "SELECT 1 AS uno, 'x' AS texto"); // the catalogue is read
    }

    void suelta()
    {
        gestion.reset();
        contabilidad.reset();
        transacciones.reset();
    }

    static std::string lee(Connection& conexion, const std::string& sql)
    {
        auto rs = conexion.CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return rs->Eof() ? "" : CStr(rs->Fields(std::size_t{ 0 }).Value());
    }

    void empieza() const
    {
        gestion->BeginTrans();
        contabilidad->BeginTrans();
    }
    void confirma() const
    {
        gestion->CommitTrans();
        contabilidad->CommitTrans();
    }
    void deshace() const
    {
        gestion->RollbackTrans();
        contabilidad->RollbackTrans();
    }
    void escribe(const std::string& id) const
    {
        gestion->Execute("INSERT INTO Cargos (Id) VALUES (" + id + ")");
        contabilidad->Execute("INSERT INTO Apuntes (Id) VALUES (" + id + ")");
    }
    void guarda(const std::string& id) const
    {
        empieza();
        escribe(id);
        confirma();
    }

    /// The charges and lines of accounting that others see.
    static std::string guardado()
    {
        return servidor->psql("par",
            "SELECT (SELECT COALESCE(string_agg(id::text, ' ' ORDER BY id), '') FROM propio.cargos) || "
            "'/'"
            " || (SELECT COALESCE(string_agg(id::text, ' ' ORDER BY id), '') FROM dbo.apuntes)");
    }

    void mata() const
    {
        servidor->psql("postgres",
            "SELECT pg_terminate_backend(" + std::to_string(PQbackendPID(gestion->base())) + ", 5000)");
    }

    std::size_t viajes(const std::function<void()>& uso) const
    {
        return pruebas::TrazaPostgresql(gestion->base(), uso).viajes();
    }
};

inline Fallo al_ejecutar(Connection& conexion, const std::string& sql)
{
    return fallo_de([&] { conexion.Execute(sql); });
}

} // namespace atipicos::postgresql
