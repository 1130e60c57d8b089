#include "editor/RejillaAtipicoQt.hpp"

#include "controls/Anclaje.hpp"
#include "controls/Texto.hpp"

namespace atipicos {

namespace {

    constexpr int visibles = 6;

}

void prepara_vsCargos(VSFlexGrid& rejilla)
{
    rejilla.set_Cols(visibles + 1);
    int columna = 0;
    for (const auto* texto : { "Artículo", "Artículo", "Observaciones", "Unidades", "Costo", "Importe", "" })
        rejilla.set_TextMatrix(0, columna++, a_qt(texto));
    for (const auto& [numero, twips] :
        { std::pair{ 0, 1000 }, { 1, 2000 }, { 2, 1000 }, { 3, 1000 }, { 4, 1000 } })
        rejilla.set_ColWidth(numero, twips);
    for (const int numero : { 0, 3, 4, 5 })
        rejilla.set_ColAlignment(numero, Qt::AlignRight | Qt::AlignVCenter);
    rejilla.set_MergeRow(true);
    rejilla.set_ColHidden(visibles, true);
    rejilla.set_ColNombre(1, QStringLiteral("Descripción del artículo"));
    rejilla.set_ColNombre(visibles, QStringLiteral("Cuenta de ingresos"));
    auto* anclaje = new Anclaje(rejilla);
    anclaje->AgregarColumna(1, 50);
    anclaje->AgregarColumna(2, 50);
}

void pon_fila(VSFlexGrid& rejilla, int fila, const QString& texto)
{
    if (fila == rejilla.Rows()) {
        rejilla.AddItem(texto);
        return;
    }
    const auto celdas = texto.split(u'\t');
    for (int columna = 0; columna < visibles; ++columna)
        rejilla.set_TextMatrix(fila, columna, celdas.at(columna));
}

} // namespace atipicos
