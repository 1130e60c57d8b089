#include "server/Llamada.hpp"

#include "engines/ado/Conversion.hpp"

namespace atipicos::server {

using namespace automation;

namespace {

    bool falta(const VARIANT& valor)
    {
        const VARIANT visto = sin_referencia(valor);
        return visto.vt == VT_ERROR && visto.scode == DISP_E_PARAMNOTFOUND;
    }

    /// A conversion of the component, whose errors are the caller's: a wrong type or a value that does not
    /// fit.
    template <class Conversion>
    auto de_variant(const VARIANT& valor, std::size_t posicion, Conversion conversion)
    {
        try {
            return conversion(ado::variant_de(valor));
        } catch (const Error& error) {
            const bool no_cabe = error.numero() == numero_error::desbordamiento;
            throw Llamada::Malo{ no_cabe ? HRESULT{ DISP_E_OVERFLOW } : HRESULT{ DISP_E_TYPEMISMATCH },
                posicion };
        }
    }

}

Llamada::Llamada(const Miembro& miembro, const DISPPARAMS& parametros)
    : m_miembro(miembro)
    , m_parametros(parametros)
{
    if (parametros.cNamedArgs != 1 || parametros.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        coloca(parametros);
}

/// Named arguments stand first, the others behind them, the last one first.
void Llamada::coloca(const DISPPARAMS& parametros)
{
    const std::size_t nombrados = parametros.cNamedArgs;
    const std::size_t todos = parametros.cArgs;
    const std::size_t caben = m_miembro.argumentos.size();
    if (todos > caben)
        throw Malo{ DISP_E_BADPARAMCOUNT };
    for (std::size_t i = nombrados; i < todos; ++i)
        m_dados.at(todos - 1 - i) = &parametros.rgvarg[i];
    for (std::size_t i = 0; i < nombrados; ++i) {
        const auto posicion = static_cast<std::size_t>(parametros.rgdispidNamedArgs[i]);
        if (posicion >= caben || m_dados.at(posicion) != nullptr)
            throw Malo{ DISP_E_PARAMNOTFOUND, i };
        m_dados.at(posicion) = &parametros.rgvarg[i];
    }
    for (std::size_t i = 0; i < caben; ++i) {
        if (m_dados.at(i) != nullptr && falta(*m_dados.at(i)))
            m_dados.at(i) = nullptr;
        if (m_dados.at(i) == nullptr && !m_miembro.argumentos[i].opcional)
            throw Malo{ i < todos ? HRESULT{ DISP_E_PARAMNOTOPTIONAL } : HRESULT{ DISP_E_BADPARAMCOUNT }, i };
    }
}

bool es_nada(const VARIANT& valor) noexcept
{
    const VARIANT visto = sin_referencia(valor);
    return (visto.vt == VT_DISPATCH || visto.vt == VT_UNKNOWN) && visto.punkVal == nullptr;
}

const VARIANT* Llamada::dado(std::size_t posicion) const { return m_dados.at(posicion); }

const VARIANT& Llamada::valor_asignado() const
{
    if (m_parametros.cArgs != 1)
        throw Malo{ DISP_E_BADPARAMCOUNT };
    return m_parametros.rgvarg[0];
}

template <> bool Llamada::convierte<bool>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CBool(v); });
}

template <> std::int16_t Llamada::convierte<std::int16_t>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CInt(v); });
}

template <> std::int32_t Llamada::convierte<std::int32_t>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CLng(v); });
}

template <> Currency Llamada::convierte<Currency>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CCur(v); });
}

template <> Date Llamada::convierte<Date>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CDate(v); });
}

template <> std::string Llamada::convierte<std::string>(const VARIANT& valor, std::size_t posicion)
{
    return de_variant(valor, posicion, [](const Variant& v) { return CStr(v); });
}

template <> Despacho Llamada::convierte<Despacho>(const VARIANT& valor, std::size_t posicion)
{
    const VARIANT visto = sin_referencia(valor);
    if (visto.vt != VT_DISPATCH && visto.vt != VT_UNKNOWN)
        throw Malo{ DISP_E_TYPEMISMATCH, posicion };
    auto objeto = Despacho::de(visto);
    if (!objeto && visto.punkVal != nullptr)
        throw Malo{ DISP_E_TYPEMISMATCH, posicion };
    return objeto;
}

} // namespace atipicos::server
