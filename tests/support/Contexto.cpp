#include "tests/support/Contexto.hpp"

#include <fstream>

namespace atipicos::pruebas {

namespace {

    /// A value that the test itself has written wrongly.
    [[noreturn]] void mal_escrito(const char* texto, const char* como, Donde donde)
    {
        throw Error(numero_error::tipos_no_coinciden, "pruebas",
            std::string(donde.fichero()) + ":" + std::to_string(donde.linea()) + ": «" + texto
                + "»: en las pruebas se escribe " + como,
            donde);
    }

}

Date dia(const char* texto, Donde donde)
{
    const auto fecha = Date::de_texto(texto);
    if (!fecha)
        mal_escrito(texto, "21/11/2026", donde);
    return *fecha;
}

Date dia_y_hora(const char* texto, int horas, int minutos, int segundos, Donde donde)
{
    return Date(dia(texto, donde).instante() + std::chrono::hours(horas) + std::chrono::minutes(minutos)
        + std::chrono::seconds(segundos));
}

Currency moneda(const char* texto, Donde donde)
{
    try {
        return Currency::de_texto(texto, donde);
    } catch (const Error&) {
        mal_escrito(texto, "1234.56", donde);
    }
}

std::string linea_nombrada(const std::string& texto_aviso, const std::string& fichero)
{
    if (!texto_aviso.starts_with("["))
        return {};
    const int buscada = std::stoi(texto_aviso.substr(1));
    std::ifstream fuente(std::string(ATIPICOS_FUENTES) + "/" + fichero);
    std::string linea;
    for (int i = 0; i < buscada; ++i)
        if (!std::getline(fuente, linea))
            return {};
    const auto primero = linea.find_first_not_of(' ');
    return primero == std::string::npos ? std::string() : linea.substr(primero);
}

Contexto::Contexto()
{
    empresa->parametros
        = { { "UsuarioActual", "12" }, { "Proveedores_AtipcosImpuesto", "1" }, { "GenerarPrevPagos", "1" },
              { "Raiz_ProveedoresDeudor", "440" }, { "Raiz_ProveedoresDeudaCortoPlazo", "521" },
              { "Conta_CtoAutIgicDebe", "47" }, { "Concepto_Atipicos_Deudor", "S/Reclamación %DOCUMENTO%" },
              { "Concepto_Atipicos_Ingreso", "Atípico %NOMBREPROVEEDOR%" },
              { "Concepto_Atipicos_Impuesto", "IGIC %NOMBREPROVEEDOR%" },
              { "Concepto_Atipicos_Proveedor", "N/Cargo %DOCUMENTO% (%DOCUMENTO%)" },
              { "Proveedores_DptoIngresoRappels", "9" } };
    empresa->porcentajes
        = { { std::int16_t{ 0 }, Currency() }, { std::int16_t{ 1 }, Currency::de_entero(7) } };
    reloj->valor = dia_y_hora("21/11/2026", 9, 5, 3);

    modComun::set_EmpresaOrvalin(empresa);
    modComun::set_ConexionOrvalin(gestion);
    modComun::set_EmpresaBexmor(biblioteca->NuevaEmpresa(Donde::aqui()));
    modComun::set_ConexionBexmor(contabilidad);
    modComun::set_MsgBox(avisos);
    modComun::set_Reloj(reloj);
}

Contexto::~Contexto() { vacia_contexto(); }

void vacia_contexto()
{
    modComun::set_EmpresaOrvalin(nullptr);
    modComun::set_ConexionOrvalin(nullptr);
    modComun::set_EmpresaBexmor(nullptr);
    modComun::set_ConexionBexmor(nullptr);
    modComun::set_MsgBox(nullptr);
    modComun::set_Reloj(nullptr);
    modComun::set_BibliotecaOrvalin(nullptr);
    modComun::set_PrevisionesCargo(nullptr);
    modComun::set_Borradores(nullptr);
}

} // namespace atipicos::pruebas
