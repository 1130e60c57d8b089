#pragma once

#include <random>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// Statements at random, always the same ones of a seed, over the table
/// `Pruebas (Id INT, Corto SMALLINT, Entero INT, Dinero MONEY, Fecha DATETIME, Marca BIT, Texto
/// NVARCHAR(20))`. They are made from not too many patterns, so that most differ from an earlier one in
/// values alone.
class SentenciasAlAzar {
public:
    explicit SentenciasAlAzar(unsigned semilla);

    [[nodiscard]] std::string una(); ///< many of them fail
    [[nodiscard]] unsigned uno_de(unsigned cuantos); ///< from 0 on

private:
    [[nodiscard]] std::string patron();
    [[nodiscard]] std::string condicion();
    [[nodiscard]] std::string columna();
    [[nodiscard]] std::string hueco(const std::string& columna);
    [[nodiscard]] std::string literal(char de); ///< mostly one that the column of that initial takes

    std::minstd_rand m_azar;
    std::vector<std::string> m_patrones;
};

} // namespace atipicos::pruebas
