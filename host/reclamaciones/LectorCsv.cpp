#include "host/reclamaciones/LectorCsv.hpp"

#include "host/reclamaciones/Codificacion.hpp"
#include "host/sesion/OpcionesComunes.hpp"

#include <utility>

namespace atipicos::app {

namespace {

    // A quote that is never closed would swallow the file: no row is longer, none is looked for further.
    constexpr std::size_t mayor_fila = std::size_t{ 4 } << 20;
    constexpr int bastantes_malas = 100;

}

ErrorDeContenido::ErrorDeContenido(const std::string& motivo)
    : Error(no_hecho, "atipicos", motivo)
{
}

LectorCsv::LectorCsv(Trozos trozos)
    : m_trozos(std::move(trozos))
{
    prepara();
}

LectorCsv::~LectorCsv() { csv_free(&m_csv); }

void LectorCsv::prepara()
{
    csv_init(&m_csv, CSV_STRICT | CSV_STRICT_FINI);
    csv_set_delim(&m_csv, ';');
}

bool LectorCsv::lee(FilaCsv& fila)
{
    while (m_leidas.empty())
        if (!avanza())
            return false;
    fila = std::move(m_leidas.front());
    m_leidas.pop_front();
    return true;
}

std::string_view LectorCsv::sin_leer() const noexcept
{
    const auto devuelto = std::string_view(m_devuelta).substr(m_de_devuelta);
    return devuelto.empty() ? m_resto : devuelto;
}

/// Reads a line, or what the piece holds of it; false when there is nothing left.
bool LectorCsv::avanza()
{
    const auto resto = sin_leer();
    if (resto.empty())
        return pide_trozo();
    if (m_saltando) {
        busca_fin_de_linea();
        return true;
    }
    if (!m_en_linea && std::exchange(m_tras_retorno, false) && resto.front() == '\n') {
        alimenta(resto.substr(0, 1));
        return true;
    }
    empieza_linea();
    const auto marca = resto.find_first_of("\r\n");
    const auto linea = resto.substr(0, marca == std::string_view::npos ? marca : marca + 1);
    if (!alimenta(linea) || marca == std::string_view::npos)
        return true;
    m_en_linea = false;
    m_tras_retorno = linea.back() == '\r';
    if (m_fila.campos.empty() && m_csv.quoted == 0) { // a blank line
        m_a_medias = false;
        m_cruda.clear();
    }
    return true;
}

/// The next piece; at the end of the last one what the parser still holds. False after that.
bool LectorCsv::pide_trozo()
{
    if (!m_acabado) {
        m_resto = m_trozos();
        m_acabado = m_resto.empty();
        if (!std::exchange(m_empezado, true)) {
            if (empieza_en_utf16(m_resto))
                throw ErrorDeContenido(
                    "el fichero está en UTF-16; guárdelo como CSV en UTF-8 y delo otra vez.");
            if (constexpr std::string_view marca = "\xEF\xBB\xBF"; m_resto.starts_with(marca))
                m_resto.remove_prefix(marca.size());
        }
        return true;
    }
    if (std::exchange(m_cerrado, true))
        return false;
    if (csv_fini(&m_csv, &LectorCsv::campo, &LectorCsv::fin_fila, this) != 0) {
        salta_linea();
        m_cerrado = false;
    }
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

/// Takes what comes next to the parser; false when the row is begun again after its first line.
bool LectorCsv::alimenta(std::string_view texto)
{
    if (m_a_medias)
        m_cruda += texto;
    consume(texto.size());
    const bool bien
        = csv_parse(&m_csv, texto.data(), texto.size(), &LectorCsv::campo, &LectorCsv::fin_fila, this)
        == texto.size();
    if (bien && m_cruda.size() <= mayor_fila)
        return true;
    salta_linea();
    return false;
}

void LectorCsv::consume(std::size_t cuanto)
{
    if (m_de_devuelta < m_devuelta.size())
        m_de_devuelta += cuanto;
    else
        m_resto.remove_prefix(cuanto);
}

void LectorCsv::busca_fin_de_linea()
{
    const auto resto = sin_leer();
    const auto marca = resto.find_first_of("\r\n");
    m_saltando = marca == std::string_view::npos;
    m_tras_retorno = !m_saltando && resto[marca] == '\r';
    consume(m_saltando ? resto.size() : marca + 1);
}

/// The row at hand is badly quoted: what stands after its first line is read again.
void LectorCsv::salta_linea()
{
    if (++m_malas > bastantes_malas)
        throw ErrorDeContenido("fila " + std::to_string(m_fila.numero) + ": con esta son ya "
            + std::to_string(m_malas) + " las filas con las comillas mal puestas; revise el fichero entero.");
    m_fila.mal_entrecomillada = true;
    m_linea = m_fila.numero;
    m_leidas.push_back(std::exchange(m_fila, {}));

    const auto marca = m_cruda.find_first_of("\r\n");
    const auto fin = marca == std::string::npos ? m_cruda.size() : marca + 1;
    m_devuelta = m_cruda.substr(fin) + m_devuelta.substr(m_de_devuelta);
    m_de_devuelta = 0;
    m_tras_retorno = marca != std::string::npos && m_cruda[marca] == '\r';
    m_saltando = marca == std::string::npos;
    m_en_linea = false;
    m_a_medias = false;
    m_cruda.clear();
    csv_free(&m_csv);
    prepara();
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
    lector->m_cruda.clear();
}

} // namespace atipicos::app
