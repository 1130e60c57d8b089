#pragma once

#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/RecuperaBorrador.hpp"
#include "host/ventanas/UltimaBusqueda.hpp"

#include <QMainWindow>

class QActionGroup;

namespace atipicos::app {

class PanelBorradores;

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
    void changeEvent(QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;

private:
    void hace_menus();
    void hace_menu_ver();
    void hace_estado(const OpcionesComunes& opciones);
    void hace_portada();
    void abre_editor();
    void abre_visor();
    void muestra_teclas();
    [[nodiscard]] QWidget* abre_editor_vacio();
    [[nodiscard]] QWidget* abre_visor_en(std::int16_t ejercicio, std::int16_t almacen);
    void recupera(const std::filesystem::path& fichero);
    void descarta(const std::filesystem::path& fichero);
    [[nodiscard]] bool queda_borrador() const;

    Sesion& m_sesion;
    UltimaBusqueda m_ultima_busqueda;
    frmclsCompras_Atipicos m_editor;
    frmclsComprasAtipVisor m_visor;
    RecuperaBorrador m_recuperacion;
    PanelBorradores* m_borradores = nullptr;
};

} // namespace atipicos::app
