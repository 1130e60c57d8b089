#pragma once

#include "charges/ClaveCargo.hpp"
#include "host/bases/Lugar.hpp"
#include "host/panel/CargoResumido.hpp"
#include "host/sesion/Sesion.hpp"
#include "platform/report/Report.hpp"

#include <QString>

#include <memory>
#include <vector>

class QWidget;

namespace atipicos::app {

/// What is done with several charges of a list at once, one after the other in its order. Each operation asks
/// the person what it has to know, and gives what is to be told when it is done; nothing when it was given
/// up. They raise what went wrong, and then nothing of it is left.
class CargosElegidos {
public:
    /// All of them outlive this; `cargos` is not empty.
    CargosElegidos(Sesion& sesion, const bases::Lugar& lugar, std::vector<CargoResumido> cargos);

    /// The document of each, on the devices and the printer that the person chooses, as one document.
    [[nodiscard]] QString imprime(QWidget* ventana) const;
    /// The same in one PDF file.
    [[nodiscard]] QString guarda_pdf(QWidget* ventana) const;
    /// Their rows of the list of charges, for a spreadsheet.
    [[nodiscard]] QString exporta(QWidget* ventana) const;
    /// Their documents as one PDF file, handed to the person's mail program.
    [[nodiscard]] QString envia(QWidget* ventana) const;

private:
    [[nodiscard]] std::vector<ClaveCargo> claves() const;
    /// Asks it when they are not of one supplier.
    [[nodiscard]] bool van_en_un_mensaje() const;
    /// Nothing when it was given up.
    [[nodiscard]] std::shared_ptr<const Report> documento(const QString& que, QWidget* ventana) const;

    Sesion& m_sesion;
    const bases::Lugar& m_lugar;
    std::vector<CargoResumido> m_cargos;
};

} // namespace atipicos::app
