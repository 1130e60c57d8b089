#pragma once

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/comprobacion/AsientoSinCargo.hpp"
#include "host/comprobacion/CargosLeidos.hpp"
#include "host/comprobacion/CuentasProveedores.hpp"

#include <map>
#include <string>
#include <vector>

namespace atipicos::app {

/// The warehouses, and the last number given out in each of their series.
class Almacenes {
public:
    explicit Almacenes(adodb::Connection& orvalin);

    /// Whether the income account of a warehouse is among those of the entry.
    [[nodiscard]] bool ingresa(
        std::int16_t empresa, std::int16_t almacen, const AsientoContabilizado& asiento) const;

    /// The series that the charge of an entry may be of: those of the warehouses whose income account it
    /// bears, else of all that are posted to its company.
    [[nodiscard]] std::vector<ClaveSerie> series_de(const AsientoContabilizado& asiento) const;

    [[nodiscard]] std::int64_t contador(const ClaveSerie& serie) const; ///< 0: none

private:
    struct Almacen {
        std::int16_t contable = 0;
        std::string ingresos;
    };

    std::map<std::pair<std::int16_t, std::int16_t>, Almacen> m_almacenes; ///< by company and code
    std::map<ClaveSerie, std::int64_t> m_contadores;
};

/// The entries that no charge has, and what becomes known of them once all charges and entries were seen.
class SinCargo {
public:
    SinCargo(const Almacenes& almacenes, const CuentasProveedores& cuentas, CargosLeidos& cargos)
        : m_almacenes(almacenes)
        , m_cuentas(cuentas)
        , m_cargos(cargos)
    {
    }

    void agrega(const AsientoContabilizado& asiento); ///< one that a charge was posted with
    void agrega_ajeno(const AsientoContabilizado& asiento); ///< any other
    void agrega_regularizado(const AsientoContabilizado& asiento); ///< reversed, or reversing another

    [[nodiscard]] std::vector<AsientoSinCargo> clasificados() const;

    /// What they leave on the accounts, for those that it is not nothing.
    [[nodiscard]] std::vector<SaldoQueSobra> saldos() const;

private:
    struct Pendiente {
        AsientoSinCargo asiento;
        std::string deudor; ///< its account
        std::uint64_t huella = 0;
        std::vector<ClaveSerie> series;
    };

    void suma(const AsientoContabilizado& asiento);
    void clasifica(const Pendiente& pendiente, AsientoSinCargo& asiento) const;
    [[nodiscard]] const CargoLeido* cargo_de_ahora(const Pendiente& pendiente) const;

    const Almacenes& m_almacenes;
    const CuentasProveedores& m_cuentas;
    CargosLeidos& m_cargos;
    std::vector<Pendiente> m_pendientes;
    std::map<std::pair<std::int16_t, std::uint64_t>, ClaveAsiento> m_ajenos; ///< by what they do to accounts
    std::map<std::pair<std::int16_t, std::string>, Currency> m_saldos;
};

} // namespace atipicos::app
