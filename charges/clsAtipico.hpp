#pragma once

#include "charges/clsAtipico_Lineas.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <memory>
#include <string>

namespace atipicos {

/// An atypical charge or credit raised against a supplier: its header, its lines, and the operations that
/// store it in the management database and number it. Company, connection and user come from the
/// component's context. No operation opens a transaction of its own.
class clsAtipico {
public:
    std::int16_t Cod_Ejercicio = 0; ///< fiscal year
    std::int16_t Cod_Almacen = 0;
    std::string Codigo; ///< "AT" and digits, as `Devuelve_Codigo` gives it
    std::int32_t Proveedor = 0;
    Date Fecha;
    Currency Importe; ///< total before tax
    std::int32_t Asiento = 0; ///< entry that posted the charge; 0 while there is none
    std::int16_t EmpContable = 0;
    std::int16_t EjContable = 0;
    Date Hora;
    std::string Observ;
    std::int32_t Cod_Compra = 0; ///< purchase that it refers to; 0 for none
    std::int32_t Documento = 0;
    bool AplicarImpuesto = false; ///< `Insertar` takes the tax rate from the configuration
    Currency Impuesto; ///< rate in percent that `Modificar_Atipico` stores; `Insertar` does not use it
    std::int32_t Tipo = 0;
    /// May be set to another collection, or to none: storing the charge is error 91 then, behind its header.
    std::shared_ptr<clsAtipico_Lineas> Lineas = std::make_shared<clsAtipico_Lineas>();

    /// These two go to the component-wide context, not into this object.
    void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept;
    void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept;

    /// Whether the company has a charge of this key. Errors of the database reach the caller.
    [[nodiscard]] bool Existe(
        std::int16_t intEjercicio, std::int16_t intAlmacen, const std::string& strCodigo) const;

    /// Writes header and lines, the lines numbered by position from 1 on. Returns true when an error
    /// happened: it has then been shown, and what was written before it stays.
    bool Insertar();

    /// Writes the charge over the stored one of the same key, or inserts it when there is none. Stored
    /// lines beyond `Lineas.Count` stay. Returns true when an error happened, as `Insertar` does.
    bool Modificar_Atipico();

    /// Deletes lines and header; the counter and the accounting entry stay. An error is shown and swallowed.
    void Eliminar_Atipico();

    /// `Eliminar_Atipico` for the component's own commands, which must know: true when an error was shown.
    [[nodiscard]] bool EliminarConResultado();

    /// The next code of the company, the year `intEjercicio` and the charge's warehouse: "AT" and a number
    /// that begins a new counter at yy × 10000 + 1. With `bolMod` the number is taken, otherwise only shown.
    /// Error 1 (source "QVORComprasAtip:DevCodigo") when `Fecha` is before 1 January 2000; errors of the
    /// database reach the caller.
    [[nodiscard]] std::string Devuelve_Codigo(bool bolMod, std::int16_t intEjercicio);
};

} // namespace atipicos
