#pragma once

#include "platform/adodb/Connection.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sql {

class Campo;

/// What the recordsets of all engines have in common: fields by name, rows read as the database hands them
/// over or kept in memory, and the INSERT or UPDATE that writes a row back by its key.
///
/// With a pessimistic lock the rows are kept in memory and can be changed; outside a transaction that lock is
/// a transaction of the recordset's own, from `Open` to `Update` or `Close`.
class Filas : public adodb::Recordset {
public:
    Filas(const Filas&) = delete;
    Filas& operator=(const Filas&) = delete;
    ~Filas() override;

    void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) final;
    [[nodiscard]] bool Eof() const noexcept final { return m_fin; }
    void MoveNext(Donde donde = Donde::aqui()) final;
    [[nodiscard]] std::size_t Count() const noexcept final { return m_campos.size(); }
    [[nodiscard]] adodb::Field& Fields(std::string_view nombre, Donde donde = Donde::aqui()) final;
    [[nodiscard]] adodb::Field& Fields(std::size_t posicion, Donde donde = Donde::aqui()) final;
    void AddNew(Donde donde = Donde::aqui()) final;
    void Update(Donde donde = Donde::aqui()) final;
    void Close(Donde donde = Donde::aqui()) final;

    void guarda_el_resto(Donde donde); ///< reads the current and all later rows into memory

protected:
    struct Columna {
        std::string nombre;
        bool es_fecha = false;
    };
    struct Tabla {
        std::string nombre;
        std::string calificado; ///< as a statement names it
        const std::vector<std::string>& clave; ///< columns of its primary key
    };

    Filas(adodb::Connection& conexion, const char* fuente);

    [[nodiscard]] const std::string& instruccion() const noexcept { return m_sql; }
    /// Whether the rows were asked for to be read once and in their order: they may come as they are read.
    [[nodiscard]] bool solo_hacia_delante() const noexcept { return m_solo_hacia_delante; }
    [[noreturn]] void falla(std::string descripcion, Donde donde) const;

    /// Appends the value of the row stood on as `Field::anexa_texto` does.
    virtual void anexa(std::size_t columna, std::string& destino) const;

    /// To be called by the destructor of every engine's recordset: it still needs `cierra`.
    void suelta() noexcept;

private:
    friend class Campo;

    /// Runs the query, which stays alive until `cierra`, and stands on its first row; false when there is
    /// none.
    virtual bool abre(const std::string& sql, bool bloquea, Donde donde) = 0;
    [[nodiscard]] virtual std::vector<Columna> columnas() const = 0;
    virtual bool avanza(Donde donde) = 0; ///< to the next row; false at the end
    [[nodiscard]] virtual Variant lee(std::size_t columna, Donde donde) const = 0; ///< of the row stood on
    virtual void cierra() noexcept = 0; ///< gives up what `abre` got hold of

    [[nodiscard]] virtual bool en_transaccion() const noexcept = 0;
    [[nodiscard]] virtual Tabla tabla(Donde donde) = 0; ///< the one that `Update` writes
    [[nodiscard]] virtual std::string marcador(std::size_t numero) const; ///< of the nth value (1-based)
    /// Runs an INSERT or UPDATE with these values; the rows affected.
    virtual std::int32_t escribe(const std::string& sql, const std::vector<Variant>& valores, Donde donde)
        = 0;

    void comprueba_abierto(Donde donde) const;
    void carga_fila();
    void inserta(Donde donde);
    void modifica(Donde donde);
    [[nodiscard]] std::string condicion_de_clave(
        const Tabla& tabla, std::vector<Variant>& valores, Donde donde) const;

    adodb::Connection& m_conexion;
    const char* m_fuente;
    std::vector<std::unique_ptr<Campo>> m_campos;
    std::vector<std::vector<Variant>> m_filas; ///< those in memory
    std::size_t m_fila = 0;
    std::string m_sql;
    bool m_solo_hacia_delante = false;
    bool m_abierto = false;
    bool m_fin = true;
    bool m_en_memoria = false;
    bool m_editable = false;
    bool m_nueva = false; ///< a row is being added
    bool m_transaccion_propia = false;
};

} // namespace atipicos::sql
