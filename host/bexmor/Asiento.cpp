#include "host/bexmor/Asiento.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

#include <limits>

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente_asiento = "QVBXEMP:Asiento";
    constexpr auto ultimo_numero = std::numeric_limits<std::int32_t>::max();

}

Asiento::Asiento(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

void Asiento::Crear(Donde donde)
{
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
        throw Error(error_contable, fuente_asiento,
            "El ejercicio " + ejercicio + " no está abierto en la empresa contable "
                + std::to_string(m_empresa.Codigo) + ".",
            donde);
    const auto inicio = CDate(rs->Fields("Inicio", donde).Value(donde), donde);
    const auto fin = CDate(rs->Fields("Fin", donde).Value(donde), donde);
    rs->Close(donde);
    if (Fecha.solo_dia() < inicio || Fecha.solo_dia() > fin)
        throw Error(error_contable, fuente_asiento,
            "La fecha " + Fecha.texto() + " está fuera del ejercicio " + ejercicio
                + " de la empresa contable " + std::to_string(m_empresa.Codigo) + ".",
            donde);
}

/// Only what is out of the ordinary, the first entry of a year among it, costs more than two statements: the
/// one that takes the number makes sure of the year itself, and so of what it is at that moment.
std::int32_t Asiento::toma_numero(Donde donde) const
{
    const auto contador = filtro(m_empresa);
    const auto dia = sql::literal(Fecha.solo_dia());
    std::int32_t tomados = 0;
    conexion(m_empresa, donde)
        .Execute("UPDATE Contador_Asientos SET Numero = Numero + 1" + contador + " AND Numero <"
                + std::to_string(ultimo_numero) + " AND EXISTS (SELECT 1 FROM Ejercicios WHERE Cod_Empresa ="
                + std::to_string(m_empresa.Codigo) + " AND Ejercicio =" + std::to_string(m_empresa.Ejercicio)
                + " AND Inicio <=" + dia + " AND Fin >=" + dia + ")",
            &tomados, adodb::CommandType::Text, donde);
    if (tomados == 0) {
        comprueba_ejercicio(donde);
        return abre_contador(donde);
    }
    const auto rs = consulta(m_empresa, "SELECT Numero FROM Contador_Asientos" + contador, donde);
    return CLng(rs->Fields("Numero", donde).Value(donde), donde);
}

/// The number from a counter that the statement above has not found, or found at its end.
std::int32_t Asiento::abre_contador(Donde donde) const
{
    const auto rs = conexion(m_empresa, donde).CreateRecordset();
    rs->Open("SELECT * FROM Contador_Asientos" + filtro(m_empresa), adodb::CursorType::Keyset,
        adodb::LockType::Pessimistic, adodb::CommandType::Text, donde);
    std::int32_t numero = 1;
    if (rs->Eof()) {
        rs->AddNew(donde);
        rs->Fields("Cod_Empresa", donde).Value(std::int32_t{ m_empresa.Codigo }, donde);
        rs->Fields("Cod_Ejercicio", donde).Value(std::int32_t{ m_empresa.Ejercicio }, donde);
    } else { // another user has just opened it
        const auto ultimo = CLng(rs->Fields("Numero", donde).Value(donde), donde);
        if (ultimo == ultimo_numero)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        numero = ultimo + 1;
    }
    rs->Fields("Numero", donde).Value(numero, donde);
    rs->Update(donde);
    rs->Close(donde);
    return numero;
}

} // namespace atipicos::bexmor
