#pragma once

#include "controls/Duena.hpp"
#include "platform/adodb/Connection.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "runtime/Date.hpp"

#include <QPointer>

#include <cstdint>
#include <functional>
#include <memory>

namespace atipicos {

class frmCompras_Atipicos_Visor;

/// Opens the charge browser with the filters below. The launcher keeps its one form; destroying it closes the
/// form.
class frmclsComprasAtipVisor {
public:
    frmclsComprasAtipVisor();
    frmclsComprasAtipVisor(const frmclsComprasAtipVisor&) = delete;
    frmclsComprasAtipVisor& operator=(const frmclsComprasAtipVisor&) = delete;
    ~frmclsComprasAtipVisor();

    /// These go to the component-wide context.
    void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept;
    void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept;
    void set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) const noexcept;
    void set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) const noexcept;

    /// What has been searched for; 0: all.
    struct Busqueda {
        Date Fecha_Inicial;
        Date Fecha_Final;
        std::int16_t Almacen = 0;
        std::int32_t Proveedor = 0;

        friend bool operator==(const Busqueda&, const Busqueda&) = default;
    };

    /// Called after each search that has been run through, for a host that hands it in again another day:
    /// neither launcher nor form keeps it.
    void set_AlBuscar(std::function<void(const Busqueda&)> al_buscar);

    /// Shows the form, modally with `Modal` not 0, over `OwnerForm` when there is one: at each call, unless
    /// the form is being waited for. An error is shown and swallowed.
    void Show(int Modal = 0, const Duena& OwnerForm = {});

    // Filters, handed to the form at each `Show`.
    std::int16_t Ejercicio = 0;
    std::int16_t Almacen_Inicial = 0; ///< below 1: all
    std::int32_t Proveedor_Inicial = 0; ///< below 1: all
    Date Fecha_Inicial;
    Date Fecha_Final; ///< 01/01/1900, or no date: no range is given

private:
    void hace_form();

    std::function<void(const Busqueda&)> m_al_buscar;
    QPointer<frmCompras_Atipicos_Visor> m_form; ///< its owner window may destroy it
};

} // namespace atipicos
