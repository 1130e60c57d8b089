#include "editor/EdicionAtipico.hpp"

#include "charges/Impuesto.hpp"
#include "context/modComun.hpp"
#include "editor/GuardarAtipico.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"

#include <limits>
#include <utility>

namespace atipicos {

namespace {

    /// Of a row that there is, or of the one behind the last.
    std::int16_t posicion(std::int32_t fila)
    {
        if (fila > std::numeric_limits<std::int16_t>::max())
            throw Error::de_ejecucion(numero_error::desbordamiento);
        return static_cast<std::int16_t>(fila);
    }

    void escribe_linea(clsAtipico_Linea& destino, const LineaTecleada& linea)
    {
        destino.Cod_Articulo = linea.Cod_Articulo;
        destino.Descripcion = linea.Descripcion;
        destino.Observaciones = linea.Observaciones;
        destino.Precio = linea.Costo;
        destino.Unidades = linea.Unidades;
    }

}

std::string FilaCargo::texto(int decimales_costo) const
{
    std::string fila;
    anexa_celda(fila, linea.Cod_Articulo);
    fila += '\t';
    anexa_celda(fila, linea.Descripcion);
    fila += '\t';
    anexa_celda(fila, linea.Observaciones);
    fila += '\t';
    anexa_pantalla(fila, linea.Unidades, decimales_unidades);
    fila += '\t';
    anexa_pantalla(fila, linea.Costo, decimales_costo);
    fila += '\t';
    anexa_pantalla(fila, Importe, decimales_importe);
    fila += '\t';
    anexa_celda(fila, Cuenta);
    return fila;
}

void EdicionAtipico::Nuevo_Atipico()
{
    const auto ejercicio = CInt(modComun::reloj().hoy().anio());
    m_cargo = {};
    m_cargo.Cod_Ejercicio = ejercicio;
    m_filas.clear();
    m_total = {};
    Dejar_Linea();
}

void EdicionAtipico::Dejar_Linea() noexcept
{
    m_bolNuevaLinea = true;
    m_intLineaActual = 0;
}

FilaCargo& EdicionAtipico::fila(std::int32_t numero)
{
    if (numero < 1 || static_cast<std::size_t>(numero) > m_filas.size())
        throw Error::de_ejecucion(numero_error::argumento_no_valido);
    return m_filas[static_cast<std::size_t>(numero) - 1];
}

FilaCargo EdicionAtipico::forma_fila(const LineaTecleada& linea, std::string cuenta) const
{
    FilaCargo fila{ linea, importe_linea(linea.Unidades, linea.Costo), std::move(cuenta),
        linea.Cod_Articulo };
    fila.linea.Unidades = Redondear(linea.Unidades, decimales_unidades);
    fila.linea.Costo = Redondear(linea.Costo, modComun::EmpresaOrvalin()->DecimalesCosto());
    return fila;
}

std::int32_t EdicionAtipico::Aceptar_Linea(const LineaTecleada& linea, const CuentaDeArticulo& cuenta)
{
    FilaCargo nueva = forma_fila(linea, linea.Cod_Articulo == 0 ? std::string() : cuenta(linea.Cod_Articulo));
    std::int32_t numero = m_intLineaActual;
    if (numero != 0) {
        cambia(linea, std::move(nueva));
    } else {
        numero = static_cast<std::int32_t>(m_filas.size()) + 1;
        agrega(linea, std::move(nueva), 0);
    }
    Dejar_Linea();
    return numero;
}

void EdicionAtipico::cambia(const LineaTecleada& linea, FilaCargo nueva)
{
    FilaCargo& antigua = fila(m_intLineaActual);
    nueva.Cuenta = antigua.Cuenta; // only the six visible cells are rewritten
    nueva.ArticuloDeCuenta = antigua.ArticuloDeCuenta;
    nueva.FilaCargada = antigua.FilaCargada;
    const auto del_cargo = m_cargo.Lineas->Item(posicion(m_intLineaActual));
    const Currency total = Calcular_Total() - antigua.Importe + nueva.Importe;
    escribe_linea(*del_cargo, linea);
    antigua = std::move(nueva);
    m_total = total;
}

void EdicionAtipico::agrega(const LineaTecleada& linea, FilaCargo fila, std::int32_t Num_Linea)
{
    static_cast<void>(posicion(m_cargo.Lineas->Count() + 1)); // there is room for it
    const Currency total = m_total + fila.Importe;
    m_filas.push_back(std::move(fila));
    try {
        const auto del_cargo = m_cargo.Lineas->Add();
        del_cargo->NumLinea = Num_Linea;
        escribe_linea(*del_cargo, linea);
    } catch (...) {
        m_filas.pop_back();
        throw;
    }
    m_total = total;
}

void EdicionAtipico::Cargar_Linea(
    const LineaTecleada& linea, std::int32_t Num_Linea, const std::string& cuenta)
{
    FilaCargo fila = forma_fila(linea, cuenta);
    fila.FilaCargada = static_cast<std::int32_t>(m_filas.size()) + 1;
    fila.Intacta = true;
    agrega(linea, std::move(fila), Num_Linea);
}

LineaTecleada EdicionAtipico::Modificar_Linea(std::int32_t numero)
{
    LineaTecleada linea = fila(numero).linea;
    m_intLineaActual = numero;
    m_bolNuevaLinea = false;
    return linea;
}

void EdicionAtipico::Eliminar_Linea(std::int32_t numero)
{
    const Currency total = m_total - fila(numero).Importe;
    m_cargo.Lineas->Remove(posicion(numero));
    m_filas.erase(m_filas.begin() + (numero - 1));
    m_total = total;
    if (m_intLineaActual == numero)
        Dejar_Linea();
    else if (m_intLineaActual > numero)
        --m_intLineaActual;
}

void EdicionAtipico::Comentar_Linea(std::int32_t numero, const std::string& observaciones)
{
    FilaCargo& comentada = fila(numero);
    m_cargo.Lineas->Item(posicion(numero))->Observaciones = observaciones;
    comentada.linea.Observaciones = observaciones;
    comentada.Intacta = false;
}

Currency EdicionAtipico::Calcular_Total() const
{
    Currency total;
    for (const auto& fila : m_filas)
        total += fila.Importe;
    return total;
}

void EdicionAtipico::Rellenar(CargoTecleado& tecleado) const
{
    tecleado.Total = m_total;
    tecleado.Cargos.clear();
    for (const auto& fila : m_filas)
        tecleado.Cargos.push_back({ fila.Importe, fila.Cuenta });
}

} // namespace atipicos
