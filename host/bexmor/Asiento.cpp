#include "host/bexmor/Asiento.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

#include <limits>

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente = "QVBXEMP:Asiento";

}

Asiento::Asiento(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

void Asiento::Crear(Donde donde)
{
    comprueba_ejercicio(donde);
    const auto numero = toma_numero(donde);
    conexion(m_empresa, donde)
        .Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES ("
                + valores(m_empresa) + ", " + std::to_string(numero) + ", " + sql::literal(Fecha) + ", "
                + sql::literal(m_empresa.UsuarioActual, donde) + ")",
            nullptr, adodb::CommandType::Text, donde);
    Numero = numero;
    m_linea = 0;
}

std::int32_t Asiento::SiguienteLinea(Donde donde)
{
    if (m_linea == std::numeric_limits<std::int32_t>::max())
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    return ++m_linea;
}

Currency Asiento::Descuadre(Donde donde) const
{
    Currency descuadre;
    const auto rs = consulta(m_empresa,
        "SELECT Debe, Haber FROM Apuntes" + filtro(m_empresa) + " AND Asiento =" + std::to_string(Numero),
        donde);
    for (; !rs->Eof(); rs->MoveNext(donde)) {
        descuadre += { CCur(rs->Fields("Debe", donde).Value(donde), donde), donde };
        descuadre -= { CCur(rs->Fields("Haber", donde).Value(donde), donde), donde };
    }
    rs->Close(donde);
    return descuadre;
}

void Asiento::comprueba_ejercicio(Donde donde) const
{
    const auto ejercicio = std::to_string(m_empresa.Ejercicio);
    const auto rs = consulta(m_empresa,
        "SELECT Inicio, Fin FROM Ejercicios WHERE Cod_Empresa =" + std::to_string(m_empresa.Codigo)
            + " AND Ejercicio =" + ejercicio,
        donde);
    if (rs->Eof())
        throw Error(error_contable, fuente,
            "El ejercicio " + ejercicio + " no está abierto en la empresa contable "
                + std::to_string(m_empresa.Codigo) + ".",
            donde);
    const auto inicio = CDate(rs->Fields("Inicio", donde).Value(donde), donde);
    const auto fin = CDate(rs->Fields("Fin", donde).Value(donde), donde);
    rs->Close(donde);
    if (Fecha.solo_dia() < inicio || Fecha.solo_dia() > fin)
        throw Error(error_contable, fuente,
            "La fecha " + Fecha.texto() + " está fuera del ejercicio " + ejercicio
                + " de la empresa contable " + std::to_string(m_empresa.Codigo) + ".",
            donde);
}

std::int32_t Asiento::toma_numero(Donde donde) const
{
    const auto rs = conexion(m_empresa, donde).CreateRecordset();
    rs->Open("SELECT * FROM Contador_Asientos" + filtro(m_empresa), adodb::CursorType::Keyset,
        adodb::LockType::Pessimistic, adodb::CommandType::Text, donde);
    std::int32_t numero = 1;
    if (rs->Eof()) {
        rs->AddNew(donde);
        rs->Fields("Cod_Empresa", donde).Value(std::int32_t{ m_empresa.Codigo }, donde);
        rs->Fields("Cod_Ejercicio", donde).Value(std::int32_t{ m_empresa.Ejercicio }, donde);
    } else {
        const auto ultimo = CLng(rs->Fields("Numero", donde).Value(donde), donde);
        if (ultimo == std::numeric_limits<std::int32_t>::max())
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        numero = ultimo + 1;
    }
    rs->Fields("Numero", donde).Value(numero, donde);
    rs->Update(donde);
    rs->Close(donde);
    return numero;
}

} // namespace atipicos::bexmor
