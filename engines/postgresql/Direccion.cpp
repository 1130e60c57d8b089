#include "engines/postgresql/Direccion.hpp"

#include "platform/adodb/Connection.hpp"

#include <charconv>
#include <libpq-fe.h>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace atipicos::postgresql {

namespace {

    [[noreturn]] void no_vale(std::string descripcion, Donde donde)
    {
        throw adodb::ErrorBaseDatos(
            adodb::Categoria::conexion, "PostgreSQL", std::move(descripcion), {}, donde);
    }

    /// Where a parameter of ours begins, "name=": after `?` or `&` in an address, after a blank between
    /// parameters.
    std::size_t lugar_de_nuestro(std::string_view direccion, std::string_view nuestro, bool es_uri)
    {
        bool entre_comillas = false;
        for (std::size_t i = 0; i < direccion.size(); ++i) {
            const char antes = i == 0 ? ' ' : direccion[i - 1];
            const bool empieza = es_uri ? antes == '?' || antes == '&' : antes == ' ' && !entre_comillas;
            if (empieza && direccion.substr(i).starts_with(nuestro))
                return i;
            if (direccion[i] == '\\')
                ++i;
            else if (direccion[i] == '\'')
                entre_comillas = !entre_comillas;
        }
        return std::string_view::npos;
    }

    /// Takes a parameter of ours out of the address, which the client library would not understand with it.
    std::optional<std::string> toma(std::string& direccion, std::string_view nuestro)
    {
        const bool es_uri = direccion.starts_with("postgresql://") || direccion.starts_with("postgres://");
        const auto inicio = lugar_de_nuestro(direccion, nuestro, es_uri);
        if (inicio == std::string::npos)
            return std::nullopt;
        auto fin = direccion.find(es_uri ? '&' : ' ', inicio);
        if (fin == std::string::npos)
            fin = direccion.size();
        auto valor = direccion.substr(inicio + nuestro.size(), fin - inicio - nuestro.size());
        const bool hay_mas = fin < direccion.size();
        direccion.erase(hay_mas || inicio == 0 ? inicio : inicio - 1, fin - inicio + 1);
        return valor;
    }

    bool toma_preparadas(std::string& direccion, Donde donde)
    {
        const auto valor = toma(direccion, "preparadas=").value_or("si");
        if (valor != "no" && valor != "si")
            no_vale("El parámetro preparadas de la dirección de la base de datos es «si» o «no».", donde);
        return valor == "si";
    }

    std::chrono::seconds toma_reintento(std::string& direccion, std::chrono::seconds otro, Donde donde)
    {
        const auto valor = toma(direccion, "reintento=");
        if (!valor)
            return otro;
        int segundos = 0;
        const auto [fin, error] = std::from_chars(valor->data(), valor->data() + valor->size(), segundos);
        if (error != std::errc{} || fin != valor->data() + valor->size() || segundos < 0 || segundos > 86'400)
            no_vale("El parámetro reintento de la dirección de la base de datos es un número de segundos, de "
                    "0 a 86400.",
                donde);
        return std::chrono::seconds(segundos);
    }

}

Direccion lee_direccion(std::string direccion, Donde donde)
{
    Direccion leida;
    leida.preparadas = toma_preparadas(direccion, donde);
    leida.reintento = toma_reintento(direccion, leida.reintento, donde);
    char* mensaje = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> leidos(
        PQconninfoParse(direccion.c_str(), &mensaje), &PQconninfoFree);
    PQfreemem(mensaje);
    if (!leidos) // its own words are not shown: they quote parts, and one may be a password in the wrong
                 // place
        no_vale("La dirección de la base de datos no se entiende. Se escribe "
                "postgresql://usuario@servidor:puerto/base",
            donde);
    for (const auto* una = leidos.get(); una->keyword != nullptr; ++una)
        if (una->val != nullptr)
            leida.parametros[una->keyword] = una->val;
    if (leida.parametros.contains("password") || leida.parametros.contains("sslpassword"))
        no_vale("La contraseña no se escribe en la dirección de la base de datos, donde otros la verían: "
                "póngala en la variable PGPASSWORD o en el fichero ~/.pgpass.",
            donde);
    return leida;
}

} // namespace atipicos::postgresql
