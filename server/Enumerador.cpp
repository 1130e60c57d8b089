#include "server/Enumerador.hpp"

#include <vector>

namespace atipicos::server {

Valor Enumerador::nuevo(const Clase& clase, std::shared_ptr<void> coleccion)
{
    VARIANT valor;
    VariantInit(&valor);
    valor.vt = VT_UNKNOWN;
    valor.punkVal = new Enumerador(clase, std::move(coleccion), 1);
    Valor dado;
    dado.get() = valor; // the hold of a new object goes with it
    return dado;
}

Enumerador::Enumerador(const Clase& clase, std::shared_ptr<void> coleccion, std::int32_t posicion) noexcept
    : m_clase(clase)
    , m_coleccion(std::move(coleccion))
    , m_posicion(posicion)
{
}

void* Enumerador::cara_de(const GUID& iid)
{
    const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_enumerador);
    return suya ? static_cast<IEnumVARIANT*>(this) : nullptr;
}

HRESULT Enumerador::entrega(ULONG cuantos, VARIANT* valores, ULONG* entregados)
{
    if (valores == nullptr || (entregados == nullptr && cuantos != 1))
        return E_POINTER;
    if (entregados != nullptr)
        *entregados = 0;
    std::vector<Valor> elementos; // given away when all are there
    auto posicion = m_posicion;
    for (; elementos.size() < cuantos; ++posicion) {
        Valor elemento = m_clase.elemento(m_coleccion.get(), posicion);
        if (elemento.es_vacio())
            break;
        elementos.push_back(std::move(elemento));
    }
    m_posicion = posicion;
    for (auto& elemento : elementos)
        *valores++ = elemento.suelta();
    if (entregados != nullptr)
        *entregados = static_cast<ULONG>(elementos.size());
    return elementos.size() == cuantos ? HRESULT{ S_OK } : HRESULT{ S_FALSE };
}

HRESULT Enumerador::salta(ULONG cuantos)
{
    auto posicion = m_posicion;
    for (; cuantos > 0; --cuantos, ++posicion)
        if (m_clase.elemento(m_coleccion.get(), posicion).es_vacio())
            break;
    m_posicion = posicion;
    return cuantos == 0 ? HRESULT{ S_OK } : HRESULT{ S_FALSE };
}

HRESULT Enumerador::vuelve()
{
    m_posicion = 1;
    return S_OK;
}

IEnumVARIANT* Enumerador::gemelo() const { return new Enumerador(m_clase, m_coleccion, m_posicion); }

} // namespace atipicos::server
