#include "charges/clsAtipico_Linea.hpp"

namespace atipicos {

void clsAtipico_Linea::Copiar(const clsAtipico_Linea& clsAtipico_Lin_Org)
{
    Cod_Articulo = clsAtipico_Lin_Org.Cod_Articulo;
    Observaciones = clsAtipico_Lin_Org.Observaciones;
    Unidades = clsAtipico_Lin_Org.Unidades;
    Precio = clsAtipico_Lin_Org.Precio;
    Id = clsAtipico_Lin_Org.Id;
    Descripcion = clsAtipico_Lin_Org.Descripcion;
}

} // namespace atipicos
