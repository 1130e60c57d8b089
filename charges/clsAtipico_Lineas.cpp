#include "charges/clsAtipico_Lineas.hpp"

#include "runtime/Variant.hpp"

namespace atipicos {

std::int32_t clsAtipico_Lineas::Count() const { return static_cast<std::int32_t>(m_lineas.size()); }

void clsAtipico_Lineas::Remove(std::int16_t intIndex, Donde donde)
{
    m_lineas.erase(m_lineas.begin() + static_cast<std::ptrdiff_t>(indice(intIndex, donde)));
}

clsAtipico_Lineas::Linea clsAtipico_Lineas::Add(std::int32_t lngCod_Articulo,
    const std::string& strDescripcion, Currency curUnidades, Currency curPrecio,
    const std::string& strObservaciones, std::int32_t lngId, std::int16_t intPosicion, Donde donde)
{
    auto linea = std::make_shared<clsAtipico_Linea>();
    linea->Cod_Articulo = lngCod_Articulo;
    linea->Descripcion = strDescripcion;
    linea->Unidades = curUnidades;
    linea->Precio = curPrecio;
    linea->Observaciones = strObservaciones;
    linea->Id = lngId;

    auto lugar = m_lineas.end();
    if (intPosicion != 0)
        lugar = m_lineas.begin() + static_cast<std::ptrdiff_t>(indice(intPosicion, donde)) + 1;
    m_lineas.insert(lugar, linea);
    return linea;
}

void clsAtipico_Lineas::AddByClass(const clsAtipico_Linea& clsLinea)
{
    m_lineas.push_back(std::make_shared<clsAtipico_Linea>(clsLinea));
}

void clsAtipico_Lineas::Clear() { m_lineas.clear(); }

clsAtipico_Lineas::Linea clsAtipico_Lineas::Item(std::int16_t intIndex, Donde donde) const
{
    return m_lineas[indice(intIndex, donde)];
}

std::shared_ptr<clsAtipico_Lineas> clsAtipico_Lineas::Clone(Donde donde) const
{
    auto copia = std::make_shared<clsAtipico_Lineas>();
    const std::int32_t ultima = UltimaPosicion(donde);
    for (std::int32_t i = 1; i <= ultima; ++i)
        copia->AddByClass(*Item(static_cast<std::int16_t>(i), donde));
    return copia;
}

std::int16_t clsAtipico_Lineas::UltimaPosicion(Donde donde) const { return CInt(Count(), donde); }

std::size_t clsAtipico_Lineas::indice(std::int16_t posicion, Donde donde) const
{
    if (posicion < 1 || posicion > Count())
        throw Error::de_ejecucion(numero_error::argumento_no_valido, donde);
    return static_cast<std::size_t>(posicion) - 1;
}

} // namespace atipicos
