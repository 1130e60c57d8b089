#include "host/comprobacion/HistorialCargo.hpp"

#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Currency.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <set>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

namespace atipicos::app {

namespace {

    using Que = Suceso::Que;
    using Json = nlohmann::json;
    using Asiento = std::tuple<std::int32_t, std::int32_t, std::int32_t>; ///< company, year, number

    // The columns that say something.
    constexpr std::array<const char*, 14> de_cabecera{ "Proveedor", "Fecha", "Importe", "Asiento",
        "EmpContable", "EjContable", "Usuario", "Hora", "Observ", "Cod_Compra", "Documento", "Impuesto",
        "Impuesto_Importe", "Tipo" };
    constexpr std::array<const char*, 5> de_linea{ "Cod_Articulo", "Descripcion", "Unidades", "Precio",
        "Observ" };

    std::string texto_de(const Variant& valor) { return valor.es_nulo() ? std::string() : CStr(valor); }

    /// `2026-02-10`, with ` 09:05:03` or `T09:05:03` or without, as the same date is read from the table.
    std::string regional(const std::string& iso)
    {
        const auto numero = [&](std::size_t lugar, std::size_t cifras) {
            return lugar < iso.size() ? std::atoi(iso.substr(lugar, cifras).c_str()) : 0;
        };
        const auto dia = Date::de_dia(numero(0, 4), numero(5, 2), numero(8, 2));
        if (!dia)
            return iso;
        return CStr(Variant(Date(dia->instante() + std::chrono::hours(numero(11, 2))
            + std::chrono::minutes(numero(14, 2)) + std::chrono::seconds(numero(17, 2)))));
    }

    /// As the same value is read from the table itself.
    std::string texto_de(std::string_view columna, const Json& valor)
    {
        if (valor.is_null())
            return {};
        if (valor.is_number_integer())
            return std::to_string(valor.get<std::int64_t>());
        if (valor.is_number())
            return CStr(Variant(Currency::de_texto(valor.dump())));
        auto texto = valor.get<std::string>();
        const bool es_fecha = columna == "Fecha" || columna == "Hora";
        return es_fecha ? regional(texto) : texto;
    }

    /// Products differ in the case of names.
    std::string en_minusculas(std::string texto)
    {
        std::transform(texto.begin(), texto.end(), texto.begin(),
            [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        return texto;
    }

    FilaLeida de_json(const std::string& texto, std::span<const char* const> columnas)
    {
        std::map<std::string, Json> suyas;
        const auto json = Json::parse(texto, nullptr, false);
        for (const auto& [nombre, valor] : json.items())
            suyas.emplace(en_minusculas(nombre), valor);
        FilaLeida fila;
        for (const std::string columna : columnas)
            if (const auto lugar = suyas.find(en_minusculas(columna)); lugar != suyas.end())
                fila.emplace(columna, texto_de(columna, lugar->second));
        return fila;
    }

    std::string condicion(std::int16_t empresa, const ClaveCargo& clave)
    {
        return " WHERE Cod_Empresa =" + std::to_string(empresa) + " AND Cod_Ejercicio ="
            + std::to_string(clave.Ejercicio) + " AND Cod_Almacen =" + std::to_string(clave.Almacen)
            + " AND Codigo =" + sql::literal(clave.Codigo);
    }

    FilaLeida leida(adodb::Recordset& rs, std::span<const char* const> columnas)
    {
        FilaLeida fila;
        for (const auto* columna : columnas)
            fila.emplace(columna, texto_de(rs.Fields(columna).Value()));
        return fila;
    }

    /// The rows of the charge as they are, by the number of their line.
    std::map<std::int32_t, FilaLeida> ahora(adodb::Connection& orvalin, const std::string& condicion)
    {
        std::map<std::int32_t, FilaLeida> filas;
        const auto cabecera
            = adodb::consulta(orvalin, "SELECT * FROM Proveedores_Cargos_Atipicos" + condicion);
        if (!cabecera->Eof())
            filas.emplace(0, leida(*cabecera, de_cabecera));
        const auto lineas
            = adodb::consulta(orvalin, "SELECT * FROM Proveedores_Cargos_Atipicos_Lineas" + condicion);
        for (; !lineas->Eof(); lineas->MoveNext())
            filas.emplace(CLng(lineas->Fields("Num_Linea").Value()), leida(*lineas, de_linea));
        return filas;
    }

    Que que_es(const std::string& accion)
    {
        if (accion == "alta")
            return Que::alta;
        return accion == "baja" ? Que::baja : Que::cambio;
    }

    Suceso lee_suceso(adodb::Recordset& rs)
    {
        const auto texto = [&](const char* campo) { return texto_de(rs.Fields(campo).Value()); };
        Suceso suceso{ .que = que_es(texto("Accion")),
            .momento = CDate(rs.Fields("Momento").Value()),
            .linea = CLng(rs.Fields("Num_Linea").Value()),
            .usuario = texto("Usuario"),
            .login = texto("Login"),
            .puesto = texto("Puesto") };
        if (const Variant antes = rs.Fields("Antes").Value(); !antes.es_nulo())
            suceso.antes
                = suceso.linea == 0 ? de_json(CStr(antes), de_cabecera) : de_json(CStr(antes), de_linea);
        return suceso;
    }

    /// What each one left behind: what the next one of the same row found, or what is there.
    void completa(std::vector<Suceso>& sucesos, std::map<std::int32_t, FilaLeida> filas)
    {
        for (auto i = sucesos.size(); i-- > 0;) {
            auto& uno = sucesos[i];
            const auto lugar = filas.find(uno.linea);
            if (uno.que != Que::baja && lugar != filas.end())
                uno.despues = std::move(lugar->second);
            filas.erase(uno.linea);
            if (uno.antes)
                filas.emplace(uno.linea, *uno.antes);
        }
    }

    std::set<Asiento> asientos_de(const std::vector<Suceso>& sucesos)
    {
        std::set<Asiento> todos;
        for (const auto& uno : sucesos)
            for (const auto& fila : { uno.antes, uno.despues })
                if (uno.linea == 0 && fila && fila->at("Asiento") != "0")
                    todos.emplace(std::stoi(fila->at("EmpContable")), std::stoi(fila->at("EjContable")),
                        std::stoi(fila->at("Asiento")));
        return todos;
    }

    void agrega_anulaciones(adodb::Connection& orvalin, std::vector<Suceso>& sucesos)
    {
        for (const auto& [empresa, ejercicio, numero] : asientos_de(sucesos)) {
            const auto rs = adodb::consulta(orvalin,
                "SELECT * FROM Historial_Anulaciones WHERE Cod_Empresa =" + std::to_string(empresa)
                    + " AND Cod_Ejercicio =" + std::to_string(ejercicio)
                    + " AND Asiento =" + std::to_string(numero));
            if (rs->Eof())
                continue;
            const auto texto = [&](const char* campo) { return texto_de(rs->Fields(campo).Value()); };
            const auto por = texto("Por_Asiento");
            Suceso anulacion{ .que = Que::anulacion,
                .momento = CDate(rs->Fields("Momento").Value()),
                .usuario = texto("Usuario"),
                .login = texto("Login"),
                .puesto = texto("Puesto"),
                .antes = {},
                .despues = {},
                .asiento = std::to_string(empresa) + "/" + std::to_string(ejercicio) + "/"
                    + std::to_string(numero)
                    + (por == "0" ? ", a mano"
                                  : ", con el " + std::to_string(empresa) + "/" + texto("Por_Ejercicio") + "/"
                                + por) };
            const auto lugar = std::find_if(sucesos.rbegin(), sucesos.rend(),
                [&](const auto& uno) { return uno.momento <= anulacion.momento; });
            sucesos.insert(lugar.base(), std::move(anulacion));
        }
    }

}

HistorialCargo historial_de(adodb::Connection& orvalin, std::int16_t empresa, const ClaveCargo& clave)
{
    const auto del_cargo = condicion(empresa, clave);
    HistorialCargo historial;
    const auto rs = adodb::consulta(orvalin, "SELECT * FROM Historial" + del_cargo + " ORDER BY Numero");
    for (; !rs->Eof(); rs->MoveNext())
        historial.sucesos.push_back(lee_suceso(*rs));
    auto filas = ahora(orvalin, del_cargo);
    historial.existe = filas.contains(0);
    completa(historial.sucesos, std::move(filas));
    historial.sucesos = sin_reescritos(std::move(historial.sucesos));
    agrega_anulaciones(orvalin, historial.sucesos);
    return historial;
}

} // namespace atipicos::app
