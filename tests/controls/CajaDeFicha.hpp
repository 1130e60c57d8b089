#pragma once

#include "controls/ListaSeleccion.hpp"
#include "controls/qvAlmacen.hpp"
#include "controls/qvProveedor.hpp"
#include "tests/controls/Ventana.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Dialogo.hpp"
#include "tests/support/Paciencia.hpp"

#include <QSignalSpy>
#include <QToolButton>

namespace atipicos::pruebas {

/// A picker alone in a window, used by keys. Its company is that of a `Banco`.
template <class Picker> struct CajaDeFicha : Ventana<Picker> {
    using Ventana<Picker>::control;
    QSignalSpy intros{ control, &Selector::Intro };

    [[nodiscard]] QLineEdit& codigo() const
    {
        return *control->template findChild<QLineEdit*>(QStringLiteral("txtCodigo"));
    }
    /// What stands beside the code.
    [[nodiscard]] QString rotulo() const
    {
        return control->template findChild<QLineEdit*>(QStringLiteral("lblNombre"))->text();
    }
    [[nodiscard]] QToolButton& boton() const
    {
        return *control->template findChild<QToolButton*>(QStringLiteral("cmdBuscar"));
    }
    void teclea_e_intro(const char* texto)
    {
        this->teclea(QString::fromUtf8(texto));
        this->pulsa(Qt::Key_Return);
    }
    /// Opens the list with F2; `mientras` uses it.
    bool con_lista(const std::function<void(ListaSeleccion&)>& mientras)
    {
        const bool terminada = con_dialogo<ListaSeleccion>([this] { this->pulsa(Qt::Key_F2); }, mientras);
        this->activateWindow(); // without a window manager nobody else does
        return terminada && QTest::qWaitForWindowActive(this, paciencia);
    }
};

struct CajaDeProveedor : CajaDeFicha<qvProveedor> {
    CajaDeProveedor() { control->Prepara(modComun::EmpresaOrvalin(), modComun::ConexionOrvalin()); }
};

struct CajaDeAlmacen : CajaDeFicha<qvAlmacen> {
    CajaDeAlmacen() { control->Prepara(modComun::EmpresaOrvalin(), modComun::ConexionOrvalin()); }
};

inline std::function<void(ListaSeleccion&)> tecleando(const char* texto, Qt::Key final)
{
    return [texto, final](ListaSeleccion& lista) {
        teclea(lista.focusWidget(), QString::fromUtf8(texto));
        QTest::keyClick(lista.focusWidget(), final);
    };
}

/// From the next operation on nothing reaches the database.
inline void pierde_la_conexion(const Banco& banco)
{
    banco.parte->falla_en = banco.parte->dichas.size() + 1;
    banco.parte->conexion_perdida = true;
}

} // namespace atipicos::pruebas
