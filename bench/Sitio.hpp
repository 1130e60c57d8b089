#pragma once

#include "bench/Medida.hpp"
#include "bench/Puesto.hpp"
#include "bench/SueloPostgresql.hpp"
#include "bench/SueloSqlite.hpp"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace atipicos::bench {

/// An operation once for each floor.
struct Traducidas {
    Traducido textos;
    Traducido formas;
};

/// A place with copies of one company in which some charges have been saved, and so the counters begun.
class Sitio {
public:
    Sitio() = default;
    Sitio(const Sitio&) = delete;
    Sitio& operator=(const Sitio&) = delete;
    virtual ~Sitio() = default;

    virtual bases::Lugar copia(const std::string& nombre) = 0; ///< for the component
    virtual void copia_para_textos(const std::string& nombre) = 0; ///< for the literal floor
    [[nodiscard]] virtual bases::Lugar lugar(const std::string& nombre) const = 0; ///< of a copy
    [[nodiscard]] virtual Traducidas traduce(const std::vector<Guion>& guiones) = 0;
    [[nodiscard]] virtual std::unique_ptr<Suelo> literal(
        const std::string& nombre, const Traducidas& traducidas)
        = 0;
    [[nodiscard]] virtual std::unique_ptr<Suelo> preparado( ///< also on a copy that the component has
        const std::string& nombre, const Traducidas& traducidas)
        = 0;

protected:
    static void comienza(const bases::Lugar& lugar, std::size_t cargos)
    {
        bases::crea_bases(lugar, false);
        Puesto puesto(lugar, { .sincronizacion_completa = false });
        for (std::size_t i = 0; i < cargos; ++i)
            puesto.guarda();
    }
};

class SitioSqlite final : public Sitio {
public:
    SitioSqlite(std::size_t cargos, bool duradero)
        : m_duradero(duradero)
    {
        comienza({ m_carpeta / "inicial" }, cargos);
        const auto base = abre(empresa("inicial"), false);
        ejecuta(base.get(), "PRAGMA wal_checkpoint(TRUNCATE)");
    }

    bases::Lugar copia(const std::string& nombre) override
    {
        std::filesystem::create_directories(m_carpeta / nombre.c_str());
        std::filesystem::copy_file(empresa("inicial"), empresa(nombre));
        return lugar(nombre);
    }
    bases::Lugar lugar(const std::string& nombre) const override { return { m_carpeta / nombre.c_str() }; }
    void copia_para_textos(const std::string& nombre) override
    {
        separa_empresa(empresa("inicial"), m_carpeta / nombre.c_str());
    }
    Traducidas traduce(const std::vector<Guion>& guiones) override
    {
        if (!std::filesystem::exists(m_carpeta / "catalogos"))
            copia_para_textos("catalogos");
        const auto dos = abre(m_carpeta / "catalogos/orvalin.db", false, m_carpeta / "catalogos/bexmor.db");
        const auto una = abre(empresa("inicial"), false);
        return { en_textos(guiones, producto_sqlite, catalogos_de_dos_ficheros(dos.get())),
            en_formas(guiones, producto_sqlite, catalogos_de_empresa(una.get())) };
    }
    std::unique_ptr<Suelo> literal(const std::string& nombre, const Traducidas& traducidas) override
    {
        return std::make_unique<SueloSqliteLiteral>(
            m_carpeta / nombre.c_str(), m_duradero, traducidas.textos);
    }
    std::unique_ptr<Suelo> preparado(const std::string& nombre, const Traducidas& traducidas) override
    {
        return std::make_unique<SueloSqlitePreparado>(empresa(nombre), m_duradero, traducidas.formas);
    }

private:
    [[nodiscard]] std::filesystem::path empresa(const std::string& nombre) const
    {
        return m_carpeta / nombre.c_str() / fichero_empresa;
    }

    Carpeta m_carpeta;
    bool m_duradero;
};

/// On a durable server of its own.
class SitioPostgresql final : public Sitio {
public:
    explicit SitioPostgresql(std::size_t cargos)
        : m_servidor(true)
    {
        m_servidor.crea_base("inicial");
        comienza(lugar("inicial"), cargos);
    }

    bases::Lugar copia(const std::string& nombre) override
    {
        m_servidor.crea_base(nombre, "inicial");
        return lugar(nombre);
    }
    bases::Lugar lugar(const std::string& nombre) const override
    {
        return bases::Lugar::de_conexion(direccion(nombre));
    }
    void copia_para_textos(const std::string& nombre) override { copia(nombre); }
    Traducidas traduce(const std::vector<Guion>& guiones) override
    {
        const auto linea = conecta(m_servidor.direccion("inicial"), "orvalin");
        return { en_textos(guiones, producto_postgresql, catalogos_del_servidor(linea.get(), false)),
            en_formas(guiones, producto_postgresql, catalogos_del_servidor(linea.get(), true)) };
    }
    std::unique_ptr<Suelo> literal(const std::string& nombre, const Traducidas& traducidas) override
    {
        return std::make_unique<SueloPostgresqlLiteral>(direccion(nombre), traducidas.textos);
    }
    std::unique_ptr<Suelo> preparado(const std::string& nombre, const Traducidas& traducidas) override
    {
        return std::make_unique<SueloPostgresqlPreparado>(direccion(nombre), traducidas.formas);
    }

    [[nodiscard]] const pruebas::ServidorPostgresql& servidor() const noexcept { return m_servidor; }
    void ve_por(std::string camino) { m_camino = std::move(camino); } ///< instead of by the server's socket

private:
    [[nodiscard]] std::string direccion(const std::string& nombre) const
    {
        return m_servidor.direccion(nombre) + m_camino;
    }

    pruebas::ServidorPostgresql m_servidor;
    std::string m_camino;
};

/// What is sent when an operation is done `veces` times, by number, in a company.
inline std::vector<Guion> aprende(
    const bases::Lugar& lugar, std::size_t veces, const std::function<void(std::size_t)>& operacion)
{
    std::vector<Guion> guiones;
    pruebas::Banco banco(lugar);
    for (std::size_t vez = 0; vez < veces; ++vez) {
        banco.parte->dichas.clear();
        operacion(vez);
        guiones.push_back(transcribe(*banco.parte));
    }
    return guiones;
}

} // namespace atipicos::bench
