#include "host/sesion/AvisosRecogidos.hpp"

#include "context/modComun.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    /// "[123] Texto" is "Texto".
    std::string sin_linea(const std::string& texto)
    {
        const auto cierre = texto.find("] ");
        const bool numerado = texto.starts_with('[') && cierre != std::string::npos && cierre > 1
            && texto.find_first_not_of("0123456789", 1) == cierre;
        return numerado ? texto.substr(cierre + 2) : texto;
    }

}

class AvisosRecogidos::Caja final : public MsgBox {
public:
    std::vector<std::string> textos;

    Respuesta mostrar(const Mensaje& mensaje) override
    {
        const bool es_error = mensaje.icono == Icono::critico || mensaje.icono == Icono::exclamacion;
        if (auto texto = sin_linea(mensaje.texto);
            es_error && std::find(textos.begin(), textos.end(), texto) == textos.end())
            textos.push_back(std::move(texto));
        return mensaje.por_defecto;
    }
};

AvisosRecogidos::AvisosRecogidos(std::shared_ptr<MsgBox> despues)
    : m_caja(std::make_shared<Caja>())
    , m_despues(std::move(despues))
{
    modComun::set_MsgBox(m_caja);
}

AvisosRecogidos::~AvisosRecogidos() { modComun::set_MsgBox(m_despues); }

bool AvisosRecogidos::hay() const noexcept { return !m_caja->textos.empty(); }

std::string AvisosRecogidos::toma()
{
    std::string todos;
    for (const auto& texto : std::exchange(m_caja->textos, {}))
        todos += (todos.empty() ? "" : " ") + texto;
    return todos;
}

} // namespace atipicos::app
