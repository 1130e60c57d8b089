#include "host/reclamaciones/Registrador.hpp"

#include "charges/clsAtipico.hpp"
#include "context/modComun.hpp"
#include "editor/GuardarAtipico.hpp"
#include "host/reclamaciones/PrevisionesPropuestas.hpp"
#include "posting/GenerarPrev.hpp"

#include <iostream>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t sin_previsiones_dichas = 10;

    ClaveCargo clave_de(const clsAtipico& cargo)
    {
        return { cargo.Cod_Ejercicio, cargo.Cod_Almacen, cargo.Codigo };
    }

    /// As both engines say it, through whatever it has come.
    bool es_disco_lleno(const std::string& motivo)
    {
        return motivo.find("No queda sitio en el disco") != std::string::npos;
    }

    /// While it lives, what is saved gets no entry.
    class SinAsiento {
    public:
        explicit SinAsiento(orvalin::Empresa& empresa)
            : m_empresa(empresa)
        {
            m_empresa.contabiliza(false);
        }
        SinAsiento(const SinAsiento&) = delete;
        SinAsiento& operator=(const SinAsiento&) = delete;
        ~SinAsiento() { m_empresa.contabiliza(true); }

    private:
        orvalin::Empresa& m_empresa;
    };

}

Registrador::Registrador(Sesion& sesion, AvisosRecogidos& avisos, const Importaciones& importaciones,
    CargosReclamados& cargos, Opciones opciones, Dice dice)
    : m_sesion(sesion)
    , m_avisos(avisos)
    , m_importaciones(importaciones)
    , m_opciones(std::move(opciones))
    , m_dice(std::move(dice))
    , m_conexion(std::make_shared<ConexionConAnotacion>(sesion.bases.orvalin))
    , m_cargos(cargos)
    , m_tanda(sesion.bases.transacciones, m_opciones.por_serie)
    , m_progreso("Registrando", m_opciones.revisadas.total)
    , m_tabla(std::cout)
{
    modComun::set_ConexionOrvalin(m_conexion);
}

Registrador::~Registrador() { modComun::set_ConexionOrvalin(m_sesion.bases.orvalin); }

void Registrador::registra(Reclamacion& reclamacion)
{
    if (reclamacion.repetida)
        return; // it counts with its first part
    ++m_sin_contar;
    if (reclamacion.valida && !m_opciones.revisadas.malas.contains(resumen_de(reclamacion.referencia)))
        intenta(reclamacion, 0);
    else // even under the name of one that was recorded
        ++m_recuento.rechazadas;
    if (!m_tanda.abierta())
        confirma();
}

/// What is asked while a unit is open may be where the line is found to be lost.
void Registrador::intenta(Reclamacion& reclamacion, std::int16_t vez)
{
    try {
        registra_valida(reclamacion, vez);
    } catch (const Error& error) {
        if (!es_de_la_linea(error) || !m_tanda.abierta())
            throw;
        if (cierra())
            throw;
        m_por_repetir.push_back(
            { reclamacion.referencia, reclamacion.fila, vez, {}, true, false, std::move(reclamacion) });
    }
}

/// `vez`: the time that it is to have; 0: it is looked up whether it has been recorded.
void Registrador::registra_valida(Reclamacion& reclamacion, std::int16_t vez)
{
    clsAtipico cargo;
    CargoTecleado tecleado;
    m_cargos.prepara(reclamacion, cargo, tecleado);
    if (vez == 0 && es_conocida(reclamacion, tecleado, vez = 1))
        return;
    if (reclamacion.valida)
        return guarda(reclamacion, cargo, tecleado, vez);
    confirma(); // something has gone from the catalogues since the file was gone through
    ++m_recuento.rechazadas;
    for (const auto& error : reclamacion.errores)
        di("error", error);
}

/// Whether the claim has been recorded and is not to be again; if not, `vez` is the time that it is now.
bool Registrador::es_conocida(
    const Reclamacion& reclamacion, const CargoTecleado& tecleado, std::int16_t& vez)
{
    const auto& referencia = reclamacion.referencia;
    if (!m_opciones.revisadas.conocidas.contains(resumen_de(referencia)))
        return false;
    const auto veces = m_importaciones.busca(referencia);
    if (veces.empty())
        return false;
    if (m_opciones.otra_vez.contains(referencia)) {
        vez = static_cast<std::int16_t>(veces.back().vez + 1);
        return false;
    }
    if (const auto* misma = m_importaciones.la_misma(veces, { contenido_de(reclamacion), tecleado })) {
        m_pendientes.push_back({ referencia, reclamacion.fila, misma->vez, misma->clave });
    } else { // so since the file was gone through
        confirma();
        ++m_recuento.rechazadas;
        di("error", { reclamacion.fila, "", con_otro_contenido(referencia, veces.back().clave) });
    }
    return true;
}

/// The forecasts for a claim that is posted; `sin_previsiones`: there should be some and the terms give none.
std::vector<Prevision> Registrador::previsiones(const Contabilizacion& datos, bool& sin_previsiones)
{
    if (m_sesion.empresa->EnlaceContable() != 1)
        return {};
    auto propuestas = previsiones_propuestas(datos, m_avisos);
    sin_previsiones = datos.GenerarPrevisiones && datos.Importe != Currency() && propuestas.empty();
    return propuestas;
}

/// A save of the series of the claim; false, and told, when it cannot begin.
bool Registrador::empieza(const Reclamacion& reclamacion)
{
    const Tanda::Serie serie{ static_cast<std::int16_t>(reclamacion.fecha.anio()), reclamacion.almacen };
    if (!m_tanda.admite(serie))
        confirma();
    if (m_parado)
        return false;
    try {
        m_tanda.empieza(serie);
        return true;
    } catch (const Error& error) { // others are still waiting, or the database is gone
        deja_si_no_esta(error);
        rechaza(reclamacion.fila, reclamacion.referencia, error.descripcion());
        return false;
    }
}

void Registrador::guarda(
    Reclamacion& reclamacion, clsAtipico& cargo, const CargoTecleado& tecleado, std::int16_t vez)
{
    if (!empieza(reclamacion))
        return;
    std::optional<SinAsiento> sin_asiento;
    if (m_opciones.revisadas.sin_asiento.contains(resumen_de(reclamacion.referencia)))
        sin_asiento.emplace(*m_sesion.empresa);
    const auto contenido = contenido_de(reclamacion);
    std::string motivo; // why it is undone
    m_conexion->anotacion = [&](adodb::Connection& conexion) {
        // The save commits what there is when a part of it has shown an error: here nothing of it stays.
        motivo = m_avisos.toma();
        if (!motivo.empty())
            throw Error(no_hecho, "atipicos", motivo);
        m_importaciones.anota(conexion, reclamacion.referencia, contenido, vez, clave_de(cargo));
    };
    bool sin_previsiones = false;
    const auto resultado = GuardarAtipico(cargo, tecleado,
        [&](const Contabilizacion& datos) { return std::optional(previsiones(datos, sin_previsiones)); });
    m_conexion->anotacion = nullptr;
    if (const auto mostrados = m_avisos.toma(); motivo.empty())
        motivo = mostrados;
    if (resultado.estado != ResultadoGuardado::Estado::Guardado || !motivo.empty()) {
        if (cierra())
            cuenta_fallida(reclamacion, cargo, vez, contenido, motivo);
        else
            m_por_repetir.push_back({ reclamacion.referencia, reclamacion.fila, vez, clave_de(cargo), true,
                sin_previsiones, std::move(reclamacion) });
        return;
    }
    m_pendientes.push_back({ reclamacion.referencia, reclamacion.fila, vez, clave_de(cargo), true,
        sin_previsiones, std::move(reclamacion) });
}

/// After a save that showed an error and is undone: another process may have recorded the same claim. Where
/// the products do not share a session, the management side may have been kept.
void Registrador::cuenta_fallida(const Reclamacion& reclamacion, const clsAtipico& cargo, std::int16_t vez,
    const std::string& contenido, const std::string& motivo)
{
    std::vector<Importada> veces;
    try {
        veces = m_importaciones.busca(reclamacion.referencia);
    } catch (const Error& error) { // why the save failed is what matters
        deja_si_no_esta(error);
    }
    if (veces.empty() || veces.back().vez < vez)
        return rechaza(reclamacion.fila, reclamacion.referencia, motivo);
    const auto& otra = veces.back();
    if (!m_sesion.bases.transacciones && otra.clave.Codigo == cargo.Codigo) {
        ++m_recuento.rechazadas;
        return di("error",
            { reclamacion.fila, "",
                "«" + reclamacion.referencia + "» se ha guardado a medias como " + otra.clave.Codigo
                    + "; vea qué le falta con: atipicos verificar (" + motivo + ")" });
    }
    if (otra.contenido != contenido && !otra.contenido.empty())
        return rechaza(reclamacion.fila, reclamacion.referencia, motivo);
    di("aviso", { reclamacion.fila, "", motivo });
    cuenta({ reclamacion.referencia, reclamacion.fila, otra.vez, otra.clave });
}

void Registrador::di(const char* que, const Reparo& reparo)
{
    m_progreso.aparta();
    m_dice(que, reparo);
}

bool Registrador::es_de_la_linea(const Error& error)
{
    const auto* de_la_base = dynamic_cast<const adodb::ErrorBaseDatos*>(&error);
    return de_la_base != nullptr && de_la_base->categoria() == adodb::Categoria::conexion;
}

/// A query opens a lost line again: where it cannot, the server is not there, and the others need not be
/// tried.
void Registrador::deja_si_no_esta(const Error& error) { m_parado = m_parado || es_de_la_linea(error); }

/// A claim of which nothing has been kept. When the disk is full the others need not be tried.
void Registrador::rechaza(int fila, const std::string& referencia, const std::string& motivo)
{
    if (es_disco_lleno(motivo)) {
        if (!std::exchange(m_parado, true))
            di("error", { fila, "", motivo + ". Haga sitio y registre el mismo fichero otra vez." });
        return;
    }
    ++m_recuento.rechazadas;
    di("error", { fila, "", "«" + referencia + "» no se ha registrado: " + motivo });
}

void Registrador::cuenta(const Pendiente& una)
{
    ++(una.nueva ? m_recuento.nuevas : m_recuento.ya_registradas);
    if (una.nueva && una.sin_previsiones && ++m_recuento.cuantas_sin_previsiones <= sin_previsiones_dichas)
        m_recuento.sin_previsiones.push_back(una.referencia);
    if (m_tabla.escribe_al_paso())
        m_progreso.aparta();
    if (!m_tabla.agrega(una.referencia, una.clave, una.nueva ? "registrada" : "ya registrada"))
        di("aviso",
            { una.fila, "",
                "el cargo " + una.clave.Codigo + " de «" + una.referencia
                    + "» se eliminó después. Para registrarla otra vez, dé "
                    + con_otra_vez(una.referencia) });
}

void Registrador::termina()
{
    m_progreso.aparta();
    m_tabla.termina();
}

} // namespace atipicos::app
