#pragma once

#include "engines/postgresql/Apertura.hpp"
#include "engines/postgresql/Instruccion.hpp"
#include "engines/postgresql/Opciones.hpp"
#include "engines/postgresql/Preparada.hpp"

#include <chrono>
#include <cstdint>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::postgresql {

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
    /// Raises an error while whoever waits for an answer is asked whether to go on: he may let other things
    /// happen meanwhile, and they may want the server, whose answer is still to come.
    void exige_libre(Donde donde) const;
    /// Opens the line again, as it was opened, to whichever of its servers will have it. Raises an error when
    /// that cannot be done, and nobody wants to wait for it.
    void reanuda(Donde donde);
    [[nodiscard]] PGconn* get() const noexcept { return m_linea.get(); }

private:
    friend class Preparada;

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
    [[nodiscard]] bool se_espera(std::chrono::milliseconds callado);
    void corta(std::string motivo);
    void recoge_lectura();
    [[nodiscard]] Preparada* preparada_de(const Orden& orden);
    [[nodiscard]] bool conoce(const Preparada& preparada) const noexcept;
    void avisa(sql::Linea que) const;
    [[noreturn]] void falla(std::string_view instruccion, Donde donde);

    Apertura m_apertura;
    LineaAbierta m_linea;
    sql::AvisoLinea m_avisa;
    sql::SigueEsperando m_sigue_esperando;
    std::chrono::milliseconds m_limite; ///< after which a server that says nothing is lost
    std::string m_motivo; ///< why we have cut the line ourselves; empty: we have not
    Lectura* m_lectura = nullptr; ///< whose rows are on the line
    bool m_una_a_una = false; ///< the rows of the last statement came so: the client library remembers it
    bool m_perdido = false;
    bool m_reanudando = false;
    bool m_preguntando = false;
    bool m_con_preparadas = true;
    std::string m_sello; ///< with which nobody else's names of prepared statements begin
    std::uint64_t m_nombres = 0; ///< given so far
    std::uint64_t m_memoria = 1; ///< of the server behind the line: another one knows nothing
    std::vector<std::string> m_sobrantes; ///< names that it keeps for nothing
    std::map<std::string, Preparada, std::less<>> m_palabras; ///< those about the transaction
};

} // namespace atipicos::postgresql
