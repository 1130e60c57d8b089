#pragma once

#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Linea.hpp"
#include "engines/sql/Transacciones.hpp"
#include "engines/sql/Vigencia.hpp"
#include "engines/sqlite/Preparadas.hpp"

#include <array>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::sqlite {

class Recordset;

struct Opciones {
    std::filesystem::path fichero;
    bool crear = false; ///< makes the file when there is none
    bool en_memoria = false; ///< a new database in memory; `fichero` is what errors call it
    bool solo_lectura = false; ///< nothing is written but what another session left in its log
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
    sql::SigueTrabajando sigue = {};
    bool preparadas = true; ///< statements that differ in values alone are prepared once; off only to compare
};

/// An open database file, with the settings, the transaction and what is known of the tables: all that the
/// connections over it have in common.
class Sesion final : public sql::TransaccionFisica {
public:
    /// Raises an error that names the file and what is wrong with it: missing, a folder, no database.
    [[nodiscard]] static std::shared_ptr<Sesion> abre(const Opciones& opciones, Donde donde);

    [[nodiscard]] sqlite3* base() const noexcept { return m_base.get(); }
    [[nodiscard]] sql::Catalogo& catalogo(sql::Lado lado) noexcept;

    /// The transaction, which SQLite may have undone by itself since the last statement.
    [[nodiscard]] sql::Transacciones& transacciones();

    /// A statement of a side as this database wants it.
    [[nodiscard]] std::string reescribe(sql::Lado lado, const std::string& sql, Donde donde);
    /// The same prepared, with its values; it stays alive until the loan is given back.
    [[nodiscard]] Prestada prepara(sql::Lado lado, const std::string& sql, Donde donde);
    [[nodiscard]] Prestada prepara_propia(std::string_view sql, Donde donde); ///< a statement as it is
    void ejecuta(const std::string& sql, std::int32_t* afectadas, Donde donde); ///< as it is, and only once
    void ejecuta(Prestada instruccion, std::int32_t* afectadas, Donde donde); ///< to its end
    void ejecutada(std::string_view sql) noexcept { m_vigencia.ejecutada(sql); } ///< by a side, without error

    /// Rows that are still being read would stand in the way of a write that comes after another user's:
    /// they are read to their end and kept.
    void guarda_lecturas(Donde donde);
    void anota_lectura(Recordset& filas) { m_lecturas.push_back(&filas); }
    void olvida_lectura(const Recordset& filas) noexcept;

    /// The columns of a table's primary key, in no particular order; asked of the database once.
    [[nodiscard]] const std::vector<std::string>& columnas_clave(
        const std::string& esquema, const std::string& tabla, Donde donde);

    void empieza(Donde donde) override;
    void confirma(Donde donde) override;
    void deshace(Donde donde) override;
    void pon_punto(Donde donde) override;
    void vuelve_al_punto(Donde donde) override;

private:
    struct Cierra {
        void operator()(sqlite3* base) const noexcept { sqlite3_close_v2(base); }
    };

    Sesion(sqlite3* base, bool preparadas);
    void prepara(const Opciones& opciones, Donde donde);
    static int espera_turno(void* sesion, int veces); ///< not 0: try again
    static int mira_si_sigue(void* sesion); ///< not 0: give up
    void lee_algo(Donde donde);
    void asegura_catalogo(Donde donde);
    void lee_catalogo(Donde donde);
    void ejecuta_propia(std::string_view sql, Donde donde);

    sql::SigueTrabajando m_sigue;
    std::chrono::milliseconds m_espera{}; ///< for another user's lock
    std::chrono::steady_clock::time_point m_hasta; ///< how long the present wait lasts
    std::unique_ptr<sqlite3, Cierra> m_base; ///< after what it needs until it is closed
    Preparadas m_preparadas;
    sql::Transacciones m_transacciones{ *this, "SQLite" };
    std::vector<Recordset*> m_lecturas; ///< recordsets that are being read
    std::array<sql::Catalogo, 2> m_catalogos; ///< by side
    sql::Vigencia m_vigencia; ///< of what has been read of the catalogue
    std::map<std::pair<std::string, std::string>, std::vector<std::string>> m_claves; ///< by schema and table
    bool m_con_punto = false;
};

/// A file as SQLite takes it where addresses are understood, to be opened for `modo`: ro, rw or rwc. It can
/// stand in a statement between quotes.
[[nodiscard]] std::string uri(const std::filesystem::path& fichero, std::string_view modo);

} // namespace atipicos::sqlite
