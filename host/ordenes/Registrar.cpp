#include "host/ordenes/Ordenes.hpp"
#include "host/reclamaciones/FicheroPorTrozos.hpp"
#include "host/reclamaciones/Registrador.hpp"
#include "host/terminal/Interrupcion.hpp"

#include <iostream>
#include <utility>

namespace atipicos::app {

namespace {

    /// Goes through the file twice, without ever holding it: once to see what is wrong with it and what it is
    /// known by, once to record it.
    class Registro {
    public:
        Registro(Sesion& sesion, const OpcionesRegistrar& opciones)
            : m_sesion(sesion)
            , m_nombre(opciones.fichero.filename().string())
            , m_fichero(opciones.fichero)
        {
        }

        int registra(Registrador::Opciones opciones)
        {
            const auto huella = revisa();
            opciones.total = m_total;
            Registrador registrador(m_sesion, { m_sesion.bases.orvalin, m_sesion.empresa->Codigo(), huella },
                opciones, [this](const Reparo& error) { di("error", error); });
            const bool el_mismo = recorre(registrador) == huella;
            resume(registrador);
            if (!el_mismo && Interrupcion::senal() == 0)
                throw Error(no_hecho, "atipicos",
                    m_nombre
                        + " ha cambiado mientras se registraba. Regístrelo otra vez cuando no lo esté "
                          "escribiendo nadie y compare los cargos.");
            const bool bien = registrador.recuento().rechazadas == 0 && m_sesion.avisos->errores() == 0
                && registrador.tabla().fallo().empty();
            return bien ? hecho : no_hecho;
        }

    private:
        void di(const char* que, const Reparo& reparo) const
        {
            std::cerr << '[' << que << "] " << m_nombre << ", fila " << reparo.fila;
            if (!reparo.columna.empty())
                std::cerr << ", columna «" << reparo.columna << "»";
            std::cerr << ": " << reparo.motivo << std::endl;
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
                throw Error(no_hecho, "atipicos", m_nombre + ", " + error.descripcion());
            }
            return m_fichero.huella();
        }

        std::string revisa()
        {
            Progreso progreso("Leyendo");
            return lee([&](const Reclamacion& una) {
                Interrupcion::comprueba();
                ++m_total;
                if (!una.notas.empty() || !una.errores.empty())
                    progreso.aparta();
                for (const auto& nota : una.notas)
                    di("aviso", nota);
                for (const auto& error : una.errores)
                    di("error", error);
                progreso.avanza();
                return true;
            });
        }

        std::string recorre(Registrador& registrador)
        {
            try {
                auto huella = lee([&](Reclamacion& una) {
                    registrador.registra(una);
                    return Interrupcion::senal() == 0;
                });
                registrador.confirma();
                return huella;
            } catch (...) { // whatever happened, what has been recorded before it is
                registrador.confirma();
                resume(registrador);
                throw;
            }
        }

        void resume(Registrador& registrador) const
        {
            registrador.termina();
            const auto& recuento = registrador.recuento();
            std::cout << recuento.nuevas << " registradas, " << recuento.ya_registradas << " ya lo estaban, "
                      << recuento.rechazadas << " rechazadas";
            if (m_sesion.avisos->errores() > 0)
                std::cout << ", " << m_sesion.avisos->errores() << " mensajes de error";
            std::cout << ".\n";
            if (const auto& fallo = registrador.tabla().fallo(); !fallo.empty())
                std::cerr << "[error] A la tabla le faltan datos que no se han podido leer: " << fallo
                          << std::endl;
            if (recuento.miradas < m_total)
                std::cerr << "atipicos: Quedan " << m_total - recuento.miradas
                          << " por registrar: registre el mismo fichero otra vez." << std::endl;
        }

        Sesion& m_sesion;
        std::string m_nombre;
        FicheroPorTrozos m_fichero;
        std::size_t m_total = 0; ///< claims
    };

}

int registrar(const OpcionesComunes& comunes, const OpcionesRegistrar& opciones)
{
    Sesion sesion(comunes);
    const bool por_serie = comunes.lugar().clase() != bases::Lugar::Clase::carpeta;
    return Registro(sesion, opciones).registra({ opciones.otra_vez, por_serie });
}

} // namespace atipicos::app
