#include "host/ventanas/SalidaDeVentanas.hpp"

#include "controls/SalidaQt.hpp"
#include "printing/clsView.hpp"

#include <utility>

namespace atipicos::app {

std::shared_ptr<SalidaReport> salida_de_ventanas()
{
    return std::make_shared<SalidaQt>([](std::shared_ptr<const Report> report) {
        clsView vista;
        vista.set_Report(std::move(report));
        vista.Cargar(true);
    });
}

} // namespace atipicos::app
