#include "host/app/Verificacion.hpp"

#include "charges/Impuesto.hpp"
#include "host/app/LibroContable.hpp"
#include "host/app/Progreso.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <thread>
#include <tuple>
#include <unordered_set>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    using ClaveSerie = std::tuple<std::int16_t, std::int16_t, std::int16_t>; ///< company, year, warehouse
    using ClaveCargo = std::tuple<std::int16_t, std::int16_t, std::int16_t, std::string>;

    struct Cargo {
        Date fecha;
        Currency importe;
        Currency porcentaje;
        Currency impuesto;
        ClaveAsiento asiento;
        std::int32_t ultima_linea = 0;
        bool lineas_seguidas = true;
        Currency suma;

        [[nodiscard]] Currency total() const { return importe + impuesto; }
    };

    struct Asiento {
        Date fecha;
        std::int32_t ultima_linea = 0;
        bool lineas_seguidas = true;
        Currency debe;
        Currency haber;
        Currency primer_debe; ///< of the debtor line
        std::string documento;
        std::size_t previsiones = 0;
        Currency suma_previsiones;
        std::size_t registros = 0;
        Currency base;
        Currency cuota;
        bool de_un_cargo = false;
    };

    struct Empresa {
        int decimales = 2;
        std::int32_t enlace = 0;
    };

    std::string texto(Currency importe) { return texto_pantalla(importe, 2); }

    std::string texto(const ClaveAsiento& clave)
    {
        return "asiento " + std::to_string(clave.numero) + " (empresa contable "
            + std::to_string(clave.empresa) + ", ejercicio " + std::to_string(clave.ejercicio) + ")";
    }

    std::string texto(const ClaveCargo& clave)
    {
        return "cargo " + std::get<3>(clave) + " (empresa " + std::to_string(std::get<0>(clave))
            + ", ejercicio " + std::to_string(std::get<1>(clave)) + ", almacén "
            + std::to_string(std::get<2>(clave)) + ")";
    }

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
        explicit Revision(const orvalin::Bases& bases)
            : m_bases(bases)
        {
        }

        Verificacion revisa()
        {
            lee_empresas();
            lee_cargos();
            lee_lineas();
            lee_libro();
            revisa_asientos();
            for (const auto& [clave, cargo] : m_cargos)
                revisa_cargo(clave, cargo);
            revisa_contadores();
            for (const auto& [clave, asiento] : m_asientos)
                m_resultado.asientos_sin_cargo += asiento.de_un_cargo ? 0U : 1U;
            return std::move(m_resultado);
        }

    private:
        void difiere(const std::string& que) { m_resultado.diferencias.push_back(que); }

        static void recorre(adodb::Connection& conexion, const std::string& sql,
            const std::function<void(adodb::Recordset&)>& cada)
        {
            auto rs = conexion.CreateRecordset();
            rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext())
                cada(*rs);
        }

        static ClaveCargo clave_de(adodb::Recordset& rs)
        {
            return { adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio"),
                adodb::entero(rs, "Cod_Almacen"), adodb::texto(rs, "Codigo") };
        }

        void lee_empresas()
        {
            recorre(*m_bases.orvalin, "SELECT Codigo, DecimalesImporte, EnlaceContable FROM Empresas",
                [&](auto& rs) {
                    m_empresas[adodb::entero(rs, "Codigo")] = { adodb::entero(rs, "DecimalesImporte"),
                        CLng(rs.Fields("EnlaceContable").Value()) };
                });
        }

        void lee_cargos()
        {
            recorre(*m_bases.orvalin, "SELECT * FROM Proveedores_Cargos_Atipicos", [&](auto& rs) {
                const auto importe = [&](std::string_view campo) { return CCur(rs.Fields(campo).Value()); };
                Cargo cargo;
                cargo.fecha = CDate(rs.Fields("Fecha").Value());
                cargo.importe = importe("Importe");
                cargo.porcentaje = importe("Impuesto");
                cargo.impuesto = importe("Impuesto_Importe");
                cargo.asiento = { adodb::entero(rs, "EmpContable"),
                    static_cast<std::int16_t>(cargo.fecha.anio()), CLng(rs.Fields("Asiento").Value()) };
                m_cargos.emplace(clave_de(rs), cargo);
            });
            for (const auto& [clave, cargo] : m_cargos)
                m_nombrados[cargo.asiento].push_back(&clave);
            m_resultado.cargos = m_cargos.size();
        }

        void lee_lineas()
        {
            recorre(*m_bases.orvalin,
                "SELECT * FROM Proveedores_Cargos_Atipicos_Lineas ORDER BY Cod_Empresa, Cod_Ejercicio, "
                "Cod_Almacen, Codigo, Num_Linea",
                [&](auto& rs) {
                    ++m_resultado.lineas;
                    m_progreso.avanza();
                    const auto lugar = m_cargos.find(clave_de(rs));
                    if (lugar == m_cargos.end()) {
                        difiere(texto(clave_de(rs)) + ": tiene una línea y no tiene cabecera.");
                        return;
                    }
                    auto& cargo = lugar->second;
                    const auto numero = CLng(rs.Fields("Num_Linea").Value());
                    cargo.lineas_seguidas = cargo.lineas_seguidas && numero == cargo.ultima_linea + 1;
                    cargo.ultima_linea = numero;
                    cargo.suma += importe_linea(
                        CCur(rs.Fields("Unidades").Value()), CCur(rs.Fields("Precio").Value()));
                });
        }

        void lee_libro()
        {
            auto& bexmor = *m_bases.bexmor;
            lee_asientos(bexmor, [&](const auto& clave, Date fecha) { m_asientos[clave].fecha = fecha; });
            lee_apuntes(bexmor, [&](const auto& clave, const ApunteLeido& apunte) {
                auto& asiento = m_asientos[clave];
                asiento.lineas_seguidas = asiento.lineas_seguidas && apunte.linea == asiento.ultima_linea + 1;
                if (asiento.ultima_linea == 0) {
                    asiento.primer_debe = apunte.debe;
                    asiento.documento = apunte.documento;
                }
                asiento.ultima_linea = apunte.linea;
                asiento.debe += apunte.debe;
                asiento.haber += apunte.haber;
                ++m_resultado.apuntes;
                m_progreso.avanza();
            });
            lee_registros(bexmor, [&](const auto& clave, const RegistroLeido& registro) {
                auto& asiento = m_asientos[clave];
                ++asiento.registros;
                asiento.base += registro.base;
                asiento.cuota += registro.cuota;
                ++m_resultado.registros;
            });
            lee_previsiones(bexmor, [&](const auto& clave, const PrevisionLeida& prevision) {
                auto& asiento = m_asientos[clave];
                ++asiento.previsiones;
                asiento.suma_previsiones += prevision.importe;
                ++m_resultado.previsiones;
            });
            m_resultado.asientos = m_asientos.size();
        }

        void revisa_asientos()
        {
            for (const auto& [clave, asiento] : m_asientos) {
                if (asiento.debe != asiento.haber)
                    difiere(texto(clave) + ": no cuadra, debe " + texto(asiento.debe) + " y haber "
                        + texto(asiento.haber) + ".");
                if (!asiento.lineas_seguidas || asiento.ultima_linea == 0)
                    difiere(texto(clave) + ": le faltan apuntes.");
            }
        }

        void revisa_cargo(const ClaveCargo& clave, const Cargo& cargo)
        {
            const auto nombre = texto(clave);
            const auto& empresa = m_empresas[std::get<0>(clave)];
            if (cargo.ultima_linea == 0 || !cargo.lineas_seguidas)
                difiere(nombre + ": no tiene líneas o no están numeradas de corrido.");
            if (cargo.suma != cargo.importe)
                difiere(nombre + ": importe " + texto(cargo.importe) + " y líneas por " + texto(cargo.suma)
                    + ".");
            const auto impuesto = importe_impuesto(cargo.importe, cargo.porcentaje, empresa.decimales);
            if (impuesto != cargo.impuesto)
                difiere(nombre + ": impuesto " + texto(cargo.impuesto) + " y debería ser " + texto(impuesto)
                    + ".");
            if (cargo.asiento.numero > 0)
                revisa_contabilizacion(clave, cargo);
            else if (empresa.enlace == 1)
                difiere(nombre + ": no tiene asiento y la empresa contabiliza sus cargos.");
        }

        /// Of the charges that name an entry, the one that it was made for: codes are unique in a warehouse
        /// only, so two of them may bear the document of the entry.
        [[nodiscard]] const ClaveCargo& dueno(const ClaveAsiento& clave, const Asiento& asiento) const
        {
            const auto& nombrado_por = m_nombrados.at(clave);
            const auto suyo = std::find_if(nombrado_por.begin(), nombrado_por.end(), [&](const auto* uno) {
                const auto& cargo = m_cargos.at(*uno);
                return std::get<3>(*uno) == asiento.documento && cargo.total() == asiento.primer_debe
                    && cargo.fecha.solo_dia() == asiento.fecha.solo_dia();
            });
            return suyo == nombrado_por.end() ? *nombrado_por.front() : **suyo;
        }

        void revisa_contabilizacion(const ClaveCargo& clave, const Cargo& cargo)
        {
            const auto nombre = texto(clave);
            const auto lugar = m_asientos.find(cargo.asiento);
            if (lugar == m_asientos.end()) {
                difiere(nombre + ": su " + texto(cargo.asiento) + " no existe en Contabilidad.");
                return;
            }
            auto& asiento = lugar->second;
            if (asiento.documento != std::get<3>(clave)) {
                difiere(
                    nombre + ": su " + texto(cargo.asiento) + " es del documento " + asiento.documento + ".");
                return;
            }
            if (const auto& otro = dueno(cargo.asiento, asiento); otro != clave) {
                difiere(nombre + ": su " + texto(cargo.asiento) + " es del documento " + asiento.documento
                    + " del almacén " + std::to_string(std::get<2>(otro)) + ".");
                return;
            }
            asiento.de_un_cargo = true;
            if (asiento.primer_debe != cargo.total())
                difiere(nombre + ": su " + texto(cargo.asiento) + " carga " + texto(asiento.primer_debe)
                    + " y el cargo suma " + texto(cargo.total()) + ".");
            if (asiento.fecha.solo_dia() != cargo.fecha.solo_dia())
                difiere(nombre + ": su " + texto(cargo.asiento) + " es del " + asiento.fecha.texto() + ".");
            if (asiento.previsiones > 0 && asiento.suma_previsiones != cargo.total())
                difiere(nombre + ": sus previsiones suman " + texto(asiento.suma_previsiones) + " y el cargo "
                    + texto(cargo.total()) + ".");
            const bool lleva = cargo.porcentaje != Currency();
            if (lleva ? asiento.registros != 1 || asiento.base != cargo.importe
                        || asiento.cuota != cargo.impuesto
                      : asiento.registros != 0)
                difiere(
                    nombre + ": el registro de impuesto de su " + texto(cargo.asiento) + " no es el suyo.");
        }

        void revisa_contadores()
        {
            std::map<ClaveSerie, std::int64_t> contadores;
            recorre(*m_bases.orvalin, "SELECT * FROM Contador_Proveedores_Cargos_Atipicos", [&](auto& rs) {
                contadores[{ adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio"),
                    adodb::entero(rs, "Cod_Almacen") }]
                    = CLng(rs.Fields("Numero").Value());
            });
            for (const auto& [clave, cargo] : m_cargos) {
                const auto numero = numero_de(std::get<3>(clave));
                const auto lugar
                    = contadores.find({ std::get<0>(clave), std::get<1>(clave), std::get<2>(clave) });
                if (numero == 0)
                    difiere(texto(clave) + ": el código no es «AT» y un número.");
                else if (lugar == contadores.end() || lugar->second < numero)
                    difiere(texto(clave) + ": el contador de su serie no ha llegado a ese número.");
            }
            std::map<std::pair<std::int16_t, std::int16_t>, std::int32_t> de_asientos;
            recorre(*m_bases.bexmor, "SELECT * FROM Contador_Asientos", [&](auto& rs) {
                de_asientos[{ adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio") }]
                    = CLng(rs.Fields("Numero").Value());
            });
            for (const auto& [clave, asiento] : m_asientos)
                if (de_asientos[{ clave.empresa, clave.ejercicio }] < clave.numero)
                    difiere(texto(clave) + ": el contador de asientos no ha llegado a ese número.");
        }

        const orvalin::Bases& m_bases;
        Verificacion m_resultado;
        Progreso m_progreso{ "Comprobando" };
        std::map<std::int16_t, Empresa> m_empresas;
        std::map<ClaveCargo, Cargo> m_cargos;
        std::map<ClaveAsiento, Asiento> m_asientos;
        std::map<ClaveAsiento, std::vector<const ClaveCargo*>>
            m_nombrados; ///< the charges that name an entry
    };

}

Verificacion verifica(const orvalin::Bases& bases)
{
    auto resultado = Revision(bases).revisa();
    for (const auto espera : { std::chrono::milliseconds(50), std::chrono::milliseconds(200) }) {
        if (resultado.diferencias.empty())
            break;
        std::this_thread::sleep_for(espera);
        const auto antes = std::exchange(resultado, Revision(bases).revisa()).diferencias;
        const std::unordered_set<std::string> repetidas(antes.begin(), antes.end());
        std::erase_if(resultado.diferencias, [&](const auto& una) { return !repetidas.contains(una); });
    }
    return resultado;
}

} // namespace atipicos::app
