#include "host/comprobacion/Suceso.hpp"

#include <chrono>
#include <utility>

namespace atipicos::app {

namespace {

    using Que = Suceso::Que;

    /// A save is shorter; some databases tell each of its statements by its own clock, in whole seconds.
    constexpr std::chrono::seconds lo_que_dura_un_guardado{ 2 };

    bool son_de_un_guardado(const Suceso& baja, const Suceso& alta)
    {
        return baja.login == alta.login && baja.puesto == alta.puesto
            && alta.momento.instante() - baja.momento.instante() <= lo_que_dura_un_guardado;
    }

    /// What was done to the same row last, if it was deleted by the save that has brought it back.
    Suceso* baja_de(std::vector<Suceso>& hechos, const Suceso& alta)
    {
        for (auto uno = hechos.rbegin(); uno != hechos.rend(); ++uno)
            if (uno->que != Que::anulacion && uno->linea == alta.linea)
                return uno->que == Que::baja && son_de_un_guardado(*uno, alta) ? &*uno : nullptr;
        return nullptr;
    }

}

std::vector<Suceso> sin_reescritos(std::vector<Suceso> sucesos)
{
    std::vector<Suceso> hechos;
    for (auto& uno : sucesos) {
        auto* baja = uno.que == Que::alta ? baja_de(hechos, uno) : nullptr;
        if (baja == nullptr) {
            hechos.push_back(std::move(uno));
            continue;
        }
        uno.que = Que::cambio;
        uno.antes = std::move(baja->antes);
        hechos.erase(hechos.begin() + (baja - hechos.data()));
        if (uno.linea == 0 || uno.antes != uno.despues)
            hechos.push_back(std::move(uno));
    }
    return hechos;
}

} // namespace atipicos::app
