#include "controls/OrdenFilas.hpp"

#include "controls/Texto.hpp"
#include "runtime/Date.hpp"
#include "runtime/Formato.hpp"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <optional>

namespace atipicos {

namespace {

    std::optional<Currency> numero(QString celda)
    {
        celda.remove(u'%');
        try {
            return lee_pantalla(de_qt(celda));
        } catch (const Error&) {
            return std::nullopt;
        }
    }

    template <class Clave> std::vector<std::size_t> ordena(const std::vector<Clave>& claves, bool descendente)
    {
        std::vector<std::size_t> orden(claves.size());
        std::iota(orden.begin(), orden.end(), std::size_t{ 0 });
        std::stable_sort(orden.begin(), orden.end(), [&](std::size_t una, std::size_t otra) {
            return descendente ? claves[otra] < claves[una] : claves[una] < claves[otra];
        });
        return orden;
    }

    template <class Lee> auto claves_de(const std::vector<QString>& celdas, Lee lee)
    {
        std::vector<decltype(lee(celdas.front()))> claves;
        claves.reserve(celdas.size());
        for (const auto& celda : celdas)
            claves.push_back(lee(celda));
        return claves;
    }

}

std::vector<std::size_t> orden_de(const std::vector<QString>& celdas, Clase clase, bool descendente)
{
    switch (clase) {
    case Clase::numero:
        return ordena(claves_de(celdas, numero), descendente);
    case Clase::fecha:
        return ordena(claves_de(celdas, [](const QString& celda) { return Date::de_texto(de_qt(celda)); }),
            descendente);
    case Clase::texto:
        break;
    }
    const QCollator espanol(QLocale(QLocale::Spanish, QLocale::Spain));
    return ordena(
        claves_de(celdas, [&](const QString& celda) { return espanol.sortKey(celda); }), descendente);
}

} // namespace atipicos
