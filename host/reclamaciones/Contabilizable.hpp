#pragma once

#include "host/orvalin/Catalogos.hpp"
#include "host/reclamaciones/Reclamacion.hpp"
#include "host/sesion/AvisosRecogidos.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace atipicos {
struct CargoTecleado;
}

namespace atipicos::app {

/// Whether accounting would take a charge, found out before anything is written. What it asks of a company, a
/// year, an account or a supplier's terms it asks once.
class Contabilizable {
public:
    Contabilizable(const orvalin::Catalogos& catalogos, const qvbxemp::Biblioteca& biblioteca,
        adodb::Connection& bexmor, AvisosRecogidos& avisos);

    /// What stands against posting it, with its row and column; empty: nothing, or the company's charges are
    /// not posted. The claim has been prepared and is valid.
    [[nodiscard]] std::vector<Reparo> reparos(const Reclamacion& reclamacion, const CargoTecleado& tecleado);

private:
    using Plan = std::pair<std::int16_t, std::int16_t>; ///< an accounting company and its year

    struct Ejercicio {
        std::unique_ptr<qvbxemp::Empresa> empresa; ///< null: there is none
        std::unique_ptr<qvbxemp::ServicioCuentas> servicio;
        std::optional<std::pair<Date, Date>> dias; ///< nothing: it is not open
        std::map<std::string, bool> cuentas; ///< whether the plan has them
    };

    struct Examen; ///< of one claim

    Ejercicio& ejercicio(Plan plan);
    void mira_ejercicio(Examen& examen);
    void mira_cuenta(Examen& examen, int fila, const char* columna, const std::string& cuenta);
    void mira_proveedor(Examen& examen);
    void mira_ingresos(Examen& examen);
    void mira_importes(Examen& examen);
    void mira_condiciones(Examen& examen);

    const orvalin::Catalogos& m_catalogos;
    const qvbxemp::Biblioteca& m_biblioteca;
    adodb::Connection& m_bexmor;
    AvisosRecogidos& m_avisos;
    std::map<std::int16_t, orvalin::Almacen> m_almacenes;
    std::map<std::int32_t, orvalin::CuentasProveedor> m_cuentas;
    std::map<Plan, Ejercicio> m_ejercicios;
    std::map<std::tuple<std::int32_t, std::int16_t, std::string>, std::string> m_condiciones;
};

} // namespace atipicos::app
