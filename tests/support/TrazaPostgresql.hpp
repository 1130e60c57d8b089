#pragma once

#include <array>
#include <cstdio>
#include <libpq-fe.h>
#include <string>
#include <string_view>

namespace atipicos::pruebas {

/// Listens to what a client says to its server while something is done.
class TrazaPostgresql {
public:
    template <class Uso> TrazaPostgresql(PGconn* linea, Uso uso)
    {
        std::FILE* fichero = std::tmpfile();
        PQtrace(linea, fichero);
        uso();
        PQuntrace(linea);
        std::rewind(fichero);
        std::array<char, 65'536> trozo{};
        while (const auto leidos = std::fread(trozo.data(), 1, trozo.size(), fichero))
            m_texto.append(trozo.data(), leidos);
        std::fclose(fichero);
    }

    [[nodiscard]] std::size_t viajes() const
    {
        return cuantas("\tSync") + cuantas("\tQuery");
    } ///< round trips

    [[nodiscard]] std::size_t cuantas(std::string_view palabra) const ///< times that it was said, or answered
    {
        std::size_t veces = 0;
        for (auto i = m_texto.find(palabra); i != std::string::npos; i = m_texto.find(palabra, i + 1))
            ++veces;
        return veces;
    }

private:
    std::string m_texto;
};

} // namespace atipicos::pruebas
