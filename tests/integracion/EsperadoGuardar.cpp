#include "tests/integracion/EsperadoGuardar.hpp"

#include <algorithm>
#include <stdexcept>

namespace atipicos::pruebas {

namespace {

    /// Of the rows that a whole save adds to a table, those that were added before operation `n`.
    std::int32_t anadidas(const std::vector<std::string>& dichas, std::size_t n, const std::string& insercion)
    {
        return static_cast<std::int32_t>(std::count_if(
            dichas.begin(), dichas.begin() + static_cast<std::ptrdiff_t>(n), [&](const auto& dicha) {
                return dicha.starts_with("contabilidad EXEC INSERT INTO " + insercion + " ");
            }));
    }

    /// Whether the entry has its number before operation `n`. The statement that takes it finds no counter
    /// for the first entry of a year, which is then written as a row.
    bool numero_tomado(const std::vector<std::string>& dichas, std::size_t n)
    {
        const auto fin = dichas.begin() + static_cast<std::ptrdiff_t>(n);
        const auto hasta = [&](auto donde, const std::string& comienzo) {
            return std::any_of(
                dichas.begin(), donde, [&](const auto& dicha) { return dicha.starts_with(comienzo); });
        };
        const bool primero = hasta(dichas.end(), "contabilidad UPDATE");
        return hasta(fin, primero ? "contabilidad UPDATE" : "contabilidad EXEC UPDATE Contador_Asientos ");
    }

    const std::vector<std::string> tablas_contables{ "Asientos", "Apuntes", "Registro_Impuestos",
        "Previsiones" };

}

Fase fase_de(const std::vector<std::string>& dichas, std::size_t n)
{
    const auto lugar = [&](const std::string& comienzo) {
        const auto hallada = std::find_if(
            dichas.begin(), dichas.end(), [&](const auto& dicha) { return dicha.starts_with(comienzo); });
        return static_cast<std::size_t>(hallada - dichas.begin()); // past the end: there is none
    };
    const auto& dicha = dichas.at(n);
    if (dicha == "gestion COMMIT")
        return Fase::confirmar_gestion;
    if (dicha == "contabilidad COMMIT")
        return Fase::confirmar_contabilidad;
    if (dicha.starts_with("gestion EXEC DELETE"))
        return Fase::borrar;
    if (dicha.starts_with("gestion EXEC INSERT"))
        return Fase::escribir;
    if (n == 0)
        return Fase::antes;
    if (n < lugar("gestion BEGIN"))
        return Fase::previsiones;
    const auto codigo = lugar("gestion UPDATE");
    return n <= (codigo < dichas.size() ? codigo : lugar("contabilidad BEGIN")) ? Fase::hasta_codigo
                                                                                : Fase::asiento;
}

Esperado de_uno_nuevo(
    const std::vector<std::string>& dichas, std::size_t n, const Estado& antes, const Estado& despues)
{
    Estado a_medias = despues;
    switch (fase_de(dichas, n)) {
    case Fase::antes:
    case Fase::hasta_codigo:
    case Fase::confirmar_gestion:
    case Fase::confirmar_contabilidad: // both commits are there or neither
        return { { guardar }, antes };
    case Fase::previsiones:
        a_medias["Bexmor.dbo.Previsiones"] = antes.at("Bexmor.dbo.Previsiones");
        return { { atencion }, a_medias };
    case Fase::asiento:
        for (const auto& tabla : tablas_contables)
            a_medias["Bexmor.dbo." + tabla] = antes.at("Bexmor.dbo." + tabla) + anadidas(dichas, n, tabla);
        if (!numero_tomado(dichas, n))
            a_medias["contador de asientos"] = antes.at("contador de asientos");
        return { { asentar }, a_medias };
    case Fase::escribir: {
        const auto escritas = std::count_if(dichas.begin(), dichas.begin() + static_cast<std::ptrdiff_t>(n),
            [](const auto& dicha) { return dicha.starts_with("gestion EXEC INSERT"); });
        a_medias["Proveedores_Cargos_Atipicos"]
            = antes.at("Proveedores_Cargos_Atipicos") + (escritas > 0 ? 1 : 0);
        a_medias["Proveedores_Cargos_Atipicos_Lineas"] = antes.at("Proveedores_Cargos_Atipicos_Lineas")
            + static_cast<std::int32_t>(std::max<std::ptrdiff_t>(escritas - 1, 0));
        return { { insertar }, a_medias };
    }
    case Fase::borrar:
        break;
    }
    throw std::logic_error("a new charge deletes nothing");
}

} // namespace atipicos::pruebas
