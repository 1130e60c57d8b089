#include "host/bases/Danos.hpp"
#include "host/comprobacion/Propuesta.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "runtime/Formato.hpp"

#include <iostream>

namespace atipicos::app {

namespace {

    constexpr std::size_t saldos_que_se_escriben = 20;

    /// The accounts on which deleted and changed charges have left something.
    void escribe_saldos(const std::vector<SaldoQueSobra>& saldos)
    {
        for (std::size_t i = 0; i < saldos.size() && i < saldos_que_se_escriben; ++i)
            std::cout << "Cuenta " << saldos[i].cuenta << " (empresa contable " << saldos[i].empresa
                      << "): su saldo es " << texto_pantalla(saldos[i].importe, 2)
                      << " más que el de los cargos que existen.\n";
        if (saldos.size() > saldos_que_se_escriben)
            std::cout << "Y " << saldos.size() - saldos_que_se_escriben << " cuentas más.\n";
    }

}

int verificar(const OpcionesComunes& comunes, bool proponer)
{
    const auto bases = bases::abre_bases(comunes.lugar(), { .solo_lectura = true });
    const auto danos = bases::danos(bases);
    for (const auto& dano : danos)
        std::cout << dano << '\n';
    if (!danos.empty()) // reading what is damaged may fail: the damage is told by then
        std::cout << std::flush;
    auto resultado = verifica(bases);
    for (const auto& diferencia : resultado.diferencias)
        std::cout << diferencia << '\n';
    escribe_saldos(resultado.saldos);
    resultado.diferencias.insert(resultado.diferencias.begin(), danos.begin(), danos.end());
    std::cout << resumen(resultado);
    if (proponer)
        std::cout << propone(resultado, comunes);
    return resultado.diferencias.empty() ? hecho : no_hecho;
}

} // namespace atipicos::app
