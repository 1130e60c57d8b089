#pragma once

#include "engines/postgresql/Instruccion.hpp"
#include "engines/sql/Linea.hpp"

#include <chrono>
#include <libpq-fe.h>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

struct Opciones {
    /// `postgresql://usuario@servidor/base?sslmode=verify-full` or `host=… dbname=…`, all that libpq knows,
    /// without a password: that comes from PGPASSWORD or from a pass file.
    std::string direccion = {};
    std::string esquema = {}; ///< where names without a schema are looked for
    std::vector<std::string> bases = {}; ///< `base.dbo.Tabla` is `dbo.Tabla` of this database for these names
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    std::chrono::milliseconds espera_instruccion{ 120'000 }; ///< the longest that one statement may take
    sql::AvisoLinea avisa = {};
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
};

using Texto = std::optional<std::string>; ///< a value as it travels to the server; nothing for null

/// A statement to send, with the values of its `$1`, `$2` …
struct Orden {
    const char* sql = ""; ///< or the name of a prepared one
    std::span<const Texto> valores = {};
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

    [[nodiscard]] bool perdido() const noexcept { return m_perdido; }
    void reanuda(Donde donde); ///< opens the line again, as it was opened
    [[nodiscard]] PGconn* get() const noexcept { return m_linea.get(); }

private:
    struct Cierra {
        void operator()(PGconn* linea) const noexcept { PQfinish(linea); }
    };

    void comprueba_abierta(Donde donde);
    [[nodiscard]] std::vector<Respuesta> intercambia_texto(
        std::span<const Orden> ordenes, std::string_view instruccion, Donde donde);
    [[nodiscard]] std::vector<Respuesta> intercambia_en_fila(
        std::span<const Orden> ordenes, std::string_view instruccion, Donde donde);
    [[nodiscard]] bool envia(const Orden& orden);
    [[nodiscard]] std::vector<Respuesta> recibe(
        std::size_t cuantas, std::string_view instruccion, Donde donde);
    void avisa(sql::Linea que) const;
    [[noreturn]] void falla(std::string_view instruccion, Donde donde);

    std::unique_ptr<PGconn, Cierra> m_linea;
    sql::AvisoLinea m_avisa;
    bool m_perdido = false;
};

} // namespace atipicos::postgresql
