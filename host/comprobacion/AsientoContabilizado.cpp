#include "host/comprobacion/AsientoContabilizado.hpp"

#include "host/comprobacion/CodigoCargo.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <limits>
#include <memory>

namespace atipicos::app {

namespace {

    constexpr std::int64_t por_tramo = 2'048;

    /// Entries of one company and year that follow each other.
    struct Tramo {
        std::int16_t empresa = 0;
        std::int16_t ejercicio = 0;
        std::int64_t desde = 0;
        std::int64_t hasta = 0;
        bool entero = false; ///< with concepts and the data of the tax
    };

    std::string donde_esta(const Tramo& tramo, const char* numero)
    {
        return " WHERE Cod_Empresa =" + std::to_string(tramo.empresa)
            + " AND Cod_Ejercicio =" + std::to_string(tramo.ejercicio) + " AND " + numero
            + " >=" + std::to_string(tramo.desde) + " AND " + numero + " <=" + std::to_string(tramo.hasta);
    }

    std::int32_t largo(const adodb::Field& campo) { return CLng(campo.Value()); }
    std::int16_t corto(const adodb::Field& campo) { return CInt(campo.Value()); }
    Currency importe(const adodb::Field& campo) { return CCur(campo.Value()); }
    std::string texto(const adodb::Field& campo)
    {
        std::string leido;
        campo.anexa_texto(leido);
        return leido;
    }

    /// The entries of a stretch, and where to put what hangs on them.
    class Lectura {
    public:
        Lectura(adodb::Connection& bexmor, const Tramo& tramo)
            : m_bexmor(bexmor)
            , m_tramo(tramo)
        {
        }

        std::vector<AsientoContabilizado> lee()
        {
            lee_cabeceras();
            lee_apuntes();
            lee_registros();
            lee_previsiones();
            return std::move(m_asientos);
        }

    private:
        void lee_cabeceras()
        {
            const auto rs = adodb::flujo(m_bexmor,
                "SELECT Numero, Fecha FROM Asientos" + donde_esta(m_tramo, "Numero") + " ORDER BY Numero");
            const auto& numero = rs->Fields(std::size_t{ 0 });
            const auto& fecha = rs->Fields(1);
            for (; !rs->Eof(); rs->MoveNext()) {
                auto& asiento = m_asientos.emplace_back();
                asiento.clave = { m_tramo.empresa, m_tramo.ejercicio, largo(numero) };
                asiento.fecha = CDate(fecha.Value());
            }
        }

        /// Calls `cada` for each row, with its entry and its fields after the number of that.
        template <class Cada>
        void recorre(const std::string& columnas, const std::string& tabla, const char* orden, Cada cada)
        {
            const auto rs = adodb::flujo(m_bexmor,
                "SELECT Asiento, " + columnas + " FROM " + tabla + donde_esta(m_tramo, "Asiento")
                    + " ORDER BY Asiento, " + orden);
            std::vector<adodb::Field*> campos;
            for (std::size_t i = 0; i < rs->Count(); ++i)
                campos.push_back(&rs->Fields(i));
            auto lugar = m_asientos.begin();
            for (; !rs->Eof(); rs->MoveNext()) {
                const auto numero = largo(*campos[0]);
                while (lugar != m_asientos.end() && lugar->clave.numero < numero)
                    ++lugar;
                // Without its header it is nothing to look at: the database itself says that of it.
                if (lugar != m_asientos.end() && lugar->clave.numero == numero)
                    cada(*lugar, campos);
            }
        }

        void lee_apuntes()
        {
            const std::string resto = m_tramo.entero
                ? ", ConceptoAutomatico, Concepto, TipoImpuesto, PorcentajeImpuesto, BaseImpuesto"
                : "";
            recorre("Linea, Cuenta, Documento, Departamento, Debe, Haber" + resto, "Apuntes", "Linea",
                [&](AsientoContabilizado& asiento, const std::vector<adodb::Field*>& campos) {
                    auto& uno = asiento.apuntes.emplace_back();
                    uno.linea = largo(*campos[1]);
                    uno.cuenta = texto(*campos[2]);
                    uno.documento = texto(*campos[3]);
                    uno.departamento = texto(*campos[4]);
                    uno.debe = importe(*campos[5]);
                    uno.haber = importe(*campos[6]);
                    if (!m_tramo.entero)
                        return;
                    uno.concepto_automatico = texto(*campos[7]);
                    uno.concepto = texto(*campos[8]);
                    uno.tipo_impuesto = corto(*campos[9]);
                    uno.porcentaje = importe(*campos[10]);
                    uno.base = importe(*campos[11]);
                });
        }

        void lee_registros()
        {
            recorre("Linea, Clase, Indicador, Documento, Base, TipoImpuesto, Cuota, TotalImpuesto",
                "Registro_Impuestos", "Linea",
                [](AsientoContabilizado& asiento, const std::vector<adodb::Field*>& campos) {
                    asiento.registros.push_back({ largo(*campos[1]), corto(*campos[2]), corto(*campos[3]),
                        texto(*campos[4]), importe(*campos[5]), corto(*campos[6]), importe(*campos[7]),
                        importe(*campos[8]) });
                });
        }

        void lee_previsiones()
        {
            recorre("Numero, Cuenta, Departamento, Importe, TipoDoc, Vencimiento, Banco", "Previsiones",
                "Numero", [](AsientoContabilizado& asiento, const std::vector<adodb::Field*>& campos) {
                    asiento.previsiones.push_back(
                        { largo(*campos[1]), texto(*campos[2]), texto(*campos[3]), importe(*campos[4]),
                            corto(*campos[5]), CDate(campos[6]->Value()), texto(*campos[7]) });
                });
        }

        adodb::Connection& m_bexmor;
        Tramo m_tramo;
        std::vector<AsientoContabilizado> m_asientos;
    };

    /// The first number after another one; nothing when that was the last.
    std::optional<std::int64_t> siguiente(adodb::Connection& bexmor, const Tramo& tramo)
    {
        const auto rs = adodb::flujo(bexmor,
            "SELECT MIN(Numero) AS Primero FROM Asientos WHERE Cod_Empresa =" + std::to_string(tramo.empresa)
                + " AND Cod_Ejercicio =" + std::to_string(tramo.ejercicio) + " AND Numero >"
                + std::to_string(tramo.hasta));
        const Variant primero = rs->Fields("Primero").Value();
        return primero.es_nulo() ? std::nullopt : std::optional<std::int64_t>(CLng(primero));
    }

    std::vector<Tramo> ejercicios(adodb::Connection& bexmor)
    {
        std::vector<Tramo> todos;
        const auto rs = adodb::flujo(bexmor,
            "SELECT DISTINCT Cod_Empresa, Cod_Ejercicio FROM Asientos ORDER BY Cod_Empresa, Cod_Ejercicio");
        for (; !rs->Eof(); rs->MoveNext())
            todos.push_back({ corto(rs->Fields("Cod_Empresa")), corto(rs->Fields("Cod_Ejercicio")) });
        return todos;
    }

}

Currency AsientoContabilizado::debe() const
{
    Currency suma;
    for (const auto& uno : apuntes)
        suma += uno.debe;
    return suma;
}

Currency AsientoContabilizado::haber() const
{
    Currency suma;
    for (const auto& uno : apuntes)
        suma += uno.haber;
    return suma;
}

Currency AsientoContabilizado::suma_previsiones() const
{
    Currency suma;
    for (const auto& una : previsiones)
        suma += una.importe;
    return suma;
}

std::string AsientoContabilizado::documento() const
{
    return apuntes.empty() ? std::string() : apuntes.front().documento;
}

std::size_t AsientoContabilizado::fin_de_ingresos() const noexcept
{
    const std::size_t otras = 2 + std::min<std::size_t>(registros.size(), 1);
    return apuntes.size() > otras ? apuntes.size() - otras : 0;
}

bool AsientoContabilizado::es_de_un_cargo() const
{
    if (fin_de_ingresos() < 2 || registros.size() > 1 || numero_de(documento()) == 0)
        return false;
    const auto& primero = apuntes.front();
    const auto& proveedor = apuntes[apuntes.size() - 2];
    const auto& ultimo = apuntes.back();
    const Currency nada;
    std::int32_t linea = 0;
    return primero.haber == nada && proveedor.haber == nada && ultimo.debe == nada
        && primero.debe == proveedor.debe && primero.debe == ultimo.haber && primero.cuenta == ultimo.cuenta
        && std::all_of(apuntes.begin(), apuntes.end(),
            [&](const auto& uno) { return uno.linea == ++linea && uno.documento == primero.documento; });
}

void recorre_asientos(adodb::Connection& bexmor, const std::function<void(const AsientoContabilizado&)>& cada)
{
    for (auto tramo : ejercicios(bexmor)) {
        tramo.hasta = std::numeric_limits<std::int32_t>::min() - std::int64_t{ 1 };
        while (const auto desde = siguiente(bexmor, tramo)) {
            tramo.desde = *desde;
            tramo.hasta
                = std::min<std::int64_t>(*desde + por_tramo - 1, std::numeric_limits<std::int32_t>::max());
            for (const auto& asiento : Lectura(bexmor, tramo).lee()) {
                Interrupcion::comprueba();
                cada(asiento);
            }
        }
    }
}

std::optional<AsientoContabilizado> lee_asiento(adodb::Connection& bexmor, const ClaveAsiento& clave)
{
    auto leidos = Lectura(bexmor, { clave.empresa, clave.ejercicio, clave.numero, clave.numero, true }).lee();
    return leidos.empty() ? std::nullopt : std::optional(std::move(leidos.front()));
}

} // namespace atipicos::app
