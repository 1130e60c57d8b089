#pragma once

#include "controls/FormularioCargable.hpp"
#include "editor/BorradorDelEditor.hpp"
#include "editor/CargoAbierto.hpp"
#include "editor/EdicionAtipico.hpp"
#include "editor/ImpuestoDelCargo.hpp"

#include <memory>
#include <optional>
#include <string>

class QLabel;

namespace Ui {
class frmCompras_Atipicos;
}

namespace atipicos {

struct Contabilizacion;
struct Prevision;

/// "Reclamaciones a Proveedores": one charge is keyed in, or changed, line by line, saved and posted.
///
/// The form loads itself at each `Show`. With `Codigo` empty it is a new charge; else the charge of `Codigo`,
/// `Ejercicio` and `Almacen` is loaded to be changed. After a save or a cancel it is a new charge again.
class frmCompras_Atipicos final : public FormularioCargable {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCompras_Atipicos)
public:
    explicit frmCompras_Atipicos(QWidget* parent = nullptr);
    ~frmCompras_Atipicos() override;

    /// The one instance that the browser opens for an existing charge; made on first use.
    [[nodiscard]] static frmCompras_Atipicos& compartido();

    // The charge to open; set before `Show`.
    std::int16_t Ejercicio = 0;
    std::int16_t Almacen = 0;
    std::string Codigo;

    [[nodiscard]] bool hay_lineas() const; ///< a charge is keyed in that has not been saved

protected:
    void Form_Load() override;
    void Form_Unload() override; ///< an unsaved charge is dropped
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    // Opening and loading
    void conecta();
    void pon_atajos();
    void empieza_vacio();
    void Nuevo_Atipico();
    void Limpiar_Cabecera();
    void Limpiar_Linea();
    void Cargar_Atipico();
    void Carga_Lineas(const ClaveCargo& clave);

    // Line entry: frmCompras_Atipicos_Captura.cpp
    void txtImporte_Intro();
    [[nodiscard]] bool deja_la_linea();
    bool cabecera_completa();
    void acepta_linea();
    void empieza_linea();
    void deja_el_cambio();
    void muestra_cambio();
    void muestra_fila(int fila);
    void cmdEliminar_Click();
    void cmdModificar_Click();
    void cmdComent_Click();

    // Save and cancelling: frmCompras_Atipicos_Comandos.cpp
    void cmdAceptar_Click();
    void cmdCancelar_Click();
    [[nodiscard]] Date fecha_del_cargo() const;
    [[nodiscard]] CargoTecleado cargo_tecleado() const;
    [[nodiscard]] std::optional<std::vector<Prevision>> pide_previsiones(const Contabilizacion& datos);
    void Imprimir_Atipico();
    void empieza_otro();

    // What is kept of it until it is saved: frmCompras_Atipicos_Borrador.cpp
    [[nodiscard]] Borrador lo_tecleado() const;
    void guarda_borrador(bool guardandose = false);
    void guarda_al_cambiar_de_campo();
    void empieza_borrador();

    // For all of them
    void set_CincoBotones(bool habilitados);
    void muestra_total();
    void muestra_importe(Currency total);
    [[nodiscard]] int decimales_costo() const;
    [[nodiscard]] bool es_oficina_central() const;

    std::unique_ptr<Ui::frmCompras_Atipicos> m_ui;
    EdicionAtipico m_edicion;
    ImpuestoDelCargo m_impuesto;
    BorradorDelEditor m_borrador;
    std::string m_cargado; ///< the rows of the stored charge as they were when it was opened
    QLabel* m_lblBorrador; ///< status line: what is keyed in cannot be kept
    bool m_guardando = false; ///< a second accept while the first is at work does nothing
};

} // namespace atipicos
