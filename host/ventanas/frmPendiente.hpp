#pragma once

#include "controls/Formulario.hpp"

#include <QStringList>

#include <vector>

class QGridLayout;
class QLineEdit;
class QPushButton;

namespace atipicos {
class VSFlexGrid;
}

namespace atipicos::app {

/// What a list of things that need attention says.
struct ListaPendiente {
    struct Columna {
        QString titulo;
        int letras = 0; ///< wide
        bool a_la_derecha = false;
    };

    QString titulo;
    QString explicacion; ///< what these are, and what to do with them
    std::vector<Columna> columnas = {};
    std::vector<QStringList> filas = {};
    QStringList ordenes
        = {}; ///< the command that settles each row, or one for all of them; none: there is none
    bool se_abren = false; ///< the browser can be opened on a row
    bool se_anulan = false; ///< there is a window in which they are reversed
};

/// A list of what needs attention, with the command that settles it.
class frmPendiente final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPendiente)
public:
    explicit frmPendiente(ListaPendiente lista, QWidget* parent = nullptr);

    static constexpr int Anular = 2; ///< how it ends when they are to be reversed

    [[nodiscard]] int Elegida() const; ///< the row, from 0; below 0: none

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void hace_lista();
    void hace_orden(QGridLayout& caja);
    void hace_botones(QGridLayout& caja);
    void mira_elegida();

    ListaPendiente m_lista;
    VSFlexGrid* m_rejilla;
    QLineEdit* m_orden;
    QPushButton* m_abrir = nullptr;
};

} // namespace atipicos::app
