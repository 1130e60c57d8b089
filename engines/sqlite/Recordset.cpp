#include "engines/sqlite/Recordset.hpp"

#include "engines/sql/Vista.hpp"
#include "engines/sqlite/Connection.hpp"

namespace atipicos::sqlite {

Recordset::Recordset(Connection& conexion)
    : Filas(conexion, "SQLite")
    , m_conexion(conexion)
{
}

Recordset::~Recordset() { suelta(); }

bool Recordset::abre(const std::string& sql, bool bloquea, Donde donde)
{
    m_conexion.admite(sql, bloquea || !sql::no_cambia_nada(sql), donde);
    m_instruccion.emplace(m_conexion.prepara(sql, donde));
    const bool hay = m_instruccion->avanza(donde);
    m_tipos = (*m_instruccion)->tipos();
    if (hay)
        m_conexion.sesion().anota_lectura(*this);
    return hay;
}

std::vector<sql::Filas::Columna> Recordset::columnas() const
{
    std::vector<Columna> todas;
    for (const auto tipo : m_tipos)
        todas.push_back({ sqlite3_column_name(m_instruccion->get(), static_cast<int>(todas.size())),
            tipo == Tipo::Fecha });
    return todas;
}

bool Recordset::avanza(Donde donde)
{
    const bool hay = m_instruccion->avanza(donde);
    if (!hay)
        m_conexion.sesion().olvida_lectura(*this);
    return hay;
}

Variant Recordset::lee(std::size_t columna, Donde donde) const
{
    return valor_de(m_instruccion->get(), static_cast<int>(columna), m_tipos[columna], donde);
}

void Recordset::anexa(std::size_t columna, std::string& destino) const
{
    auto* instruccion = m_instruccion->get();
    const auto i = static_cast<int>(columna);
    if (m_tipos[columna] != Tipo::Segun || sqlite3_column_type(instruccion, i) == SQLITE_FLOAT) {
        Filas::anexa(columna, destino);
        return;
    }
    const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(instruccion, i));
    if (texto != nullptr)
        destino.append(texto, static_cast<std::size_t>(sqlite3_column_bytes(instruccion, i)));
}

void Recordset::cierra() noexcept
{
    m_conexion.sesion().olvida_lectura(*this);
    m_instruccion.reset();
    m_tipos.clear();
}

bool Recordset::en_transaccion() const noexcept { return m_conexion.en_transaccion(); }

/// The table after FROM.
sql::Filas::Tabla Recordset::tabla(Donde donde)
{
    auto tokens = sql::separa((*m_instruccion)->texto());
    const sql::Vista vista(tokens);
    std::size_t i = 0;
    while (i < vista.size() && !vista.es(i, "FROM"))
        ++i;
    const auto fin = vista.fin_valor(i + 1);
    const std::string esquema(fin > i + 1 ? vista.nombre(i + 1) : "main");
    const std::string nombre(vista.nombre(fin));
    return { nombre, sql::entre_comillas(esquema) + "." + sql::entre_comillas(nombre),
        m_conexion.sesion().columnas_clave(esquema, nombre, donde) };
}

std::int32_t Recordset::escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde)
{
    m_conexion.admite(sql, true, donde);
    m_conexion.sesion().guarda_lecturas(donde);
    auto instruccion = m_conexion.sesion().prepara_propia(sql, donde);
    int parametro = 0;
    for (const auto& valor : valores)
        instruccion->liga(++parametro, valor, donde);
    instruccion.avanza(donde);
    return sqlite3_changes(m_conexion.base());
}

} // namespace atipicos::sqlite
