#pragma once

#include "browser/DetalleAtipico.hpp"
#include "host/terminal/Tabla.hpp"

#include <iosfwd>
#include <string>

namespace atipicos::app {

/// What has become of the claims of a file, in its order, with their charges as the database holds them. The
/// first rows are kept, to see how wide the columns are; those after them are written as they come.
class TablaReclamaciones {
public:
    explicit TablaReclamaciones(std::ostream& salida);

    /// Reads the charge, which has to be committed. `estado` is what is said of it as long as it is there;
    /// false: it is gone.
    bool agrega(const std::string& referencia, const ClaveCargo& clave, const std::string& estado);

    /// Whether the next row is written at once.
    [[nodiscard]] bool escribe_al_paso() const noexcept;

    void termina(); ///< writes the rows that were kept; nothing when there are none

    /// Why some row says less of its charge than it should; empty when all is there.
    [[nodiscard]] const std::string& fallo() const noexcept { return m_fallo; }

private:
    std::ostream& m_salida;
    Tabla m_tabla;
    std::string m_fallo;
    bool m_sin_servidor = false; ///< the database cannot be reached any more
    bool m_escrita = false;
};

} // namespace atipicos::app
