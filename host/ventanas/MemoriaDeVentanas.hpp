#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

class QFileDialog;
class QTableView;
class QWidget;

namespace atipicos::app {

/// Remembers, by watching the windows of the program, what a person has made of them: the size of each form,
/// the widths of the columns that were dragged, the folder of the last file. The forms themselves keep
/// nothing. Kept for each user on this machine.
class MemoriaDeVentanas final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MemoriaDeVentanas)
public:
    /// The property of a form whose size and columns depend on what it is opened with: it tells with what.
    static constexpr auto contenido = "contenido_recordado";

    explicit MemoriaDeVentanas(std::int32_t usuario, QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void se_abre(QWidget& ventana);
    void se_cierra(const QWidget& ventana) const;
    void recuerda_columnas(const QString& ventana, QTableView& rejilla);
    void pon_carpeta(QFileDialog& dialogo) const;

    QString m_grupo;
};

} // namespace atipicos::app
