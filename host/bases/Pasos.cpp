#include "host/bases/Pasos.hpp"

#include "engines/sql/Guion.hpp"
#include "host/bases/Confirmaciones.hpp"
#include "host/bases/Derechos.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Historial.hpp"
#include "host/bases/Version.hpp"

#include <array>

namespace atipicos::bases {

namespace {

    void lleva_historial(const Bases& bases, Donde donde) { crea_historial(*bases.orvalin, donde); }
    void pone_derechos(const Bases& bases, Donde donde) { crea_derechos(*bases.orvalin, donde); }
    void lleva_confirmaciones(const Bases& bases, Donde donde) { crea_confirmaciones(*bases.orvalin, donde); }

    // 2: what a save does to both products is committed at once. The two files of a folder become one, and
    //    programs that would commit one after the other find a number that they do not know.
    // 3: a claim that has been recorded is known by its reference and content; accounting knows which entries
    // have
    //    been reversed.
    // 4: what is done to charges is written down by the database.
    // 5: the login says who the user is, and an entry balances or is known to be incomplete.
    // 6: a commit without an answer can be looked up.
    const std::array<Paso, 5>& todos()
    {
        static const std::array<Paso, 5> todos{ { { .hasta = 2 },
            { .hasta = 3, .orvalin = guiones::importaciones_3(), .bexmor = guiones::regularizaciones() },
            { .hasta = version_con_historial, .despues = &lleva_historial },
            { .hasta = version_con_derechos,
                .orvalin = guiones::accesos(),
                .bexmor = guiones::incompletos(),
                .despues = &pone_derechos },
            { .hasta = guiones::version, .despues = &lleva_confirmaciones } } };
        return todos;
    }

    void deshace(adodb::Connection& conexion, Donde donde) noexcept
    {
        try {
            conexion.RollbackTrans(donde);
        } catch (...) { // NOLINT(bugprone-empty-catch): the error that led here is the one to show
        }
    }

    /// `accion` in a transaction of both products; kept when it gives true.
    template <class Accion> void en_transaccion(const Bases& bases, Donde donde, Accion accion)
    {
        bases.orvalin->BeginTrans(donde);
        try {
            bases.bexmor->BeginTrans(donde);
            try {
                if (accion()) {
                    bases.orvalin->CommitTrans(donde);
                    bases.bexmor->CommitTrans(donde);
                    return;
                }
            } catch (...) {
                deshace(*bases.bexmor, donde);
                throw;
            }
            deshace(*bases.bexmor, donde);
        } catch (...) {
            deshace(*bases.orvalin, donde);
            throw;
        }
        deshace(*bases.orvalin, donde);
    }

    void pon_version(adodb::Connection& conexion, std::int32_t version, Donde donde)
    {
        conexion.Execute("UPDATE Esquema SET Version =" + std::to_string(version), nullptr,
            adodb::CommandType::Text, donde);
    }

}

std::span<const Paso> pasos() noexcept { return todos(); }

std::int32_t version_de(const Bases& bases, const std::string& lugar, Donde donde, std::int32_t ultima)
{
    const auto orvalin = comprueba_version(*bases.orvalin, "Esquema", lugar, donde, ultima);
    const auto bexmor = comprueba_version(*bases.bexmor, "Esquema", lugar, donde, ultima);
    if (orvalin != bexmor)
        falla(lugar,
            "las tablas de gestión tienen la versión " + std::to_string(orvalin)
                + " y las de contabilidad la " + std::to_string(bexmor) + ".",
            donde);
    return orvalin;
}

std::int32_t da_pasos(const Bases& bases, std::span<const Paso> pasos, const std::string& lugar, Donde donde)
{
    const auto hasta = pasos.back().hasta;
    auto desde = version_de(bases, lugar, donde, hasta);
    if (desde == hasta)
        return desde;
    en_transaccion(bases, donde, [&] {
        // Of two that do it at once the second one waits here, and finds it done.
        for (const auto& conexion : { bases.orvalin, bases.bexmor })
            conexion->Execute(
                "UPDATE Esquema SET Version =Version", nullptr, adodb::CommandType::Text, donde);
        desde = version_de(bases, lugar, donde, hasta);
        for (const auto& paso : pasos)
            if (paso.hasta > desde) {
                sql::ejecuta_guion(*bases.orvalin, paso.orvalin, donde);
                sql::ejecuta_guion(*bases.bexmor, paso.bexmor, donde);
                if (paso.despues != nullptr)
                    paso.despues(bases, donde);
            }
        for (const auto& conexion : { bases.orvalin, bases.bexmor })
            pon_version(*conexion, hasta, donde);
        return desde < hasta;
    });
    return desde;
}

} // namespace atipicos::bases
