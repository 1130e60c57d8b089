#include "printing/clsView.hpp"

#include "context/trap.hpp"
#include "printing/frmView.hpp"

#include <utility>

namespace atipicos {

void clsView::set_Report(std::shared_ptr<const Report> crxRep) noexcept { m_report = std::move(crxRep); }

void clsView::Cargar(bool bolModal, int intZoom) const
{
    trap("clsView:Cargar", [&] {
        auto& form = frmView::compartido();
        form.set_Report(m_report);
        form.set_Zoom(intZoom);
        form.Muestra(bolModal);
    });
}

} // namespace atipicos
