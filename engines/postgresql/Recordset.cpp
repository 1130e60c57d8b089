#include "engines/postgresql/Recordset.hpp"

#include "engines/postgresql/Connection.hpp"

namespace atipicos::postgresql {

Recordset::Recordset(Connection& conexion)
    : Filas(conexion, "PostgreSQL")
    , m_conexion(conexion)
{
}

Recordset::~Recordset() { suelta(); }

bool Recordset::abre(const std::string& sql, bool bloquea, Donde donde)
{
    m_respuesta = bloquea      ? m_conexion.pide_bloqueando(sql, donde)
        : solo_hacia_delante() ? m_conexion.pide_para_leer(sql, *this, donde)
                               : m_conexion.pide(sql, donde);
    m_por_filas = PQresultStatus(m_respuesta.get()) == PGRES_SINGLE_TUPLE;
    lee_tipos();
    m_actual = 0;
    return PQntuples(m_respuesta.get()) > 0;
}

void Recordset::lee_tipos()
{
    const auto& tablas = m_conexion.tablas();
    bool con_bits = tablas.nombra_algun_bit(instruccion());
    for (int i = 0; i < PQnfields(m_respuesta.get()); ++i) {
        m_tipos.push_back(tipo_de(PQftype(m_respuesta.get(), i)));
        con_bits
            = con_bits || (m_tipos.back() == Tipo::Entero && tablas.hay_bit(PQfname(m_respuesta.get(), i)));
    }
    if (!con_bits)
        return;
    const auto procedencia = m_conexion.procedencia(instruccion());
    for (std::size_t i = 0; i < m_tipos.size(); ++i)
        if (m_tipos[i] == Tipo::Entero
            && procedencia.es_bit(i, PQfname(m_respuesta.get(), static_cast<int>(i))))
            m_tipos[i] = Tipo::Bit;
}

std::vector<sql::Filas::Columna> Recordset::columnas() const
{
    std::vector<Columna> todas;
    for (const auto tipo : m_tipos)
        todas.push_back({ PQfname(m_respuesta.get(), static_cast<int>(todas.size())), tipo == Tipo::Fecha });
    return todas;
}

bool Recordset::avanza(Donde donde)
{
    if (!m_por_filas)
        return ++m_actual < PQntuples(m_respuesta.get());
    if (!m_recogidas)
        return avanza_por_la_linea(donde);
    m_en_recogidas = m_recogidas->avanza();
    if (!m_en_recogidas && m_fallo)
        std::rethrow_exception(m_fallo);
    return m_en_recogidas;
}

bool Recordset::avanza_por_la_linea(Donde donde)
{
    auto respuesta = m_conexion.sesion().sigue_lectura(instruccion(), donde);
    if (es_error(respuesta))
        throw error_de(respuesta, instruccion(), donde);
    if (PQntuples(respuesta.get()) == 0)
        return false;
    m_respuesta = std::move(respuesta);
    return true;
}

void Recordset::recoge()
{
    m_recogidas.emplace();
    try {
        for (;;) {
            const auto respuesta = m_conexion.sesion().sigue_lectura(instruccion(), Donde{});
            if (es_error(respuesta))
                throw error_de(respuesta, instruccion(), Donde{});
            if (PQntuples(respuesta.get()) == 0)
                return;
            m_recogidas->agrega(respuesta.get());
        }
    } catch (...) {
        m_fallo = std::current_exception();
        m_conexion.sesion().deja_lectura(*this);
    }
}

bool Recordset::es_nulo(std::size_t columna) const
{
    return m_en_recogidas ? m_recogidas->es_nulo(columna)
                          : PQgetisnull(m_respuesta.get(), m_actual, static_cast<int>(columna)) != 0;
}

std::string_view Recordset::texto(std::size_t columna) const
{
    if (m_en_recogidas)
        return m_recogidas->texto(columna);
    const auto i = static_cast<int>(columna);
    return { PQgetvalue(m_respuesta.get(), m_actual, i),
        static_cast<std::size_t>(PQgetlength(m_respuesta.get(), m_actual, i)) };
}

Variant Recordset::lee(std::size_t columna, Donde donde) const
{
    if (es_nulo(columna))
        return Nulo{};
    return valor_de(texto(columna), m_tipos[columna], donde);
}

void Recordset::anexa(std::size_t columna, std::string& destino) const
{
    if (m_tipos[columna] == Tipo::Texto || m_tipos[columna] == Tipo::Entero)
        destino += texto(columna); // null is an empty text
    else
        Filas::anexa(columna, destino);
}

void Recordset::cierra() noexcept
{
    m_conexion.sesion().deja_lectura(*this);
    m_recogidas.reset();
    m_fallo = nullptr;
    m_en_recogidas = m_por_filas = false;
    m_respuesta.reset();
    m_tipos.clear();
}

bool Recordset::en_transaccion() const noexcept { return m_conexion.en_transaccion(); }

sql::Filas::Tabla Recordset::tabla(Donde donde)
{
    if (const auto* una = m_conexion.procedencia(instruccion()).tabla())
        return { una->nombre, una->calificado, una->clave };
    falla("Las filas no son de ninguna tabla en la que escribir.", donde);
}

std::string Recordset::marcador(std::size_t numero) const { return "$" + std::to_string(numero); }

std::int32_t Recordset::escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde)
{
    const auto respuesta = m_conexion.escribe(sql, valores, donde);
    return std::atoi(PQcmdTuples(respuesta.get()));
}

} // namespace atipicos::postgresql
