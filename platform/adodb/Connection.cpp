#include "platform/adodb/Connection.hpp"

#include <utility>

namespace atipicos::adodb {

namespace {

    /// The numbers that ADO gives to these failures, so that a host tells them apart as it is used to.
    std::int32_t numero_de(Categoria categoria)
    {
        switch (categoria) {
        case Categoria::restriccion:
            return -2147217873; // 0x80040E2F
        case Categoria::bloqueo:
            return -2147217871; // 0x80040E31
        case Categoria::solo_lectura:
            return -2147217911; // 0x80040E09
        case Categoria::instruccion:
            return -2147217900; // 0x80040E14
        case Categoria::conexion:
        case Categoria::no_existe:
        case Categoria::otra:
            break;
        }
        return -2147467259; // 0x80004005
    }

    Categoria categoria_de(std::int32_t numero)
    {
        for (const auto una :
            { Categoria::instruccion, Categoria::restriccion, Categoria::bloqueo, Categoria::solo_lectura })
            if (numero_de(una) == numero)
                return una;
        return Categoria::otra;
    }

}

ErrorBaseDatos::ErrorBaseDatos(
    Categoria categoria, std::string fuente, std::string descripcion, std::string instruccion, Donde donde)
    : Error(numero_de(categoria), std::move(fuente), std::move(descripcion), donde)
    , m_categoria(categoria)
    , m_instruccion(std::move(instruccion))
{
}

ErrorBaseDatos::ErrorBaseDatos(
    std::int32_t numero, std::string fuente, std::string descripcion, std::string instruccion, Donde donde)
    : Error(numero, std::move(fuente), std::move(descripcion), donde)
    , m_categoria(categoria_de(numero))
    , m_instruccion(std::move(instruccion))
{
}

} // namespace atipicos::adodb
