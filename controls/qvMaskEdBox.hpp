#pragma once

#include "runtime/Date.hpp"

#include <QLineEdit>

#include <optional>

class QCalendarWidget;

namespace atipicos {

/// A box for a day, mask "##/##/####". Up and Down move one day on or back (from today when the box holds no
/// day), Alt+Down opens a calendar, "/" ends day or month after one digit, and
/// a pasted "1/2/2026" is padded.
class qvMaskEdBox : public QLineEdit {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvMaskEdBox)
public:
    explicit qvMaskEdBox(QWidget* parent = nullptr);

    [[nodiscard]] std::optional<Date> Fecha() const; ///< nothing while the text is no day of the calendar
    void set_Fecha(Date fecha); ///< no date empties the box
    void Limpiar(); ///< ready to be typed into

    /// Why the box holds no day, as a sentence; empty when it holds one.
    [[nodiscard]] QString Falta() const;

signals:
    void Intro(); ///< Enter was pressed, whatever is in the box

protected:
    void focusInEvent(QFocusEvent* evento) override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void abre_calendario();
    void mueve(int dias);
    void rellena_partes();
    [[nodiscard]] bool termina_parte();
    [[nodiscard]] bool vacia() const; ///< not a digit in it
};

} // namespace atipicos
