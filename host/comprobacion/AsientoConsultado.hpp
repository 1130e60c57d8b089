#pragma once

#include "host/comprobacion/ClaveAsiento.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <string>
#include <vector>

namespace atipicos::app {

struct ApunteConsultado {
    std::int32_t linea = 0;
    std::string cuenta;
    std::string nombre; ///< of the account
    std::string concepto;
    std::string documento;
    std::string departamento;
    Currency debe;
    Currency haber;
};

struct RegistroConsultado {
    std::int32_t linea = 0;
    std::string documento;
    Currency base;
    std::int16_t tipo = 0;
    Currency cuota;
    Currency total;
};

struct PrevisionConsultada {
    std::int32_t numero = 0;
    std::string cuenta;
    Currency importe;
    std::string tipo_doc; ///< its name, empty for none
    Date vencimiento;
    std::string banco;
};

/// An entry as a person asks for it.
struct AsientoConsultado {
    bool existe = false;
    std::vector<ApunteConsultado> apuntes; ///< in order of line, as the others
    std::vector<RegistroConsultado> registros;
    std::vector<PrevisionConsultada> previsiones;
};

/// The rows of an entry in the accounting database; `existe` is false and all are empty where there is none.
[[nodiscard]] AsientoConsultado consulta_asiento(adodb::Connection& bexmor, const ClaveAsiento& clave);

} // namespace atipicos::app
