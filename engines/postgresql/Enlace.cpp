#include "engines/postgresql/Enlace.hpp"

#include <algorithm>
#include <array>
#include <poll.h>
#include <random>
#include <sys/socket.h>
#include <utility>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;

    /// An error of the client library itself has no code of the server: the line is no longer to be used,
    /// whether the library says so already or not.
    bool cortada(const PGconn* linea, const Respuesta& ultima)
    {
        return PQstatus(linea) == CONNECTION_BAD
            || (es_error(ultima) && PQresultErrorField(ultima.get(), PG_DIAG_SQLSTATE) == nullptr);
    }

    /// A person may read a list with a pager: its rows have longer than the answer of a statement has.
    constexpr auto mientras_se_lee = "SET LOCAL statement_timeout TO 3600000\n;";

    constexpr std::chrono::hours mientras_se_lee_como_mucho{ 1 };

    constexpr int filas_sin_cancelar = 1'000;

    /// The server ends a statement that takes too long by itself, and says so a little later.
    constexpr std::chrono::seconds lo_que_tarda_en_decirlo{ 2 };

}

Enlace::Enlace(const Opciones& opciones, Donde donde)
    : m_apertura(opciones, donde)
    , m_avisa(opciones.avisa)
    , m_sigue_esperando(opciones.sigue_esperando)
    , m_limite(opciones.espera_instruccion + lo_que_tarda_en_decirlo)
    , m_sello("a" + std::to_string(std::random_device()()) + "_")
{
    m_con_preparadas = m_apertura.preparadas();
    m_linea = m_apertura.abre(donde);
}

void Enlace::reanuda(Donde donde)
{
    // Whoever is asked whether to go on may let other things happen meanwhile, and they may want the server.
    if (m_reanudando)
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "Se está volviendo a conectar con el servidor de la base de datos: espere a que termine.", {},
            donde);
    m_reanudando = true;
    if (const int enchufe = PQsocket(get()); enchufe >= 0)
        shutdown(enchufe, SHUT_RDWR); // a server that is still there undoes what it was told
    try {
        m_linea = m_apertura.reabre(donde);
    } catch (...) {
        m_reanudando = false;
        throw;
    }
    m_reanudando = false;
    m_perdido = false;
    m_una_a_una = false;
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
    while (auto respuesta = toma())
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
    if (PQresultStatus(toma().get()) != PGRES_PIPELINE_SYNC)
        falla(instruccion, donde);
    return respuestas;
}

Respuesta Enlace::recibe_una(std::string_view instruccion, Donde donde)
{
    auto respuesta = toma();
    while (const auto sobrante = toma()) { }
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

Respuesta Enlace::toma() noexcept
{
    try {
        espera_respuesta();
    } catch (...) { // NOLINT(bugprone-empty-catch): whom we ask has failed: the server is asked
    }
    return Respuesta(PQgetResult(get()));
}

void Enlace::espera_respuesta()
{
    using RelojDeEspera = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds un_rato{ 250 };
    auto desde = RelojDeEspera::now();
    const auto limite
        = m_lectura != nullptr ? mientras_se_lee_como_mucho + lo_que_tarda_en_decirlo : m_limite;
    while (PQstatus(get()) == CONNECTION_OK && PQisBusy(get()) == 1) {
        pollfd enchufe{ PQsocket(get()), POLLIN, 0 };
        if (poll(&enchufe, 1, static_cast<int>(un_rato.count())) > 0) {
            if (PQconsumeInput(get()) != 1)
                return;
            desde = RelojDeEspera::now();
            continue;
        }
        const auto callado
            = std::chrono::duration_cast<std::chrono::milliseconds>(RelojDeEspera::now() - desde);
        if (callado >= limite)
            return corta("no contesta desde hace " + std::to_string(callado.count() / 1'000) + " s");
        if (!se_espera(callado))
            return corta("se ha dejado de esperar su respuesta");
    }
}

bool Enlace::se_espera(std::chrono::milliseconds callado)
{
    if (!m_sigue_esperando)
        return true;
    struct Mientras {
        bool& preguntando;
        explicit Mientras(bool& cual)
            : preguntando(cual)
        {
            preguntando = true;
        }
        Mientras(const Mientras&) = delete;
        Mientras& operator=(const Mientras&) = delete;
        ~Mientras() { preguntando = false; }
    };
    const Mientras mientras(m_preguntando);
    return m_sigue_esperando(callado);
}

void Enlace::exige_libre(Donde donde) const
{
    if (m_preguntando)
        throw ErrorBaseDatos(Categoria::conexion, fuente,
            "Se está esperando a que conteste el servidor de la base de datos: espere a que termine.", {},
            donde);
}

/// What waits for an answer finds the end of the line instead, and the server too.
void Enlace::corta(std::string motivo)
{
    m_motivo = std::move(motivo);
    shutdown(PQsocket(get()), SHUT_RDWR);
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
    if (auto ajuste = toma(); es_error(ajuste)) {
        m_lectura = nullptr;
        while (const auto sobrante = toma()) { }
        if (cortada(get(), ajuste))
            falla(sql, donde);
        return ajuste;
    }
    return sigue_lectura(sql, donde);
}

Respuesta Enlace::sigue_lectura(std::string_view instruccion, Donde donde)
{
    auto respuesta = toma();
    if (PQresultStatus(respuesta.get()) == PGRES_SINGLE_TUPLE)
        return respuesta;
    m_lectura = nullptr;
    while (const auto sobrante = toma()) { }
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
        if (!toma())
            return;
    if (auto* cancelacion = PQgetCancel(get())) {
        std::array<char, 256> motivo{};
        PQcancel(cancelacion, motivo.data(), static_cast<int>(motivo.size()));
        PQfreeCancel(cancelacion);
    }
    while (const auto sobrante = toma()) { }
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
    auto motivo = std::exchange(m_motivo, {});
    if (motivo.empty())
        motivo = PQerrorMessage(get());
    throw ErrorBaseDatos(Categoria::conexion, fuente,
        "Se ha perdido la conexión con el servidor de la base de datos ("
            + motivo.substr(0, motivo.find('\n')) + "). La próxima operación volverá a conectar.",
        std::string(instruccion), donde);
}

} // namespace atipicos::postgresql
