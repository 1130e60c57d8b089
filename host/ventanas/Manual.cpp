#include "host/ventanas/Manual.hpp"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace atipicos::app {

namespace {

    const auto portada = QStringLiteral("indice");
    const auto mensajes = QStringLiteral("mensajes");

    QString lee(const QString& lugar, const QString& nombre)
    {
        QFile fichero(lugar + u'/' + nombre + QStringLiteral(".md"));
        return fichero.open(QIODevice::ReadOnly) ? QString::fromUtf8(fichero.readAll()) : QString();
    }

    /// What a person reads of a line: no marks of links, emphasis, code and tables.
    QString sin_marcas(const QString& linea)
    {
        static const QRegularExpression enlace(QStringLiteral(R"(!?\[([^\]]*)\]\([^)]*\))"));
        static const QRegularExpression marcas(
            QStringLiteral(R"(\*\*|`|^\s*([-*>]|\d+\.)\s+|^\s*\|\s*|\s*\|\s*$)"));
        static const QRegularExpression celdas(QStringLiteral(R"(\s*\|\s*)"));
        QString texto = linea;
        texto.replace(enlace, QStringLiteral("\\1")).remove(marcas).replace(celdas, QStringLiteral(": "));
        return texto.trimmed();
    }

    std::vector<Apartado> apartados_de(const QString& texto)
    {
        static const QRegularExpression encabezado(QStringLiteral(R"(^(#{1,6}) +(.*)$)"));
        std::vector<Apartado> apartados;
        bool en_codigo = false;
        for (const auto& linea : texto.split(u'\n')) {
            if (linea.startsWith(QLatin1String("```")))
                en_codigo = !en_codigo;
            const auto hallado = en_codigo ? QRegularExpressionMatch() : encabezado.match(linea);
            if (hallado.hasMatch()) {
                const QString titulo = sin_marcas(hallado.captured(2));
                apartados.push_back(
                    { titulo, static_cast<int>(hallado.capturedLength(1)), Manual::ancla_de(titulo), {} });
            } else if (!apartados.empty()) {
                apartados.back().texto += linea + u'\n';
            }
        }
        return apartados;
    }

    bool tiene_todas(const QString& plano, const QStringList& palabras)
    {
        return std::all_of(palabras.begin(), palabras.end(),
            [&](const QString& palabra) { return plano.contains(palabra); });
    }

    /// The line of a section that has the first of the words.
    QString linea_con(const Apartado& apartado, const QString& palabra)
    {
        for (const auto& linea : apartado.texto.split(u'\n'))
            if (sin_acentos(linea).contains(palabra))
                return sin_marcas(linea);
        return {};
    }

    QString en_una_linea(const QString& texto) { return texto.simplified(); }

}

QString sin_acentos(const QString& texto)
{
    QString plano;
    for (const QChar caracter : texto.normalized(QString::NormalizationForm_D))
        if (caracter.category() != QChar::Mark_NonSpacing)
            plano += caracter.toLower();
    return plano;
}

Manual::Manual(const QString& lugar)
{
    static const QRegularExpression enlace(QStringLiteral(R"(\]\(([^)#]+)\.md[)#])"));
    const auto agrega = [&](const QString& nombre) {
        auto apartados = apartados_de(lee(lugar, nombre));
        if (!apartados.empty() && pagina(nombre) == nullptr)
            m_paginas.push_back({ nombre, std::move(apartados) });
    };
    agrega(portada);
    for (auto uno = enlace.globalMatch(lee(lugar, portada)); uno.hasNext();)
        agrega(uno.next().captured(1));
}

const Pagina* Manual::pagina(const QString& nombre) const
{
    const auto hallada = std::find_if(
        m_paginas.begin(), m_paginas.end(), [&](const Pagina& una) { return una.nombre == nombre; });
    return hallada == m_paginas.end() ? nullptr : &*hallada;
}

std::vector<Encontrado> Manual::busca(const QString& palabras) const
{
    const auto buscadas = sin_acentos(palabras).split(u' ', Qt::SkipEmptyParts);
    std::vector<Encontrado> en_titulos;
    std::vector<Encontrado> en_textos;
    if (buscadas.isEmpty())
        return en_titulos;
    for (const auto& pagina : m_paginas)
        for (const auto& apartado : pagina.apartados) {
            const QString titulo = sin_acentos(apartado.titulo);
            if (!tiene_todas(titulo + u'\n' + sin_acentos(apartado.texto), buscadas))
                continue;
            const bool en_titulo = tiene_todas(titulo, buscadas);
            const QString donde = apartado.nivel == 1
                ? pagina.titulo()
                : pagina.titulo() + QStringLiteral(" › ") + apartado.titulo;
            (en_titulo ? en_titulos : en_textos)
                .push_back({ pagina.nombre + QStringLiteral(".md#") + apartado.ancla, donde,
                    linea_con(apartado, buscadas.front()) });
        }
    en_titulos.insert(en_titulos.end(), en_textos.begin(), en_textos.end());
    return en_titulos;
}

QString Manual::ancla_de_mensaje(const QString& texto) const
{
    const auto* todos = pagina(mensajes);
    const QString dicho = en_una_linea(texto);
    const Apartado* mejor = nullptr;
    for (const auto& apartado : todos == nullptr ? std::vector<Apartado>() : todos->apartados) {
        if (apartado.nivel < 3)
            continue;
        qsizetype lugar = 0;
        for (const auto& trozo : apartado.titulo.split(u'…', Qt::SkipEmptyParts)) {
            const auto hallado = dicho.indexOf(trozo.trimmed(), lugar, Qt::CaseInsensitive);
            lugar = hallado < 0 ? -1 : hallado + trozo.trimmed().size();
            if (lugar < 0)
                break;
        }
        if (lugar > 0 && (mejor == nullptr || apartado.titulo.size() > mejor->titulo.size()))
            mejor = &todos->apartados[static_cast<std::size_t>(&apartado - todos->apartados.data())];
    }
    return mejor == nullptr ? QString() : mejor->ancla;
}

QString Manual::ancla_de(const QString& titulo)
{
    QString ancla;
    for (const QChar caracter : titulo.toLower())
        if (caracter.isLetterOrNumber() || caracter == u'-' || caracter == u'_')
            ancla += caracter;
        else if (caracter == u' ')
            ancla += u'-';
    return ancla;
}

} // namespace atipicos::app
