// Printing on a real spooler: a CUPS server of the test's own on loopback, whose printer is this program.
#include "controls/SalidaQt.hpp"

#include "controls/qvImpresoras.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QApplication>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using atipicos::Error;
using atipicos::qvImpresoras;
using atipicos::SalidaQt;

namespace {

class TresHojas final : public atipicos::Report {
public:
    std::string titulo() const override { return "Reclamación de prueba"; }
    std::size_t paginas() const override { return 3; }
    atipicos::Tamano tamano() const override { return atipicos::A4; }
    void pinta(std::size_t pagina, atipicos::Lienzo& lienzo) const override
    {
        lienzo.texto(2000, 3000, "Ñandú, 1.234,56 €, hoja " + std::to_string(pagina + 1),
            { "DejaVu Sans", 500, true }, 0);
    }
};

/// What a network printer is sent.
class ImpresoraDeRed {
public:
    ImpresoraDeRed()
    {
        if (!m_servidor.listen(QHostAddress::LocalHost))
            qFatal("no port for the printer");
        QObject::connect(&m_servidor, &QTcpServer::newConnection, &m_servidor, [this] {
            auto* conexion = m_servidor.nextPendingConnection();
            QObject::connect(
                conexion, &QTcpSocket::readyRead, conexion, [=, this] { m_recibido += conexion->readAll(); });
            QObject::connect(conexion, &QTcpSocket::disconnected, conexion, [this] { ++m_trabajos; });
        });
    }

    [[nodiscard]] QString uri() const
    {
        return QStringLiteral("socket://127.0.0.1:%1/?waiteof=false").arg(m_servidor.serverPort());
    }
    [[nodiscard]] int trabajos() const { return m_trabajos; }
    [[nodiscard]] const QByteArray& recibido() const { return m_recibido; }

private:
    QTcpServer m_servidor;
    QByteArray m_recibido;
    int m_trabajos = 0;
};

constexpr auto configuracion = R"(Listen %1
Browsing No
DefaultAuthType None
WebInterface No
<Location />
Allow all
</Location>
<Policy default>
<Limit All>
Allow all
</Limit>
</Policy>
)";

constexpr auto ficheros = R"(ServerRoot %1/root
RequestRoot %1/spool
CacheDir %1/cache
StateDir %1/run
TempDir %1/tmp
ErrorLog %1/error.log
AccessLog %1/access.log
PageLog %1/page.log
)";

/// A spooler of its own, as long as it lasts. Its folder has to be open to the user that CUPS prints as.
class Cups {
public:
    bool arranca()
    {
        namespace fs = std::filesystem;
        const fs::path ruta = m_carpeta.path().toStdString();
        fs::permissions(ruta, fs::perms::others_exec | fs::perms::group_exec, fs::perm_options::add);
        for (const auto* subcarpeta : { "root", "spool", "cache", "run", "tmp" })
            fs::create_directory(ruta / subcarpeta);
        const auto base = m_carpeta.path();
        const auto enchufe = base + QStringLiteral("/run/cups.sock");
        escribe(base + QStringLiteral("/root/cupsd.conf"), QString::fromUtf8(configuracion).arg(enchufe));
        escribe(base + QStringLiteral("/root/cups-files.conf"), QString::fromUtf8(ficheros).arg(base));
        qputenv("CUPS_SERVER", enchufe.toUtf8());
        m_proceso.start(QStringLiteral("/usr/sbin/cupsd"),
            { QStringLiteral("-f"), QStringLiteral("-c"), base + QStringLiteral("/root/cupsd.conf"),
                QStringLiteral("-s"), base + QStringLiteral("/root/cups-files.conf") });
        const auto atiende = [&] {
            QLocalSocket prueba;
            prueba.connectToServer(enchufe);
            return prueba.waitForConnected(100);
        };
        return m_proceso.waitForStarted(atipicos::pruebas::paciencia)
            && QTest::qWaitFor([&] { return atiende() || m_proceso.state() == QProcess::NotRunning; },
                atipicos::pruebas::paciencia)
            && m_proceso.state() == QProcess::Running;
    }
    Cups() = default;
    Cups(const Cups&) = delete;
    Cups& operator=(const Cups&) = delete;
    ~Cups()
    {
        m_proceso.terminate();
        m_proceso.waitForFinished(atipicos::pruebas::paciencia);
    }

    static bool ejecuta(const char* programa, const QStringList& argumentos)
    {
        return QProcess::execute(QString::fromUtf8(programa), argumentos) == 0;
    }

private:
    static void escribe(const QString& nombre, const QString& texto)
    {
        QFile fichero(nombre);
        if (!fichero.open(QIODevice::WriteOnly) || fichero.write(texto.toUtf8()) < 0)
            qFatal("cannot write the settings of CUPS");
    }

    QTemporaryDir m_carpeta; // without a blank in its name, which the settings could not say
    QProcess m_proceso;
};

}

class SalidaQt_Test : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        if (!QFile::exists(QStringLiteral("/usr/sbin/cupsd")) || geteuid() != 0)
            QSKIP("a CUPS server of its own needs the package cups and root");
        QVERIFY(m_cups.arranca());
        for (const auto* nombre : { "Laser", "Tinta" })
            QVERIFY(Cups::ejecuta("lpadmin",
                { QStringLiteral("-p"), QString::fromUtf8(nombre), QStringLiteral("-E"), QStringLiteral("-v"),
                    m_impresora.uri() }));
        QVERIFY(Cups::ejecuta("lpadmin", { QStringLiteral("-d"), QStringLiteral("Tinta") }));
    }

    void the_combo_lists_the_printers_of_the_system_and_chooses_the_default_one()
    {
        qvImpresoras combo;
        combo.Prepara();
        QCOMPARE(combo.count(), 2);
        QCOMPARE(combo.Nombre(), std::string("Tinta"));
        combo.set_Nombre("Laser");
        QCOMPARE(combo.Nombre(), std::string("Laser"));
    }

    void a_report_reaches_the_printer_whole()
    {
        SalidaQt([](const auto&) {}).imprime(TresHojas(), "Laser");
        QTRY_COMPARE(m_impresora.trabajos(), 1);
        QVERIFY(m_impresora.recibido().startsWith("%PDF-"));
        const atipicos::pruebas::CarpetaTemporal carpeta;
        const auto nombre = QString::fromStdString((carpeta / "impreso.pdf").string());
        QFile fichero(nombre);
        QVERIFY(fichero.open(QIODevice::WriteOnly));
        fichero.write(m_impresora.recibido());
        fichero.close();
        QProcess texto;
        texto.start(QStringLiteral("pdftotext"), { nombre, QStringLiteral("-") });
        QVERIFY(texto.waitForFinished(atipicos::pruebas::paciencia));
        const auto leido = QString::fromUtf8(texto.readAllStandardOutput());
        for (int hoja = 1; hoja <= 3; ++hoja)
            QVERIFY(leido.contains(QStringLiteral("Ñandú, 1.234,56 €, hoja %1\n").arg(hoja)));
    }

    void a_printer_that_is_gone_is_told_and_nothing_is_printed()
    {
        QVERIFY(Cups::ejecuta("lpadmin", { QStringLiteral("-x"), QStringLiteral("Laser") }));
        try {
            SalidaQt([](const auto&) {}).imprime(TresHojas(), "Laser");
            QFAIL("no error was raised");
        } catch (const Error& error) {
            QCOMPARE(error.descripcion(), std::string("La impresora «Laser» no está en este sistema."));
        }
        QTest::qWait(500);
        QCOMPARE(m_impresora.trabajos(), 1); // the one of before
    }

private:
    ImpresoraDeRed m_impresora;
    Cups m_cups;
};

ATIPICOS_PRUEBA_VENTANAS(SalidaQt_Test)
#include "SalidaQt_test.moc"
