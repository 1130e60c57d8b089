#include "controls/MsgBoxQt.hpp"
#include "server/AplicacionQt.hpp"
#include "server/Avisos.hpp"

namespace atipicos::server {

namespace {

    class AvisosConVentanas final : public MsgBox {
    public:
        Respuesta mostrar(const Mensaje& mensaje) override
        {
            if (!hay_pantalla()) // the host's own application came meanwhile, and has no windows
                return AvisosConsola().mostrar(mensaje);
            aplicacion();
            return MsgBoxQt().mostrar(mensaje);
        }
    };

}

std::shared_ptr<MsgBox> avisos_con_ventanas()
{
    return hay_pantalla() ? std::make_shared<AvisosConVentanas>() : nullptr;
}

} // namespace atipicos::server
