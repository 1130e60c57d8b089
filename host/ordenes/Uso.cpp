#include "host/ordenes/Uso.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string_view>

namespace atipicos::app {

namespace {

    bool es_opcion(std::string_view argumento) { return argumento.starts_with("--"); }

    bool lleva_valor(const CLI::Option& opcion) { return opcion.get_items_expected_min() > 0; }

    const CLI::App* orden_llamada(const CLI::App& app, std::string_view nombre)
    {
        const auto todas = app.get_subcommands([](const CLI::App*) { return true; });
        const auto una = std::find_if(
            todas.begin(), todas.end(), [&](const CLI::App* orden) { return orden->get_name() == nombre; });
        return una == todas.end() ? nullptr : *una;
    }

    /// Whether the argument behind the option is its value.
    bool exige_valor(const CLI::Option& opcion, std::string_view argumento, const char* siguiente)
    {
        const auto igual = argumento.find('=');
        const std::string nombre(argumento.substr(0, igual));
        if (!lleva_valor(opcion)) {
            if (igual != std::string_view::npos)
                throw MalUsada("La opción " + nombre + " no lleva ningún valor.");
            return false;
        }
        if (igual != std::string_view::npos
                ? igual + 1 == argumento.size()
                : siguiente == nullptr || *siguiente == '\0' || es_opcion(siguiente))
            throw MalUsada("Falta el valor de " + nombre + ".");
        return igual == std::string_view::npos;
    }

    /// The command that was chosen, or the program when none was.
    const CLI::App& elegida(const CLI::App& app)
    {
        const auto ordenes = app.get_subcommands();
        return ordenes.empty() ? app : *ordenes.front();
    }

    std::string falta(const CLI::App& app)
    {
        for (const auto* opcion : app.get_options())
            if (opcion->get_required() && opcion->empty())
                return "Falta " + opcion->get_name() + ".";
        return "Falta la orden.";
    }

    std::string se_excluyen(const CLI::App& app)
    {
        for (const auto* opcion : app.get_options())
            for (const auto* otra : opcion->get_excludes())
                if (!opcion->empty() && !otra->empty())
                    return "No se admiten a la vez " + opcion->get_name() + " y " + otra->get_name() + ".";
        return "Hay opciones que no se admiten a la vez.";
    }

    std::string repetida(const CLI::App& app)
    {
        for (const auto* opcion : app.get_options())
            if (lleva_valor(*opcion)
                && opcion->count() > static_cast<std::size_t>(opcion->get_items_expected_max()))
                return "Se ha dado más de una vez: " + opcion->get_name() + ".";
        return "Falta o sobra un valor.";
    }

    std::string sobra(const CLI::App& app)
    {
        std::string todo;
        for (const auto& uno : app.remaining(true))
            (todo += todo.empty() ? "" : " ") += uno;
        return "No se esperaba: " + todo;
    }

}

void exige_valores(const CLI::App& app, std::span<const char* const> argumentos)
{
    const auto* actual = &app;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string_view argumento = argumentos[i];
        if (argumento == "--")
            return;
        if (es_opcion(argumento)) {
            const auto* opcion
                = actual->get_option_no_throw(std::string(argumento.substr(0, argumento.find('='))));
            const char* siguiente = i + 1 < argumentos.size() ? argumentos[i + 1] : nullptr;
            if (opcion != nullptr && exige_valor(*opcion, argumento, siguiente))
                ++i;
        } else if (actual == &app && !argumento.starts_with('-')) {
            actual = orden_llamada(app, argumento);
            if (actual == nullptr)
                throw MalUsada("No se conoce la orden «" + std::string(argumento) + "».");
        }
    }
}

std::string explica(const CLI::App& app, const CLI::ParseError& error)
{
    if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr)
        return error.what(); // the option's name and the words of our own checks
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
        return sobra(app);
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
        return falta(elegida(app));
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
        return se_excluyen(elegida(app));
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return repetida(elegida(app));
    return "No se entiende lo que se pide.";
}

} // namespace atipicos::app
