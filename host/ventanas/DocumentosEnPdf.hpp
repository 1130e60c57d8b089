#pragma once

#include "charges/ClaveCargo.hpp"
#include "controls/LienzoQt.hpp"
#include "host/documento/Plantilla.hpp"
#include "host/sesion/Sesion.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace atipicos::app {

/// The documents of many charges in PDF files, each read and laid out when its turn comes. A file gets its
/// name when all of it is there. All raise what cannot be read or written.
class DocumentosEnPdf {
public:
    DocumentosEnPdf(Sesion& sesion, orvalin::Plantilla plantilla); ///< `sesion` outlives this

    using HechoUno = std::function<void()>; ///< after each document; what it raises ends the work

    /// `claves` is not empty.
    void en_un_fichero(const std::vector<ClaveCargo>& claves, const std::filesystem::path& destino,
        const HechoUno& hecho_uno);
    /// Makes the folder if there is none.
    void en_una_carpeta(const std::vector<ClaveCargo>& claves, const std::filesystem::path& carpeta,
        const HechoUno& hecho_uno);

private:
    [[nodiscard]] std::shared_ptr<const Report> documento(const ClaveCargo& clave) const;

    Sesion& m_sesion;
    orvalin::Plantilla m_plantilla;
    MedidorQt m_medidor;
};

} // namespace atipicos::app
