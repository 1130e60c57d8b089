#include "host/panel/AsientosSueltos.hpp"

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/comprobacion/Regularizaciones.hpp"
#include "platform/adodb/campos.hpp"

#include <map>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t pregunta_cada = 4096; ///< rows

    /// Numbers of entries, a bit each.
    class Nombrados {
    public:
        void agrega(const ClaveAsiento& asiento)
        {
            if (asiento.numero < 1)
                return;
            auto& numeros = m_numeros[{ asiento.empresa, asiento.ejercicio }];
            const auto lugar = static_cast<std::size_t>(asiento.numero);
            if (numeros.size() <= lugar)
                numeros.resize(lugar + lugar / 2 + 1);
            numeros[lugar] = true;
        }

        [[nodiscard]] bool esta(const ClaveAsiento& asiento) const
        {
            const auto numeros = m_numeros.find({ asiento.empresa, asiento.ejercicio });
            const auto lugar = static_cast<std::size_t>(asiento.numero);
            return numeros != m_numeros.end() && lugar < numeros->second.size() && numeros->second[lugar];
        }

    private:
        std::map<std::pair<std::int16_t, std::int16_t>, std::vector<bool>> m_numeros;
    };

    /// Reads rows until there are no more or it is given up; false then.
    template <class Cada> bool recorre(adodb::Recordset& rs, const Sigue& sigue, Cada cada)
    {
        for (std::size_t i = 0; !rs.Eof(); rs.MoveNext(), ++i) {
            if (i % pregunta_cada == 0 && !sigue())
                return false;
            cada();
        }
        return true;
    }

    bool lee_nombrados(adodb::Connection& orvalin, const Sigue& sigue, Nombrados& nombrados)
    {
        const auto rs
            = adodb::flujo(orvalin, "SELECT EmpContable, Fecha, Asiento FROM Proveedores_Cargos_Atipicos");
        const auto& empresa = rs->Fields("EmpContable");
        const auto& fecha = rs->Fields("Fecha");
        const auto& asiento = rs->Fields("Asiento");
        return recorre(*rs, sigue, [&] {
            nombrados.agrega({ CInt(empresa.Value()), static_cast<std::int16_t>(CDate(fecha.Value()).anio()),
                CLng(asiento.Value()) });
        });
    }

    /// Those that nobody names; those beyond the ones that are looked at are known by their absence.
    std::optional<std::vector<ClaveAsiento>> sin_nombrar(
        adodb::Connection& bexmor, const Sigue& sigue, const Nombrados& nombrados)
    {
        std::vector<ClaveAsiento> todos;
        const auto rs = adodb::flujo(bexmor, "SELECT Cod_Empresa, Cod_Ejercicio, Numero FROM Asientos");
        const auto& empresa = rs->Fields("Cod_Empresa");
        const auto& ejercicio = rs->Fields("Cod_Ejercicio");
        const auto& numero = rs->Fields("Numero");
        const bool enteros = recorre(*rs, sigue, [&] {
            const ClaveAsiento clave{ CInt(empresa.Value()), CInt(ejercicio.Value()), CLng(numero.Value()) };
            if (todos.size() <= AsientosSueltos::maximo && !nombrados.esta(clave))
                todos.push_back(clave);
        });
        return enteros ? std::optional(std::move(todos)) : std::nullopt;
    }

}

std::optional<AsientosSueltos> asientos_sueltos(const Ambito& ambito, const Sigue& sigue)
{
    Nombrados nombrados;
    if (!lee_nombrados(*ambito.bases.orvalin, sigue, nombrados))
        return std::nullopt;
    lee_regularizaciones(*ambito.bases.bexmor, [&](const Regularizacion& una) {
        nombrados.agrega(una.asiento);
        nombrados.agrega(una.por); // it is of no charge: known without being read
    });
    auto candidatos = sin_nombrar(*ambito.bases.bexmor, sigue, nombrados);
    if (!candidatos)
        return std::nullopt;
    AsientosSueltos sueltos;
    sueltos.hay_mas = candidatos->size() > AsientosSueltos::maximo;
    if (sueltos.hay_mas)
        candidatos->resize(AsientosSueltos::maximo);
    for (const auto& clave : *candidatos) {
        if (!sigue())
            return std::nullopt;
        const auto asiento = lee_asiento(*ambito.bases.bexmor, clave);
        if (asiento && asiento->es_de_un_cargo())
            sueltos.asientos.push_back(sin_clasificar(*asiento));
    }
    return sueltos;
}

} // namespace atipicos::app
