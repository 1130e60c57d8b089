#include "server/Fabrica.hpp"

#include "server/ObjetoExpuesto.hpp"

namespace atipicos::server {

void* Fabrica::cara_de(const GUID& iid)
{
    const bool suya = iguales(iid, iid_desconocido) || iguales(iid, iid_fabrica);
    return suya ? static_cast<IClassFactory*>(this) : nullptr;
}

HRESULT Fabrica::crea(const GUID& iid, void** objeto)
{
    servidor::prepara();
    auto* nuevo = ObjetoExpuesto::de(m_clase, m_clase.crea());
    const auto codigo = nuevo->QueryInterface(iid, objeto);
    nuevo->Release();
    return codigo;
}

void Fabrica::bloquea(bool retener)
{
    if (retener)
        servidor::retiene();
    else
        servidor::suelta();
}

} // namespace atipicos::server
