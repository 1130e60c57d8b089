#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"

#include <map>
#include <memory>
#include <string>

/// The management company library over the tables of a management database.
namespace atipicos::orvalin {

/// A company of the table `Empresas` with its parameters and the tax types. All of it is read once, when the
/// object is made, and kept: a save asks for the same values many times. `Recargar` reads it again.
class Empresa final : public qvoremp::Empresa {
public:
    /// Reads the company of `codigo` for the user of code `usuario`. Raises an error when there is no such
    /// company.
    Empresa(std::shared_ptr<adodb::Connection> conexion, std::int16_t codigo, std::int32_t usuario,
        Donde donde = Donde::aqui());

    /// Reads everything again; on an error the values are those of before.
    void Recargar(Donde donde = Donde::aqui());

    /// While false, charges are saved without an entry, whatever the company says of its accounting link.
    void contabiliza(bool si) noexcept { m_contabiliza = si; }

    [[nodiscard]] const std::string& NIF() const noexcept { return m_datos.NIF; }
    [[nodiscard]] std::int32_t Usuario() const noexcept { return m_usuario; }

    [[nodiscard]] std::int16_t Codigo(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::string Nombre(Donde donde = Donde::aqui()) const override;

    /// The text of the key; empty when the company has no such key. "UsuarioActual" is the code of the user
    /// for whom the object was made.
    [[nodiscard]] Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const override;

    /// Type 0 means no tax: 0 percent. Raises an error when there is no such tax type.
    [[nodiscard]] Currency PorcentajeImpuesto(std::int16_t tipo, Donde donde = Donde::aqui()) const override;

    [[nodiscard]] int DecimalesImporte(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int DecimalesCosto(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] int DecimalesPrecio(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int16_t AlmacenDefecto(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int32_t EnlaceContable(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int16_t EmpresaProveedores(Donde donde = Donde::aqui()) const override;
    [[nodiscard]] std::int32_t RaizProveedores(Donde donde = Donde::aqui()) const override;

private:
    struct Datos {
        std::string Nombre;
        std::string NIF;
        int DecimalesImporte = 0;
        int DecimalesCosto = 0;
        int DecimalesPrecio = 0;
        std::int16_t AlmacenDefecto = 0;
        std::int32_t EnlaceContable = 0;
        std::int16_t EmpresaProveedores = 0;
        std::int32_t RaizProveedores = 0;
        std::map<std::string, std::string, std::less<>> parametros;
        std::map<std::int16_t, Currency> porcentajes;
    };

    [[nodiscard]] std::unique_ptr<adodb::Recordset> consulta(const std::string& sql, Donde donde) const;
    void lee_empresa(Datos& datos, Donde donde) const;
    void lee_parametros(Datos& datos, Donde donde) const;
    void lee_impuestos(Datos& datos, Donde donde) const;

    std::shared_ptr<adodb::Connection> m_conexion;
    std::int16_t m_codigo;
    std::int32_t m_usuario;
    Datos m_datos;
    bool m_contabiliza = true;
};

} // namespace atipicos::orvalin
