#include "engines/sql/Filas.hpp"

#include "engines/sql/Fechas.hpp"
#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::sql {

/// A column. Of a row being read it asks the engine; of one in memory it keeps its own value.
class Campo final : public adodb::Field {
public:
    Campo(const Filas& filas, std::size_t columna, std::string nombre, bool es_fecha)
        : m_filas(filas)
        , m_columna(columna)
        , m_nombre(std::move(nombre))
        , m_es_fecha(es_fecha)
    {
    }

    const std::string& Name() const noexcept override { return m_nombre; }

    Variant Value(Donde donde) const override
    {
        comprueba_fila(donde);
        return m_filas.m_en_memoria ? propio : m_filas.lee(m_columna, donde);
    }

    void anexa_texto(std::string& destino) const override
    {
        comprueba_fila(Donde{});
        if (!m_filas.m_en_memoria)
            m_filas.anexa(m_columna, destino);
        else if (!propio.es_nulo())
            destino += CStr(propio);
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
        if (!m_es_fecha || texto == nullptr)
            return valor;
        const auto fecha = lee_fecha_regional(*texto);
        if (!fecha)
            m_filas.falla("La conversión del texto '" + *texto + "' en una fecha no es posible.", donde);
        return *fecha;
    }

    const Filas& m_filas;
    std::size_t m_columna;
    std::string m_nombre;
    bool m_es_fecha;
};

Filas::Filas(adodb::Connection& conexion, const char* fuente)
    : m_conexion(conexion)
    , m_fuente(fuente)
{
}

Filas::~Filas() = default;

void Filas::Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
    adodb::CommandType, Donde donde)
{
    if (m_abierto)
        falla("El conjunto de filas ya está abierto.", donde);
    m_sql = sql;
    const bool editable = bloqueo == adodb::LockType::Pessimistic;
    m_solo_hacia_delante = cursor == adodb::CursorType::ForwardOnly && !editable;
    if (editable && !en_transaccion()) {
        m_conexion.BeginTrans(donde);
        m_transaccion_propia = true;
    }
    try {
        m_fin = !abre(m_sql, editable, donde);
        for (auto& columna : columnas())
            m_campos.push_back(
                std::make_unique<Campo>(*this, m_campos.size(), std::move(columna.nombre), columna.es_fecha));
        m_abierto = true;
        if (editable) {
            guarda_el_resto(donde);
            m_editable = true;
        }
    } catch (...) {
        suelta();
        throw;
    }
}

void Filas::guarda_el_resto(Donde donde)
{
    m_en_memoria = true;
    m_fila = 0;
    while (!m_fin) {
        auto& fila = m_filas.emplace_back();
        fila.reserve(m_campos.size());
        for (std::size_t i = 0; i < m_campos.size(); ++i)
            fila.push_back(lee(i, donde));
        m_fin = true; // also when going on fails
        m_fin = !avanza(donde);
    }
    carga_fila();
}

void Filas::carga_fila()
{
    m_fin = m_fila >= m_filas.size();
    for (std::size_t i = 0; i < m_campos.size(); ++i)
        m_campos[i]->carga(m_fin ? Variant(Nulo{}) : m_filas[m_fila][i]);
}

void Filas::MoveNext(Donde donde)
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
    m_fin = !avanza(donde);
}

adodb::Field& Filas::Fields(std::string_view nombre, Donde donde)
{
    comprueba_abierto(donde);
    for (const auto& campo : m_campos)
        if (iguales(campo->Name(), nombre))
            return *campo;
    falla("No existe el campo «" + std::string(nombre) + "» en el conjunto de filas.", donde);
}

adodb::Field& Filas::Fields(std::size_t posicion, Donde donde)
{
    comprueba_abierto(donde);
    if (posicion >= m_campos.size())
        falla("No existe el campo número " + std::to_string(posicion) + " en el conjunto de filas.", donde);
    return *m_campos[posicion];
}

void Filas::AddNew(Donde donde)
{
    comprueba_abierto(donde);
    if (!m_editable)
        falla("El conjunto de filas no está abierto para escritura.", donde);
    for (const auto& campo : m_campos)
        campo->carga(Nulo{});
    m_nueva = true;
}

void Filas::Update(Donde donde)
{
    comprueba_abierto(donde);
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

void Filas::inserta(Donde donde)
{
    std::string columnas;
    std::string marcas;
    std::vector<Variant> valores;
    for (const auto& campo : m_campos)
        if (campo->cambiado) {
            valores.push_back(campo->propio);
            columnas += (columnas.empty() ? "" : ", ") + entre_comillas(campo->Name());
            marcas += (marcas.empty() ? "" : ", ") + marcador(valores.size());
        }
    escribe("INSERT INTO " + tabla(donde).calificado
            + (columnas.empty() ? " DEFAULT VALUES" : " (" + columnas + ") VALUES (" + marcas + ")"),
        valores, donde);

    auto& fila = m_filas.emplace_back();
    for (const auto& campo : m_campos)
        fila.push_back(campo->propio);
    m_fila = m_filas.size() - 1;
    m_nueva = false;
    carga_fila();
}

void Filas::modifica(Donde donde)
{
    std::string cambios;
    std::vector<Variant> valores;
    for (const auto& campo : m_campos)
        if (campo->cambiado) {
            valores.push_back(campo->propio);
            cambios += (cambios.empty() ? "" : ", ") + entre_comillas(campo->Name()) + " = "
                + marcador(valores.size());
        }
    if (cambios.empty())
        return;
    const auto destino = tabla(donde);
    const auto condicion = condicion_de_clave(destino, valores, donde);
    if (escribe("UPDATE " + destino.calificado + " SET " + cambios + condicion, valores, donde) == 0)
        falla("La fila no se puede guardar: ya no está en la tabla «" + destino.nombre + "».", donde);
    for (std::size_t i = 0; i < m_campos.size(); ++i)
        m_filas[m_fila][i] = m_campos[i]->propio;
    carga_fila();
}

/// ` WHERE key = ?…` for the current row; the key's values are added to `valores`.
std::string Filas::condicion_de_clave(const Tabla& tabla, std::vector<Variant>& valores, Donde donde) const
{
    std::string condicion;
    for (const auto& nombre : tabla.clave) {
        const auto lugar = std::find_if(m_campos.begin(), m_campos.end(),
            [&](const auto& campo) { return iguales(campo->Name(), nombre); });
        if (lugar == m_campos.end())
            falla("La fila no se puede guardar: falta el campo clave «" + nombre + "».", donde);
        valores.push_back(m_filas[m_fila][static_cast<std::size_t>(lugar - m_campos.begin())]);
        condicion += (condicion.empty() ? " WHERE " : " AND ") + entre_comillas(nombre) + " = "
            + marcador(valores.size());
    }
    if (condicion.empty())
        falla("La fila no se puede guardar: la tabla «" + tabla.nombre + "» no tiene clave.", donde);
    return condicion;
}

void Filas::Close(Donde donde)
{
    comprueba_abierto(donde);
    suelta();
}

void Filas::suelta() noexcept
{
    cierra();
    m_campos.clear();
    m_filas.clear();
    m_abierto = false;
    m_fin = true;
    m_en_memoria = false;
    m_editable = false;
    m_nueva = false;
    if (!std::exchange(m_transaccion_propia, false))
        return;
    try {
        m_conexion.RollbackTrans();
    } catch (...) { // NOLINT(bugprone-empty-catch): nothing was written; a lost connection has rolled back
    }
}

void Filas::anexa(std::size_t columna, std::string& destino) const
{
    if (const Variant valor = lee(columna, Donde{}); !valor.es_nulo())
        destino += CStr(valor);
}

std::string Filas::marcador(std::size_t) const { return "?"; }

void Filas::comprueba_abierto(Donde donde) const
{
    if (!m_abierto)
        falla("El conjunto de filas está cerrado.", donde);
}

void Filas::falla(std::string descripcion, Donde donde) const
{
    throw adodb::ErrorBaseDatos(
        adodb::Categoria::instruccion, m_fuente, std::move(descripcion), m_sql, donde);
}

} // namespace atipicos::sql
