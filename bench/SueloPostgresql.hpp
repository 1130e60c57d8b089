#pragma once

#include "bench/Suelo.hpp"
#include "engines/sql/Postgresql.hpp"

#include <libpq-fe.h>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::bench {

inline const Producto producto_postgresql{ "BEGIN", "\nFOR UPDATE", sql::Numeros::con_tipo,
    sql::dialecto_postgresql() };

struct Suelta {
    void operator()(PGconn* linea) const { PQfinish(linea); }
    void operator()(PGresult* respuesta) const { PQclear(respuesta); }
};
using Linea = std::unique_ptr<PGconn, Suelta>;
using Respuesta = std::unique_ptr<PGresult, Suelta>;

inline Respuesta exige(PGconn* linea, PGresult* respuesta, const std::string& sql)
{
    Respuesta duena(respuesta);
    const auto estado = PQresultStatus(respuesta);
    if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK)
        throw std::runtime_error(std::string(PQerrorMessage(linea)) + " in: " + sql);
    return duena;
}

inline Respuesta pide(PGconn* linea, const std::string& sql)
{
    return exige(linea, PQexec(linea, sql.c_str()), sql);
}

inline Linea conecta(const std::string& direccion, const char* esquema)
{
    Linea linea(PQconnectdb(direccion.c_str()));
    if (PQstatus(linea.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(linea.get()));
    pide(linea.get(), std::string("SET search_path TO ") + esquema);
    pide(linea.get(), "SET datestyle TO 'ISO,DMY'");
    return linea;
}

inline void agrega_fechas(
    PGconn* linea, const std::string& esquema, const std::string& prefijo, sql::Catalogo& catalogo)
{
    const auto respuesta = pide(linea,
        "SELECT table_name, column_name, ordinal_position - 1 FROM information_schema.columns"
        " WHERE table_schema = '"
            + esquema + "' AND data_type IN ('date', 'timestamp without time zone')");
    for (int i = 0; i < PQntuples(respuesta.get()); ++i)
        catalogo.agrega_fecha(prefijo + PQgetvalue(respuesta.get(), i, 0), PQgetvalue(respuesta.get(), i, 1),
            std::stoul(PQgetvalue(respuesta.get(), i, 2)));
}

/// In one session plain names are those of management; in two each finds its own.
[[nodiscard]] inline Catalogos catalogos_del_servidor(PGconn* linea, bool una_sesion)
{
    constexpr auto contable = "dbo.";
    Catalogos catalogos{ sql::Catalogo(producto_postgresql.dialecto),
        sql::Catalogo(producto_postgresql.dialecto) };
    for (auto& catalogo : catalogos) {
        catalogo.agrega_base("Bexmor", contable);
        agrega_fechas(linea, "dbo", contable, catalogo);
    }
    agrega_fechas(linea, "orvalin", "", catalogos[0]);
    agrega_fechas(linea, una_sesion ? "orvalin" : "dbo", "", catalogos[1]);
    if (una_sesion)
        catalogos[1].pon_propio(contable);
    return catalogos;
}

class SueloPostgresqlLiteral final : public Suelo {
public:
    SueloPostgresqlLiteral(const std::string& direccion, const Traducido& textos)
        : Suelo(textos)
        , m_contabilidad(conecta(direccion, "dbo"))
        , m_gestion(conecta(direccion, "orvalin"))
    {
    }

private:
    void ejecuta(const Paso& paso) override
    {
        pide((paso.contable ? m_contabilidad : m_gestion).get(), paso.texto);
    }
    std::string celda(const std::string& sql) override
    {
        return PQgetvalue(pide(m_gestion.get(), sql).get(), 0, 0);
    }

    Linea m_contabilidad;
    Linea m_gestion;
};

class SueloPostgresqlPreparado final : public Suelo {
public:
    SueloPostgresqlPreparado(const std::string& direccion, const Traducido& formas)
        : Suelo(formas)
        , m_linea(conecta(direccion, "orvalin"))
        , m_preparadas(formas.formas.size())
    {
    }
    void prepara() override
    {
        for (std::size_t i = 0; i < m_preparadas.size(); ++i)
            preparada(i);
    }

private:
    const char* preparada(std::size_t cual)
    {
        auto& nombre = m_preparadas.at(cual);
        if (!nombre.empty())
            return nombre.c_str();
        const auto& forma = formas()[cual];
        std::vector<Oid> tipos;
        for (const auto clase : forma.clases)
            tipos.push_back(tipo_de(clase));
        nombre = "f" + std::to_string(cual);
        exige(m_linea.get(),
            PQprepare(m_linea.get(), nombre.c_str(), forma.texto.c_str(), static_cast<int>(tipos.size()),
                tipos.data()),
            forma.texto);
        return nombre.c_str();
    }
    /// The type that a literal has in a text: a quoted one, what is wanted in its place.
    static Oid tipo_de(sql::Literal::Clase clase)
    {
        using Clase = sql::Literal::Clase;
        return clase == Clase::entero      ? 23
            : clase == Clase::entero_largo ? 20
            : clase == Clase::decimal      ? 1700
                                           : 0;
    }
    void ejecuta(const Paso& paso) override
    {
        if (paso.forma == Paso::sin_forma) {
            pide(m_linea.get(), paso.texto);
            return;
        }
        m_valores.clear();
        for (const auto& valor : paso.valores)
            m_valores.push_back(valor.texto.c_str());
        exige(m_linea.get(),
            PQexecPrepared(m_linea.get(), preparada(paso.forma), static_cast<int>(m_valores.size()),
                m_valores.data(), nullptr, nullptr, 0),
            formas()[paso.forma].texto);
    }
    std::string celda(const std::string& sql) override
    {
        return PQgetvalue(pide(m_linea.get(), sql).get(), 0, 0);
    }

    Linea m_linea;
    std::vector<std::string> m_preparadas; ///< names by shape; empty: not yet
    std::vector<const char*> m_valores;
};

} // namespace atipicos::bench
