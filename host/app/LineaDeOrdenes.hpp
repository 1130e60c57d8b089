#pragma once

namespace atipicos::app {

/// The program: reads the command line, runs the command, and returns the exit status.
int ejecuta(int argc, const char* const* argv);

} // namespace atipicos::app
