#include "host/reclamaciones/Registrador.hpp"

#include <iostream>
#include <utility>

// What becomes of claims with their commit, and without.
namespace atipicos::app {

namespace {

    /// Of a line that is lost again and again with the same claims nobody knows that they are not why.
    constexpr int perdidas_seguidas = 5;

    std::string por_repetir(std::size_t cuantas)
    {
        if (cuantas == 1)
            return "Al perderse la conexión quedó 1 reclamación sin confirmar: si no está, se registra otra "
                   "vez.";
        return "Al perderse la conexión quedaron " + std::to_string(cuantas)
            + " reclamaciones sin confirmar: las que no estén se registran otra vez.";
    }

    /// True while it lives.
    class Mientras {
    public:
        explicit Mientras(bool& que)
            : m_que(que)
        {
            m_que = true;
        }
        Mientras(const Mientras&) = delete;
        Mientras& operator=(const Mientras&) = delete;
        ~Mientras() { m_que = false; }

    private:
        bool& m_que;
    };

}

void Registrador::confirma()
{
    static_cast<void>(cierra());
    repite();
    m_progreso.avanza(std::exchange(m_sin_contar, 0));
    m_tanda.descansa();
}

bool Registrador::cierra()
{
    try {
        m_tanda.cierra();
        if (!m_pendientes.empty())
            m_perdidas = 0;
        for (const auto& una : std::exchange(m_pendientes, {}))
            cuenta(una);
        return true;
    } catch (const Error& error) {
        if (!es_de_la_linea(error)) {
            cuenta_sin_confirmar(std::exchange(m_pendientes, {}), error.descripcion());
            return true;
        }
        aparta_por_repetir(error);
        return false;
    }
}

void Registrador::aparta_por_repetir(const Error& error)
{
    ++m_perdidas;
    m_por_que_repetir = error.descripcion();
    for (auto& una : std::exchange(m_pendientes, {})) {
        if (una.nueva)
            m_por_repetir.push_back(std::move(una));
        else
            cuenta(una);
    }
}

/// Until nothing is left of what the line has taken, or of the line.
void Registrador::repite()
{
    if (m_repitiendo) // what the line has taken now is for the one that is under way
        return;
    const Mientras repitiendo(m_repitiendo);
    while (!m_por_repetir.empty()) {
        auto todas = std::exchange(m_por_repetir, {});
        if (m_parado || m_perdidas > perdidas_seguidas) {
            m_parado = true;
            cuenta_sin_confirmar(std::move(todas), m_por_que_repetir);
            continue;
        }
        reanuda(todas.front());
        m_progreso.aparta();
        std::cerr << "atipicos: " << por_repetir(todas.size()) << std::endl;
        for (auto& una : todas)
            registra_otra_vez(una);
        static_cast<void>(cierra());
    }
}

/// Has the line opened again, so that what is told of it comes first. Whether that can be done shows with the
/// first claim.
void Registrador::reanuda(const Pendiente& una) const
{
    try {
        static_cast<void>(m_importaciones.busca(una.referencia));
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): it is asked for again
    }
}

/// A claim that was to be recorded for the time `una.vez`, or had not come so far. It is recorded unless it
/// has been, be it with the commit of which nothing was heard.
void Registrador::registra_otra_vez(Pendiente& una)
{
    if (m_parado) // it is not known of any that is left
        return m_por_repetir.push_back(std::move(una));
    if (una.vez == 0)
        return intenta(una.reclamacion, 0);
    std::vector<Importada> veces;
    try {
        veces = m_importaciones.busca(una.referencia);
    } catch (const Error& error) {
        m_parado = !m_tanda.abierta() || !es_de_la_linea(error); // it has been tried for long enough
        static_cast<void>(cierra());
        return m_por_repetir.push_back(std::move(una));
    }
    if (veces.empty() || veces.back().vez < una.vez)
        return intenta(una.reclamacion, una.vez);
    una.nueva = veces.back().clave.Codigo == una.clave.Codigo;
    una.clave = veces.back().clave;
    m_pendientes.push_back(std::move(una));
}

/// After a commit that failed: ordinarily nothing of it is there, but all of it is where only the answer was
/// lost.
void Registrador::cuenta_sin_confirmar(std::vector<Pendiente> todas, const std::string& motivo)
{
    std::string sin_respuesta; // of the database, which is then not asked again
    for (auto& una : todas) {
        std::vector<Importada> veces;
        try {
            if (una.nueva && sin_respuesta.empty())
                veces = m_importaciones.busca(una.referencia);
        } catch (const Error& error) {
            sin_respuesta = error.descripcion();
            deja_si_no_esta(error);
        }
        const bool intentada = una.vez > 0;
        const bool esta = intentada && !veces.empty() && veces.back().vez >= una.vez;
        if (una.nueva && intentada && !sin_respuesta.empty()) {
            ++m_recuento.rechazadas;
            di("error",
                { una.fila, "",
                    "no se sabe si «" + una.referencia + "» se ha registrado: " + sin_respuesta
                        + " Para saberlo, registre el mismo fichero otra vez." });
        } else if (una.nueva && !esta) {
            rechaza(una.fila, una.referencia, motivo);
        } else {
            una.nueva = una.nueva && veces.back().clave.Codigo == una.clave.Codigo;
            una.clave = veces.empty() ? una.clave : veces.back().clave;
            cuenta(una);
        }
    }
}

} // namespace atipicos::app
