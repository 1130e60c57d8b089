#pragma once

#include "host/comprobacion/HistorialCargo.hpp"

#include <string>
#include <vector>

/// What the history of a charge says to a person.
namespace atipicos::app {

[[nodiscard]] std::string que_fue(const Suceso& suceso); ///< "alta", "cambio", "baja", "anulación"
[[nodiscard]] std::string de_que_fue(const Suceso& suceso); ///< "cabecera", "línea 2", "asiento"
[[nodiscard]] std::string quien_fue(const Suceso& suceso); ///< the login, or that it was another program

struct DatoCambiado {
    std::string nombre;
    std::string antes; ///< empty: nothing, or there was no such row
    std::string despues;

    friend bool operator==(const DatoCambiado&, const DatoCambiado&) = default;
};

/// Of a change the values that differ; of a row that came or went those that say something. Who did it and
/// when is told apart. In the order of the columns.
[[nodiscard]] std::vector<DatoCambiado> lo_cambiado(const Suceso& suceso);

/// The same in a line: "Precio 9,75 → 9,5; Observaciones vacío → Golpe".
[[nodiscard]] std::string en_una_frase(const Suceso& suceso);

/// What the history of a charge that is there says when it says nothing: behind its name.
inline constexpr auto como_estaba = " está como estaba cuando se empezó a llevar el historial.";
/// Of a database whose tables are spread.
inline constexpr auto ya_no_se_lleva
    = "Esta base de datos está repartida entre varios nodos: no lleva el historial desde que lo está.";

} // namespace atipicos::app
