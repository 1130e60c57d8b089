#include "host/fichas/Proveedores.hpp"

#include "host/fichas/CuentasDeFicha.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr auto tabla_de_proveedores = "Proveedores";
    constexpr std::int16_t ultimo_dia = 31;
    /// Letters that are put behind the name in those of its accounts, whose column is as wide.
    constexpr std::size_t apellido_mas_largo = std::string_view(" (deuda a corto plazo)").size();

    std::string valores_de(const FichaDeProveedor& f)
    {
        std::string texto;
        for (const auto* valor : { &f.nombre, &f.nif, &f.domicilio, &f.codigo_postal, &f.poblacion })
            texto += ", " + en_instruccion(*valor);
        for (const int valor : { f.forma_pago, f.dia_pago_1, f.dia_pago_2 })
            texto += ", " + std::to_string(valor);
        return texto;
    }

    std::string cambios_de(const FichaDeProveedor& f)
    {
        return "Nombre =" + en_instruccion(f.nombre) + ", NIF =" + en_instruccion(f.nif) + ", Domicilio ="
            + en_instruccion(f.domicilio) + ", CodigoPostal =" + en_instruccion(f.codigo_postal)
            + ", Poblacion =" + en_instruccion(f.poblacion) + ", Cod_FPago =" + std::to_string(f.forma_pago)
            + ", DiaPago_1 =" + std::to_string(f.dia_pago_1) + ", DiaPago_2 =" + std::to_string(f.dia_pago_2);
    }

}

std::vector<FormaDePago> formas_de_pago(adodb::Connection& bexmor)
{
    std::vector<FormaDePago> todas;
    for (const auto rs = adodb::consulta(bexmor, "SELECT Codigo, Nombre FROM Formas_Pago ORDER BY Codigo");
         !rs->Eof(); rs->MoveNext())
        todas.push_back({ adodb::entero(*rs, "Codigo"), adodb::texto(*rs, "Nombre") });
    return todas;
}

Proveedores::Proveedores(AmbitoDeFichas ambito)
    : m_ambito(std::move(ambito))
{
}

std::string Proveedores::clave(std::int32_t codigo) const
{
    return " WHERE Cod_Empresa =" + std::to_string(m_ambito.empresa_proveedores)
        + " AND Codigo =" + std::to_string(codigo);
}

std::vector<FichaDeProveedor> Proveedores::lee_donde(const std::string& condicion) const
{
    std::vector<FichaDeProveedor> leidos;
    for (const auto rs = adodb::consulta(*m_ambito.bases.orvalin,
             "SELECT Codigo, Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Cod_FPago, DiaPago_1, DiaPago_2"
             " FROM Proveedores"
                 + condicion + " ORDER BY Codigo");
         !rs->Eof(); rs->MoveNext())
        leidos.push_back({ CLng(rs->Fields("Codigo").Value()), adodb::texto(*rs, "Nombre"),
            adodb::texto(*rs, "NIF"), adodb::texto(*rs, "Domicilio"), adodb::texto(*rs, "CodigoPostal"),
            adodb::texto(*rs, "Poblacion"), adodb::entero(*rs, "Cod_FPago"), adodb::entero(*rs, "DiaPago_1"),
            adodb::entero(*rs, "DiaPago_2") });
    return leidos;
}

std::vector<FichaDeProveedor> Proveedores::todos() const
{
    return lee_donde(" WHERE Cod_Empresa =" + std::to_string(m_ambito.empresa_proveedores));
}

std::optional<FichaDeProveedor> Proveedores::lee(std::int32_t codigo) const
{
    auto leidos = lee_donde(clave(codigo));
    if (leidos.empty())
        return std::nullopt;
    return std::move(leidos.front());
}

std::int32_t Proveedores::libre() const
{
    return codigo_libre(*m_ambito.bases.orvalin, tabla_de_proveedores, m_ambito.empresa_proveedores);
}

void Proveedores::comprueba(const FichaDeProveedor& ficha) const
{
    if (ficha.codigo < 1)
        rehusa_ficha("El código de un proveedor es un número mayor que cero.");
    const auto exige = [](const std::string& texto, const char* columna, const char* que) {
        exige_que_quepa(texto, { tabla_de_proveedores, columna, que });
    };
    exige_que_quepa(ficha.nombre, { tabla_de_proveedores, "Nombre", "el nombre", true, apellido_mas_largo });
    exige(ficha.nif, "NIF", "el NIF");
    exige(ficha.domicilio, "Domicilio", "el domicilio");
    exige(ficha.codigo_postal, "CodigoPostal", "el código postal");
    exige(ficha.poblacion, "Poblacion", "la población");
    for (const auto dia : { ficha.dia_pago_1, ficha.dia_pago_2 })
        if (dia < 0 || dia > ultimo_dia)
            rehusa_ficha("Un día de pago es un día del mes, de 1 a 31, o 0 si no lo hay.");
    const auto formas = formas_de_pago(*m_ambito.bases.bexmor);
    if (ficha.forma_pago != 0
        && std::ranges::none_of(formas, [&](const auto& una) { return una.codigo == ficha.forma_pago; }))
        rehusa_ficha("No existe la forma de pago " + std::to_string(ficha.forma_pago) + ".");
}

bool Proveedores::guarda(const FichaDeProveedor& ficha) const
{
    comprueba(ficha);
    bool nuevo = false;
    en_una_transaccion(m_ambito.bases, [&] {
        const auto antes = lee(ficha.codigo);
        nuevo = !antes;
        auto& orvalin = *m_ambito.bases.orvalin;
        if (nuevo)
            orvalin.Execute("INSERT INTO Proveedores (Cod_Empresa, Codigo, Nombre, NIF, Domicilio, "
                            "CodigoPostal, Poblacion, Cod_FPago, DiaPago_1, DiaPago_2) VALUES ("
                + std::to_string(m_ambito.empresa_proveedores) + ", " + std::to_string(ficha.codigo)
                + valores_de(ficha) + ")");
        else
            orvalin.Execute("UPDATE Proveedores SET " + cambios_de(ficha) + clave(ficha.codigo));
        prepara_cuentas(m_ambito, ficha.codigo, ficha.nombre, antes ? antes->nombre : ficha.nombre);
    });
    return nuevo;
}

void Proveedores::elimina(std::int32_t codigo) const
{
    en_una_transaccion(m_ambito.bases, [&] {
        auto& orvalin = *m_ambito.bases.orvalin;
        if (!lee(codigo))
            rehusa_ficha("No existe el proveedor " + std::to_string(codigo) + ".");
        const auto rs = adodb::consulta(orvalin,
            "SELECT MIN(pc.Codigo) AS Cargo FROM Proveedores_Cargos_Atipicos pc INNER JOIN Empresas e"
            " ON e.Codigo = pc.Cod_Empresa WHERE e.EmpresaProveedores ="
                + std::to_string(m_ambito.empresa_proveedores)
                + " AND pc.Proveedor =" + std::to_string(codigo));
        if (const auto cargo = adodb::texto(*rs, "Cargo"); !cargo.empty())
            rehusa_ficha("No se puede eliminar el proveedor " + std::to_string(codigo)
                + ": tiene cargos, como el " + cargo + ".");
        orvalin.Execute("DELETE FROM Proveedores" + clave(codigo));
    });
}

} // namespace atipicos::app
