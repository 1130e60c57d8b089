#include "engines/sqlite/Recordset.hpp"

#include "engines/sql/Fechas.hpp"
#include "engines/sql/Vista.hpp"
#include "engines/sqlite/Connection.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::sqlite {

/// A column. Of a row being read it asks the statement; of one in memory it keeps its own value.
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
        comprueba_fila(donde);
        return m_filas.m_en_memoria ? propio : lee(donde);
    }

    void anexa_texto(std::string& destino) const override
    {
        comprueba_fila(Donde{});
        auto* instruccion = m_filas.m_instruccion->get();
        if (m_filas.m_en_memoria || m_tipo != Tipo::Segun
            || sqlite3_column_type(instruccion, m_columna) == SQLITE_FLOAT) {
            if (const Variant valor = Value(Donde{}); !valor.es_nulo())
                destino += CStr(valor);
            return;
        }
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
        propio = como_fecha(valor, donde);
        cambiado = true;
    }

    void carga(Variant valor)
    {
        propio = std::move(valor);
        cambiado = false;
    }

    [[nodiscard]] Variant lee(Donde donde) const
    {
        return valor_de(m_filas.m_instruccion->get(), m_columna, m_tipo, donde);
    }

    Variant propio = Nulo{};
    bool cambiado = false;

private:
    void comprueba_fila(Donde donde) const
    {
        if (m_filas.m_fin && !m_filas.m_nueva)
            m_filas.falla("No hay ninguna fila de la que leer el campo «" + m_nombre + "».", donde);
    }

    /// A regional text given to a date column is the date that a statement with that text would store.
    [[nodiscard]] Variant como_fecha(const Variant& valor, Donde donde) const
    {
        const auto* texto = std::get_if<std::string>(&valor.valor());
        if (m_tipo != Tipo::Fecha || texto == nullptr)
            return valor;
        const auto fecha = sql::lee_fecha_regional(*texto);
        if (!fecha)
            m_filas.falla("La conversión del texto '" + *texto + "' en una fecha no es posible.", donde);
        return *fecha;
    }

    const Recordset& m_filas;
    int m_columna;
    std::string m_nombre;
    Tipo m_tipo;
};

namespace {

    std::string entre_comillas(std::string_view nombre)
    {
        std::string texto = "\"";
        for (const char c : nombre) {
            texto += c;
            if (c == '"')
                texto += c;
        }
        return texto + "\"";
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
    if (editable && !m_conexion.en_transaccion()) {
        m_conexion.BeginTrans(donde);
        m_transaccion_propia = true;
    }
    try {
        m_instruccion.emplace(m_conexion.base(), reescrita, donde);
        m_fin = !m_instruccion->avanza(donde);
        crea_campos();
        if (!m_fin)
            m_conexion.anota_lectura(*this);
        if (editable) {
            busca_tabla(reescrita);
            guarda_el_resto(donde);
            m_editable = true;
        }
    } catch (...) {
        suelta();
        throw;
    }
}

void Recordset::crea_campos()
{
    auto* instruccion = m_instruccion->get();
    const int columnas = instruccion == nullptr ? 0 : sqlite3_column_count(instruccion);
    for (int i = 0; i < columnas; ++i)
        m_campos.push_back(std::make_unique<Campo>(*this, i, sqlite3_column_name(instruccion, i),
            tipo_declarado(sqlite3_column_decltype(instruccion, i))));
}

/// The table after FROM is the one that `Update` writes.
void Recordset::busca_tabla(const std::string& reescrita)
{
    auto tokens = sql::separa(reescrita);
    const sql::Vista vista(tokens);
    std::size_t i = 0;
    while (i < vista.size() && !vista.es(i, "FROM"))
        ++i;
    const auto fin = vista.fin_valor(i + 1);
    m_esquema = fin > i + 1 ? vista.nombre(i + 1) : "main";
    m_tabla = vista.nombre(fin);
}

void Recordset::guarda_el_resto(Donde donde)
{
    m_conexion.olvida_lectura(*this);
    m_en_memoria = true;
    m_fila = 0;
    while (!m_fin) {
        auto& fila = m_filas.emplace_back();
        fila.reserve(m_campos.size());
        for (const auto& campo : m_campos)
            fila.push_back(campo->lee(donde));
        m_fin = true; // also when going on fails
        m_fin = !m_instruccion->avanza(donde);
    }
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
    comprueba_abierto(donde);
    if (m_fin)
        falla("No hay ninguna fila a la que avanzar.", donde);
    if (m_en_memoria) {
        ++m_fila;
        m_nueva = false;
        carga_fila();
        return;
    }
    m_fin = true; // also when going on fails
    m_fin = !m_instruccion->avanza(donde);
    if (m_fin)
        m_conexion.olvida_lectura(*this);
}

adodb::Field& Recordset::Fields(std::string_view nombre, Donde donde)
{
    comprueba_abierto(donde);
    for (const auto& campo : m_campos)
        if (sql::iguales(campo->Name(), nombre))
            return *campo;
    falla("No existe el campo «" + std::string(nombre) + "» en el conjunto de filas.", donde);
}

adodb::Field& Recordset::Fields(std::size_t posicion, Donde donde)
{
    comprueba_abierto(donde);
    if (posicion >= m_campos.size())
        falla("No existe el campo número " + std::to_string(posicion) + " en el conjunto de filas.", donde);
    return *m_campos[posicion];
}

void Recordset::AddNew(Donde donde)
{
    comprueba_abierto(donde);
    if (!m_editable)
        falla("El conjunto de filas no está abierto para escritura.", donde);
    for (const auto& campo : m_campos)
        campo->carga(Nulo{});
    m_nueva = true;
}

void Recordset::Update(Donde donde)
{
    comprueba_abierto(donde);
    if (!m_editable || (m_fin && !m_nueva))
        falla("No hay ninguna fila que guardar.", donde);
    static_cast<void>(m_conexion.reescribe({}, donde)); // refused when the transaction is lost
    m_conexion.guarda_lecturas(donde);
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
        "INSERT INTO " + entre_comillas(m_esquema) + "." + entre_comillas(m_tabla)
            + (columnas.empty() ? " DEFAULT VALUES" : " (" + columnas + ") VALUES (" + valores + ")"),
        donde);
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
    const auto condicion = condicion_de_clave(valores, donde);
    Instruccion instruccion(m_conexion.base(),
        "UPDATE " + entre_comillas(m_esquema) + "." + entre_comillas(m_tabla) + " SET " + cambios + condicion,
        donde);
    int parametro = 0;
    for (const auto& valor : valores)
        instruccion.liga(++parametro, valor, donde);
    instruccion.avanza(donde);
    if (sqlite3_changes(m_conexion.base()) == 0)
        falla("La fila no se puede guardar: ya no está en la tabla «" + m_tabla + "».", donde);
    for (std::size_t i = 0; i < m_campos.size(); ++i)
        m_filas[m_fila][i] = m_campos[i]->propio;
    carga_fila();
}

/// ` WHERE key = ?…` for the current row; the key's values are added to `valores`.
std::string Recordset::condicion_de_clave(std::vector<Variant>& valores, Donde donde)
{
    std::string condicion;
    for (const auto& nombre : m_conexion.columnas_clave(m_esquema, m_tabla, donde)) {
        const auto lugar = std::find_if(m_campos.begin(), m_campos.end(),
            [&](const auto& campo) { return sql::iguales(campo->Name(), nombre); });
        if (lugar == m_campos.end())
            falla("La fila no se puede guardar: falta el campo clave «" + nombre + "».", donde);
        condicion += (condicion.empty() ? " WHERE " : " AND ") + entre_comillas(nombre) + " = ?";
        valores.push_back(m_filas[m_fila][static_cast<std::size_t>(lugar - m_campos.begin())]);
    }
    if (condicion.empty())
        falla("La fila no se puede guardar: la tabla «" + m_tabla + "» no tiene clave.", donde);
    return condicion;
}

void Recordset::Close(Donde donde)
{
    comprueba_abierto(donde);
    suelta();
}

void Recordset::suelta() noexcept
{
    m_conexion.olvida_lectura(*this);
    m_instruccion.reset();
    m_campos.clear();
    m_filas.clear();
    m_fin = true;
    m_en_memoria = false;
    m_editable = false;
    m_nueva = false;
    if (std::exchange(m_transaccion_propia, false))
        m_conexion.deshaz(); // nothing was written
}

void Recordset::comprueba_abierto(Donde donde) const
{
    if (!m_instruccion)
        falla("El conjunto de filas está cerrado.", donde);
}

void Recordset::falla(std::string descripcion, Donde donde) const
{
    throw adodb::ErrorBaseDatos(
        adodb::Categoria::instruccion, "SQLite", std::move(descripcion), m_sql, donde);
}

} // namespace atipicos::sqlite
