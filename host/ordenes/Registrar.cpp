#include "host/ordenes/Ordenes.hpp"
#include "host/reclamaciones/FicheroPorTrozos.hpp"
#include "host/reclamaciones/Registrador.hpp"
#include "host/reclamaciones/RevisionReclamaciones.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Tabla.hpp"

#include <iostream>
#include <utility>

namespace atipicos::app {

namespace {

    /// "R1,R2"; a comma of a reference comes after a backslash.
    std::set<std::string> separa(const std::vector<std::string>& listas)
    {
        std::set<std::string> referencias;
        for (const auto& lista : listas) {
            std::string una;
            for (std::size_t i = 0; i <= lista.size(); ++i) {
                if (i < lista.size() && lista[i] == '\\' && i + 1 < lista.size() && lista[i + 1] == ',')
                    una += lista[++i];
                else if (i < lista.size() && lista[i] != ',')
                    una += lista[i];
                else if (!una.empty())
                    referencias.insert(std::exchange(una, {}));
            }
        }
        return referencias;
    }

    /// Goes through the file without ever holding it: once for what it is known by, once to see what is wrong
    /// with it, before anything is written, and once to record it.
    class Registro {
    public:
        Registro(Sesion& sesion, const OpcionesRegistrar& opciones)
            : m_sesion(sesion)
            , m_opciones(opciones)
            , m_otra_vez(separa(opciones.otra_vez))
            , m_nombre(en_una_linea(opciones.fichero.filename().string()))
            , m_fichero(opciones.fichero)
            , m_avisos(sesion.avisos)
            , m_huella(huella())
            , m_importaciones(sesion.bases.orvalin, sesion.empresa->Codigo(), m_huella)
            , m_cargos(sesion.catalogos)
        {
        }

        int registra(bool por_serie)
        {
            auto revisadas = revisa();
            if (m_opciones.comprobar)
                return resume(revisadas);
            m_total = revisadas.total;
            Registrador registrador(m_sesion, m_avisos, m_importaciones, m_cargos,
                { std::move(revisadas), m_otra_vez, por_serie },
                [this](const char* que, const Reparo& reparo) { di(que, reparo); });
            const bool el_mismo = recorre(registrador) == m_huella;
            resume(registrador);
            if (!el_mismo && Interrupcion::senal() == 0 && !registrador.parado())
                ha_cambiado(" Compare los cargos.");
            const bool bien = registrador.recuento().rechazadas == 0 && !registrador.parado()
                && registrador.tabla().fallo().empty();
            return bien ? hecho : no_hecho;
        }

    private:
        void di(const char* que, const Reparo& reparo) const
        {
            std::cerr << '[' << que << "] " << m_nombre << ", fila " << reparo.fila;
            if (!reparo.columna.empty())
                std::cerr << ", columna «" << reparo.columna << "»";
            std::cerr << ": " << en_una_linea(reparo.motivo) << std::endl;
        }

        [[noreturn]] void ha_cambiado(const std::string& y) const
        {
            rehusa(m_nombre
                + " ha cambiado mientras se registraba. Regístrelo otra vez cuando no lo esté "
                  "escribiendo nadie."
                + y);
        }

        /// The digest of the whole file.
        std::string huella()
        {
            m_fichero.empieza();
            while (!m_fichero.trozo().empty())
                Interrupcion::comprueba();
            return m_fichero.huella();
        }

        /// Reads the file from its beginning, a claim at a time, until `cada` says that it is enough. Returns
        /// its digest.
        template <class Cada> std::string lee(Cada cada)
        {
            m_fichero.empieza();
            try {
                LectorReclamaciones lector([this] { return m_fichero.trozo(); });
                while (auto una = lector.siguiente())
                    if (!cada(*una))
                        break;
            } catch (const ErrorDeContenido& error) {
                rehusa(m_nombre + ", " + error.descripcion());
            }
            return m_fichero.huella();
        }

        Revisadas revisa()
        {
            Progreso progreso("Comprobando");
            Contabilizable contabilizable(
                m_sesion.catalogos, *m_sesion.biblioteca, *m_sesion.bases.bexmor, m_avisos);
            RevisionReclamaciones revision(m_importaciones, m_cargos, contabilizable,
                { m_otra_vez, m_opciones.sin_asiento }, [&](const char* que, const Reparo& reparo) {
                    progreso.aparta();
                    di(que, reparo);
                });
            std::string leida;
            try {
                leida = lee([&](Reclamacion& una) {
                    Interrupcion::comprueba();
                    revision.mira(std::move(una));
                    progreso.avanza();
                    return true;
                });
            } catch (const Error&) { // what is wrong before it is told too
                static_cast<void>(revision.termina());
                throw;
            }
            auto revisadas = revision.termina();
            if (leida != m_huella)
                ha_cambiado(" No se ha registrado nada.");
            for (const auto& una : m_otra_vez)
                if (!revision.tiene(una))
                    rehusa(
                        "--otra-vez: «" + una + "» no está en " + m_nombre + ". No se ha registrado nada.");
            return revisadas;
        }

        std::string recorre(Registrador& registrador)
        {
            try {
                auto leida = lee([&](Reclamacion& una) {
                    registrador.registra(una);
                    return Interrupcion::senal() == 0 && !registrador.parado();
                });
                registrador.confirma();
                return leida;
            } catch (...) { // whatever happened, what has been recorded before it is
                registrador.confirma();
                resume(registrador);
                throw;
            }
        }

        static int resume(const Revisadas& revisadas)
        {
            std::cout << revisadas.total << " reclamaciones: "
                      << revisadas.total - revisadas.ya_registradas - revisadas.rechazadas
                      << " se pueden registrar, " << revisadas.ya_registradas << " ya lo están, "
                      << revisadas.rechazadas << " tienen errores. No se ha escrito nada.\n";
            return revisadas.rechazadas == 0 ? hecho : no_hecho;
        }

        void resume(Registrador& registrador) const
        {
            registrador.termina();
            const auto& recuento = registrador.recuento();
            if (const auto& sin = recuento.sin_previsiones; !sin.empty()) {
                std::cout << "Sin previsiones de pago, porque las condiciones del proveedor no las dan:";
                for (const auto& una : sin)
                    std::cout << (&una == &sin.front() ? " " : ", ") << en_una_linea(una);
                if (recuento.cuantas_sin_previsiones > sin.size())
                    std::cout << " y " << recuento.cuantas_sin_previsiones - sin.size() << " más";
                std::cout << ".\n";
            }
            std::cout << recuento.nuevas << " registradas, " << recuento.ya_registradas << " ya lo estaban, "
                      << recuento.rechazadas << " rechazadas.\n";
            if (const auto& fallo = registrador.tabla().fallo(); !fallo.empty())
                std::cerr << "[error] A la tabla le faltan datos que no se han podido leer: " << fallo
                          << std::endl;
            if (const auto miradas = recuento.miradas(); miradas < m_total)
                std::cerr << "atipicos: Quedan " << m_total - miradas
                          << " por registrar: registre el mismo fichero otra vez." << std::endl;
        }

        Sesion& m_sesion;
        const OpcionesRegistrar& m_opciones;
        std::set<std::string> m_otra_vez;
        std::string m_nombre;
        FicheroPorTrozos m_fichero;
        AvisosRecogidos m_avisos;
        std::string m_huella;
        Importaciones m_importaciones;
        CargosReclamados m_cargos;
        std::size_t m_total = 0; ///< claims
    };

}

int registrar(const OpcionesComunes& comunes, const OpcionesRegistrar& opciones)
{
    Sesion sesion(comunes);
    const bool por_serie = comunes.lugar().clase() != bases::Lugar::Clase::carpeta;
    return Registro(sesion, opciones).registra(por_serie);
}

} // namespace atipicos::app
