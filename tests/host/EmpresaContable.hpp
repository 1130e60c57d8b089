#pragma once

#include "host/bexmor/Biblioteca.hpp"
#include "tests/host/BasesDeMuestra.hpp"

namespace atipicos::pruebas {

/// The accounting library on the sample company, with the accounting company 1 loaded for 2026.
struct EmpresaContable : BasesDeMuestra {
    bexmor::Biblioteca biblioteca{ bases.bexmor };
    std::unique_ptr<qvbxemp::Empresa> empresa = carga(1, 2026);
    adodb::Connection& conexion = *bases.bexmor;

    std::unique_ptr<qvbxemp::Empresa> carga(std::int16_t codigo, std::int16_t ejercicio) const
    {
        auto cargada = biblioteca.NuevaEmpresa();
        cargada->Codigo = codigo;
        cargada->Ejercicio = ejercicio;
        cargada->FechaTrabajo = Date::de_texto("21/11/2026").value();
        cargada->UsuarioActual = "12";
        EXPECT_TRUE(cargada->Cargar());
        return cargada;
    }

    /// The number of a stored entry of 21 November 2026.
    std::int32_t asiento() const
    {
        const auto nuevo = biblioteca.NuevoAsiento(*empresa);
        nuevo->Fecha = empresa->FechaTrabajo;
        nuevo->Crear();
        return nuevo->Numero;
    }

    std::unique_ptr<qvbxemp::Apunte> apunte(std::int32_t asiento, std::int32_t linea) const
    {
        auto nuevo = biblioteca.NuevoApunte(*empresa);
        nuevo->Asiento = asiento;
        nuevo->Linea = linea;
        nuevo->Cuenta = "44000101";
        nuevo->Debe = Currency::de_texto("107");
        return nuevo;
    }
};

} // namespace atipicos::pruebas
