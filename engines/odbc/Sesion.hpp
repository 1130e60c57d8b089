#pragma once

#include "engines/odbc/Enlace.hpp"
#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Transacciones.hpp"
#include "engines/sql/Vigencia.hpp"

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::odbc {

/// A line to a server with its settings, its transaction and what is known of its tables: all that the
/// connections over it have in common.
///
/// What the product has undone by itself, and what went with the line, is lost to all that were in it. The
/// line is opened again between transactions: by a query or the beginning of a transaction that finds it
/// lost, or by the operation after the one that was told so.
class Sesion final : public sql::TransaccionFisica {
public:
    Sesion(const Opciones& opciones, Donde donde);

    [[nodiscard]] const Servidor& servidor() const noexcept { return m_enlace.servidor(); }
    [[nodiscard]] sql::Catalogo& catalogo(sql::Lado lado) noexcept;
    [[nodiscard]] sql::Transacciones& transacciones() noexcept { return m_transacciones; }

    /// Whether what is known of the tables still holds; if not, `lee_catalogo` is to be called.
    [[nodiscard]] bool conoce_las_tablas() const noexcept { return m_vigencia.vale(); }
    void lee_catalogo(Donde donde);

    /// Runs a statement written as the product wants it, and undoes what a failing one has done.
    Respuesta ejecuta(const std::string& sql, Donde donde);
    void ejecutada(std::string_view sql) noexcept { m_vigencia.ejecutada(sql); } ///< by a side, without error

    /// The columns of a table's primary key; asked of the driver once.
    [[nodiscard]] const std::vector<std::string>& columnas_clave(const TablaNombrada& tabla, Donde donde);
    /// Makes true and false of the small numbers that were declared BIT.
    void vuelve_bits(Respuesta& respuesta) const;

    void empieza(Donde donde) override;
    void confirma(Donde donde) override;
    void deshace(Donde donde) override;
    void pon_punto(Donde donde) override;
    void vuelve_al_punto(Donde donde) override;

private:
    enum class Queda : std::uint8_t { todo, nada, no_se_sabe }; ///< of the transaction after an error

    Respuesta ejecuta_protegida(const std::string& sql, Donde donde);
    Respuesta ejecuta_sola(const std::string& sql, Donde donde);
    void repara() noexcept; ///< after an error: finds out what is left, and says so when nothing is
    [[nodiscard]] Queda lo_que_queda();
    [[nodiscard]] bool sigue_viva();
    void pierde(bool deshaz) noexcept; ///< the transaction; `deshaz`: the product may still have it open

    Enlace m_enlace;
    sql::Transacciones m_transacciones{ *this, "ODBC" };
    std::array<sql::Catalogo, 2> m_catalogos; ///< by side
    sql::Vigencia m_vigencia; ///< of what has been read of the catalogue
    std::map<std::string, std::vector<std::string>> m_claves; ///< by table, as statements name it
    std::set<std::pair<std::string, std::string>>
        m_bits; ///< BIT columns that the driver does not know as such
    bool m_con_punto = false; ///< of a unit
};

} // namespace atipicos::odbc
