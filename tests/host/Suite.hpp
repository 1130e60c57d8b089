#pragma once

#include "context/modComun.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/orvalin/Catalogos.hpp"
#include "host/orvalin/Empresa.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/Contexto.hpp"

namespace atipicos::pruebas {

/// The component on the sample company 1 and its two real libraries; user 12, on 21/11/2026 at 9:05:03.
struct Suite : BasesDeMuestra {
    bexmor::Biblioteca biblioteca{ bases.bexmor };
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    orvalin::Catalogos catalogos{ bases.orvalin, 1 };

    Suite()
    {
        auto contable = biblioteca.NuevaEmpresa();
        contable->Codigo = 1;
        EXPECT_TRUE(contable->Cargar());
        auto reloj = std::make_shared<RelojDePrueba>();
        reloj->valor = dia_y_hora("21/11/2026", 9, 5, 3);
        usa_empresa(1);
        modComun::set_ConexionOrvalin(bases.orvalin);
        modComun::set_EmpresaBexmor(std::move(contable));
        modComun::set_ConexionBexmor(bases.bexmor);
        modComun::set_MsgBox(avisos);
        modComun::set_Reloj(reloj);
    }
    Suite(const Suite&) = delete;
    Suite& operator=(const Suite&) = delete;
    ~Suite() override { vacia_contexto(); }

    void usa_empresa(std::int16_t codigo) const
    {
        modComun::set_EmpresaOrvalin(std::make_shared<orvalin::Empresa>(bases.orvalin, codigo, 12));
    }
};

} // namespace atipicos::pruebas
