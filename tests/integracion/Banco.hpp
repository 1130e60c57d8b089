#pragma once

#include "browser/DetalleAtipico.hpp"
#include "context/modComun.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/bases/Bases.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/orvalin/Empresa.hpp"
#include "tests/integracion/Sedes.hpp"
#include "tests/support/ConexionEspia.hpp"
#include "tests/support/Contexto.hpp"

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// How many rows each table that a save writes to has, and the numbers of both counters.
using Estado = std::map<std::string, std::int32_t>;

/// Saves a charge of three lines with tax, from a supplier who pays in three instalments, in whatever company
/// the component has been handed. With a code it is that charge changed.
ResultadoGuardado guarda_un_cargo(const std::string& codigo = {}, std::int16_t almacen = 1,
    const std::string& observaciones = "Palé dañado");

/// The sample company on real databases, with a spy on each connection.
class Banco {
public:
    explicit Banco(const Sede& sede = en_carpeta());
    explicit Banco(const bases::Lugar& lugar); ///< on a sample company that is there already
    explicit Banco(bases::Bases bases); ///< on the connections to one
    Banco(const Banco&) = delete;
    Banco& operator=(const Banco&) = delete;
    ~Banco();

    /// `guarda_un_cargo` here.
    ResultadoGuardado guarda(const std::string& codigo = {}, std::int16_t almacen = 1,
        const std::string& observaciones = "Palé dañado");

    [[nodiscard]] Estado estado() const; ///< read past the spies
    [[nodiscard]] Variant consulta(const std::string& sql) const; ///< first value, management
    [[nodiscard]] const bases::Bases& bases() const noexcept { return m_bases; } ///< the real connections
    [[nodiscard]] bases::Lugar lugar() const { return m_muestra->lugar(); } ///< of a sample of its own
    [[nodiscard]] std::vector<std::string> titulos() const; ///< of the boxes shown

    std::shared_ptr<Parte> parte = std::make_shared<Parte>();
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();

private:
    void conecta();

    std::unique_ptr<Muestra> m_muestra;
    bases::Bases m_bases;
    std::unique_ptr<bexmor::Biblioteca> m_biblioteca;
};

} // namespace atipicos::pruebas
