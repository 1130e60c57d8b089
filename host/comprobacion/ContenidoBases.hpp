#pragma once

#include "host/bases/Bases.hpp"
#include "host/comprobacion/LibroContable.hpp"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

/// What both databases hold, all companies, summed up as far as checking it needs.
namespace atipicos::app {

using ClaveSerie = std::tuple<std::int16_t, std::int16_t, std::int16_t>; ///< company, year, warehouse

struct ClaveContenida {
    std::int16_t empresa = 0;
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    std::string codigo;

    [[nodiscard]] ClaveSerie serie() const { return { empresa, ejercicio, almacen }; }
    friend auto operator<=>(const ClaveContenida&, const ClaveContenida&) = default;
};

struct CargoContenido {
    Date fecha;
    Date hora;
    Currency importe;
    Currency porcentaje;
    Currency impuesto;
    ClaveAsiento asiento; ///< number 0: none
    std::int32_t ultima_linea = 0;
    bool lineas_seguidas = true;
    Currency suma; ///< of its lines

    [[nodiscard]] Currency total() const { return importe + impuesto; }
};

struct AsientoContenido {
    Date fecha;
    std::int32_t ultima_linea = 0;
    bool lineas_seguidas = true;
    Currency debe;
    Currency haber;
    Currency primer_debe; ///< of the debtor line
    std::string documento;
    std::size_t previsiones = 0;
    Currency suma_previsiones;
    std::size_t registros = 0;
    Currency base;
    Currency cuota;
};

struct EmpresaContenida {
    int decimales = 2;
    std::int32_t enlace = 0;
};

struct ContenidoBases {
    std::map<std::int16_t, EmpresaContenida> empresas;
    std::map<ClaveContenida, CargoContenido> cargos;
    std::vector<ClaveContenida> lineas_sin_cargo;
    std::map<ClaveAsiento, AsientoContenido> asientos;
    std::map<ClaveAsiento, std::vector<ClaveContenida>> nombrados; ///< the charges that name an entry
    std::map<ClaveSerie, std::int64_t> contadores;
    std::map<std::pair<std::int16_t, std::int16_t>, std::int32_t>
        contadores_asientos; ///< by company and year
    std::size_t lineas = 0;
    std::size_t apuntes = 0;
    std::size_t registros = 0;
    std::size_t previsiones = 0;
};

/// Reads it row by row; writes nothing.
[[nodiscard]] ContenidoBases lee_contenido(const bases::Bases& bases);

} // namespace atipicos::app
