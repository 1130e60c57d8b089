#pragma once

#include "engines/postgresql/Confirmaciones.hpp"
#include "engines/postgresql/Enlace.hpp"
#include "engines/postgresql/Preparadas.hpp"
#include "engines/postgresql/Puntos.hpp"
#include "engines/postgresql/Tablas.hpp"
#include "engines/sql/Transacciones.hpp"
#include "engines/sql/Vigencia.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

/// A session on the server, which one connection has for itself or two share: its line, what is known of its
/// tables, and its one transaction.
///
/// A line that is lost outside a transaction, or before the server has been told of one, is opened again and
/// what changes nothing is repeated. With a transaction it is lost for good. A commit whose answer is lost is
/// looked up where the database keeps keys of commits (`Confirmaciones`): it is done, or it is an error that
/// says that nothing of it is kept; an error that nobody knows is what is left where it cannot be looked up.
class Sesion final : public sql::TransaccionFisica {
public:
    Sesion(const Opciones& opciones, Donde donde);

    [[nodiscard]] sql::Transacciones& transacciones() noexcept { return m_transacciones; }
    [[nodiscard]] sql::Catalogo& catalogo(sql::Lado lado) noexcept; ///< what names mean on that side

    /// The statement as the server wants it from that side.
    [[nodiscard]] std::string reescribe(sql::Lado lado, const std::string& sql, Donde donde);

    /// Runs one statement of a side in one exchange and gives the answer to it, which is no error. One that
    /// fails undoes itself alone. `cambia`: inside a transaction it changes or locks something. `bloquea`:
    /// the rows of the query.
    [[nodiscard]] Respuesta pide(
        sql::Lado lado, const std::string& sql, bool cambia, bool bloquea, Donde donde);
    /// The same for a query whose rows are read in their order: outside a transaction, and where it is not
    /// prepared, the answer is that of `Enlace::empieza_lectura`.
    [[nodiscard]] Respuesta pide_para_leer(
        sql::Lado lado, const std::string& sql, Lectura& lectura, Donde donde);
    [[nodiscard]] Respuesta sigue_lectura(std::string_view instruccion, Donde donde)
    {
        return m_enlace.sigue_lectura(instruccion, donde);
    }
    void deja_lectura(const Lectura& lectura) noexcept { m_enlace.deja_lectura(lectura); }
    /// The same for one of the engine's own.
    [[nodiscard]] Respuesta ejecuta(const Orden& orden, bool cambia, Donde donde);
    [[nodiscard]] Preparada* preparada(std::string_view propia) ///< that the session keeps of such a one
    {
        return m_enlace.con_preparadas() ? m_preparadas.propia(propia) : nullptr;
    }
    void ejecutada(std::string_view sql) noexcept { m_vigencia.ejecutada(sql); } ///< may change the tables

    [[nodiscard]] const Tablas& tablas() const noexcept { return m_tablas; }
    [[nodiscard]] PGconn* base() const noexcept { return m_enlace.get(); }

    void empieza(Donde donde) override; ///< with the next statement
    void confirma(Donde donde) override;
    void deshace(Donde donde) override;
    void pon_punto(Donde donde) override; ///< with the next statement
    void vuelve_al_punto(Donde donde) override; ///< with the next statement

private:
    enum class Confirmada : std::uint8_t { si, no, no_se_sabe };

    [[nodiscard]] std::optional<Respuesta> pide_preparada(
        sql::Lado lado, const std::string& sql, bool cambia, bool bloquea, Donde donde);
    /// Whether an error means that the server cannot use what it had prepared; it is forgotten here too.
    [[nodiscard]] bool ha_olvidado(const Respuesta& respuesta, Preparada& preparada);
    /// The answer may be an error; the failure is undone.
    [[nodiscard]] Respuesta intenta(const Orden& orden, bool cambia, Donde donde);
    [[nodiscard]] Respuesta intenta_dentro(const Orden& orden, bool cambia, Donde donde);
    [[nodiscard]] Respuesta intenta_fuera(const Orden& orden, Donde donde);
    /// Opens the line when it is lost, and again, to say it once more, when it turns out to be.
    [[nodiscard]] std::vector<Respuesta> intercambia(
        std::span<const Orden> ordenes, std::string_view instruccion, bool repetible, Donde donde);
    [[nodiscard]] Respuesta di(const char* sql, Donde donde); ///< one word about the transaction
    void asegura_enlace(Donde donde);
    void vuelve_atras(bool previas, Donde donde);
    void pierde(adodb::Categoria categoria, const char* motivo); ///< the transaction
    [[nodiscard]] bool lleva_clave() const; ///< the transaction that is to be committed
    [[nodiscard]] Confirmada busca_confirmacion(Donde donde);
    /// After a commit without an answer; an error unless it was done.
    void aclara(const adodb::ErrorBaseDatos& error, Confirmada que, Donde donde);
    void asegura_catalogo(Donde donde);
    void lee_catalogo(Donde donde);

    Enlace m_enlace;
    Preparadas m_preparadas;
    std::array<sql::Catalogo, 2> m_catalogos; ///< by side
    Tablas m_tablas;
    sql::Vigencia m_vigencia; ///< of what has been read of the tables
    Puntos m_puntos;
    Confirmaciones m_confirmaciones;
    bool m_solo_lectura;
    sql::Transacciones m_transacciones;
};

} // namespace atipicos::postgresql
