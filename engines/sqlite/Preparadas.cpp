#include "engines/sqlite/Preparadas.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::sqlite {

Prestada::Prestada(std::shared_ptr<Instruccion> instruccion) noexcept
    : m_instruccion(std::move(instruccion))
{
    m_instruccion->prestada = true;
}

Prestada::~Prestada()
{
    if (m_instruccion)
        m_instruccion->descansa();
}

void Prestada::nombra(std::string_view sql, const sql::Catalogo& catalogo) noexcept
{
    m_sql = sql;
    m_catalogo = &catalogo;
}

bool Prestada::avanza(Donde donde)
{
    try {
        return m_instruccion->avanza(donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        if (m_catalogo == nullptr)
            throw;
        throw adodb::ErrorBaseDatos(error.categoria(), error.fuente(), error.descripcion(),
            sql::reescribe(m_sql, *m_catalogo, donde), donde);
    }
}

Preparadas::Preparadas(sqlite3* base, bool con_formas)
    : m_base(base)
    , m_con_formas(con_formas)
    , m_formas{ Formas(sql::Numeros::segun_valor), Formas(sql::Numeros::segun_valor) }
{
}

Prestada Preparadas::de_lado(
    sql::Lado lado, const std::string& sql, const sql::Catalogo& catalogo, Donde donde)
{
    if (auto prestada = con_valores(m_formas[static_cast<std::size_t>(lado)], sql, catalogo, donde))
        return *std::move(prestada);
    return Prestada(std::make_shared<Instruccion>(m_base, sql::reescribe(sql, catalogo, donde), donde));
}

/// Nothing when the statement is to go as a text, or when that has something to say against it.
std::optional<Prestada> Preparadas::con_valores(
    Formas& formas, const std::string& sql, const sql::Catalogo& catalogo, Donde donde)
{
    auto* una = m_con_formas ? formas.busca(sql, catalogo, donde) : nullptr;
    if (una == nullptr)
        return std::nullopt;
    try {
        auto prestada = presta(una->preparada, una->forma.texto, donde);
        int parametro = 0;
        for (const auto& valor : una->forma.valores)
            if (!prestada->liga(++parametro, formas.literales()[valor.literal], valor.es_fecha, donde))
                return std::nullopt;
        prestada.nombra(sql, catalogo);
        return prestada;
    } catch (const adodb::ErrorBaseDatos&) {
        return std::nullopt;
    }
}

Prestada Preparadas::presta(Guardada& guardada, const std::string& sql, Donde donde)
{
    if (guardada && !guardada->prestada)
        return Prestada(guardada);
    auto nueva = std::make_shared<Instruccion>(m_base, sql, donde);
    if (!guardada)
        guardada = nueva;
    return Prestada(std::move(nueva));
}

Prestada Preparadas::propia(std::string_view sql, Donde donde)
{
    auto lugar = m_propias.find(sql);
    if (lugar == m_propias.end()) {
        if (m_propias.size() == maximo_de_propias)
            m_propias.clear();
        lugar = m_propias.emplace(sql, nullptr).first;
    }
    return presta(lugar->second, lugar->first, donde);
}

void Preparadas::olvida_formas() noexcept
{
    for (auto& formas : m_formas)
        formas.vacia();
}

} // namespace atipicos::sqlite
