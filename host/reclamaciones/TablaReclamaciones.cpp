#include "host/reclamaciones/TablaReclamaciones.hpp"

#include "host/comprobacion/CargoConsultado.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Formato.hpp"

#include <ostream>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    constexpr std::size_t cuantas_se_guardan = 1000;

    std::vector<Tabla::Columna> columnas()
    {
        const auto derecha = Alineacion::derecha;
        return { { "Referencia" }, { "Código" }, { "Almacén", derecha }, { "Fecha" }, { "Proveedor" },
            { "Total", derecha }, { "Impuesto", derecha }, { "Asiento", derecha }, { "Estado" } };
    }

    constexpr auto eliminada = "eliminada después";

    std::vector<std::string> celdas(
        const std::string& referencia, const ClaveCargo& clave, const std::string& estado)
    {
        const auto cargo = busca_cargo(clave);
        if (!cargo)
            return { referencia, clave.Codigo, std::to_string(clave.Almacen), "", "", "", "", "", eliminada };
        const auto& cabecera = cargo->cabecera;
        return { referencia, cabecera.Codigo, std::to_string(cabecera.Cod_Almacen), cabecera.Fecha.texto(),
            cabecera.Nombre_Proveedor, texto_pantalla(cabecera.Importe, 2),
            texto_pantalla(cabecera.Impuesto_Importe, 2),
            cabecera.Asiento > 0 ? std::to_string(cabecera.Asiento) : "", estado };
    }

}

TablaReclamaciones::TablaReclamaciones(std::ostream& salida)
    : m_salida(salida)
    , m_tabla(columnas())
{
}

bool TablaReclamaciones::agrega(
    const std::string& referencia, const ClaveCargo& clave, const std::string& estado)
{
    // What is known of it without the database, which is told where that cannot be read.
    std::vector<std::string> fila{ referencia, clave.Codigo, std::to_string(clave.Almacen), "", "", "", "",
        "", estado };
    try {
        if (!m_sin_servidor) // else each try would take as long as it takes to find nobody
            fila = celdas(referencia, clave, estado);
    } catch (const Error& error) {
        const auto* de_la_base = dynamic_cast<const adodb::ErrorBaseDatos*>(&error);
        m_sin_servidor = de_la_base != nullptr && de_la_base->categoria() == adodb::Categoria::conexion;
        m_fallo = error.descripcion();
    }
    const bool esta = fila.back() != eliminada;
    if (m_escrita) {
        m_tabla.escribe_fila(m_salida, std::move(fila));
        return esta;
    }
    m_tabla.agrega(std::move(fila));
    if (m_tabla.filas() == cuantas_se_guardan)
        termina();
    return esta;
}

bool TablaReclamaciones::escribe_al_paso() const noexcept
{
    return m_tabla.filas() + 1 >= cuantas_se_guardan;
}

void TablaReclamaciones::termina()
{
    if (m_tabla.filas() > 0 && !std::exchange(m_escrita, true))
        m_tabla.escribe(m_salida);
}

} // namespace atipicos::app
