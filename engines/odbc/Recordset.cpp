#include "engines/odbc/Recordset.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/odbc/Escritura.hpp"
#include "engines/sql/Tokens.hpp"

namespace atipicos::odbc {

Recordset::Recordset(Connection& conexion)
    : Filas(conexion, "ODBC")
    , m_conexion(conexion)
{
}

Recordset::~Recordset() { suelta(); }

bool Recordset::abre(const std::string& sql, bool bloquea, Donde donde)
{
    m_reescrita = m_conexion.reescribe(sql, donde);
    m_respuesta = bloquea ? m_conexion.pide_bloqueando(m_reescrita, sql, donde)
                          : m_conexion.ejecuta(m_reescrita, donde);
    m_conexion.vuelve_bits(m_respuesta);
    m_actual = 0;
    return !m_respuesta.filas.empty();
}

std::vector<sql::Filas::Columna> Recordset::columnas() const
{
    std::vector<Columna> todas;
    for (const auto& una : m_respuesta.columnas)
        todas.push_back({ una.nombre, una.es_fecha });
    return todas;
}

bool Recordset::avanza(Donde) { return ++m_actual < m_respuesta.filas.size(); }

Variant Recordset::lee(std::size_t columna, Donde) const { return m_respuesta.filas[m_actual][columna]; }

void Recordset::cierra() noexcept { m_respuesta = {}; }

bool Recordset::en_transaccion() const noexcept { return m_conexion.en_transaccion(); }

sql::Filas::Tabla Recordset::tabla(Donde donde)
{
    auto tabla = tabla_de(m_reescrita);
    const auto& clave = m_conexion.columnas_clave(tabla, donde);
    return { std::move(tabla.nombre), std::move(tabla.calificada), clave };
}

std::int32_t Recordset::escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde)
{
    std::string con_valores;
    auto siguiente = valores.begin();
    for (const auto& token : sql::separa(sql))
        if (token.clase == sql::Clase::simbolo && token.texto == "?")
            con_valores += literal(*siguiente++, m_conexion.servidor(), donde);
        else
            con_valores += token.texto;
    return m_conexion.ejecuta(con_valores, donde).afectadas;
}

} // namespace atipicos::odbc
