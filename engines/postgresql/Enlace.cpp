#include "engines/postgresql/Enlace.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using Parametros = std::map<std::string, std::string>;

    constexpr auto fuente = "PostgreSQL";
    constexpr int version_minima = 130'000; // ISNULL needs its "anycompatible" types

    std::string en_una_linea(const char* texto)
    {
        std::string linea = texto == nullptr ? "" : texto;
        while (!linea.empty() && linea.back() == '\n')
            linea.pop_back();
        std::replace(linea.begin(), linea.end(), '\n', ' ');
        return linea;
    }

    [[noreturn]] void no_vale(std::string descripcion, Donde donde)
    {
        throw ErrorBaseDatos(Categoria::conexion, fuente, std::move(descripcion), {}, donde);
    }

    /// What the address says, taken apart by the client library. Its own words on an address that it does not
    /// understand are not shown: they quote parts of it, and one may be a password in the wrong place.
    Parametros lee_direccion(const std::string& direccion, Donde donde)
    {
        char* mensaje = nullptr;
        const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> leidos(
            PQconninfoParse(direccion.c_str(), &mensaje), &PQconninfoFree);
        PQfreemem(mensaje);
        if (!leidos)
            no_vale("La dirección de la base de datos no se entiende. Se escribe "
                    "postgresql://usuario@servidor:puerto/base",
                donde);
        Parametros parametros;
        for (const auto* una = leidos.get(); una->keyword != nullptr; ++una)
            if (una->val != nullptr)
                parametros[una->keyword] = una->val;
        if (parametros.contains("password") || parametros.contains("sslpassword"))
            no_vale("La contraseña no se escribe en la dirección de la base de datos, donde otros la verían: "
                    "póngala en la variable PGPASSWORD o en el fichero ~/.pgpass.",
                donde);
        return parametros;
    }

    std::string ajuste(const std::string& nombre, const std::string& valor)
    {
        std::string texto = " -c " + nombre + "=";
        for (const char c : valor) {
            if (c == ' ' || c == '\\')
                texto += '\\';
            texto += c;
        }
        return texto;
    }

    std::string milisegundos(std::chrono::milliseconds tiempo) // to the server 0 is for ever
    {
        return std::to_string(std::max<std::chrono::milliseconds::rep>(tiempo.count(), 1));
    }

    /// The settings of a session travel with its opening and cost no round trip.
    std::string ajustes(const Opciones& opciones)
    {
        std::string texto = ajuste("search_path", opciones.esquema) + ajuste("datestyle", "ISO,DMY")
            + ajuste("standard_conforming_strings", "on")
            + ajuste("lock_timeout", milisegundos(opciones.espera))
            + ajuste("statement_timeout", milisegundos(opciones.espera_instruccion))
            // A workstation that is switched off in the middle of a save holds its locks no longer than this.
            + ajuste("tcp_keepalives_idle", "30") + ajuste("tcp_keepalives_interval", "10")
            + ajuste("tcp_keepalives_count", "3");
        if (opciones.solo_lectura)
            texto += ajuste("default_transaction_read_only", "on");
        if (!opciones.sincronizacion_completa)
            texto += ajuste("synchronous_commit", "off");
        return texto;
    }

    PGconn* conecta(const Parametros& parametros)
    {
        std::vector<const char*> nombres;
        std::vector<const char*> valores;
        for (const auto& [nombre, valor] : parametros) {
            nombres.push_back(nombre.c_str());
            valores.push_back(valor.c_str());
        }
        nombres.push_back(nullptr);
        valores.push_back(nullptr);
        return PQconnectdbParams(nombres.data(), valores.data(), 0);
    }

    /// An error of the client library itself has no code of the server: the line is no longer to be used,
    /// whether the library says so already or not.
    bool cortada(const PGconn* linea, const Respuesta& ultima)
    {
        return PQstatus(linea) == CONNECTION_BAD
            || (es_error(ultima) && PQresultErrorField(ultima.get(), PG_DIAG_SQLSTATE) == nullptr);
    }

    void calla(void*, const PGresult*) { } // notices are for whoever administers the server

}

Enlace::Enlace(const Opciones& opciones, Donde donde)
    : m_avisa(opciones.avisa)
{
    auto parametros = lee_direccion(opciones.direccion, donde);
    parametros["client_encoding"] = "UTF8";
    parametros["options"] = ajustes(opciones) + " " + parametros["options"];
    parametros.try_emplace("fallback_application_name", "atipicos");
    parametros.try_emplace("connect_timeout", "10");
    m_linea.reset(conecta(parametros));
    comprueba_abierta(donde);
}

void Enlace::comprueba_abierta(Donde donde)
{
    if (PQstatus(get()) != CONNECTION_OK)
        no_vale("No se puede conectar con el servidor de la base de datos ("
                + en_una_linea(PQerrorMessage(get())) + ").",
            donde);
    if (PQserverVersion(get()) < version_minima)
        no_vale("El servidor de la base de datos es PostgreSQL "
                + std::to_string(PQserverVersion(get()) / 10'000) + " y se necesita el 13 o posterior.",
            donde);
    PQsetNoticeReceiver(get(), &calla, nullptr);
}

void Enlace::reanuda(Donde donde)
{
    PQreset(get());
    comprueba_abierta(donde);
    m_perdido = false;
    avisa(sql::Linea::reanudada);
}

std::vector<Respuesta> Enlace::intercambia(
    std::span<const Orden> ordenes, std::string_view instruccion, Donde donde)
{
    // Written into one text they cost the server a third less, but only a statement without a semicolon
    // cannot turn out to be two.
    const bool en_un_texto = std::all_of(ordenes.begin(), ordenes.end(), [](const Orden& orden) {
        return orden.valores.empty() && std::string_view(orden.sql).find(';') == std::string_view::npos;
    });
    return en_un_texto ? intercambia_texto(ordenes, instruccion, donde)
                       : intercambia_en_fila(ordenes, instruccion, donde);
}

std::vector<Respuesta> Enlace::intercambia_texto(
    std::span<const Orden> ordenes, std::string_view instruccion, Donde donde)
{
    std::string texto;
    for (const auto& orden : ordenes)
        texto.append(texto.empty() ? "" : "\n;").append(orden.sql); // a comment ends with its line
    if (PQsendQuery(get(), texto.c_str()) != 1)
        falla(instruccion, donde);
    std::vector<Respuesta> respuestas;
    while (auto respuesta = Respuesta(PQgetResult(get())))
        respuestas.push_back(std::move(respuesta));
    if (respuestas.empty() || cortada(get(), respuestas.back()))
        falla(instruccion, donde);
    return respuestas;
}

std::vector<Respuesta> Enlace::intercambia_en_fila(
    std::span<const Orden> ordenes, std::string_view instruccion, Donde donde)
{
    if (PQenterPipelineMode(get()) != 1)
        falla(instruccion, donde);
    for (const auto& orden : ordenes)
        if (!envia(orden))
            falla(instruccion, donde);
    if (PQpipelineSync(get()) != 1)
        falla(instruccion, donde);
    auto respuestas = recibe(ordenes.size(), instruccion, donde);
    if (PQexitPipelineMode(get()) != 1)
        falla(instruccion, donde);
    return respuestas;
}

std::vector<Respuesta> Enlace::recibe(std::size_t cuantas, std::string_view instruccion, Donde donde)
{
    std::vector<Respuesta> respuestas;
    respuestas.reserve(cuantas);
    while (respuestas.size() < cuantas) {
        respuestas.emplace_back(PQgetResult(get()));
        while (const auto sobrante = Respuesta(PQgetResult(get()))) { }
        if (PQstatus(get()) == CONNECTION_BAD)
            falla(instruccion, donde);
    }
    if (PQresultStatus(Respuesta(PQgetResult(get())).get()) != PGRES_PIPELINE_SYNC)
        falla(instruccion, donde);
    return respuestas;
}

bool Enlace::envia(const Orden& orden)
{
    std::vector<const char*> valores;
    for (const auto& texto : orden.valores)
        valores.push_back(texto ? texto->c_str() : nullptr);
    const auto cuantos = static_cast<int>(valores.size());
    return PQsendQueryParams(get(), orden.sql, cuantos, nullptr, valores.data(), nullptr, nullptr, 0) == 1;
}

void Enlace::avisa(sql::Linea que) const
{
    if (m_avisa)
        m_avisa(que);
}

void Enlace::falla(std::string_view instruccion, Donde donde)
{
    m_perdido = true; // the client library may know it only when it reads again
    avisa(sql::Linea::perdida);
    const std::string motivo = PQerrorMessage(get());
    throw ErrorBaseDatos(Categoria::conexion, fuente,
        "Se ha perdido la conexión con el servidor de la base de datos ("
            + motivo.substr(0, motivo.find('\n')) + "). La próxima operación volverá a conectar.",
        std::string(instruccion), donde);
}

} // namespace atipicos::postgresql
