#include "tests/integracion/Sedes.hpp"

#include "engines/odbc/Connection.hpp"
#include "host/bases/Bases.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/SqlServer.hpp"

namespace atipicos::pruebas {

namespace {

    class CarpetaVacia : public Muestra {
    public:
        [[nodiscard]] bases::Lugar lugar() const override { return { m_carpeta / "datos" }; }

    private:
        CarpetaTemporal m_carpeta;
    };

    class MuestraEnCarpeta : public CarpetaVacia {
    public:
        MuestraEnCarpeta() { bases::crea_bases(CarpetaVacia::lugar(), false); }
    };

    /// The sample company is made once; each test gets a copy.
    const std::string& plantilla()
    {
        static const std::string nombre = [] {
            servidor_postgresql().crea_base("plantilla");
            bases::crea_bases(bases::Lugar::de_conexion(servidor_postgresql().direccion("plantilla")), false);
            return "plantilla";
        }();
        return nombre;
    }

    class MuestraEnPostgresql : public Muestra {
    public:
        MuestraEnPostgresql()
            : MuestraEnPostgresql(plantilla())
        {
        }
        ~MuestraEnPostgresql() override { servidor_postgresql().borra_base(m_base); }
        [[nodiscard]] bases::Lugar lugar() const override
        {
            return bases::Lugar::de_conexion(servidor_postgresql().direccion(m_base));
        }

    protected:
        explicit MuestraEnPostgresql(const std::string& copia_de)
        {
            servidor_postgresql().crea_base(m_base, copia_de);
        }
        [[nodiscard]] const std::string& base() const noexcept { return m_base; }

    private:
        static inline int s_bases = 0;
        std::string m_base = "muestra_" + std::to_string(++s_bases);
    };

    class BaseVaciaEnPostgresql final : public MuestraEnPostgresql {
    public:
        BaseVaciaEnPostgresql()
            : MuestraEnPostgresql("template1")
        {
        }
    };

    /// The same databases, through the drivers of their products.
    class MuestraEnPostgresqlPorOdbc final : public MuestraEnPostgresql {
    public:
        [[nodiscard]] bases::Lugar lugar() const override
        {
            return bases::Lugar::de_conexion("odbc:" + servidor_postgresql().cadena_odbc(base()));
        }
    };

    class MuestraEnCarpetaPorOdbc final : public MuestraEnCarpeta {
    public:
        [[nodiscard]] bases::Lugar lugar() const override
        {
            return bases::Lugar::de_conexion("odbc:DRIVER={SQLite3};DATABASE="
                + (MuestraEnCarpeta::lugar().carpeta() / "empresa.db").string());
        }
    };

    class MuestraEnSqlServer final : public Muestra {
    public:
        MuestraEnSqlServer()
        {
            const auto maestra
                = odbc::Connection::Abrir({ .cadena = sqlserver::cadena(), .clave = sqlserver::clave() });
            for (const auto* base : { "Orvalin", "Bexmor" })
                maestra->Execute(sqlserver::borra(base));
            bases::crea_bases(lugar(), false);
        }
        [[nodiscard]] bases::Lugar lugar() const override
        {
            return bases::Lugar::de_conexion("odbc:" + sqlserver::cadena());
        }
    };

}

ServidorPostgresql& servidor_postgresql()
{
    static ServidorPostgresql unico;
    return unico;
}

const Sede& en_carpeta()
{
    static const Sede sede{ "sqlite", "", std::make_unique<MuestraEnCarpeta>,
        std::make_unique<CarpetaVacia> };
    return sede;
}

const Sede& en_postgresql()
{
    static const Sede sede{ "postgresql", ServidorPostgresql::falta(), std::make_unique<MuestraEnPostgresql>,
        std::make_unique<BaseVaciaEnPostgresql> };
    return sede;
}

const Sede& en_postgresql_por_odbc()
{
    static const Sede sede{ "odbc_postgresql",
        ServidorPostgresql::falta() + falta_controlador("PostgreSQL Unicode", "odbc-postgresql"),
        std::make_unique<MuestraEnPostgresqlPorOdbc> };
    return sede;
}

std::vector<Sede> sedes_sin_odbc() { return { en_carpeta(), en_postgresql() }; }

std::vector<Sede> sedes()
{
    return { en_carpeta(), en_postgresql(), en_postgresql_por_odbc(),
        { "odbc_sqlite", falta_controlador("SQLite3", "libsqliteodbc"),
            std::make_unique<MuestraEnCarpetaPorOdbc> },
        { "odbc_sqlserver", sqlserver::falta(), std::make_unique<MuestraEnSqlServer> } };
}

} // namespace atipicos::pruebas
