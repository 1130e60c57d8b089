#pragma once

#include <functional>
#include <string>

namespace atipicos::pruebas {

/// From now on an exception that nobody handles says what it is, in which test (`prueba`) and by which lines
/// of the sources it was raised, before the program is aborted. Debug builds know the lines; with sanitizers,
/// which watch over exceptions themselves, only those that the error names are told.
void di_donde_al_abortar(std::function<std::string()> prueba);

} // namespace atipicos::pruebas
