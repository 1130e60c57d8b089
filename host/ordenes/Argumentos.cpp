#include "host/ordenes/Argumentos.hpp"

#include "host/bases/Lugar.hpp"

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    std::string comprueba_conexion(std::string& texto)
    {
        try {
            static_cast<void>(bases::Lugar::de_conexion(texto));
            return {};
        } catch (const Error& error) {
            return error.descripcion();
        }
    }

}

/// The library would take "010" for 8 and "0x10" for 16.
CLI::Option* solo_numero(CLI::Option& opcion, std::int64_t tope)
{
    const CLI::Validator comprueba(
        [nombre = opcion.get_name(), tope](std::string& texto) {
            if (texto.empty() || texto.find_first_not_of("0123456789") != std::string::npos)
                return "«" + texto + "» no es un número.";
            texto.erase(0, std::min(texto.find_first_not_of('0'), texto.size() - 1));
            std::int64_t valor = 0;
            const auto leido = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
            if (leido.ec != std::errc() || valor > tope)
                throw MalUsada("El valor no es un número admitido: " + nombre + " = " + texto);
            return std::string();
        },
        "");
    return opcion.transform(comprueba);
}

CLI::Validator uno_de(std::initializer_list<const char*> valores, std::string que)
{
    const auto comprueba = [admitidos = std::vector<std::string>(valores.begin(), valores.end()),
                               que = std::move(que)](const std::string& texto) {
        return std::find(admitidos.begin(), admitidos.end(), texto) != admitidos.end()
            ? std::string()
            : "no se conoce " + que + " «" + texto + "».";
    };
    return { comprueba, "" };
}

CLI::Option* agrega_dia(CLI::App& orden, const std::string& nombre, Date& destino, const std::string& ayuda)
{
    const auto pon
        = [&destino](const std::string& texto) { destino = Date::de_texto(texto).value_or(Date()); };
    const auto comprueba = [](const std::string& texto) {
        return Date::de_texto(texto)
            ? std::string()
            : "«" + texto + "» no es una fecha: se escribe dd/mm/aaaa, como 21/11/2026.";
    };
    return orden.add_option_function<std::string>(nombre, pon, ayuda)
        ->check(CLI::Validator(comprueba, ""))
        ->type_name("DD/MM/AAAA");
}

CLI::Option* agrega_formato(CLI::App& orden, std::string& destino, std::initializer_list<const char*> valores,
    const std::string& ayuda)
{
    destino = *valores.begin();
    return orden.add_option("--formato", destino, ayuda)->check(uno_de(valores, "el formato"));
}

void agrega_lugar(CLI::App& orden, OpcionesComunes& comunes)
{
    auto* datos
        = orden.add_option("--datos", comunes.datos, "Carpeta de las bases de datos (por defecto, datos)");
    orden
        .add_option("--conexion", comunes.conexion,
            "En vez de una carpeta, sqlite:CARPETA, postgresql://usuario@servidor/base u odbc:CADENA")
        ->check(CLI::Validator(&comprueba_conexion, ""))
        ->excludes(datos);
}

void agrega_comunes(CLI::App& orden, OpcionesComunes& comunes)
{
    agrega_lugar(orden, comunes);
    agrega_numero(orden, "--empresa", comunes.empresa, "Empresa de gestión (por defecto, la 1)");
    agrega_numero(
        orden, "--usuario", comunes.usuario, "Usuario (por defecto, el de quien ha entrado, o el primero)");
}

void en_castellano(CLI::App& app)
{
    const auto formato = std::make_shared<CLI::Formatter>();
    for (const auto& [ingles, castellano] : { std::pair{ "Usage", "Uso" }, { "OPTIONS", "OPCIONES" },
             { "SUBCOMMAND", "ORDEN" }, { "SUBCOMMANDS", "ÓRDENES" }, { "Options", "Opciones" },
             { "Subcommands", "Órdenes" }, { "Positionals", "Argumentos" }, { "REQUIRED", "(obligatorio)" },
             { "Excludes", "no con" }, { "TEXT", "TEXTO" }, { "INT", "N" } })
        formato->label(ingles, castellano);
    formato->column_width(34);
    app.formatter(formato);
    app.set_help_flag("-h,--help", "Muestra esta ayuda y termina")->group("Opciones");
    for (auto* opcion : app.get_options([](const CLI::Option* una) { return una->nonpositional(); }))
        opcion->group("Opciones");
    for (auto* orden : app.get_subcommands([](const CLI::App*) { return true; })) {
        orden->group("Órdenes");
        en_castellano(*orden);
    }
}

} // namespace atipicos::app
