#pragma once

#include "charges/clsAtipico.hpp"
#include "runtime/Currency.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace atipicos {

struct CargoTecleado;

inline constexpr int decimales_unidades = 2; ///< that are shown; more may be typed
inline constexpr int decimales_importe = 2;

/// One line as it stands in the entry fields.
struct LineaTecleada {
    std::int32_t Cod_Articulo = 0; ///< 0: no article
    std::string Descripcion;
    std::string Observaciones;
    Currency Unidades;
    Currency Costo;

    friend bool operator==(const LineaTecleada&, const LineaTecleada&) = default;
};

/// One row of the grid of lines: what it shows, and the account that it hides.
struct FilaCargo {
    LineaTecleada
        linea; ///< units and cost with the decimals that are shown, which is what a change starts from
    Currency Importe; ///< units × cost, in cents
    std::string Cuenta; ///< atypical-income account of the article, may be empty

    // Where the row comes from; what is keyed in of a charge is brought back by it.
    std::int32_t ArticuloDeCuenta = 0; ///< whose account it is
    std::int32_t FilaCargada = 0; ///< row in which the stored charge was opened with it; 0: keyed in
    bool Intacta = false; ///< as it was opened

    /// The seven cells, separated by tabs: article, description, observations, units (2 decimals), cost
    /// (`decimales_costo`), amount (2 decimals), account. A tab inside a text becomes a blank.
    [[nodiscard]] std::string texto(int decimales_costo) const;
};

/// The charge that is being keyed in: its object, the rows of its grid, its total, and which of its lines is
/// being changed. Rows count from 1, as in the grid. An operation that raises an error has changed nothing.
class EdicionAtipico {
public:
    /// The atypical-income account of an article; asked only for lines that have one.
    using CuentaDeArticulo = std::function<std::string(std::int32_t)>;

    /// Drops the charge and begins a new one, without lines, of the year of today.
    void Nuevo_Atipico();

    /// Adds the line, or writes it over the one that is being changed, whose account it leaves alone.
    /// Returns its row. Error 6 for an amount that does not fit or beyond 32767 lines.
    std::int32_t Aceptar_Linea(const LineaTecleada& linea, const CuentaDeArticulo& cuenta);

    /// Adds a line of a stored charge.
    void Cargar_Linea(const LineaTecleada& linea, std::int32_t Num_Linea, const std::string& cuenta);

    LineaTecleada Modificar_Linea(std::int32_t fila); ///< takes a line back for change, as it is shown
    void Dejar_Linea() noexcept; ///< gives the change of a line up: what is accepted next is a new one
    void Eliminar_Linea(std::int32_t fila); ///< a change of that line ends, one of a later line follows it
    void Comentar_Linea(std::int32_t fila, const std::string& observaciones);

    [[nodiscard]] Currency Calcular_Total() const; ///< sum of the rows
    [[nodiscard]] Currency Total() const noexcept { return m_total; } ///< as shown
    [[nodiscard]] const std::vector<FilaCargo>& filas() const noexcept { return m_filas; }
    [[nodiscard]] clsAtipico& cargo() noexcept { return m_cargo; }
    [[nodiscard]] const clsAtipico& cargo() const noexcept { return m_cargo; }
    [[nodiscard]] bool bolNuevaLinea() const noexcept { return m_bolNuevaLinea; }
    [[nodiscard]] std::int32_t intLineaActual() const noexcept { return m_intLineaActual; } ///< 0: a new line

    /// Hands total, amounts and accounts to the save.
    void Rellenar(CargoTecleado& tecleado) const;

private:
    [[nodiscard]] FilaCargo& fila(std::int32_t numero);
    [[nodiscard]] FilaCargo forma_fila(const LineaTecleada& linea, std::string cuenta) const;
    void agrega(const LineaTecleada& linea, FilaCargo fila, std::int32_t Num_Linea);
    void cambia(const LineaTecleada& linea, FilaCargo nueva);

    clsAtipico m_cargo;
    std::vector<FilaCargo> m_filas;
    Currency m_total;
    bool m_bolNuevaLinea = true;
    std::int32_t m_intLineaActual = 0;
};

} // namespace atipicos
