#pragma once

#include "bench/Taquigrafo.hpp"
#include "engines/postgresql/Connection.hpp"
#include "tests/integracion/Banco.hpp"

#include <libpq-fe.h>
#include <memory>
#include <string>
#include <vector>

/// The same statements that the component sends, through the bare client library of each database.
namespace atipicos::bench {

class Suelo {
public:
    Suelo() = default;
    Suelo(const Suelo&) = delete;
    Suelo& operator=(const Suelo&) = delete;
    virtual ~Suelo() = default;
    virtual void ejecuta(const Dicha& dicha) = 0; ///< and reads all rows

    void repite(const Guion& guion)
    {
        for (const auto& dicha : guion)
            ejecuta(dicha);
    }
};

class SueloSqlite final : public Suelo {
public:
    explicit SueloSqlite(const std::filesystem::path& carpeta)
        : m_contabilidad(abre(carpeta / "bexmor.db", true))
        , m_gestion(abre(carpeta / "orvalin.db", true, carpeta / "bexmor.db"))
    {
    }
    void ejecuta(const Dicha& dicha) override
    {
        bench::ejecuta((dicha.contable ? m_contabilidad : m_gestion).get(), dicha.sql);
    }

private:
    Base m_contabilidad;
    Base m_gestion;
};

struct CierraLinea {
    void operator()(PGconn* linea) const { PQfinish(linea); }
};
using Linea = std::unique_ptr<PGconn, CierraLinea>;

inline Linea conecta(const std::string& direccion, const char* esquema)
{
    Linea linea(PQconnectdb(direccion.c_str()));
    if (PQstatus(linea.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(linea.get()));
    PQclear(PQexec(linea.get(), (std::string("SET search_path TO ") + esquema).c_str()));
    PQclear(PQexec(linea.get(), "SET datestyle TO 'ISO,DMY'"));
    return linea;
}

class SueloPostgresql final : public Suelo {
public:
    explicit SueloPostgresql(const std::string& direccion)
        : m_contabilidad(conecta(direccion, "dbo"))
        , m_gestion(conecta(direccion, "orvalin"))
    {
    }
    void ejecuta(const Dicha& dicha) override
    {
        auto* linea = (dicha.contable ? m_contabilidad : m_gestion).get();
        PGresult* respuesta = PQexec(linea, dicha.sql.c_str());
        const auto estado = PQresultStatus(respuesta);
        PQclear(respuesta);
        if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK)
            throw std::runtime_error(std::string(PQerrorMessage(linea)) + " in: " + dicha.sql);
    }

private:
    Linea m_contabilidad;
    Linea m_gestion;
};

/// The bare library on the databases of a place.
inline std::unique_ptr<Suelo> suelo_de(const bases::Lugar& lugar)
{
    if (lugar.clase() == bases::Lugar::Clase::carpeta)
        return std::make_unique<SueloSqlite>(lugar.carpeta());
    return std::make_unique<SueloPostgresql>(lugar.direccion());
}

/// A statement as the database that the connection is to wants it.
inline std::string en_la_base(adodb::Connection& conexion, const std::string& sql)
{
    if (auto* base = dynamic_cast<postgresql::Connection*>(&conexion))
        return base->reescribe(sql, Donde::aqui());
    return dynamic_cast<sqlite::Connection&>(conexion).reescribe(sql, Donde::aqui());
}

/// The statements that the spies have just seen, as the server wants them. A row read under a lock and
/// written back is a counter. What the host's own library reads besides the spies (its configuration) is not
/// among them.
inline Guion transcribe(const pruebas::Banco& banco)
{
    const auto en_servidor = [&](bool contable, const std::string& sql) {
        const auto& bases = banco.bases();
        return en_la_base(*(contable ? bases.bexmor : bases.orvalin), sql);
    };
    Guion guion;
    for (const auto& dicha : banco.parte->dichas) {
        const bool contable = dicha.starts_with("contabilidad ");
        const auto resto = dicha.substr(dicha.find(' ') + 1);
        if (resto != "UPDATE") {
            const bool con_texto = resto.starts_with("EXEC ") || resto.starts_with("OPEN ");
            guion.push_back({ contable, con_texto ? en_servidor(contable, resto.substr(5)) : resto });
            continue;
        }
        auto& lectura = guion.back().sql; // SELECT * FROM tabla WHERE …
        const auto tabla = lectura.substr(14);
        const auto donde = tabla.find(' ');
        lectura += " FOR UPDATE";
        guion.push_back({ contable,
            "UPDATE " + tabla.substr(0, donde) + " SET Numero = Numero + 1" + tabla.substr(donde) });
    }
    return guion;
}

} // namespace atipicos::bench
