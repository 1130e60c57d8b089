#pragma once

#include "controls/Formulario.hpp"

namespace atipicos {

/// A form of the menu: loaded when it is shown, unloaded when it is closed, and shown again as new.
class FormularioCargable : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FormularioCargable)
public:
    /// `nombre` is how the error box of its loading calls it.
    FormularioCargable(const char* nombre, QWidget* parent);

    /// Loads the form, unless it is loaded, and shows it over `OwnerForm`; with `Modal` not 0 it returns when
    /// the form is closed. A form that is shown takes the new owner, and becomes modal when that is asked
    /// for; one that is modal already keeps its owner, because somebody waits for it, and comes to the front.
    /// Error 1002 when `OwnerForm` is no window: nothing is shown or loaded then.
    void Show(int Modal = 0, const Duena& OwnerForm = {});

public slots:
    void done(int resultado) override; ///< closing unloads the form
    void reject() override; ///< the close box

signals:
    void Descargado(); ///< the form has been unloaded

protected:
    virtual void Form_Load() = 0;
    virtual void Form_Unload() { }

private:
    const char* m_nombre;
    bool m_cargado = false;
};

} // namespace atipicos
