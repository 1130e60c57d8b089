#pragma once

#include "platform/borrador/Borradores.hpp"
#include "tests/support/Contexto.hpp"

namespace atipicos::pruebas {

/// A draft in which nothing is as an empty one has it.
inline Borrador borrador_distinto()
{
    Borrador borrador;
    borrador.Codigo = "AT260018";
    borrador.Ejercicio = 2026;
    borrador.AlmacenDelCargo = 4;
    borrador.Cargado = "1003\tVino\t\t1,00\t2,50\t2,50\t75900010\n";
    borrador.Almacen = 3;
    borrador.Proveedor = 106;
    borrador.NombreProveedor = "Quesería «Majorera» \"Tiscamanita\"";
    borrador.Fecha = "31/02/2026";
    borrador.Observaciones = "Palé dañado\n\tsegunda línea \\ €";
    borrador.Franquiciado = true;
    borrador.Total = moneda("-107.34");
    borrador.Lineas = { { 1003, "Vino tinto", "Pérgola", moneda("12.4851"), moneda("9.75"), 1001, 1, true },
        { 0, "Porte", "", moneda("-1"), moneda("922337203685.4775"), 0, 0, false } };
    borrador.EnCurso = { 1012, "Gofio", "medio saco", moneda("0.5"), moneda("4.125"), 0, 0, false };
    borrador.HayEnCurso = true;
    borrador.FilaEnCambio = 2;
    borrador.Guardandose = true;
    return borrador;
}

} // namespace atipicos::pruebas
