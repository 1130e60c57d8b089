#include "browser/ExportarLista.hpp"

#include "browser/LibroXlsx.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/MotivoSistema.hpp"

#include <cerrno>
#include <fstream>
#include <stdexcept>

namespace atipicos {

namespace {

    [[nodiscard]] bool escribe_celda(
        LibroXlsx& libro, std::size_t lugar, const CargoListado& cargo, const ColumnaLista& columna)
    {
        using enum TipoColumna;
        switch (columna.tipo) {
        case texto:
            return libro.texto(lugar, dato<std::string>(cargo, columna));
        case numero_o_nada:
            if (dato<std::int32_t>(cargo, columna) <= 0)
                return true;
            [[fallthrough]];
        case numero:
            libro.numero(lugar, dato<std::int32_t>(cargo, columna));
            return true;
        case fecha: // the same count of days
            libro.numero(lugar, dato<Date>(cargo, columna).automatizacion(), LibroXlsx::Formato::fecha);
            return true;
        case importe:
        case porcentaje:
            libro.numero(lugar, dato<Currency>(cargo, columna).a_double(), LibroXlsx::Formato::importe);
        }
        return true;
    }

    [[nodiscard]] bool escribe_fila(LibroXlsx& libro, const CargoListado& cargo, ColumnasLista columnas)
    {
        if (!libro.empieza_fila())
            return false;
        for (std::size_t i = 0; i < columnas.size(); ++i)
            if (!escribe_celda(libro, i, cargo, columnas[i]))
                return false;
        return true;
    }

    /// Refuses to leave out in silence what a sheet has no room for.
    [[noreturn]] void no_cabe(const std::string& que)
    {
        throw Error(1, "QVORComprasAtip",
            que
                + " no cabe en una hoja de cálculo (1.048.576 filas, 32.767 letras por celda): guárdelo como "
                  "CSV.");
    }

    void comprueba(const std::ofstream& salida)
    {
        if (!salida)
            throw Error(1, "QVORComprasAtip",
                "No se pudo escribir el libro: "
                    + (errno != 0 ? motivo_sistema(errno) : std::string("error desconocido")) + ".");
    }

    std::vector<std::string> nombres(ColumnasLista columnas)
    {
        std::vector<std::string> todos;
        for (const auto& columna : columnas)
            todos.emplace_back(columna.nombre);
        return todos;
    }

}

void exporta_csv(std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas)
{
    std::string linea;
    const auto termina = [&] {
        linea += "\r\n";
        salida.write(linea.data(), static_cast<std::streamsize>(linea.size()));
        linea.clear();
    };
    for (const auto& columna : columnas)
        (linea += linea.empty() ? "" : ";") += columna.nombre;
    termina();
    std::string celda;
    lista([&](const CargoListado& cargo) {
        for (std::size_t i = 0; i < columnas.size(); ++i) {
            linea += i == 0 ? "" : ";";
            celda.clear();
            anexa_celda(celda, cargo, columnas[i]);
            anexa_campo_csv(linea, celda);
        }
        termina();
    });
}

void exporta_xlsx(const std::filesystem::path& fichero, const OrigenLista& lista, ColumnasLista columnas)
{
    errno = 0;
    std::ofstream salida(fichero, std::ios::binary | std::ios::trunc);
    comprueba(salida);
    try {
        LibroXlsx libro(salida, "Atípicos", nombres(columnas));
        lista([&](const CargoListado& cargo) {
            if (!escribe_fila(libro, cargo, columnas))
                no_cabe("El cargo " + cargo.Codigo);
            comprueba(salida);
        });
        libro.termina();
        salida.close();
        comprueba(salida);
    } catch (const std::length_error&) {
        no_cabe("La lista entera");
    }
}

} // namespace atipicos
