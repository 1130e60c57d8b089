#include "server/Contexto.hpp"

#include "context/modComun.hpp"
#include "engines/ado/Connection.hpp"
#include "engines/ado/EmpresaBexmor.hpp"
#include "engines/ado/EmpresaOrvalin.hpp"

namespace atipicos::server::contexto {

namespace {

    std::shared_ptr<adodb::Connection> conexion_de(const automation::Despacho& conexion)
    {
        return conexion ? std::make_shared<ado::Connection>(conexion) : nullptr;
    }

}

void pone_EmpresaOrvalin(const automation::Despacho& empresa)
{
    modComun::set_EmpresaOrvalin(empresa ? std::make_shared<ado::EmpresaOrvalin>(empresa) : nullptr);
    modComun::set_BibliotecaOrvalin(std::make_shared<ado::BibliotecaOrvalin>());
}

void pone_ConexionOrvalin(const automation::Despacho& conexion)
{
    modComun::set_ConexionOrvalin(conexion_de(conexion));
}

void pone_EmpresaBexmor(const automation::Despacho& empresa)
{
    const auto biblioteca = std::make_shared<ado::BibliotecaBexmor>(empresa);
    modComun::set_EmpresaBexmor(
        empresa ? std::make_shared<ado::EmpresaBexmor>(empresa, biblioteca) : nullptr);
}

void pone_ConexionBexmor(const automation::Despacho& conexion)
{
    modComun::set_ConexionBexmor(conexion_de(conexion));
}

} // namespace atipicos::server::contexto
