#pragma once

#include "host/orvalin/Catalogos.hpp"
#include "host/reclamaciones/FicheroReclamaciones.hpp"

#include <map>

namespace atipicos {
class clsAtipico;
struct CargoTecleado;
}

namespace atipicos::app {

/// Makes charges of claims with what the catalogues say of their codes. Each code that there is is asked for
/// once.
class CargosReclamados {
public:
    explicit CargosReclamados(const orvalin::Catalogos& catalogos)
        : m_catalogos(catalogos)
    {
    }

    /// Fills the charge. What there is not is added to the errors of the claim and makes it invalid.
    void prepara(Reclamacion& reclamacion, clsAtipico& cargo, CargoTecleado& tecleado);

private:
    void agrega_linea(
        Reclamacion& reclamacion, const LineaReclamada& linea, clsAtipico& cargo, CargoTecleado& tecleado);

    const orvalin::Catalogos& m_catalogos;
    std::map<std::int16_t, orvalin::Almacen> m_almacenes;
    std::map<std::int32_t, std::string> m_proveedores;
    std::map<std::int32_t, orvalin::Articulo> m_articulos;
};

} // namespace atipicos::app
