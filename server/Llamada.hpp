#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"
#include "server/Clase.hpp"

#include <array>
#include <string>

namespace atipicos::server {

/// One call of a member: its arguments by position, as the member declares them, and the place of its result.
///
/// What the caller passed wrong is a `Malo`: a result of `Invoke`, and the argument it is about.
class Llamada {
public:
    struct Malo {
        HRESULT codigo;
        std::size_t argumento = 0; ///< by position, from 0
    };

    Llamada(const Miembro& miembro, const DISPPARAMS& parametros);

    /// The argument converted to the type of the member; that type's zero where an optional one is missing.
    template <class T> [[nodiscard]] T argumento(std::size_t posicion) const;

    /// The value that a property is set to; no object where it is set to nothing.
    template <class T> [[nodiscard]] T asignado() const;

    [[nodiscard]] Valor& resultado() noexcept { return m_resultado; }

private:
    static constexpr std::size_t los_mas = 8;

    template <class T> [[nodiscard]] static T convierte(const VARIANT& valor, std::size_t posicion);

    [[nodiscard]] const VARIANT* dado(std::size_t posicion) const; ///< null: missing, and optional
    [[nodiscard]] const VARIANT& valor_asignado() const;
    void coloca(const DISPPARAMS& parametros);

    const Miembro& m_miembro;
    const DISPPARAMS& m_parametros;
    std::array<const VARIANT*, los_mas> m_dados{}; ///< places come from strangers: they are checked
    Valor m_resultado;
};

/// Whether the value is an object, and none.
[[nodiscard]] bool es_nada(const VARIANT& valor) noexcept;

/// The native object behind one of this component's own objects, checked to be of that class. Error 91 when
/// there is no object, `Malo` when it is another's or of another class.
[[nodiscard]] std::shared_ptr<void> objeto_propio(
    const VARIANT& valor, const Clase& clase, std::size_t posicion);

/// The automation object of a native one, the same each time while anybody holds it.
[[nodiscard]] Valor valor_de_objeto(const Clase& clase, std::shared_ptr<void> objeto);

template <> bool Llamada::convierte<bool>(const VARIANT& valor, std::size_t posicion);
template <> std::int16_t Llamada::convierte<std::int16_t>(const VARIANT& valor, std::size_t posicion);
template <> std::int32_t Llamada::convierte<std::int32_t>(const VARIANT& valor, std::size_t posicion);
template <> Currency Llamada::convierte<Currency>(const VARIANT& valor, std::size_t posicion);
template <> Date Llamada::convierte<Date>(const VARIANT& valor, std::size_t posicion);
template <> std::string Llamada::convierte<std::string>(const VARIANT& valor, std::size_t posicion);
template <> Despacho Llamada::convierte<Despacho>(const VARIANT& valor, std::size_t posicion);

template <class T> struct TipoDe;
template <> struct TipoDe<bool> {
    static constexpr Tipo tipo = Tipo::Logico;
};
template <> struct TipoDe<std::int16_t> {
    static constexpr Tipo tipo = Tipo::Entero;
};
template <> struct TipoDe<std::int32_t> {
    static constexpr Tipo tipo = Tipo::Largo;
};
template <> struct TipoDe<Currency> {
    static constexpr Tipo tipo = Tipo::Moneda;
};
template <> struct TipoDe<Date> {
    static constexpr Tipo tipo = Tipo::Fecha;
};
template <> struct TipoDe<std::string> {
    static constexpr Tipo tipo = Tipo::Texto;
};
template <> struct TipoDe<Despacho> {
    static constexpr Tipo tipo = Tipo::Objeto;
};
template <class T> struct TipoDe<std::shared_ptr<T>> {
    static constexpr Tipo tipo = Tipo::Objeto;
    using Clase = T;
};
template <> struct TipoDe<void> {
    static constexpr Tipo tipo = Tipo::Nada;
};

template <class T> T Llamada::convierte(const VARIANT& valor, std::size_t posicion)
{
    using Nativa = typename TipoDe<T>::Clase;
    return std::static_pointer_cast<Nativa>(objeto_propio(valor, clase_de<Nativa>(), posicion));
}

template <class T> T Llamada::asignado() const
{
    const VARIANT& valor = valor_asignado();
    return TipoDe<T>::tipo == Tipo::Objeto && es_nada(valor) ? T{} : convierte<T>(valor, 0);
}

template <class T> T Llamada::argumento(std::size_t posicion) const
{
    const auto* valor = dado(posicion);
    return valor == nullptr ? T{} : convierte<T>(*valor, posicion);
}

} // namespace atipicos::server
