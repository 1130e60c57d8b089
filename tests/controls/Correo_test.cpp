#include "controls/Correo.hpp"

#include "controls/SalidaQt.hpp"
#include "controls/Texto.hpp"
#include "tests/support/CorreoFingido.hpp"
#include "tests/support/Ventanas.hpp"

#include <QDateTime>
#include <QFile>
#include <QTest>

using namespace atipicos;
using pruebas::CorreoFingido;
namespace fs = std::filesystem;

namespace {

class ReportConDatos final : public Report {
public:
    std::string titulo() const override { return "Reclamación AT260009"; }
    std::string nombre_de_fichero() const override { return "AT26/0009-2026-3"; }
    std::string asunto() const override { return "Reclamación AT260009 de Ñandú & hijos"; }
    std::vector<Adjunto> adjuntos() const override
    {
        return { { "AT260009-2026-3.json", "application/json", "{ \"total\": 12.5 }" } };
    }
    std::size_t paginas() const override { return 2; }
    Tamano tamano() const override { return A4; }
    void pinta(std::size_t, Lienzo& lienzo) const override
    {
        lienzo.texto(2000, 3000, "Ñandú", { "DejaVu Sans", 500, false }, 0);
    }
};

void envia()
{
    SalidaQt([](const auto&) {}).envia(ReportConDatos());
}

QString error_al_enviar()
{
    try {
        envia();
    } catch (const Error& error) {
        return a_qt(error.descripcion());
    }
    return {};
}

}

class Correo_Test : public QObject {
    Q_OBJECT
private slots:
    void a_report_goes_to_the_mail_program_with_its_subject_in_a_file_that_stays()
    {
        const CorreoFingido correo;
        envia();
        const auto dado = correo.dado();
        QCOMPARE(dado.size(), std::size_t{ 5 });
        QCOMPARE(dado[0], std::string("--utf8"));
        QCOMPARE(dado[1], std::string("--subject"));
        QCOMPARE(dado[2], std::string("Reclamación AT260009 de Ñandú & hijos"));
        QCOMPARE(dado[3], std::string("--attach"));
        const fs::path fichero(dado[4]);
        QCOMPARE(fichero.filename().string(), std::string("AT26-0009-2026-3.pdf"));
        QVERIFY(fs::exists(fichero));
        QCOMPARE(fs::status(fichero.parent_path()).permissions(), fs::perms::owner_all);
        QVERIFY(correo.adjunto().starts_with("%PDF-1.6"));
        QVERIFY(correo.adjunto().find("/EmbeddedFile") != std::string::npos);
    }

    void what_was_sent_a_week_ago_goes_and_what_was_sent_yesterday_stays()
    {
        const CorreoFingido correo;
        for (const auto& [nombre, dias] : { std::pair{ "viejo", 8 }, { "reciente", 6 } }) {
            fs::create_directories(correo.guardados() / nombre);
            QFile(QString::fromStdString((correo.guardados() / nombre / "x.pdf").string()))
                .open(QIODevice::WriteOnly);
            fs::last_write_time(correo.guardados() / nombre,
                fs::file_time_type::clock::now() - std::chrono::hours(24 * dias));
        }
        envia();
        QVERIFY(!fs::exists(correo.guardados() / "viejo"));
        QVERIFY(fs::exists(correo.guardados() / "reciente/x.pdf"));
    }

    void without_a_mail_program_it_says_what_to_do()
    {
        {
            const CorreoFingido sin_orden(std::nullopt);
            QCOMPARE(error_al_enviar(),
                QStringLiteral("No se puede enviar por correo: en este equipo no está la orden «xdg-email». "
                               "Instale el paquete xdg-utils. Mientras tanto, guárdelo como PDF y adjúntelo "
                               "usted a un mensaje."));
        }
        {
            const CorreoFingido sin_programa(3);
            QVERIFY(error_al_enviar().startsWith(
                QStringLiteral("No se puede enviar por correo: no hay ningún programa de correo elegido. ")));
        }
        const CorreoFingido que_falla(4);
        QVERIFY(error_al_enviar().startsWith(
            QStringLiteral("No se puede enviar por correo: el programa de correo no ha aceptado el mensaje "
                           "(xdg-email termina con 4).")));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Correo_Test)
#include "Correo_test.moc"
