#pragma once

#include <QWidget>

#include <cstdint>

class QLabel;
class QToolButton;

namespace atipicos {

class qvAviso;

/// Above the entry row of the editor: which line it changes and the way out of that, what is wrong with its
/// article, and how the row is accepted.
class frmCompras_Atipicos_Pista final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCompras_Atipicos_Pista)
public:
    explicit frmCompras_Atipicos_Pista(QWidget* parent = nullptr);

    void set_Linea(std::int32_t linea); ///< that is being changed, from 1; 0: a new one is keyed in
    void set_Aviso(const QString& aviso); ///< what is wrong with the article; empty: nothing

signals:
    void Dejar(); ///< the change is to be given up

private:
    QLabel* m_cambiando;
    QToolButton* m_dejar;
    qvAviso* m_aviso;
    QLabel* m_pista;
};

} // namespace atipicos
