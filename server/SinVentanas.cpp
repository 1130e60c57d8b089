// What the component answers where it is built without windows.
#include "server/Avisos.hpp"
#include "server/Clase.hpp"

namespace atipicos::server {

const Clase* clase_con_ventanas(std::string_view /*nombre*/) { return nullptr; }

bool hay_ventanas() noexcept { return false; }

std::shared_ptr<MsgBox> avisos_con_ventanas() { return nullptr; }

} // namespace atipicos::server
