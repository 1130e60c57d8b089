#pragma once

#include "host/reclamaciones/CargosReclamados.hpp"
#include "host/reclamaciones/Contabilizable.hpp"
#include "host/reclamaciones/Huella.hpp"
#include "host/reclamaciones/Importaciones.hpp"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace atipicos::app {

/// What is known of the claims of a file once it has been gone through, by their references.
struct Revisadas {
    using Referencias = std::unordered_set<Resumen, DispersaResumen>;

    Referencias malas; ///< not to be recorded; why has been told
    Referencias conocidas; ///< recorded before
    Referencias sin_asiento; ///< to be kept without an entry, as was asked for
    std::size_t total = 0; ///< claims
    std::size_t rechazadas = 0;
    std::size_t ya_registradas = 0;
};

/// Goes through the claims of a file before anything is written, and tells what is wrong with them: what the
/// catalogues and accounting do not have, and what has been recorded already with other contents. It asks for
/// the references of many claims at once, and keeps of each only whether it may be recorded.
class RevisionReclamaciones {
public:
    struct Opciones {
        std::set<std::string> otra_vez; ///< references that are to be recorded again
        bool sin_asiento = false; ///< what cannot be posted is kept without an entry
    };
    using Dice = std::function<void(const char* que, const Reparo&)>; ///< "error" or "aviso"

    RevisionReclamaciones(const Importaciones& importaciones, CargosReclamados& cargos,
        Contabilizable& contabilizable, const Opciones& opciones, Dice dice);

    void mira(Reclamacion una);
    Revisadas termina();

    /// Whether the file has that claim; to be asked at the end.
    [[nodiscard]] bool tiene(const std::string& otra_vez) const { return m_halladas.contains(otra_vez); }

private:
    using Veces = std::vector<Importada>;

    void juzga_bloque();
    void juzga(Reclamacion& una, const Veces& veces);
    void comprueba(Reclamacion& una, const CargoTecleado& tecleado);
    void rechaza(const Reclamacion& una);
    void di_todo(const Reclamacion& una) const;

    const Importaciones& m_importaciones;
    CargosReclamados& m_cargos;
    Contabilizable& m_contabilizable;
    Opciones m_opciones;
    Dice m_dice;
    std::vector<Reclamacion> m_bloque; ///< read, and not judged yet
    std::size_t m_lineas = 0; ///< of the block
    std::set<std::string> m_halladas; ///< of those to be recorded again
    Revisadas::Referencias m_iguales; ///< recorded before, as they are
    Revisadas m_revisadas;
};

/// How the claim is recorded again: the option as a shell takes it.
[[nodiscard]] std::string con_otra_vez(const std::string& referencia);

/// What is said of a claim whose reference has become a charge with other contents.
[[nodiscard]] std::string con_otro_contenido(const std::string& referencia, const ClaveCargo& clave);

} // namespace atipicos::app
