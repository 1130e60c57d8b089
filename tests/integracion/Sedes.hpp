#pragma once

#include "host/bases/Lugar.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// A sample company of the test's own, as `crear` makes it; gone when it is destroyed.
class Muestra {
public:
    Muestra() = default;
    Muestra(const Muestra&) = delete;
    Muestra& operator=(const Muestra&) = delete;
    virtual ~Muestra() = default;
    [[nodiscard]] virtual bases::Lugar lugar() const = 0;
};

/// A kind of place where the sample company can be.
struct Sede {
    std::string nombre;
    std::string falta; ///< what there is to install before it can be tested; empty: nothing
    std::function<std::unique_ptr<Muestra>()> muestra;
    std::function<std::unique_ptr<Muestra>()> por_crear = {}; ///< before `crear`; none through ODBC
};
inline void PrintTo(const Sede& sede, std::ostream* salida) { *salida << sede.nombre; }

[[nodiscard]] const Sede& en_carpeta();
[[nodiscard]] const Sede& en_postgresql();
[[nodiscard]] const Sede& en_postgresql_por_odbc();
[[nodiscard]] std::vector<Sede> sedes(); ///< all of them
[[nodiscard]] std::vector<Sede>
sedes_sin_odbc(); ///< a folder and a server, through their own client libraries

/// The one PostgreSQL server of this test program, started the first time it is asked for.
[[nodiscard]] ServidorPostgresql& servidor_postgresql();

} // namespace atipicos::pruebas
