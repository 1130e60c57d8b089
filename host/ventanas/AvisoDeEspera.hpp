#pragma once

#include <QDialog>
#include <QPointer>

namespace atipicos::app {

/// A small window over whichever the person works in, in the middle of an operation that waits for the
/// server: what it waits for, and a button that ends it. Nothing else takes keys and clicks meanwhile.
class AvisoDeEspera {
public:
    struct Textos {
        const char* nombre; ///< of the window, by which its page of the manual is found
        const char* titulo;
        const char* boton;
    };

    explicit AvisoDeEspera(const Textos& textos)
        : m_textos(textos)
    {
    }
    AvisoDeEspera(const AvisoDeEspera&) = delete;
    AvisoDeEspera& operator=(const AvisoDeEspera&) = delete;
    ~AvisoDeEspera() { quita(); }

    /// Shows it, or changes what it says: `que` is read aloud when it is new, the others are not; an empty
    /// one takes no room. All of it is shown, however long it is.
    void muestra(const QString& que, const QString& desde, const QString& motivo = {});
    /// Lets the person press the button for a moment; false when it was pressed, or the window is gone.
    [[nodiscard]] bool atiende() const;
    void quita();
    [[nodiscard]] bool abierto() const noexcept { return !m_ventana.isNull(); }

private:
    void abre();

    Textos m_textos;
    QPointer<QDialog> m_ventana;
};

} // namespace atipicos::app
