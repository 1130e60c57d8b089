#pragma once

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/comprobacion/CargosLeidos.hpp"
#include "host/comprobacion/CuentasProveedores.hpp"
#include "host/comprobacion/EjerciciosAbiertos.hpp"
#include "host/comprobacion/Pertenencia.hpp"
#include "host/comprobacion/Regularizados.hpp"
#include "host/comprobacion/SinCargo.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/terminal/Progreso.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace atipicos::app {

/// One reading of both databases. The charges are remembered in few bytes each; of accounting no more than
/// what was found.
class Revision {
public:
    explicit Revision(const bases::Bases& bases);

    [[nodiscard]] Verificacion revisa();

private:
    struct EmpresaLeida {
        int decimales = 2;
        std::int32_t enlace = 0;
    };
    /// The lines of the charge whose lines are being read.
    struct LineasEnCurso {
        CargoLeido* cargo = nullptr;
        std::int32_t ultima = 0;
        bool seguidas = true;
        Currency suma;
        HuellaImportes huella;
    };

    void lee_catalogos();
    void lee_incompletos();
    void lee_cargos();
    void revisa_lineas();
    void cierra_lineas();
    void revisa_suma(CargoLeido& cargo, const LineasEnCurso& lineas);
    void revisa_cabecera(CargoLeido& cargo);

    void revisa_asiento(const AsientoContabilizado& asiento);
    void revisa_apuntes(const AsientoContabilizado& asiento);
    [[nodiscard]] bool asigna(const AsientoContabilizado& asiento);
    void revisa_contabilizacion(const CargoLeido& cargo, const AsientoContabilizado& asiento);
    void queda_sin_asiento(CargoLeido& cargo, const std::string& motivo);
    void revisa_sin_visitar();

    void difiere(const std::string& que) { m_resultado.diferencias.push_back(que); }
    void difiere(const CargoLeido& cargo, const std::string& que);
    void reune();

    const bases::Bases& m_bases;
    Progreso m_progreso{ "Comprobando" };
    Verificacion m_resultado;
    std::map<std::int16_t, EmpresaLeida> m_empresas;
    std::set<std::int16_t> m_tipos_doc;
    Almacenes m_almacenes;
    std::map<std::pair<std::int16_t, std::int16_t>, std::int32_t> m_contadores; ///< of entries, by year
    std::map<ClaveAsiento, std::string> m_incompletos; ///< entries that say so, with why
    CuentasProveedores m_cuentas;
    Pertenencia m_pertenencia{ m_cuentas, m_almacenes };
    EjerciciosAbiertos m_ejercicios;
    Regularizados m_regularizados;
    std::optional<CargosLeidos> m_cargos;
    LineasEnCurso m_en_curso;
    std::map<ClaveContenida, std::vector<std::string>> m_de_cargos; ///< differences
    std::map<ClaveContenida, CargoSinAsiento> m_sin_asiento;
    std::optional<SinCargo> m_sin_cargo;
};

} // namespace atipicos::app
