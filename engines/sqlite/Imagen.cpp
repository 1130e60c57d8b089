#include "engines/sqlite/Imagen.hpp"

#include "engines/sqlite/Instruccion.hpp"

#include <memory>

namespace atipicos::sqlite {

namespace {

    /// The two bytes of the header that say which log is used with the file: 2, the write-ahead log, which
    /// databases in memory do not know.
    constexpr std::size_t version_de_escritura = 18;
    constexpr std::size_t version_de_lectura = 19;
    constexpr char con_registro_previo = 2;

    struct Libera {
        void operator()(unsigned char* bytes) const noexcept { sqlite3_free(bytes); }
    };

}

std::string imagen(
    const std::filesystem::path& fichero, const std::function<void(const sql::Pareja&)>& llena, Donde donde)
{
    const auto sesion = Sesion::abre({ .fichero = fichero, .en_memoria = true }, donde);
    llena(Connection::pareja_de(sesion, {}));
    sqlite3_int64 cuantos = 0;
    const std::unique_ptr<unsigned char, Libera> bytes(
        sqlite3_serialize(sesion->base(), "main", &cuantos, 0));
    if (!bytes || cuantos <= static_cast<sqlite3_int64>(version_de_lectura))
        throw error_de(sesion->base(), {}, donde);
    std::string fichero_entero(
        static_cast<const char*>(static_cast<const void*>(bytes.get())), static_cast<std::size_t>(cuantos));
    fichero_entero[version_de_escritura] = con_registro_previo;
    fichero_entero[version_de_lectura] = con_registro_previo;
    return fichero_entero;
}

} // namespace atipicos::sqlite
