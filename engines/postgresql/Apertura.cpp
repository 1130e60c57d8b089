#include "engines/postgresql/Apertura.hpp"

#include "engines/postgresql/Ajustes.hpp"
#include "engines/postgresql/Direccion.hpp"
#include "engines/postgresql/Instruccion.hpp"

#include <algorithm>
#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <thread>
#include <utility>

namespace atipicos::postgresql {

namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using Reloj = std::chrono::steady_clock;
    using std::chrono::milliseconds;

    constexpr int version_minima = 130'000; // ISNULL needs its "anycompatible" types
    constexpr auto clase_de_sesion = "target_session_attrs";
    constexpr milliseconds un_momento{ 100 }; ///< between two questions to who waits
    constexpr milliseconds entre_intentos{ 500 };
    constexpr milliseconds enseguida{ 3'000 }; ///< until then without such pauses: a standby is quick

    std::string en_una_linea(const char* texto)
    {
        std::string linea = texto == nullptr ? "" : texto;
        while (!linea.empty() && linea.back() == '\n')
            linea.pop_back();
        linea.erase(std::remove(linea.begin(), linea.end(), '\t'), linea.end());
        std::replace(linea.begin(), linea.end(), '\n', ' ');
        return linea;
    }

    [[noreturn]] void no_conecta(std::string descripcion, Donde donde)
    {
        throw ErrorBaseDatos(Categoria::conexion, fuente, std::move(descripcion), {}, donde);
    }

    [[noreturn]] void no_conecta_por(const std::string& motivo, Donde donde)
    {
        no_conecta("No se puede conectar con el servidor de la base de datos (" + motivo + ").", donde);
    }

    /// A call of the client library with the parameters as it takes them.
    template <class Abre> LineaAbierta con(const Parametros& parametros, Abre abre)
    {
        std::vector<const char*> nombres;
        std::vector<const char*> valores;
        for (const auto& [nombre, valor] : parametros) {
            nombres.push_back(nombre.c_str());
            valores.push_back(valor.c_str());
        }
        nombres.push_back(nullptr);
        valores.push_back(nullptr);
        return LineaAbierta(abre(nombres.data(), valores.data(), 0));
    }

    /// Goes on opening a line until it is open or has failed, or `espera` says that it has taken long enough,
    /// to which it gives how long the socket can be waited for.
    template <class Espera> bool termina_de_abrir(PGconn* linea, Espera espera)
    {
        for (auto estado = PGRES_POLLING_WRITING;
             estado != PGRES_POLLING_OK && estado != PGRES_POLLING_FAILED;) {
            pollfd enchufe{ PQsocket(linea),
                static_cast<short>(estado == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0 };
            if (enchufe.fd < 0) // it could not even begin
                return false;
            if (const int listo = espera(enchufe); listo < 0)
                return false;
            else if (listo > 0)
                estado = PQconnectPoll(linea);
        }
        return true;
    }

    /// Whether the server has refused because it has no such database. The client library keeps the code of
    /// a refusal to itself: it is asked once more, for nothing but that, and in no case for long.
    bool no_existe_la_base(const PGconn* linea, const Parametros& parametros)
    {
        const char* base = PQdb(linea);
        if (base == nullptr || std::string_view(PQerrorMessage(linea)).find(base) == std::string_view::npos)
            return false; // whatever its language, the server names it
        const auto otra = con(parametros, &PQconnectStartParams);
        PQsetErrorVerbosity(otra.get(), PQERRORS_VERBOSE);
        const auto hasta = Reloj::now() + std::chrono::seconds(2);
        const bool acabada = termina_de_abrir(otra.get(), [&](pollfd& enchufe) {
            const auto queda = std::chrono::duration_cast<milliseconds>(hasta - Reloj::now());
            return queda.count() > 0 && poll(&enchufe, 1, static_cast<int>(queda.count())) > 0 ? 1 : -1;
        });
        return acabada
            && std::string_view(PQerrorMessage(otra.get())).find(" 3D000: ") != std::string_view::npos;
    }

    std::vector<std::string> separa_por_comas(const std::string& lista)
    {
        std::vector<std::string> todas(1);
        for (const char c : lista)
            if (c == ',')
                todas.emplace_back();
            else
                todas.back() += c;
        return todas;
    }

    bool son_varios(const Parametros& parametros)
    {
        return std::any_of(parametros.begin(), parametros.end(), [](const auto& uno) {
            return (uno.first == "host" || uno.first == "hostaddr")
                && uno.second.find(',') != std::string::npos;
        });
    }

    std::string no_contesta_en(milliseconds limite)
    {
        return "no contesta en " + std::to_string(limite.count() / 1'000) + " s";
    }

    /// A server may go silent also when the line is open already: it is waited for as for the opening.
    void ajusta(PGconn* linea, const std::string& orden, milliseconds limite, Donde donde)
    {
        const auto hasta = Reloj::now() + limite;
        if (PQsendQuery(linea, orden.c_str()) != 1)
            no_conecta_por(en_una_linea(PQerrorMessage(linea)), donde);
        for (;;) {
            while (PQisBusy(linea) == 1) {
                const auto queda = std::chrono::duration_cast<milliseconds>(hasta - Reloj::now());
                if (queda.count() <= 0)
                    no_conecta_por(no_contesta_en(limite), donde);
                pollfd enchufe{ PQsocket(linea), POLLIN, 0 };
                if (poll(&enchufe, 1, static_cast<int>(queda.count())) > 0 && PQconsumeInput(linea) != 1)
                    no_conecta_por(en_una_linea(PQerrorMessage(linea)), donde);
            }
            const Respuesta respuesta(PQgetResult(linea));
            if (!respuesta)
                return;
            if (es_error(respuesta))
                throw error_de(respuesta, orden, donde);
        }
    }

    void calla(void*, const PGresult*) { } // notices are for whoever administers the server

}

std::vector<Parametros> servidores(const Parametros& parametros)
{
    std::map<std::string, std::vector<std::string>> listas;
    std::size_t cuantos = 1;
    for (const auto* nombre : { "host", "hostaddr", "port" })
        if (const auto lugar = parametros.find(nombre); lugar != parametros.end()) {
            listas[nombre] = separa_por_comas(lugar->second);
            cuantos = std::max(cuantos, listas[nombre].size());
        }
    std::vector<Parametros> todos;
    for (std::size_t i = 0; i < cuantos; ++i) {
        auto uno = parametros;
        for (const auto& [nombre, lista] : listas)
            uno[nombre] = lista[std::min(i, lista.size() - 1)]; // one port is that of all
        todos.push_back(std::move(uno));
    }
    const auto clase = parametros.find(clase_de_sesion);
    if (cuantos == 1 || clase == parametros.end() || clase->second != "prefer-standby")
        return todos;
    auto en_orden = todos; // first each of them as a standby, then as whatever it is
    for (auto& uno : en_orden)
        uno[clase_de_sesion] = "standby";
    for (auto& uno : todos) {
        uno[clase_de_sesion] = "any";
        en_orden.push_back(std::move(uno));
    }
    return en_orden;
}

Apertura::Apertura(const Opciones& opciones, Donde donde)
    : m_sigue(opciones.sigue_intentando)
{
    auto [parametros, preparadas, reintento] = lee_direccion(opciones.direccion, donde);
    m_preparadas = preparadas && opciones.preparadas;
    m_reintento = reintento;
    parametros["client_encoding"] = "UTF8";
    if (!opciones.solo_lectura && son_varios(parametros)) // a standby is of no use to who writes
        parametros.try_emplace(clase_de_sesion, "read-write");
    // Where the address says which kind of session it wants, the client library asks the one that it has got,
    // and would take ours for one of a server that cannot be written.
    m_solo_lectura_despues = opciones.solo_lectura && parametros.contains(clase_de_sesion);
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
    m_parametros = std::move(parametros);
}

LineaAbierta Apertura::abre(Donde donde) const
{
    auto linea = con(m_parametros, &PQconnectdbParams);
    if (PQstatus(linea.get()) != CONNECTION_OK && no_existe_la_base(linea.get(), m_parametros))
        throw ErrorBaseDatos(Categoria::no_existe, fuente,
            "La base de datos «" + std::string(PQdb(linea.get())) + "» no existe en el servidor ("
                + en_una_linea(PQerrorMessage(linea.get())) + ").",
            {}, donde);
    prepara(linea.get(), donde);
    return linea;
}

void Apertura::prepara(PGconn* linea, Donde donde) const
{
    if (PQstatus(linea) != CONNECTION_OK)
        no_conecta_por(en_una_linea(PQerrorMessage(linea)), donde);
    if (PQserverVersion(linea) < version_minima)
        no_conecta("El servidor de la base de datos es PostgreSQL "
                + std::to_string(PQserverVersion(linea) / 10'000) + " y se necesita el 13 o posterior.",
            donde);
    PQsetNoticeReceiver(linea, &calla, nullptr);
    exige_ajustes(linea, donde);
    if (m_solo_lectura_despues)
        ajusta(linea, std::string("SET ") + ajuste_solo_lectura + " TO on", limite(), donde);
}

/// A pooler may keep the settings for itself, and a date would be read month first. A session that is ours
/// for as long as it is open is told them again; one that is another's the next moment must have them
/// already.
void Apertura::exige_ajustes(PGconn* linea, Donde donde) const
{
    const char* fechas = PQparameterStatus(linea, "DateStyle");
    if (fechas == nullptr || std::string_view(fechas) == "ISO, DMY")
        return;
    if (m_preparadas)
        return ajusta(linea, m_ajustes, limite(), donde);
    no_conecta(
        "El repartidor de conexiones no ha pasado los ajustes de la sesión, y esta base de datos no los "
        "tiene. Los pone su propietario con ALTER DATABASE: search_path, datestyle, lock_timeout y "
        "statement_timeout.",
        donde);
}

struct Apertura::Intento {
    const sql::SigueIntentando& pregunta;
    milliseconds reintento; ///< in all
    milliseconds limite; ///< of one server
    Reloj::time_point comienzo = Reloj::now();
    std::string motivo = {}; ///< why the last round did not open it

    [[nodiscard]] bool se_repite() const { return pregunta && reintento.count() > 0; }

    [[nodiscard]] bool sigue() const
    {
        const auto desde = std::chrono::duration_cast<milliseconds>(Reloj::now() - comienzo);
        return se_repite() && pregunta({ desde, reintento, motivo }) && desde < reintento;
    }

    /// Opened, or not with `por_que`. `dejado`: whoever was asked wants no more.
    [[nodiscard]] LineaAbierta abre(const Parametros& uno, std::string& por_que, bool& dejado) const
    {
        auto linea = con(uno, &PQconnectStartParams);
        const auto hasta = Reloj::now() + limite;
        const bool acabada = termina_de_abrir(linea.get(), [&](pollfd& enchufe) {
            if (const int listo = poll(&enchufe, 1, static_cast<int>(un_momento.count())); listo > 0)
                return 1;
            dejado = se_repite() && !sigue();
            return dejado || Reloj::now() >= hasta ? -1 : 0;
        });
        if (PQstatus(linea.get()) == CONNECTION_OK)
            return linea;
        const auto dicho = en_una_linea(PQerrorMessage(linea.get()));
        por_que
            += (por_que.empty() ? "" : "; ") + (acabada || !dicho.empty() ? dicho : no_contesta_en(limite));
        return {};
    }

    [[nodiscard]] bool descansa() const
    {
        const auto pausa = Reloj::now() - comienzo < enseguida ? un_momento : entre_intentos;
        for (auto hecho = milliseconds(); hecho < pausa; hecho += un_momento) {
            std::this_thread::sleep_for(un_momento);
            if (!sigue())
                return false;
        }
        return true;
    }
};

milliseconds Apertura::limite() const
{
    const auto segundos = std::atoi(m_parametros.at("connect_timeout").c_str());
    return std::chrono::seconds(segundos > 0 ? segundos : 10);
}

LineaAbierta Apertura::reabre(Donde donde) const
{
    Intento intento{ m_sigue, m_reintento, limite() };
    const auto todos = servidores(m_parametros);
    for (;;) {
        std::string motivo;
        bool dejado = false;
        for (const auto& uno : todos) {
            auto linea = intento.abre(uno, motivo, dejado);
            if (linea) {
                prepara(linea.get(), donde);
                return linea;
            }
            if (dejado)
                break;
        }
        if (!motivo.empty())
            intento.motivo = motivo;
        if (dejado || !intento.sigue() || !intento.descansa())
            no_conecta_por(intento.motivo, donde);
    }
}

} // namespace atipicos::postgresql
