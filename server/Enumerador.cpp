#include "server/Enumerador.hpp"

#include "server/Servidor.hpp"

#include <new>

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
    servidor::retiene();
}

Enumerador::~Enumerador() { servidor::suelta(); }

HRESULT Enumerador::QueryInterface(const GUID& iid, void** objeto)
{
    if (objeto == nullptr)
        return E_POINTER;
    const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_enumerador);
    *objeto = suya ? static_cast<IEnumVARIANT*>(this) : nullptr;
    if (suya)
        AddRef();
    return suya ? HRESULT{ S_OK } : HRESULT{ E_NOINTERFACE };
}

ULONG Enumerador::AddRef() { return ++m_referencias; }

ULONG Enumerador::Release()
{
    const ULONG quedan = --m_referencias;
    if (quedan == 0)
        delete this;
    return quedan;
}

HRESULT Enumerador::Next(ULONG cuantos, VARIANT* valores, ULONG* entregados)
{
    if (servidor::hilo_ajeno())
        return RPC_E_WRONG_THREAD;
    if (valores == nullptr || (entregados == nullptr && cuantos != 1))
        return E_POINTER;
    ULONG dados = 0;
    try {
        for (; dados < cuantos; ++dados, ++m_posicion) {
            Valor elemento = m_clase.elemento(m_coleccion.get(), m_posicion);
            if (elemento.es_vacio())
                break;
            valores[dados] = elemento.suelta();
        }
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    if (entregados != nullptr)
        *entregados = dados;
    return dados == cuantos ? HRESULT{ S_OK } : HRESULT{ S_FALSE };
}

HRESULT Enumerador::Skip(ULONG cuantos)
{
    if (servidor::hilo_ajeno())
        return RPC_E_WRONG_THREAD;
    for (; cuantos > 0; --cuantos, ++m_posicion)
        if (m_clase.elemento(m_coleccion.get(), m_posicion).es_vacio())
            return S_FALSE;
    return S_OK;
}

HRESULT Enumerador::Reset()
{
    m_posicion = 1;
    return S_OK;
}

HRESULT Enumerador::Clone(IEnumVARIANT** otro)
{
    if (otro == nullptr)
        return E_POINTER;
    *otro = new (std::nothrow) Enumerador(m_clase, m_coleccion, m_posicion);
    return *otro == nullptr ? HRESULT{ E_OUTOFMEMORY } : HRESULT{ S_OK };
}

} // namespace atipicos::server
