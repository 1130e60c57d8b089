#pragma once

#include "controls/Formulario.hpp"
#include "host/ventanas/OrigenDeFichas.hpp"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace atipicos {
class VSFlexGrid;
}

namespace atipicos::app {

/// The suppliers or the articles of the company, to be looked up, added, changed and removed.
class frmFichas final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFichas)
public:
    explicit frmFichas(std::unique_ptr<OrigenDeFichas> origen, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void hace_lista();
    void hace_botones(QHBoxLayout& caja);
    QPushButton* agrega_boton(
        QHBoxLayout& caja, const char* nombre, const QString& texto, const QString& pista);
    void lee(int elegida); ///< all records anew, and chooses the one of that code
    void enlista(int elegida); ///< those that are looked for
    [[nodiscard]] int codigo_elegido() const; ///< 0: none
    void abre_ficha(int codigo);
    void elimina();

    std::unique_ptr<OrigenDeFichas> m_origen;
    std::vector<QStringList> m_filas;
    QLineEdit* m_buscar;
    VSFlexGrid* m_rejilla;
    QPushButton* m_modificar = nullptr;
    QPushButton* m_eliminar = nullptr;
};

} // namespace atipicos::app
