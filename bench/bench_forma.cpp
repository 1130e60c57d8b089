// What it costs to take the statements of a save apart into shape and values, shapes known, against rewriting
// each as a text.
#include "bench/Medida.hpp"
#include "engines/sql/Formas.hpp"
#include "tests/integracion/Banco.hpp"

#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace atipicos;

constexpr int veces = 2'000;
constexpr int rondas = 15;

/// The statements that the component sends when it saves a charge, as it sends them.
std::vector<std::string> instrucciones()
{
    pruebas::Banco banco;
    banco.guarda();
    banco.parte->dichas.clear();
    banco.guarda();
    std::vector<std::string> todas;
    for (const auto& dicha : banco.parte->dichas) {
        const auto resto = dicha.substr(dicha.find(' ') + 1);
        if (resto.starts_with("EXEC ") || resto.starts_with("OPEN "))
            todas.push_back(resto.substr(5));
    }
    return todas;
}

sql::Catalogo catalogo()
{
    sql::Catalogo uno;
    uno.agrega_base("Bexmor", "Bexmor_");
    for (const auto& [tabla, columna] : { std::pair{ "Asientos", "Fecha" }, { "Registro_Impuestos", "Fecha" },
             { "Previsiones", "Vencimiento" }, { "Proveedores_Cargos_Atipicos", "Fecha" },
             { "Proveedores_Cargos_Atipicos", "Hora" } })
        uno.agrega_fecha(tabla, columna);
    return uno;
}

volatile std::size_t sumidero = 0;

template <class Uso> double mide(const char* nombre, std::size_t cuantas, Uso uso)
{
    bench::Medida medida;
    for (int ronda = 0; ronda < rondas; ++ronda)
        medida.mide([&] {
            for (int i = 0; i < veces; ++i)
                uso();
        });
    const double una = medida.mediana() * 1'000 / veces;
    std::printf(
        "  %-34s %7.2f us a save, %6.3f us a statement\n", nombre, una, una / static_cast<double>(cuantas));
    return una;
}

/// Shapes looked for, and the content of every value asked for.
void toma(sql::Formas<int>& formas, const sql::Catalogo& donde, const std::vector<std::string>& todas)
{
    static std::string sitio;
    std::size_t total = 0;
    for (const auto& una : todas) {
        const auto* conocida = formas.busca(una, donde, Donde{});
        if (conocida == nullptr)
            throw std::runtime_error("no shape: " + una);
        for (const auto& valor : conocida->forma.valores)
            total += sql::contenido_de(formas.literales()[valor.literal], valor.es_fecha, sitio)->size();
    }
    sumidero = total;
}

}

int main()
{
    try {
        const auto todas = instrucciones();
        const auto donde = catalogo();
        std::size_t caracteres = 0;
        for (const auto& una : todas)
            caracteres += una.size();
        std::printf("A save: %zu statements, %zu characters\n", todas.size(), caracteres);
        sql::Formas<int> con_tipo(sql::Numeros::con_tipo);
        sql::Formas<int> segun_valor(sql::Numeros::segun_valor);
        toma(con_tipo, donde, todas);
        toma(segun_valor, donde, todas);
        std::printf("%zu shapes with types, %zu without\n", con_tipo.cuantas(), segun_valor.cuantas());
        const double textos = mide("rewritten as texts", todas.size(), [&] {
            for (const auto& una : todas)
                sumidero = sql::reescribe(una, donde).size();
        });
        const double formas
            = mide("shape and values, without types", todas.size(), [&] { toma(segun_valor, donde, todas); });
        mide("shape and values, with types", todas.size(), [&] { toma(con_tipo, donde, todas); });
        std::printf("  ratio %.3f\n", formas / textos);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
