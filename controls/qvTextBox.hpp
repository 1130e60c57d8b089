#pragma once

#include "runtime/Currency.hpp"

#include <QLineEdit>

namespace atipicos {

/// A box for a number with decimal comma. The point of either keyboard types the comma; a minus typed
/// anywhere changes the sign. A number can be pasted as people write it: with points between thousands, with
/// a decimal point where it can be nothing else ("1234.56"), with a sign of euros. What cannot be read is
/// refused as a whole, with a word. Left, the box shows the number with points between thousands; entered,
/// without them and all selected.
class qvTextBox : public QLineEdit {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvTextBox)
public:
    explicit qvTextBox(QWidget* parent = nullptr);

    /// At least `mostrados` decimals are shown, and up to `admitidos` can be typed (both 0 to 4).
    void set_Decimales(int mostrados, int admitidos);

    [[nodiscard]] Currency Valor() const; ///< 0 while nothing, or nothing readable, is in it
    void set_Valor(Currency valor);

signals:
    void Change(); ///< typing has changed the value
    void Intro(); ///< Enter was pressed, whatever is in the box

protected:
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    [[nodiscard]] bool cambiado() const;
    void cambia_signo();
    void da_forma();
    void quita_puntos();
    void rechazado();
    void tecleado();
    [[nodiscard]] QString texto_de(Currency valor) const;

    int m_mostrados = 2;
    int m_admitidos = 2;
    QString m_mostrado; ///< text with which the box was entered
    QString m_al_entrar; ///< the same without points
    Currency m_ultimo; ///< value of the last `Change`
};

} // namespace atipicos
