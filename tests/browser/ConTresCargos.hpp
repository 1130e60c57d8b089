#pragma once

#include "tests/browser/EscenaVisor.hpp"

namespace atipicos::pruebas {

/// Three charges of 21/11/2026: two of warehouse 1 and one of warehouse 2.
struct ConTresCargos : EscenaVisor {
    ConTresCargos()
    {
        for (const int almacen : { 1, 2, 1 })
            banco.guarda({}, static_cast<std::int16_t>(almacen));
        banco.avisos->dichos.clear();
    }
};

/// The same, all of them listed.
struct ConTresListados : ConTresCargos {
    ConTresListados() { abre_y_busca(); }
    void responde(Respuesta respuesta) { banco.avisos->respuestas = { respuesta }; }
};

} // namespace atipicos::pruebas
