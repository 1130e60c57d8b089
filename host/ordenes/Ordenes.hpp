#pragma once

#include "host/comprobacion/ClaveAsiento.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The commands of the program. Each returns its exit status (`hecho` or `no_hecho`) or raises an `Error`,
/// which counts as refused.
namespace atipicos::app {

class ResumenCargos;

struct OpcionesRegistrar {
    std::filesystem::path fichero;
    std::vector<std::string> otra_vez = {}; ///< references that are recorded again, in lists with commas
    bool comprobar = false; ///< stop before anything is written
    bool sin_asiento = false; ///< keep without an entry what cannot be posted
};

struct OpcionesListar {
    Date desde;
    Date hasta;
    std::int16_t almacen = 0; ///< 0: all
    std::int32_t proveedor = 0; ///< 0: all
    std::string formato = "tabla"; ///< tabla, csv, json or xlsx
    std::filesystem::path salida; ///< empty: standard output
};

struct OpcionesCargo {
    std::string codigo;
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    std::string formato = "texto"; ///< of `mostrar` and `historial`: texto or json
    bool si = false; ///< of `eliminar`: without asking
};

struct OpcionesContabilizar {
    std::string codigo;
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    bool franquiciado = false; ///< which a stored charge does not remember
};

struct OpcionesRegularizar {
    std::vector<ClaveAsiento> asientos; ///< empty: all those of which it is certain
    std::vector<ClaveAsiento> saldados; ///< instead: those that somebody has reversed by hand
    std::optional<Date> fecha; ///< of the new entries; none: today
    bool si = false; ///< without asking
};

struct OpcionesImprimir {
    std::vector<std::string> codigos; ///< with `ejercicio` and `almacen`; empty: those between two dates
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0; ///< of the dates, 0: all
    Date desde;
    Date hasta;
    std::filesystem::path salida; ///< one file for all of them
    std::filesystem::path carpeta; ///< or a folder, for one file each
    std::filesystem::path plantilla; ///< empty: that of the databases' folder, or the program's own
};

struct OpcionesResumen {
    std::string por = "proveedor"; ///< proveedor, mes, almacen or articulo
    std::optional<Date> desde; ///< none: the first day of the year of `hasta`
    std::optional<Date> hasta; ///< none: today
    std::int16_t almacen = 0; ///< 0: all
    std::int32_t proveedor = 0; ///< 0: all
    std::int32_t primeros = 0; ///< groups that are told apart; 0: all of them
    std::string formato = "tabla"; ///< tabla, csv, json, xlsx, or a picture: png, svg, pdf
    std::filesystem::path salida; ///< empty: standard output
};

struct OpcionesAccesos {
    std::string login; ///< empty: all of them are told
    std::int32_t usuario = 0; ///< 0: which one it is, is told
    bool quitar = false;
};

/// Makes a picture of a summary and of its months, in a format of `OpcionesResumen`: the bytes of a file.
using DibujaResumen
    = std::string (*)(const ResumenCargos& resumen, const ResumenCargos& meses, const std::string& formato);

/// Which user each login is: told, said, or taken back.
int accesos(const OpcionesComunes& comunes, const OpcionesAccesos& opciones);
/// What `crear` and `actualizar` say of a server of several nodes.
inline constexpr auto repartida = "Sus tablas están repartidas entre los nodos del servidor: la base de "
                                  "datos no lleva el historial de lo "
                                  "que se haga desde ahora.\n";
int actualizar(const OpcionesComunes& comunes);
int copiar(const OpcionesComunes& comunes, const std::filesystem::path& destino);
int crear(const OpcionesComunes& comunes, bool vacia);
int registrar(const OpcionesComunes& comunes, const OpcionesRegistrar& opciones);
int listar(const OpcionesComunes& comunes, const OpcionesListar& opciones);
int mostrar(const OpcionesComunes& comunes, const OpcionesCargo& opciones);
/// What the database has written down about a charge, also one that is gone.
int historial(const OpcionesComunes& comunes, const OpcionesCargo& opciones);
int eliminar(const OpcionesComunes& comunes, const OpcionesCargo& opciones);
int imprimir(const OpcionesComunes& comunes, const OpcionesImprimir& opciones);
/// Posts a stored charge that has lost its entry, or never had one; refuses one that has it.
int contabilizar(const OpcionesComunes& comunes, const OpcionesContabilizar& opciones);
/// Reverses the entries whose charge was deleted or changed, once.
int regularizar(const OpcionesComunes& comunes, const OpcionesRegularizar& opciones);
/// Charges added up, in numbers or, by `dibuja`, as a picture.
int resumen(const OpcionesComunes& comunes, const OpcionesResumen& opciones, DibujaResumen dibuja);
int verificar(const OpcionesComunes& comunes, bool proponer);

} // namespace atipicos::app
