#include "engines/sqlite/Connection.hpp"

#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "engines/sqlite/Recordset.hpp"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace atipicos::sqlite {

namespace {

    using adodb::Categoria;

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

    /// A write-ahead log stands beside its database, so the folder must be writable too. SQLite would only
    /// say that it cannot open the file.
    void comprueba_escritura(const std::filesystem::path& fichero, Donde donde)
    {
        const auto carpeta = std::filesystem::absolute(fichero).parent_path();
        const bool existe = std::filesystem::exists(fichero);
        if (access(carpeta.string().c_str(), W_OK) == 0
            && (!existe || access(fichero.string().c_str(), W_OK) == 0))
            return;
        throw adodb::ErrorBaseDatos(Categoria::solo_lectura, "SQLite",
            "«" + fichero.string() + "»: la base de datos o su carpeta es de sólo lectura.", {}, donde);
    }

    /// Does something with a database file, so that its errors name the file.
    template <class Accion> void nombrando(const std::filesystem::path& fichero, Donde donde, Accion accion)
    {
        try {
            accion();
        } catch (const adodb::ErrorBaseDatos& error) {
            throw adodb::ErrorBaseDatos(error.categoria(), error.fuente(),
                "«" + fichero.string() + "»: " + error.descripcion(), error.instruccion(), donde);
        }
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

Connection::Connection(sqlite3* base)
    : m_base(base)
{
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    comprueba_fichero(opciones.fichero, opciones.crear, donde);
    if (!opciones.solo_lectura)
        comprueba_escritura(opciones.fichero, donde);
    const auto* modo = opciones.solo_lectura ? "ro" : opciones.crear ? "rwc" : "rw";
    sqlite3* base = nullptr;
    const int resultado = sqlite3_open_v2(uri(opciones.fichero, modo).c_str(), &base,
        SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX
            | (opciones.solo_lectura ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE)
            | (opciones.crear ? SQLITE_OPEN_CREATE : 0),
        nullptr);
    std::shared_ptr<Connection> conexion(new Connection(base)); // closes it, also when opening failed
    nombrando(opciones.fichero, donde, [&] {
        if (resultado != SQLITE_OK)
            throw error_de(base, {}, donde);
        conexion->prepara(opciones, donde);
    });
    for (const auto& otra : opciones.adjuntas)
        conexion->adjunta(otra, donde);
    return conexion;
}

void Connection::prepara(const Opciones& opciones, Donde donde)
{
    sqlite3_extended_result_codes(base(), 1);
    sqlite3_busy_timeout(base(), static_cast<int>(opciones.espera.count()));
    ejecuta("SELECT count(*) FROM sqlite_master", nullptr, donde); // finds out what is no database
    if (!opciones.solo_lectura && sqlite3_db_readonly(base(), "main") == 0)
        ejecuta("PRAGMA journal_mode=WAL", nullptr, donde);
    ejecuta(opciones.sincronizacion_completa ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=OFF", nullptr,
        donde);
    ejecuta("PRAGMA foreign_keys=ON", nullptr, donde);
}

void Connection::adjunta(const Adjunta& otra, Donde donde)
{
    comprueba_fichero(otra.fichero, false, donde);
    std::string nombre = otra.nombre;
    for (auto p = nombre.find('"'); p != std::string::npos; p = nombre.find('"', p + 2))
        nombre.insert(p, 1, '"');
    nombrando(otra.fichero, donde, [&] {
        Instruccion instruccion(base(), "ATTACH ? AS \"" + nombre + "\"", donde);
        instruccion.liga(1, uri(otra.fichero, "ro"), donde);
        instruccion.avanza(donde);
    });
    m_adjuntas.push_back(otra.nombre);
    m_catalogo.agrega_base(otra.nombre, "\"" + nombre + "\".");
}

void Connection::lee_catalogo(Donde donde)
{
    m_catalogo.olvida_fechas();
    m_claves.clear();
    auto esquemas = m_adjuntas;
    esquemas.emplace_back("main");
    for (const auto& esquema : esquemas) {
        Instruccion consulta(base(),
            "SELECT t.name, c.name,"
            " (SELECT v.cid FROM pragma_table_info(t.name, t.schema) v WHERE v.name = c.name)"
            " FROM pragma_table_list t JOIN pragma_table_xinfo(t.name, t.schema) c"
            " WHERE t.schema = ? AND c.type LIKE 'DATE%'",
            donde);
        consulta.liga(1, esquema, donde);
        while (consulta.avanza(donde)) {
            const Variant lugar = valor_de(consulta.get(), 2, Tipo::Segun, donde); // null: a computed column
            m_catalogo.agrega_fecha((esquema == "main" ? "" : sql::entre_comillas(esquema) + ".")
                    + CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde)),
                CStr(valor_de(consulta.get(), 1, Tipo::Segun, donde)),
                lugar.es_nulo() ? sql::Catalogo::sin_lugar : static_cast<std::size_t>(CLng(lugar)));
        }
    }
    m_vigencia.leido();
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (m_en_transaccion && sqlite3_get_autocommit(base()) != 0)
        throw adodb::ErrorBaseDatos(Categoria::otra, "SQLite",
            "La transacción se ha perdido por un error anterior: sólo se puede deshacer.", sql, donde);
    if (!m_vigencia.vale())
        lee_catalogo(donde);
    return sql::reescribe(sql, m_catalogo, donde);
}

void Connection::guarda_lecturas(Donde donde)
{
    while (!m_lecturas.empty()) {
        auto* filas = m_lecturas.back();
        m_lecturas.pop_back();
        filas->guarda_el_resto(donde);
    }
}

const std::vector<std::string>& Connection::columnas_clave(
    const std::string& esquema, const std::string& tabla, Donde donde)
{
    const auto [lugar, nueva] = m_claves.try_emplace({ esquema, tabla });
    if (nueva) {
        Instruccion consulta(base(), "SELECT name FROM pragma_table_info(?, ?) WHERE pk > 0", donde);
        consulta.liga(1, tabla, donde);
        consulta.liga(2, esquema, donde);
        while (consulta.avanza(donde))
            lugar->second.push_back(CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde)));
    }
    return lugar->second;
}

void Connection::olvida_lectura(const Recordset& filas) noexcept
{
    const auto lugar = std::find(m_lecturas.begin(), m_lecturas.end(), &filas);
    if (lugar != m_lecturas.end())
        m_lecturas.erase(lugar);
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    const auto reescrita = reescribe(sql, donde);
    guarda_lecturas(donde);
    ejecuta(reescrita, afectadas, donde);
    m_vigencia.ejecutada(sql);
}

void Connection::ejecuta(const std::string& sql, std::int32_t* afectadas, Donde donde)
{
    Instruccion instruccion(base(), sql, donde);
    const auto antes = sqlite3_total_changes64(base());
    while (instruccion.avanza(donde)) { }
    if (afectadas != nullptr) // a statement that changes nothing leaves the count of the one before
        *afectadas = sqlite3_total_changes64(base()) == antes ? 0 : sqlite3_changes(base());
}

void Connection::BeginTrans(Donde donde)
{
    if (m_en_transaccion || sqlite3_get_autocommit(base()) == 0)
        throw adodb::ErrorBaseDatos(Categoria::instruccion, "SQLite",
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    guarda_lecturas(donde);
    ejecuta("BEGIN IMMEDIATE", nullptr, donde);
    m_en_transaccion = true;
}

void Connection::CommitTrans(Donde donde)
{
    comprueba_transaccion("COMMIT", donde);
    ejecuta(reescribe("COMMIT", donde), nullptr, donde);
    m_en_transaccion = false;
    m_vigencia.confirmada();
}

void Connection::RollbackTrans(Donde donde)
{
    comprueba_transaccion("ROLLBACK", donde);
    m_en_transaccion = false;
    m_vigencia.deshecha();
    if (sqlite3_get_autocommit(base()) == 0)
        ejecuta("ROLLBACK", nullptr, donde);
}

void Connection::comprueba_transaccion(const char* instruccion, Donde donde) const
{
    if (!m_en_transaccion)
        throw adodb::ErrorBaseDatos(Categoria::instruccion, "SQLite",
            "No hay ninguna transacción abierta en esta conexión.", instruccion, donde);
}

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

} // namespace atipicos::sqlite
