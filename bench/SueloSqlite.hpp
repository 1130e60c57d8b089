#pragma once

#include "bench/Desnudo.hpp"
#include "bench/Suelo.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/bases/Historial.hpp"
#include "host/bases/Tablas.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace atipicos::bench {

inline const Producto producto_sqlite{ "BEGIN IMMEDIATE", "", sql::Numeros::segun_valor };

inline constexpr auto fichero_empresa = "empresa.db";

/// The columns that hold dates, of all tables of an open database, by the names that these have behind
/// `prefijo`.
inline void agrega_fechas(
    sqlite3* base, const std::string& esquema, const std::string& prefijo, sql::Catalogo& catalogo)
{
    for (const auto& fila : lee_filas(base,
             "SELECT t.name, c.name,"
             " (SELECT v.cid FROM pragma_table_info(t.name, t.schema) v WHERE v.name = c.name)"
             " FROM pragma_table_list t JOIN pragma_table_xinfo(t.name, t.schema) c"
             " WHERE t.schema = '"
                 + esquema + "' AND c.type LIKE 'DATE%'"))
        catalogo.agrega_fecha(prefijo + fila.at(0), fila.at(1),
            fila.at(2).empty() ? sql::Catalogo::sin_lugar : std::stoul(fila.at(2))); // a computed column
}

[[nodiscard]] inline Catalogos catalogos_de_empresa(sqlite3* base)
{
    Catalogos catalogos;
    for (auto& catalogo : catalogos) {
        agrega_fechas(base, "main", "", catalogo);
        catalogo.agrega_base("Bexmor", "Bexmor_");
    }
    catalogos[1].pon_propio("Bexmor_");
    return catalogos;
}

/// `gestion` has the accounting tables attached.
[[nodiscard]] inline Catalogos catalogos_de_dos_ficheros(sqlite3* gestion)
{
    constexpr auto adjunta = "\"Bexmor\".";
    Catalogos catalogos;
    agrega_fechas(gestion, "main", "", catalogos[0]);
    agrega_fechas(gestion, "Bexmor", adjunta, catalogos[0]);
    catalogos[0].agrega_base("Bexmor", adjunta);
    agrega_fechas(gestion, "Bexmor", "", catalogos[1]);
    return catalogos;
}

/// Writes the rows of a company into tables of the same names, all of which begin in it with `prefijo`.
inline void copia_filas(
    const std::filesystem::path& fichero, const std::filesystem::path& empresa, const std::string& prefijo)
{
    const auto base = abre(fichero, false, empresa);
    ejecuta(base.get(), "PRAGMA foreign_keys=OFF");
    ejecuta(base.get(), "BEGIN");
    for (const auto& fila : lee_filas(base.get(),
             "SELECT m.name, (SELECT group_concat(name) FROM pragma_table_info(m.name, 'main'))" // none
                                                                                                 // computed
             " FROM sqlite_master m WHERE m.type ='table'")) {
        ejecuta(base.get(), "DELETE FROM main." + fila.at(0));
        ejecuta(base.get(),
            "INSERT INTO main." + fila.at(0) + " (" + fila.at(1) + ") SELECT " + fila.at(1)
                + " FROM Bexmor.\"" + prefijo + fila.at(0) + "\"");
    }
    ejecuta(base.get(), "COMMIT");
}

/// Has management in a file of its own keep the trail of charges as the company does, with what that holds.
/// There the reversals of entries are beside it; here no floor reverses any.
inline void lleva_historial(const std::filesystem::path& gestion, const std::filesystem::path& empresa)
{
    {
        const auto conexion = sqlite::Connection::Abrir({ .fichero = gestion });
        conexion->Execute("CREATE TABLE Bexmor_Regularizaciones (Asiento INT NOT NULL PRIMARY KEY)");
        bases::crea_historial(*conexion, Donde::aqui());
    }
    const auto base = abre(gestion, false, empresa);
    ejecuta(base.get(), "INSERT INTO main.Historial SELECT * FROM Bexmor.Historial");
}

inline void firma(sqlite3* base)
{
    for (const auto& sql : bases::firma_de_fichero())
        ejecuta(base, sql);
}

/// The two products of a company, each in a file of its own: `orvalin.db` and `bexmor.db`.
inline void separa_empresa(const std::filesystem::path& empresa, const std::filesystem::path& carpeta)
{
    std::filesystem::create_directories(carpeta);
    {
        const auto gestion = sqlite::Connection::Abrir({ .fichero = carpeta / "orvalin.db", .crear = true });
        bases::crea_tablas_orvalin(*gestion, true, Donde::aqui());
        const auto contabilidad
            = sqlite::Connection::Abrir({ .fichero = carpeta / "bexmor.db", .crear = true });
        bases::crea_tablas_bexmor(*contabilidad, true, Donde::aqui());
    }
    copia_filas(carpeta / "orvalin.db", empresa, "");
    copia_filas(carpeta / "bexmor.db", empresa, "Bexmor_");
    lleva_historial(carpeta / "orvalin.db", empresa);
}

class SueloSqliteLiteral final : public Suelo {
public:
    SueloSqliteLiteral(const std::filesystem::path& carpeta, bool duradera, const Traducido& textos)
        : Suelo(textos)
        , m_contabilidad(abre(carpeta / "bexmor.db", duradera))
        , m_gestion(abre(carpeta / "orvalin.db", duradera, carpeta / "bexmor.db"))
    {
        firma(m_gestion.get());
    }

private:
    void ejecuta(const Paso& paso) override
    {
        bench::ejecuta((paso.contable ? m_contabilidad : m_gestion).get(), paso.texto);
    }
    std::string celda(const std::string& sql) override { return lee_filas(m_gestion.get(), sql).at(0).at(0); }

    Base m_contabilidad;
    Base m_gestion;
};

class SueloSqlitePreparado final : public Suelo {
public:
    SueloSqlitePreparado(const std::filesystem::path& empresa, bool duradera, const Traducido& formas)
        : Suelo(formas)
        , m_base(abre(empresa, duradera))
        , m_preparadas(formas.formas.size())
    {
        firma(m_base.get());
    }
    void prepara() override
    {
        for (std::size_t i = 0; i < m_preparadas.size(); ++i)
            preparada(i);
    }

private:
    sqlite3_stmt* preparada(std::size_t cual)
    {
        auto& una = m_preparadas.at(cual);
        if (!una)
            una = bench::prepara(m_base.get(), formas()[cual].texto, SQLITE_PREPARE_PERSISTENT);
        return una.get();
    }
    void ejecuta(const Paso& paso) override
    {
        if (paso.forma == Paso::sin_forma) {
            bench::ejecuta(m_base.get(), paso.texto);
            return;
        }
        auto* instruccion = preparada(paso.forma);
        int marca = 0;
        for (const auto& valor : paso.valores)
            comprueba(liga(instruccion, ++marca, valor), m_base.get());
        recorre(instruccion, m_base.get());
        comprueba(sqlite3_reset(instruccion), m_base.get());
    }
    static int liga(sqlite3_stmt* instruccion, int marca, const Valor& valor)
    {
        using Clase = sql::Literal::Clase;
        if (valor.clase == Clase::texto)
            return sqlite3_bind_text(
                instruccion, marca, valor.texto.data(), static_cast<int>(valor.texto.size()), SQLITE_STATIC);
        return valor.clase == Clase::decimal ? sqlite3_bind_double(instruccion, marca, valor.real)
                                             : sqlite3_bind_int64(instruccion, marca, valor.entero);
    }
    std::string celda(const std::string& sql) override { return lee_filas(m_base.get(), sql).at(0).at(0); }

    Base m_base;
    std::vector<Instruccion> m_preparadas; ///< by shape
};

} // namespace atipicos::bench
