#pragma once

#include "host/reclamaciones/CargosReclamados.hpp"
#include "host/reclamaciones/ConexionConAnotacion.hpp"
#include "host/reclamaciones/FicheroReclamaciones.hpp"
#include "host/reclamaciones/Importaciones.hpp"
#include "host/reclamaciones/TablaReclamaciones.hpp"
#include "host/reclamaciones/Tanda.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Progreso.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::app {

/// Records claims one after the other, many in one commit, and tells of each what has become of it once that
/// is so: the table on standard output, what was wrong through `dice`. While a commit is pending nothing is
/// written anywhere, which could keep the others waiting, but for the error boxes of the save itself.
class Registrador {
public:
    using Dice = std::function<void(const Reparo&)>;

    struct Opciones {
        bool otra_vez = false; ///< also what has been recorded
        bool por_serie = false; ///< see `Tanda`
        std::size_t total = 0; ///< claims of the file
    };

    struct Recuento {
        std::size_t miradas = 0; ///< claims of which it is known what has become of them
        int nuevas = 0;
        int ya_registradas = 0;
        int rechazadas = 0;
    };

    Registrador(Sesion& sesion, Importaciones importaciones, const Opciones& opciones, Dice dice);
    Registrador(const Registrador&) = delete;
    Registrador& operator=(const Registrador&) = delete;
    ~Registrador(); ///< undoes what is not committed

    void registra(Reclamacion& reclamacion);
    void confirma(); ///< commits what is pending and tells it
    void termina(); ///< writes what is still to be written of the table; nothing pending is told

    [[nodiscard]] const Recuento& recuento() const noexcept { return m_recuento; }
    [[nodiscard]] const TablaReclamaciones& tabla() const noexcept { return m_tabla; }

private:
    /// A claim that is told with the next commit.
    struct Pendiente {
        std::string referencia;
        int fila = 0;
        std::int16_t vez = 0;
        ClaveAtipico clave;
        bool nueva = false; ///< saved in this run
    };

    void registra_valida(Reclamacion& reclamacion);
    void guarda(
        const Reclamacion& reclamacion, clsAtipico& cargo, const CargoTecleado& tecleado, std::int16_t vez);
    void cuenta_fallida(const Reclamacion& reclamacion, const clsAtipico& cargo, std::int16_t vez);
    void cuenta_sin_confirmar(const std::string& motivo);
    void cuenta(const Pendiente& una);
    void rechaza(int fila, const std::string& motivo);
    void di(const Reparo& error);

    Sesion& m_sesion;
    Importaciones m_importaciones;
    bool m_otra_vez;
    bool m_hay_anteriores; ///< of the file, recorded before or by another process
    Dice m_dice;
    std::shared_ptr<ConexionConAnotacion> m_conexion;
    CargosReclamados m_cargos;
    Tanda m_tanda;
    std::vector<Pendiente> m_pendientes; ///< in the order of the file
    std::size_t m_sin_contar = 0; ///< claims since the last commit
    Recuento m_recuento;
    Progreso m_progreso;
    TablaReclamaciones m_tabla;
};

} // namespace atipicos::app
