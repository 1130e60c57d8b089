#include "engines/odbc/Recordset.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/sql/Fechas.hpp"
#include "engines/sql/Vista.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::odbc {

namespace {

    std::size_t tabla_tras_from(const sql::Vista& vista) ///< where its name begins
    {
        std::size_t i = 0;
        while (i < vista.size() && !vista.es(i, "FROM"))
            ++i;
        return i + 1;
    }

    /// A value as it stands in a statement. Parameters would need the type of each column: SQL Server takes
    /// no text for money.
    struct Literal {
        bool con_t; ///< of SQL Server, to which only a date with a "T" is year, month, day in every session
        Donde donde;

        std::string operator()(std::monostate) const { return "NULL"; }
        std::string operator()(Nulo) const { return "NULL"; }
        std::string operator()(bool valor) const { return valor ? "1" : "0"; }
        std::string operator()(std::int32_t valor) const { return std::to_string(valor); }
        std::string operator()(double valor) const { return texto_sql(valor, donde); }
        std::string operator()(Currency valor) const { return valor.texto(); }
        std::string operator()(Date valor) const
        {
            auto texto = sql::texto_iso(valor);
            if (con_t && valor.hora_del_dia().count() == 0)
                texto += "T00:00:00";
            else if (con_t)
                texto[texto.find(' ')] = 'T';
            return "'" + texto + "'";
        }
        std::string operator()(const std::string& valor) const
        {
            std::string texto = "'";
            for (const char c : valor) {
                texto += c;
                if (c == '\'')
                    texto += c;
            }
            return texto + "'";
        }
        std::string operator()(const std::shared_ptr<Objeto>&) const
        {
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        }
    };

}

Recordset::Recordset(Connection& conexion)
    : Filas(conexion, "ODBC")
    , m_conexion(conexion)
{
}

Recordset::~Recordset() { suelta(); }

bool Recordset::abre(const std::string& sql, bool bloquea, Donde donde)
{
    m_reescrita = m_conexion.reescribe(sql, donde);
    pide(bloquea ? con_bloqueo(m_reescrita) : m_reescrita, donde);
    if (bloquea && m_leidas.empty() && *m_conexion.servidor().bloqueo_de_nada != '\0') {
        // Of two that mean to add the row the second one waits here, and finds it.
        const auto clave = Literal{ false, donde }(sql);
        static_cast<void>(m_conexion.ejecuta(m_conexion.servidor().bloqueo_de_nada + clave + ", 0))", donde));
        pide(con_bloqueo(m_reescrita), donde);
    }
    return !m_leidas.empty();
}

void Recordset::pide(const std::string& sql, Donde donde)
{
    auto consulta = m_conexion.ejecuta(sql, donde);
    m_columnas = consulta.describe(donde);
    while (!m_columnas.empty() && consulta.avanza(donde)) {
        auto& fila = m_leidas.emplace_back();
        fila.reserve(m_columnas.size());
        for (const auto& columna : m_columnas)
            fila.push_back(consulta.lee(static_cast<int>(fila.size()), columna.tipo, donde));
    }
    m_actual = 0;
}

std::string Recordset::con_bloqueo(const std::string& reescrita) const
{
    auto tokens = sql::separa(reescrita);
    const sql::Vista vista(tokens);
    const auto tabla = vista.fin_valor(tabla_tras_from(vista));
    const std::string con_indicacion
        = std::string(vista[tabla].texto) + m_conexion.servidor().bloqueo_de_tabla;
    if (tabla < vista.size())
        vista.cambia(tabla, con_indicacion);
    std::string texto;
    for (const auto& token : tokens)
        texto += token.texto;
    return texto + m_conexion.servidor().bloqueo_al_final;
}

std::vector<sql::Filas::Columna> Recordset::columnas() const
{
    std::vector<Columna> todas;
    for (const auto& una : m_columnas)
        todas.push_back({ una.nombre, una.tipo == Tipo::Fecha });
    return todas;
}

bool Recordset::avanza(Donde) { return ++m_actual < m_leidas.size(); }

Variant Recordset::lee(std::size_t columna, Donde) const { return m_leidas[m_actual][columna]; }

void Recordset::cierra() noexcept
{
    m_columnas.clear();
    m_leidas.clear();
}

bool Recordset::en_transaccion() const noexcept { return m_conexion.en_transaccion(); }

/// The table after FROM.
sql::Filas::Tabla Recordset::tabla(Donde donde)
{
    auto tokens = sql::separa(m_reescrita);
    const sql::Vista vista(tokens);
    const auto inicio = tabla_tras_from(vista);
    const auto fin = vista.fin_valor(inicio);
    std::string calificado;
    for (auto i = inicio; i <= fin; ++i)
        calificado += vista[i].texto;
    const std::string nombre(vista.nombre(fin));
    return { nombre, calificado, m_conexion.columnas_clave(nombre, donde) };
}

std::int32_t Recordset::escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde)
{
    const Literal literal{ *m_conexion.servidor().fechas == '\0', donde };
    std::string con_valores;
    auto siguiente = valores.begin();
    for (const auto& token : sql::separa(sql))
        if (token.clase == sql::Clase::simbolo && token.texto == "?")
            con_valores += std::visit(literal, (siguiente++)->valor());
        else
            con_valores += token.texto;
    return m_conexion.ejecuta(con_valores, donde).afectadas();
}

} // namespace atipicos::odbc
