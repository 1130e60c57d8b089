#pragma once

#include "runtime/Date.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

/// What the databases must hold after what the clerks have done, reckoned with whole numbers and nothing of
/// the program but its dates. Amounts are ten-thousandths.
namespace atipicos::pruebas {

using Crudo = std::int64_t;

struct LineaModelo {
    std::int32_t articulo = 0;
    std::string descripcion;
    std::string observaciones;
    Crudo unidades = 0;
    Crudo costo = 0;

    [[nodiscard]] Crudo importe() const; ///< units × cost, to four decimals and then to cents
};

struct ClaveModelo {
    std::int32_t ejercicio = 0;
    std::int16_t almacen = 0;
    std::string codigo;

    friend auto operator<=>(const ClaveModelo&, const ClaveModelo&) = default;
};

/// A charge as a clerk has it before him, or as it is stored.
struct CargoModelo {
    std::string codigo; ///< empty: a new one
    std::int16_t almacen = 1;
    std::int32_t proveedor = 101;
    Date fecha;
    std::string observaciones;
    bool franquiciado = false; ///< not stored
    std::vector<LineaModelo> lineas;
    // Of a stored one:
    std::int32_t usuario = 0;
    Date hora;
    std::int32_t asiento = 0;

    [[nodiscard]] ClaveModelo clave() const { return { fecha.anio(), almacen, codigo }; }
    [[nodiscard]] Crudo total() const; ///< of the rounded lines
    [[nodiscard]] Crudo impuesto() const; ///< 7 %, to cents
};

struct PrevisionModelo {
    Crudo importe = 0;
    std::int32_t tipo = 0;
    Date vencimiento;
    std::string banco;
};

/// How much of a save came to pass.
struct Suerte {
    bool gestion = true; ///< the management transaction was committed
    bool contabilidad = true; ///< the accounting transaction was committed
    bool asiento_dado = true; ///< the entry was made, whether or not it was committed afterwards
};

class Modelo {
public:
    Modelo() = default;
    Modelo(const Modelo&) = delete;
    Modelo& operator=(const Modelo&) = delete;
    virtual ~Modelo() = default;

    /// The code and the entry that a save of the charge is to be given; entry 0: none is made.
    [[nodiscard]] std::string codigo_para(const CargoModelo& cargo) const;
    [[nodiscard]] std::int32_t asiento_para(const CargoModelo& cargo) const;

    void guarda(CargoModelo cargo, const std::vector<PrevisionModelo>& previsiones, const Suerte& suerte);
    virtual void elimina(const ClaveModelo& clave);

    [[nodiscard]] const std::map<ClaveModelo, CargoModelo>& cargos() const { return m_cargos; }

    /// Every row of both databases, in the form of `filas_de`, sorted.
    [[nodiscard]] std::vector<std::string> filas() const;

    /// The charges whose entry does not exist, or is that of another save.
    [[nodiscard]] std::set<ClaveModelo> sin_asiento() const;

    /// The accounting company of a warehouse; 0: none.
    [[nodiscard]] static std::int16_t empresa_contable(std::int16_t almacen);

protected:
    using Serie = std::pair<std::int32_t, std::int16_t>; ///< year and warehouse
    std::map<Serie, std::int32_t> m_numeros; ///< the last one given out

private:
    struct AsientoModelo {
        CargoModelo cargo; ///< as it was when it was posted
        std::vector<PrevisionModelo> previsiones;
    };
    using ClaveAsientoModelo = std::tuple<std::int16_t, std::int32_t, std::int32_t>;

    void filas_de_asiento(
        const ClaveAsientoModelo& clave, const AsientoModelo& asiento, std::vector<std::string>& filas) const;

    std::map<ClaveModelo, CargoModelo> m_cargos;
    std::map<ClaveAsientoModelo, AsientoModelo> m_asientos;
    std::map<std::pair<std::int16_t, std::int32_t>, std::int32_t> m_numeros_de_asiento;
};

/// The cells of a row as the comparison writes them.
[[nodiscard]] std::string fila_de(const char* tabla, const std::vector<std::string>& celdas);

} // namespace atipicos::pruebas
