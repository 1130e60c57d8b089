#include "host/panel/Busqueda.hpp"

#include "host/panel/NombresPlanos.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Error.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <set>
#include <tuple>

namespace atipicos::app {

namespace {

    constexpr std::size_t mas_largo_un_codigo = 20; ///< as its column
    constexpr std::size_t cifras_de_un_comienzo = 2; ///< fewer digits are the beginning of nearly all codes

    bool es_cifra(char c) { return c >= '0' && c <= '9'; }

    std::string recortado(std::string_view texto)
    {
        const auto desde = texto.find_first_not_of(" \t");
        const auto hasta = texto.find_last_not_of(" \t");
        return desde == std::string_view::npos ? std::string()
                                               : std::string(texto.substr(desde, hasta - desde + 1));
    }

    std::optional<Currency> importe_de(const std::string& texto)
    {
        try {
            return lee_pantalla(texto);
        } catch (const Error&) {
            return std::nullopt; // it is no amount
        }
    }

    /// The codes that begin so: "26" may be of AT26….
    std::vector<std::string> codigos_de(std::string texto)
    {
        const bool con_cifras = std::any_of(texto.begin(), texto.end(), es_cifra);
        const bool solo_cifras = std::all_of(texto.begin(), texto.end(), es_cifra);
        const bool de_codigo = std::all_of(texto.begin(), texto.end(),
            [](char c) { return es_cifra(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
        if (!con_cifras || !de_codigo || texto.size() > mas_largo_un_codigo
            || (solo_cifras && texto.size() < cifras_de_un_comienzo))
            return {};
        for (char& c : texto)
            if (c >= 'a' && c <= 'z')
                c = static_cast<char>(c - 'a' + 'A');
        return { solo_cifras ? "AT" + texto : texto };
    }

    std::string lista_de(const std::vector<std::int32_t>& codigos)
    {
        std::string lista;
        for (const auto codigo : codigos)
            lista += (lista.empty() ? "" : ", ") + std::to_string(codigo);
        return lista;
    }

    /// Total and base of a charge are compared apart by less than half a cent: some databases add in binary.
    std::string condicion_de(const Buscado& buscado)
    {
        std::string condicion;
        if (!buscado.proveedores.empty())
            condicion = "pc.Proveedor IN (" + lista_de(buscado.proveedores) + ")";
        if (buscado.importe) {
            const auto margen = Currency::de_crudo(Currency::escala / 250);
            condicion += (condicion.empty() ? "" : " OR ") + std::string("pc.Importe = ")
                + sql::literal(*buscado.importe) + " OR (pc.Importe + pc.Impuesto_Importe > "
                + sql::literal(*buscado.importe - margen) + " AND pc.Importe + pc.Impuesto_Importe < "
                + sql::literal(*buscado.importe + margen) + ")";
        }
        return condicion;
    }

    Date primero_de_mes(Date dia) { return Date::de_dia(dia.anio(), dia.mes(), 1).value_or(dia); }

}

Busqueda::Busqueda(const Ambito& ambito)
    : m_ambito(ambito)
{
    for (const auto rs = adodb::consulta(*m_ambito.bases.orvalin,
             "SELECT Codigo, Nombre FROM Proveedores WHERE Cod_Empresa ="
                 + std::to_string(m_ambito.empresa_proveedores) + " ORDER BY Codigo");
         !rs->Eof(); rs->MoveNext())
        m_proveedores.emplace_back(CLng(rs->Fields("Codigo").Value()), plano(adodb::texto(*rs, "Nombre")));
}

Buscado Busqueda::interpreta(std::string_view tecleado) const
{
    const auto texto = recortado(tecleado);
    Buscado buscado;
    if (texto.empty())
        return buscado;
    buscado.codigos = codigos_de(texto);
    buscado.importe = importe_de(texto);
    const auto todas = palabras(plano(texto));
    for (const auto& [codigo, nombre] : m_proveedores) {
        const bool se_llama_asi = std::all_of(todas.begin(), todas.end(),
            [&nombre = nombre](const auto& una) { return nombre.find(una) != std::string::npos; });
        if ((se_llama_asi || std::to_string(codigo) == texto)
            && buscado.proveedores.size() < maximo_proveedores)
            buscado.proveedores.push_back(codigo);
    }
    return buscado;
}

/// Newest years first; in each series the primary key leads to the codes that begin so.
void Busqueda::por_codigo(const std::string& comienzo, const Sigue& sigue, const Hallazgo& lee) const
{
    const auto series = adodb::consulta(*m_ambito.bases.orvalin,
        "SELECT Cod_Ejercicio, Cod_Almacen FROM Contador_Proveedores_Cargos_Atipicos WHERE Cod_Empresa ="
            + std::to_string(m_ambito.empresa) + " ORDER BY Cod_Ejercicio DESC, Cod_Almacen ASC");
    for (; !series->Eof() && sigue(); series->MoveNext())
        lee(" AND pc.Cod_Ejercicio =" + std::to_string(adodb::entero(*series, "Cod_Ejercicio"))
                + " AND pc.Cod_Almacen =" + std::to_string(adodb::entero(*series, "Cod_Almacen"))
                + " AND pc.Codigo >= " + sql::literal(comienzo) + " AND pc.Codigo < "
                + sql::literal(comienzo + "~"), // no code has a character behind it
            Camino::por_codigos);
}

std::optional<Date> Busqueda::ultimo_dia() const
{
    const auto rs = adodb::consulta(*m_ambito.bases.orvalin,
        "SELECT pc.Fecha FROM Proveedores_Cargos_Atipicos pc WHERE pc.Cod_Empresa ="
            + std::to_string(m_ambito.empresa) + " ORDER BY pc.Fecha DESC" + como_mucho(1));
    if (rs->Eof())
        return std::nullopt;
    return CDate(rs->Fields("Fecha").Value()).solo_dia();
}

/// What is looked for is mostly of the last months, where a few hundred rows of the index are enough.
void Busqueda::por_condicion(const std::string& condicion, const Sigue& sigue, const Hallazgo& lee) const
{
    const auto dia = ultimo_dia();
    if (!dia || !sigue())
        return;
    const auto desde = primero_de_mes(primero_de_mes(*dia).mas_dias(-1));
    lee(entre_dias("pc.Fecha", desde, *dia) + " AND (" + condicion + ")", Camino::por_lista);
    if (sigue())
        lee(" AND pc.Fecha < " + sql::literal(desde) + " AND (" + condicion + ")", Camino::por_tabla);
}

bool Busqueda::busca(const Buscado& buscado, const Sigue& sigue,
    const std::function<void(std::vector<CargoResumido>)>& halladas) const
{
    std::set<std::tuple<std::int16_t, std::int16_t, std::string>> vistos;
    const Sigue queda_sitio = [&] { return vistos.size() < maximo && sigue(); };
    const Hallazgo lee = [&](const std::string& condicion, Camino camino) {
        std::vector<CargoResumido> nuevos;
        lee_cargos(*m_ambito.bases.orvalin,
            instruccion_de_cargos(m_ambito, condicion, maximo - vistos.size(), camino),
            [&](const auto& cargo) {
                if (vistos.emplace(cargo.ejercicio, cargo.almacen, cargo.codigo).second)
                    nuevos.push_back(cargo);
            });
        if (!nuevos.empty())
            halladas(std::move(nuevos));
    };
    for (const auto& codigo : buscado.codigos)
        por_codigo(codigo, queda_sitio, lee);
    if (const auto condicion = condicion_de(buscado); !condicion.empty() && queda_sitio())
        por_condicion(condicion, queda_sitio, lee);
    return vistos.size() >= maximo;
}

} // namespace atipicos::app
