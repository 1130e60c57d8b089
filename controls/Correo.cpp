#include "controls/Correo.hpp"

#include "controls/Texto.hpp"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>
#include <optional>

namespace atipicos::Correo {

namespace {

    constexpr int dias_guardado = 7;
    /// Some mail programs go on in the foreground: who has said nothing by then has taken the message.
    constexpr int espera_a_que_falle = 4'000; ///< milliseconds
    constexpr int falta_el_programa = 3; ///< as xdg-email ends
    const QString entregador = QStringLiteral("xdg-email");

    [[noreturn]] void no_se_envia(const QString& motivo, Donde donde)
    {
        throw Error(1000, "QVORComprasAtip:Correo",
            de_qt(QStringLiteral("No se puede enviar por correo: ") + motivo), donde);
    }

    QString o_en_pdf()
    {
        return QStringLiteral(" Mientras tanto, guárdelo como PDF y adjúntelo usted a un mensaje.");
    }

    QDir carpeta_de_salida(Donde donde)
    {
        QDir carpeta(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
            + QStringLiteral("/atipicos/correo"));
        if (!carpeta.mkpath(QStringLiteral(".")))
            no_se_envia(QStringLiteral("no se puede escribir en «%1».").arg(carpeta.path()), donde);
        return carpeta;
    }

    void barre(const QDir& carpeta)
    {
        const auto limite = QDateTime::currentDateTime().addDays(-dias_guardado);
        for (const auto& una : carpeta.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
            if (una.lastModified() < limite)
                QDir(una.filePath()).removeRecursively();
    }

    /// How it ended; nothing while it runs.
    struct Final {
        bool arranco = true;
        std::optional<int> estado;
    };

    /// Windows go on being drawn, and nobody can press anything meanwhile.
    Final espera(QProcess& proceso)
    {
        Final final;
        QEventLoop bucle;
        QObject::connect(&proceso, &QProcess::finished, &bucle, [&](int estado) {
            final.estado = estado;
            bucle.quit();
        });
        QObject::connect(&proceso, &QProcess::errorOccurred, &bucle, [&](QProcess::ProcessError error) {
            final.arranco = error != QProcess::FailedToStart;
            bucle.quit();
        });
        QTimer::singleShot(espera_a_que_falle, &bucle, &QEventLoop::quit);
        bucle.exec(QEventLoop::ExcludeUserInputEvents);
        return final;
    }

}

QString fichero_nuevo(const QString& nombre, Donde donde)
{
    const auto carpeta = carpeta_de_salida(donde);
    barre(carpeta);
    QTemporaryDir propia(carpeta.filePath(QStringLiteral("XXXXXX")));
    if (!propia.isValid())
        no_se_envia(QStringLiteral("no se puede escribir en «%1».").arg(carpeta.path()), donde);
    propia.setAutoRemove(false);
    return propia.filePath(QString(nombre).replace(u'/', u'-') + QStringLiteral(".pdf"));
}

void entrega(const QString& fichero, const QString& asunto, Donde donde)
{
    const auto programa = QStandardPaths::findExecutable(entregador);
    if (programa.isEmpty())
        no_se_envia(
            QStringLiteral("en este equipo no está la orden «xdg-email». Instale el paquete xdg-utils.")
                + o_en_pdf(),
            donde);
    // One that goes on is not ended with this program, nor waited for.
    auto proceso = std::make_unique<QProcess>();
    proceso->setStandardInputFile(QProcess::nullDevice());
    proceso->setStandardOutputFile(QProcess::nullDevice());
    proceso->start(programa,
        { QStringLiteral("--utf8"), QStringLiteral("--subject"), asunto, QStringLiteral("--attach"),
            fichero });
    const auto final = espera(*proceso);
    if (final.arranco && !final.estado) {
        auto* queda = proceso.release();
        QObject::connect(queda, &QProcess::finished, queda, &QObject::deleteLater);
        return;
    }
    if (!final.arranco || final.estado == falta_el_programa)
        no_se_envia(
            QStringLiteral("no hay ningún programa de correo elegido. Instale uno, o elija el suyo en las "
                           "preferencias del escritorio (aplicaciones predeterminadas).")
                + o_en_pdf(),
            donde);
    if (*final.estado != 0)
        no_se_envia(
            QStringLiteral("el programa de correo no ha aceptado el mensaje (xdg-email termina con %1).")
                    .arg(*final.estado)
                + o_en_pdf(),
            donde);
}

} // namespace atipicos::Correo
