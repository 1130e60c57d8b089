#pragma once

#include "platform/adodb/Connection.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

/// Transactions of two connections that share one session: both commits are there or neither.
namespace atipicos::sql {

enum class Lado : std::uint8_t {
    gestion,
    contabilidad
}; ///< a session that is not shared has the first alone

/// The one transaction of a session, as its engine makes it.
class TransaccionFisica {
public:
    TransaccionFisica() = default;
    TransaccionFisica(const TransaccionFisica&) = delete;
    TransaccionFisica& operator=(const TransaccionFisica&) = delete;
    virtual ~TransaccionFisica() = default;

    virtual void empieza(Donde donde) = 0;
    virtual void confirma(Donde donde) = 0; ///< durably; having failed it is still open, or lost
    virtual void deshace(Donde donde) = 0;
    virtual void pon_punto(Donde donde) = 0; ///< a savepoint, in the place of the one before
    virtual void vuelve_al_punto(Donde donde) = 0; ///< undoes what came after it, and takes it away
};

/// What each side of a session may do, and what it means for the transaction of the session.
///
/// - It begins: the transaction of the session begins, or it joins the one that the other is in. Twice is
///   refused; after a promised commit too, until the other has ended.
/// - It asks: as always; inside the transaction it sees what both have written.
/// - It writes without having begun: as always, but refused while the other is in its transaction.
/// - It commits: both are committed when the other has committed or never began; else it is a promise, kept
///   by the commit of the other. Unbegun it is refused.
/// - It rolls back: all is undone, and the transaction of the other is lost; also after a promised commit.
///   Where the other has undone that promise already, it is no error. Unbegun it is refused.
///
/// The error of a commit that fails is raised to the side that commits last. Its transaction stays open, or
/// lost, until that side rolls back; the side that had been promised its commit may roll back too, or begin
/// anew.
///
/// A lost transaction refuses everything but `RollbackTrans`, on each side that was in it.
///
/// In a unit (see `Unidad`) the same holds between two savepoints: begin sets one, the last commit leaves
/// everything to the end of the unit, and undoing goes back to it. Nothing is written there outside a
/// transaction.
class Transacciones {
public:
    Transacciones(TransaccionFisica& fisica, const char* fuente)
        : m_fisica(fisica)
        , m_fuente(fuente)
    {
    }

    void empieza(Lado lado, Donde donde);
    void confirma(Lado lado, Donde donde);
    void deshace(Lado lado, Donde donde);

    /// For a connection that is dropped: undoes the transaction that it was in.
    void abandona(Lado lado) noexcept;

    /// Raises an error unless the side may run a statement now. `escribe`: it changes or locks something.
    void admite(Lado lado, const std::string& sql, bool escribe, Donde donde) const;

    /// Says that the session has lost its transaction, and why; every side that was in it hears it at its
    /// next statement. Does nothing when there is none.
    void se_pierde(adodb::Categoria categoria, std::string motivo);

    void empieza_unidad(Donde donde); ///< refused while either side is in a transaction
    void confirma_unidad(Donde donde); ///< the same; having failed the unit is still to be undone
    void deshace_unidad(Donde donde);
    /// Undoes the last transaction of the unit that was committed, unless another has begun since.
    void deshace_ultima(Donde donde);

    [[nodiscard]] bool en_transaccion(Lado lado) const noexcept; ///< until its commit or roll-back; also lost
    [[nodiscard]] bool abierta() const noexcept { return m_abierta; } ///< the session's
    [[nodiscard]] bool en_unidad() const noexcept { return m_en_unidad; }

private:
    enum class Estado : std::uint8_t {
        fuera,
        dentro,
        prometida, ///< has committed, and waits for the other
        deshecha, ///< had been promised its commit: a roll-back is no error
        perdida,
    };
    struct Perdida {
        adodb::Categoria categoria = adodb::Categoria::otra;
        std::string motivo;
    };

    [[nodiscard]] Estado& de(Lado lado) noexcept { return m_estados[static_cast<std::size_t>(lado)]; }
    [[nodiscard]] Estado de(Lado lado) const noexcept { return m_estados[static_cast<std::size_t>(lado)]; }
    void exige_terminadas(Donde donde) const;
    void empieza_fisica(Donde donde);
    void confirma_fisica(Donde donde);
    void deshace_fisica(Donde donde);
    void vuelve_al_punto(Donde donde);
    [[noreturn]] void falla(
        adodb::Categoria categoria, const std::string& motivo, const std::string& sql, Donde donde) const;

    TransaccionFisica& m_fisica;
    const char* m_fuente;
    std::array<Estado, 2> m_estados{};
    std::array<Perdida, 2> m_perdidas;
    std::optional<Perdida> m_unidad_perdida;
    bool m_abierta = false;
    bool m_en_unidad = false;
    bool m_con_punto = false; ///< the last transaction of the unit can be undone
};

} // namespace atipicos::sql
