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

std::shared_ptr<qvoremp::Empresa> EmpresaOrvalin(Donde donde)
{
    return establecida(referencias().EmpresaOrvalin, donde);
}

std::shared_ptr<adodb::Connection> ConexionOrvalin(Donde donde)
{
    return establecida(referencias().ConexionOrvalin, donde);
}

std::shared_ptr<qvbxemp::Empresa> EmpresaBexmor(Donde donde)
{
    return establecida(referencias().EmpresaBexmor, donde);
}

std::shared_ptr<adodb::Connection> ConexionBexmor(Donde donde)
{
    return establecida(referencias().ConexionBexmor, donde);
}

std::shared_ptr<MsgBox> Avisos(Donde donde) { return establecida(referencias().avisos, donde); }

std::shared_ptr<const qvoremp::Biblioteca> BibliotecaOrvalin(Donde donde)
{
    return establecida(referencias().BibliotecaOrvalin, donde);
}

Reloj& reloj(Donde donde) { return *establecida(referencias().reloj, donde); }

std::shared_ptr<adodb::Recordset> CreateRecordset(Donde donde)
{
    auto conexion = ConexionOrvalin(donde);
    auto filas = conexion->CreateRecordset();
    // Whoever lets the rows go closes them, and then lets the connection go.
    struct ConSuConexion {
        std::shared_ptr<adodb::Connection> conexion;
        std::unique_ptr<adodb::Recordset> filas;
    };
    auto ambas = std::make_shared<ConSuConexion>(ConSuConexion{ std::move(conexion), std::move(filas) });
    auto* unas = ambas->filas.get();
    return { std::move(ambas), unas };
}

} // namespace atipicos::modComun
