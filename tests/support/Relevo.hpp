#pragma once

#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace atipicos::pruebas {

/// Raises an error when what is being asked was let go by its relief: nobody holds it while it answers.
template <class Visto> void exige_vivo(const std::weak_ptr<Visto>& visto)
{
    if (visto.expired())
        throw Error(99, "Prueba", "se soltó mientras respondía", Donde::aqui());
}

/// A host that lends other connections each time one of those that it has lent is asked for something, and
/// keeps none of them itself. What they are asked for is in `parte->dichas`, under "gestion" and
/// "contabilidad"; what reaches the others, in theirs. With `cuando`, only when that is asked for.
class Relevo {
public:
    std::shared_ptr<Parte> parte = std::make_shared<Parte>();
    std::shared_ptr<ConexionDePrueba> otra_gestion = std::make_shared<ConexionDePrueba>();
    std::shared_ptr<ConexionDePrueba> otra_contabilidad = std::make_shared<ConexionDePrueba>();
    std::string cuando;

    explicit Relevo(const Contexto& contexto)
    {
        auto gestion = std::make_shared<ConexionEspia>("gestion", contexto.gestion, parte);
        auto contabilidad = std::make_shared<ConexionEspia>("contabilidad", contexto.contabilidad, parte);
        m_gestion = gestion;
        m_contabilidad = contabilidad;
        modComun::set_ConexionOrvalin(std::move(gestion));
        modComun::set_ConexionBexmor(std::move(contabilidad));
        parte->antes = [this](const std::string& dicha) { releva(dicha); };
    }
    Relevo(const Relevo&) = delete;
    Relevo& operator=(const Relevo&) = delete;
    ~Relevo() { parte->antes = nullptr; }

    /// Whether those that were lent first have been let go.
    [[nodiscard]] bool sueltas() const { return m_gestion.expired() && m_contabilidad.expired(); }

private:
    void releva(const std::string& dicha)
    {
        if (!cuando.empty() && !dicha.starts_with(cuando))
            return;
        const std::weak_ptr<ConexionEspia> quien = dicha.starts_with("gestion") ? m_gestion : m_contabilidad;
        modComun::set_ConexionOrvalin(otra_gestion);
        modComun::set_ConexionBexmor(otra_contabilidad);
        exige_vivo(quien);
    }

    std::weak_ptr<ConexionEspia> m_gestion;
    std::weak_ptr<ConexionEspia> m_contabilidad;
};

/// A management company in whose place the host lends company 99 each time it is asked for something.
class EmpresaRelevada final : public qvoremp::Empresa, public std::enable_shared_from_this<EmpresaRelevada> {
    template <class Pregunta> auto releva(Pregunta pregunta) const
    {
        const auto real = m_real;
        const std::weak_ptr<const EmpresaRelevada> yo = weak_from_this();
        auto otra = std::make_shared<EmpresaDePrueba>();
        otra->codigo = 99;
        otra->parametros = real->parametros;
        otra->porcentajes = real->porcentajes;
        modComun::set_EmpresaOrvalin(std::move(otra));
        exige_vivo(yo);
        return pregunta(*real);
    }

public:
    explicit EmpresaRelevada(std::shared_ptr<EmpresaDePrueba> real)
        : m_real(std::move(real))
    {
    }

    /// Lends one in the place of the company of `contexto`.
    static void presta(const Contexto& contexto)
    {
        modComun::set_EmpresaOrvalin(std::make_shared<EmpresaRelevada>(contexto.empresa));
    }

    std::int16_t Codigo(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.Codigo(donde); });
    }
    std::string Nombre(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.Nombre(donde); });
    }
    Variant Parametro(std::string_view clave, Donde donde) const override
    {
        return releva([&](const auto& real) { return real.Parametro(clave, donde); });
    }
    Currency PorcentajeImpuesto(std::int16_t tipo, Donde donde) const override
    {
        return releva([&](const auto& real) { return real.PorcentajeImpuesto(tipo, donde); });
    }
    int DecimalesImporte(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.DecimalesImporte(donde); });
    }
    int DecimalesCosto(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.DecimalesCosto(donde); });
    }
    int DecimalesPrecio(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.DecimalesPrecio(donde); });
    }
    std::int16_t AlmacenDefecto(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.AlmacenDefecto(donde); });
    }
    std::int32_t EnlaceContable(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.EnlaceContable(donde); });
    }
    std::int16_t EmpresaProveedores(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.EmpresaProveedores(donde); });
    }
    std::int32_t RaizProveedores(Donde donde) const override
    {
        return releva([&](const auto& real) { return real.RaizProveedores(donde); });
    }

private:
    std::shared_ptr<EmpresaDePrueba> m_real;
};

/// An accounting company in whose place the host lends none each time it, or its library, is asked for
/// something.
class ContableRelevada final : public qvbxemp::Empresa {
public:
    /// Lends one in the place of the accounting company of `contexto`.
    static void presta(const Contexto& contexto)
    {
        modComun::set_EmpresaBexmor(std::make_shared<ContableRelevada>(contexto.biblioteca));
    }

    explicit ContableRelevada(std::shared_ptr<BibliotecaDePrueba> real)
        : m_biblioteca(std::make_shared<Suya>(std::move(real)))
    {
    }

    bool Cargar(Donde /*donde*/) override { return true; }
    Variant Parametro(std::string_view /*clave*/, Donde /*donde*/) const override
    {
        Suya::releva(m_biblioteca);
        return "Bexmor";
    }
    std::string CuentaBancoPago(Donde /*donde*/) const override { return "572000001"; }
    int LongitudCuenta(Donde /*donde*/) const override { return 9; }
    const qvbxemp::Biblioteca& biblioteca() const noexcept override { return *m_biblioteca; }

private:
    /// Held by the company alone, as the host's is.
    class Suya final : public qvbxemp::Biblioteca, public std::enable_shared_from_this<Suya> {
    public:
        explicit Suya(std::shared_ptr<BibliotecaDePrueba> real)
            : m_real(std::move(real))
        {
        }
        static void releva(const std::weak_ptr<const Suya>& yo)
        {
            modComun::set_EmpresaBexmor(nullptr);
            exige_vivo(yo);
        }
        std::unique_ptr<qvbxemp::Empresa> NuevaEmpresa(Donde donde) const override
        {
            const auto real = m_real;
            releva(weak_from_this());
            return real->NuevaEmpresa(donde);
        }
        std::unique_ptr<qvbxemp::Asiento> NuevoAsiento(
            const qvbxemp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevoAsiento(empresa, donde);
        }
        std::unique_ptr<qvbxemp::Apunte> NuevoApunte(
            const qvbxemp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevoApunte(empresa, donde);
        }
        std::unique_ptr<qvbxemp::RegistroImpuesto> NuevoRegistroImpuesto(
            const qvbxemp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevoRegistroImpuesto(empresa, donde);
        }
        std::unique_ptr<qvbxemp::Prevision> NuevaPrevision(
            const qvbxemp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevaPrevision(empresa, donde);
        }
        std::unique_ptr<qvbxemp::ServicioCuentas> NuevoServicioCuentas(
            const qvbxemp::Empresa& empresa, Donde donde) const override
        {
            return m_real->NuevoServicioCuentas(empresa, donde);
        }

    private:
        std::shared_ptr<BibliotecaDePrueba> m_real;
    };

    std::shared_ptr<Suya> m_biblioteca;
};

} // namespace atipicos::pruebas
