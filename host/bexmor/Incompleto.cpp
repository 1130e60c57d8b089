#include "host/bexmor/Incompleto.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr std::size_t letras_de_motivo = 200;

    /// As much of a text as its column takes.
    std::string lo_que_cabe(const std::string& motivo)
    {
        std::size_t letras = 0;
        std::size_t fin = 0;
        while (fin < motivo.size()) {
            std::size_t siguiente = fin + 1;
            while (
                siguiente < motivo.size() && (static_cast<unsigned char>(motivo[siguiente]) & 0xC0U) == 0x80U)
                ++siguiente;
            letras += siguiente - fin > 3 ? 2 : 1; // those that UTF-16 writes as two
            if (letras > letras_de_motivo)
                break;
            fin = siguiente;
        }
        return motivo.substr(0, fin);
    }

}

void deja_incompleto(
    const qvbxemp::Empresa& empresa, std::int32_t asiento, const std::string& motivo, Donde donde) noexcept
{
    try {
        conexion(empresa, donde)
            .Execute("INSERT INTO Asientos_Incompletos (Cod_Empresa, Cod_Ejercicio, Numero, Motivo)"
                     " SELECT Cod_Empresa, Cod_Ejercicio, Numero, "
                    + sql::literal(lo_que_cabe(motivo), donde) + " FROM Asientos" + filtro(empresa)
                    + " AND Numero =" + std::to_string(asiento),
                nullptr, adodb::CommandType::Text, donde);
    } catch (...) { // NOLINT(bugprone-empty-catch): it is marked already, or all of it will be undone
    }
}

} // namespace atipicos::bexmor
