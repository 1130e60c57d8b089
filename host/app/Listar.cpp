#include "browser/ListaAtipicos.hpp"
#include "engines/sql/Fechas.hpp"
#include "host/app/Ordenes.hpp"
#include "host/app/Progreso.hpp"
#include "host/app/SalidaSegura.hpp"
#include "host/app/Sesion.hpp"
#include "host/app/Tabla.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>
#include <xlsxwriter.h>

#include <array>
#include <iostream>
#include <optional>

namespace atipicos::app {

namespace {

    using Cada = std::function<void(const CargoListado&)>;

    constexpr std::array<const char*, 13> titulos{ "Código", "Almacén", "Nombre del almacén", "Proveedor",
        "Nombre del proveedor", "Fecha", "Importe", "Impuesto", "% impuesto", "Asiento", "Usuario",
        "Nombre del usuario", "Observaciones" };
    constexpr std::array<bool, 13> numericas{ false, true, false, true, false, false, true, true, true, true,
        true, false, false };

    std::vector<std::string> celdas(const CargoListado& cargo)
    {
        std::string fila;
        anexa_fila(fila, cargo);
        std::vector<std::string> resultado(1);
        for (const char c : fila) {
            if (c == '\t')
                resultado.emplace_back();
            else
                resultado.back() += c;
        }
        return resultado;
    }

    struct Totales {
        std::size_t cargos = 0;
        Currency importe;
        Currency impuesto;

        void suma(const CargoListado& cargo)
        {
            ++cargos;
            importe += cargo.Importe;
            impuesto += cargo.Impuesto_Importe;
        }
    };

    void como_tabla(std::ostream& salida, const std::function<void(const Cada&)>& lista)
    {
        std::vector<Tabla::Columna> columnas;
        for (std::size_t i = 0; i < titulos.size(); ++i)
            columnas.push_back({ titulos[i], numericas[i] ? Alineacion::derecha : Alineacion::izquierda });
        Tabla tabla(std::move(columnas));
        Totales totales;
        lista([&](const CargoListado& cargo) {
            tabla.agrega(celdas(cargo));
            totales.suma(cargo);
        });
        if (totales.cargos == 0)
            return;
        tabla.escribe(salida);
        salida << totales.cargos << " cargos, importe " << texto_pantalla(totales.importe, 2) << ", impuesto "
               << texto_pantalla(totales.impuesto, 2) << '\n';
    }

    /// A field as spreadsheets want it: between quotes, those inside doubled, where it needs them.
    std::string campo_csv(const std::string& texto)
    {
        if (texto.find_first_of(";\"\r\n") == std::string::npos)
            return texto;
        std::string campo = "\"";
        for (const char c : texto) {
            campo += c;
            if (c == '"')
                campo += c;
        }
        return campo + '"';
    }

    void como_csv(std::ostream& salida, const std::function<void(const Cada&)>& lista)
    {
        for (std::size_t i = 0; i < titulos.size(); ++i)
            salida << (i == 0 ? "" : ";") << titulos[i];
        salida << "\r\n";
        lista([&](const CargoListado& cargo) {
            const auto fila = celdas(cargo);
            for (std::size_t i = 0; i < fila.size(); ++i)
                salida << (i == 0 ? "" : ";") << campo_csv(fila[i]);
            salida << "\r\n";
        });
    }

    void como_json(std::ostream& salida, const std::function<void(const Cada&)>& lista)
    {
        auto cargos = nlohmann::ordered_json::array();
        lista([&](const CargoListado& cargo) {
            nlohmann::ordered_json uno;
            uno["codigo"] = cargo.Codigo;
            uno["almacen"] = cargo.Cod_Almacen;
            uno["nombre_almacen"] = cargo.Nombre_Almacen;
            uno["proveedor"] = cargo.Proveedor;
            uno["nombre_proveedor"] = cargo.Nombre_Proveedor;
            uno["fecha"] = sql::texto_iso(cargo.Fecha);
            uno["importe"] = cargo.Importe.a_double();
            uno["impuesto"] = cargo.Impuesto_Importe.a_double();
            uno["porcentaje_impuesto"] = cargo.Impuesto.a_double();
            uno["asiento"]
                = cargo.Asiento > 0 ? nlohmann::ordered_json(cargo.Asiento) : nlohmann::ordered_json();
            uno["usuario"] = cargo.Usuario;
            uno["nombre_usuario"] = cargo.Nombre_Usuario;
            uno["observaciones"] = cargo.Observ;
            cargos.push_back(std::move(uno));
        });
        salida << cargos.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }

    void como_xlsx(const std::filesystem::path& fichero, const std::function<void(const Cada&)>& lista)
    {
        lxw_workbook* libro = workbook_new(fichero.c_str());
        lxw_worksheet* hoja = workbook_add_worksheet(libro, "Atípicos");
        lxw_format* negrita = workbook_add_format(libro);
        format_set_bold(negrita);
        lxw_format* importe = workbook_add_format(libro);
        format_set_num_format(importe, "#,##0.00");
        lxw_format* fecha = workbook_add_format(libro);
        format_set_num_format(fecha, "dd/mm/yyyy");
        for (std::size_t i = 0; i < titulos.size(); ++i)
            worksheet_write_string(hoja, 0, static_cast<lxw_col_t>(i), titulos[i], negrita);
        worksheet_freeze_panes(hoja, 1, 0);
        worksheet_set_column(hoja, 0, 12, 14, nullptr);
        lxw_row_t fila = 0;
        lista([&](const CargoListado& cargo) {
            ++fila;
            worksheet_write_string(hoja, fila, 0, cargo.Codigo.c_str(), nullptr);
            worksheet_write_number(hoja, fila, 1, cargo.Cod_Almacen, nullptr);
            worksheet_write_string(hoja, fila, 2, cargo.Nombre_Almacen.c_str(), nullptr);
            worksheet_write_number(hoja, fila, 3, cargo.Proveedor, nullptr);
            worksheet_write_string(hoja, fila, 4, cargo.Nombre_Proveedor.c_str(), nullptr);
            worksheet_write_number(hoja, fila, 5, cargo.Fecha.automatizacion(), fecha); // the same day count
            worksheet_write_number(hoja, fila, 6, cargo.Importe.a_double(), importe);
            worksheet_write_number(hoja, fila, 7, cargo.Impuesto_Importe.a_double(), importe);
            worksheet_write_number(hoja, fila, 8, cargo.Impuesto.a_double(), importe);
            if (cargo.Asiento > 0)
                worksheet_write_number(hoja, fila, 9, cargo.Asiento, nullptr);
            worksheet_write_number(hoja, fila, 10, cargo.Usuario, nullptr);
            worksheet_write_string(hoja, fila, 11, cargo.Nombre_Usuario.c_str(), nullptr);
            worksheet_write_string(hoja, fila, 12, cargo.Observ.c_str(), nullptr);
        });
        if (const auto fallo = workbook_close(libro); fallo != LXW_NO_ERROR)
            throw Error(no_hecho, "atipicos",
                std::string("No se pudo escribir el libro: ") + lxw_strerror(fallo) + ".");
    }

}

int listar(const OpcionesComunes& comunes, const OpcionesListar& opciones)
{
    const Sesion sesion(comunes);
    FiltroAtipicos filtro{ opciones.desde.texto(), opciones.hasta.texto(), opciones.almacen,
        opciones.proveedor };
    std::size_t cuantos = 0;
    std::optional<Progreso> progreso;
    if (opciones.formato != "csv" || !opciones.salida.empty()) // rows that go to the terminal show themselves
        progreso.emplace("Leyendo cargos");
    const std::function<void(const Cada&)> lista = [&](const Cada& cada) {
        Cargar_Atipicos(filtro, [&](const CargoListado& cargo) {
            ++cuantos;
            if (progreso)
                progreso->avanza();
            cada(cargo);
        });
        progreso.reset(); // before what has been read is written
    };
    SalidaSegura salida(opciones.salida);
    if (opciones.formato == "tabla")
        como_tabla(salida.flujo(), lista);
    else if (opciones.formato == "csv")
        como_csv(salida.flujo(), lista);
    else if (opciones.formato == "json")
        como_json(salida.flujo(), lista);
    else
        como_xlsx(salida.provisional(), lista);
    salida.termina();
    if (cuantos == 0)
        std::cerr << "No hay cargos entre el " << filtro.FechaI << " y el " << filtro.FechaF << ".\n";
    return hecho;
}

} // namespace atipicos::app
