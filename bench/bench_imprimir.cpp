// What 1,000 charges cost to print with one command of the real program, over painting the same texts on as
// many pages of a PDF file with nothing read, laid out or broken into lines.
#include "bench/Desnudo.hpp"
#include "bench/Medida.hpp"
#include "bench/SueloPostgresql.hpp"
#include "controls/LienzoQt.hpp"
#include "controls/Texto.hpp"
#include "host/bases/Bases.hpp"
#include "host/documento/DocumentoCargo.hpp"
#include "host/orvalin/Empresa.hpp"
#include "host/orvalin/Fichas.hpp"
#include "tests/integracion/Sedes.hpp"

#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <sys/resource.h>

#include <cstdlib>
#include <iostream>

namespace atipicos::bench {
namespace {

    constexpr int cargos = 1000;

    /// The numbers from 1 to `hasta` as rows `n (i)`: what comes before the statement, and what it reads
    /// from.
    struct Numeros {
        std::string con;
        std::string de;
    };

    Numeros en_sqlite(int hasta)
    {
        return { "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                + std::to_string(hasta) + ") ",
            "n" };
    }
    Numeros en_postgresql(int hasta)
    {
        return { "", "generate_series(1, " + std::to_string(hasta) + ") AS n (i)" };
    }

    std::string cabeceras(const Numeros& n)
    {
        return n.con + R"(
        INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha,
            Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto,
            Impuesto_Importe, Tipo)
        SELECT 1, 2026, 1, 'AT' || (260000 + i), 101 + i % 14, '2026-11-21', 450.75, i, 1, 2026, 1,
            '2026-11-21 09:05:03', 'Mercancía dañada, albarán ' || i, 0, 0, 7, 31.55, 0 FROM )"
            + n.de;
    }

    std::string lineas(const Numeros& n)
    {
        return n.con + R"(
        INSERT INTO Proveedores_Cargos_Atipicos_Lineas
        SELECT 1, 2026, 1, Codigo, i, 1000 + i, 'Cajas aplastadas en el palé inferior, que no se pueden vender',
            12.5, 7.212, 'Fotos enviadas' FROM Proveedores_Cargos_Atipicos, )"
            + n.de;
    }

    /// The texts of a page, ready to be painted.
    class Grabacion final : public Lienzo {
    public:
        void texto(atipicos::Medida x, atipicos::Medida y, std::string_view texto, const Letra& letra,
            Color color) override
        {
            m_textos.push_back({ QPointF(x, y), a_qt(texto), fuente_qt(letra), QColor::fromRgb(color) });
        }
        void relleno(const Recuadro&, Color) override { }

        void pinta(QPainter& pintor) const
        {
            for (const auto& [lugar, texto, fuente, color] : m_textos) {
                pintor.setFont(fuente);
                pintor.setPen(color);
                pintor.drawText(lugar, texto);
            }
        }

    private:
        struct Texto {
            QPointF lugar;
            QString texto;
            QFont fuente;
            QColor color;
        };
        std::vector<Texto> m_textos;
    };

    std::vector<Grabacion> graba(const std::filesystem::path& datos)
    {
        const auto bases = bases::abre_bases(datos);
        const orvalin::Empresa empresa(bases.orvalin, 1, 1);
        const MedidorQt medidor;
        std::vector<Grabacion> paginas(cargos);
        for (int i = 1; i <= cargos; ++i) {
            const auto cargo = orvalin::CargoImpreso::lee(
                *bases.orvalin, empresa, 2026, 1, "AT" + std::to_string(260000 + i));
            orvalin::FichaAlmacen almacen(bases.orvalin, empresa);
            almacen.Codigo = 1;
            almacen.Cargar();
            orvalin::FichaProveedor proveedor(bases.orvalin, empresa);
            proveedor.Codigo = cargo.Proveedor;
            proveedor.Cargar();
            const auto documento = orvalin::documento_cargo(
                cargo, almacen, proveedor, orvalin::Plantilla::de_serie(), medidor);
            if (documento->paginas() != 1)
                throw std::runtime_error("a charge takes more than a page");
            documento->pinta(0, paginas.at(static_cast<std::size_t>(i - 1)));
        }
        return paginas;
    }

    void pinta_desnudo(const std::vector<Grabacion>& paginas, const std::filesystem::path& fichero)
    {
        QPdfWriter pdf(QString::fromStdString(fichero.string()));
        pdf.setResolution(1200);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins({});
        QPainter pintor(&pdf);
        for (const auto& pagina : paginas) {
            if (&pagina != &paginas.front())
                pdf.newPage();
            pintor.save();
            pintor.scale(1200 / 2540.0, 1200 / 2540.0);
            pagina.pinta(pintor);
            pintor.restore();
        }
    }

    /// `donde`: the option that says where the databases are.
    void imprime(const std::string& donde, const std::string& destino)
    {
        const auto orden = "'" ATIPICOS_PROGRAMA "' imprimir --desde 01/01/2026 --hasta 31/12/2026 " + donde
            + " " + destino;
        if (std::system(orden.c_str()) != 0)
            throw std::runtime_error("the program did not print");
    }

    void compara_en_servidor(const std::filesystem::path& fichero, double desnudo)
    {
        const auto muestra = pruebas::en_postgresql().muestra();
        const auto direccion = muestra->lugar().direccion();
        const auto linea = conecta(direccion, "orvalin");
        for (const auto& sql : { cabeceras(en_postgresql(cargos)), lineas(en_postgresql(5)) })
            pide(linea.get(), sql);
        Medida en_uno;
        for (int i = 0; i < 5; ++i)
            en_uno.mide(
                [&] { imprime("--conexion '" + direccion + "'", "--salida '" + fichero.string() + "'"); });
        en_uno.escribe("PostgreSQL, one file");
        std::printf("  ratio to the bare texts %.2f\n", en_uno.mediana() / desnudo);
    }

    void compara()
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        bases::crea_bases(datos, false);
        const auto base = abre(datos / "empresa.db", true);
        ejecuta(base.get(), cabeceras(en_sqlite(cargos)));
        ejecuta(base.get(), lineas(en_sqlite(5)));

        const auto en_carpeta = "--datos '" + datos.string() + "'";
        Medida en_uno;
        Medida en_mil;
        Medida desnudo;
        for (int i = 0; i < 5; ++i)
            en_uno.mide([&] { imprime(en_carpeta, "--salida '" + (carpeta / "todos.pdf").string() + "'"); });
        rusage uso{};
        getrusage(RUSAGE_CHILDREN, &uso);
        for (int i = 0; i < 5; ++i)
            en_mil.mide([&] { imprime(en_carpeta, "--carpeta '" + (carpeta / "sueltos").string() + "'"); });
        const auto paginas = graba(datos);
        for (int i = 0; i < 5; ++i)
            desnudo.mide([&] { pinta_desnudo(paginas, carpeta / "desnudo.pdf"); });

        std::printf("%d charges of five lines\n", cargos);
        en_uno.escribe("program, one file");
        en_mil.escribe("program, one file each");
        desnudo.escribe("bare texts, one file");
        std::printf("  a document %.3f ms, bare %.3f ms, ratio %.2f; peak memory %ld KiB\n",
            en_uno.mediana() / cargos, desnudo.mediana() / cargos, en_uno.mediana() / desnudo.mediana(),
            uso.ru_maxrss);
        if (pruebas::en_postgresql().falta.empty())
            compara_en_servidor(carpeta / "servidor.pdf", desnudo.mediana());
        else
            std::printf("%s\n", pruebas::en_postgresql().falta.c_str());
    }

}
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication aplicacion(argc, argv);
    try {
        atipicos::bench::compara();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
