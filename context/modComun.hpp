#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/borrador/Borradores.hpp"
#include "platform/clock/Reloj.hpp"
#include "platform/msgbox/MsgBox.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "platform/qvoremp/PrevisionesCargo.hpp"

#include <memory>

/// What the host hands in, held once for the whole component: the last reference set through any class
/// is the one in force for all of them. Nothing is checked when a reference is set, and none is ever
/// closed or cleared by the component. To be used from the host's user-interface thread only.
namespace atipicos::modComun {

void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) noexcept;
void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) noexcept;
void set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) noexcept;
void set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) noexcept;

/// How the component reaches the person and the time of day; the program that loads it sets both once.
void set_MsgBox(std::shared_ptr<MsgBox> avisos) noexcept;
void set_Reloj(std::shared_ptr<Reloj> reloj) noexcept;

/// The management library, for what is made anew at every use: warehouses, suppliers, the printing of a
/// charge. Set once by the program that loads the component; without it nothing can be printed.
void set_BibliotecaOrvalin(std::shared_ptr<const qvoremp::Biblioteca> biblioteca) noexcept;

/// Who tells the payment forecasts of a charge; a host that does not may leave it unset.
void set_PrevisionesCargo(std::shared_ptr<const qvoremp::PrevisionesCargo> previsiones) noexcept;
[[nodiscard]] const qvoremp::PrevisionesCargo* PrevisionesCargo() noexcept; ///< null when it is not set

[[nodiscard]] bool hay_EmpresaOrvalin() noexcept; ///< for what can do without a company

/// Where what is keyed in and not saved yet is kept; a host that keeps nothing does not set it.
void set_Borradores(std::shared_ptr<Borradores> borradores) noexcept;
[[nodiscard]] std::shared_ptr<Borradores> comparte_Borradores() noexcept; ///< nothing where nothing is kept

/// The references in force, each with a hold of its own: the host may set another one while it answers a
/// call, and an operation goes on with what it began with. Each raises error 91 while it has not been set.
[[nodiscard]] std::shared_ptr<qvoremp::Empresa> EmpresaOrvalin(Donde donde = Donde::aqui());
[[nodiscard]] std::shared_ptr<adodb::Connection> ConexionOrvalin(Donde donde = Donde::aqui());
[[nodiscard]] std::shared_ptr<qvbxemp::Empresa> EmpresaBexmor(Donde donde = Donde::aqui());
[[nodiscard]] std::shared_ptr<adodb::Connection> ConexionBexmor(Donde donde = Donde::aqui());
[[nodiscard]] std::shared_ptr<MsgBox> Avisos(Donde donde = Donde::aqui());
[[nodiscard]] std::shared_ptr<const qvoremp::Biblioteca> BibliotecaOrvalin(Donde donde = Donde::aqui());
[[nodiscard]] Reloj& reloj(Donde donde = Donde::aqui()); ///< it asks nobody, so that none takes its place

/// A closed recordset of `ConexionOrvalin`, which holds that connection as long as it lives.
[[nodiscard]] std::shared_ptr<adodb::Recordset> CreateRecordset(Donde donde = Donde::aqui());

} // namespace atipicos::modComun
