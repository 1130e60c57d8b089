#pragma once

#include "runtime/Currency.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What is keyed in of a charge and not saved yet, kept by the host where it outlives the process.
namespace atipicos {

/// One line as it was keyed in.
struct LineaBorrador {
    std::int32_t Cod_Articulo = 0; ///< 0: no article
    std::string Descripcion;
    std::string Observaciones;
    Currency Unidades;
    Currency Costo;
    /// Whose income account the line is posted to: a line that is changed keeps the account that it had.
    std::int32_t ArticuloDeCuenta = 0;
    std::int32_t FilaCargada = 0; ///< row in which a stored charge was opened with it; 0: keyed in
    bool Intacta = false; ///< as it was opened

    friend bool operator==(const LineaBorrador&, const LineaBorrador&) = default;
};

struct Borrador {
    // The stored charge that is being changed; a new one has no code.
    std::string Codigo;
    std::int16_t Ejercicio = 0;
    std::int16_t AlmacenDelCargo = 0;
    std::string Cargado; ///< its rows as the grid showed them when it was opened

    std::int16_t Almacen = 0;
    std::int32_t Proveedor = 0;
    std::string NombreProveedor; ///< as the person sees it
    std::string Fecha; ///< as it stands in its box: perhaps no day of the calendar
    std::string Observaciones;
    bool Franquiciado = false;
    Currency Total; ///< as shown
    std::vector<LineaBorrador> Lineas;

    LineaBorrador EnCurso; ///< in the entry fields, not accepted as a line
    bool HayEnCurso = false;
    std::int32_t FilaEnCambio = 0; ///< row that it changes; 0: a new one

    bool Guardandose = false; ///< its save had begun: it may have been stored

    friend bool operator==(const Borrador&, const Borrador&) = default;
};

/// The draft of one open editor. Destroyed it stays, to be offered to the person.
class BorradorAbierto {
public:
    BorradorAbierto() = default;
    BorradorAbierto(const BorradorAbierto&) = delete;
    BorradorAbierto& operator=(const BorradorAbierto&) = delete;
    virtual ~BorradorAbierto() = default;

    /// Keeps all of it in place of what was kept before, which stays when an error is raised: its
    /// description says to a person what is wrong.
    virtual void Guardar(const Borrador& borrador) = 0;

    /// Nothing is kept any more: the charge was saved or given up. `Guardar` begins another one.
    virtual void Quitar() noexcept = 0;
};

/// Where a host keeps drafts.
class Borradores {
public:
    Borradores() = default;
    Borradores(const Borradores&) = delete;
    Borradores& operator=(const Borradores&) = delete;
    virtual ~Borradores() = default;

    /// One for each editor that is opened; nothing is written until there is something to keep.
    [[nodiscard]] virtual std::unique_ptr<BorradorAbierto> Abrir() = 0;
};

} // namespace atipicos
