#pragma once

#include "host/ventanas/Manual.hpp"

#include <QPointer>
#include <QUrl>
#include <QWidget>
#include <QWindow>

class QAction;
class QLabel;
class QLineEdit;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace atipicos::app {

class VistaManual;

/// The window in which the manual is read: its contents at the side, or what a search has found, and a page.
/// It can be used beside any window that waits for an answer, and keeps the program open for nobody.
class frmManual final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmManual)
public:
    explicit frmManual(QWidget* parent = nullptr);

    /// Shows that place of the manual, in front of the other windows. `direccion`: as `VistaManual::abre` has
    /// it.
    void muestra(const QString& direccion);

protected:
    bool event(QEvent* evento) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void hace_barra();
    void hace_lado(QWidget& lado);
    QAction* accion(
        const char* nombre, const char* texto, const QList<QKeySequence>& teclas, void (frmManual::*que)());
    void llena_indice();
    void busca(const QString& palabras);
    void abre_elegido(const QTreeWidgetItem* elegido);
    void pasa_a_marca(int paso);
    void muestra_donde();
    void elige(QTreeWidgetItem& renglon);
    void toma_el_elegido();
    void suelta_el_elegido();
    void ponte_sobre_quien_espera();
    void va_al_indice();
    void va_a_buscar();
    void va_a_la_siguiente();
    void va_a_la_anterior();
    void agranda();
    void reduce();
    void cierra();
    void va_atras();
    void va_adelante();

    Manual m_manual;
    QToolBar* m_barra;
    QLineEdit* m_buscar;
    QLabel* m_hallados;
    QTreeWidget* m_indice;
    VistaManual* m_vista;
    QUrl m_donde; ///< what is read
    QPointer<QWindow> m_quien_espera; ///< the modal window over which it stands
};

} // namespace atipicos::app
