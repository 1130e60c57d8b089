#pragma once

#include <QPlainTextEdit>

namespace atipicos {

/// A text box of several lines that Tab leaves.
class qvTextoLargo : public QPlainTextEdit {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvTextoLargo)
public:
    explicit qvTextoLargo(QWidget* parent = nullptr);

    /// The text, with line breaks as the one that was set has them ("\r\n" or "\n"). One that nobody has
    /// touched is handed back letter by letter.
    [[nodiscard]] QString Texto() const;
    void set_Texto(const QString& texto);

    void set_IntroAvanza(bool avanza); ///< Enter moves on to the next field, and Ctrl+Enter breaks the line
    void set_Mayusculas(bool mayusculas); ///< what is typed becomes upper case; what is pasted stays

protected:
    void inputMethodEvent(QInputMethodEvent* evento) override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    QString m_puesto; ///< text that was set
    QString m_mostrado; ///< the same as the box gives it back
    bool m_intro_avanza = false;
    bool m_mayusculas = false;
};

} // namespace atipicos
