#include "tests/simulacion/Contenido.hpp"

#include "host/comprobacion/Verificacion.hpp"

#include <algorithm>
#include <initializer_list>

namespace atipicos::pruebas {

namespace {

    /// The rows of a query as the model writes them.
    void anexa(std::vector<std::string>& filas, adodb::Connection& conexion, const char* nombre,
        const std::string& sql, std::initializer_list<const char*> importes)
    {
        const auto rs = conexion.CreateRecordset();
        rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext()) {
            std::vector<std::string> celdas;
            for (std::size_t i = 0; i < rs->Count(); ++i) {
                auto& campo = rs->Fields(i);
                const bool importe = std::any_of(
                    importes.begin(), importes.end(), [&](const char* uno) { return campo.Name() == uno; });
                celdas.push_back(importe ? std::to_string(CCur(campo.Value()).crudo()) : CStr(campo.Value()));
            }
            filas.push_back(fila_de(nombre, celdas));
        }
    }

    std::vector<std::string> filas_de(const bases::Bases& bases)
    {
        std::vector<std::string> filas;
        auto& gestion = *bases.orvalin;
        anexa(filas, gestion, "cargo",
            "SELECT Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, "
            "EjContable, Usuario, Hora, Observ, Impuesto, Impuesto_Importe FROM Proveedores_Cargos_Atipicos",
            { "Importe", "Impuesto", "Impuesto_Importe" });
        anexa(filas, gestion, "línea",
            "SELECT Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Cod_Articulo, Descripcion, Unidades, "
            "Precio, "
            "Observ FROM Proveedores_Cargos_Atipicos_Lineas",
            { "Unidades", "Precio" });
        anexa(filas, gestion, "contador",
            "SELECT Cod_Ejercicio, Cod_Almacen, Numero FROM Contador_Proveedores_Cargos_Atipicos", {});
        auto& contabilidad = *bases.bexmor;
        anexa(filas, contabilidad, "contador de asientos",
            "SELECT Cod_Empresa, Cod_Ejercicio, Numero FROM Contador_Asientos", {});
        anexa(filas, contabilidad, "asiento",
            "SELECT Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario FROM Asientos", {});
        anexa(filas, contabilidad, "apunte",
            "SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Cuenta, Documento, Debe, Haber, BaseImpuesto "
            "FROM Apuntes",
            { "Debe", "Haber", "BaseImpuesto" });
        anexa(filas, contabilidad, "impuesto",
            "SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Documento, Base, Cuota, TotalImpuesto FROM "
            "Registro_Impuestos",
            { "Base", "Cuota", "TotalImpuesto" });
        anexa(filas, contabilidad, "previsión",
            "SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Numero, Cuenta, Importe, TipoDoc, Vencimiento, "
            "Banco "
            "FROM Previsiones",
            { "Importe" });
        std::sort(filas.begin(), filas.end());
        return filas;
    }

}

std::optional<std::string> compara_filas(const Modelo& modelo, const bases::Bases& bases)
{
    const auto debidas = modelo.filas();
    const auto hay = filas_de(bases);
    const auto [falta, sobra] = std::mismatch(debidas.begin(), debidas.end(), hay.begin(), hay.end());
    if (falta != debidas.end() || sobra != hay.end())
        return "due: " + (falta == debidas.end() ? std::string("nothing") : *falta)
            + "\nfound: " + (sobra == hay.end() ? std::string("nothing") : *sobra);
    return {};
}

std::optional<std::string> compara_verificacion(const Modelo& modelo, const bases::Bases& bases)
{
    auto debidos = modelo.sin_asiento();
    for (const auto& diferencia : app::verifica(bases).diferencias) {
        const auto nombrado = std::find_if(debidos.begin(), debidos.end(), [&](const auto& clave) {
            return diferencia.starts_with(app::texto(app::ClaveContenida{
                1, static_cast<std::int16_t>(clave.ejercicio), clave.almacen, clave.codigo }));
        });
        if (nombrado == debidos.end() && diferencia.find("almacén 5)") == std::string::npos)
            return "verificar says: " + diferencia;
        if (nombrado != debidos.end())
            debidos.erase(nombrado);
    }
    if (!debidos.empty())
        return "verificar does not name " + debidos.begin()->codigo;
    return {};
}

} // namespace atipicos::pruebas
