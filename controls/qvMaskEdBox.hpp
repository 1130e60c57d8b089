#pragma once

#include "runtime/Date.hpp"

#include <QLineEdit>

#include <optional>

class QCalendarWidget;

namespace atipicos {

/// A box for a day, mask "##/##/####". Up and Down move one day on or back (from today when the box holds no
/// day), Alt+Down opens a calendar, "/" ends day or month after one digit, and
/// a pasted "1/2/2026" is padded. "h" is today; "+3" and "-3" count from the day in the box, and what is
/// typed in part ("15", "1511", "151126") is completed when Enter is pressed or the box is left. What is no
/// day then stays as it is, in the colour of what is wrong.
class qvMaskEdBox : public QLineEdit {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvMaskEdBox)
public:
    explicit qvMaskEdBox(QWidget* parent = nullptr);

    [[nodiscard]] std::optional<Date> Fecha() const; ///< nothing while the text is no day of the calendar
    void set_Fecha(Date fecha); ///< no date empties the box
    void Limpiar(); ///< ready to be typed into

    /// The day whose month and year complete what is typed, and from which an empty box counts; no date:
    /// today.
    void set_Partida(Date partida);
    void Completa(); ///< what is typed in part

    /// Why the box holds no day, as a sentence; empty when it holds one.
    [[nodiscard]] QString Falta() const;

signals:
    void Intro(); ///< Enter was pressed, whatever is in the box; it has been completed
    void Comprobada(
        const QString& falta); ///< the box was left holding no day, which `falta` says; empty: no more

protected:
    void changeEvent(QEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    void focusOutEvent(QFocusEvent* evento) override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void abre_calendario();
    [[nodiscard]] bool atajo(const QKeyEvent& tecla);
    void comprueba();
    [[nodiscard]] bool cuenta(const QKeyEvent& tecla);
    void empieza_a_contar(QChar signo);
    void marca(const QString& falta);
    void mueve(int dias);
    [[nodiscard]] Date partida() const;
    void rellena_partes();
    [[nodiscard]] bool termina_parte();
    [[nodiscard]] bool vacia() const; ///< not a digit in it

    Date m_partida;
    std::optional<Date> m_antes; ///< what was in the box when counting began
    bool m_contando = false; ///< "+3" is being typed, which the mask would not take
    QString m_falta; ///< what is marked as wrong
};

} // namespace atipicos
