#pragma once

#include "controls/Formulario.hpp"
#include "host/bases/Lugar.hpp"
#include "host/ventanas/LectorResumenes.hpp"

#include <optional>

class QComboBox;
class QLabel;
class QLayout;
class QPushButton;

namespace atipicos {
class qvAlmacen;
class qvMaskEdBox;
class qvProveedor;
class VSFlexGrid;
}

namespace atipicos::app {

class PanelGraficos;
class Sesion;

/// Charges added up by supplier, month, warehouse or article: a table, and beside it the charts of the same
/// numbers. It reads without being waited for, and writes what it shows as numbers or as a picture.
///
/// Enter in a filter, F5 and another choice of what to add up by read again; Escape closes it.
class frmResumen final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmResumen)
public:
    /// `sesion` outlives the window. It shows this year until today.
    frmResumen(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent = nullptr);

    /// What the filters say; nothing, with the word for it under them, where a day is none.
    [[nodiscard]] std::optional<PeticionResumen> peticion();
    void Muestra(const PeticionResumen& peticion); ///< puts it into the filters, and reads
    void Leer(); ///< what the filters say

    /// Writes what is shown into a file, in the format that its name ends in: csv, json, xlsx, png, svg or
    /// pdf. Raises an error where that cannot be done.
    void Guarda(const QString& fichero) const;

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    [[nodiscard]] QLayout* hace_filtros();
    [[nodiscard]] QWidget* hace_graficos();
    void hace_tabla();
    [[nodiscard]] QLayout* hace_ordenes();
    void conecta();
    void muestra(const ResumenLeido& leido);
    void llena_tabla();
    void falla(const QString& motivo);
    void exporta();
    void di(const QString& texto);

    Sesion& m_sesion;
    LectorResumenes m_lector;
    std::optional<ResumenLeido> m_leido;
    QComboBox* m_por;
    qvMaskEdBox* m_desde;
    qvMaskEdBox* m_hasta;
    qvAlmacen* m_almacen;
    qvProveedor* m_proveedor;
    VSFlexGrid* m_tabla;
    QLabel* m_total;
    QLabel* m_estado;
    PanelGraficos* m_graficos;
    QPushButton* m_exportar;
};

/// Opens the window of summaries, or brings the one of `padre` to the front.
void abre_resumen(Sesion& sesion, const bases::Lugar& lugar, QWidget& padre);

} // namespace atipicos::app
