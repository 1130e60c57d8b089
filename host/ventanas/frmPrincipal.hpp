#pragma once

#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/UltimaBusqueda.hpp"

#include <QMainWindow>

class QActionGroup;

namespace atipicos::app {

/// The main window of the reference host: it opens the component's forms through their launchers and tells in
/// its status line who works where. It remembers its place and size.
class frmPrincipal final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPrincipal)
public:
    /// `sesion` outlives the window.
    frmPrincipal(Sesion& sesion, const OpcionesComunes& opciones, QWidget* parent = nullptr);

    /// Tells in the status line what has happened to the line to the server.
    void muestra_linea(sql::Linea que);

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    void hace_menus();
    void hace_menu_ver();
    void hace_estado(const OpcionesComunes& opciones);
    void hace_portada();
    void abre_editor();
    void abre_visor();
    void muestra_teclas();

    Sesion& m_sesion;
    UltimaBusqueda m_ultima_busqueda;
    frmclsCompras_Atipicos m_editor;
    frmclsComprasAtipVisor m_visor;
};

} // namespace atipicos::app
