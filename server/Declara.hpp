#pragma once

#include "server/Llamada.hpp"

#include <initializer_list>
#include <tuple>
#include <utility>

/// Members written as the class has them: `campo<&clsAtipico::Fecha>("Fecha")`. Types come from the class
/// itself.
namespace atipicos::server {

namespace detalle {

    template <class T> struct ClaseDeCampo;
    template <class C, class T> struct ClaseDeCampo<T C::*> {
        using Clase = C;
        using Dato = T;
    };

    /// The signature `R(C&, A…)` of a function object.
    template <class F> struct Firma : Firma<decltype(&F::operator())> {
    };
    template <class F, class R, class C, class... A> struct Firma<R (F::*)(C&, A...) const> {
        using Clase = C;
        using Resultado = R;
        using Argumentos = std::tuple<std::remove_cvref_t<A>...>;
    };

    inline Valor valor(bool v) { return v; }
    inline Valor valor(std::int16_t v) { return v; }
    inline Valor valor(std::int32_t v) { return v; }
    inline Valor valor(Currency v) { return Moneda{ v.crudo() }; }
    inline Valor valor(Date v) { return Fecha{ v.automatizacion() }; }
    inline Valor valor(const std::string& v) { return v; }
    template <class T> Valor valor(const std::shared_ptr<T>& v)
    {
        return v ? valor_de_objeto(clase_de<T>(), v) : Valor(static_cast<IDispatch*>(nullptr));
    }

    template <auto Funcion, std::size_t... I>
    void llama(void* objeto, Llamada& llamada, std::index_sequence<I...> /*posiciones*/)
    {
        using F = Firma<decltype(Funcion)>;
        auto& nativo = *static_cast<typename F::Clase*>(objeto);
        // Converted in their order, before the call: the first wrong one is the one reported.
        const auto argumentos = typename F::Argumentos{
            llamada.argumento<std::tuple_element_t<I, typename F::Argumentos>>(I)...
        };
        if constexpr (std::is_void_v<typename F::Resultado>)
            Funcion(nativo, std::get<I>(argumentos)...);
        else
            llamada.resultado() = valor(Funcion(nativo, std::get<I>(argumentos)...));
    }

}

/// A public field: read and written.
template <auto Campo> Miembro campo(std::string_view nombre)
{
    using Datos = detalle::ClaseDeCampo<decltype(Campo)>;
    using Dueno = typename Datos::Clase;
    using Dato = typename Datos::Dato;
    Miembro miembro;
    miembro.nombre = nombre;
    miembro.tipo = TipoDe<Dato>::tipo;
    miembro.lee = [](void* objeto, Llamada& llamada) {
        llamada.resultado() = detalle::valor(static_cast<Dueno*>(objeto)->*Campo);
    };
    miembro.pone = [](void* objeto, Llamada& llamada) {
        static_cast<Dueno*>(objeto)->*Campo = llamada.asignado<Dato>();
    };
    return miembro;
}

/// A property of the host's objects that can only be set: `Funcion(C&, Despacho)`; what it is set to is
/// called as `asignado` says.
template <auto Funcion> Miembro solo_asigna(std::string_view nombre, const Argumento& asignado = { "valor" })
{
    using Dueno = typename detalle::Firma<decltype(Funcion)>::Clase;
    Miembro miembro;
    miembro.nombre = nombre;
    miembro.tipo = Tipo::Objeto;
    miembro.asignado = asignado;
    miembro.pone = [](void* objeto, Llamada& llamada) {
        Funcion(*static_cast<Dueno*>(objeto), llamada.asignado<Despacho>());
    };
    return miembro;
}

/// A method, `Funcion(C&, arguments…)`; the arguments are called as `argumentos` says.
template <auto Funcion> Miembro metodo(std::string_view nombre, std::vector<Argumento> argumentos = {})
{
    using F = detalle::Firma<decltype(Funcion)>;
    constexpr auto cuantos = std::tuple_size_v<typename F::Argumentos>;
    using Posiciones = std::make_index_sequence<cuantos>;
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        ((argumentos.at(I).tipo = TipoDe<std::tuple_element_t<I, typename F::Argumentos>>::tipo), ...);
    }
    (Posiciones{});
    Miembro miembro;
    miembro.nombre = nombre;
    miembro.es_metodo = true;
    miembro.tipo = TipoDe<typename F::Resultado>::tipo;
    miembro.argumentos = std::move(argumentos);
    miembro.lee
        = [](void* objeto, Llamada& llamada) { detalle::llama<Funcion>(objeto, llamada, Posiciones{}); };
    return miembro;
}

template <class T> std::shared_ptr<void> nuevo() { return std::make_shared<T>(); }

[[nodiscard]] const ClasePublica& publica(std::string_view nombre);

} // namespace atipicos::server
