#include "host/ventanas/frmEmpresa.hpp"

#include "controls/Anuncio.hpp"
#include "controls/ColorDeAviso.hpp"
#include "controls/FicherosEnCastellano.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "host/bases/Bases.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"

#include <QApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace atipicos::app {

namespace {

    constexpr std::int32_t sin_empresa = 1;

}

frmEmpresa::frmEmpresa(QWidget* parent)
    : Formulario(parent)
    , m_recientes(new QListWidget(this))
    , m_lugar(new QLineEdit(this))
    , m_muestra(new QRadioButton(QStringLiteral("De &muestra, con proveedores y artículos inventados"), this))
    , m_motivo(new QLabel(this))
{
    setObjectName(QStringLiteral("frmEmpresa"));
    setWindowTitle(QStringLiteral("Elegir empresa"));
    auto* caja = new QVBoxLayout(this);
    m_motivo->setObjectName(QStringLiteral("lblMotivo"));
    m_motivo->setWordWrap(true);
    anuncia(*m_motivo);
    hace_recientes(*caja);
    hace_lugar(*caja);
    caja->addWidget(m_motivo);
    hace_botones(*caja);
    pon_iconos(*this);
    m_motivo->hide();
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
}

void frmEmpresa::hace_recientes(QVBoxLayout& caja)
{
    const auto lista = EmpresasRecientes().lista();
    auto* titulo = new QLabel(QStringLiteral("Abiertas ú&ltimamente:"), this);
    titulo->setBuddy(m_recientes);
    m_recientes->setObjectName(QStringLiteral("lstRecientes"));
    m_recientes->setAccessibleName(QStringLiteral("Empresas abiertas últimamente"));
    m_recientes->setToolTip(QStringLiteral("Intro: la abre. Supr: la quita de esta lista, sin borrar nada"));
    m_recientes->addItems(lista);
    m_recientes->setFixedHeight(fontMetrics().height() * 7);
    connect(m_recientes, &QListWidget::currentTextChanged, m_lugar, &QLineEdit::setText);
    connect(m_recientes, &QListWidget::itemDoubleClicked, this, &frmEmpresa::abre);
    caja.addWidget(titulo);
    caja.addWidget(m_recientes);
    titulo->setVisible(!lista.isEmpty());
    m_recientes->setVisible(!lista.isEmpty());
}

void frmEmpresa::hace_lugar(QVBoxLayout& caja)
{
    auto* titulo = new QLabel(QStringLiteral("Ca&rpeta, o dirección de un servidor:"), this);
    titulo->setBuddy(m_lugar);
    m_lugar->setObjectName(QStringLiteral("txtLugar"));
    m_lugar->setToolTip(
        QStringLiteral("Una carpeta de este equipo o de la red, postgresql://usuario@servidor/base "
                       "u odbc:DRIVER=…;SERVER=…;UID=…"));
    auto* examinar = new QPushButton(QStringLiteral("E&xaminar…"), this);
    examinar->setObjectName(QStringLiteral("cmdExaminar"));
    examinar->setAutoDefault(false); // Enter in the box opens
    connect(examinar, &QPushButton::clicked, this, &frmEmpresa::examina);
    auto* fila = new QHBoxLayout;
    fila->addWidget(m_lugar, 1);
    fila->addWidget(examinar);
    auto* nueva = new QGroupBox(QStringLiteral("Si se crea una nueva"), this);
    auto* vacia = new QRadioButton(QStringLiteral("&Propia: se preguntan sus datos"), nueva);
    m_muestra->setObjectName(QStringLiteral("optMuestra"));
    vacia->setObjectName(QStringLiteral("optPropia"));
    m_muestra->setChecked(true);
    auto* clases = new QVBoxLayout(nueva);
    clases->addWidget(m_muestra);
    clases->addWidget(vacia);
    caja.addWidget(titulo);
    caja.addLayout(fila);
    caja.addWidget(nueva);
}

void frmEmpresa::hace_botones(QVBoxLayout& caja)
{
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    const auto agrega = [&](const char* nombre, const QString& texto, const QString& pista) {
        auto* boton = new QPushButton(texto, this);
        boton->setObjectName(QLatin1String(nombre));
        boton->setToolTip(pista);
        boton->setAutoDefault(false);
        botones->addWidget(boton);
        return boton;
    };
    connect(
        agrega("cmdAbrir", QStringLiteral("&Abrir"), QStringLiteral("Abre la empresa que hay en ese lugar")),
        &QPushButton::clicked, this, &frmEmpresa::abre);
    connect(agrega("cmdCrear", QStringLiteral("&Crear"),
                QStringLiteral("Crea una empresa en ese lugar y la abre")),
        &QPushButton::clicked, this, &frmEmpresa::crea);
    connect(agrega("cmdCancelar", QStringLiteral("C&errar"), QString()), &QPushButton::clicked, this,
        &QDialog::reject);
    caja.addLayout(botones);
}

void frmEmpresa::Propon(const QString& lugar, const QString& motivo)
{
    m_lugar->setText(lugar);
    dice(motivo);
    if (m_recientes->count() > 0 && motivo.isEmpty()) {
        m_recientes->setCurrentRow(0);
        m_recientes->setFocus();
    } else {
        m_lugar->setFocus();
        m_lugar->selectAll();
    }
}

void frmEmpresa::dice(const QString& motivo)
{
    m_motivo->setText(motivo);
    m_motivo->setVisible(!motivo.isEmpty());
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width()))); // room for what it says
    pon_de_aviso(*m_motivo, !motivo.isEmpty());
}

void frmEmpresa::examina()
{
    QFileDialog dialogo(this, QStringLiteral("Carpeta de la empresa"), m_lugar->text());
    FicherosEnCastellano::pon(dialogo);
    dialogo.setFileMode(QFileDialog::Directory);
    dialogo.setOption(QFileDialog::ShowDirsOnly);
    if (dialogo.exec() == QDialog::Accepted)
        m_lugar->setText(dialogo.selectedFiles().value(0));
    m_lugar->setFocus();
}

/// Does something with the place that is typed; it ends the dialog unless it raises an error.
void frmEmpresa::intenta(const std::function<void(const bases::Lugar&)>& que)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QString motivo;
    try {
        auto lugar = lugar_tecleado(m_lugar->text());
        que(lugar);
        m_elegido = std::move(lugar);
    } catch (const std::exception& error) {
        motivo = a_qt(error.what());
    }
    QApplication::restoreOverrideCursor();
    if (m_elegido)
        accept();
    else
        dice(motivo);
}

void frmEmpresa::abre()
{
    intenta([](const bases::Lugar& lugar) {
        if (lugar.clase() == bases::Lugar::Clase::carpeta && !bases::hay_bases(lugar.carpeta()))
            throw Error(sin_empresa, "atipicos",
                "En esa carpeta no hay ninguna empresa. Para hacer una en ella pulse «Crear».");
        static_cast<void>(bases::abre_bases(lugar, { .solo_lectura = true })); // it says what is wrong
    });
}

void frmEmpresa::crea()
{
    intenta([this](const bases::Lugar& lugar) {
        if (!bases::crea_bases(lugar, !m_muestra->isChecked()))
            throw Error(sin_empresa, "atipicos", "En ese lugar ya hay una empresa: ábrala, o elija otro.");
    });
}

void frmEmpresa::olvida()
{
    if (const auto* actual = m_recientes->currentItem()) {
        EmpresasRecientes().olvida(actual->text());
        delete m_recientes->takeItem(m_recientes->currentRow());
    }
}

void frmEmpresa::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (m_recientes->hasFocus() && tecla->key() == Qt::Key_Delete)
        olvida();
    else if (intro && (m_recientes->hasFocus() || m_lugar->hasFocus())) {
        if (!tecla->isAutoRepeat())
            abre();
    } else
        Formulario::keyPressEvent(tecla);
}

} // namespace atipicos::app
