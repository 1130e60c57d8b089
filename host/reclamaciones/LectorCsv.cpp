#include "host/reclamaciones/LectorCsv.hpp"

#include "host/sesion/OpcionesComunes.hpp"

#include <utility>

namespace atipicos::app {

ErrorDeContenido::ErrorDeContenido(const std::string& motivo)
    : Error(no_hecho, "atipicos", motivo)
{
}

LectorCsv::LectorCsv(Trozos trozos)
    : m_trozos(std::move(trozos))
{
    csv_init(&m_csv, CSV_STRICT | CSV_STRICT_FINI);
    csv_set_delim(&m_csv, ';');
}

LectorCsv::~LectorCsv() { csv_free(&m_csv); }

bool LectorCsv::lee(FilaCsv& fila)
{
    while (m_leidas.empty())
        if (!avanza())
            return false;
    fila = std::move(m_leidas.front());
    m_leidas.pop_front();
    return true;
}

/// Reads a line, or what the piece holds of it; false when there is nothing left.
bool LectorCsv::avanza()
{
    if (m_resto.empty() && !pide_trozo())
        return false;
    if (m_resto.empty())
        return true; // the last row has been read with the end
    if (!m_en_linea && std::exchange(m_tras_retorno, false) && m_resto.front() == '\n') {
        alimenta(m_resto.substr(0, 1));
        m_resto.remove_prefix(1);
        return true;
    }
    empieza_linea();
    const auto marca = m_resto.find_first_of("\r\n");
    const auto linea = m_resto.substr(0, marca == std::string_view::npos ? marca : marca + 1);
    alimenta(linea);
    m_resto.remove_prefix(linea.size());
    if (marca == std::string_view::npos)
        return true;
    m_en_linea = false;
    m_tras_retorno = linea.back() == '\r';
    if (m_fila.campos.empty() && m_csv.quoted == 0)
        m_a_medias = false; // a blank line
    return true;
}

bool LectorCsv::pide_trozo()
{
    if (m_acabado)
        return false;
    m_resto = m_trozos();
    m_acabado = m_resto.empty();
    if (constexpr std::string_view marca = "\xEF\xBB\xBF";
        !std::exchange(m_empezado, true) && m_resto.starts_with(marca)) {
        m_resto.remove_prefix(marca.size());
        if (m_resto.empty())
            return pide_trozo();
    }
    if (m_acabado && csv_fini(&m_csv, &LectorCsv::campo, &LectorCsv::fin_fila, this) != 0)
        mal_entrecomillada();
    return true;
}

void LectorCsv::empieza_linea()
{
    if (std::exchange(m_en_linea, true))
        return;
    ++m_linea;
    if (!std::exchange(m_a_medias, true))
        m_fila.numero = m_linea;
}

void LectorCsv::alimenta(std::string_view texto)
{
    if (csv_parse(&m_csv, texto.data(), texto.size(), &LectorCsv::campo, &LectorCsv::fin_fila, this)
        != texto.size())
        mal_entrecomillada();
}

void LectorCsv::mal_entrecomillada() const
{
    throw ErrorDeContenido("fila " + std::to_string(m_fila.numero)
        + ": las comillas no están bien puestas (un texto con comillas o con «;» va entre "
          "comillas, y las de dentro, dobles).");
}

void LectorCsv::campo(void* texto, std::size_t tamano, void* lector)
{
    const auto* inicio = static_cast<const char*>(texto);
    static_cast<LectorCsv*>(lector)->m_fila.campos.emplace_back(inicio == nullptr ? "" : inicio, tamano);
}

void LectorCsv::fin_fila(int, void* quien)
{
    auto* lector = static_cast<LectorCsv*>(quien);
    lector->m_leidas.push_back(std::exchange(lector->m_fila, {}));
    lector->m_a_medias = false;
}

} // namespace atipicos::app
