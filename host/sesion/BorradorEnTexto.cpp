#include "host/sesion/BorradorEnTexto.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Error.hpp"

#include <chrono>
#include <nlohmann/json.hpp>

namespace atipicos::app {

namespace {

    using nlohmann::json;

    constexpr int formato = 1;

    [[noreturn]] void no_vale(const std::string& motivo) { throw Error(no_hecho, "atipicos", motivo); }

    json en_json(const LineaBorrador& linea)
    {
        return { { "articulo", linea.Cod_Articulo }, { "descripcion", linea.Descripcion },
            { "observaciones", linea.Observaciones }, { "unidades", linea.Unidades.texto() },
            { "costo", linea.Costo.texto() }, { "articulo_de_cuenta", linea.ArticuloDeCuenta },
            { "fila_cargada", linea.FilaCargada }, { "intacta", linea.Intacta } };
    }

    LineaBorrador lee_linea(const json& leida)
    {
        LineaBorrador linea;
        leida.at("articulo").get_to(linea.Cod_Articulo);
        leida.at("descripcion").get_to(linea.Descripcion);
        leida.at("observaciones").get_to(linea.Observaciones);
        linea.Unidades = Currency::de_texto(leida.at("unidades").get<std::string>());
        linea.Costo = Currency::de_texto(leida.at("costo").get<std::string>());
        leida.at("articulo_de_cuenta").get_to(linea.ArticuloDeCuenta);
        leida.at("fila_cargada").get_to(linea.FilaCargada);
        leida.at("intacta").get_to(linea.Intacta);
        return linea;
    }

    Date lee_momento(const json& leido)
    {
        const auto dia = Date::de_texto(leido.at("dia").get<std::string>());
        const auto hora = leido.at("hora").get<int>();
        const auto minuto = leido.at("minuto").get<int>();
        const auto segundo = leido.at("segundo").get<int>();
        if (!dia || hora < 0 || hora > 23 || minuto < 0 || minuto > 59 || segundo < 0 || segundo > 59)
            no_vale("no dice de cuándo es");
        return Date(dia->instante() + std::chrono::hours(hora) + std::chrono::minutes(minuto)
            + std::chrono::seconds(segundo));
    }

    json en_json(Date momento)
    {
        const auto segundos = std::chrono::duration_cast<std::chrono::seconds>(
            momento.instante() - momento.solo_dia().instante())
                                  .count();
        return { { "dia", momento.texto() }, { "hora", segundos / 3600 }, { "minuto", segundos / 60 % 60 },
            { "segundo", segundos % 60 } };
    }

    Borrador lee_cargo(const json& leido)
    {
        Borrador borrador;
        const json& cambiado = leido.at("cargo_que_se_cambia");
        cambiado.at("codigo").get_to(borrador.Codigo);
        cambiado.at("ejercicio").get_to(borrador.Ejercicio);
        cambiado.at("almacen").get_to(borrador.AlmacenDelCargo);
        cambiado.at("como_se_abrio").get_to(borrador.Cargado);
        leido.at("almacen").get_to(borrador.Almacen);
        leido.at("proveedor").get_to(borrador.Proveedor);
        leido.at("nombre_del_proveedor").get_to(borrador.NombreProveedor);
        leido.at("fecha").get_to(borrador.Fecha);
        leido.at("observaciones").get_to(borrador.Observaciones);
        leido.at("franquiciado").get_to(borrador.Franquiciado);
        borrador.Total = Currency::de_texto(leido.at("total").get<std::string>());
        leido.at("guardandose").get_to(borrador.Guardandose);
        for (const auto& linea : leido.at("lineas"))
            borrador.Lineas.push_back(lee_linea(linea));
        if (const json& en_curso = leido.at("linea_en_curso"); !en_curso.is_null()) {
            borrador.HayEnCurso = true;
            borrador.EnCurso = lee_linea(en_curso);
            leido.at("fila_en_cambio").get_to(borrador.FilaEnCambio);
        }
        return borrador;
    }

}

std::string borrador_en_texto(const Borrador& borrador, Date momento, const DuenoDeBorradores& dueno)
{
    json lineas = json::array();
    for (const auto& linea : borrador.Lineas)
        lineas.push_back(en_json(linea));
    const json todo = { { "que_es", "cargo sin guardar de atipicos" }, { "formato", formato },
        { "lugar", dueno.lugar }, { "empresa", dueno.empresa }, { "usuario", dueno.usuario },
        { "momento", en_json(momento) },
        { "cargo_que_se_cambia",
            { { "codigo", borrador.Codigo }, { "ejercicio", borrador.Ejercicio },
                { "almacen", borrador.AlmacenDelCargo }, { "como_se_abrio", borrador.Cargado } } },
        { "almacen", borrador.Almacen }, { "proveedor", borrador.Proveedor },
        { "nombre_del_proveedor", borrador.NombreProveedor }, { "fecha", borrador.Fecha },
        { "observaciones", borrador.Observaciones }, { "franquiciado", borrador.Franquiciado },
        { "total", borrador.Total.texto() }, { "guardandose", borrador.Guardandose }, { "lineas", lineas },
        { "linea_en_curso", borrador.HayEnCurso ? en_json(borrador.EnCurso) : json() },
        { "fila_en_cambio", borrador.FilaEnCambio } };
    // A letter that is none, from a damaged table, must not keep the rest from being kept.
    return todo.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

BorradorLeido lee_borrador(std::string_view texto, const DuenoDeBorradores& dueno)
{
    try {
        const json todo = json::parse(texto);
        if (todo.at("formato").get<int>() != formato)
            no_vale("es de otra versión del programa");
        if (!(DuenoDeBorradores{ todo.at("lugar").get<std::string>(), todo.at("empresa").get<std::int16_t>(),
                  todo.at("usuario").get<std::int32_t>() }
                == dueno))
            no_vale("es de otra empresa, de otro usuario o de otra base de datos");
        return { lee_cargo(todo), lee_momento(todo.at("momento")) };
    } catch (const json::exception&) {
        no_vale("está dañado");
    }
}

} // namespace atipicos::app
