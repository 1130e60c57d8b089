// The keys that the manual names in each window are those that the window has, and all of them.
#include "context/modComun.hpp"
#include "controls/ListaSeleccion.hpp"
#include "controls/VisorReport.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "host/ventanas/frmAnular.hpp"
#include "host/ventanas/frmDatosEmpresa.hpp"
#include "host/ventanas/frmEmpresa.hpp"
#include "host/ventanas/frmFicha.hpp"
#include "host/ventanas/frmFichas.hpp"
#include "host/ventanas/frmHistorial.hpp"
#include "host/ventanas/frmManual.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmResumen.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "printing/frmImpresora.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>
#include <QShortcut>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

using Teclas = QSet<QString>;

QString lee_fuente(const QString& fichero)
{
    QFile leido(QStringLiteral(ATIPICOS_FUENTES "/") + fichero);
    return leido.open(QIODevice::ReadOnly) ? QString::fromUtf8(leido.readAll()) : QString();
}

/// As a Spanish keyboard calls it.
QString en_el_teclado(QString tecla)
{
    for (const auto& [una, otra] : { std::pair{ "Shift", "Mayús" }, { "Left", "Izquierda" },
             { "Right", "Derecha" }, { "Home", "Inicio" } })
        tecla.replace(QLatin1String(una), QString::fromUtf8(otra));
    return tecla;
}

void agrega_letra(Teclas& teclas, const QString& texto)
{
    const auto letra = QKeySequence::mnemonic(texto);
    if (!letra.isEmpty())
        teclas.insert(letra.toString());
}

/// Not of a window that another one owns.
bool es_de(const QWidget& ventana, const QObject& cosa)
{
    const auto* donde = qobject_cast<const QWidget*>(cosa.parent());
    while (donde != nullptr && donde->windowType() == Qt::Popup) // a menu
        donde = donde->parentWidget();
    return donde != nullptr && donde->window() == &ventana;
}

/// What a window declares: letters of buttons, labels and menus, shortcuts, actions.
Teclas de_la_ventana(const QWidget& ventana)
{
    Teclas teclas;
    for (const auto* boton : ventana.findChildren<QAbstractButton*>())
        if (boton->window() == &ventana)
            agrega_letra(teclas, boton->text());
    for (const auto* rotulo : ventana.findChildren<QLabel*>())
        if (rotulo->buddy() != nullptr && rotulo->window() == &ventana)
            agrega_letra(teclas, rotulo->text());
    for (const auto* menus : ventana.findChildren<QMenuBar*>())
        for (const auto* menu : menus->actions())
            agrega_letra(teclas, menu->text());
    for (const auto* atajo : ventana.findChildren<QShortcut*>())
        if (es_de(ventana, *atajo))
            teclas.insert(en_el_teclado(atajo->key().toString()));
    for (const auto* accion : ventana.findChildren<QAction*>())
        if (!accion->shortcut().isEmpty() && es_de(ventana, *accion))
            for (const auto& tecla : accion->shortcuts())
                teclas.insert(en_el_teclado(tecla.toString()));
    return teclas;
}

/// Those that a source takes in its `keyPressEvent`.
Teclas de_la_fuente(const QString& fichero)
{
    static const QRegularExpression funcion(QStringLiteral(R"(Qt::Key_(F\d+)\b)"));
    Teclas teclas;
    for (auto una = funcion.globalMatch(lee_fuente(fichero)); una.hasNext();)
        teclas.insert(una.next().captured(1));
    return teclas;
}

/// The first cells of the table below a heading of the page of keys.
Teclas del_manual(const QString& titulo)
{
    static const QRegularExpression fila(
        QStringLiteral(R"(^\| ([^|]+) \|)"), QRegularExpression::MultilineOption);
    const auto apartados = lee_fuente(QStringLiteral("docs/manual/teclas.md")).split(QStringLiteral("\n## "));
    Teclas teclas;
    for (const auto& apartado : apartados)
        if (apartado.startsWith(titulo + u'\n'))
            for (auto una = fila.globalMatch(apartado); una.hasNext();)
                for (const auto& tecla : una.next().captured(1).split(QStringLiteral(", ")))
                    if (tecla != QLatin1String("Tecla"))
                        teclas.insert(tecla);
    return teclas;
}

}

class TeclasDelManual_Test : public QObject {
    Q_OBJECT
private slots:

    void initTestCase()
    {
        m_opciones.datos = m_carpeta / "datos";
        m_opciones.usuario = 2;
        bases::crea_bases(m_opciones.lugar(), false);
        m_sesion = std::make_unique<app::Sesion>(m_opciones);
        m_avisos = std::make_shared<MsgBoxDePrueba>();
        modComun::set_MsgBox(m_avisos);
    }
    void cleanupTestCase()
    {
        m_sesion.reset();
        vacia_contexto();
    }

    void each_window_has_the_keys_that_are_told_of_it()
    {
        app::frmPrincipal principal(*m_sesion, m_opciones);
        principal.show();
        compara(QStringLiteral("Ventana principal"), principal, {});
        control<QAction>(principal, "mnuReclamaciones").trigger();
        compara(QStringLiteral("Reclamaciones a Proveedores"), control(principal, "frmCompras_Atipicos"),
            QStringLiteral("editor/frmCompras_Atipicos.cpp"));
        control<QAction>(principal, "mnuVisor").trigger();
        compara(QStringLiteral("Visor de Atípicos"), control(principal, "frmCompras_Atipicos_Visor"),
            QStringLiteral("browser/frmCompras_Atipicos_Visor.cpp"));
    }

    void each_dialog_has_the_keys_that_are_told_of_it()
    {
        const app::frmSesion sesion(m_sesion->catalogos.empresas(), m_sesion->catalogos.usuarios());
        compara(QStringLiteral("Empresa y usuario"), sesion, {});
        const app::frmEmpresa empresa;
        compara(QStringLiteral("Elegir empresa"), empresa, {});
        const app::frmDatosEmpresa datos;
        compara(QStringLiteral("Datos de la empresa"), datos, {});
        app::frmFichas fichas(app::origen_de_proveedores({ m_sesion->bases, 1, 1 }));
        compara(QStringLiteral("Proveedores y artículos"), fichas, {});
        const auto proveedores = app::origen_de_proveedores({ m_sesion->bases, 1, 1 });
        const app::frmFicha proveedor(*proveedores, 0);
        compara(QStringLiteral("Ficha de un proveedor"), proveedor, {});
        const auto articulos = app::origen_de_articulos({ m_sesion->bases, 1, 1 });
        const app::frmFicha articulo(*articulos, 0);
        compara(QStringLiteral("Ficha de un artículo"), articulo, {});
        const app::frmAnular anular(*m_sesion, m_opciones.lugar());
        compara(QStringLiteral("Anular asientos sin cargo"), anular, {});
        const app::frmHistorial historial(*m_sesion, m_opciones.lugar());
        compara(QStringLiteral("Historial de un cargo"), historial,
            QStringLiteral("host/ventanas/frmHistorial.cpp"));
        const app::frmResumen resumen(*m_sesion, m_opciones.lugar());
        compara(QStringLiteral("Resumen de cargos"), resumen, QStringLiteral("host/ventanas/frmResumen.cpp"));
        const frmEditor_Comentarios comentario;
        compara(QStringLiteral("Editor de Comentarios"), comentario,
            QStringLiteral("editor/frmEditor_Comentarios.cpp"));
        const frmCompras_Atipicos_Contabilizar previsiones(
            { Currency::de_entero(107), 104, Date::de_dia(2026, 10, 9).value_or(Date{}), 1, true });
        compara(QStringLiteral("Previsiones de Pago"), previsiones,
            QStringLiteral("posting/frmCompras_Atipicos_Contabilizar.cpp"));
        const ListaSeleccion lista(QStringLiteral("Buscar"), {}, {});
        compara(QStringLiteral("Buscar por el nombre"), lista, {});
        const frmImpresora impresora;
        compara(
            QStringLiteral("Destino e impresora"), impresora, QStringLiteral("printing/frmImpresora.cpp"));
        VisorReport documento;
        // Matched by QKeySequence, and by a modifier; which of the last two closes it is the desktop's
        // choice.
        const Teclas de_mano{ QStringLiteral("Ctrl+F"), QStringLiteral("Mayús+F3"), QStringLiteral("Ctrl+W"),
            QStringLiteral("Ctrl+F4") };
        compara(QStringLiteral("Visor del documento"), documento, QStringLiteral("controls/VisorReport.cpp"),
            de_mano);
        const app::frmManual manual;
        compara(QStringLiteral("Manual"), manual, {});
    }

    void what_fields_do_with_keys_is_told_once()
    {
        const auto teclas = del_manual(QStringLiteral("En cualquier campo"));
        for (const auto& tecla : de_la_fuente(QStringLiteral("controls/Selector.cpp")))
            QVERIFY2(teclas.contains(tecla), qPrintable(tecla));
        QVERIFY(teclas.contains(QStringLiteral("Intro")));
    }

private:
    /// `de_mano`: keys that neither the window nor the source tells by a name that can be read.
    static void compara(
        const QString& titulo, const QWidget& ventana, const QString& fuente, const Teclas& de_mano = {})
    {
        // Told by what has the focus, or by every dialog; they are tried in the tests of each window.
        const Teclas de_campos{ QStringLiteral("Intro"), QStringLiteral("Ctrl+Intro"),
            QStringLiteral("Esc") };
        auto debidas = de_la_ventana(ventana) + de_la_fuente(fuente) + de_mano;
        debidas.remove(QStringLiteral("F1")); // the manual's own, wherever it is pressed
        const auto dichas = del_manual(titulo);
        QVERIFY2(!debidas.isEmpty() && !dichas.isEmpty(), qPrintable(titulo));
        QVERIFY2((debidas - dichas).isEmpty(),
            qPrintable(titulo + QStringLiteral(": not told ") + (debidas - dichas).values().join(u' ')));
        const auto sobran = dichas - debidas - de_campos;
        QVERIFY2(sobran.isEmpty(),
            qPrintable(titulo + QStringLiteral(": there is no ") + sobran.values().join(u' ')));
    }

    CarpetaTemporal m_carpeta;
    app::OpcionesComunes m_opciones;
    std::unique_ptr<app::Sesion> m_sesion;
    std::shared_ptr<MsgBoxDePrueba> m_avisos;
};

ATIPICOS_PRUEBA_VENTANAS(TeclasDelManual_Test)
#include "TeclasDelManual_test.moc"
