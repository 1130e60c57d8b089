#include "host/comprobacion/Contrario.hpp"

#include "context/Transaccion.hpp"
#include "host/bexmor/Asiento.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/sql/Literal.hpp"
#include "host/terminal/Interrupcion.hpp"

#include <functional>
#include <map>
#include <memory>

namespace atipicos::app {

namespace {

    constexpr std::int32_t error_contable = 1000;
    constexpr auto fuente = "Orvalin:Regularizar";

    /// Another user has reversed the same entry while this one was at it.
    struct Adelantado { };

    Currency negativo(Currency importe) { return Currency() - importe; }

    /// Posts entries that mirror others, dated as `quien` says.
    class Contador {
    public:
        Contador(const bases::Bases& bases, const Regularizador& quien)
            : m_biblioteca(bases.bexmor)
            , m_quien(quien)
        {
        }

        ClaveAsiento anula(const AsientoContabilizado& original, Donde donde)
        {
            const auto& empresa = empresa_de(original.clave.empresa, donde);
            bexmor::Asiento asiento(empresa);
            asiento.Fecha = m_quien.fecha;
            asiento.Crear(donde);
            for (const auto& uno : original.apuntes)
                apunta(empresa, asiento, uno, donde);
            for (const auto& uno : original.registros)
                registra(empresa, asiento.Numero, uno, donde);
            for (const auto& una : original.previsiones)
                preve(empresa, asiento.Numero, una, donde);
            if (asiento.Descuadre(donde) != Currency())
                throw Error(error_contable, fuente, "No cuadra, así que su contrario tampoco.", donde);
            return { empresa.Codigo, empresa.Ejercicio, asiento.Numero };
        }

    private:
        const qvbxemp::Empresa& empresa_de(std::int16_t codigo, Donde donde)
        {
            auto& empresa = m_empresas[codigo];
            if (empresa)
                return *empresa;
            auto nueva = m_biblioteca.NuevaEmpresa(donde);
            nueva->Codigo = codigo;
            if (!nueva->Cargar(donde))
                throw Error(error_contable, fuente,
                    "No existe la empresa contable " + std::to_string(codigo) + ".", donde);
            nueva->Ejercicio = CInt(m_quien.fecha.anio());
            nueva->FechaTrabajo = m_quien.fecha;
            nueva->UsuarioActual = m_quien.usuario;
            empresa = std::move(nueva);
            return *empresa;
        }

        void apunta(const qvbxemp::Empresa& empresa, bexmor::Asiento& asiento, const ApunteGuardado& uno,
            Donde donde) const
        {
            const auto apunte = m_biblioteca.NuevoApunte(empresa, donde);
            apunte->Asiento = asiento.Numero;
            apunte->Linea = asiento.SiguienteLinea(donde);
            apunte->Cuenta = uno.cuenta;
            apunte->ConceptoAutomatico = uno.concepto_automatico;
            apunte->Concepto = uno.concepto;
            apunte->Documento = uno.documento;
            apunte->Departamento = uno.departamento;
            apunte->Debe = uno.haber;
            apunte->Haber = uno.debe;
            apunte->TipoImpuesto = uno.tipo_impuesto;
            apunte->PorcentajeImpuesto = uno.porcentaje;
            apunte->BaseImpuesto = negativo(uno.base);
            if (!apunte->Guardar(donde))
                throw Error(apunte->error());
        }

        void registra(const qvbxemp::Empresa& empresa, std::int32_t asiento, const RegistroGuardado& uno,
            Donde donde) const
        {
            const auto registro = m_biblioteca.NuevoRegistroImpuesto(empresa, donde);
            registro->Asiento = asiento;
            registro->Linea = uno.linea;
            registro->Clase = uno.clase;
            registro->Indicador = uno.indicador;
            registro->Documento = uno.documento;
            registro->Base = negativo(uno.base);
            registro->TipoImpuesto = uno.tipo;
            registro->Cuota = negativo(uno.cuota);
            registro->TotalImpuesto = negativo(uno.total);
            registro->Guardar(donde);
        }

        void preve(const qvbxemp::Empresa& empresa, std::int32_t asiento, const PrevisionGuardada& una,
            Donde donde) const
        {
            const auto prevision = m_biblioteca.NuevaPrevision(empresa, donde);
            prevision->Asiento = asiento;
            prevision->Cuenta = una.cuenta;
            prevision->Departamento = una.departamento;
            prevision->Importe = negativo(una.importe);
            prevision->TipoDoc = una.tipo_doc;
            prevision->Vencimiento = una.vencimiento;
            prevision->Banco = una.banco;
            prevision->Guardar(donde);
        }

        bexmor::Biblioteca m_biblioteca;
        const Regularizador& m_quien;
        std::map<std::int16_t, std::unique_ptr<qvbxemp::Empresa>> m_empresas;
    };

    /// Whether a charge names the entry at this moment.
    bool es_de_un_cargo(adodb::Connection& orvalin, const ClaveAsiento& asiento, const std::string& documento)
    {
        const auto rs = orvalin.CreateRecordset();
        rs->Open("SELECT COUNT(*) AS Cuantos FROM Almacenes a INNER JOIN Proveedores_Cargos_Atipicos c"
                 " ON c.Cod_Empresa = a.Cod_Empresa AND c.Cod_Almacen = a.Codigo WHERE c.Cod_Ejercicio ="
                + std::to_string(asiento.ejercicio) + " AND c.Codigo =" + sql::literal(documento)
                + " AND c.EmpContable =" + std::to_string(asiento.empresa)
                + " AND c.Asiento =" + std::to_string(asiento.numero),
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return CLng(rs->Fields("Cuantos").Value()) > 0;
    }

    /// What stands in the way of reversing an entry, read in the transaction that does it; empty: nothing.
    std::string estorbo(const bases::Bases& bases, const ClaveAsiento& clave,
        const std::optional<AsientoContabilizado>& asiento)
    {
        if (!asiento)
            return "ya no está en Contabilidad";
        if (esta_regularizado(*bases.bexmor, clave))
            return "otro usuario acaba de regularizarlo";
        if (es_de_un_cargo(*bases.orvalin, clave, asiento->documento()))
            return "es el de un cargo que existe";
        return {};
    }

    void enlaza(adodb::Connection& bexmor, const Regularizacion& una, const Regularizador& quien)
    {
        try {
            apunta_regularizacion(bexmor, una, quien.usuario, quien.hora);
        } catch (const adodb::ErrorBaseDatos& error) {
            if (error.categoria() == adodb::Categoria::restriccion)
                throw Adelantado();
            throw;
        }
    }

    using Contraria = std::function<ClaveAsiento(const AsientoContabilizado&)>; ///< number 0: made by hand

    ResultadoRegularizar de_una_vez(const bases::Bases& bases, std::span<const ClaveAsiento> asientos,
        const Regularizador& quien, const Contraria& contraria, Donde donde)
    {
        ResultadoRegularizar resultado;
        Transaccion gestion(bases.orvalin, donde);
        Transaccion contabilidad(bases.bexmor, donde);
        for (const auto& clave : asientos) {
            Interrupcion::comprueba();
            const auto asiento = lee_asiento(*bases.bexmor, clave);
            if (auto motivo = estorbo(bases, clave, asiento); !motivo.empty()) {
                resultado.omitidas.emplace_back(clave, std::move(motivo));
                continue;
            }
            try {
                const auto& hecha
                    = resultado.hechas.emplace_back(Regularizacion{ clave, contraria(*asiento) });
                enlaza(*bases.bexmor, hecha, quien);
            } catch (const Error& error) {
                throw Error(error.numero(), error.fuente(),
                    "No se puede anular el " + texto(clave) + ": " + error.descripcion()
                        + " No se ha anulado ninguno.",
                    donde);
            }
        }
        gestion.Confirma(donde);
        contabilidad.Confirma(donde);
        return resultado;
    }

    ResultadoRegularizar hasta_conseguirlo(const bases::Bases& bases, std::span<const ClaveAsiento> asientos,
        const Regularizador& quien, const std::function<Contraria()>& nueva, Donde donde)
    {
        for (int veces = 0; veces < 3; ++veces) {
            try {
                return de_una_vez(bases, asientos, quien, nueva(), donde);
            } catch (const Adelantado&) {
                continue; // all undone: what the other has done is found the next time
            }
        }
        throw Error(error_contable, fuente,
            "Otro usuario está regularizando los mismos asientos: no se ha anulado ninguno. Repita la orden.",
            donde);
    }

}

ResultadoRegularizar regulariza(const bases::Bases& bases, std::span<const ClaveAsiento> asientos,
    const Regularizador& quien, Donde donde)
{
    return hasta_conseguirlo(
        bases, asientos, quien,
        [&]() -> Contraria {
            return [contador = std::make_shared<Contador>(bases, quien), donde](
                       const AsientoContabilizado& asiento) { return contador->anula(asiento, donde); };
        },
        donde);
}

ResultadoRegularizar da_por_saldados(const bases::Bases& bases, std::span<const ClaveAsiento> asientos,
    const Regularizador& quien, Donde donde)
{
    return hasta_conseguirlo(
        bases, asientos, quien,
        [] {
            return [](const AsientoContabilizado& asiento) {
                return ClaveAsiento{ asiento.clave.empresa, 0, 0 };
            };
        },
        donde);
}

} // namespace atipicos::app
