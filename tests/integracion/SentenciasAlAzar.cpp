#include "tests/integracion/SentenciasAlAzar.hpp"

#include <array>
#include <map>

namespace atipicos::pruebas {

namespace {

    using Literales = std::vector<std::string>;

    /// By initial of the column.
    const std::map<char, Literales>& adecuados()
    {
        static const std::map<char, Literales> todos{
            { 'C', { "0", "1", "-1", "7", "32767", "-32768", "NULL" } },
            { 'E', { "0", "1", "-1", "12", "2147483647", "-2147483648", "'12'", "NULL" } },
            { 'D', { "0", "1", "-1", "12.5", "-0.0001", "33.3333", "99999999999.99", "-7", "0.10", "NULL" } },
            { 'F',
                { "'21/11/2026'", "'29/02/2024'", "'1/1/2026'", "'21/11/2026 9:05:03'", "'9:05:03'", "''",
                    "'31/12/1999'", "NULL" } },
            { 'M', { "0", "1", "1", "0", "NULL" } },
            { 'T',
                { "''", "'a'", "'ñandú'", "'d''Or'", "'''así'''", "'12.5'", "'? $1'", "'a;b -- c'", "'A%'",
                    "NULL" } },
        };
        return todos;
    }

    const Literales& cualesquiera()
    {
        static const Literales todos{ "2", "-2", "40000", "2147483648", "-2147483649", "12345678901234567890",
            "922337203685477.5807", "1234567890123456789.5", "0.00005", "-0.0", "7.0", "1e3", "''", "'x'",
            "'31/02/2026'", "'32/13/2026'", "'21/11/2026'", "'un texto de más de veinte signos, ñ'", "'-1'",
            "' 7 '", "NULL" };
        return todos;
    }

    constexpr unsigned patrones = 150;

}

SentenciasAlAzar::SentenciasAlAzar(unsigned semilla)
    : m_azar(semilla)
{
    for (unsigned i = 0; i < patrones; ++i)
        m_patrones.push_back(patron());
}

unsigned SentenciasAlAzar::uno_de(unsigned cuantos) { return static_cast<unsigned>(m_azar()) % cuantos; }

std::string SentenciasAlAzar::una()
{
    std::string sql;
    const auto& molde = m_patrones[uno_de(patrones)];
    for (std::size_t i = 0; i < molde.size(); ++i)
        sql += molde[i] == '{' ? literal(molde[++i]) : std::string(1, molde[i]);
    return sql;
}

std::string SentenciasAlAzar::columna()
{
    static const std::array<const char*, 7> todas{ "Id", "Corto", "Entero", "Dinero", "Fecha", "Marca",
        "Texto" };
    return todas[uno_de(todas.size())];
}

std::string SentenciasAlAzar::hueco(const std::string& columna) { return std::string("{") + columna[0]; }

std::string SentenciasAlAzar::literal(char de)
{
    if (de == 'I')
        return std::to_string(uno_de(300));
    const auto& unos = uno_de(12) == 0 ? cualesquiera() : adecuados().at(de);
    return unos[uno_de(static_cast<unsigned>(unos.size()))];
}

std::string SentenciasAlAzar::condicion()
{
    const auto una = columna();
    const auto valor = hueco(una);
    switch (uno_de(8)) {
    case 0:
        return una + " IN (" + valor + ", " + valor + ")";
    case 1:
        return una + " BETWEEN " + valor + " AND " + valor;
    case 2:
        return "Texto LIKE {T";
    case 3:
        return "ISNULL(" + una + ", " + valor + ") <> " + valor;
    case 4:
        return "(" + condicion() + " AND " + condicion() + ")";
    case 5:
        return "Id < {I AND " + una + " >= " + valor;
    default:
        return una + " = " + valor;
    }
}

std::string SentenciasAlAzar::patron()
{
    switch (uno_de(11)) {
    case 0:
    case 1:
    case 2:
        return "INSERT INTO Pruebas (Id, Corto, Entero, Dinero, Fecha, Marca, Texto) VALUES ({I, {C, {E, {D, "
               "{F,"
               " {M, {T)";
    case 3: {
        const auto una = columna();
        return "INSERT INTO Pruebas (Id, " + una + ") VALUES ({I, " + hueco(una) + ")";
    }
    case 4: {
        const auto una = columna();
        const auto otra = columna();
        return "UPDATE Pruebas SET " + una + " = " + hueco(una) + ", " + otra + " = " + hueco(otra)
            + " WHERE " + condicion();
    }
    case 5:
        return "UPDATE Pruebas SET Entero = Entero + {E, Dinero = Dinero * {D WHERE Id = {I";
    case 6:
        return "DELETE FROM Pruebas WHERE Id > {I AND " + condicion();
    case 7:
        return "SELECT COUNT(*) AS Cuantos, SUM(Dinero) AS Suma, MAX(Texto) AS Ultimo FROM Pruebas WHERE "
            + condicion();
    case 8:
        return "SELECT Id, Entero + {E AS Mas, Corto * {C AS Por, ISNULL(Dinero, {D) AS Importe, {T AS Fijo"
               " FROM Pruebas WHERE Id BETWEEN {I AND {I ORDER BY Id";
    default:
        return "SELECT *, CASE WHEN " + condicion() + " THEN 1 ELSE 0 END AS Caso FROM Pruebas WHERE "
            + condicion() + (uno_de(9) == 0 ? " AND AND" : "") + " ORDER BY Id";
    }
}

} // namespace atipicos::pruebas
