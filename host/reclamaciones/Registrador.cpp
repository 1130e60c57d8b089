#include "host/reclamaciones/Registrador.hpp"

#include "context/modComun.hpp"
#include "host/comprobacion/CargoGuardado.hpp"
#include "host/reclamaciones/PrevisionesPropuestas.hpp"

#include <iostream>
#include <utility>

namespace atipicos::app {

namespace {

    ClaveAtipico clave_de(const clsAtipico& cargo)
    {
        return { cargo.Cod_Ejercicio, cargo.Cod_Almacen, cargo.Codigo };
    }

}

Registrador::Registrador(Sesion& sesion, Importaciones importaciones, const Opciones& opciones, Dice dice)
    : m_sesion(sesion)
    , m_importaciones(std::move(importaciones))
    , m_otra_vez(opciones.otra_vez)
    , m_hay_anteriores(m_importaciones.hay_alguna())
    , m_dice(std::move(dice))
    , m_conexion(std::make_shared<ConexionConAnotacion>(sesion.bases.orvalin))
    , m_cargos(sesion.catalogos)
    , m_tanda(sesion.bases.transacciones, opciones.por_serie)
    , m_progreso("Registrando", opciones.total)
    , m_tabla(std::cout)
{
    modComun::set_ConexionOrvalin(m_conexion);
}

Registrador::~Registrador() { modComun::set_ConexionOrvalin(m_sesion.bases.orvalin); }

void Registrador::registra(Reclamacion& reclamacion)
{
    ++m_sin_contar;
    if (reclamacion.valida)
        registra_valida(reclamacion);
    else // even under the name of one that was recorded
        ++m_recuento.rechazadas;
    if (!m_tanda.abierta())
        confirma();
}

void Registrador::registra_valida(Reclamacion& reclamacion)
{
    const auto& referencia = reclamacion.referencia;
    const auto ya = m_hay_anteriores ? m_importaciones.busca(referencia) : std::nullopt;
    if (ya && !m_otra_vez) {
        m_pendientes.push_back({ referencia, reclamacion.fila, ya->vez, ya->clave });
        return;
    }
    clsAtipico cargo;
    CargoTecleado tecleado;
    m_cargos.prepara(reclamacion, cargo, tecleado);
    if (reclamacion.valida) {
        guarda(reclamacion, cargo, tecleado, static_cast<std::int16_t>(ya ? ya->vez + 1 : 1));
        return;
    }
    confirma();
    ++m_recuento.rechazadas;
    for (const auto& error : reclamacion.errores)
        di(error);
}

void Registrador::guarda(
    const Reclamacion& reclamacion, clsAtipico& cargo, const CargoTecleado& tecleado, std::int16_t vez)
{
    const Tanda::Serie serie{ static_cast<std::int16_t>(tecleado.Fecha.anio()), tecleado.Almacen };
    if (!m_tanda.admite(serie))
        confirma();
    try {
        m_tanda.empieza(serie);
    } catch (const Error& error) { // others are still waiting, or the database is gone
        rechaza(
            reclamacion.fila, "«" + reclamacion.referencia + "» no se ha registrado: " + error.descripcion());
        return;
    }
    const auto errores = m_sesion.avisos->errores();
    m_conexion->anotacion = [&](adodb::Connection& conexion) {
        // `Insertar` may have shown an error and left nothing of the charge.
        if (const auto clave = clave_de(cargo); m_sesion.avisos->errores() == errores || busca_cargo(clave))
            m_importaciones.anota(conexion, reclamacion.referencia, vez, clave);
    };
    const auto resultado = GuardarAtipico(cargo, tecleado,
        [](const Contabilizacion& datos) { return std::optional(previsiones_propuestas(datos)); });
    m_conexion->anotacion = nullptr;
    if (resultado.estado != ResultadoGuardado::Estado::Guardado || resultado.InsertarFallido) {
        confirma();
        cuenta_fallida(reclamacion, cargo, vez);
        return;
    }
    m_pendientes.push_back({ reclamacion.referencia, reclamacion.fila, vez, clave_de(cargo), true });
}

/// After a save that showed an error: nothing of the charge is there, or the part that was committed, or the
/// whole of it under the code that another process gave it meanwhile.
void Registrador::cuenta_fallida(const Reclamacion& reclamacion, const clsAtipico& cargo, std::int16_t vez)
{
    const auto hay = m_importaciones.busca(reclamacion.referencia);
    const bool consta = hay && hay->vez == vez;
    if (consta && hay->clave.Codigo != cargo.Codigo) {
        m_hay_anteriores = true;
        cuenta({ reclamacion.referencia, reclamacion.fila, vez, hay->clave });
        return;
    }
    rechaza(reclamacion.fila,
        "«" + reclamacion.referencia
            + (consta ? "» se ha guardado a medias como " + hay->clave.Codigo
                        + "; vea qué le falta con: atipicos verificar"
                      : "» no se ha registrado."));
}

void Registrador::di(const Reparo& error)
{
    m_progreso.aparta();
    m_dice(error);
}

void Registrador::rechaza(int fila, const std::string& motivo)
{
    ++m_recuento.rechazadas;
    di({ fila, "", motivo });
}

void Registrador::cuenta(const Pendiente& una)
{
    ++(una.nueva ? m_recuento.nuevas : m_recuento.ya_registradas);
    if (m_tabla.escribe_al_paso())
        m_progreso.aparta();
    m_tabla.agrega(una.referencia, una.clave, una.nueva ? "registrada" : "ya registrada");
}

void Registrador::confirma()
{
    try {
        m_tanda.cierra();
        for (const auto& una : std::exchange(m_pendientes, {}))
            cuenta(una);
    } catch (const Error& error) {
        cuenta_sin_confirmar(error.descripcion());
    }
    const auto contadas = std::exchange(m_sin_contar, 0);
    m_recuento.miradas += contadas;
    m_progreso.avanza(contadas);
    m_tanda.descansa();
}

/// After a commit that failed: ordinarily nothing of it is there, but all of it is where only the answer was
/// lost.
void Registrador::cuenta_sin_confirmar(const std::string& motivo)
{
    std::string sin_respuesta; // of the database, which is then not asked again
    for (auto& una : std::exchange(m_pendientes, {})) {
        std::optional<Importada> hay;
        try {
            if (una.nueva && sin_respuesta.empty())
                hay = m_importaciones.busca(una.referencia);
        } catch (const Error& error) {
            sin_respuesta = error.descripcion();
        }
        if (una.nueva && !sin_respuesta.empty()) {
            rechaza(una.fila,
                "no se sabe si «" + una.referencia + "» se ha registrado: " + sin_respuesta
                    + " Para saberlo, registre el mismo fichero otra vez.");
        } else if (una.nueva && (!hay || hay->vez != una.vez)) {
            rechaza(una.fila, "«" + una.referencia + "» no se ha registrado: " + motivo);
        } else {
            una.nueva = una.nueva && hay->clave.Codigo == una.clave.Codigo;
            una.clave = hay ? hay->clave : una.clave;
            cuenta(una);
        }
    }
}

void Registrador::termina()
{
    m_progreso.aparta();
    m_tabla.termina();
}

} // namespace atipicos::app
