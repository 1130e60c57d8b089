#pragma once

#include "platform/adodb/Connection.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::orvalin {

struct Ficha {
    std::int32_t Codigo = 0;
    std::string Nombre;

    friend bool operator==(const Ficha&, const Ficha&) = default;
};

/// "2 Juan Pérez"; the code alone when nobody has it.
[[nodiscard]] std::string con_su_nombre(const std::vector<Ficha>& fichas, const std::string& codigo);

struct Almacen {
    std::string Nombre;
    std::int16_t EmpContable = 0; ///< accounting company, 0 for none
    std::string CtaIngresosAtipicos; ///< may be empty
};

/// The accounts of a supplier's record; each may be empty, and is formed from its root then.
struct CuentasProveedor {
    std::string Proveedor;
    std::string Deudor;
    std::string DeudaCortoPlazo;
};

struct Articulo {
    std::string Nombre;
    std::string CtaIngresosAtipicos; ///< may be empty
};

/// What a command has to know of a company's warehouses, suppliers and articles, and of the companies and
/// users there are. Each call asks the database; nothing is kept. The texts have ´ for ', like those that a
/// person types: they may come into statements.
class Catalogos {
public:
    Catalogos(std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa);

    // Nothing when the company has none of that code.
    [[nodiscard]] std::optional<Almacen> almacen(std::int16_t codigo, Donde donde = Donde::aqui()) const;
    [[nodiscard]] std::optional<std::string> proveedor(
        std::int32_t codigo, Donde donde = Donde::aqui()) const; ///< its name
    [[nodiscard]] std::optional<CuentasProveedor> cuentas_proveedor(
        std::int32_t codigo, Donde donde = Donde::aqui()) const;
    [[nodiscard]] std::optional<Articulo> articulo(std::int32_t codigo, Donde donde = Donde::aqui()) const;

    // In order of code.
    [[nodiscard]] std::vector<Ficha> empresas(Donde donde = Donde::aqui()) const;
    [[nodiscard]] std::vector<Ficha> usuarios(Donde donde = Donde::aqui()) const;
    [[nodiscard]] std::vector<Ficha> almacenes(Donde donde = Donde::aqui()) const;

private:
    [[nodiscard]] std::unique_ptr<adodb::Recordset> consulta(const std::string& sql, Donde donde) const;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> ficha(
        const char* tabla, std::int32_t codigo, Donde donde) const;
    [[nodiscard]] std::vector<Ficha> fichas(const std::string& tabla_y_filtro, Donde donde) const;

    std::shared_ptr<adodb::Connection> m_conexion;
    std::int16_t m_empresa;
};

} // namespace atipicos::orvalin
