#pragma once

#include "controls/BuscaArticulo.hpp"
#include "editor/EdicionAtipico.hpp"

#include <QFrame>

#include <memory>
#include <optional>

namespace Ui {
class frmCompras_Atipicos_Linea;
}

namespace atipicos {

class VSFlexGrid;

/// The frame of the editor in which one line is keyed in. Enter always moves on: article, description,
/// observations, units, cost, amount; in the amount, which only ever shows units × cost, it accepts the line.
class frmCompras_Atipicos_Linea final : public QFrame {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCompras_Atipicos_Linea)
public:
    explicit frmCompras_Atipicos_Linea(QWidget* parent = nullptr);
    ~frmCompras_Atipicos_Linea() override;

    /// Company and connection to look articles up in; decimals of the cost, 0 to 4.
    void Prepara(const std::shared_ptr<qvoremp::Empresa>& empresa,
        const std::shared_ptr<adodb::Connection>& conexion, int decimales_costo);
    void Suelta(); ///< lets go of the article lookup

    void PonSobre(VSFlexGrid& rejilla); ///< each field stands above its column from now on

    [[nodiscard]] LineaTecleada Linea() const;

    /// Something stands in the fields that was keyed in since they were emptied or filled, and not accepted.
    [[nodiscard]] bool Pendiente() const;

    void set_Linea(const LineaTecleada& linea); ///< error 6 when units × cost does not fit
    void Limpiar(); ///< nothing in any field
    void Poner_a_cero(); ///< ready for the next line: no texts, zeros in the numbers
    void Enfocar(); ///< the article
    void Enfocar_Importe(); ///< where Enter accepts the line
    void Limpiar_Observaciones();

    static constexpr std::int32_t no_existe_articulo = 1000; ///< number of that error

    /// The atypical-income account of an article. One that does not exist is error `no_existe_articulo`,
    /// unless the line was filled in with it: an article that has gone since stays as it was stored. Error 91
    /// before `Prepara`.
    [[nodiscard]] std::string CtaAtipicos(std::int32_t articulo) const;

signals:
    void Aceptada(); ///< Enter in the amount
    void ArticuloMirado(const QString& falta); ///< `falta`: that there is no such article; empty: there is

private:
    void pon_atajos();
    void txtArticulo_Intro();
    void calcula_importe();

    std::unique_ptr<Ui::frmCompras_Atipicos_Linea> m_ui;
    std::optional<BuscaArticulo> m_articulos;
    LineaTecleada m_de_partida; ///< what the fields were emptied or filled with
};

} // namespace atipicos
