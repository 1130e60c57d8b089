#include "host/sesion/Sesion.hpp"

#include "context/modComun.hpp"
#include "host/bases/Acceso.hpp"
#include "host/bases/Palabra.hpp"
#include "host/sesion/ReintentoEnTerminal.hpp"
#include "host/terminal/EsperaServidor.hpp"

#include <ctime>
#include <iostream>

namespace atipicos::app {

namespace {

    class RelojSistema final : public Reloj {
    public:
        [[nodiscard]] Date ahora() const override
        {
            const std::time_t ahora = std::time(nullptr);
            std::tm local{};
            localtime_r(&ahora, &local);
            const auto dia = Date::de_dia(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
            return Date(dia.value().instante() + std::chrono::hours(local.tm_hour)
                + std::chrono::minutes(local.tm_min) + std::chrono::seconds(local.tm_sec));
        }
    };

    void exige(const char* que, std::int32_t codigo, const std::vector<orvalin::Ficha>& hay)
    {
        std::string texto = "No existe " + std::string(que) + " " + std::to_string(codigo)
            + (hay.empty() ? ". La base de datos está vacía." : ". Hay:");
        for (const auto& ficha : hay) {
            if (ficha.Codigo == codigo)
                return;
            texto += "\n  " + std::to_string(ficha.Codigo) + "  " + ficha.Nombre;
        }
        throw Error(no_hecho, "atipicos", texto);
    }

    /// The user to work as: the one that the login is, or, for who may act for others or only looks, the one
    /// that was asked for, and else the first there is.
    std::int32_t usuario_de(const OpcionesComunes& opciones, const bases::Acceso& acceso,
        const std::vector<orvalin::Ficha>& usuarios, bool solo_lectura)
    {
        const auto primero = usuarios.empty() ? 0 : usuarios.front().Codigo;
        if (acceso.por_otros || !acceso.registra || solo_lectura)
            return opciones.usuario != 0 ? opciones.usuario : acceso.usuario.value_or(primero);
        const auto suyo = acceso.usuario.value_or(0);
        if (suyo == 0)
            rehusa("«" + acceso.login
                + "» no es ningún usuario de esta empresa. Quien la administra lo dice con: atipicos accesos "
                + bases::como_palabra(acceso.login) + " N");
        if (opciones.usuario != 0 && opciones.usuario != suyo)
            rehusa("«" + acceso.login + "» es el usuario " + std::to_string(suyo)
                + " y no puede trabajar como el " + std::to_string(opciones.usuario) + ".");
        return suyo;
    }

    bases::OpcionesBases con_espera(bases::OpcionesBases opciones)
    {
        if (!opciones.sigue_esperando)
            opciones.sigue_esperando = EsperaServidor(std::cerr);
        if (!opciones.avisa_espera)
            opciones.avisa_espera = espera_de_controlador();
        if (!opciones.sigue_intentando)
            reintenta_en_terminal(opciones);
        return opciones;
    }

    /// The accounting company through which the library and its settings are reached: the first one.
    std::shared_ptr<qvbxemp::Empresa> primera_empresa_contable(
        const bexmor::Biblioteca& biblioteca, adodb::Connection& conexion)
    {
        auto rs = conexion.CreateRecordset();
        rs->Open("SELECT MIN(Codigo) AS Codigo FROM Empresas", adodb::CursorType::Static,
            adodb::LockType::ReadOnly);
        std::shared_ptr<qvbxemp::Empresa> empresa = biblioteca.NuevaEmpresa();
        const Variant codigo = rs->Fields("Codigo").Value();
        empresa->Codigo = codigo.es_nulo() ? std::int16_t{ 0 } : CInt(codigo);
        if (!empresa->Cargar())
            throw Error(no_hecho, "atipicos", "No hay ninguna empresa contable.");
        return empresa;
    }

}

Sesion::Sesion(const OpcionesComunes& opciones, const bases::OpcionesBases& opciones_bases)
    : bases(bases::abre_bases(opciones.lugar(), con_espera(opciones_bases)))
    , catalogos(bases.orvalin, opciones.empresa)
    , avisos(std::make_shared<MsgBoxConsola>(std::cerr))
{
    exige("la empresa", opciones.empresa, catalogos.empresas());
    const auto usuarios = catalogos.usuarios();
    const auto usuario = usuario_de(
        opciones, bases::acceso_de(bases, opciones.lugar()), usuarios, opciones_bases.solo_lectura);
    exige("el usuario", usuario, usuarios);

    empresa = std::make_shared<orvalin::Empresa>(bases.orvalin, opciones.empresa, usuario);
    biblioteca = std::make_shared<bexmor::Biblioteca>(bases.bexmor);
    modComun::set_EmpresaOrvalin(empresa);
    modComun::set_ConexionOrvalin(bases.orvalin);
    modComun::set_EmpresaBexmor(primera_empresa_contable(*biblioteca, *bases.bexmor));
    modComun::set_ConexionBexmor(bases.bexmor);
    modComun::set_MsgBox(avisos);
    modComun::set_Reloj(std::make_shared<RelojSistema>());
}

void Sesion::Guarda_Borradores(const bases::Lugar& lugar)
{
    borradores
        = BorradoresEnCarpeta::de_la_persona(lugar, empresa->Codigo(Donde::aqui()), empresa->Usuario());
    modComun::set_Borradores(borradores);
}

Sesion::~Sesion()
{
    modComun::set_Borradores(nullptr);
    modComun::set_EmpresaOrvalin(nullptr);
    modComun::set_ConexionOrvalin(nullptr);
    modComun::set_EmpresaBexmor(nullptr);
    modComun::set_ConexionBexmor(nullptr);
    modComun::set_MsgBox(nullptr);
    modComun::set_Reloj(nullptr);
    modComun::set_BibliotecaOrvalin(nullptr);
    modComun::set_PrevisionesCargo(nullptr);
}

} // namespace atipicos::app
