#include "server/Contexto.hpp"

#include "context/modComun.hpp"
#include "engines/ado/Connection.hpp"
#include "engines/ado/EmpresaBexmor.hpp"
#include "engines/ado/EmpresaOrvalin.hpp"
#include "server/Ancla.hpp"

#include <array>
#include <cstdint>

namespace atipicos::server::contexto {

namespace {

    enum Lugar : std::uint8_t { empresa_orvalin, conexion_orvalin, empresa_bexmor, conexion_bexmor, lugares };

    /// The libraries that the four objects live in.
    std::array<Ancla, lugares>& anclas()
    {
        static std::array<Ancla, lugares> unicas;
        return unicas;
    }

    std::shared_ptr<adodb::Connection> conexion_de(const automation::Despacho& conexion)
    {
        return conexion ? std::make_shared<ado::Connection>(conexion) : nullptr;
    }

}

void pone_EmpresaOrvalin(const automation::Despacho& empresa)
{
    modComun::set_EmpresaOrvalin(empresa ? std::make_shared<ado::EmpresaOrvalin>(empresa) : nullptr);
    modComun::set_BibliotecaOrvalin(std::make_shared<ado::BibliotecaOrvalin>());
    anclas()[empresa_orvalin].echa(empresa); // the one of before was needed until now
}

void pone_ConexionOrvalin(const automation::Despacho& conexion)
{
    modComun::set_ConexionOrvalin(conexion_de(conexion));
    anclas()[conexion_orvalin].echa(conexion); // the one of before was needed until now
}

void pone_EmpresaBexmor(const automation::Despacho& empresa)
{
    const auto biblioteca = std::make_shared<ado::BibliotecaBexmor>(empresa);
    modComun::set_EmpresaBexmor(
        empresa ? std::make_shared<ado::EmpresaBexmor>(empresa, biblioteca) : nullptr);
    anclas()[empresa_bexmor].echa(empresa); // the one of before was needed until now
}

void pone_ConexionBexmor(const automation::Despacho& conexion)
{
    modComun::set_ConexionBexmor(conexion_de(conexion));
    anclas()[conexion_bexmor].echa(conexion); // the one of before was needed until now
}

} // namespace atipicos::server::contexto
