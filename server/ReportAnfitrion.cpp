#include "server/ReportAnfitrion.hpp"

#include "automation/Anfitrion.hpp"
#include "engines/ado/Conversion.hpp"

#include <memory>
#include <utility>

namespace atipicos::server {

using automation::Argumentos;
using automation::Despacho;
using automation::Valor;

namespace {

    Medida medida(const Argumentos& argumentos, std::size_t i)
    {
        return CLng(ado::variant_de(argumentos.valor(i).get()));
    }

    Color color(const Argumentos& argumentos, std::size_t i)
    {
        return static_cast<Color>(medida(argumentos, i));
    }

    std::string texto(const Argumentos& argumentos, std::size_t i)
    {
        return CStr(ado::variant_de(argumentos.valor(i).get()));
    }

    using Trazo = ReportAnfitrion::Trazo;

    /// What a host passes wrong is its error, with its number; nothing is painted then.
    template <class Lee>
    automation::Anfitrion::Funcion pinta_en(const std::shared_ptr<ReportAnfitrion::Pagina>& pagina, Lee lee)
    {
        return [pagina, lee](const Argumentos& a) {
            try {
                Trazo trazo;
                lee(a, trazo);
                pagina->push_back(std::move(trazo));
                return Valor();
            } catch (const Error& error) {
                throw automation::Fallo(error.numero(), error.fuente(), error.descripcion());
            }
        };
    }

    /// `Texto x, y, texto, familia, cuerpo, negrita, color` and `Relleno x, y, ancho, alto, color`.
    Despacho lienzo_de(const std::shared_ptr<ReportAnfitrion::Pagina>& pagina)
    {
        return automation::Anfitrion::crea({
            { "Texto",
                pinta_en(pagina,
                    [](const Argumentos& a, Trazo& trazo) {
                        trazo.lugar = { medida(a, 0), medida(a, 1) };
                        trazo.texto = texto(a, 2);
                        trazo.letra.familia = texto(a, 3);
                        trazo.letra.cuerpo = medida(a, 4);
                        trazo.letra.negrita = CBool(ado::variant_de(a.valor(5).get()));
                        trazo.color = color(a, 6);
                    }) },
            { "Relleno",
                pinta_en(pagina,
                    [](const Argumentos& a, Trazo& trazo) {
                        trazo.lugar = { medida(a, 0), medida(a, 1), medida(a, 2), medida(a, 3) };
                        trazo.color = color(a, 4);
                    }) },
        });
    }

}

ReportAnfitrion::ReportAnfitrion(const Despacho& report, Donde donde)
{
    ado::con_anfitrion(donde, [&] {
        const auto lee
            = [&](const char* miembro) { return ado::variant_de(report.llama(miembro).get(), donde); };
        m_titulo = CStr(lee("Titulo"), donde);
        m_tamano = { CLng(lee("Ancho"), donde), CLng(lee("Alto"), donde) };
        const auto cuantas = CLng(lee("Paginas"), donde);
        for (std::int32_t i = 0; i < cuantas; ++i) {
            const auto pagina = std::make_shared<Pagina>();
            report.llama("Pinta", i, lienzo_de(pagina).get());
            m_paginas.push_back(*pagina);
        }
    });
}

void ReportAnfitrion::pinta(std::size_t pagina, Lienzo& lienzo) const
{
    for (const auto& trazo : m_paginas.at(pagina)) {
        if (trazo.texto.empty())
            lienzo.relleno(trazo.lugar, trazo.color);
        else
            lienzo.texto(trazo.lugar.x, trazo.lugar.y, trazo.texto, trazo.letra, trazo.color);
    }
}

} // namespace atipicos::server
