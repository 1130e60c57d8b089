#pragma once

#include "platform/report/Report.hpp"

#include <memory>

namespace atipicos {

/// Shows any report of the host in the component's viewer.
class clsView {
public:
    void set_Report(std::shared_ptr<const Report> crxRep) noexcept;

    /// Modal, it returns when the viewer was closed; else at once. Without a report the viewer is empty.
    /// `intZoom`: 0 or 1, as wide as the window; 2, whole pages; from 25 to 400, percent. An error is
    /// shown and swallowed.
    void Cargar(bool bolModal, int intZoom = 0) const;

private:
    std::shared_ptr<const Report> m_report;
};

} // namespace atipicos
