#pragma once

#include "charges/clsAtipico.hpp"

#include <cstdint>
#include <string>

/// The statements that store a charge, as plain text. Texts go between single quotes as they are: a
/// quote inside one makes the statement fail, which is why the comment editor replaces them.
namespace atipicos::instrucciones {

/// What a stored charge needs beside its own fields.
struct Contexto {
    std::int16_t Cod_Empresa = 0;
    double Usuario = 0;
    Currency Impuesto; ///< rate in percent
    Currency Impuesto_Importe;
};

[[nodiscard]] std::string existe(std::int16_t Cod_Empresa, std::int16_t Cod_Ejercicio,
    std::int16_t Cod_Almacen, const std::string& Codigo);
[[nodiscard]] std::string contador(
    std::int16_t Cod_Empresa, std::int16_t Cod_Ejercicio, std::int16_t Cod_Almacen);

[[nodiscard]] std::string inserta_cabecera(const clsAtipico& cargo, const Contexto& contexto);
[[nodiscard]] std::string inserta_linea(
    const clsAtipico& cargo, std::int16_t Cod_Empresa, const clsAtipico_Linea& linea, std::int32_t Num_Linea);
[[nodiscard]] std::string modifica_cabecera(const clsAtipico& cargo, const Contexto& contexto);
[[nodiscard]] std::string modifica_linea(
    const clsAtipico& cargo, std::int16_t Cod_Empresa, const clsAtipico_Linea& linea, std::int32_t Num_Linea);
[[nodiscard]] std::string elimina_lineas(const clsAtipico& cargo, std::int16_t Cod_Empresa);
[[nodiscard]] std::string elimina_cabecera(const clsAtipico& cargo, std::int16_t Cod_Empresa);

} // namespace atipicos::instrucciones
