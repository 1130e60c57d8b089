#include "host/ventanas/frmFichas.hpp"

#include "context/Cajas.hpp"
#include "context/trap.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/panel/NombresPlanos.hpp"
#include "host/ventanas/frmFicha.hpp"
#include "host/ventanas/MemoriaDeVentanas.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::array letras_de_columnas{ 9, 46, 16, 28 }; ///< wide; no records have more

    /// Whether each of the words is somewhere in the row.
    bool tiene(const QStringList& fila, const std::vector<std::string>& buscadas)
    {
        const auto texto = plano(de_qt(fila.join(u' ')));
        return std::ranges::all_of(
            buscadas, [&](const auto& una) { return texto.find(una) != std::string::npos; });
    }

}

frmFichas::frmFichas(std::unique_ptr<OrigenDeFichas> origen, QWidget* parent)
    : Formulario(parent)
    , m_origen(std::move(origen))
    , m_buscar(new QLineEdit(this))
    , m_rejilla(new VSFlexGrid(this))
{
    setObjectName(QStringLiteral("frmFichas"));
    setProperty(MemoriaDeVentanas::contenido, m_origen->uno());
    setWindowTitle(m_origen->titulo());
    auto* buscar = new QLabel(QStringLiteral("&Buscar:"), this);
    buscar->setBuddy(m_buscar);
    m_buscar->setObjectName(QStringLiteral("txtBuscarFicha"));
    m_buscar->setClearButtonEnabled(true);
    m_buscar->setPlaceholderText(QStringLiteral("Código, o parte de lo que enseña la lista"));
    hace_lista();
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(buscar);
    arriba->addWidget(m_buscar, 1);
    auto* botones = new QHBoxLayout;
    hace_botones(*botones);
    auto* caja = new QVBoxLayout(this);
    caja->addLayout(arriba);
    caja->addWidget(m_rejilla, 1);
    caja->addLayout(botones);
    pon_iconos(*this);
    connect(m_buscar, &QLineEdit::textChanged, this, [this] { enlista(codigo_elegido()); });
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 26);
    lee(0);
    m_rejilla->setFocus();
}

void frmFichas::hace_lista()
{
    m_rejilla->setObjectName(QStringLiteral("vsFichas"));
    m_rejilla->setAccessibleName(m_origen->titulo());
    m_rejilla->set_Aviso(QStringLiteral("Ninguno"));
    const auto columnas = m_origen->columnas();
    m_rejilla->set_Cols(static_cast<int>(columnas.size()));
    const int letra = fontMetrics().averageCharWidth();
    for (int i = 0; i < m_rejilla->Cols(); ++i) {
        m_rejilla->set_TextMatrix(0, i, columnas.at(i));
        m_rejilla->setColumnWidth(i, letra * letras_de_columnas.at(static_cast<std::size_t>(i)));
    }
    m_rejilla->horizontalHeader()->setStretchLastSection(true);
    m_rejilla->set_ColAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
    connect(m_rejilla, &VSFlexGrid::doubleClicked, this, [this] { abre_ficha(codigo_elegido()); });
    connect(m_rejilla->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        for (auto* boton : { m_modificar, m_eliminar })
            boton->setEnabled(codigo_elegido() > 0);
    });
}

QPushButton* frmFichas::agrega_boton(
    QHBoxLayout& caja, const char* nombre, const QString& texto, const QString& pista)
{
    auto* boton = new QPushButton(texto, this);
    boton->setObjectName(QLatin1String(nombre));
    boton->setToolTip(pista);
    boton->setAutoDefault(false); // Enter is that of the list
    caja.addWidget(boton);
    return boton;
}

void frmFichas::hace_botones(QHBoxLayout& caja)
{
    auto* nueva = agrega_boton(caja, "cmdNueva", QStringLiteral("&Nuevo"), QStringLiteral("Insert"));
    m_modificar = agrega_boton(
        caja, "cmdModificar", QStringLiteral("&Modificar"), QStringLiteral("Intro en la lista"));
    m_eliminar
        = agrega_boton(caja, "cmdEliminar", QStringLiteral("&Eliminar"), QStringLiteral("Supr en la lista"));
    caja.addStretch(1);
    auto* cerrar = agrega_boton(caja, "cmdCerrar", QStringLiteral("&Cerrar"), QStringLiteral("Esc"));
    connect(nueva, &QPushButton::clicked, this, [this] { abre_ficha(0); });
    connect(m_modificar, &QPushButton::clicked, this, [this] { abre_ficha(codigo_elegido()); });
    connect(m_eliminar, &QPushButton::clicked, this, &frmFichas::elimina);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFichas::lee(int elegida)
{
    trap(
        "frmFichas:lee", [&] { m_filas = m_origen->filas(); }, TextoError::SoloDescripcion);
    enlista(elegida);
}

void frmFichas::enlista(int elegida)
{
    const auto buscadas = palabras(plano(de_qt(m_buscar->text())));
    m_rejilla->set_Redraw(false);
    m_rejilla->set_Rows(1);
    int fila = 1;
    for (const auto& una : m_filas) {
        if (!tiene(una, buscadas))
            continue;
        m_rejilla->AddItem(una.join(u'\t'));
        if (una.value(0).toInt() == elegida)
            fila = m_rejilla->Rows() - 1;
    }
    m_rejilla->set_Redraw(true);
    m_rejilla->set_Row(m_rejilla->Rows() > 1 ? fila : 0);
    for (auto* boton : { m_modificar, m_eliminar })
        boton->setEnabled(codigo_elegido() > 0);
}

int frmFichas::codigo_elegido() const { return m_rejilla->TextMatrix(m_rejilla->Row(), 0).toInt(); }

void frmFichas::abre_ficha(int codigo)
{
    trap(
        "frmFichas:abre_ficha",
        [&] {
            frmFicha ficha(*m_origen, codigo, this);
            if (ficha.exec() != QDialog::Accepted)
                return;
            if (codigo == 0)
                m_buscar->clear(); // the new one is shown, whatever was looked for
            lee(ficha.Codigo());
        },
        TextoError::SoloDescripcion);
}

void frmFichas::elimina()
{
    const int codigo = codigo_elegido();
    if (codigo == 0
        || !confirma("¿Eliminar el " + de_qt(m_origen->uno()) + " " + std::to_string(codigo) + ", "
            + de_qt(m_rejilla->TextMatrix(m_rejilla->Row(), 1)) + "?"))
        return;
    if (trap(
            "frmFichas:elimina", [&] { m_origen->elimina(codigo); }, TextoError::SoloDescripcion))
        lee(0);
}

void frmFichas::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (tecla->key() == Qt::Key_Insert)
        abre_ficha(0);
    else if (tecla->key() == Qt::Key_Delete && m_rejilla->hasFocus())
        elimina();
    else if ((intro || tecla->key() == Qt::Key_Down) && m_buscar->hasFocus())
        m_rejilla->setFocus();
    else if (intro && m_rejilla->hasFocus()) {
        if (!tecla->isAutoRepeat() && codigo_elegido() > 0)
            abre_ficha(codigo_elegido());
    } else
        Formulario::keyPressEvent(tecla);
}

} // namespace atipicos::app
