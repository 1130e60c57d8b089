#pragma once

#include <QWidget>

#include <memory>
#include <string>

namespace Ui {
class frmMsg;
}

namespace atipicos {

/// A notice that long work is going on. It takes no focus and no answer; whoever works shows it, changes its
/// text with `RefreshMsg`, and destroys it.
class frmMsg final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMsg)
public:
    explicit frmMsg(QWidget* parent = nullptr);
    ~frmMsg() override;

    std::string Mensaje; ///< empty: the text of the label stays

    void Show();

    /// Shows `Mensaje` at once, before the work goes on, in a window as wide as its text and 2500 twips.
    void RefreshMsg();

    void Vacia(); ///< back to the text that asks to wait, at once, as wide as without a message

private:
    std::unique_ptr<Ui::frmMsg> m_ui;
    QString m_por_defecto;
};

} // namespace atipicos
