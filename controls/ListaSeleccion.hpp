#pragma once

#include "controls/FuenteFichas.hpp"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace atipicos {

class VSFlexGrid;

/// A list to choose from, in order of name: what is typed narrows it at once (every word of it has to occur
/// in code or name, whatever the case and the accents), the arrows move in it, Enter chooses, Escape gives
/// up.
class ListaSeleccion final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ListaSeleccion)
public:
    /// `otros`: headings of what each ficha tells beside its name; it can be searched for as well.
    ListaSeleccion(const QString& titulo, const std::vector<Ficha>& fichas, const QStringList& otros = {},
        QWidget* parent = nullptr);

    void Busca(const QString& texto); ///< as if it had been typed; more can be typed behind it

    void setVisible(bool visible) override;

    [[nodiscard]] QString elegida() const; ///< the code of the chosen row; empty when there is none

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    struct Fila {
        QString texto; ///< code and name, as the grid shows them
        QString plano; ///< the same in lower case without accents, to be searched in
    };

    void filtra(const QString& buscado);
    void prepara_lista(const QStringList& otros);

    std::vector<Fila> m_filas;
    QLineEdit* m_filtro;
    VSFlexGrid* m_lista;
    QLabel* m_cuantas;
};

} // namespace atipicos
