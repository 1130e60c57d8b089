#include "engines/postgresql/Enlace.hpp"

#include "engines/postgresql/Direccion.hpp"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using Parametros = std::map<std::string, std::string>;

    constexpr int version_minima = 130'000; // ISNULL needs its "anycompatible" types

    std::string en_una_linea(const char* texto)
    {
        std::string linea = texto == nullptr ? "" : texto;
        while (!linea.empty() && linea.back() == '\n')
            linea.pop_back();
        std::replace(linea.begin(), linea.end(), '\n', ' ');
        return linea;
    }

    [[noreturn]] void no_conecta(std::string descripcion, Donde donde)
    {
        throw ErrorBaseDatos(Categoria::conexion, fuente, std::move(descripcion), {}, donde);
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

    /// A person may read a list with a pager: its rows have longer than the answer of a statement has.
    constexpr auto mientras_se_lee = "SET LOCAL statement_timeout TO 3600000\n;";

    constexpr int filas_sin_cancelar = 1'000;

    void calla(void*, const PGresult*) { } // notices are for whoever administers the server

}

Enlace::Enlace(const Opciones& opciones, Donde donde)
    : m_avisa(opciones.avisa)
    , m_sello("a" + std::to_string(std::random_device()()) + "_")
{
    auto [parametros, preparadas] = lee_direccion(opciones.direccion, donde);
    m_con_preparadas = preparadas && opciones.preparadas;
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
        no_conecta("No se puede conectar con el servidor de la base de datos ("
                + en_una_linea(PQerrorMessage(get())) + ").",
            donde);
    if (PQserverVersion(get()) < version_minima)
        no_conecta("El servidor de la base de datos es PostgreSQL "
                + std::to_string(PQserverVersion(get()) / 10'000) + " y se necesita el 13 o posterior.",
            donde);
    PQsetNoticeReceiver(get(), &calla, nullptr);
}

void Enlace::reanuda(Donde donde)
{
    PQreset(get());
    comprueba_abierta(donde);
    m_perdido = false;
    olvida_preparadas();
    avisa(sql::Linea::reanudada);
}

std::vector<Respuesta> Enlace::intercambia(
    std::span<const Orden> ordenes, std::string_view instruccion, Donde donde)
{
    recoge_lectura();
    // Written into one text they cost the server a third less, but only a statement without a semicolon
    // cannot turn out to be two.
    const bool en_un_texto = std::all_of(ordenes.begin(), ordenes.end(), [](const Orden& orden) {
        return orden.valores.empty() && orden.preparada == nullptr
            && std::string_view(orden.sql).find(';') == std::string_view::npos;
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
    m_una_a_una = false;
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
    auto sobrantes = envia_vacia(instruccion, donde);
    sobrantes += envia_sobrantes(instruccion, donde);
    std::vector<Preparada*> nuevas(ordenes.size()); // what each one prepares
    for (std::size_t i = 0; i < ordenes.size(); ++i)
        if (!envia(ordenes[i], nuevas[i]))
            falla(instruccion, donde);
    if (PQpipelineSync(get()) != 1)
        falla(instruccion, donde);
    auto respuestas = recibe(sobrantes, nuevas, instruccion, donde);
    if (PQexitPipelineMode(get()) != 1)
        falla(instruccion, donde);
    return respuestas;
}

std::vector<Respuesta> Enlace::recibe(
    std::size_t sobrantes, const std::vector<Preparada*>& nuevas, std::string_view instruccion, Donde donde)
{
    std::vector<Respuesta> respuestas;
    respuestas.reserve(nuevas.size());
    Respuesta fallida; // of what nobody asked for
    while (sobrantes-- > 0)
        if (auto una = recibe_una(instruccion, donde); es_error(una) && !fallida)
            fallida = std::move(una);
    for (auto* nueva : nuevas) {
        Respuesta al_preparar = nueva == nullptr ? nullptr : recibe_una(instruccion, donde);
        auto respuesta = recibe_una(instruccion, donde);
        const bool mal_preparada = nueva != nullptr && es_error(al_preparar);
        if (nueva != nullptr && !mal_preparada) {
            nueva->m_enlace = this;
            nueva->m_memoria = m_memoria;
        }
        respuestas.push_back(mal_preparada ? std::move(al_preparar) : std::move(respuesta));
    }
    if (fallida)
        respuestas.front() = std::move(fallida);
    if (PQresultStatus(Respuesta(PQgetResult(get())).get()) != PGRES_PIPELINE_SYNC)
        falla(instruccion, donde);
    return respuestas;
}

Respuesta Enlace::recibe_una(std::string_view instruccion, Donde donde)
{
    Respuesta respuesta(PQgetResult(get()));
    while (const auto sobrante = Respuesta(PQgetResult(get()))) { }
    if (PQstatus(get()) == CONNECTION_BAD)
        falla(instruccion, donde);
    return respuesta;
}

bool Enlace::envia(const Orden& orden, Preparada*& nueva)
{
    std::vector<const char*> valores;
    valores.reserve(orden.valores.size());
    for (const auto& texto : orden.valores)
        valores.push_back(texto ? texto->c_str() : nullptr);
    if (auto* preparada = preparada_de(orden))
        return envia_preparada(orden, valores, *preparada, nueva);
    return PQsendQueryParams(get(), orden.sql, static_cast<int>(valores.size()), nullptr, valores.data(),
               nullptr, nullptr, 0)
        == 1;
}

bool Enlace::envia_preparada(
    const Orden& orden, const std::vector<const char*>& valores, Preparada& preparada, Preparada*& nueva)
{
    if (!conoce(preparada)) {
        nueva = &preparada;
        preparada.m_nombre = m_sello + std::to_string(++m_nombres);
        const auto& tipos = preparada.tipos;
        if (PQsendPrepare(
                get(), preparada.m_nombre.c_str(), orden.sql, static_cast<int>(tipos.size()), tipos.data())
            != 1)
            return false;
    }
    return PQsendQueryPrepared(get(), preparada.m_nombre.c_str(), static_cast<int>(valores.size()),
               valores.data(), nullptr, nullptr, 0)
        == 1;
}

/// Words about the transaction are few, and go with many statements.
Preparada* Enlace::preparada_de(const Orden& orden)
{
    if (orden.preparada != nullptr || !orden.valores.empty() || !m_con_preparadas)
        return orden.preparada;
    const auto conocida = m_palabras.find(std::string_view(orden.sql));
    return &(conocida != m_palabras.end() ? conocida : m_palabras.try_emplace(orden.sql).first)->second;
}

/// The first statement of a pipeline would inherit the mode of a reading before it, and give its first row
/// for the whole answer: one that says nothing goes before it. Gives how many have been sent.
std::size_t Enlace::envia_vacia(std::string_view instruccion, Donde donde)
{
    if (!std::exchange(m_una_a_una, false))
        return 0;
    if (PQsendQueryParams(get(), "", 0, nullptr, nullptr, nullptr, nullptr, 0) != 1)
        falla(instruccion, donde);
    return 1;
}

std::size_t Enlace::envia_sobrantes(std::string_view instruccion, Donde donde)
{
    const auto sobrantes = std::exchange(m_sobrantes, {});
    for (const auto& nombre : sobrantes)
        if (PQsendQueryParams(
                get(), ("DEALLOCATE " + nombre).c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0)
            != 1)
            falla(instruccion, donde);
    return sobrantes.size();
}

bool Enlace::conoce(const Preparada& preparada) const noexcept
{
    return preparada.m_enlace == this && preparada.m_memoria == m_memoria;
}

void Enlace::olvida_preparadas() noexcept
{
    ++m_memoria;
    m_sobrantes.clear();
}

void Enlace::recoge_lectura()
{
    if (m_lectura != nullptr)
        m_lectura->recoge();
}

Respuesta Enlace::empieza_lectura(const std::string& sql, Lectura& lectura, Donde donde)
{
    recoge_lectura();
    if (PQsendQuery(get(), (std::string(mientras_se_lee) + sql).c_str()) != 1)
        falla(sql, donde);
    PQsetSingleRowMode(get());
    m_una_a_una = true;
    m_lectura = &lectura;
    if (auto ajuste = Respuesta(PQgetResult(get())); es_error(ajuste)) {
        m_lectura = nullptr;
        while (const auto sobrante = Respuesta(PQgetResult(get()))) { }
        if (cortada(get(), ajuste))
            falla(sql, donde);
        return ajuste;
    }
    return sigue_lectura(sql, donde);
}

Respuesta Enlace::sigue_lectura(std::string_view instruccion, Donde donde)
{
    Respuesta respuesta(PQgetResult(get()));
    if (PQresultStatus(respuesta.get()) == PGRES_SINGLE_TUPLE)
        return respuesta;
    m_lectura = nullptr;
    while (const auto sobrante = Respuesta(PQgetResult(get()))) { }
    if (!respuesta || cortada(get(), respuesta))
        falla(instruccion, donde);
    return respuesta;
}

void Enlace::deja_lectura(const Lectura& lectura) noexcept
{
    if (m_lectura != &lectura)
        return;
    m_lectura = nullptr;
    for (int i = 0; i < filas_sin_cancelar;
         ++i) // what is on its way already comes sooner than a cancellation
        if (!Respuesta(PQgetResult(get())))
            return;
    if (auto* cancelacion = PQgetCancel(get())) {
        std::array<char, 256> motivo{};
        PQcancel(cancelacion, motivo.data(), static_cast<int>(motivo.size()));
        PQfreeCancel(cancelacion);
    }
    while (const auto sobrante = Respuesta(PQgetResult(get()))) { }
}

Preparada::~Preparada() { olvida(); }

void Preparada::olvida() noexcept
{
    if (m_enlace != nullptr && m_enlace->conoce(*this)) {
        try {
            m_enlace->m_sobrantes.push_back(std::move(m_nombre));
        } catch (...) { // NOLINT(bugprone-empty-catch): the server keeps it until the line is closed
        }
    }
    m_enlace = nullptr;
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
