#pragma once

#include <string>

namespace atipicos::pruebas {

/// The claims of the sample company, as an argument of a command.
inline const std::string muestra = "'" ATIPICOS_FUENTES "/host/datos/reclamaciones.csv'";

/// The first line of a claims file with every column.
inline const std::string cabecera = "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;"
                                    "descripcion;unidades;costo;observaciones_linea\n";

} // namespace atipicos::pruebas
