#pragma once

#include "platform/report/Report.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// Keeps the texts that are painted, and the lowest place painted on.
class LienzoDePrueba final : public Lienzo {
public:
    std::vector<std::string> textos;
    Medida mas_abajo = 0;

    void texto(Medida, Medida y, std::string_view texto, const Letra&, Color) override
    {
        textos.emplace_back(texto);
        mas_abajo = std::max(mas_abajo, y);
    }
    void relleno(const Recuadro& recuadro, Color) override
    {
        mas_abajo = std::max(mas_abajo, recuadro.y + recuadro.alto);
    }
};

inline std::vector<std::string> textos(const Report& report, std::size_t pagina)
{
    LienzoDePrueba lienzo;
    report.pinta(pagina, lienzo);
    return lienzo.textos;
}

/// The texts of all pages, one after the other.
inline std::vector<std::string> textos(const Report& report)
{
    LienzoDePrueba lienzo;
    for (std::size_t i = 0; i < report.paginas(); ++i)
        report.pinta(i, lienzo);
    return lienzo.textos;
}

} // namespace atipicos::pruebas
