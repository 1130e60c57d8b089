#pragma once

#include "platform/msgbox/MsgBox.hpp"
#include "posting/CargoContable.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace atipicos {

class clsAtipico;
struct Contabilizacion;
struct Prevision;

/// What has been keyed in of a charge, beside the lines that its object already holds.
struct CargoTecleado {
    std::string Codigo; ///< of the charge being changed; empty for a new one
    std::int16_t Almacen = 0;
    std::int32_t Proveedor = 0;
    std::string NombreProveedor; ///< as the person sees it
    Date Fecha;
    std::string Observaciones;
    bool Franquiciado = false;
    Currency Total; ///< sum of the rounded lines
    std::vector<CargoContable> Cargos; ///< amount and income account of each line
};

/// Asked once the amount to pay is known: gives the payment forecasts, or nothing to give the save up.
using PedirPrevisiones = std::function<std::optional<std::vector<Prevision>>(const Contabilizacion&)>;

struct ResultadoGuardado {
    enum class Estado : std::uint8_t {
        Guardado, ///< both transactions were committed
        SinLineas, ///< the charge has no lines; nothing was done
        NoAceptado, ///< no forecasts were given; nothing was written
        Fallido, ///< an error of the save itself: both transactions were rolled back and it was shown
    };
    Estado estado = Estado::SinLineas;
    std::string Codigo; ///< of the saved charge
    std::int32_t Asiento = 0; ///< 0: none was generated
    bool InsertarFallido = false; ///< `Insertar` showed an error: the charge was written as far as it got
};

/// The save: the one way in which a charge is numbered, posted and written, whoever asks for it.
///
/// Works out the accounting company and the amount to pay, asks for the forecasts, and then, inside one
/// transaction on each connection, takes the code (a changed charge keeps its own), generates the entry where
/// the company's charges are posted, fills `cargo` and writes it; commits management first, accounting
/// second. An error of its own steps is shown under "frmCompras_Atipicos:cmdAceptar_Click" after both
/// roll-backs. `GenerarAsiento`, `Eliminar_Atipico` and `Insertar` show their own errors, and the save then
/// goes on and commits what there is.
[[nodiscard]] ResultadoGuardado GuardarAtipico(
    clsAtipico& cargo, const CargoTecleado& tecleado, const PedirPrevisiones& pedir_previsiones);

/// What the person is told of a saved charge: its code and, when it was posted, the number of its entry.
[[nodiscard]] Mensaje mensaje_guardado(const ResultadoGuardado& resultado);

} // namespace atipicos
