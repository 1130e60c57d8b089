#pragma once

#include "engines/odbc/Cadena.hpp"
#include "engines/odbc/Controlador.hpp"
#include "engines/odbc/Instruccion.hpp"
#include "engines/odbc/Vigia.hpp"
#include "engines/sql/Linea.hpp"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::odbc {

inline constexpr auto fuente = "ODBC"; ///< what errors name as their source

/// Statements with which a session begins, each time that the line to that product is opened.
using AlAbrir = std::function<std::vector<std::string>(const Servidor&)>;

struct Opciones {
    std::string cadena = {}; ///< `DRIVER=…;SERVER=…;DATABASE=…;UID=…`, without a password
    std::string clave = {}; ///< the password, kept apart so that nothing shows it
    AlAbrir al_abrir = {};
    /// `base.dbo.Tabla` is `esquema.Tabla` for these.
    std::vector<std::pair<std::string, std::string>> bases = {};
    Ajustes sesion = {};
    sql::AvisoLinea avisa = {};
    sql::AvisoEspera avisa_espera = {};
    std::chrono::seconds espera_conexion{ 10 };
};

/// The line to whatever stands behind a driver, opened with the settings of the session.
class Enlace {
public:
    /// Raises an error that never holds the password.
    Enlace(Opciones opciones, Donde donde);
    Enlace(const Enlace&) = delete;
    Enlace& operator=(const Enlace&) = delete;
    ~Enlace();

    /// Runs one statement, written as the product wants it.
    Respuesta ejecuta(const std::string& sql, Donde donde);
    [[nodiscard]] std::vector<std::string> columnas_clave(const TablaNombrada& tabla, Donde donde);

    [[nodiscard]] const Servidor& servidor() const noexcept { return *m_servidor; }
    [[nodiscard]] bool perdido() const noexcept { return m_perdido; }
    void reanuda(Donde donde); ///< opens the line again, as it was opened
    void abandona(); ///< takes the line for lost: nobody knows what state its session is in

private:
    void abre(Donde donde);
    void conecta(Donde donde);
    void avisa(sql::Linea que) const;
    [[noreturn]] void explica(const adodb::ErrorBaseDatos& error, const std::string& sql, Donde donde);

    [[nodiscard]] std::chrono::seconds limite() const noexcept;

    Opciones m_opciones;
    Vigia m_vigia;
    Controlador m_controlador;
    Asa<SQL_HANDLE_ENV> m_entorno;
    Asa<SQL_HANDLE_DBC> m_linea;
    const Servidor* m_servidor;
    bool m_perdido = true;
};

} // namespace atipicos::odbc
