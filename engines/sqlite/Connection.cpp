#include "engines/sqlite/Connection.hpp"

#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "engines/sqlite/Recordset.hpp"

#include <algorithm>
#include <array>

namespace atipicos::sqlite {

namespace {

    using adodb::Categoria;

    std::string uri(const std::filesystem::path& fichero, std::string_view modo)
    {
        static constexpr std::string_view cifras = "0123456789ABCDEF";
        std::string texto = "file:";
        for (const char c : std::filesystem::absolute(fichero).generic_string()) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x80 && c != '%' && c != '?' && c != '#' && c != ' ') {
                texto += c;
                continue;
            }
            texto += '%';
            texto += cifras[byte >> 4];
            texto += cifras[byte & 0xf];
        }
        return texto + "?mode=" + std::string(modo);
    }

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
    }

    bool cambia_el_esquema(const std::string& sql)
    {
        const auto palabra = sql.find_first_not_of(" \t\r\n");
        if (palabra == std::string::npos)
            return false;
        static constexpr std::array<std::string_view, 4> palabras{ "CREATE", "ALTER", "DROP", "ATTACH" };
        return std::any_of(palabras.begin(), palabras.end(), [&](std::string_view una) {
            return sql::iguales(std::string_view(sql).substr(palabra, una.size()), una);
        });
    }

}

Connection::Connection(sqlite3* base)
    : m_base(base)
{
}

std::shared_ptr<Connection> Connection::Abrir(const Opciones& opciones, Donde donde)
{
    comprueba_fichero(opciones.fichero, opciones.crear, donde);
    const auto* modo = opciones.solo_lectura ? "ro" : opciones.crear ? "rwc" : "rw";
    sqlite3* base = nullptr;
    const int resultado = sqlite3_open_v2(uri(opciones.fichero, modo).c_str(), &base,
        SQLITE_OPEN_URI | (opciones.solo_lectura ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE)
            | (opciones.crear ? SQLITE_OPEN_CREATE : 0),
        nullptr);
    const std::shared_ptr<Connection> conexion(new Connection(base)); // closes it, also when opening failed
    try {
        if (resultado != SQLITE_OK)
            throw error_de(base, {}, donde);
        conexion->prepara(opciones, donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        throw adodb::ErrorBaseDatos(error.categoria(), error.fuente(),
            "«" + opciones.fichero.string() + "»: " + error.descripcion(), error.instruccion(), donde);
    }
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
    Instruccion instruccion(base(), "ATTACH ? AS \"" + nombre + "\"", donde);
    instruccion.liga(1, uri(otra.fichero, "ro"), donde);
    instruccion.avanza(donde);
    m_adjuntas.push_back(otra.nombre);
    m_catalogo.agrega_base(otra.nombre, "\"" + nombre + "\"");
}

void Connection::lee_catalogo(Donde donde)
{
    auto esquemas = m_adjuntas;
    esquemas.emplace_back("main");
    for (const auto& esquema : esquemas) {
        Instruccion consulta(base(),
            "SELECT t.name, c.name FROM pragma_table_list t JOIN pragma_table_xinfo(t.name, t.schema) c"
            " WHERE t.schema = ? AND c.type LIKE 'DATE%'",
            donde);
        consulta.liga(1, esquema, donde);
        while (consulta.avanza(donde))
            m_catalogo.agrega_fecha(CStr(valor_de(consulta.get(), 0, Tipo::Segun, donde)),
                CStr(valor_de(consulta.get(), 1, Tipo::Segun, donde)));
    }
    m_catalogo_leido = true;
}

std::string Connection::reescribe(const std::string& sql, Donde donde)
{
    if (!m_catalogo_leido)
        lee_catalogo(donde);
    return sql::reescribe(sql, m_catalogo, donde);
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    ejecuta(reescribe(sql, donde), afectadas, donde);
    if (cambia_el_esquema(sql))
        m_catalogo_leido = false;
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
    if (sqlite3_get_autocommit(base()) == 0)
        throw adodb::ErrorBaseDatos(Categoria::instruccion, "SQLite",
            "Ya hay una transacción abierta en esta conexión.", "BEGIN", donde);
    ejecuta("BEGIN IMMEDIATE", nullptr, donde);
}

void Connection::CommitTrans(Donde donde) { ejecuta("COMMIT", nullptr, donde); }

void Connection::RollbackTrans(Donde donde) { ejecuta("ROLLBACK", nullptr, donde); }

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset() { return std::make_unique<Recordset>(*this); }

void Connection::ejecuta_guion(std::string_view guion, Donde donde)
{
    std::string instruccion;
    int linea = 1;
    int inicio = 0; // line on which the statement begins; 0: it has not begun
    const auto ejecuta_una = [&] {
        if (inicio != 0) {
            try {
                Execute(instruccion, nullptr, adodb::CommandType::Text, donde);
            } catch (const adodb::ErrorBaseDatos& error) {
                throw adodb::ErrorBaseDatos(error.categoria(), error.fuente(),
                    "línea " + std::to_string(inicio) + " del guion: " + error.descripcion(), instruccion,
                    donde);
            }
        }
        instruccion.clear();
        inicio = 0;
    };
    for (const auto& token : sql::separa(guion)) {
        const bool vacio = token.clase == sql::Clase::blanco || token.clase == sql::Clase::comentario;
        if (inicio == 0 && !vacio && token.texto != ";")
            inicio = linea;
        linea += static_cast<int>(std::count(token.texto.begin(), token.texto.end(), '\n'));
        if (token.clase == sql::Clase::simbolo && token.texto == ";")
            ejecuta_una();
        else
            instruccion += token.texto;
    }
    ejecuta_una();
}

} // namespace atipicos::sqlite
