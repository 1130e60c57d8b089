#include "editor/BorradorDelEditor.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"

#include <utility>

namespace atipicos {

bool BorradorDelEditor::merece(const Borrador& borrador) const
{
    if (!borrador.Codigo.empty())
        return borrador != m_de_partida;
    return !borrador.Lineas.empty() || borrador.HayEnCurso;
}

void BorradorDelEditor::Empezar(const Borrador& de_partida) noexcept
{
    Dejar();
    try {
        m_de_partida = de_partida;
        m_ultimo = de_partida;
        if (const auto borradores = modComun::comparte_Borradores())
            m_abierto = borradores->Abrir();
    } catch (...) {
        m_abierto.reset(); // the first one to be kept tells what is wrong
    }
}

std::string BorradorDelEditor::Guardar(const Borrador& ahora) noexcept
{
    try {
        const auto borradores = modComun::comparte_Borradores();
        if (!borradores || ahora == m_ultimo)
            return {};
        if (!merece(ahora)) {
            Quitar();
        } else {
            if (!m_abierto)
                m_abierto = borradores->Abrir();
            m_hay = true; // also what could only be written in part is taken away later
            m_abierto->Guardar(ahora);
        }
        m_ultimo = ahora;
        return {};
    } catch (...) {
        return error_en_curso().descripcion();
    }
}

void BorradorDelEditor::Quitar() noexcept
{
    if (m_abierto && std::exchange(m_hay, false))
        m_abierto->Quitar();
    m_ultimo = {};
}

void BorradorDelEditor::Dejar() noexcept
{
    m_abierto.reset();
    m_de_partida = {};
    m_ultimo = {};
    m_hay = false;
}

LineaBorrador en_borrador(const LineaTecleada& linea)
{
    LineaBorrador guardada;
    guardada.Cod_Articulo = linea.Cod_Articulo;
    guardada.Descripcion = linea.Descripcion;
    guardada.Observaciones = linea.Observaciones;
    guardada.Unidades = linea.Unidades;
    guardada.Costo = linea.Costo;
    return guardada;
}

void rellena(Borrador& borrador, const EdicionAtipico& edicion)
{
    borrador.Total = edicion.Total();
    borrador.FilaEnCambio = edicion.intLineaActual();
    borrador.Lineas.clear();
    std::int16_t posicion = 0;
    for (const auto& fila : edicion.filas()) {
        // The object has all decimals that were typed, the row those that it shows.
        const auto tecleada = edicion.cargo().Lineas->Item(++posicion);
        auto& linea = borrador.Lineas.emplace_back(en_borrador({ tecleada->Cod_Articulo,
            tecleada->Descripcion, tecleada->Observaciones, tecleada->Unidades, tecleada->Precio }));
        linea.ArticuloDeCuenta = fila.ArticuloDeCuenta;
        linea.FilaCargada = fila.FilaCargada;
        linea.Intacta = fila.Intacta;
    }
}

} // namespace atipicos
