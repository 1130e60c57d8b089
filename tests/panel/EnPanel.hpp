#pragma once

#include "host/panel/Ambito.hpp"
#include "host/sql/Literal.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::pruebas {

/// A charge straight into its table.
struct CargoPuesto {
    const char* codigo;
    std::int16_t almacen;
    const char* fecha;
    std::int32_t proveedor;
    const char* importe;
    const char* impuesto;
    std::int32_t asiento = 5;
    std::int16_t empresa = 1;
};

/// What the panel reads, on the sample company in each kind of place.
struct EnPanel : testing::TestWithParam<Sede> {
    std::unique_ptr<Muestra> muestra;
    app::Ambito ambito;

    void SetUp() override
    {
        if (!GetParam().falta.empty())
            GTEST_SKIP() << GetParam().falta;
        muestra = GetParam().muestra();
        ambito = { bases::abre_bases(muestra->lugar(), { .sincronizacion_completa = false }), 1, 1 };
    }

    void pon(const CargoPuesto& cargo) const
    {
        const auto fecha = dia(cargo.fecha);
        const auto ejercicio = std::to_string(fecha.anio());
        const auto almacen = std::to_string(cargo.almacen);
        const auto empresa = std::to_string(cargo.empresa);
        auto& orvalin = *ambito.bases.orvalin;
        const auto cuya = " WHERE Cod_Empresa =" + empresa + " AND Cod_Ejercicio =" + ejercicio
            + " AND Cod_Almacen =" + almacen;
        orvalin.Execute("DELETE FROM Contador_Proveedores_Cargos_Atipicos" + cuya);
        orvalin.Execute("INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                        "Cod_Almacen, Numero) VALUES ("
            + empresa + ", " + ejercicio + ", " + almacen + ", 90000)");
        orvalin.Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
                        "Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
                        "Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES ("
            + empresa + ", " + ejercicio + ", " + almacen + ", '" + cargo.codigo + "', "
            + std::to_string(cargo.proveedor) + ", " + sql::literal(fecha) + ", " + cargo.importe + ", "
            + std::to_string(cargo.asiento) + ", 1, " + ejercicio + ", 2, " + sql::literal(fecha)
            + ", 'Palé', 0, 0, 7, " + cargo.impuesto + ", 0)");
    }
};

inline std::string nombre_de_sede(const testing::TestParamInfo<Sede>& info) { return info.param.nombre; }

inline const app::Sigue sin_parar = [] { return true; };

} // namespace atipicos::pruebas
