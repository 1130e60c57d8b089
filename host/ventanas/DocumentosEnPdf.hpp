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
    /// Makes the folder if there is none. No file takes the place of another, be it of an earlier run or of
    /// another company: the later one is called "AT260001-2026-4 (2).pdf". The names that were given so, in
    /// their order.
    std::vector<std::filesystem::path> en_una_carpeta(const std::vector<ClaveCargo>& claves,
        const std::filesystem::path& carpeta, const HechoUno& hecho_uno);

    [[nodiscard]] std::shared_ptr<const Report> documento(const ClaveCargo& clave) const;

private:
    Sesion& m_sesion;
    orvalin::Plantilla m_plantilla;
    MedidorQt m_medidor;
};

} // namespace atipicos::app
