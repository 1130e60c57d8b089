#pragma once

#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "host/panel/CargoResumido.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/HiloLector.hpp"
#include "host/ventanas/RecuperaBorrador.hpp"
#include "host/ventanas/UltimaBusqueda.hpp"

#include <QMainWindow>

#include <memory>
#include <optional>

class QMenu;
class QVBoxLayout;

namespace atipicos::app {

class CargosElegidos;
struct AmbitoDeFichas;
class OrigenDeFichas;
class PanelBorradores;
class PanelCargos;
class PanelCifras;
class PanelPendientes;

/// The main window of the reference host: the latest charges and a search for others, what this month and
/// this year come to, what needs attention, and the component's forms, opened through their launchers. It is
/// there at once and is filled afterwards by threads of its own. It remembers its place and size.
class frmPrincipal final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPrincipal)
public:
    /// `sesion` outlives the window.
    frmPrincipal(Sesion& sesion, const OpcionesComunes& opciones, QWidget* parent = nullptr);

    /// Tells in the status line what has happened to the line to the server.
    void muestra_linea(sql::Linea que);

    /// The place of the company that the person wants instead of this one; nothing: to leave.
    [[nodiscard]] std::optional<bases::Lugar> Siguiente() const { return m_siguiente; }

protected:
    void changeEvent(QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    void showEvent(QShowEvent* evento) override;

private:
    // Menus, bar and what they tell
    void hace_menus();
    void hace_menu_empresa();
    void hace_menu_compras();
    void hace_menu_elegidos(QMenu& menu);
    void hace_menu_ver();
    void hace_menu_ayuda();
    void hace_barra();
    void llena_recientes(QMenu& menu);
    void hace_estado(const OpcionesComunes& opciones);
    void muestra_acerca_de();

    // What stands in the window
    void hace_portada();
    void hace_derecha(QVBoxLayout& caja);
    void lee_cifras();
    void actualiza();

    // The windows that it opens
    void elige_otra();
    void cambia_a(const bases::Lugar& lugar);
    void abre_fichas(std::unique_ptr<OrigenDeFichas> (*origen)(AmbitoDeFichas));
    void anula_sueltos();
    void abre_editor();
    void abre_visor();
    void abre_cargo(const CargoResumido& cargo);
    /// Does something with the charges that are chosen in the list, and tells what has come of it.
    void con_elegidos(const char* etiqueta, QString (CargosElegidos::*que)(QWidget*) const);
    void abre_historial_del_elegido();
    void muestra_visor(const frmclsComprasAtipVisor::Busqueda& busqueda);
    void muestra_visor_de_nuevo(const frmclsComprasAtipVisor::Busqueda& busqueda);
    [[nodiscard]] QWidget* abre_editor_vacio();
    [[nodiscard]] QWidget* abre_visor_en(std::int16_t ejercicio, std::int16_t almacen);
    void recupera(const std::filesystem::path& fichero);
    void descarta(const std::filesystem::path& fichero);
    [[nodiscard]] bool queda_borrador() const;

    Sesion& m_sesion;
    bases::Lugar m_lugar;
    std::optional<bases::Lugar> m_siguiente;
    UltimaBusqueda m_ultima_busqueda;
    frmclsCompras_Atipicos m_editor;
    frmclsComprasAtipVisor m_visor;
    RecuperaBorrador m_recuperacion;
    PanelBorradores* m_borradores = nullptr;
    PanelCargos* m_cargos = nullptr;
    PanelCifras* m_cifras = nullptr;
    PanelPendientes* m_pendientes = nullptr;
    QList<QAction*> m_de_elegidos; ///< what is done with the chosen charges
    HiloLector m_lector_cargos; ///< what is looked for does not wait for the figures
    HiloLector m_lector_cifras;
    bool m_ha_trabajado = true; ///< a window was opened since the figures were read
    std::optional<frmclsComprasAtipVisor::Busqueda> m_del_programa; ///< the browser's, until a person's own
};

} // namespace atipicos::app
