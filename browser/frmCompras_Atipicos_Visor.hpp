#pragma once

#include "browser/DetalleAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "controls/FormularioCargable.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class QPushButton;

namespace Ui {
class frmCompras_Atipicos_Visor;
}

namespace atipicos {

class qvMaskEdBox;

/// "Visor de Atípicos": lists the charges of a range of days, of one warehouse or supplier if asked for,
/// shows the lines of the chosen one, and prints, changes or deletes it.
///
/// The form loads itself at each `Show`, with the filters below; without a range it offers this year until
/// today. It keeps nothing: whoever wants to begin where the last search ended hears of it and hands it in.
class frmCompras_Atipicos_Visor final : public FormularioCargable {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCompras_Atipicos_Visor)
public:
    /// The `Fecha_Final` that means that no range is given.
    [[nodiscard]] static Date sin_rango();

    explicit frmCompras_Atipicos_Visor(QWidget* parent = nullptr);
    ~frmCompras_Atipicos_Visor() override;

    // Filters to open with; the first three are those of the charge shown in the details from then on.
    std::int16_t Ejercicio = 0;
    std::int16_t Almacen_Inicial = 0; ///< below 1: all
    std::int32_t Proveedor_Inicial = 0; ///< below 1: all
    Date Fecha_Inicial = sin_rango();
    Date Fecha_Final = sin_rango();

signals:
    void Buscado(const atipicos::FiltroAtipicos& filtro); ///< a search has been run through

protected:
    void Form_Load() override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    enum Pestana { documentos, detalles };

    [[nodiscard]] const CargoListado& cargo_de(int fila) const;
    [[nodiscard]] const CargoListado& elegido() const; ///< the charge of the chosen row
    [[nodiscard]] static ClaveCargo clave_de(const CargoListado& cargo); ///< the year is that of its date

    // Search and list
    void conecta();
    void empieza_vacio();
    void pone_filtros();
    void txtFechaF_KeyPress();
    void busca_lo_tecleado();
    void busca();
    [[nodiscard]] bool espera_fecha(qvMaskEdBox& caja);
    void Cargar_Atipicos();
    void marca_abierto();
    void va_al_abierto();
    [[nodiscard]] FiltroAtipicos filtro() const;
    void set_Comandos(bool habilitados);

    // Details and navigation
    void vsCab_KeyPress();
    void Tabs_SelectedChanged();
    void Cargar_Cabecera();
    void cmdPrimero_Click();
    void cmdAnterior_Click();
    void cmdSiguiente_Click();
    void cmdUltimo_Click();
    [[nodiscard]] bool en_detalles() const;
    void teclea_en_lista(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier);
    void muestra_fila(int fila);

    // Commands
    void cmdExportar_Click();
    void cmdImprimir_Click();
    void cmdModificar_Click();
    void cmdEliminar_Click();
    void deja_detalles();

    using Accion = void (frmCompras_Atipicos_Visor::*)();
    void atrapa(const char* procedimiento, Accion accion);
    void enlaza(QPushButton& boton, const char* procedimiento, Accion accion);

    std::unique_ptr<Ui::frmCompras_Atipicos_Visor> m_ui;
    std::vector<CargoListado> m_cargos; ///< as they were read; the data of a row is its place here
    FiltroAtipicos m_buscado; ///< what they have been searched for by
    std::optional<ClaveCargo> m_abierto; ///< opened to be changed, since the last search that was asked for
};

} // namespace atipicos
