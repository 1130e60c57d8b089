#include "browser/frmRejillasVisor.hpp"

#include "controls/Anclaje.hpp"
#include "controls/Texto.hpp"

#include <span>

namespace atipicos {

namespace {

    constexpr auto izquierda = Qt::AlignLeft | Qt::AlignVCenter;
    constexpr auto derecha = Qt::AlignRight | Qt::AlignVCenter;
    constexpr auto centro = Qt::AlignHCenter | Qt::AlignVCenter;

    struct Columna {
        int numero;
        const char* titulo;
        int twips;
        Qt::Alignment alineacion;
        Clase clase;
        int porcentaje; ///< of what the grid gains in width
    };

    constexpr Columna de_lista[] = {
        { 0, "Código", 1150, izquierda, Clase::texto, 0 },
        { 1, "Almacén", 500, derecha, Clase::numero, 0 },
        { 2, "Almacén", 1800, izquierda, Clase::texto, 20 },
        { 3, "Proveedor", 700, derecha, Clase::numero, 0 },
        { 4, "Proveedor", 2600, izquierda, Clase::texto, 40 },
        { 5, "Fecha", 1150, centro, Clase::fecha, 0 },
        { 6, "Importe", 1100, derecha, Clase::numero, 0 },
        { 9, "Asiento", 850, derecha, Clase::numero, 0 },
        { 10, "Usuario", 450, derecha, Clase::numero, 0 },
        { 11, "Usuario", 1400, izquierda, Clase::texto, 10 },
        { 12, "Observaciones", 1800, izquierda, Clase::texto, 30 },
        { 7, "Impuesto", 900, derecha, Clase::numero, 0 },
        { 8, "Impuesto", 850, derecha, Clase::numero, 0 },
    };

    constexpr Columna de_detalles[] = {
        { 0, "Código", 1150, izquierda, Clase::texto, 0 },
        { 1, "Artículo", 850, derecha, Clase::numero, 0 },
        { 2, "Artículo", 3500, izquierda, Clase::texto, 60 },
        { 3, "Unidades", 1100, derecha, Clase::numero, 0 },
        { 4, "Precio", 1100, derecha, Clase::numero, 0 },
        { 5, "Importe", 1200, derecha, Clase::numero, 0 },
        { 6, "Observaciones", 3000, izquierda, Clase::texto, 40 },
    };

    void prepara(VSFlexGrid& rejilla, std::span<const Columna> columnas)
    {
        rejilla.set_Cols(static_cast<int>(columnas.size()));
        auto* anclaje = new Anclaje(rejilla);
        for (const auto& columna : columnas) {
            rejilla.set_TextMatrix(0, columna.numero, a_qt(columna.titulo));
            rejilla.set_ColWidth(columna.numero, columna.twips);
            rejilla.set_ColAlignment(columna.numero, columna.alineacion);
            rejilla.set_ColOrden(columna.numero, columna.clase);
            if (columna.porcentaje > 0)
                anclaje->AgregarColumna(columna.numero, columna.porcentaje);
        }
        rejilla.set_MergeRow(true);
    }

}

void prepara_vsCab(VSFlexGrid& rejilla) { prepara(rejilla, de_lista); }

void prepara_vsDetalles(VSFlexGrid& rejilla) { prepara(rejilla, de_detalles); }

} // namespace atipicos
