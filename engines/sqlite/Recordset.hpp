#pragma once

#include "engines/sqlite/Instruccion.hpp"
#include "platform/adodb/Connection.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::sqlite {

class Campo;
class Connection;

/// Rows of a query. Read-only ones are read as the database finds them, until the connection is asked to
/// write: the rest of them is then read and kept, so that it neither sees nor stands in the way of what is
/// written. With a pessimistic lock they are read whole at once; outside a transaction that lock is a
/// transaction of the recordset's own, from `Open` to `Update` or `Close`.
class Recordset final : public adodb::Recordset {
public:
    explicit Recordset(Connection& conexion);
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset() override;

    void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
        adodb::CommandType tipo, Donde donde) override;
    [[nodiscard]] bool Eof() const noexcept override { return m_fin; }
    void MoveNext(Donde donde) override;
    [[nodiscard]] std::size_t Count() const noexcept override { return m_campos.size(); }
    [[nodiscard]] adodb::Field& Fields(std::string_view nombre, Donde donde) override;
    [[nodiscard]] adodb::Field& Fields(std::size_t posicion, Donde donde) override;
    void AddNew(Donde donde) override;
    void Update(Donde donde) override;
    void Close(Donde donde) override;

    void guarda_el_resto(Donde donde); ///< reads the current and all later rows into memory

private:
    friend class Campo;

    [[noreturn]] void falla(std::string descripcion, Donde donde) const;
    void comprueba_abierto(Donde donde) const;
    void crea_campos();
    void busca_tabla(const std::string& reescrita);
    void carga_fila();
    void inserta(Donde donde);
    void modifica(Donde donde);
    [[nodiscard]] std::string condicion_de_clave(std::vector<Variant>& valores, Donde donde);
    void suelta() noexcept; ///< gives up whatever is held

    Connection& m_conexion;
    std::optional<Instruccion> m_instruccion;
    std::vector<std::unique_ptr<Campo>> m_campos;
    std::vector<std::vector<Variant>> m_filas; ///< those in memory
    std::size_t m_fila = 0;
    std::string m_sql;
    std::string m_esquema; ///< of an editable recordset
    std::string m_tabla; ///< of an editable recordset
    bool m_fin = true;
    bool m_en_memoria = false;
    bool m_editable = false;
    bool m_nueva = false; ///< a row is being added
    bool m_transaccion_propia = false;
};

} // namespace atipicos::sqlite
