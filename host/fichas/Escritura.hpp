#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <functional>
#include <string>

/// The records of suppliers and articles, kept by whoever has no other program for them.
namespace atipicos::app {

/// Whose records these are, and where.
struct AmbitoDeFichas {
    bases::Bases bases;
    std::int16_t empresa = 0;
    std::int16_t empresa_proveedores = 0; ///< under which its suppliers are kept
};

/// Does `que` in one transaction of both products, and undoes it when it raises something.
void en_una_transaccion(const bases::Bases& bases, const std::function<void()>& que);

/// The text as it may come into a statement: between quotes, with ´ for '.
[[nodiscard]] std::string en_instruccion(const std::string& texto);

/// Where a text of a record is kept.
struct SitioDeFicha {
    const char* tabla; ///< of management
    const char* columna;
    const char* que; ///< as errors call it: "el nombre"
    bool exigido = false; ///< may not be empty
    std::size_t reservadas = 0; ///< letters of the column that are for something else
};

/// Raises an `Error` that says so when the text does not fit there, or there has to be one.
void exige_que_quepa(const std::string& texto, const SitioDeFicha& sitio);

/// One above the highest code of the table.
[[nodiscard]] std::int32_t codigo_libre(adodb::Connection& orvalin, const char* tabla, std::int16_t empresa);

[[noreturn]] void rehusa_ficha(const std::string& motivo);

} // namespace atipicos::app
