#pragma once

#include "browser/ColumnasLista.hpp"

#include <vector>

namespace atipicos::pruebas {

/// The list with one column more, which is one line.
inline std::vector<ColumnaLista> catorce_columnas()
{
    const auto trece = columnas_lista();
    std::vector<ColumnaLista> catorce(trece.begin(), trece.end());
    catorce.push_back({ "EmpContable", TipoColumna::numero, OtroDato{ 0 }, "Emp.", "Empresa contable",
        "empresa_contable", 600 });
    return catorce;
}

} // namespace atipicos::pruebas
