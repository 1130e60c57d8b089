#include "server/ObjetoExpuesto.hpp"

#include "context/trap.hpp"
#include "server/Enumerador.hpp"
#include "server/Llamada.hpp"
#include "server/TipoExpuesto.hpp"

#include <mutex>
#include <unordered_map>

namespace atipicos::server {

namespace {

    std::mutex cerrojo_de_caras; ///< of the faces in use, and of giving the last hold on one up
    std::unordered_map<const void*, ObjetoExpuesto*>& expuestos()
    {
        static std::unordered_map<const void*, ObjetoExpuesto*> todos;
        return todos;
    }

    char minuscula(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

    /// The names of members are plain ASCII, and compare without case.
    bool se_llama(std::string_view nombre, VistaAncha buscado)
    {
        if (nombre.size() != buscado.size())
            return false;
        for (std::size_t i = 0; i < nombre.size(); ++i)
            if (buscado[i] > 0x7F || minuscula(nombre[i]) != minuscula(static_cast<char>(buscado[i])))
                return false;
        return true;
    }

    /// The position of what is called so; past the end when nothing is.
    template <class Lista> std::size_t posicion_de(const Lista& lista, VistaAncha buscado)
    {
        std::size_t i = 0;
        while (i < lista.size() && !se_llama(lista[i].nombre, buscado))
            ++i;
        return i;
    }

    /// What a property gives, asked with arguments: those are for the object that it gives.
    HRESULT aplica(const Valor& objeto, DISPPARAMS argumentos, VARIANT* resultado, EXCEPINFO* donde)
    {
        if (objeto.objeto() == nullptr)
            throw Error::de_ejecucion(numero_error::objeto_no_establecido);
        return objeto.objeto()->Invoke(
            DISPID_VALUE, iid_nulo, 0, DISPATCH_PROPERTYGET, &argumentos, resultado, donde, nullptr);
    }

}

ObjetoExpuesto* ObjetoExpuesto::de(const Clase& clase, std::shared_ptr<void> objeto)
{
    const std::lock_guard guarda(cerrojo_de_caras);
    auto& todos = expuestos();
    const auto* const nativo = objeto.get();
    auto lugar = todos.find(nativo);
    if (lugar == todos.end()) {
        lugar = todos.emplace(nativo, nullptr).first;
        try {
            lugar->second = new ObjetoExpuesto(clase, std::move(objeto));
        } catch (...) {
            todos.erase(lugar); // no place without its face
            throw;
        }
    }
    ++lugar->second->m_referencias;
    return lugar->second;
}

ObjetoExpuesto::ObjetoExpuesto(const Clase& clase, std::shared_ptr<void> objeto) noexcept
    : CaraDeDespacho(0)
    , m_clase(clase)
    , m_nativo(std::move(objeto))
{
}

void* ObjetoExpuesto::cara_de(const GUID& iid)
{
    if (iguales(iid, iid_propio))
        return this;
    const bool suya
        = iguales(iid, iid_desconocido) || iguales(iid, iid_despacho) || iguales(iid, m_clase.publica.iid);
    return suya ? static_cast<IDispatch*>(this) : nullptr;
}

ULONG ObjetoExpuesto::quita_una() noexcept
{
    const std::lock_guard guarda(cerrojo_de_caras);
    const ULONG quedan = --m_referencias;
    if (quedan == 0)
        expuestos().erase(m_nativo.get());
    return quedan;
}

UINT ObjetoExpuesto::tipos() const
{
#ifdef _WIN32
    return 1;
#else
    return 0;
#endif
}

HRESULT ObjetoExpuesto::informa(UINT cual, ITypeInfo** tipo) const
{
    if (tipos() == 0)
        return E_NOTIMPL;
    if (cual != 0)
        return DISP_E_BADINDEX;
    *tipo = tipo_de(m_clase);
    return S_OK;
}

HRESULT ObjetoExpuesto::identifica(const GUID& iid, OLECHAR** nombres, UINT cuantos, DISPID* ids)
{
    if (!iguales(iid, iid_nulo))
        return DISP_E_UNKNOWNINTERFACE;
    if (nombres == nullptr || ids == nullptr || cuantos == 0)
        return E_INVALIDARG;
    for (UINT i = 0; i < cuantos; ++i)
        ids[i] = DISPID_UNKNOWN;

    const auto& miembros = m_clase.miembros;
    const auto miembro = posicion_de(miembros, nombres[0]);
    if (miembro == miembros.size()) {
        if (m_clase.elemento == nullptr || !se_llama("_NewEnum", nombres[0]))
            return DISP_E_UNKNOWNNAME;
        ids[0] = DISPID_NEWENUM;
        return cuantos == 1 ? HRESULT{ S_OK } : HRESULT{ DISP_E_UNKNOWNNAME };
    }
    ids[0] = numero_de(m_clase, miembro);

    const auto& argumentos = miembros[miembro].argumentos;
    HRESULT codigo = S_OK;
    for (UINT i = 1; i < cuantos; ++i) {
        const auto posicion = posicion_de(argumentos, nombres[i]);
        if (posicion == argumentos.size())
            codigo = DISP_E_UNKNOWNNAME;
        else
            ids[i] = static_cast<DISPID>(posicion);
    }
    return codigo;
}

HRESULT ObjetoExpuesto::invoca(DISPID id, const GUID& iid, WORD uso, DISPPARAMS* argumentos,
    VARIANT* resultado, EXCEPINFO* donde, UINT* malo)
{
    if (!iguales(iid, iid_nulo))
        return DISP_E_UNKNOWNINTERFACE;
    if (argumentos == nullptr)
        return E_INVALIDARG;
    try {
        return ejecuta(id, uso, *argumentos, resultado, donde);
    } catch (const Llamada::Malo& mal_pasado) {
        if (malo != nullptr && mal_pasado.argumento < argumentos->cArgs)
            *malo = argumentos->cArgs - 1 - static_cast<UINT>(mal_pasado.argumento);
        return mal_pasado.codigo;
    } catch (...) {
        const Error error = error_en_curso();
        return excepcion(donde, error.numero(), error.fuente(), error.descripcion());
    }
}

HRESULT ObjetoExpuesto::ejecuta(
    DISPID id, WORD uso, const DISPPARAMS& argumentos, VARIANT* resultado, EXCEPINFO* donde)
{
    if (id == DISPID_NEWENUM && m_clase.elemento != nullptr) {
        if (resultado != nullptr)
            *resultado = Enumerador::nuevo(m_clase, m_nativo).suelta();
        return S_OK;
    }
    const auto numero = id == DISPID_VALUE ? m_clase.por_defecto : static_cast<std::size_t>(id);
    if (id < 0 || numero == 0 || numero > m_clase.miembros.size())
        return DISP_E_MEMBERNOTFOUND;
    const Miembro& miembro = m_clase.miembros[numero - 1];
    const bool es_objeto = miembro.tipo == Tipo::Objeto;
    const auto nativo = m_nativo; // the host may give up its last hold of this object while it answers a call

    if ((uso & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        if (miembro.pone == nullptr || ((uso & DISPATCH_PROPERTYPUT) == 0 && !es_objeto))
            return DISP_E_MEMBERNOTFOUND;
        Llamada llamada(miembro, argumentos);
        miembro.pone(nativo.get(), llamada);
        return S_OK;
    }
    if (miembro.lee == nullptr)
        return DISP_E_MEMBERNOTFOUND;
    const bool para_su_objeto = es_objeto && !miembro.es_metodo && argumentos.cArgs != 0;
    Llamada llamada(miembro, para_su_objeto ? DISPPARAMS{} : argumentos);
    miembro.lee(nativo.get(), llamada);
    if (para_su_objeto)
        return aplica(llamada.resultado(), argumentos, resultado, donde);
    if (resultado != nullptr)
        *resultado = llamada.resultado().suelta();
    return S_OK;
}

std::shared_ptr<void> objeto_propio(const VARIANT& valor, const Clase& clase, std::size_t posicion)
{
    const VARIANT visto = sin_referencia(valor);
    if (visto.vt != VT_DISPATCH && visto.vt != VT_UNKNOWN)
        throw Llamada::Malo{ DISP_E_TYPEMISMATCH, posicion };
    if (visto.punkVal == nullptr)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido);
    void* cara = nullptr;
    if (FAILED(visto.punkVal->QueryInterface(iid_propio, &cara)))
        throw Llamada::Malo{ DISP_E_TYPEMISMATCH, posicion };
    auto* expuesto = static_cast<ObjetoExpuesto*>(cara);
    const Despacho soltado = Despacho::adopta(expuesto);
    if (&expuesto->clase() != &clase)
        throw Llamada::Malo{ DISP_E_TYPEMISMATCH, posicion };
    return expuesto->nativo();
}

Valor valor_de_objeto(const Clase& clase, std::shared_ptr<void> objeto)
{
    return Despacho::adopta(ObjetoExpuesto::de(clase, std::move(objeto))).valor();
}

} // namespace atipicos::server
