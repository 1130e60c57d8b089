#pragma once

#include "host/bases/Bases.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/orvalin/Catalogos.hpp"
#include "host/orvalin/Empresa.hpp"
#include "host/sesion/BorradoresEnCarpeta.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "host/terminal/MsgBoxConsola.hpp"

#include <memory>

namespace atipicos::app {

/// An open pair of databases with the company and user that work on them, handed to the component.
class Sesion {
public:
    /// Raises an error that says what is missing: the databases, the company (and which there are), the user;
    /// and when the login may not record as that user.
    explicit Sesion(const OpcionesComunes& opciones, const bases::OpcionesBases& bases = {});
    Sesion(const Sesion&) = delete;
    Sesion& operator=(const Sesion&) = delete;

    /// Takes everything back from the component, so that the databases are closed with the session and not
    /// when the process has ended otherwise.
    ~Sesion();

    /// From now on what is keyed in and not saved yet is kept for this company, user and place.
    void Guarda_Borradores(const bases::Lugar& lugar);

    bases::Bases bases;
    orvalin::Catalogos catalogos;
    std::shared_ptr<MsgBoxConsola> avisos;
    std::shared_ptr<orvalin::Empresa> empresa;
    std::shared_ptr<bexmor::Biblioteca> biblioteca;
    std::shared_ptr<BorradoresEnCarpeta> borradores; ///< nothing where none are kept
};

} // namespace atipicos::app
