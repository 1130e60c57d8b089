#include "browser/ListaAtipicos.hpp"
#include "engines/sql/Fechas.hpp"
#include "host/app/MotivoSistema.hpp"
#include "host/app/Ordenes.hpp"
#include "host/app/Progreso.hpp"
#include "host/app/SalidaSegura.hpp"
#include "host/app/Sesion.hpp"
#include "host/app/Tabla.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>
#include <xlsxwriter.h>

#include <array>
#include <cerrno>
#include <functional>
#include <iostream>
#include <memory>
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

    /// Refuses to leave out in silence what a sheet has no room for: 1,048,576 rows, 32,767 letters a cell.
    void comprueba(lxw_error fallo, const CargoListado& cargo)
    {
        if (fallo != LXW_NO_ERROR)
            throw Error(no_hecho, "atipicos",
                "El cargo " + cargo.Codigo
                    + " no cabe en una hoja de cálculo (1.048.576 filas, 32.767 letras "
                    + "por celda): use --formato csv.");
    }

    struct Formatos {
        lxw_format* titulo;
        lxw_format* importe;
        lxw_format* fecha;
    };

    void escribe_fila(
        lxw_worksheet* hoja, lxw_row_t fila, const CargoListado& cargo, const Formatos& formatos)
    {
        const auto texto = [&](lxw_col_t columna, const std::string& valor) {
            comprueba(worksheet_write_string(hoja, fila, columna, valor.c_str(), nullptr), cargo);
        };
        const auto numero = [&](lxw_col_t columna, double valor, lxw_format* formato = nullptr) {
            comprueba(worksheet_write_number(hoja, fila, columna, valor, formato), cargo);
        };
        texto(0, cargo.Codigo);
        numero(1, cargo.Cod_Almacen);
        texto(2, cargo.Nombre_Almacen);
        numero(3, cargo.Proveedor);
        texto(4, cargo.Nombre_Proveedor);
        numero(5, cargo.Fecha.automatizacion(), formatos.fecha); // the same day count
        numero(6, cargo.Importe.a_double(), formatos.importe);
        numero(7, cargo.Impuesto_Importe.a_double(), formatos.importe);
        numero(8, cargo.Impuesto.a_double(), formatos.importe);
        if (cargo.Asiento > 0)
            numero(9, cargo.Asiento);
        numero(10, cargo.Usuario);
        texto(11, cargo.Nombre_Usuario);
        texto(12, cargo.Observ);
    }

    void como_xlsx(const std::filesystem::path& fichero, const std::function<void(const Cada&)>& lista)
    {
        std::unique_ptr<lxw_workbook, decltype(&lxw_workbook_free)> libro(
            workbook_new(fichero.c_str()), &lxw_workbook_free);
        lxw_worksheet* hoja = workbook_add_worksheet(libro.get(), "Atípicos");
        const Formatos formatos{ workbook_add_format(libro.get()), workbook_add_format(libro.get()),
            workbook_add_format(libro.get()) };
        format_set_bold(formatos.titulo);
        format_set_num_format(formatos.importe, "#,##0.00");
        format_set_num_format(formatos.fecha, "dd/mm/yyyy");
        for (std::size_t i = 0; i < titulos.size(); ++i)
            worksheet_write_string(hoja, 0, static_cast<lxw_col_t>(i), titulos[i], formatos.titulo);
        worksheet_freeze_panes(hoja, 1, 0);
        worksheet_set_column(hoja, 0, 12, 14, nullptr);
        lxw_row_t fila = 0;
        lista([&](const CargoListado& cargo) { escribe_fila(hoja, ++fila, cargo, formatos); });
        errno = 0;
        if (const auto fallo = workbook_close(libro.release()); fallo != LXW_NO_ERROR)
            throw Error(no_hecho, "atipicos",
                "No se pudo escribir el libro: "
                    + (errno != 0 ? motivo_sistema(errno) : "error " + std::to_string(fallo)) + ".");
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
