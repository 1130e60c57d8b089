#include "host/resumen/LecturaResumen.hpp"

#include "platform/adodb/campos.hpp"
#include "runtime/Redondeo.hpp"

#include <charconv>
#include <limits>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::int64_t por_centimo = Currency::escala / 100;

    /// A sum, which comes as the text of a whole number.
    std::int64_t entero(const adodb::Field& campo, std::string& texto, Donde donde)
    {
        texto.clear();
        campo.anexa_texto(texto);
        std::int64_t valor = 0;
        const auto leido = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        if (leido.ec != std::errc() || leido.ptr != texto.data() + texto.size())
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return valor;
    }

    Currency de_centimos(std::int64_t centimos, Donde donde)
    {
        constexpr auto limite = std::numeric_limits<std::int64_t>::max() / por_centimo;
        if (centimos > limite || centimos < -limite)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return Currency::de_crudo(centimos * por_centimo);
    }

    /// The fields, looked for once.
    class Lector {
    public:
        Lector(adodb::Recordset& rs, VistaResumen por, Donde donde)
            : m_por(por)
            , m_donde(donde)
            , m_clave(rs.Fields("Clave", donde))
            , m_antes(rs.Fields("Antes", donde))
            , m_cuantos(rs.Fields("Cuantos", donde))
            , m_base(rs.Fields("Base", donde))
            , m_impuesto(rs.Fields("Impuesto", donde))
            , m_nombre(por == VistaResumen::mes ? nullptr : &rs.Fields("Nombre", donde))
        {
        }

        [[nodiscard]] GrupoResumen lee()
        {
            GrupoResumen grupo;
            const bool antes = CLng(m_antes.Value(m_donde), m_donde) != 0;
            grupo.clave = clave(antes);
            if (m_nombre != nullptr)
                m_nombre->anexa_texto(grupo.nombre);
            auto& cifras = antes ? grupo.antes : grupo.ahora;
            cifras.cuantos = CLng(m_cuantos.Value(m_donde), m_donde);
            const auto base = entero(m_base, m_texto, m_donde);
            const auto impuesto = entero(m_impuesto, m_texto, m_donde);
            if (m_por != VistaResumen::articulo) {
                cifras.base = Currency::de_crudo(base);
                cifras.impuesto = Currency::de_crudo(impuesto);
                return grupo;
            }
            constexpr std::int64_t del_tipo = std::int64_t{ 100 } * Currency::escala; // a rate of 100 percent
            cifras.base = de_centimos(base, m_donde);
            cifras.impuesto = de_centimos(redondea_cociente(impuesto, del_tipo), m_donde);
            return grupo;
        }

    private:
        /// A month of the year before stands beside the one that it is compared with.
        [[nodiscard]] std::int32_t clave(bool antes) const
        {
            const auto valor = m_clave.Value(m_donde);
            if (m_por != VistaResumen::mes)
                return CLng(valor, m_donde);
            return clave_de_mes(CDate(valor, m_donde)) + (antes ? 12 : 0);
        }

        VistaResumen m_por;
        Donde m_donde;
        const adodb::Field& m_clave;
        const adodb::Field& m_antes;
        const adodb::Field& m_cuantos;
        const adodb::Field& m_base;
        const adodb::Field& m_impuesto;
        const adodb::Field* m_nombre;
        std::string m_texto;
    };

}

ResumenCargos lee_resumen(
    adodb::Connection& orvalin, const AmbitoResumen& ambito, const PeticionResumen& peticion, Donde donde)
{
    std::vector<GrupoResumen> grupos;
    const auto rs = adodb::flujo(orvalin, instruccion_resumen(peticion, ambito), donde);
    Lector lector(*rs, peticion.por, donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        grupos.push_back(lector.lee());
    return { peticion, std::move(grupos) };
}

} // namespace atipicos::app
