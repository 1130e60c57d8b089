#pragma once

#include "engines/postgresql/Instruccion.hpp"
#include "engines/postgresql/Preparada.hpp"
#include "engines/sql/Linea.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

struct Opciones {
    /// `postgresql://usuario@servidor/base?sslmode=verify-full` or `host=… dbname=…`, all that libpq knows,
    /// without a password: that comes from PGPASSWORD or from a pass file. With `preparadas=no` besides no
    /// statement is prepared, as behind a pooler that hands a session from one client to the next.
    std::string direccion = {};
    std::string esquema = {}; ///< where names without a schema are looked for
    std::vector<std::string> bases = {}; ///< `base.dbo.Tabla` is `dbo.Tabla` of this database for these names
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    std::chrono::milliseconds espera_instruccion{ 120'000 }; ///< the longest that one statement may take
    sql::AvisoLinea avisa = {};
    sql::SigueEsperando sigue_esperando = {};
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
    bool preparadas = true; ///< off only to compare; the address says it too
};

inline constexpr auto fuente = "PostgreSQL"; ///< what errors name as their source

using Texto = std::optional<std::string>; ///< a value as it travels to the server; nothing for null

/// A statement to send, with the values of its `$1`, `$2` …
struct Orden {
    const char* sql = "";
    std::span<const Texto> valores = {};
    Preparada* preparada = nullptr; ///< what the server keeps of it; null: nothing
};

/// Who reads the rows of a query while the server sends them.
class Lectura {
public:
    Lectura() = default;
    Lectura(const Lectura&) = delete;
    Lectura& operator=(const Lectura&) = delete;

    /// Takes the rest of the rows off the line, because something else is to be asked. Raises nothing: a
    /// failure is told when the rows before it have been read.
    virtual void recoge() = 0;

protected:
    ~Lectura() = default;
};

/// The line to the server: opens it with the settings of the session and exchanges statements for answers.
class Enlace {
public:
    /// Raises an error that names the server, never the password.
    Enlace(const Opciones& opciones, Donde donde);

    /// Sends the statements together and waits for all their answers: one round trip, whatever their number.
    /// After one that fails the server skips the rest, which may be without an answer. Raises an error only
    /// when the line is lost, in the name of `instruccion`.
    [[nodiscard]] std::vector<Respuesta> intercambia(
        std::span<const Orden> ordenes, std::string_view instruccion, Donde donde);

    /// Sends a query, one without a semicolon, whose rows come one by one: the answer holds the first of
    /// them, or is the last one, with no row or an error. The rows are to be asked for until the last answer,
    /// or left; another exchange has them taken off the line before.
    [[nodiscard]] Respuesta empieza_lectura(const std::string& sql, Lectura& lectura, Donde donde);
    [[nodiscard]] Respuesta sigue_lectura(std::string_view instruccion, Donde donde);
    void deja_lectura(const Lectura& lectura) noexcept; ///< nothing, when it is at its end

    [[nodiscard]] bool con_preparadas() const noexcept { return m_con_preparadas; }
    void olvida_preparadas() noexcept; ///< when the server has

    [[nodiscard]] bool perdido() const noexcept { return m_perdido; }
    void reanuda(Donde donde); ///< opens the line again, as it was opened
    [[nodiscard]] PGconn* get() const noexcept { return m_linea.get(); }

private:
    friend class Preparada;

    struct Cierra {
        void operator()(PGconn* linea) const noexcept { PQfinish(linea); }
    };

    void comprueba_abierta(Donde donde);
    void exige_ajustes(Donde donde);
    void ajusta(const std::string& orden, Donde donde);
    [[nodiscard]] std::vector<Respuesta> intercambia_texto(
        std::span<const Orden> ordenes, std::string_view instruccion, Donde donde);
    [[nodiscard]] std::vector<Respuesta> intercambia_en_fila(
        std::span<const Orden> ordenes, std::string_view instruccion, Donde donde);
    [[nodiscard]] bool envia(const Orden& orden, Preparada*& nueva);
    [[nodiscard]] bool envia_preparada(
        const Orden& orden, const std::vector<const char*>& valores, Preparada& preparada, Preparada*& nueva);
    [[nodiscard]] std::size_t envia_vacia(std::string_view instruccion, Donde donde);
    [[nodiscard]] std::size_t envia_sobrantes(std::string_view instruccion, Donde donde);
    [[nodiscard]] std::vector<Respuesta> recibe(std::size_t sobrantes, const std::vector<Preparada*>& nuevas,
        std::string_view instruccion, Donde donde);
    [[nodiscard]] Respuesta recibe_una(std::string_view instruccion, Donde donde);
    /// The next part of an answer, as `PQgetResult` gives it. From a server that is silent for longer than it
    /// may take, or than whoever asks will wait, it comes as of a line that was cut.
    [[nodiscard]] Respuesta toma() noexcept;
    void espera_respuesta();
    void corta(std::string motivo);
    void recoge_lectura();
    [[nodiscard]] Preparada* preparada_de(const Orden& orden);
    [[nodiscard]] bool conoce(const Preparada& preparada) const noexcept;
    void avisa(sql::Linea que) const;
    [[noreturn]] void falla(std::string_view instruccion, Donde donde);

    std::unique_ptr<PGconn, Cierra> m_linea;
    sql::AvisoLinea m_avisa;
    sql::SigueEsperando m_sigue_esperando;
    std::chrono::milliseconds m_limite; ///< after which a server that says nothing is lost
    std::string m_motivo; ///< why we have cut the line ourselves; empty: we have not
    Lectura* m_lectura = nullptr; ///< whose rows are on the line
    bool m_una_a_una = false; ///< the rows of the last statement came so: the client library remembers it
    bool m_perdido = false;
    std::string m_ajustes; ///< the settings of the session, as an open one is told them
    bool m_solo_lectura_despues = false; ///< the session is told so when it is open
    bool m_con_preparadas = true;
    std::string m_sello; ///< with which nobody else's names of prepared statements begin
    std::uint64_t m_nombres = 0; ///< given so far
    std::uint64_t m_memoria = 1; ///< of the server behind the line: another one knows nothing
    std::vector<std::string> m_sobrantes; ///< names that it keeps for nothing
    std::map<std::string, Preparada, std::less<>> m_palabras; ///< those about the transaction
};

} // namespace atipicos::postgresql
