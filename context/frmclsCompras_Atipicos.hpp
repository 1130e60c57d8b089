#pragma once

#include "controls/Duena.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"
#include "platform/qvoremp/Empresa.hpp"

#include <QPointer>

#include <memory>

namespace atipicos {

class frmCompras_Atipicos;

/// Opens the charge editor for a new charge. The launcher keeps its one form; destroying it closes the form.
class frmclsCompras_Atipicos {
public:
    frmclsCompras_Atipicos();
    frmclsCompras_Atipicos(const frmclsCompras_Atipicos&) = delete;
    frmclsCompras_Atipicos& operator=(const frmclsCompras_Atipicos&) = delete;
    ~frmclsCompras_Atipicos();

    /// These go to the component-wide context.
    void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept;
    void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept;
    void set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) const noexcept;
    void set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) const noexcept;

    /// Shows the form, modally with `Modal` not 0, over `OwnerForm` when there is one: at each call, unless
    /// the form is being waited for. An error is shown and swallowed.
    void Show(int Modal = 0, const Duena& OwnerForm = {});

    [[nodiscard]] bool sin_guardar() const; ///< the form holds lines that have not been saved

private:
    QPointer<frmCompras_Atipicos> m_form; ///< its owner window may destroy it
};

} // namespace atipicos
