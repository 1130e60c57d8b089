#include "host/comprobacion/LosQueSobran.hpp"

#include "host/comprobacion/EjerciciosAbiertos.hpp"

#include <algorithm>
#include <iterator>

namespace atipicos::app {

std::vector<AsientoSinCargo> los_que_sobran(const std::vector<AsientoSinCargo>& todos)
{
    std::vector<AsientoSinCargo> elegidos;
    std::copy_if(todos.begin(), todos.end(), std::back_inserter(elegidos),
        [](const auto& uno) { return uno.sobra(); });
    return elegidos;
}

Currency suma_de(const std::vector<AsientoSinCargo>& asientos)
{
    Currency suma;
    for (const auto& uno : asientos)
        suma += uno.importe;
    return suma;
}

std::string impedimento_para_anular(
    adodb::Connection& bexmor, const std::vector<AsientoSinCargo>& asientos, Date fecha)
{
    const EjerciciosAbiertos ejercicios(bexmor);
    for (const auto& uno : asientos)
        if (auto motivo = ejercicios.impedimento(uno.asiento.empresa, fecha); !motivo.empty())
            return motivo;
    return {};
}

} // namespace atipicos::app
