#include "browser/ExportarLista.hpp"

#include "runtime/MotivoSistema.hpp"

#include <xlsxwriter.h>

#include <cerrno>
#include <memory>
#include <ostream>

namespace atipicos {

namespace {

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

    /// Refuses to leave out in silence what a sheet has no room for: 1,048,576 rows, 32,767 letters a cell.
    void comprueba(lxw_error fallo, const CargoListado& cargo)
    {
        if (fallo != LXW_NO_ERROR)
            throw Error(1, "QVORComprasAtip",
                "El cargo " + cargo.Codigo
                    + " no cabe en una hoja de cálculo (1.048.576 filas, 32.767 letras "
                    + "por celda): guárdelo como CSV.");
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

}

std::vector<std::string> celdas_lista(const CargoListado& cargo)
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

void exporta_csv(std::ostream& salida, const OrigenLista& lista)
{
    for (std::size_t i = 0; i < titulos_lista.size(); ++i)
        salida << (i == 0 ? "" : ";") << titulos_lista[i];
    salida << "\r\n";
    lista([&](const CargoListado& cargo) {
        const auto fila = celdas_lista(cargo);
        for (std::size_t i = 0; i < fila.size(); ++i)
            salida << (i == 0 ? "" : ";") << campo_csv(fila[i]);
        salida << "\r\n";
    });
}

void exporta_xlsx(const std::filesystem::path& fichero, const OrigenLista& lista)
{
    std::unique_ptr<lxw_workbook, decltype(&lxw_workbook_free)> libro(
        workbook_new(fichero.c_str()), &lxw_workbook_free);
    lxw_worksheet* hoja = workbook_add_worksheet(libro.get(), "Atípicos");
    const Formatos formatos{ workbook_add_format(libro.get()), workbook_add_format(libro.get()),
        workbook_add_format(libro.get()) };
    format_set_bold(formatos.titulo);
    format_set_num_format(formatos.importe, "#,##0.00");
    format_set_num_format(formatos.fecha, "dd/mm/yyyy");
    for (std::size_t i = 0; i < titulos_lista.size(); ++i)
        worksheet_write_string(hoja, 0, static_cast<lxw_col_t>(i), titulos_lista[i], formatos.titulo);
    worksheet_freeze_panes(hoja, 1, 0);
    worksheet_set_column(hoja, 0, 12, 14, nullptr);
    lxw_row_t fila = 0;
    lista([&](const CargoListado& cargo) { escribe_fila(hoja, ++fila, cargo, formatos); });
    errno = 0;
    if (const auto fallo = workbook_close(libro.release()); fallo != LXW_NO_ERROR)
        throw Error(1, "QVORComprasAtip",
            "No se pudo escribir el libro: "
                + (errno != 0 ? motivo_sistema(errno) : "error " + std::to_string(fallo)) + ".");
}

} // namespace atipicos
