#pragma once

#include "context/modComun.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"

#include <memory>

namespace atipicos::pruebas {

/// The program with its main window on a sample company of the test's own, not yet on the screen.
struct EscenaPrograma {
    CarpetaTemporal carpeta;
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> reloj = std::make_shared<RelojDePrueba>();
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmPrincipal> ventana;

    /// `hoy`: the day on which the clock of the test stands; without it the clock goes.
    explicit EscenaPrograma(std::int32_t usuario, const char* hoy = nullptr)
    {
        opciones.datos = carpeta / "datos";
        opciones.usuario = usuario;
        bases::crea_bases(opciones.lugar(), false);
        sesion = std::make_unique<app::Sesion>(opciones);
        modComun::set_MsgBox(avisos);
        if (hoy != nullptr) {
            reloj->valor = dia(hoy);
            modComun::set_Reloj(reloj);
        }
        ventana = std::make_unique<app::frmPrincipal>(*sesion, opciones);
    }
    EscenaPrograma(const EscenaPrograma&) = delete;
    EscenaPrograma& operator=(const EscenaPrograma&) = delete;
    ~EscenaPrograma() { vacia_contexto(); }

    void abre() const
    {
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the main window is not active");
    }
};

} // namespace atipicos::pruebas
