// What the charge browser costs over 100,000 charges: from Enter in the last date to the painted list against
// the same statement through bare libsqlite3, read and joined by tabs; memory for each row against its text;
// Page Down and the order by a heading.
#include "bench/ListaDesnuda.hpp"
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "bench/SueloSqlite.hpp"
#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/sesion/Sesion.hpp"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <unistd.h>

namespace atipicos::bench {
namespace {

    double residente() ///< bytes
    {
        std::ifstream estado("/proc/self/statm");
        double paginas = 0;
        estado >> paginas >> paginas;
        return paginas * static_cast<double>(sysconf(_SC_PAGESIZE));
    }

    void pulsa(QWidget& donde, Qt::Key tecla)
    {
        QKeyEvent pulsada(QEvent::KeyPress, tecla, Qt::NoModifier);
        QCoreApplication::sendEvent(&donde, &pulsada);
        QCoreApplication::processEvents(); // paints
    }

    void desplaza(VSFlexGrid& lista)
    {
        Medida paginas;
        for (int i = 0; i < 200; ++i)
            paginas.mide([&] { pulsa(lista, Qt::Key_PageDown); });
        paginas.escribe("Page Down, painted");
        Medida orden;
        for (int i = 0; i < 3; ++i)
            orden.mide([&] { emit lista.horizontalHeader()->sectionClicked(6); });
        orden.escribe("order by amount");
        Medida nombres;
        for (int i = 0; i < 3; ++i)
            nombres.mide([&] { emit lista.horizontalHeader()->sectionClicked(4); });
        nombres.escribe("order by supplier");
    }

    void compara()
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        bases::crea_bases(datos, false);
        app::OpcionesComunes opciones;
        opciones.datos = datos;
        app::Sesion sesion(opciones);
        const auto base = abre(datos / fichero_empresa, true);
        ejecuta(base.get(), muchos_cargos(100'000));
        const auto sql = sql::reescribe(
            instruccion_lista({ "01/01/2026", "31/12/2026" }, 1, 1), catalogos_de_empresa(base.get())[0]);

        frmCompras_Atipicos_Visor form;
        form.Fecha_Inicial = Date::de_dia(2026, 1, 1).value();
        form.Fecha_Final = Date::de_dia(2026, 12, 31).value();
        form.Show();
        QCoreApplication::processEvents();
        auto& fecha = *form.findChild<QWidget*>(QStringLiteral("txtFechaF"));
        auto& lista = *form.findChild<VSFlexGrid*>(QStringLiteral("vsCab"));

        std::printf("Browser over 100,000 charges\n");
        const double antes = residente();
        Medida visor;
        visor.mide([&] { pulsa(fecha, Qt::Key_Return); });
        if (lista.Rows() != 100'001)
            throw std::runtime_error("the list does not hold what it should");
        const double ocupado = residente() - antes;
        double texto = 0;
        for (int fila = 1; fila < lista.Rows(); ++fila)
            for (int columna = 0; columna < lista.Cols(); ++columna)
                texto += static_cast<double>(lista.TextMatrix(fila, columna).toUtf8().size() + 1);
        Medida bare;
        for (int i = 0; i < 7; ++i) {
            visor.mide([&] { pulsa(fecha, Qt::Key_Return); });
            bare.mide([&] { lista_desnuda(base.get(), sql); });
        }
        visor.escribe("search to painted list");
        bare.escribe("bare libsqlite3");
        std::printf("  ratio of medians %.3f\n", visor.mediana() / bare.mediana());
        std::printf("  memory for each row %.0f bytes, its text %.0f, ratio %.2f\n", ocupado / 100'000,
            texto / 100'000, ocupado / texto);
        desplaza(lista);
    }

}
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication aplicacion(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("atipicos"));
    try {
        atipicos::bench::compara();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
