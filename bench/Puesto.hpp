#pragma once

#include "host/sesion/Sesion.hpp"
#include "tests/integracion/Banco.hpp"

#include <memory>
#include <stdexcept>

namespace atipicos::bench {

/// The component as the program has it, on a company, with the clock at which the tests save.
class Puesto {
public:
    explicit Puesto(const bases::Lugar& lugar, const bases::OpcionesBases& opciones = {})
        : m_sesion(comunes(lugar), opciones)
    {
        const auto reloj = std::make_shared<pruebas::RelojDePrueba>();
        reloj->valor = pruebas::dia_y_hora("21/11/2026", 9, 5, 3);
        modComun::set_Reloj(reloj);
        modComun::set_MsgBox(m_avisos);
    }
    Puesto(const Puesto&) = delete;
    Puesto& operator=(const Puesto&) = delete;
    ~Puesto() { pruebas::vacia_contexto(); }

    void guarda()
    {
        if (pruebas::guarda_un_cargo().estado != ResultadoGuardado::Estado::Guardado
            || !m_avisos->dichos.empty())
            throw std::runtime_error("the charge was not saved");
    }

private:
    static app::OpcionesComunes comunes(const bases::Lugar& lugar)
    {
        app::OpcionesComunes opciones;
        opciones.usuario = 1;
        if (lugar.clase() == bases::Lugar::Clase::carpeta)
            opciones.datos = lugar.carpeta();
        else
            opciones.conexion = lugar.direccion();
        return opciones;
    }

    app::Sesion m_sesion;
    std::shared_ptr<pruebas::MsgBoxDePrueba> m_avisos = std::make_shared<pruebas::MsgBoxDePrueba>();
};

} // namespace atipicos::bench
