#include "host/comprobacion/Verificacion.hpp"

#include "charges/Impuesto.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <chrono>
#include <thread>
#include <unordered_set>
#include <utility>

namespace atipicos::app {

namespace {

    std::string texto_importe(Currency importe) { return texto_pantalla(importe, 2); }

    /// The number in a code, or 0 when it is not "AT" and digits.
    std::int64_t numero_de(const std::string& codigo)
    {
        if (!codigo.starts_with("AT") || codigo.size() < 3 || codigo.size() > 12 || codigo[2] == '0'
            || codigo.find_first_not_of("0123456789", 2) != std::string::npos)
            return 0;
        return std::stoll(codigo.substr(2));
    }

    class Revision {
    public:
        explicit Revision(const bases::Bases& bases)
            : m_leido(lee_contenido(bases))
        {
        }

        Verificacion revisa()
        {
            cuenta();
            for (const auto& clave : m_leido.lineas_sin_cargo)
                difiere(texto(clave) + ": tiene una línea y no tiene cabecera.");
            for (const auto& [clave, asiento] : m_leido.asientos)
                revisa_asiento(clave, asiento);
            for (const auto& [clave, cargo] : m_leido.cargos)
                revisa_cargo(clave, cargo);
            revisa_contadores();
            m_resultado.asientos_sin_cargo -= m_de_un_cargo;
            return std::move(m_resultado);
        }

    private:
        void difiere(const std::string& que) { m_resultado.diferencias.push_back(que); }

        void cuenta()
        {
            m_resultado.cargos = m_leido.cargos.size();
            m_resultado.lineas = m_leido.lineas;
            m_resultado.asientos = m_resultado.asientos_sin_cargo = m_leido.asientos.size();
            m_resultado.apuntes = m_leido.apuntes;
            m_resultado.registros = m_leido.registros;
            m_resultado.previsiones = m_leido.previsiones;
        }

        void revisa_asiento(const ClaveAsiento& clave, const AsientoContenido& asiento)
        {
            if (asiento.debe != asiento.haber)
                difiere(texto(clave) + ": no cuadra, debe " + texto_importe(asiento.debe) + " y haber "
                    + texto_importe(asiento.haber) + ".");
            if (!asiento.lineas_seguidas || asiento.ultima_linea == 0)
                difiere(texto(clave) + ": le faltan apuntes.");
        }

        void revisa_cargo(const ClaveContenida& clave, const CargoContenido& cargo)
        {
            const auto antes = m_resultado.diferencias.size();
            const auto nombre = texto(clave);
            const auto& empresa = m_leido.empresas[clave.empresa];
            if (cargo.ultima_linea == 0 || !cargo.lineas_seguidas)
                difiere(nombre + ": no tiene líneas o no están numeradas de corrido.");
            if (cargo.suma != cargo.importe)
                difiere(nombre + ": importe " + texto_importe(cargo.importe) + " y líneas por "
                    + texto_importe(cargo.suma) + ".");
            const auto impuesto = importe_impuesto(cargo.importe, cargo.porcentaje, empresa.decimales);
            if (impuesto != cargo.impuesto)
                difiere(nombre + ": impuesto " + texto_importe(cargo.impuesto) + " y debería ser "
                    + texto_importe(impuesto) + ".");
            const bool contabilizable = m_resultado.diferencias.size() == antes;
            if (const auto falta = motivo_sin_asiento(clave, cargo, empresa); !falta.empty()) {
                difiere(nombre + ": " + falta);
                m_resultado.sin_asiento.push_back({ clave, cargo.asiento, contabilizable });
            } else if (cargo.asiento.numero > 0) {
                ++m_de_un_cargo;
                revisa_contabilizacion(nombre, cargo);
            }
        }

        /// Why the charge has no entry of its own; empty when it has one, or needs none.
        [[nodiscard]] std::string motivo_sin_asiento(
            const ClaveContenida& clave, const CargoContenido& cargo, const EmpresaContenida& empresa) const
        {
            if (cargo.asiento.numero <= 0)
                return empresa.enlace == 1 ? "no tiene asiento y la empresa contabiliza sus cargos."
                                           : std::string();
            const auto lugar = m_leido.asientos.find(cargo.asiento);
            if (lugar == m_leido.asientos.end())
                return "su " + texto(cargo.asiento) + " no existe en Contabilidad.";
            const auto& asiento = lugar->second;
            if (asiento.documento != clave.codigo)
                return "su " + texto(cargo.asiento) + " es del documento " + asiento.documento + ".";
            if (const auto& otro = dueno(cargo.asiento, asiento); otro != clave)
                return "su " + texto(cargo.asiento) + " es del documento " + asiento.documento
                    + " del almacén " + std::to_string(otro.almacen) + ".";
            return {};
        }

        /// Of the charges that name an entry, the one that it was made for. Codes are unique in a warehouse
        /// only, so several may bear its document; should even amount and day be the same, it is the one
        /// saved last: a number is given again only after the save that had it first was lost.
        [[nodiscard]] const ClaveContenida& dueno(
            const ClaveAsiento& clave, const AsientoContenido& asiento) const
        {
            const auto& nombrado_por = m_leido.nombrados.at(clave);
            const auto merito = [&](const ClaveContenida& uno) {
                const auto& cargo = m_leido.cargos.at(uno);
                const bool suyo = uno.codigo == asiento.documento && cargo.total() == asiento.primer_debe
                    && cargo.fecha.solo_dia() == asiento.fecha.solo_dia();
                return std::pair(suyo, cargo.hora);
            };
            return *std::max_element(nombrado_por.begin(), nombrado_por.end(),
                [&](const auto& uno, const auto& otro) { return merito(uno) < merito(otro); });
        }

        void revisa_contabilizacion(const std::string& nombre, const CargoContenido& cargo)
        {
            const auto& asiento = m_leido.asientos.at(cargo.asiento);
            if (asiento.primer_debe != cargo.total())
                difiere(nombre + ": su " + texto(cargo.asiento) + " carga "
                    + texto_importe(asiento.primer_debe) + " y el cargo suma " + texto_importe(cargo.total())
                    + ".");
            if (asiento.fecha.solo_dia() != cargo.fecha.solo_dia())
                difiere(nombre + ": su " + texto(cargo.asiento) + " es del " + asiento.fecha.texto() + ".");
            if (asiento.previsiones > 0 && asiento.suma_previsiones != cargo.total())
                difiere(nombre + ": sus previsiones suman " + texto_importe(asiento.suma_previsiones)
                    + " y el cargo " + texto_importe(cargo.total()) + ".");
            const bool lleva = cargo.porcentaje != Currency();
            if (lleva ? asiento.registros != 1 || asiento.base != cargo.importe
                        || asiento.cuota != cargo.impuesto
                      : asiento.registros != 0)
                difiere(
                    nombre + ": el registro de impuesto de su " + texto(cargo.asiento) + " no es el suyo.");
        }

        void revisa_contadores()
        {
            for (const auto& [clave, cargo] : m_leido.cargos) {
                const auto numero = numero_de(clave.codigo);
                const auto lugar = m_leido.contadores.find(clave.serie());
                if (numero == 0)
                    difiere(texto(clave) + ": el código no es «AT» y un número.");
                else if (lugar == m_leido.contadores.end() || lugar->second < numero)
                    difiere(texto(clave) + ": el contador de su serie no ha llegado a ese número.");
            }
            for (const auto& [clave, asiento] : m_leido.asientos)
                if (m_leido.contadores_asientos[{ clave.empresa, clave.ejercicio }] < clave.numero)
                    difiere(texto(clave) + ": el contador de asientos no ha llegado a ese número.");
        }

        ContenidoBases m_leido;
        Verificacion m_resultado;
        std::size_t m_de_un_cargo = 0; ///< entries that belong to a charge
    };

}

std::string texto(const ClaveAsiento& asiento)
{
    return "asiento " + std::to_string(asiento.numero) + " (empresa contable "
        + std::to_string(asiento.empresa) + ", ejercicio " + std::to_string(asiento.ejercicio) + ")";
}

std::string texto(const ClaveContenida& cargo)
{
    return "cargo " + cargo.codigo + " (empresa " + std::to_string(cargo.empresa) + ", ejercicio "
        + std::to_string(cargo.ejercicio) + ", almacén " + std::to_string(cargo.almacen) + ")";
}

std::string resumen(const Verificacion& verificacion)
{
    const auto cuantos = [](std::size_t n, const char* que) { return std::to_string(n) + " " + que; };
    std::string linea;
    if (verificacion.asientos_sin_cargo > 0)
        linea = "Asientos sin cargo (de cargos eliminados o cambiados; se eliminan en Contabilidad): "
            + std::to_string(verificacion.asientos_sin_cargo) + '\n';
    linea += "Verificación: " + cuantos(verificacion.cargos, "cargos, ")
        + cuantos(verificacion.lineas, "líneas, ") + cuantos(verificacion.asientos, "asientos, ")
        + cuantos(verificacion.apuntes, "apuntes, ")
        + cuantos(verificacion.registros, "registros de impuesto, ")
        + cuantos(verificacion.previsiones, "previsiones: ");
    const auto diferencias = verificacion.diferencias.size();
    return linea
        + (diferencias == 0        ? "sin diferencias.\n"
                : diferencias == 1 ? "1 diferencia.\n"
                                   : cuantos(diferencias, "diferencias.\n"));
}

Verificacion verifica(const bases::Bases& bases)
{
    auto resultado = Revision(bases).revisa();
    for (const auto espera : { std::chrono::milliseconds(50), std::chrono::milliseconds(200) }) {
        if (resultado.diferencias.empty())
            break;
        std::this_thread::sleep_for(espera);
        const auto antes = std::exchange(resultado, Revision(bases).revisa());
        const std::unordered_set<std::string> repetidas(antes.diferencias.begin(), antes.diferencias.end());
        std::erase_if(resultado.diferencias, [&](const auto& una) { return !repetidas.contains(una); });
        std::erase_if(resultado.sin_asiento, [&](const auto& uno) {
            return std::find(antes.sin_asiento.begin(), antes.sin_asiento.end(), uno)
                == antes.sin_asiento.end();
        });
    }
    return resultado;
}

} // namespace atipicos::app
