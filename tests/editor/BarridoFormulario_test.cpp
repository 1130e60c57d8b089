// The nth operation fails while a clerk saves through the form, for every n: the boxes he sees, what his form
// holds afterwards, and what both databases hold.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/integracion/EsperadoGuardar.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

constexpr auto buscar = "Selector:Buscar";

/// Keys in the charge of `Banco::guarda`.
void teclea_cargo()
{
    EscenaEditor::teclea_cabecera("104");
    for (const auto* costo : { "5,6325", "1,1975", "12,5" })
        EscenaEditor::teclea_linea("1006", "Lata abollada", "", "12", costo);
}

/// A clerk who accepts the forecasts, gives up when they do not add up, and never prints.
class Oficinista {
public:
    Oficinista()
    {
        m_reloj.setInterval(1);
        QObject::connect(&m_reloj, &QTimer::timeout, &m_reloj, [] { mira(); });
        m_reloj.start();
    }

private:
    static void mira()
    {
        QWidget* dialogo = QApplication::activeModalWidget();
        if (dialogo == nullptr)
            return;
        if (dialogo->objectName() == QLatin1String("frmCompras_Atipicos_Contabilizar"))
            control<QAbstractButton>(*dialogo, "cmdAceptar").click();
        if (dialogo->isVisible())
            control<QAbstractButton>(*dialogo, "cmdCancelar").click();
    }

    QTimer m_reloj;
};

struct Vista {
    std::vector<std::string> titulos;
    Estado estado;
    bool como_nueva = false; ///< else the form holds all that was keyed in, and its five buttons are enabled

    friend bool operator==(const Vista&, const Vista&) = default;
};

Vista mira(EscenaEditor& escena)
{
    Vista vista{ escena.banco.titulos(), escena.banco.estado(), escena.rejilla().Rows() == 1 };
    const bool entera = escena.rejilla().Rows() == 4 && escena.total() == QLatin1String("231,96")
        && escena.cinco_botones() == QLatin1String("enabled") && !escena.c<Selector>("txtProv").vacio();
    const bool vacia = escena.total() == QLatin1String("0,00")
        && escena.cinco_botones() == QLatin1String("disabled") && escena.c<Selector>("txtProv").vacio();
    if (!(vista.como_nueva ? vacia : entera))
        vista.titulos.emplace_back("the form is neither as it was nor as new");
    return vista;
}

/// Of the operations of a whole save, the ones that only the form has: before the transactions and after
/// them.
Vista esperada(
    const std::vector<std::string>& dichas, std::size_t n, const Estado& antes, const Estado& despues)
{
    const auto lugar = [&](const char* dicha) {
        return static_cast<std::size_t>(std::find(dichas.begin(), dichas.end(), dicha) - dichas.begin());
    };
    if (n == 0)
        return { { guardar }, antes, false };
    if (dichas[n].find("SELECT Nombre FROM Cuentas") != std::string::npos)
        return { { buscar, atencion }, despues, true }; // the bank goes without its name
    if (n < lugar("gestion BEGIN"))
        return { { atencion, atencion }, antes, false }; // no proposal, and then it does not add up
    if (n > lugar("contabilidad COMMIT"))
        return { { atencion, buscar }, despues, true }; // the warehouse goes without its name
    auto [titulos, estado] = de_uno_nuevo(dichas, n, antes, despues);
    const bool guardado = titulos.front() != guardar;
    if (guardado)
        titulos.emplace_back(atencion); // saved all the same
    return { titulos, estado, guardado };
}

}

class BarridoFormulario_Test : public QObject {
    Q_OBJECT
private slots:
    void a_new_charge_at_every_operation()
    {
        const Oficinista oficinista;
        EscenaEditor entera("");
        teclea_cargo();
        entera.banco.parte->dichas.clear();
        const auto antes = entera.banco.estado();
        clic(*entera.form, "cmdAceptar");
        QVERIFY((mira(entera).titulos == std::vector<std::string>{ atencion }));
        const auto despues = entera.banco.estado();
        const auto dichas = entera.banco.parte->dichas;
        QVERIFY(dichas.size() >= 35);

        for (std::size_t n = 0; n < dichas.size(); ++n) {
            EscenaEditor escena("");
            teclea_cargo();
            escena.banco.parte->dichas.clear();
            escena.banco.parte->falla_en = n + 1;
            clic(*escena.form, "cmdAceptar");
            const auto vista = mira(escena);
            const auto debida = esperada(dichas, n, antes, despues);
            const auto donde = std::to_string(n + 1) + ": " + dichas[n] + " -> " + en_una_linea(vista.titulos)
                + " en vez de " + en_una_linea(debida.titulos);
            QVERIFY2(vista == debida, donde.c_str());
        }
    }

    void a_lost_connection_at_every_operation_data()
    {
        QTest::addColumn<int>("sede");
        QTest::addColumn<int>("paso");
        QTest::newRow("sqlite") << 0 << 1;
        QTest::newRow("postgresql") << 1 << 4;
    }

    /// Nothing, all, or the charge without its entry: and the clerk is told.
    void a_lost_connection_at_every_operation()
    {
        QFETCH(const int, sede);
        QFETCH(const int, paso);
        const auto donde = sedes_sin_odbc().at(static_cast<std::size_t>(sede));
        if (!donde.falta.empty())
            QSKIP(donde.falta.c_str());
        const Oficinista oficinista;
        for (std::size_t n = 1;; n += static_cast<std::size_t>(paso)) {
            EscenaEditor escena(donde);
            escena.abre();
            teclea_cargo();
            escena.banco.parte->dichas.clear();
            escena.banco.parte->conexion_perdida = true;
            escena.banco.parte->falla_en = n;
            clic(*escena.form, "cmdAceptar");
            if (escena.banco.parte->dichas.size() < n)
                break;
            const auto cual = std::to_string(n);
            QVERIFY2(!escena.banco.titulos().empty(), cual.c_str());
            QVERIFY2(escena.form->isVisible(), cual.c_str());
            const auto estado = escena.banco.estado();
            const auto cargos = estado.at("Proveedores_Cargos_Atipicos");
            QVERIFY2(estado.at("Proveedores_Cargos_Atipicos_Lineas") == 3 * cargos, cual.c_str());
            QVERIFY2(estado.at("Bexmor.dbo.Asientos") <= cargos, cual.c_str());
            QVERIFY2(estado.at("Bexmor.dbo.Apuntes") == 7 * estado.at("Bexmor.dbo.Asientos"), cual.c_str());
        }
    }

private:
    static std::string en_una_linea(const std::vector<std::string>& titulos)
    {
        std::string texto;
        for (const auto& titulo : titulos)
            texto += "«" + titulo + "»";
        return texto;
    }
};

ATIPICOS_PRUEBA_VENTANAS(BarridoFormulario_Test)
#include "BarridoFormulario_test.moc"
