#include "host/ventanas/OrigenDeFichas.hpp"

#include "controls/Texto.hpp"
#include "host/fichas/Articulos.hpp"
#include "host/fichas/Proveedores.hpp"

namespace atipicos::app {

namespace {

    // As long as their columns.
    constexpr int de_codigo_de_ficha = 9;
    constexpr int de_nombre_de_ficha = 58; ///< with what is put behind it in the names of accounts
    constexpr int de_nif_de_ficha = 15;
    constexpr int de_domicilio_de_ficha = 80;
    constexpr int de_codigo_postal_de_ficha = 10;
    constexpr int de_poblacion_de_ficha = 60;
    constexpr int de_dia = 2;
    constexpr int de_nombre_de_articulo = 80;
    constexpr int de_cuenta = 12;

    std::string dado(const QString& texto) { return de_qt(texto.trimmed()); }

    QString dia_de_pago(std::int16_t dia) { return dia == 0 ? QString() : QString::number(dia); }

    class OrigenDeProveedores final : public OrigenDeFichas {
    public:
        explicit OrigenDeProveedores(AmbitoDeFichas ambito)
            : m_formas(formas_de_pago(*ambito.bases.bexmor))
            , m_proveedores(std::move(ambito))
        {
        }

        [[nodiscard]] QString titulo() const override { return QStringLiteral("Proveedores"); }
        [[nodiscard]] QString uno() const override { return QStringLiteral("proveedor"); }
        [[nodiscard]] std::vector<CampoDeFicha> campos() const override
        {
            std::vector<std::pair<int, QString>> formas{ { 0, QStringLiteral("La de la empresa") } };
            for (const auto& una : m_formas)
                formas.emplace_back(
                    una.codigo, QStringLiteral("%1  %2").arg(una.codigo).arg(a_qt(una.nombre)));
            return { { "txtCodigoFicha", QStringLiteral("Códig&o:"), de_codigo_de_ficha, true },
                { "txtNombre", QStringLiteral("&Nombre:"), de_nombre_de_ficha },
                { "txtNIF", QStringLiteral("N&IF:"), de_nif_de_ficha },
                { "txtDomicilio", QStringLiteral("&Domicilio:"), de_domicilio_de_ficha },
                { "txtCodigoPostal", QStringLiteral("Código &postal:"), de_codigo_postal_de_ficha },
                { "txtPoblacion", QStringLiteral("Po&blación:"), de_poblacion_de_ficha },
                { "cboFormaPago", QStringLiteral("&Forma de pago:"), 0, true, formas },
                { "txtDiaPago_1", QStringLiteral("Día de pa&go:"), de_dia, true },
                { "txtDiaPago_2", QStringLiteral("O&tro día de pago:"), de_dia, true } };
        }
        [[nodiscard]] QStringList columnas() const override
        {
            return { QStringLiteral("Código"), QStringLiteral("Nombre"), QStringLiteral("NIF"),
                QStringLiteral("Población") };
        }
        [[nodiscard]] std::vector<QStringList> filas() const override
        {
            std::vector<QStringList> todas;
            for (const auto& f : m_proveedores.todos())
                todas.push_back(
                    { QString::number(f.codigo), a_qt(f.nombre), a_qt(f.nif), a_qt(f.poblacion) });
            return todas;
        }
        [[nodiscard]] QStringList valores(int codigo) const override
        {
            return textos(m_proveedores.lee(codigo).value_or(FichaDeProveedor{ .codigo = codigo }));
        }
        [[nodiscard]] QStringList nueva() const override
        {
            return textos({ .codigo = m_proveedores.libre() });
        }
        void guarda(const QStringList& valores) override
        {
            const auto numero = [&](int cual) { return valores.value(cual).toInt(); };
            m_proveedores.guarda(
                { numero(0), dado(valores.value(1)), dado(valores.value(2)), dado(valores.value(3)),
                    dado(valores.value(4)), dado(valores.value(5)), static_cast<std::int16_t>(numero(6)),
                    static_cast<std::int16_t>(numero(7)), static_cast<std::int16_t>(numero(8)) });
        }
        void elimina(int codigo) override { m_proveedores.elimina(codigo); }

    private:
        static QStringList textos(const FichaDeProveedor& f)
        {
            return { QString::number(f.codigo), a_qt(f.nombre), a_qt(f.nif), a_qt(f.domicilio),
                a_qt(f.codigo_postal), a_qt(f.poblacion), QString::number(f.forma_pago),
                dia_de_pago(f.dia_pago_1), dia_de_pago(f.dia_pago_2) };
        }

        std::vector<FormaDePago> m_formas;
        Proveedores m_proveedores;
    };

    class OrigenDeArticulos final : public OrigenDeFichas {
    public:
        explicit OrigenDeArticulos(AmbitoDeFichas ambito)
            : m_articulos(std::move(ambito))
        {
        }

        [[nodiscard]] QString titulo() const override { return QStringLiteral("Artículos"); }
        [[nodiscard]] QString uno() const override { return QStringLiteral("artículo"); }
        [[nodiscard]] std::vector<CampoDeFicha> campos() const override
        {
            return { { "txtCodigoFicha", QStringLiteral("Códig&o:"), de_codigo_de_ficha, true },
                { "txtNombre", QStringLiteral("&Nombre:"), de_nombre_de_articulo },
                { "txtCuentaIngresos", QStringLiteral("C&uenta de ingresos:"), de_cuenta, false, {},
                    QStringLiteral("La del almacén") } };
        }
        [[nodiscard]] QStringList columnas() const override
        {
            return { QStringLiteral("Código"), QStringLiteral("Nombre"),
                QStringLiteral("Cuenta de ingresos") };
        }
        [[nodiscard]] std::vector<QStringList> filas() const override
        {
            std::vector<QStringList> todas;
            for (const auto& f : m_articulos.todos())
                todas.push_back(textos(f));
            return todas;
        }
        [[nodiscard]] QStringList valores(int codigo) const override
        {
            return textos(m_articulos.lee(codigo).value_or(FichaDeArticulo{ .codigo = codigo }));
        }
        [[nodiscard]] QStringList nueva() const override { return textos({ .codigo = m_articulos.libre() }); }
        void guarda(const QStringList& valores) override
        {
            m_articulos.guarda({ valores.value(0).toInt(), dado(valores.value(1)), dado(valores.value(2)) });
        }
        void elimina(int codigo) override { m_articulos.elimina(codigo); }

    private:
        static QStringList textos(const FichaDeArticulo& f)
        {
            return { QString::number(f.codigo), a_qt(f.nombre), a_qt(f.cuenta_ingresos) };
        }

        Articulos m_articulos;
    };

}

std::unique_ptr<OrigenDeFichas> origen_de_proveedores(AmbitoDeFichas ambito)
{
    return std::make_unique<OrigenDeProveedores>(std::move(ambito));
}

std::unique_ptr<OrigenDeFichas> origen_de_articulos(AmbitoDeFichas ambito)
{
    return std::make_unique<OrigenDeArticulos>(std::move(ambito));
}

} // namespace atipicos::app
