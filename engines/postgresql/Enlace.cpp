#include "engines/postgresql/Enlace.hpp"

#include "engines/postgresql/Ajustes.hpp"
#include "engines/postgresql/Direccion.hpp"

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

    /// As the client library takes them.
    void reparte(
        const Parametros& parametros, std::vector<const char*>& nombres, std::vector<const char*>& valores)
    {
        for (const auto& [nombre, valor] : parametros) {
            nombres.push_back(nombre.c_str());
            valores.push_back(valor.c_str());
        }
        nombres.push_back(nullptr);
        valores.push_back(nullptr);
    }

    PGconn* conecta(const Parametros& parametros)
    {
        std::vector<const char*> nombres;
        std::vector<const char*> valores;
        reparte(parametros, nombres, valores);
        return PQconnectdbParams(nombres.data(), valores.data(), 0);
    }

    /// Whether the server has refused because it has no such database. The client library keeps the code of
    /// a refusal to itself: it is asked once more, for nothing but that, and in no case for long.
    bool no_existe_la_base(const PGconn* linea, const Parametros& parametros)
    {
        const char* base = PQdb(linea);
        if (base == nullptr || std::string_view(PQerrorMessage(linea)).find(base) == std::string_view::npos)
            return false; // whatever its language, the server names it
        std::vector<const char*> nombres;
        std::vector<const char*> valores;
        reparte(parametros, nombres, valores);
        const std::unique_ptr<PGconn, decltype(&PQfinish)> otra(
            PQconnectStartParams(nombres.data(), valores.data(), 0), &PQfinish);
        PQsetErrorVerbosity(otra.get(), PQERRORS_VERBOSE);
        const auto hasta = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        for (auto estado = PGRES_POLLING_WRITING;
             estado != PGRES_POLLING_OK && estado != PGRES_POLLING_FAILED;) {
            const auto queda = std::chrono::duration_cast<std::chrono::milliseconds>(
                hasta - std::chrono::steady_clock::now());
            pollfd enchufe{ PQsocket(otra.get()),
                static_cast<short>(estado == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0 };
            if (queda.count() <= 0 || poll(&enchufe, 1, static_cast<int>(queda.count())) <= 0)
                return false;
            estado = PQconnectPoll(otra.get());
        }
        return std::string_view(PQerrorMessage(otra.get())).find(" 3D000: ") != std::string_view::npos;
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

    constexpr std::chrono::hours mientras_se_lee_como_mucho{ 1 };

    constexpr int filas_sin_cancelar = 1'000;

    /// The server ends a statement that takes too long by itself, and says so a little later.
    constexpr std::chrono::seconds lo_que_tarda_en_decirlo{ 2 };

    void calla(void*, const PGresult*) { } // notices are for whoever administers the server

}

Enlace::Enlace(const Opciones& opciones, Donde donde)
    : m_avisa(opciones.avisa)
    , m_sigue_esperando(opciones.sigue_esperando)
    , m_limite(opciones.espera_instruccion + lo_que_tarda_en_decirlo)
    , m_sello("a" + std::to_string(std::random_device()()) + "_")
{
    auto [parametros, preparadas] = lee_direccion(opciones.direccion, donde);
    m_con_preparadas = preparadas && opciones.preparadas;
    parametros["client_encoding"] = "UTF8";
    // Where the address says which kind of session it wants, the client library asks the one that it has got,
    // and would take ours for one of a server that cannot be written.
    m_solo_lectura_despues = opciones.solo_lectura && parametros.contains("target_session_attrs");
    // The settings of a session travel with its opening and cost no round trip.
    const auto ajustes = ajustes_de(opciones, m_solo_lectura_despues);
    m_ajustes = como_instruccion(ajustes);
    parametros["options"] = como_opciones(ajustes) + " " + parametros["options"];
    parametros.try_emplace("fallback_application_name", "atipicos");
    parametros.try_emplace("connect_timeout", "10");
    // A server that is switched off, or behind a network that is gone, is not waited for for hours.
    parametros.try_emplace("keepalives_idle", "30");
    parametros.try_emplace("keepalives_interval", "10");
    parametros.try_emplace("keepalives_count", "3");
    parametros.try_emplace("tcp_user_timeout", "60000");
    m_linea.reset(conecta(parametros));
    if (PQstatus(get()) != CONNECTION_OK && no_existe_la_base(get(), parametros))
        throw ErrorBaseDatos(Categoria::no_existe, fuente,
            "La base de datos «" + std::string(PQdb(get())) + "» no existe en el servidor ("
                + en_una_linea(PQerrorMessage(get())) + ").",
            {}, donde);
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
    exige_ajustes(donde);
    if (m_solo_lectura_despues)
        ajusta(std::string("SET ") + ajuste_solo_lectura + " TO on", donde);
}

/// A pooler may keep the settings for itself, and a date would be read month first. A session that is ours
/// for as long as it is open is told them again; one that is another's the next moment must have them
/// already.
void Enlace::exige_ajustes(Donde donde)
{
    const char* fechas = PQparameterStatus(get(), "DateStyle");
    if (fechas == nullptr || std::string_view(fechas) == "ISO, DMY")
        return;
    if (m_con_preparadas)
        return ajusta(m_ajustes, donde);
    no_conecta(
        "El repartidor de conexiones no ha pasado los ajustes de la sesión, y esta base de datos no los "
        "tiene. Los pone su propietario con ALTER DATABASE: search_path, datestyle, lock_timeout y "
        "statement_timeout.",
        donde);
}

void Enlace::ajusta(const std::string& orden, Donde donde)
{
    if (const Respuesta respuesta(PQexec(get(), orden.c_str())); es_error(respuesta))
        throw error_de(respuesta, orden, donde);
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
    using Reloj = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds un_momento{ 250 };
    auto desde = Reloj::now();
    const auto limite
        = m_lectura != nullptr ? mientras_se_lee_como_mucho + lo_que_tarda_en_decirlo : m_limite;
    while (PQstatus(get()) == CONNECTION_OK && PQisBusy(get()) == 1) {
        pollfd enchufe{ PQsocket(get()), POLLIN, 0 };
        if (poll(&enchufe, 1, static_cast<int>(un_momento.count())) > 0) {
            if (PQconsumeInput(get()) != 1)
                return;
            desde = Reloj::now();
            continue;
        }
        const auto callado = std::chrono::duration_cast<std::chrono::milliseconds>(Reloj::now() - desde);
        if (callado >= limite)
            return corta("no contesta desde hace " + std::to_string(callado.count() / 1'000) + " s");
        if (m_sigue_esperando && !m_sigue_esperando(callado))
            return corta("se ha dejado de esperar su respuesta");
    }
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
