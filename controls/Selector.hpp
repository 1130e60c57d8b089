#pragma once

#include "controls/FuenteFichas.hpp"

#include <QWidget>

#include <cstdint>
#include <memory>

class QLineEdit;
class QToolButton;

namespace atipicos {

/// What the pickers have in common: a box for the code, a button, and the name that goes with the code.
///
/// Enter looks the code up and tells `Intro`; so does leaving the box, silently. F2, the button or a letter
/// in place of a code opens a list to search by name. A code that does not exist is shown as such beside the
/// box. A failing lookup shows the component's error box.
class Selector : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Selector)
public:
    /// Looks up the code in the box and shows its name. False when there is no code or nothing of that code.
    bool Buscar();

    void Completa(); ///< the same where a code has been typed and not looked up yet

    [[nodiscard]] QString Nombre() const; ///< as shown; empty when nothing was found
    [[nodiscard]] bool vacio() const; ///< no code in the box

    /// Something is chosen: the code was found, or a program set it.
    [[nodiscard]] bool Elegido() const noexcept { return m_elegido; }

    void set_SoloLectura(bool solo_lectura); ///< shows code and name; nothing can be typed or picked
    void set_SinNombre(); ///< the form shows the name elsewhere; the box takes what width the picker has
    void set_NombreAccesible(const QString& nombre); ///< what a screen reader calls the box

signals:
    void Intro(); ///< Enter was pressed, or a row of the list was chosen; the code has been looked up
    void Mirado(const QString& falta); ///< code or name have changed; `falta`: that the code does not exist

protected:
    /// `que`: what is picked, as in "el almacén"; a code above `maximo` cannot be typed.
    Selector(const QString& que, std::int64_t maximo, QWidget* parent);

    void set_Fuente(std::shared_ptr<const FuenteFichas> fuente);
    [[nodiscard]] QString codigo() const;
    void set_codigo(const QString& codigo); ///< as a program sets it: not looked up, the name empty

    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;

private:
    void abre_lista(const QString& buscado);
    [[nodiscard]] bool empieza_un_nombre(const QKeyEvent& tecla) const;
    [[nodiscard]] bool entra_con_su_codigo(const QFocusEvent& entrada) const;
    [[nodiscard]] QString elige_en_lista(const QString& buscado);
    void muestra(const QString& nombre, bool falta);
    void escribe_nombre();
    void pide_ancho();
    [[nodiscard]] int ancho_de(const QString& texto) const;

    QString m_que;
    std::shared_ptr<const FuenteFichas> m_fuente;
    QLineEdit* m_codigo;
    QToolButton* m_boton;
    QLineEdit* m_etiqueta; ///< the name, not to be typed into
    QString m_nombre;
    QString m_escrito; ///< beside the code, if there is room for it: the name, or that there is none
    bool m_falta = false; ///< the code does not exist
    bool m_elegido = false;
    bool m_pendiente = false; ///< typed and not yet looked up
    bool m_puesto = false; ///< the code is the program's, and nobody has typed since
};

/// A picker whose code is a whole number.
class SelectorNumerico : public Selector {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SelectorNumerico)
protected:
    using Selector::Selector;

    [[nodiscard]] std::int32_t numero() const; ///< 0 for none, and for what does not fit
    [[nodiscard]] std::int16_t numero_corto() const; ///< the same in 16 bits
    void set_numero(std::int32_t numero); ///< 0 empties the box
};

} // namespace atipicos
