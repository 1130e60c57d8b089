#include "engines/sqlite/Recordset.hpp"

#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Connection.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::sqlite {

/// A column. Of a row being read it asks the statement; of one being written it keeps its own value.
class Campo final : public adodb::Field {
public:
    Campo(const Recordset& filas, int columna, std::string nombre, Tipo tipo)
        : m_filas(filas)
        , m_columna(columna)
        , m_nombre(std::move(nombre))
        , m_tipo(tipo)
    {
    }

    const std::string& Name() const noexcept override { return m_nombre; }

    Variant Value(Donde donde) const override
    {
        if (m_filas.m_editable)
            return propio;
        return valor_de(fila(donde), m_columna, m_tipo, donde);
    }

    void anexa_texto(std::string& destino) const override
    {
        if (m_filas.m_editable) {
            destino += propio.es_nulo() ? std::string() : CStr(propio);
            return;
        }
        auto* instruccion = fila(Donde{});
        const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(instruccion, m_columna));
        if (texto != nullptr)
            destino.append(texto, static_cast<std::size_t>(sqlite3_column_bytes(instruccion, m_columna)));
    }

    void Value(const Variant& valor, Donde donde) override
    {
        if (!m_filas.m_editable || (m_filas.m_fin && !m_filas.m_nueva))
            m_filas.falla("El campo «" + m_nombre
                    + "» no se puede cambiar: no hay ninguna fila abierta para escritura.",
                donde);
        propio = valor;
        cambiado = true;
    }

    void carga(Variant valor)
    {
        propio = std::move(valor);
        cambiado = false;
    }

    [[nodiscard]] Variant lee(Donde donde) const { return valor_de(fila(donde), m_columna, m_tipo, donde); }

    Variant propio = Nulo{};
    bool cambiado = false;

private:
    [[nodiscard]] sqlite3_stmt* fila(Donde donde) const
    {
        if (m_filas.m_fin)
            m_filas.falla("No hay ninguna fila de la que leer el campo «" + m_nombre + "».", donde);
        return m_filas.m_instruccion->get();
    }

    const Recordset& m_filas;
    int m_columna;
    std::string m_nombre;
    Tipo m_tipo;
};

namespace {

    std::string entre_comillas(const std::string& nombre)
    {
        std::string texto = "\"";
        for (const char c : nombre) {
            texto += c;
            if (c == '"')
                texto += c;
        }
        return texto + "\"";
    }

    /// The table after FROM, as it is written.
    std::string tabla_de(const std::string& sql)
    {
        const auto tokens = sql::separa(sql);
        auto lugar = std::find_if(tokens.begin(), tokens.end(),
            [](const sql::Token& token) { return sql::iguales(token.texto, "FROM"); });
        while (lugar != tokens.end() && ++lugar != tokens.end())
            if (lugar->clase == sql::Clase::palabra)
                return std::string(lugar->texto);
        return {};
    }

}

Recordset::Recordset(Connection& conexion)
    : m_conexion(conexion)
{
}

Recordset::~Recordset() { suelta(); }

void Recordset::Open(
    const std::string& sql, adodb::CursorType, adodb::LockType bloqueo, adodb::CommandType, Donde donde)
{
    if (m_instruccion)
        falla("El conjunto de filas ya está abierto.", donde);
    m_sql = sql;
    const std::string reescrita = m_conexion.reescribe(sql, donde);
    const bool editable = bloqueo == adodb::LockType::Pessimistic;
    if (editable && sqlite3_get_autocommit(m_conexion.base()) != 0) {
        m_conexion.BeginTrans(donde);
        m_transaccion_propia = true;
    }
    try {
        m_instruccion.emplace(m_conexion.base(), reescrita, donde);
        m_fin = !m_instruccion->avanza(donde);
        crea_campos(editable);
        if (editable)
            lee_todo(donde);
    } catch (...) {
        suelta();
        throw;
    }
}

void Recordset::crea_campos(bool editable)
{
    auto* instruccion = m_instruccion->get();
    const int columnas = instruccion == nullptr ? 0 : sqlite3_column_count(instruccion);
    for (int i = 0; i < columnas; ++i)
        m_campos.push_back(std::make_unique<Campo>(*this, i, sqlite3_column_name(instruccion, i),
            tipo_declarado(sqlite3_column_decltype(instruccion, i))));
    if (editable)
        m_tabla = tabla_de(m_sql);
}

void Recordset::lee_todo(Donde donde)
{
    for (; !m_fin; m_fin = !m_instruccion->avanza(donde)) {
        auto& fila = m_filas.emplace_back();
        for (const auto& campo : m_campos)
            fila.push_back(campo->lee(donde));
    }
    sqlite3_reset(m_instruccion->get());
    m_editable = true;
    m_fila = 0;
    carga_fila();
}

void Recordset::carga_fila()
{
    m_fin = m_fila >= m_filas.size();
    for (std::size_t i = 0; i < m_campos.size(); ++i)
        m_campos[i]->carga(m_fin ? Variant(Nulo{}) : m_filas[m_fila][i]);
}

void Recordset::MoveNext(Donde donde)
{
    if (m_fin)
        falla("No hay ninguna fila a la que avanzar.", donde);
    if (!m_editable) {
        m_fin = !m_instruccion->avanza(donde);
        return;
    }
    ++m_fila;
    carga_fila();
}

adodb::Field& Recordset::Fields(std::string_view nombre, Donde donde)
{
    for (const auto& campo : m_campos)
        if (sql::iguales(campo->Name(), nombre))
            return *campo;
    falla("No existe el campo «" + std::string(nombre) + "» en el conjunto de filas.", donde);
}

adodb::Field& Recordset::Fields(std::size_t posicion, Donde donde)
{
    if (posicion >= m_campos.size())
        falla("No existe el campo número " + std::to_string(posicion) + " en el conjunto de filas.", donde);
    return *m_campos[posicion];
}

void Recordset::AddNew(Donde donde)
{
    if (!m_editable)
        falla("El conjunto de filas no está abierto para escritura.", donde);
    for (const auto& campo : m_campos)
        campo->carga(Nulo{});
    m_nueva = true;
}

void Recordset::Update(Donde donde)
{
    if (!m_editable || (m_fin && !m_nueva))
        falla("No hay ninguna fila que guardar.", donde);
    if (m_nueva)
        inserta(donde);
    else
        modifica(donde);
    if (m_transaccion_propia) {
        m_conexion.CommitTrans(donde);
        m_transaccion_propia = false;
    }
}

void Recordset::inserta(Donde donde)
{
    std::string columnas;
    std::string valores;
    for (const auto& campo : m_campos)
        if (campo->cambiado) {
            columnas += (columnas.empty() ? "" : ", ") + entre_comillas(campo->Name());
            valores += valores.empty() ? "?" : ", ?";
        }
    Instruccion instruccion(m_conexion.base(),
        "INSERT INTO " + entre_comillas(m_tabla) + " (" + columnas + ") VALUES (" + valores + ")", donde);
    int parametro = 0;
    for (const auto& campo : m_campos)
        if (campo->cambiado)
            instruccion.liga(++parametro, campo->propio, donde);
    instruccion.avanza(donde);

    auto& fila = m_filas.emplace_back();
    for (const auto& campo : m_campos)
        fila.push_back(campo->propio);
    m_fila = m_filas.size() - 1;
    m_nueva = false;
    carga_fila();
}

void Recordset::modifica(Donde donde)
{
    std::string cambios;
    std::vector<Variant> valores;
    for (const auto& campo : m_campos)
        if (campo->cambiado) {
            cambios += (cambios.empty() ? "" : ", ") + entre_comillas(campo->Name()) + " = ?";
            valores.push_back(campo->propio);
        }
    if (cambios.empty())
        return;

    std::string clave;
    Instruccion consulta(m_conexion.base(), "SELECT name FROM pragma_table_info(?) WHERE pk > 0", donde);
    consulta.liga(1, m_tabla, donde);
    while (consulta.avanza(donde)) {
        const auto nombre = CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde));
        const auto lugar = std::find_if(m_campos.begin(), m_campos.end(),
            [&](const auto& campo) { return sql::iguales(campo->Name(), nombre); });
        if (lugar == m_campos.end())
            falla("La fila no se puede guardar: falta el campo clave «" + nombre + "».", donde);
        clave += (clave.empty() ? " WHERE " : " AND ") + entre_comillas(nombre) + " = ?";
        valores.push_back(m_filas[m_fila][static_cast<std::size_t>(lugar - m_campos.begin())]);
    }
    if (clave.empty())
        falla("La fila no se puede guardar: la tabla «" + m_tabla + "» no tiene clave.", donde);

    Instruccion instruccion(
        m_conexion.base(), "UPDATE " + entre_comillas(m_tabla) + " SET " + cambios + clave, donde);
    int parametro = 0;
    for (const auto& valor : valores)
        instruccion.liga(++parametro, valor, donde);
    instruccion.avanza(donde);
    for (std::size_t i = 0; i < m_campos.size(); ++i)
        m_filas[m_fila][i] = m_campos[i]->propio;
    carga_fila();
}

void Recordset::Close(Donde donde)
{
    if (!m_instruccion)
        falla("El conjunto de filas ya está cerrado.", donde);
    suelta();
}

void Recordset::suelta() noexcept
{
    m_instruccion.reset();
    m_campos.clear();
    m_filas.clear();
    m_fin = true;
    m_editable = false;
    m_nueva = false;
    if (std::exchange(m_transaccion_propia, false))
        sqlite3_exec(m_conexion.base(), "ROLLBACK", nullptr, nullptr, nullptr); // nothing was written
}

void Recordset::falla(std::string descripcion, Donde donde) const
{
    throw adodb::ErrorBaseDatos(
        adodb::Categoria::instruccion, "SQLite", std::move(descripcion), m_sql, donde);
}

} // namespace atipicos::sqlite
