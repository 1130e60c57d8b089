#pragma once

#include "controls/Formulario.hpp"
#include "host/ventanas/OrigenDeFichas.hpp"

class QFormLayout;
class QLabel;

namespace atipicos::app {

/// A record of a supplier or an article, to be filled in. What is refused is told in the form, which stays
/// open.
class frmFicha final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFicha)
public:
    /// `codigo` 0: a new record, whose code can be changed. `origen` outlives the form.
    frmFicha(OrigenDeFichas& origen, int codigo, QWidget* parent = nullptr);

    [[nodiscard]] int Codigo() const; ///< as it stands in its box

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void hace_campos(QFormLayout& caja, const QStringList& valores, bool nueva);
    void hace_botones(QFormLayout& caja);
    void acepta();

    OrigenDeFichas& m_origen;
    std::vector<QWidget*> m_campos;
    QLabel* m_falta;
    bool m_nueva;
};

} // namespace atipicos::app
