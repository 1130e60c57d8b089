#pragma once

#include "platform/borrador/Borradores.hpp"
#include "runtime/Error.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// Keeps drafts in memory and notes what is asked of them; fails when it is told to.
class BorradoresDePrueba final : public Borradores {
public:
    std::vector<std::string> sucesos; ///< "abre", "guarda", "guarda antes de grabar", "quita", "deja"
    std::optional<Borrador> ultimo; ///< what is kept
    std::string falla; ///< why nothing can be kept; empty: it can

    std::unique_ptr<BorradorAbierto> Abrir() override
    {
        sucesos.emplace_back("abre");
        return std::make_unique<Uno>(*this);
    }

private:
    class Uno final : public BorradorAbierto {
    public:
        explicit Uno(BorradoresDePrueba& todos)
            : m_todos(todos)
        {
        }
        ~Uno() override { m_todos.sucesos.emplace_back("deja"); }

        void Guardar(const Borrador& borrador) override
        {
            if (!m_todos.falla.empty())
                throw Error(1, "pruebas", m_todos.falla);
            m_todos.sucesos.emplace_back(borrador.Guardandose ? "guarda antes de grabar" : "guarda");
            m_todos.ultimo = borrador;
        }
        void Quitar() noexcept override
        {
            m_todos.sucesos.emplace_back("quita");
            m_todos.ultimo.reset();
        }

    private:
        BorradoresDePrueba& m_todos;
    };
};

} // namespace atipicos::pruebas
