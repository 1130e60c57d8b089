#include "host/bexmor/Empresa.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::bexmor {

Empresa::Empresa(const qvbxemp::Biblioteca& biblioteca)
    : m_biblioteca(biblioteca)
{
}

bool Empresa::Cargar(Donde donde)
{
    m_parametros.reset();
    m_cuenta_banco_pago.clear();
    m_longitud_cuenta = 0;
    m_tipos.clear();
    m_cargada = Codigo;
    // An entry needs its company and a tax type of it: both come in the one statement.
    const auto rs = consulta(*this,
        "SELECT e.LongitudCuenta, e.CuentaBancoPago, t.Codigo AS Tipo, t.Porcentaje, t.Imp_CtaRep"
        " FROM Empresas e LEFT JOIN Tipos_Impuesto t ON t.Cod_Empresa = e.Codigo WHERE e.Codigo ="
            + std::to_string(Codigo),
        donde);
    const bool existe = !rs->Eof();
    if (existe) {
        m_longitud_cuenta = adodb::entero(*rs, "LongitudCuenta", donde);
        m_cuenta_banco_pago = adodb::nombre(*rs, "CuentaBancoPago", donde);
    }
    for (; !rs->Eof(); rs->MoveNext(donde))
        if (!rs->Fields("Tipo", donde).Value(donde).es_nulo())
            m_tipos[adodb::entero(*rs, "Tipo", donde)] = lee_tipo_impuesto(*rs, donde);
    rs->Close(donde);
    return existe;
}

const qvbxemp::TipoImpuesto* Empresa::tipo_impuesto(std::int16_t tipo) const
{
    const auto lugar = m_tipos.find(tipo);
    return m_cargada == Codigo && lugar != m_tipos.end() ? &lugar->second : nullptr;
}

Variant Empresa::Parametro(std::string_view clave, Donde donde) const
{
    if (!m_parametros)
        m_parametros = lee_parametros(donde);
    const auto lugar = m_parametros->find(clave);
    return lugar == m_parametros->end() ? Variant() : Variant(lugar->second);
}

Empresa::Parametros Empresa::lee_parametros(Donde donde) const
{
    Parametros parametros;
    const auto rs = consulta(
        *this, "SELECT Clave, Valor FROM Parametros WHERE Cod_Empresa =" + std::to_string(Codigo), donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        parametros.emplace(adodb::texto(*rs, "Clave", donde), adodb::texto(*rs, "Valor", donde));
    rs->Close(donde);
    return parametros;
}

std::string Empresa::CuentaBancoPago(Donde) const { return m_cuenta_banco_pago; }

int Empresa::LongitudCuenta(Donde) const { return m_longitud_cuenta; }

} // namespace atipicos::bexmor
