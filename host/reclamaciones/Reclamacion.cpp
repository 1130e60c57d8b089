#include "host/reclamaciones/Reclamacion.hpp"

#include "host/reclamaciones/Huella.hpp"

namespace atipicos::app {

namespace {

    constexpr std::size_t errores_que_se_dicen = 50;

    /// Texts one after the other, each with its size, so that none can stand for two.
    class Suma {
    public:
        void agrega(std::string_view texto)
        {
            m_huella.agrega(std::to_string(texto.size()) + ":");
            m_huella.agrega(texto);
        }
        void agrega(std::int64_t numero) { agrega(std::to_string(numero)); }
        [[nodiscard]] std::string texto() { return m_huella.texto(); }

    private:
        Huella m_huella;
    };

}

void repara(Reclamacion& reclamacion, int fila, std::string_view columna, const std::string& motivo)
{
    reclamacion.valida = false;
    if (reclamacion.errores.size() < errores_que_se_dicen)
        reclamacion.errores.push_back({ fila, std::string(columna), motivo });
    else if (reclamacion.errores.size() == errores_que_se_dicen)
        reclamacion.errores.push_back(
            { fila, "", "hay más errores en «" + reclamacion.referencia + "»; corrija antes esos." });
}

std::string contenido_de(const Reclamacion& reclamacion)
{
    Suma suma;
    suma.agrega(reclamacion.almacen);
    suma.agrega(reclamacion.proveedor);
    suma.agrega(reclamacion.fecha.texto());
    suma.agrega(reclamacion.observaciones);
    suma.agrega(reclamacion.franquiciado ? 1 : 0);
    for (const auto& linea : reclamacion.lineas) {
        suma.agrega(linea.articulo);
        suma.agrega(linea.descripcion);
        suma.agrega(linea.unidades.crudo());
        suma.agrega(linea.costo.crudo());
        suma.agrega(linea.observaciones);
    }
    return suma.texto();
}

} // namespace atipicos::app
