#include "controls/ListaSeleccion.hpp"

#include "controls/Anclaje.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/OrdenFilas.hpp"
#include "controls/Pantalla.hpp"
#include "controls/Texto.hpp"
#include "controls/Twips.hpp"
#include "controls/VSFlexGrid.hpp"
#include "runtime/Formato.hpp"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace atipicos {

namespace {

    QString sin_tildes(const QString& texto)
    {
        QString plano;
        for (const QChar caracter : texto.normalized(QString::NormalizationForm_D))
            if (caracter.category() != QChar::Mark_NonSpacing)
                plano += caracter.toLower();
        return plano;
    }

    constexpr int ancho_otro = 2300; ///< twips

    QString celdas(const Ficha& ficha, qsizetype otros)
    {
        QString texto = a_qt(ficha.Codigo) + u'\t' + a_qt(ficha.Nombre).replace(u'\t', u' ');
        for (qsizetype i = 0; i < otros; ++i)
            texto += u'\t'
                + a_qt(i < std::ssize(ficha.otros) ? ficha.otros[static_cast<std::size_t>(i)] : std::string())
                      .replace(u'\t', u' ');
        return texto;
    }

    QString con_puntos(int cuantas) { return a_qt(texto_pantalla(Currency::de_entero(cuantas), 0)); }

    /// The database may put "Á" and "Ñ" after "Z".
    std::vector<std::size_t> por_nombre(const std::vector<Ficha>& fichas)
    {
        std::vector<QString> nombres;
        nombres.reserve(fichas.size());
        for (const auto& ficha : fichas)
            nombres.push_back(a_qt(ficha.Nombre));
        return orden_de(nombres, Clase::texto, false);
    }

}

ListaSeleccion::ListaSeleccion(
    const QString& titulo, const std::vector<Ficha>& fichas, const QStringList& otros, QWidget* parent)
    : QDialog(parent)
    , m_filtro(new QLineEdit(this))
    , m_lista(new VSFlexGrid(this))
    , m_cuantas(new QLabel(this))
{
    setObjectName(QStringLiteral("ListaSeleccion"));
    setWindowTitle(titulo);
    anuncia(*m_cuantas);
    m_filas.reserve(fichas.size());
    for (const auto lugar : por_nombre(fichas)) {
        QString texto = celdas(fichas[lugar], otros.size());
        QString plano = sin_tildes(texto);
        m_filas.push_back({ std::move(texto), std::move(plano) });
    }

    auto* etiqueta = new QLabel(QStringLiteral("&Buscar:"), this);
    etiqueta->setBuddy(m_filtro);
    m_filtro->setObjectName(QStringLiteral("txtFiltro"));
    m_filtro->setPlaceholderText(otros.isEmpty() ? QStringLiteral("Parte del nombre o del código")
                                                 : QStringLiteral("Parte de cualquiera de las columnas"));
    m_filtro->setClearButtonEnabled(true);
    m_filtro->installEventFilter(this);

    m_lista->setObjectName(QStringLiteral("vsLista"));
    m_lista->setAccessibleName(titulo);
    prepara_lista(otros);

    auto* botones = new QDialogButtonBox(this);
    auto* aceptar = botones->addButton(QStringLiteral("&Aceptar"), QDialogButtonBox::AcceptRole);
    aceptar->setObjectName(QStringLiteral("cmdAceptar"));
    aceptar->setDefault(true);
    botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdCancelar"));
    pon_iconos(*this);

    auto* caja = new QVBoxLayout(this);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(etiqueta);
    arriba->addWidget(m_filtro);
    caja->addLayout(arriba);
    caja->addWidget(m_lista);
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(m_cuantas, 1);
    abajo->addWidget(botones);
    caja->addLayout(abajo);
    resize(fontMetrics().averageCharWidth() * 75
            + static_cast<int>(otros.size()) * twips_a_pixeles(ancho_otro, *this),
        fontMetrics().height() * 26);
    cabe_en_pantalla(*this);

    connect(m_filtro, &QLineEdit::textChanged, this, &ListaSeleccion::filtra);
    connect(m_lista, &VSFlexGrid::doubleClicked, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    filtra({});
    m_filtro->setFocus();
}

void ListaSeleccion::prepara_lista(const QStringList& otros)
{
    m_lista->set_Cols(2 + static_cast<int>(otros.size()));
    m_lista->set_TextMatrix(0, 0, QStringLiteral("Código"));
    m_lista->set_TextMatrix(0, 1, QStringLiteral("Nombre"));
    m_lista->set_ColAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
    m_lista->set_ColWidth(0, 1300);
    m_lista->set_ColWidth(1, 4500);
    for (int i = 0; i < otros.size(); ++i) {
        m_lista->set_TextMatrix(0, 2 + i, otros[i]);
        m_lista->set_ColWidth(2 + i, ancho_otro);
    }
    m_lista->setFocusPolicy(Qt::ClickFocus); // typing always goes to the filter
    auto* anclaje = new Anclaje(*m_lista);
    anclaje->AgregarColumna(1, 100);
}

void ListaSeleccion::Busca(const QString& texto) { m_filtro->setText(texto); }

/// A dialog that is shown selects what is in its first box, and the next letter would replace the first.
void ListaSeleccion::setVisible(bool visible)
{
    QDialog::setVisible(visible);
    m_filtro->deselect();
}

QString ListaSeleccion::elegida() const
{
    const int fila = m_lista->Row();
    return fila == 0 ? QString() : m_lista->TextMatrix(fila, 0);
}

void ListaSeleccion::filtra(const QString& buscado)
{
    const auto palabras = sin_tildes(buscado).split(u' ', Qt::SkipEmptyParts);
    m_lista->set_Redraw(false);
    m_lista->set_Rows(1);
    for (const auto& fila : m_filas)
        if (std::all_of(palabras.begin(), palabras.end(),
                [&](const QString& palabra) { return fila.plano.contains(palabra); }))
            m_lista->AddItem(fila.texto);
    m_lista->set_Redraw(true);
    m_lista->set_Row(1);
    m_cuantas->setText(
        QStringLiteral("%1 de %2")
            .arg(con_puntos(m_lista->Rows() - 1), con_puntos(static_cast<int>(m_filas.size()))));
}

bool ListaSeleccion::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == m_filtro && evento->type() == QEvent::KeyPress) {
        const auto* tecla = static_cast<QKeyEvent*>(evento);
        switch (tecla->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            return QCoreApplication::sendEvent(m_lista, evento);
        default:
            break;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace atipicos
