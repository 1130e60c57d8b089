#include "engines/sqlite/Sesion.hpp"

#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "engines/sqlite/Recordset.hpp"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <unistd.h>
#include <utility>

namespace atipicos::sqlite {

namespace {

    using adodb::Categoria;

    /// Of the virtual machine: less than a millisecond.
    constexpr int pasos_entre_preguntas = 10'000;

    [[noreturn]] void no_se_abre(const std::filesystem::path& fichero, const std::string& motivo, Donde donde)
    {
        throw adodb::ErrorBaseDatos(
            Categoria::conexion, "SQLite", "«" + fichero.string() + "»: " + motivo, {}, donde);
    }

    void comprueba_fichero(const std::filesystem::path& fichero, bool crear, Donde donde)
    {
        std::error_code fallo;
        const auto estado = std::filesystem::status(fichero, fallo);
        if (std::filesystem::is_directory(estado))
            no_se_abre(fichero, "es una carpeta, no una base de datos.", donde);
        if (!crear && !std::filesystem::exists(estado))
            no_se_abre(fichero, "no existe la base de datos.", donde);
        if (crear && !std::filesystem::exists(std::filesystem::absolute(fichero).parent_path(), fallo))
            no_se_abre(fichero, "no existe la carpeta en la que crear la base de datos.", donde);
    }

    /// A write-ahead log stands beside its database, so the folder must be writable too. 0, or the number of
    /// the system's error.
    int impedimento_al_escribir(const std::filesystem::path& fichero)
    {
        const auto carpeta = std::filesystem::absolute(fichero).parent_path();
        const bool puede = access(carpeta.string().c_str(), W_OK) == 0
            && (!std::filesystem::exists(fichero) || access(fichero.string().c_str(), W_OK) == 0);
        return puede ? 0 : errno;
    }

    bool sin_permiso_de_nadie(const std::filesystem::path& fichero)
    {
        using std::filesystem::perms;
        std::error_code fallo;
        const auto permisos = std::filesystem::status(fichero, fallo).permissions();
        return !fallo
            && (permisos & (perms::owner_write | perms::group_write | perms::others_write)) == perms::none;
    }

    /// What stands beside a database that nobody can write, on a protected disk or because nobody is allowed
    /// to: neither readers nor writers can leave their marks there. Root may still do as he likes.
    enum class Protegida : std::uint8_t { no, sin_diario, con_diario };

    Protegida proteccion(const std::filesystem::path& fichero, int impedimento)
    {
        std::error_code fallo;
        const std::filesystem::path diario = fichero.string() + "-wal";
        const auto bytes = std::filesystem::file_size(diario, fallo);
        const bool hay_diario = !fallo && bytes > 0;
        const bool nadie = impedimento == EROFS || sin_permiso_de_nadie(fichero)
            || (sin_permiso_de_nadie(std::filesystem::absolute(fichero).parent_path())
                && (!std::filesystem::exists(diario, fallo) || sin_permiso_de_nadie(diario)));
        if (impedimento == 0 || !nadie)
            return Protegida::no;
        return hay_diario ? Protegida::con_diario : Protegida::sin_diario;
    }

    /// How the file is opened. Whoever closes a database last puts into it what is left in its log. A file
    /// opened for reading alone could not, so a reader that may write it opens it for that. Where nobody can
    /// write, no locks are needed; a log that was left there is read with its index in memory.
    const char* modo_de(const Opciones& opciones, int impedimento, Protegida protegida)
    {
        switch (protegida) {
        case Protegida::sin_diario:
            return "ro&immutable=1";
        case Protegida::con_diario:
            return "ro&vfs=unix-none";
        case Protegida::no:
            break;
        }
        return impedimento != 0 ? "ro" : opciones.crear ? "rwc" : "rw";
    }

    /// SQLite would only say that it cannot open the file.
    [[noreturn]] void es_de_solo_lectura(const std::filesystem::path& fichero, Donde donde)
    {
        throw adodb::ErrorBaseDatos(Categoria::solo_lectura, "SQLite",
            "«" + fichero.string() + "»: la base de datos o su carpeta es de sólo lectura.", {}, donde);
    }

    /// The library's answer. Raises an error where that would say too little.
    int abre_fichero(const Opciones& opciones, sqlite3*& base, Protegida& protegida, Donde donde)
    {
        comprueba_fichero(opciones.fichero, opciones.crear, donde);
        const int impedimento = impedimento_al_escribir(opciones.fichero);
        if (!opciones.solo_lectura && impedimento != 0)
            es_de_solo_lectura(opciones.fichero, donde);
        protegida = proteccion(opciones.fichero, impedimento);
        return sqlite3_open_v2(uri(opciones.fichero, modo_de(opciones, impedimento, protegida)).c_str(),
            &base,
            SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX
                | (impedimento == 0 ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY)
                | (opciones.crear ? SQLITE_OPEN_CREATE : 0),
            nullptr);
    }

}

std::string uri(const std::filesystem::path& fichero, std::string_view modo)
{
    static constexpr std::string_view cifras = "0123456789ABCDEF";
    std::string texto = "file:";
    for (const char c : std::filesystem::absolute(fichero).generic_string()) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && c != '%' && c != '?' && c != '#' && c != '\'' && c != ' ') {
            texto += c;
            continue;
        }
        texto += '%';
        texto += cifras[byte >> 4];
        texto += cifras[byte & 0xf];
    }
    return texto + "?mode=" + std::string(modo);
}

Sesion::Sesion(sqlite3* base, bool preparadas)
    : m_base(base)
    , m_preparadas(base, preparadas)
{
}

std::shared_ptr<Sesion> Sesion::abre(const Opciones& opciones, Donde donde)
{
    sqlite3* base = nullptr;
    auto protegida = Protegida::no;
    const int resultado = opciones.en_memoria ? sqlite3_open(":memory:", &base)
                                              : abre_fichero(opciones, base, protegida, donde);
    std::shared_ptr<Sesion> sesion(
        new Sesion(base, opciones.preparadas)); // closes it, also when opening failed
    nombrando("«" + opciones.fichero.string() + "»", donde, [&] {
        if (resultado != SQLITE_OK)
            throw error_de(base, {}, donde);
        if (protegida == Protegida::con_diario)
            sesion->ejecuta("PRAGMA locking_mode=EXCLUSIVE", nullptr, donde); // its index stays in memory
        sesion->prepara(opciones, donde);
    });
    return sesion;
}

void Sesion::prepara(const Opciones& opciones, Donde donde)
{
    sqlite3_extended_result_codes(base(), 1);
    m_espera = opciones.espera;
    sqlite3_busy_handler(base(), &Sesion::espera_turno, this);
    m_sigue = opciones.sigue;
    if (m_sigue)
        sqlite3_progress_handler(base(), pasos_entre_preguntas, &Sesion::mira_si_sigue, this);
    lee_algo(donde);
    if (!opciones.solo_lectura && sqlite3_db_readonly(base(), "main") == 0)
        ejecuta("PRAGMA journal_mode=WAL", nullptr, donde);
    ejecuta(opciones.sincronizacion_completa ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=OFF", nullptr,
        donde);
    ejecuta("PRAGMA foreign_keys=ON", nullptr, donde);
    if (opciones.solo_lectura)
        ejecuta("PRAGMA query_only=ON", nullptr, donde);
}

void Sesion::lee_algo(Donde donde)
{
    try {
        Instruccion(base(), "SELECT count(*) FROM sqlite_master", donde)
            .avanza(donde); // finds out what is no database
    } catch (const adodb::ErrorBaseDatos& error) {
        if (error.categoria() != Categoria::solo_lectura)
            throw;
        throw adodb::ErrorBaseDatos(Categoria::solo_lectura, error.fuente(),
            "quien no puede escribir en su carpeta sólo puede leerla mientras otro la tiene abierta. Cópiela "
            "a una carpeta propia.",
            error.instruccion(), donde);
    }
}

/// Looks often: the library's own handler ends up looking ten times a second, and would be late for each of
/// the short pauses that one who writes much leaves to the others.
int Sesion::espera_turno(void* quien, int veces)
{
    auto& sesion = *static_cast<Sesion*>(quien);
    const auto ahora = std::chrono::steady_clock::now();
    if (veces == 0)
        sesion.m_hasta = ahora + sesion.m_espera;
    if (ahora >= sesion.m_hasta || (sesion.m_sigue && !sesion.m_sigue()))
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(std::min(1 + veces, 5)));
    return 1;
}

int Sesion::mira_si_sigue(void* quien) { return static_cast<Sesion*>(quien)->m_sigue() ? 0 : 1; }

sql::Catalogo& Sesion::catalogo(sql::Lado lado) noexcept
{
    return m_catalogos[static_cast<std::size_t>(lado)];
}

void Sesion::lee_catalogo(Donde donde)
{
    for (auto& catalogo : m_catalogos)
        catalogo.olvida_fechas();
    m_claves.clear();
    m_preparadas.olvida_formas();
    Instruccion consulta(base(),
        "SELECT t.name, c.name, (SELECT v.cid FROM pragma_table_info(t.name) v WHERE v.name = c.name)"
        " FROM pragma_table_list t JOIN pragma_table_xinfo(t.name) c"
        " WHERE t.schema ='main' AND c.type LIKE 'DATE%'",
        donde);
    while (consulta.avanza(donde)) {
        const auto celda = [&](int i) { return valor_de(consulta.get(), i, Tipo::Segun, donde); };
        const Variant lugar = celda(2); // null: a computed column
        for (auto& catalogo : m_catalogos)
            catalogo.agrega_fecha(CStr(celda(0)), CStr(celda(1)),
                lugar.es_nulo() ? sql::Catalogo::sin_lugar : static_cast<std::size_t>(CLng(lugar)));
    }
    m_vigencia.leido();
}

sql::Transacciones& Sesion::transacciones()
{
    if (m_transacciones.abierta() && sqlite3_get_autocommit(base()) != 0)
        m_transacciones.se_pierde(
            Categoria::otra, "La transacción se ha perdido por un error anterior: sólo se puede deshacer.");
    return m_transacciones;
}

void Sesion::asegura_catalogo(Donde donde)
{
    if (!m_vigencia.vale())
        lee_catalogo(donde);
}

std::string Sesion::reescribe(sql::Lado lado, const std::string& sql, Donde donde)
{
    asegura_catalogo(donde);
    return sql::reescribe(sql, catalogo(lado), donde);
}

Prestada Sesion::prepara(sql::Lado lado, const std::string& sql, Donde donde)
{
    asegura_catalogo(donde);
    return m_preparadas.de_lado(lado, sql, catalogo(lado), donde);
}

Prestada Sesion::prepara_propia(std::string_view sql, Donde donde) { return m_preparadas.propia(sql, donde); }

void Sesion::guarda_lecturas(Donde donde)
{
    while (!m_lecturas.empty()) {
        auto* filas = m_lecturas.back();
        m_lecturas.pop_back();
        filas->guarda_el_resto(donde);
    }
}

const std::vector<std::string>& Sesion::columnas_clave(
    const std::string& esquema, const std::string& tabla, Donde donde)
{
    const auto [lugar, nueva] = m_claves.try_emplace({ esquema, tabla });
    if (nueva) {
        auto consulta = prepara_propia("SELECT name FROM pragma_table_info(?, ?) WHERE pk > 0", donde);
        consulta->liga(1, tabla, donde);
        consulta->liga(2, esquema, donde);
        while (consulta.avanza(donde))
            lugar->second.push_back(CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde)));
    }
    return lugar->second;
}

void Sesion::olvida_lectura(const Recordset& filas) noexcept
{
    const auto lugar = std::find(m_lecturas.begin(), m_lecturas.end(), &filas);
    if (lugar != m_lecturas.end())
        m_lecturas.erase(lugar);
}

void Sesion::ejecuta(const std::string& sql, std::int32_t* afectadas, Donde donde)
{
    ejecuta(Prestada(std::make_shared<Instruccion>(base(), sql, donde)), afectadas, donde);
}

void Sesion::ejecuta(Prestada instruccion, std::int32_t* afectadas, Donde donde)
{
    const auto antes = sqlite3_total_changes64(base());
    while (instruccion.avanza(donde)) { }
    if (afectadas != nullptr) // a statement that changes nothing leaves the count of the one before
        *afectadas = sqlite3_total_changes64(base()) == antes ? 0 : sqlite3_changes(base());
}

void Sesion::ejecuta_propia(std::string_view sql, Donde donde)
{
    ejecuta(prepara_propia(sql, donde), nullptr, donde);
}

void Sesion::empieza(Donde donde)
{
    if (sqlite3_get_autocommit(base()) == 0)
        throw adodb::ErrorBaseDatos(Categoria::instruccion, "SQLite",
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    guarda_lecturas(donde);
    ejecuta_propia("BEGIN IMMEDIATE", donde);
    m_con_punto = false;
}

void Sesion::confirma(Donde donde)
{
    ejecuta_propia("COMMIT", donde);
    m_vigencia.confirmada();
}

void Sesion::deshace(Donde donde)
{
    m_vigencia.deshecha();
    if (sqlite3_get_autocommit(base()) != 0)
        return;
    guarda_lecturas(donde);
    ejecuta_propia("ROLLBACK", donde);
}

void Sesion::pon_punto(Donde donde)
{
    guarda_lecturas(donde);
    if (std::exchange(m_con_punto, false))
        ejecuta_propia("RELEASE u", donde);
    ejecuta_propia("SAVEPOINT u", donde);
    m_con_punto = true;
}

void Sesion::vuelve_al_punto(Donde donde)
{
    m_vigencia.deshecha_en_parte();
    m_con_punto = false;
    guarda_lecturas(donde);
    ejecuta_propia("ROLLBACK TO u", donde);
    ejecuta_propia("RELEASE u", donde);
}

} // namespace atipicos::sqlite
