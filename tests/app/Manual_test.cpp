#include "host/ventanas/Manual.hpp"

#include "host/ventanas/Ayuda.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Ventanas.hpp"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <fstream>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QString lee_pagina(const QString& fichero)
{
    QFile leido(fichero);
    return leido.open(QIODevice::ReadOnly) ? QString::fromUtf8(leido.readAll()) : QString();
}

QString en_disco(const QString& nombre) { return QStringLiteral(ATIPICOS_FUENTES "/docs/manual/") + nombre; }

/// A manual of the test's own: an index and two pages.
class DosPaginas {
public:
    DosPaginas()
    {
        escribe("indice", "# Índice\n\n- [Una](una.md)\n- [Otra](otra.md#fin)\n- [Una otra vez](una.md)\n");
        escribe("una",
            "# Página **una**\n\n## ¿Qué es un `cargo`?\n\nUn [cargo](otra.md) lo es.\n\n"
            "```\n# no es un título\n```\n\n## Teclas\n\n| Tecla | Qué |\n|---|---|\n| F9 | acepta |\n");
        escribe("otra", "# Otra\n\n## Fin\n\nEl cargo y la Pérgola.\n");
        escribe("suelta", "# Nadie la nombra\n\ncargo\n");
        escribe("mensajes",
            "# Mensajes\n\n## De la ventana\n\n### No existe … en …\n\n### No existe el artículo …\n");
    }

    [[nodiscard]] app::Manual manual(bool con_mensajes = false) const
    {
        if (con_mensajes)
            escribe("indice", "# Índice\n\n- [M](mensajes.md)\n");
        return app::Manual(QString::fromStdString(m_carpeta.ruta().string()));
    }

private:
    void escribe(const char* nombre, const char* texto) const
    {
        std::ofstream(m_carpeta / (std::string(nombre) + ".md")) << texto;
    }

    CarpetaTemporal m_carpeta;
};

QStringList direcciones(const std::vector<app::Encontrado>& hallados)
{
    QStringList todas;
    for (const auto& uno : hallados)
        todas << uno.direccion;
    return todas;
}

}

class Manual_Test : public QObject {
    Q_OBJECT
private slots:

    void its_pages_are_those_of_the_index_once_and_in_its_order()
    {
        const auto manual = DosPaginas().manual();
        QStringList nombres;
        for (const auto& pagina : manual.paginas())
            nombres << pagina.nombre;
        QCOMPARE(nombres,
            (QStringList{ QStringLiteral("indice"), QStringLiteral("una"), QStringLiteral("otra") }));
        QVERIFY(manual.pagina(QStringLiteral("suelta")) == nullptr);
        const auto* una = manual.pagina(QStringLiteral("una"));
        QVERIFY(una != nullptr);
        QCOMPARE(una->titulo(), QStringLiteral("Página una"));
        QCOMPARE(una->apartados.size(), std::size_t{ 3 }); // what stands in code is no heading
        QCOMPARE(una->apartados[1].titulo, QStringLiteral("¿Qué es un cargo?"));
        QCOMPARE(una->apartados[1].nivel, 2);
        QCOMPARE(una->apartados[1].ancla, QStringLiteral("qué-es-un-cargo"));
    }

    void a_search_takes_all_the_words_whatever_their_accents_and_headings_first()
    {
        const auto manual = DosPaginas().manual();
        QCOMPARE(direcciones(manual.busca(QStringLiteral("PERGOLA cargo"))),
            QStringList{ QStringLiteral("otra.md#fin") });
        QCOMPARE(direcciones(manual.busca(QStringLiteral("cargo"))),
            (QStringList{ QStringLiteral("una.md#qué-es-un-cargo"), QStringLiteral("otra.md#fin") }));
        QVERIFY(manual.busca(QStringLiteral("  ")).empty());
        QVERIFY(manual.busca(QStringLiteral("cargo telaraña")).empty());
        const auto en_tabla = manual.busca(QStringLiteral("acepta"));
        QCOMPARE(en_tabla.size(), std::size_t{ 1 });
        QCOMPARE(en_tabla.front().linea, QStringLiteral("F9: acepta")); // as it is read
        QCOMPARE(en_tabla.front().donde, QStringLiteral("Página una › Teclas"));
    }

    void a_message_is_found_by_the_heading_that_says_most_of_it()
    {
        const auto manual = DosPaginas().manual(true);
        const auto ancla
            = [&](const char* dicho) { return manual.ancla_de_mensaje(QString::fromUtf8(dicho)); };
        QCOMPARE(ancla("[203] No existe\r\n el artículo 7777 en el catálogo"),
            QStringLiteral("no-existe-el-artículo-"));
        QCOMPARE(ancla("No existe el cargo 5 en 2026"), QStringLiteral("no-existe--en-"));
        QCOMPARE(ancla("en 2026 No existe"), QString()); // in another order it is another message
        QCOMPARE(ancla("De la ventana"), QString()); // a heading above the messages is none
    }

    void every_page_of_the_folder_is_in_the_program_and_in_the_index()
    {
        const app::Manual manual;
        const auto paginas = QDir(en_disco({})).entryList({ QStringLiteral("*.md") });
        QVERIFY(paginas.size() >= 16);
        for (const auto& fichero : paginas) {
            QVERIFY2(manual.pagina(fichero.chopped(3)) != nullptr, qPrintable(fichero));
            QVERIFY2(lee_pagina(QStringLiteral(":/manual/") + fichero) == lee_pagina(en_disco(fichero)),
                qPrintable(fichero));
        }
        QCOMPARE(manual.paginas().size(), static_cast<std::size_t>(paginas.size()));
    }

    void every_link_leads_somewhere_and_every_picture_is_there_and_used()
    {
        static const QRegularExpression enlace(QStringLiteral(R"((!?)\[[^\]]*\]\(([^)]+)\))"));
        const app::Manual manual;
        QSet<QString> usadas;
        int vistos = 0;
        for (const auto& pagina : manual.paginas()) {
            QSet<QString> anclas;
            for (const auto& apartado : pagina.apartados) {
                QVERIFY2(!anclas.contains(apartado.ancla), qPrintable(pagina.nombre + u'#' + apartado.ancla));
                anclas.insert(apartado.ancla);
            }
            const QString texto = lee_pagina(en_disco(pagina.nombre + QStringLiteral(".md")));
            for (auto uno = enlace.globalMatch(texto); uno.hasNext(); ++vistos) {
                const auto hallado = uno.next();
                const QString adonde = hallado.captured(2);
                if (!hallado.captured(1).isEmpty()) {
                    QVERIFY2(QFile::exists(QStringLiteral(":/manual/") + adonde), qPrintable(adonde));
                    usadas.insert(adonde.section(u'/', -1));
                } else {
                    QVERIFY2(existe(manual, pagina, adonde), qPrintable(pagina.nombre + u' ' + adonde));
                }
            }
        }
        QVERIFY(vistos > 50);
        for (const auto& imagen : QDir(en_disco(QStringLiteral("imagenes"))).entryList(QDir::Files))
            QVERIFY2(usadas.contains(imagen), qPrintable(imagen));
    }

    void each_window_that_has_a_place_has_one_that_exists()
    {
        const app::Manual manual;
        const auto* indice = manual.pagina(QStringLiteral("indice"));
        QVERIFY(indice != nullptr);
        for (const auto& nombre : app::Ayuda::conocidas()) {
            QWidget ventana;
            ventana.setObjectName(nombre);
            const QString direccion = app::Ayuda::direccion_de(&ventana);
            QVERIFY2(direccion != QStringLiteral("indice.md"), qPrintable(nombre));
            QVERIFY2(existe(manual, *indice, direccion), qPrintable(direccion));
        }
    }

    void every_form_of_the_program_has_a_place()
    {
        static const QRegularExpression clase(QStringLiteral(R"(<class>(\w+)</class>)"));
        const QStringList de_paso{ QStringLiteral("frmMsg") }; // takes no keys
        const QStringList partes{ QStringLiteral("frmDetalleAtipico"),
            QStringLiteral("frmCompras_Atipicos_Linea") };
        int vistos = 0;
        for (const auto* carpeta : { "editor", "posting", "browser", "printing", "context" }) {
            QDir lugar(QStringLiteral(ATIPICOS_FUENTES "/") + QLatin1String(carpeta));
            for (const auto& fichero : lugar.entryList({ QStringLiteral("*.ui") })) {
                const QString nombre = clase.match(lee_pagina(lugar.filePath(fichero))).captured(1);
                if (de_paso.contains(nombre) || partes.contains(nombre))
                    continue;
                ++vistos;
                QVERIFY2(app::Ayuda::conocidas().contains(nombre), qPrintable(nombre));
            }
        }
        QVERIFY(vistos >= 6);
    }

private:
    static bool existe(const app::Manual& manual, const app::Pagina& aqui, const QString& adonde)
    {
        const QString nombre = adonde.section(u'#', 0, 0);
        const auto* pagina = nombre.isEmpty() ? &aqui : manual.pagina(nombre.chopped(3));
        if (pagina == nullptr || (!nombre.isEmpty() && !nombre.endsWith(QLatin1String(".md"))))
            return false;
        const QString ancla = adonde.section(u'#', 1);
        return ancla.isEmpty()
            || std::any_of(pagina->apartados.begin(), pagina->apartados.end(),
                [&](const app::Apartado& uno) { return uno.ancla == ancla; });
    }
};

ATIPICOS_PRUEBA_VENTANAS(Manual_Test)
#include "Manual_test.moc"
