#include "host/comprobacion/ContenidoBases.hpp"

#include "charges/Impuesto.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"
#include "platform/adodb/campos.hpp"

#include <functional>
#include <utility>

namespace atipicos::app {

namespace {

    class Lectura {
    public:
        explicit Lectura(const bases::Bases& bases)
            : m_bases(bases)
        {
        }

        ContenidoBases lee()
        {
            lee_empresas();
            lee_cargos();
            lee_lineas();
            lee_libro();
            lee_contadores();
            return std::move(m_leido);
        }

    private:
        static void recorre(adodb::Connection& conexion, const std::string& sql,
            const std::function<void(adodb::Recordset&)>& cada)
        {
            auto rs = conexion.CreateRecordset();
            rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext()) {
                Interrupcion::comprueba();
                cada(*rs);
            }
        }

        static ClaveContenida clave_de(adodb::Recordset& rs)
        {
            return { adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio"),
                adodb::entero(rs, "Cod_Almacen"), adodb::texto(rs, "Codigo") };
        }

        void lee_empresas()
        {
            recorre(*m_bases.orvalin, "SELECT Codigo, DecimalesImporte, EnlaceContable FROM Empresas",
                [&](auto& rs) {
                    m_leido.empresas[adodb::entero(rs, "Codigo")] = { adodb::entero(rs, "DecimalesImporte"),
                        CLng(rs.Fields("EnlaceContable").Value()) };
                });
        }

        void lee_cargos()
        {
            recorre(*m_bases.orvalin, "SELECT * FROM Proveedores_Cargos_Atipicos", [&](auto& rs) {
                const auto importe = [&](std::string_view campo) { return CCur(rs.Fields(campo).Value()); };
                CargoContenido cargo;
                cargo.fecha = CDate(rs.Fields("Fecha").Value());
                cargo.hora = CDate(rs.Fields("Hora").Value());
                cargo.importe = importe("Importe");
                cargo.porcentaje = importe("Impuesto");
                cargo.impuesto = importe("Impuesto_Importe");
                cargo.asiento = { adodb::entero(rs, "EmpContable"),
                    static_cast<std::int16_t>(cargo.fecha.anio()), CLng(rs.Fields("Asiento").Value()) };
                m_leido.nombrados[cargo.asiento].push_back(clave_de(rs));
                m_leido.cargos.emplace(clave_de(rs), cargo);
            });
        }

        void lee_lineas()
        {
            recorre(*m_bases.orvalin,
                "SELECT * FROM Proveedores_Cargos_Atipicos_Lineas ORDER BY Cod_Empresa, Cod_Ejercicio, "
                "Cod_Almacen, Codigo, Num_Linea",
                [&](auto& rs) {
                    ++m_leido.lineas;
                    m_progreso.avanza();
                    const auto lugar = m_leido.cargos.find(clave_de(rs));
                    if (lugar == m_leido.cargos.end()) {
                        m_leido.lineas_sin_cargo.push_back(clave_de(rs));
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
            auto& asientos = m_leido.asientos;
            lee_asientos(bexmor, [&](const auto& clave, Date fecha) { asientos[clave].fecha = fecha; });
            lee_apuntes(bexmor, [&](const auto& clave, const ApunteLeido& apunte) {
                auto& asiento = asientos[clave];
                asiento.lineas_seguidas = asiento.lineas_seguidas && apunte.linea == asiento.ultima_linea + 1;
                if (asiento.ultima_linea == 0) {
                    asiento.primer_debe = apunte.debe;
                    asiento.documento = apunte.documento;
                }
                asiento.ultima_linea = apunte.linea;
                asiento.debe += apunte.debe;
                asiento.haber += apunte.haber;
                ++m_leido.apuntes;
                m_progreso.avanza();
            });
            lee_registros(bexmor, [&](const auto& clave, const RegistroLeido& registro) {
                auto& asiento = asientos[clave];
                ++asiento.registros;
                asiento.base += registro.base;
                asiento.cuota += registro.cuota;
                ++m_leido.registros;
            });
            lee_previsiones(bexmor, [&](const auto& clave, const PrevisionLeida& prevision) {
                auto& asiento = asientos[clave];
                ++asiento.previsiones;
                asiento.suma_previsiones += prevision.importe;
                ++m_leido.previsiones;
            });
        }

        void lee_contadores()
        {
            recorre(*m_bases.orvalin, "SELECT * FROM Contador_Proveedores_Cargos_Atipicos", [&](auto& rs) {
                m_leido.contadores[{ adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio"),
                    adodb::entero(rs, "Cod_Almacen") }]
                    = CLng(rs.Fields("Numero").Value());
            });
            recorre(*m_bases.bexmor, "SELECT * FROM Contador_Asientos", [&](auto& rs) {
                m_leido.contadores_asientos[{
                    adodb::entero(rs, "Cod_Empresa"), adodb::entero(rs, "Cod_Ejercicio") }]
                    = CLng(rs.Fields("Numero").Value());
            });
        }

        const bases::Bases& m_bases;
        ContenidoBases m_leido;
        Progreso m_progreso{ "Comprobando" };
    };

}

ContenidoBases lee_contenido(const bases::Bases& bases) { return Lectura(bases).lee(); }

} // namespace atipicos::app
