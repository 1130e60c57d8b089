#include "engines/odbc/Escritura.hpp"

#include "engines/sql/Fechas.hpp"
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Vista.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::odbc {

namespace {

    std::size_t tras_from(const sql::Vista& vista)
    {
        std::size_t i = 0;
        while (i < vista.size() && !vista.es(i, "FROM"))
            ++i;
        return i + 1;
    }

    struct Literal {
        const sql::Dialecto& dialecto;
        Donde donde;

        std::string operator()(std::monostate) const { return "NULL"; }
        std::string operator()(Nulo) const { return "NULL"; }
        std::string operator()(bool valor) const { return valor ? "1" : "0"; }
        std::string operator()(std::int32_t valor) const { return std::to_string(valor); }
        std::string operator()(double valor) const { return texto_sql(valor, donde); }
        std::string operator()(Currency valor) const { return valor.texto(); }
        std::string operator()(Date valor) const
        {
            auto texto = sql::texto_iso(valor);
            // To SQL Server only a date with a "T" is year, month, day in every session.
            if (dialecto.transact && valor.hora_del_dia().count() == 0)
                texto += "T00:00:00";
            else if (dialecto.transact)
                texto[texto.find(' ')] = 'T';
            return "'" + texto + "'";
        }
        std::string operator()(const std::string& valor) const
        {
            std::string texto = dialecto.transact && sql::necesita_n(valor) ? "N'" : "'";
            for (const char c : valor)
                texto.append(c == '\'' ? 2 : 1, c);
            return texto + "'";
        }
        std::string operator()(const std::shared_ptr<Objeto>&) const
        {
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        }
    };

}

std::string con_bloqueo(const std::string& consulta, const Servidor& servidor)
{
    auto tokens = sql::separa(consulta);
    const sql::Vista vista(tokens);
    const auto fin = vista.fin_valor(tras_from(vista));
    const std::string con_indicacion = std::string(vista[fin].texto) + servidor.bloqueo_de_tabla;
    if (fin < vista.size())
        vista.cambia(fin, con_indicacion);
    std::string texto;
    for (const auto& token : tokens)
        texto += token.texto;
    return texto + servidor.bloqueo_al_final;
}

std::string literal(const Variant& valor, const Servidor& servidor, Donde donde)
{
    return std::visit(Literal{ servidor.dialecto, donde }, valor.valor());
}

TablaNombrada tabla_de(const std::string& consulta)
{
    auto tokens = sql::separa(consulta);
    const sql::Vista vista(tokens);
    const auto inicio = tras_from(vista);
    const auto fin = vista.fin_valor(inicio);
    // `catalogo.esquema.nombre`, of which the first ones may be missing
    const auto parte = [&](std::size_t antes) {
        return fin - inicio >= antes ? std::string(vista.nombre(fin - antes)) : std::string();
    };
    TablaNombrada tabla{ parte(4), parte(2), parte(0), {} };
    for (auto i = inicio; i <= fin; ++i)
        tabla.calificada += vista[i].texto;
    return tabla;
}

} // namespace atipicos::odbc
