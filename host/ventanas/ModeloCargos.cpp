#include "host/ventanas/ModeloCargos.hpp"

#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    struct Titulo {
        const char* texto;
        Qt::AlignmentFlag donde;
    };
    constexpr std::array<Titulo, ModeloCargos::columnas> titulos_de_columnas{ {
        { "Código", Qt::AlignLeft },
        { "Almacén", Qt::AlignRight },
        { "Fecha", Qt::AlignHCenter }, // or it would touch the warehouse
        { "Proveedor", Qt::AlignLeft },
        { "Base", Qt::AlignRight },
        { "Impuesto", Qt::AlignRight },
        { "Total", Qt::AlignRight },
        { "Asiento", Qt::AlignRight },
    } };

    QString en_celda(Currency valor) { return a_qt(texto_pantalla(valor, 2)); }

    QString proveedor_de(const CargoResumido& cargo)
    {
        return cargo.nombre_proveedor.empty() ? QString::number(cargo.proveedor)
                                              : a_qt(cargo.nombre_proveedor);
    }

    QString celda(const CargoResumido& cargo, int columna)
    {
        switch (columna) {
        case ModeloCargos::codigo:
            return a_qt(cargo.codigo);
        case ModeloCargos::almacen:
            return QString::number(cargo.almacen);
        case ModeloCargos::fecha:
            return a_qt(cargo.fecha.texto());
        case ModeloCargos::proveedor:
            return proveedor_de(cargo);
        case ModeloCargos::base:
            return en_celda(cargo.base);
        case ModeloCargos::impuesto:
            return en_celda(cargo.impuesto);
        case ModeloCargos::total:
            return en_celda(cargo.total());
        case ModeloCargos::asiento:
            return cargo.asiento > 0 ? QString::number(cargo.asiento) : QString();
        default:
            return {};
        }
    }

}

ModeloCargos::ModeloCargos(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void ModeloCargos::Pon(std::vector<CargoResumido> cargos)
{
    beginResetModel();
    m_cargos = std::move(cargos);
    endResetModel();
}

void ModeloCargos::Agrega(const std::vector<CargoResumido>& cargos)
{
    if (cargos.empty())
        return;
    const auto primera = static_cast<int>(m_cargos.size());
    beginInsertRows({}, primera, primera + static_cast<int>(cargos.size()) - 1);
    m_cargos.insert(m_cargos.end(), cargos.begin(), cargos.end());
    endInsertRows();
}

const CargoResumido& ModeloCargos::Cargo(int fila) const
{
    return m_cargos.at(static_cast<std::size_t>(fila));
}

int ModeloCargos::rowCount(const QModelIndex& padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(m_cargos.size());
}

int ModeloCargos::columnCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : columnas; }

QVariant ModeloCargos::data(const QModelIndex& indice, int papel) const
{
    if (!indice.isValid())
        return {};
    const auto& titulo = titulos_de_columnas.at(static_cast<std::size_t>(indice.column()));
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | titulo.donde);
    if (papel == Qt::DisplayRole)
        return celda(Cargo(indice.row()), indice.column());
    if (papel == Qt::ToolTipRole && indice.column() == proveedor)
        return QStringLiteral("%1  %2")
            .arg(Cargo(indice.row()).proveedor)
            .arg(proveedor_de(Cargo(indice.row())));
    return {};
}

QVariant ModeloCargos::headerData(int seccion, Qt::Orientation orientacion, int papel) const
{
    if (orientacion != Qt::Horizontal || seccion < 0 || seccion >= columnas)
        return {};
    const auto& titulo = titulos_de_columnas.at(static_cast<std::size_t>(seccion));
    if (papel == Qt::DisplayRole)
        return a_qt(titulo.texto);
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | titulo.donde);
    return {};
}

} // namespace atipicos::app
