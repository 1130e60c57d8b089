#include "host/comprobacion/Verificacion.hpp"

#include "host/comprobacion/Revision.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <chrono>
#include <thread>
#include <unordered_set>
#include <utility>

namespace atipicos::app {

namespace {

    std::string cuantos(std::size_t n, const char* que) { return std::to_string(n) + " " + que; }

    constexpr std::size_t saldos_que_se_escriben = 20;

    /// The accounts on which deleted and changed charges have left something.
    std::string de_saldos(const std::vector<SaldoQueSobra>& saldos)
    {
        std::string lineas;
        for (std::size_t i = 0; i < saldos.size() && i < saldos_que_se_escriben; ++i)
            lineas += "Cuenta " + saldos[i].cuenta + " (empresa contable " + std::to_string(saldos[i].empresa)
                + "): el saldo de los cargos que existen y " + texto_pantalla(saldos[i].importe, 2)
                + " que sobran.\n";
        if (saldos.size() > saldos_que_se_escriben)
            lineas += "Y " + cuantos(saldos.size() - saldos_que_se_escriben, "cuentas más.\n");
        return lineas;
    }

    std::string de_contabilidad(const Verificacion& verificacion)
    {
        std::string lineas;
        if (const auto todos = verificacion.sin_cargo.size(); todos > 0) {
            const auto sobran = static_cast<std::size_t>(std::count_if(verificacion.sin_cargo.begin(),
                verificacion.sin_cargo.end(), [](const auto& uno) { return uno.sobra(); }));
            lineas += "Asientos sin cargo: " + std::to_string(todos) + ", de ellos " + std::to_string(sobran)
                + " de cargos eliminados o cambiados. Véalos y anúlelos con: atipicos regularizar\n";
        }
        lineas += de_saldos(verificacion.saldos);
        if (verificacion.regularizados + verificacion.saldados > 0)
            lineas += "Asientos regularizados: " + std::to_string(verificacion.regularizados)
                + "; saldados a mano: " + std::to_string(verificacion.saldados) + '\n';
        return lineas;
    }

}

std::string resumen(const Verificacion& verificacion)
{
    const auto diferencias = verificacion.diferencias.size();
    return de_contabilidad(verificacion) + "Verificación: " + cuantos(verificacion.cargos, "cargos, ")
        + cuantos(verificacion.lineas, "líneas, ") + cuantos(verificacion.asientos, "asientos, ")
        + cuantos(verificacion.apuntes, "apuntes, ")
        + cuantos(verificacion.registros, "registros de impuesto, ")
        + cuantos(verificacion.previsiones, "previsiones: ")
        + (diferencias == 0        ? "sin diferencias.\n"
                : diferencias == 1 ? "1 diferencia.\n"
                                   : cuantos(diferencias, "diferencias.\n"));
}

Verificacion verifica(const bases::Bases& bases)
{
    auto resultado = Revision(bases).revisa();
    for (const auto espera : { std::chrono::milliseconds(50), std::chrono::milliseconds(200) }) {
        if (resultado.diferencias.empty())
            break;
        std::this_thread::sleep_for(espera);
        const auto antes = std::exchange(resultado, Revision(bases).revisa());
        const std::unordered_set<std::string> repetidas(antes.diferencias.begin(), antes.diferencias.end());
        std::erase_if(resultado.diferencias, [&](const auto& una) { return !repetidas.contains(una); });
        std::erase_if(resultado.sin_asiento, [&](const auto& uno) {
            return std::find(antes.sin_asiento.begin(), antes.sin_asiento.end(), uno)
                == antes.sin_asiento.end();
        });
    }
    return resultado;
}

} // namespace atipicos::app
