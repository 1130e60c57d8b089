#include "server/Avisos.hpp"

#ifdef _WIN32
#include "automation/Texto.hpp"
#endif

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace atipicos::server {

namespace {

#ifdef _WIN32
    class AvisosDelSistema final : public MsgBox {
    public:
        Respuesta mostrar(const Mensaje& mensaje) override
        {
            const auto elegido = MessageBoxW(nullptr, automation::utf16(mensaje.texto).c_str(),
                automation::utf16(mensaje.titulo).c_str(), estilo(mensaje));
            return elegido == IDYES ? Respuesta::Si : elegido == IDNO ? Respuesta::No : mensaje.por_defecto;
        }

    private:
        static UINT estilo(const Mensaje& mensaje)
        {
            UINT bits = MB_TASKMODAL | (mensaje.botones == Botones::SiNo ? MB_YESNO : MB_OK);
            if (mensaje.por_defecto == Respuesta::No)
                bits |= MB_DEFBUTTON2;
            switch (mensaje.icono) {
            case Icono::critico:
                return bits | MB_ICONERROR;
            case Icono::pregunta:
                return bits | MB_ICONQUESTION;
            case Icono::exclamacion:
                return bits | MB_ICONWARNING;
            case Icono::informacion:
                break;
            }
            return bits | MB_ICONINFORMATION;
        }
    };
#endif

    bool pide_consola()
    {
        const char* valor = std::getenv("QVORCOMPRASATIP_AVISOS");
        return valor != nullptr && std::string_view(valor) == "consola";
    }

}

Respuesta AvisosConsola::mostrar(const Mensaje& mensaje)
{
    std::cerr << mensaje.titulo << ": " << mensaje.texto << std::endl;
    return mensaje.por_defecto;
}

std::shared_ptr<MsgBox> nuevos_avisos()
{
    if (pide_consola())
        return std::make_shared<AvisosConsola>();
    if (auto ventanas = avisos_con_ventanas())
        return ventanas;
#ifdef _WIN32
    return std::make_shared<AvisosDelSistema>();
#else
    return std::make_shared<AvisosConsola>();
#endif
}

} // namespace atipicos::server
