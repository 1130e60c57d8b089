#pragma once

#include "host/reclamaciones/CargosReclamados.hpp"
#include "host/reclamaciones/ConexionConAnotacion.hpp"
#include "host/reclamaciones/FicheroReclamaciones.hpp"
#include "host/reclamaciones/Importaciones.hpp"
#include "host/reclamaciones/RevisionReclamaciones.hpp"
#include "host/reclamaciones/TablaReclamaciones.hpp"
#include "host/reclamaciones/Tanda.hpp"
#include "host/sesion/AvisosRecogidos.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Progreso.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace atipicos {
struct Contabilizacion;
struct Prevision;
}

namespace atipicos::app {

/// Records claims one after the other, many in one commit, and tells of each what has become of it once that
/// is so: the table on standard output, what was wrong through `dice`. A claim whose save shows an error is
/// undone whole. While a commit is pending nothing is written anywhere, which could keep the others waiting.
/// What was not committed when the line to a server was lost is looked up and, where it is not there,
/// recorded again.
class Registrador {
public:
    using Dice = RevisionReclamaciones::Dice;

    struct Opciones {
        Revisadas revisadas; ///< what is known of the claims of the file
        std::set<std::string> otra_vez; ///< references that are recorded though they have been
        bool por_serie = false; ///< see `Tanda`
    };

    struct Recuento {
        int nuevas = 0;
        int ya_registradas = 0;
        int rechazadas = 0;
        std::vector<std::string> sin_previsiones; ///< the first new ones whose terms give no forecasts
        std::size_t cuantas_sin_previsiones = 0;

        /// Claims of which it is known what has become of them.
        [[nodiscard]] std::size_t miradas() const noexcept
        {
            return static_cast<std::size_t>(nuevas) + static_cast<std::size_t>(ya_registradas)
                + static_cast<std::size_t>(rechazadas);
        }
    };

    /// `avisos` is where the error boxes of the component are kept meanwhile.
    Registrador(Sesion& sesion, AvisosRecogidos& avisos, const Importaciones& importaciones,
        CargosReclamados& cargos, Opciones opciones, Dice dice);
    Registrador(const Registrador&) = delete;
    Registrador& operator=(const Registrador&) = delete;
    ~Registrador(); ///< undoes what is not committed

    void registra(Reclamacion& reclamacion);
    void confirma(); ///< commits what is pending and tells it
    void termina(); ///< writes what is still to be written of the table; nothing pending is told

    /// Whether it makes no sense to go on: the disk is full, or the server gone. Nothing more is recorded.
    [[nodiscard]] bool parado() const noexcept { return m_parado; }

    [[nodiscard]] const Recuento& recuento() const noexcept { return m_recuento; }
    [[nodiscard]] const TablaReclamaciones& tabla() const noexcept { return m_tabla; }

private:
    /// A claim that is told with the next commit.
    struct Pendiente {
        std::string referencia;
        int fila = 0;
        std::int16_t vez = 0;
        ClaveCargo clave;
        bool nueva = false; ///< saved in this run
        bool sin_previsiones = false; ///< its terms give none
        Reclamacion reclamacion = {}; ///< of a new one: to be recorded again
    };

    void intenta(Reclamacion& reclamacion, std::int16_t vez);
    void registra_valida(Reclamacion& reclamacion, std::int16_t vez);
    void registra_otra_vez(Pendiente& una);
    bool es_conocida(const Reclamacion& reclamacion, const CargoTecleado& tecleado, std::int16_t& vez);
    void guarda(Reclamacion& reclamacion, clsAtipico& cargo, const CargoTecleado& tecleado, std::int16_t vez);
    bool empieza(const Reclamacion& reclamacion);
    std::vector<Prevision> previsiones(const Contabilizacion& datos, bool& sin_previsiones);
    void cuenta_fallida(const Reclamacion& reclamacion, const clsAtipico& cargo, std::int16_t vez,
        const std::string& contenido, const std::string& motivo);
    bool cierra(); ///< commits what is pending; false: the line was lost, and it is to be recorded again
    void aparta_por_repetir(const Error& error);
    void repite();
    void reanuda(const Pendiente& una) const;
    void cuenta_sin_confirmar(std::vector<Pendiente> todas, const std::string& motivo);
    [[nodiscard]] static bool es_de_la_linea(const Error& error); ///< that it is lost, or cannot be opened
    void deja_si_no_esta(const Error& error);
    void cuenta(const Pendiente& una);
    void rechaza(int fila, const std::string& referencia, const std::string& motivo);
    void di(const char* que, const Reparo& reparo);

    Sesion& m_sesion;
    AvisosRecogidos& m_avisos;
    const Importaciones& m_importaciones;
    Opciones m_opciones;
    Dice m_dice;
    std::shared_ptr<ConexionConAnotacion> m_conexion;
    CargosReclamados& m_cargos;
    Tanda m_tanda;
    std::vector<Pendiente> m_pendientes; ///< in the order of the file
    std::vector<Pendiente> m_por_repetir; ///< of which the line has taken the commit, or nobody knows
    std::string m_por_que_repetir;
    int m_perdidas = 0; ///< of the line, since something was committed
    bool m_repitiendo = false;
    std::size_t m_sin_contar = 0; ///< claims since the last commit
    bool m_parado = false;
    Recuento m_recuento;
    Progreso m_progreso;
    TablaReclamaciones m_tabla;
};

} // namespace atipicos::app
