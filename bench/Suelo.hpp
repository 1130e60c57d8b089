#pragma once

#include "bench/Traduccion.hpp"

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

/// The statements that the component and the host's libraries send, through the bare client library of a
/// database. There are two floors:
///
/// - the literal one: each text as it comes, a session for each connection, both commits;
/// - the prepared one: each shape prepared once, one session, one commit.
///
/// The databases of both keep the trail of charges by the same triggers as that of the component.
namespace atipicos::bench {

class Suelo {
public:
    Suelo(const Suelo&) = delete;
    Suelo& operator=(const Suelo&) = delete;
    virtual ~Suelo() = default;

    virtual void prepara() { } ///< all shapes; each is otherwise prepared when it is first met
    void repite(std::size_t cual) ///< an operation, by its number
    {
        for (const auto& paso : m_traducido.guiones.at(cual))
            ejecuta(paso);
    }
    /// How much there is of each thing that a save writes: the same on both floors and in the company of the
    /// component, when all have done the same.
    [[nodiscard]] std::string cuentas()
    {
        static constexpr std::array<const char*, 9> consultas{
            "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos",
            "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas",
            "SELECT COUNT(*) FROM Historial",
            "SELECT COUNT(*) FROM Bexmor.dbo.Asientos",
            "SELECT COUNT(*) FROM Bexmor.dbo.Apuntes",
            "SELECT COUNT(*) FROM Bexmor.dbo.Registro_Impuestos",
            "SELECT COUNT(*) FROM Bexmor.dbo.Previsiones",
            "SELECT SUM(Numero) FROM Contador_Proveedores_Cargos_Atipicos",
            "SELECT SUM(Numero) FROM Bexmor.dbo.Contador_Asientos",
        };
        std::string todas;
        for (const auto* consulta : consultas)
            todas += celda(sql::reescribe(consulta, m_traducido.catalogos[0])) + " ";
        return todas;
    }

protected:
    explicit Suelo(const Traducido& traducido) ///< which must outlive it
        : m_traducido(traducido)
    {
    }
    [[nodiscard]] const std::vector<Preparable>& formas() const noexcept { return m_traducido.formas; }

private:
    virtual void ejecuta(const Paso& paso) = 0; ///< and reads all rows
    [[nodiscard]] virtual std::string celda(const std::string& sql) = 0; ///< the first, on management

    const Traducido& m_traducido;
};

/// Raises an error unless all have the same in them.
inline void exige_lo_mismo(std::initializer_list<Suelo*> suelos)
{
    const auto primero = (*suelos.begin())->cuentas();
    for (auto* suelo : suelos)
        if (suelo->cuentas() != primero)
            throw std::runtime_error(
                "the floors have not done the same: " + suelo->cuentas() + "against " + primero);
}

} // namespace atipicos::bench
