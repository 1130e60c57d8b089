#pragma once

#include <QIdentityProxyModel>

class QFileDialog;

namespace atipicos {

/// The files that a file dialog lists, with kinds, sizes, days and headings in Spanish, whatever the
/// language of the system is: Qt takes some of them from there and leaves others in English.
class FicherosEnCastellano final : public QIdentityProxyModel {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FicherosEnCastellano)
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    /// For Qt's own dialog; the system's speaks the language of the system.
    static void pon(QFileDialog& dialogo);

    [[nodiscard]] QVariant data(const QModelIndex& celda, int papel = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(
        int columna, Qt::Orientation sentido, int papel = Qt::DisplayRole) const override;
};

} // namespace atipicos
