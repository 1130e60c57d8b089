#include "context/modComun.hpp"

#include <utility>

namespace atipicos::modComun {

namespace {

    struct Referencias {
        std::shared_ptr<qvoremp::Empresa> EmpresaOrvalin;
        std::shared_ptr<adodb::Connection> ConexionOrvalin;
        std::shared_ptr<qvbxemp::Empresa> EmpresaBexmor;
        std::shared_ptr<adodb::Connection> ConexionBexmor;
        std::shared_ptr<MsgBox> avisos;
        std::shared_ptr<Reloj> reloj;
        std::shared_ptr<const qvoremp::Biblioteca> BibliotecaOrvalin;
        std::shared_ptr<const qvoremp::PrevisionesCargo> PrevisionesCargo;
        std::shared_ptr<Borradores> borradores;
    };

    Referencias& referencias() noexcept
    {
        static Referencias unicas;
        return unicas;
    }

    template <class T>
    const std::shared_ptr<T>& establecida(const std::shared_ptr<T>& referencia, Donde donde)
    {
        if (!referencia)
            throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
        return referencia;
    }

}

void set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) noexcept
{
    referencias().EmpresaOrvalin = std::move(empresa);
}

void set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) noexcept
{
    referencias().ConexionOrvalin = std::move(conexion);
}

void set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) noexcept
{
    referencias().EmpresaBexmor = std::move(empresa);
}

void set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) noexcept
{
    referencias().ConexionBexmor = std::move(conexion);
}

void set_MsgBox(std::shared_ptr<MsgBox> avisos) noexcept { referencias().avisos = std::move(avisos); }

void set_Reloj(std::shared_ptr<Reloj> reloj) noexcept { referencias().reloj = std::move(reloj); }

void set_BibliotecaOrvalin(std::shared_ptr<const qvoremp::Biblioteca> biblioteca) noexcept
{
    referencias().BibliotecaOrvalin = std::move(biblioteca);
}

void set_PrevisionesCargo(std::shared_ptr<const qvoremp::PrevisionesCargo> previsiones) noexcept
{
    referencias().PrevisionesCargo = std::move(previsiones);
}

const qvoremp::PrevisionesCargo* PrevisionesCargo() noexcept { return referencias().PrevisionesCargo.get(); }

bool hay_EmpresaOrvalin() noexcept { return referencias().EmpresaOrvalin != nullptr; }

void set_Borradores(std::shared_ptr<Borradores> borradores) noexcept
{
    referencias().borradores = std::move(borradores);
}

std::shared_ptr<Borradores> comparte_Borradores() noexcept { return referencias().borradores; }

const std::shared_ptr<qvoremp::Empresa>& comparte_EmpresaOrvalin(Donde donde)
{
    return establecida(referencias().EmpresaOrvalin, donde);
}

const std::shared_ptr<adodb::Connection>& comparte_ConexionOrvalin(Donde donde)
{
    return establecida(referencias().ConexionOrvalin, donde);
}

qvoremp::Empresa& EmpresaOrvalin(Donde donde) { return *comparte_EmpresaOrvalin(donde); }

adodb::Connection& ConexionOrvalin(Donde donde) { return *comparte_ConexionOrvalin(donde); }

qvbxemp::Empresa& EmpresaBexmor(Donde donde) { return *establecida(referencias().EmpresaBexmor, donde); }

const std::shared_ptr<adodb::Connection>& ConexionBexmor(Donde donde)
{
    return establecida(referencias().ConexionBexmor, donde);
}

const std::shared_ptr<MsgBox>& comparte_Avisos(Donde donde)
{
    return establecida(referencias().avisos, donde);
}

MsgBox& Avisos(Donde donde) { return *comparte_Avisos(donde); }

Reloj& reloj(Donde donde) { return *establecida(referencias().reloj, donde); }

const qvoremp::Biblioteca& BibliotecaOrvalin(Donde donde)
{
    return *establecida(referencias().BibliotecaOrvalin, donde);
}

} // namespace atipicos::modComun
