#pragma once

#include "host/sesion/BorradoresEnCarpeta.hpp"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace atipicos::app {

/// Brings a charge that was not saved back into the component's windows, and lets go of its draft when all of
/// it stands there again. What cannot be brought back is told, and the draft stays.
class RecuperaBorrador {
public:
    /// The ways in which the host opens the windows, each as a person does; each returns the open window.
    struct Ventanas {
        std::function<QWidget*()> editor; ///< for a new charge
        /// The list of the charges of a year and a warehouse.
        std::function<QWidget*(std::int16_t ejercicio, std::int16_t almacen)> visor;
        /// The code as which the charge of a draft is stored already; nothing when it is not.
        std::function<std::optional<std::string>(const BorradorLeido&)> guardado;
    };

    RecuperaBorrador(std::shared_ptr<const BorradoresEnCarpeta> borradores, Ventanas ventanas);

    /// One that was stored after all is not brought back: its code is told, and its draft goes.
    /// A charge that is being changed is opened from the list, which asks before; returns when it is closed.
    /// Raises an error where the draft cannot be read or nobody may write beside it.
    void Recuperar(const std::filesystem::path& fichero) const;

    /// Nothing is kept of it. False, and told, when another window has taken it.
    bool Descartar(const std::filesystem::path& fichero) const;

private:
    using Entero = std::function<void()>; ///< all of it was brought back

    void teclea(QWidget& editor, const Borrador& borrador, const Entero& entero) const;
    void abre_y_teclea(const Borrador& borrador, const Entero& entero) const;

    std::shared_ptr<const BorradoresEnCarpeta> m_borradores;
    Ventanas m_ventanas;
};

} // namespace atipicos::app
