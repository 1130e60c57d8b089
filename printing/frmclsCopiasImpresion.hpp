#pragma once

#include "controls/Duena.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "printing/DestinoImpresion.hpp"

#include <QPointer>

#include <memory>

namespace atipicos {

class frmImpresora;

/// Lets another component ask where to print. It keeps its one dialog; destroying it destroys the dialog.
class frmclsCopiasImpresion {
public:
    frmclsCopiasImpresion();
    frmclsCopiasImpresion(const frmclsCopiasImpresion&) = delete;
    frmclsCopiasImpresion& operator=(const frmclsCopiasImpresion&) = delete;
    ~frmclsCopiasImpresion();

    /// These go to the component-wide context.
    void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept;
    void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept;

    /// Shows the dialog, modally with `Modal` not 0, over `OwnerForm` when there is one. What it holds goes
    /// into the dialog before and comes back after, so that a cancelled dialog leaves it as it was. An error
    /// is shown and swallowed.
    void Show(int Modal = 0, const Duena& OwnerForm = {});

    DestinoImpresion Destino; ///< the person's choice, after `Show`

private:
    QPointer<frmImpresora> m_form; ///< its owner window may destroy it
};

} // namespace atipicos
