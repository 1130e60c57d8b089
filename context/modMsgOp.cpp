#include "context/modMsgOp.hpp"

#include "context/frmMsg.hpp"

#include <QApplication>
#include <QEventLoop>
#include <QPointer>

namespace atipicos::modMsgOp {

namespace {

    /// Goes with its owner window when that is destroyed.
    QPointer<frmMsg>& mensaje()
    {
        static QPointer<frmMsg> unico;
        return unico;
    }

}

void Mostrar(const std::string& texto)
{
    auto& form = mensaje();
    if (!form.isNull()) {
        form->Mensaje = texto;
        if (texto.empty())
            form->Vacia();
        else
            form->RefreshMsg();
        return;
    }
    form = new frmMsg(QApplication::activeWindow());
    form->Mensaje = texto;
    form->Show();
    // A window system tells in an event that the window may be painted.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Ocultar() { delete mensaje().data(); }

} // namespace atipicos::modMsgOp
