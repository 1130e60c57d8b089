#pragma once

#include "automation/Despacho.hpp"
#include "engines/ado/Conversion.hpp"
#include "platform/adodb/Connection.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::ado {

inline constexpr std::int32_t opcion_texto = 1; ///< the command is a text

/// A recordset of the host.
class Recordset final : public adodb::Recordset {
public:
    explicit Recordset(automation::Despacho conexion);
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset() override;

    void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    [[nodiscard]] bool Eof() const noexcept override { return m_fin; }
    void MoveNext(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::size_t Count() const noexcept override { return m_campos.size(); }
    [[nodiscard]] adodb::Field& Fields(std::string_view nombre, Donde donde = Donde::aqui()) override;
    [[nodiscard]] adodb::Field& Fields(std::size_t posicion, Donde donde = Donde::aqui()) override;
    void AddNew(Donde donde = Donde::aqui()) override;
    void Update(Donde donde = Donde::aqui()) override;
    void Close(Donde donde = Donde::aqui()) override;

private:
    void suelta(Donde donde); ///< closes the host's recordset, if there is one
    void abandona() noexcept; ///< the same, whatever the host says to it
    void lee_campos();
    void lee_fin();
    void comprueba_abierto(Donde donde) const;

    automation::Despacho m_conexion;
    automation::Despacho m_filas; ///< the host's recordset while open
    std::vector<std::unique_ptr<adodb::Field>> m_campos;
    std::string m_sql;
    bool m_fin = true;
};

/// Does something with the host's database; what it raises, and what it gives that is no such value, becomes
/// an error of the database.
template <class Trabajo> auto con_base_de_datos(const std::string& sql, Donde donde, Trabajo&& trabajo)
{
    try {
        return con_anfitrion(donde, std::forward<Trabajo>(trabajo));
    } catch (const Error& error) {
        throw adodb::ErrorBaseDatos(error.numero(), error.fuente(), error.descripcion(), sql, donde);
    }
}

} // namespace atipicos::ado
