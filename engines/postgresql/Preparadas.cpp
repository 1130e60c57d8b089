#include "engines/postgresql/Preparadas.hpp"

namespace atipicos::postgresql {

namespace {

    /// The type that the server gives to such a literal.
    Oid tipo_de(sql::Literal::Clase clase)
    {
        constexpr Oid int8 = 20;
        constexpr Oid int4 = 23;
        constexpr Oid numeric = 1700;
        switch (clase) {
        case sql::Literal::Clase::entero:
            return int4;
        case sql::Literal::Clase::entero_largo:
            return int8;
        case sql::Literal::Clase::decimal:
            return numeric;
        case sql::Literal::Clase::texto:
            break;
        }
        return 0; // that of the column which it meets
    }

}

std::optional<Preparadas::Pedido> Preparadas::de_lado(
    sql::Lado lado, std::string_view sql, bool bloquea, const sql::Catalogo& catalogo, Donde donde)
{
    auto& formas = m_formas[static_cast<std::size_t>(lado)];
    auto* una = formas.busca(sql, catalogo, donde);
    if (una == nullptr)
        return std::nullopt;
    auto& guardada = una->preparada.guardadas[bloquea ? 1 : 0];
    if (guardada.como_texto || guardada.veces++ == 0 || !toma_valores(formas, una->forma))
        return std::nullopt;
    if (bloquea && una->preparada.bloqueando.empty())
        una->preparada.bloqueando = una->forma.texto + bloqueando;
    const auto& texto = bloquea ? una->preparada.bloqueando : una->forma.texto;
    return Pedido{ { texto.c_str(), m_valores, &prepara(guardada, una->forma, formas) },
        guardada.como_texto };
}

bool Preparadas::toma_valores(const Formas& formas, const sql::Forma& forma)
{
    m_valores.resize(forma.valores.size());
    std::string sitio;
    for (std::size_t i = 0; i < forma.valores.size(); ++i) {
        const auto& valor = forma.valores[i];
        const auto contenido = sql::contenido_de(formas.literales()[valor.literal], valor.es_fecha, sitio);
        if (!contenido)
            return false; // the text says what is wrong with it
        m_valores[i] = *contenido;
    }
    return true;
}

Preparada& Preparadas::prepara(Guardada& guardada, const sql::Forma& forma, const Formas& formas)
{
    if (!guardada.preparada) {
        guardada.preparada = std::make_unique<Preparada>();
        for (const auto& valor : forma.valores)
            guardada.preparada->tipos.push_back(tipo_de(formas.literales()[valor.literal].clase));
    }
    return *guardada.preparada;
}

Preparada* Preparadas::propia(std::string_view sql)
{
    auto lugar = m_propias.find(sql);
    if (lugar == m_propias.end()) {
        if (m_propias.size() == maximo_de_propias)
            m_propias.clear();
        lugar = m_propias.try_emplace(std::string(sql)).first;
    }
    auto& guardada = lugar->second;
    if (guardada.veces++ == 0)
        return nullptr;
    if (!guardada.preparada)
        guardada.preparada = std::make_unique<Preparada>();
    return guardada.preparada.get();
}

void Preparadas::olvida_formas() noexcept
{
    for (auto& formas : m_formas)
        formas.vacia();
}

} // namespace atipicos::postgresql
