#include "engines/sqlite/Copia.hpp"

#include "engines/sqlite/Examen.hpp"
#include "engines/sqlite/Instruccion.hpp"

#include <memory>

namespace atipicos::sqlite {

namespace {

    namespace fs = std::filesystem;

    constexpr int paginas_por_paso = 256; // a megabyte

    /// A new file that is written past any journal: nobody has it but us, and half of it is worth nothing.
    std::shared_ptr<Sesion> abre_nuevo(const fs::path& fichero, Donde donde)
    {
        auto sesion = Sesion::abre({ .fichero = fichero, .crear = true }, donde);
        sesion->ejecuta("PRAGMA journal_mode=OFF", nullptr, donde);
        return sesion;
    }

    void copia_paginas(Sesion& origen, Sesion& destino, const Avance& avance, Donde donde)
    {
        struct Termina {
            void operator()(sqlite3_backup* copia) const noexcept { sqlite3_backup_finish(copia); }
        };
        std::unique_ptr<sqlite3_backup, Termina> copia(
            sqlite3_backup_init(destino.base(), "main", origen.base(), "main"));
        if (!copia)
            throw error_de(destino.base(), {}, donde);
        while (sqlite3_backup_step(copia.get(), paginas_por_paso) == SQLITE_OK) {
            const auto total = static_cast<std::uint64_t>(sqlite3_backup_pagecount(copia.get()));
            avance(total - static_cast<std::uint64_t>(sqlite3_backup_remaining(copia.get())), total);
        }
        if (sqlite3_backup_finish(copia.release()) != SQLITE_OK) // leaves the error of the step that failed
            throw error_de(destino.base(), {}, donde);
    }

}

void copia(const fs::path& origen, const fs::path& destino, const Avance& avance, Donde donde)
{
    const auto de = Sesion::abre({ .fichero = origen, .solo_lectura = true }, donde);
    // One sight of it from here to the end: without, each commit of another would make the copy begin anew.
    de->ejecuta("BEGIN", nullptr, donde);
    const auto filas = filas_por_tabla(*de, donde);
    nombrando("No se pudo copiar «" + origen.string() + "» en «" + destino.string() + "»", donde, [&] {
        copia_paginas(*de, *abre_nuevo(destino, donde), avance, donde);
        const auto leida = Sesion::abre({ .fichero = destino, .solo_lectura = true }, donde);
        exige_integridad(*leida, donde);
        if (filas_por_tabla(*leida, donde) != filas)
            throw adodb::ErrorBaseDatos(
                adodb::Categoria::otra, "SQLite", "La copia no tiene las mismas filas.", {}, donde);
    });
    de->ejecuta("COMMIT", nullptr, donde);
}

} // namespace atipicos::sqlite
