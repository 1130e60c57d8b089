#include "engines/postgresql/Ajustes.hpp"

#include <algorithm>

namespace atipicos::postgresql {

namespace {

    std::string milisegundos(std::chrono::milliseconds tiempo) // to the server 0 is for ever
    {
        return std::to_string(std::max<std::chrono::milliseconds::rep>(tiempo.count(), 1));
    }

}

std::vector<Ajuste> ajustes_de(const Opciones& opciones, bool solo_lectura_despues)
{
    std::vector<Ajuste> ajustes{ { "search_path", opciones.esquema }, { "datestyle", "ISO,DMY" },
        { "standard_conforming_strings", "on" }, { "lock_timeout", milisegundos(opciones.espera) },
        { "statement_timeout", milisegundos(opciones.espera_instruccion) },
        // A workstation that is switched off in the middle of a save holds its locks no longer than this.
        { "tcp_keepalives_idle", "30" }, { "tcp_keepalives_interval", "10" },
        { "tcp_keepalives_count", "3" } };
    if (opciones.solo_lectura && !solo_lectura_despues)
        ajustes.push_back({ ajuste_solo_lectura, "on" });
    if (!opciones.sincronizacion_completa)
        ajustes.push_back({ "synchronous_commit", "off" });
    return ajustes;
}

std::string como_opciones(const std::vector<Ajuste>& ajustes)
{
    std::string texto;
    for (const auto& [nombre, valor] : ajustes) {
        texto.append(" -c ").append(nombre) += '=';
        for (const char c : valor) {
            if (c == ' ' || c == '\\')
                texto += '\\';
            texto += c;
        }
    }
    return texto;
}

std::string como_instruccion(const std::vector<Ajuste>& ajustes)
{
    std::string texto;
    for (const auto& [nombre, valor] : ajustes) {
        texto.append(texto.empty() ? "SELECT" : ",").append(" set_config('").append(nombre).append("', '");
        for (const char c : valor)
            texto.append(c == '\'' ? 2 : 1, c);
        texto += "', false)";
    }
    return texto;
}

} // namespace atipicos::postgresql
