#pragma once

#include <span>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
class ParseError;
}

/// What is wrong with a command line, in Spanish. The library's own words are never read: which option is
/// meant is asked of the options themselves.
namespace atipicos::app {

/// The command line cannot be carried out as it was given; `what()` says why, to a person.
class MalUsada : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Raises a `MalUsada` for what the library would take otherwise than it was meant: an option without its
/// value, which would take the next option for it, a value for an option that has none, a command that there
/// is not. `argumentos`: without the name of the program.
void exige_valores(const CLI::App& app, std::span<const char* const> argumentos);

/// What to tell of an error that `app` raised while it read a command line.
[[nodiscard]] std::string explica(const CLI::App& app, const CLI::ParseError& error);

} // namespace atipicos::app
