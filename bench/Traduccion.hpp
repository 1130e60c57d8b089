#pragma once

#include "bench/Guion.hpp"
#include "engines/sql/Reescritura.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What is done with the statements of an operation before the clock runs.
namespace atipicos::bench {

/// What a database wants otherwise than the others.
struct Producto {
    const char* empieza;
    const char* bloquea; ///< follows a query whose rows are to be written back
    sql::Numeros numeros;
    sql::Dialecto dialecto = {};
};

using Catalogos = std::array<sql::Catalogo, 2>; ///< management, accounting

struct Valor {
    sql::Literal::Clase clase;
    std::string texto;
    std::int64_t entero = 0;
    double real = 0;
};

struct Paso {
    static constexpr std::size_t sin_forma = static_cast<std::size_t>(-1);

    bool contable = false;
    std::string texto = {}; ///< when it has no shape
    std::size_t forma = sin_forma;
    std::vector<Valor> valores = {};
};

/// A statement to prepare.
struct Preparable {
    std::string texto;
    std::vector<sql::Literal::Clase> clases; ///< of its values
};

struct Traducido {
    Catalogos catalogos;
    std::vector<std::vector<Paso>> guiones = {};
    std::vector<Preparable> formas = {};
};

/// Each statement as a text, with a transaction on each connection.
[[nodiscard]] inline Traducido en_textos(
    const std::vector<Guion>& guiones, const Producto& producto, Catalogos catalogos)
{
    using Clase = Dicha::Clase;
    Traducido traducido{ std::move(catalogos) };
    for (const auto& guion : guiones) {
        auto& pasos = traducido.guiones.emplace_back();
        for (const auto& [contable, clase, sql] : guion)
            switch (clase) {
            case Clase::empieza:
                pasos.push_back({ contable, producto.empieza });
                break;
            case Clase::confirma:
                pasos.push_back({ contable, "COMMIT" });
                break;
            case Clase::deshace:
                pasos.push_back({ contable, "ROLLBACK" });
                break;
            case Clase::instruccion:
            case Clase::bloqueo:
                pasos.push_back({ contable,
                    sql::reescribe(sql, traducido.catalogos.at(contable ? 1 : 0))
                        + (clase == Clase::bloqueo ? producto.bloquea : "") });
            }
    }
    return traducido;
}

/// Each statement as a shape and its values, in one transaction for both connections.
class TraductorEnFormas {
public:
    TraductorEnFormas(const Producto& producto, Catalogos catalogos)
        : m_producto(producto)
        , m_esqueleto(producto.numeros)
        , m_traducido{ std::move(catalogos) }
    {
    }

    [[nodiscard]] Traducido traduce(const std::vector<Guion>& guiones)
    {
        for (const auto& guion : guiones)
            traduce(guion, m_traducido.guiones.emplace_back());
        return std::move(m_traducido);
    }

private:
    void traduce(const Guion& guion, std::vector<Paso>& pasos)
    {
        using Clase = Dicha::Clase;
        int abiertas = 0;
        for (const auto& dicha : guion)
            switch (dicha.clase) {
            case Clase::empieza:
                if (abiertas++ == 0)
                    pasos.push_back({ dicha.contable, m_producto.empieza });
                break;
            case Clase::confirma:
                if (--abiertas == 0)
                    pasos.push_back({ dicha.contable, "COMMIT" });
                break;
            case Clase::deshace:
                if (std::exchange(abiertas, 0) > 0)
                    pasos.push_back({ dicha.contable, "ROLLBACK" });
                break;
            case Clase::instruccion:
            case Clase::bloqueo:
                pasos.push_back(paso(dicha));
            }
    }

    Paso paso(const Dicha& dicha)
    {
        const auto& catalogo = m_traducido.catalogos.at(dicha.contable ? 1 : 0);
        const std::string final = dicha.clase == Dicha::Clase::bloqueo ? m_producto.bloquea : "";
        auto plantilla = m_esqueleto.lee(dicha.sql)
            ? sql::forma_de(dicha.sql, m_esqueleto.literales(), m_producto.numeros, catalogo)
            : std::nullopt;
        if (!plantilla)
            return { dicha.contable, sql::reescribe(dicha.sql, catalogo) + final };
        Paso paso{ dicha.contable };
        Preparable preparable{ plantilla->forma.texto + final, {} };
        std::string sitio;
        for (const auto& [cual, es_fecha] : plantilla->forma.valores) {
            const auto& literal = m_esqueleto.literales()[cual];
            const auto contenido = sql::contenido_de(literal, es_fecha, sitio);
            if (!contenido)
                throw std::runtime_error("no date in: " + dicha.sql);
            preparable.clases.push_back(literal.clase);
            auto& valor = paso.valores.emplace_back(Valor{ literal.clase, std::string(*contenido) });
            if (literal.clase == sql::Literal::Clase::decimal)
                valor.real = sql::real_de(literal);
            else if (literal.clase != sql::Literal::Clase::texto)
                valor.entero = sql::entero_de(literal);
        }
        paso.forma = la_de(std::move(preparable));
        return paso;
    }

    std::size_t la_de(Preparable preparable)
    {
        const auto [lugar, nueva]
            = m_conocidas.try_emplace({ preparable.texto, preparable.clases }, m_traducido.formas.size());
        if (nueva)
            m_traducido.formas.push_back(std::move(preparable));
        return lugar->second;
    }

    const Producto& m_producto;
    sql::Esqueleto m_esqueleto;
    Traducido m_traducido;
    std::map<std::pair<std::string, std::vector<sql::Literal::Clase>>, std::size_t> m_conocidas;
};

[[nodiscard]] inline Traducido en_formas(
    const std::vector<Guion>& guiones, const Producto& producto, Catalogos catalogos)
{
    return TraductorEnFormas(producto, std::move(catalogos)).traduce(guiones);
}

} // namespace atipicos::bench
