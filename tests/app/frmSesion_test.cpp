#include "host/ventanas/frmSesion.hpp"

#include "controls/Texto.hpp"
#include "host/sesion/Sesion.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/Ventanas.hpp"

#include <QComboBox>
#include <QSettings>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QStringList ofrecidos(QWidget& dialogo, const char* lista)
{
    const auto& combo = control<QComboBox>(dialogo, lista);
    QStringList textos;
    for (int i = 0; i < combo.count(); ++i)
        textos << combo.itemText(i);
    return textos;
}

/// As whom a session of the program works that is opened with what has been chosen.
std::int32_t quien_trabaja(const app::OpcionesComunes& elegida)
{
    const app::Sesion sesion(elegida);
    return sesion.empresa->Usuario();
}

}

class frmSesion_Test : public QObject {
    Q_OBJECT

    std::unique_ptr<ServidorPostgresql> m_servidor;

    [[nodiscard]] app::OpcionesVentana como(const char* login, std::int16_t empresa = 0) const
    {
        app::OpcionesVentana opciones;
        opciones.comunes.conexion = m_servidor->direccion("empresa", login);
        opciones.empresa_dada = empresa != 0;
        if (opciones.empresa_dada)
            opciones.comunes.empresa = empresa;
        return opciones;
    }

private slots:
    void initTestCase()
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            QSKIP(falta.c_str());
        m_servidor = std::make_unique<ServidorPostgresql>();
        m_servidor->crea_base("empresa");
        bases::crea_bases(bases::Lugar::de_conexion(m_servidor->direccion("empresa")), false);
        std::string dicho;
        QCOMPARE(m_servidor->guion(
                     "empresa", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0);
        m_servidor->psql("empresa",
            "CREATE ROLE ines LOGIN IN ROLE atipicos_puesto; CREATE ROLE nueva LOGIN IN ROLE atipicos_puesto;"
            "CREATE ROLE sara LOGIN IN ROLE atipicos_suplencia; CREATE ROLE luz LOGIN IN ROLE "
            "atipicos_consulta; INSERT INTO orvalin.accesos (login, usuario) VALUES ('ines', 3)");
    }
    void init() { QSettings().clear(); }
    void cleanup() { vacia_contexto(); }

    void a_login_that_may_not_act_for_others_is_offered_itself_alone()
    {
        QSettings().setValue(QStringLiteral("usuario"), 12); // of whoever sat here before
        std::optional<app::OpcionesComunes> elegida;
        QVERIFY(con_dialogo<app::frmSesion>([&] { elegida = app::elige_sesion(como("ines")); },
            [](app::frmSesion& dialogo) {
                QCOMPARE(ofrecidos(dialogo, "cboEmpresa").size(), 2);
                QCOMPARE(
                    ofrecidos(dialogo, "cboUsuario"), QStringList{ QStringLiteral("3  Candelaria Méndez") });
                control<QComboBox>(dialogo, "cboEmpresa").setFocus();
                pulsa(Qt::Key_Down);
                intro();
            }));
        QCOMPARE(elegida.value().empresa, std::int16_t{ 2 });
        QCOMPARE(elegida.value().usuario, 3);
        QCOMPARE(quien_trabaja(*elegida), 3);
    }

    void told_the_company_it_is_asked_nothing_and_works_as_itself()
    {
        const auto elegida = app::elige_sesion(como("ines", 2));
        QCOMPARE(elegida.value().empresa, std::int16_t{ 2 });
        QCOMPARE(quien_trabaja(*elegida), 3);
        auto por_otro = como("ines", 2);
        por_otro.comunes.usuario = 12;
        por_otro.usuario_dado = true;
        const auto rehusada = app::elige_sesion(por_otro);
        QVERIFY_THROWS_EXCEPTION(Error, quien_trabaja(rehusada.value()));
    }

    void who_may_act_for_others_and_who_only_looks_is_offered_everybody()
    {
        for (const char* login : { "sara", "luz" })
            QVERIFY(con_dialogo<app::frmSesion>([&] { static_cast<void>(app::elige_sesion(como(login, 1))); },
                [](app::frmSesion& dialogo) {
                    QCOMPARE(ofrecidos(dialogo, "cboUsuario").size(), 4);
                    pulsa(Qt::Key_Escape);
                }));
    }

    void a_login_of_which_nothing_was_said_is_offered_nobody_and_refused_with_what_to_do()
    {
        const auto elegida = app::elige_sesion(como("nueva", 1));
        try {
            static_cast<void>(quien_trabaja(elegida.value()));
            QFAIL("it was let in");
        } catch (const Error& error) {
            QVERIFY(a_qt(error.descripcion()).endsWith(QStringLiteral("atipicos accesos nueva N")));
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmSesion_Test)
#include "frmSesion_test.moc"
