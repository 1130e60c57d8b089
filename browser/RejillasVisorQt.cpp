#include "browser/RejillasVisorQt.hpp"

#include "controls/Anclaje.hpp"
#include "controls/Texto.hpp"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

namespace atipicos {

namespace {

    struct Columna {
        int numero;
        const char* titulo;
        int twips;
        Clase clase;
        int porcentaje; ///< of what the grid gains in width
    };

    constexpr Columna de_detalles[] = {
        { 0, "Código", 1150, Clase::texto, 0 },
        { 1, "Artículo", 850, Clase::numero, 0 },
        { 2, "Artículo", 3500, Clase::texto, 60 },
        { 3, "Unidades", 1100, Clase::numero, 0 },
        { 4, "Precio", 1100, Clase::numero, 0 },
        { 5, "Importe", 1200, Clase::numero, 0 },
        { 6, "Observaciones", 3000, Clase::texto, 40 },
    };

    constexpr Columna de_previsiones[] = {
        { 0, "Previsión", 1100, Clase::numero, 0 },
        { 1, "Vencimiento", 1300, Clase::fecha, 0 },
        { 2, "Importe", 1200, Clase::numero, 0 },
        { 3, "Documento", 3000, Clase::texto, 100 },
    };

    Qt::Alignment alineacion(Clase clase)
    {
        return Qt::AlignVCenter
            | (clase == Clase::texto        ? Qt::AlignLeft
                    : clase == Clase::fecha ? Qt::AlignHCenter
                                            : Qt::AlignRight);
    }

    Clase clase(TipoColumna tipo)
    {
        return tipo == TipoColumna::texto ? Clase::texto
            : tipo == TipoColumna::fecha  ? Clase::fecha
                                          : Clase::numero;
    }

    void prepara(VSFlexGrid& rejilla, std::span<const Columna> columnas)
    {
        rejilla.set_Cols(static_cast<int>(columnas.size()));
        auto* anclaje = new Anclaje(rejilla);
        for (const auto& columna : columnas) {
            rejilla.set_TextMatrix(0, columna.numero, a_qt(columna.titulo));
            rejilla.set_ColWidth(columna.numero, columna.twips);
            rejilla.set_ColAlignment(columna.numero, alineacion(columna.clase));
            rejilla.set_ColOrden(columna.numero, columna.clase);
            if (columna.porcentaje > 0)
                anclaje->AgregarColumna(columna.numero, columna.porcentaje);
        }
        rejilla.set_MergeRow(true);
    }

}

void prepara_vsCab(VSFlexGrid& rejilla, ColumnasLista lista)
{
    std::vector<Columna> columnas;
    for (const auto& una : lista)
        columnas.push_back(
            { static_cast<int>(columnas.size()), una.titulo, una.twips, clase(una.tipo), una.porcentaje });
    // The headings of the tax are set after all others.
    std::stable_partition(columnas.begin(), columnas.end(),
        [](const Columna& una) { return std::string_view(una.titulo) != "Impuesto"; });
    prepara(rejilla, columnas);
}

void prepara_vsDetalles(VSFlexGrid& rejilla) { prepara(rejilla, de_detalles); }

void prepara_vsPrevisiones(VSFlexGrid& rejilla) { prepara(rejilla, de_previsiones); }

} // namespace atipicos
