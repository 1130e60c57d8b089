#pragma once

#include "automation/Despacho.hpp"

/// The host's objects, as they come in through any public class, into the component-wide context.
namespace atipicos::server::contexto {

void pone_EmpresaOrvalin(const automation::Despacho& empresa);
void pone_ConexionOrvalin(const automation::Despacho& conexion);
void pone_EmpresaBexmor(const automation::Despacho& empresa);
void pone_ConexionBexmor(const automation::Despacho& conexion);

} // namespace atipicos::server::contexto
