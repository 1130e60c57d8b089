// Windows that live through the end of the server that is written to, and its standby's taking its place.
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/ReintentoEnVentana.hpp"
#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Intermediario.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/ServidorConReserva.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QLabel>
#include <QPointer>
#include <QSettings>
#include <QTimer>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The main window on a company of two servers, with the line kept as the program keeps it.
struct EscenaDelRelevo {
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<Parte> parte = std::make_shared<Parte>();
    QPointer<app::frmPrincipal> abierta;
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmPrincipal> ventana;

    explicit EscenaDelRelevo(const std::string& direccion)
    {
        opciones.conexion = direccion;
        opciones.usuario = 2;
        bases::OpcionesBases bases{ .avisa_linea = [this](sql::Linea que) {
            if (abierta)
                abierta->muestra_linea(que);
        } };
        bases.espera = std::chrono::milliseconds(900);
        app::espera_en_ventana(bases);
        sesion = std::make_unique<app::Sesion>(opciones, bases);
        modComun::set_MsgBox(avisos);
        modComun::set_ConexionBexmor(
            std::make_shared<ConexionEspia>("contabilidad", sesion->bases.bexmor, parte));
        ventana = std::make_unique<app::frmPrincipal>(*sesion, opciones);
        abierta = ventana.get();
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the main window is not active");
    }
    EscenaDelRelevo(const EscenaDelRelevo&) = delete;
    EscenaDelRelevo& operator=(const EscenaDelRelevo&) = delete;
    ~EscenaDelRelevo() { vacia_contexto(); }

    [[nodiscard]] QWidget& editor() const { return control<QWidget>(*ventana, "frmCompras_Atipicos"); }
    [[nodiscard]] QString linea() const { return control<QLabel>(*ventana, "lblConexion").text(); }

    /// A charge of one line, in the editor.
    void teclea_cargo(const char* observaciones) const
    {
        ventana->activateWindow();
        control<>(*ventana, "cmdReclamaciones").setFocus();
        intro();
        QTRY_COMPARE(foco(), QStringLiteral("txtAlmacen"));
        teclea("3");
        intro();
        teclea("106");
        intro(2);
        teclea(observaciones);
        intro(2);
        teclea("1003");
        intro(3);
        teclea("12,485");
        intro();
        teclea("9,75");
        intro(2);
        QCOMPARE(control<VSFlexGrid>(editor(), "vsCargos").Rows(), 2);
    }
    void acepta() const
    {
        const AlAbrirse contabilizar([](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
        clic(editor(), "cmdAceptar");
    }
    void acepta_y_no_imprime() const
    {
        const AlAbrirse impresora([](QWidget& dialogo) { clic(dialogo, "cmdCancelar"); }, "frmImpresora");
        acepta();
    }
    void antes_de_confirmar(std::function<void()> que) const
    {
        parte->antes = [this, que = std::move(que)](const std::string& dicha) {
            if (dicha != "contabilidad COMMIT")
                return;
            const auto una_vez = std::exchange(parte->antes, nullptr);
            que();
        };
    }
    [[nodiscard]] std::vector<std::string> textos() const
    {
        std::vector<std::string> dichos;
        for (const auto& uno : avisos->dichos)
            dichos.push_back(uno.texto);
        avisos->dichos.clear();
        return dichos;
    }
};

/// Does `que` with each notice of a lost line that is shown, a moment after it is there; `con_motivo`: once
/// it says why, which it does when all servers have refused.
class EnCadaAviso {
public:
    explicit EnCadaAviso(std::function<void(QWidget&)> que, bool con_motivo = false)
        : m_que(std::move(que))
    {
        m_reloj.setInterval(5);
        QObject::connect(&m_reloj, &QTimer::timeout, &m_reloj, [this, con_motivo] {
            for (QWidget* una : QApplication::topLevelWidgets())
                if (una->objectName() == QLatin1String("frmReintento") && una->isVisible() && m_ultima != una
                    && (!con_motivo || !control<QLabel>(*una, "lblMotivo").text().isEmpty())) {
                    m_ultima = una;
                    ++m_cuantos;
                    m_que(*una);
                    return;
                }
        });
        m_reloj.start();
    }
    [[nodiscard]] int cuantos() const noexcept { return m_cuantos; }

private:
    std::function<void(QWidget&)> m_que;
    QTimer m_reloj;
    QPointer<QWidget> m_ultima;
    int m_cuantos = 0;
};

const char* const no_se_guardo = "Se ha vuelto a conectar y se ha comprobado: no se ha guardado nada. Repita";

}

class RelevoEnVentana_Test : public QObject {
    Q_OBJECT

    std::unique_ptr<ServidorConReserva> m_servidor;

    [[nodiscard]] int guardados(const std::string& observaciones) const
    {
        return std::atoi(m_servidor
                             ->psql("empresa",
                                 "SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos WHERE observ = '"
                                     + observaciones + "'")
                             .c_str());
    }
    /// Of whoever is written to now, through `en_medio`, and of its standby.
    [[nodiscard]] std::string por(const Intermediario& en_medio) const
    {
        return "postgresql://atipicos@/empresa?host=127.0.0.1," + m_servidor->carpeta_de_la_reserva().string()
            + "&port=" + std::to_string(en_medio.puerto())
            + ",5432&sslmode=disable&gssencmode=disable&target_session_attrs=read-write";
    }

private slots:
    void initTestCase()
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            QSKIP(falta.c_str());
        m_servidor = std::make_unique<ServidorConReserva>();
        m_servidor->crea_base("empresa");
        bases::crea_bases(bases::Lugar::de_conexion(m_servidor->direccion("empresa")), false);
    }
    void init() { QSettings().clear(); }

    void it_is_told_and_waited_for_and_the_save_goes_on_at_the_other_server()
    {
        const EscenaDelRelevo escena(m_servidor->direccion("empresa"));
        escena.teclea_cargo("Sigue en la reserva");
        m_servidor->mata();
        const EnCadaAviso aviso(
            [&](QWidget& dicho) {
                QVERIFY(
                    control<QLabel>(dicho, "lblPerdida").text().contains(QStringLiteral("120 s como mucho")));
                QVERIFY(control<QLabel>(dicho, "lblMotivo").text().startsWith(QStringLiteral("Motivo: ")));
                QVERIFY(escena.linea().startsWith(QStringLiteral("Conexión perdida a las ")));
                m_servidor->asciende();
                m_servidor->repone();
            },
            true);
        escena.acepta_y_no_imprime();
        QCOMPARE(aviso.cuantos(), 1);
        const auto dichos = escena.textos();
        QCOMPARE(dichos.size(), std::size_t{ 1 });
        QVERIFY(dichos.front().find(" generado correctamente.") != std::string::npos);
        QCOMPARE(guardados("Sigue en la reserva"), 1);
        QVERIFY(escena.linea().startsWith(QStringLiteral("Conexión reanudada a las ")));

        // Why its charges cannot be read may be long: the main window keeps to its width.
        const int ancho = escena.ventana->minimumSizeHint().width();
        control<QLabel>(*escena.ventana, "lblCargos").setText(QString(2'000, u'm'));
        QCOMPARE(escena.ventana->minimumSizeHint().width(), ancho);
    }

    void a_commit_that_the_other_server_has_not_is_told_and_keeps_what_was_keyed_in()
    {
        const EscenaDelRelevo escena(m_servidor->direccion("empresa"));
        escena.teclea_cargo("Se repite");
        escena.antes_de_confirmar([&] { m_servidor->mata(); });
        {
            const EnCadaAviso aviso([&](QWidget&) {
                m_servidor->asciende();
                m_servidor->repone();
            });
            escena.acepta();
            QCOMPARE(aviso.cuantos(), 1);
        }
        auto dichos = escena.textos();
        QCOMPARE(dichos.size(), std::size_t{ 1 });
        QVERIFY2(dichos.front().find(no_se_guardo) != std::string::npos, dichos.front().c_str());
        QCOMPARE(guardados("Se repite"), 0);
        QCOMPARE(control<VSFlexGrid>(escena.editor(), "vsCargos").Rows(), 2);
        QCOMPARE(control<QLabel>(escena.editor(), "lblTotal").text(), QStringLiteral("121,73"));
        escena.acepta_y_no_imprime();
        dichos = escena.textos();
        QCOMPARE(dichos.size(), std::size_t{ 1 });
        QVERIFY(dichos.front().find(" generado correctamente.") != std::string::npos);
        QCOMPARE(guardados("Se repite"), 1);
    }

    void a_commit_that_the_other_server_has_is_told_as_done_and_not_made_twice()
    {
        Intermediario en_medio(m_servidor->enchufe_del_primario());
        {
            const EscenaDelRelevo escena(por(en_medio));
            escena.teclea_cargo("Estaba guardado");
            escena.antes_de_confirmar(
                [&] { en_medio.pierde_la_proxima_respuesta([this] { m_servidor->mata(); }); });
            const EnCadaAviso aviso([&](QWidget&) {
                m_servidor->asciende();
                m_servidor->repone();
            });
            escena.acepta_y_no_imprime();
            QCOMPARE(aviso.cuantos(), 1);
            const auto dichos = escena.textos();
            QCOMPARE(dichos.size(), std::size_t{ 1 });
            QVERIFY(dichos.front().find(" generado correctamente.") != std::string::npos);
            QCOMPARE(control<VSFlexGrid>(escena.editor(), "vsCargos").Rows(), 1);
        }
        QCOMPARE(guardados("Estaba guardado"), 1);
    }

    void a_server_that_goes_silent_is_told_and_can_be_left()
    {
        Intermediario en_medio(m_servidor->enchufe_del_primario());
        {
            const EscenaDelRelevo escena(por(en_medio) + "&reintento=3");
            escena.teclea_cargo("Calla");
            control<>(escena.editor(), "txtProv").setFocus();
            en_medio.calla();
            int esperas = 0;
            QTimer reloj;
            reloj.setInterval(5);
            connect(&reloj, &QTimer::timeout, this, [&] {
                for (QWidget* una : QApplication::topLevelWidgets())
                    if (una->objectName() == QLatin1String("frmEspera") && una->isVisible()) {
                        ++esperas;
                        QTest::keyClick(una, Qt::Key_Escape);
                        return;
                    }
            });
            reloj.start();
            const EnCadaAviso aviso([](QWidget& dicho) { QTest::keyClick(&dicho, Qt::Key_Escape); });
            pulsa(Qt::Key_F2);
            QCOMPARE(esperas, 1);
            QCOMPARE(aviso.cuantos(), 1); // the line was cut, and could not be opened
            QCOMPARE(escena.textos().size(), std::size_t{ 1 });
            en_medio.calla(false);
            const AlAbrirse lista([](QWidget&) { pulsa(Qt::Key_Escape); }, "ListaSeleccion");
            pulsa(Qt::Key_F2);
            QVERIFY(escena.textos().empty());
        }
    }

    void whoever_gives_up_is_not_asked_again_by_the_same_order_but_by_the_next()
    {
        const EscenaDelRelevo escena(m_servidor->direccion("empresa") + "&reintento=2");
        escena.teclea_cargo("Se deja");
        m_servidor->mata();
        control<>(escena.editor(), "txtProv").setFocus();
        const auto busca_proveedor = [&] { // reads the list with all its columns, and then without
            pulsa(Qt::Key_F2);
            return escena.textos();
        };
        {
            const EnCadaAviso aviso([](QWidget& dicho) { QTest::keyClick(&dicho, Qt::Key_Escape); });
            for (int vez = 1; vez <= 2; ++vez) {
                const auto dichos = busca_proveedor();
                QCOMPARE(aviso.cuantos(), vez);
                QCOMPARE(dichos.size(), std::size_t{ 1 });
                QVERIFY(dichos.front().find("No se puede conectar con el servidor") != std::string::npos);
            }
        }
        const EnCadaAviso aviso([](QWidget&) {}); // and nobody ends it but the time
        QCOMPARE(busca_proveedor().size(), std::size_t{ 1 });
        QCOMPARE(aviso.cuantos(), 1);
        QVERIFY(escena.linea().startsWith(QStringLiteral("Conexión perdida a las ")));

        m_servidor->asciende();
        const AlAbrirse lista([](QWidget&) { pulsa(Qt::Key_Escape); }, "ListaSeleccion");
        QVERIFY(busca_proveedor().empty());
        QVERIFY(escena.linea().startsWith(QStringLiteral("Conexión reanudada a las ")));
        QCOMPARE(control<VSFlexGrid>(escena.editor(), "vsCargos").Rows(), 2);
    }
};

ATIPICOS_PRUEBA_VENTANAS(RelevoEnVentana_Test)
#include "RelevoEnVentana_test.moc"
