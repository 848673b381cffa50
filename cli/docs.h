// What the installation brings for the user's shell, from the table of calls.
#pragma once

#include <string>

namespace kiv {

/// The manual page of `kiv-cli` in roff.
std::string ManualPage();

/// Completion of commands, options, their values and paths for bash.
std::string BashCompletion();

} // namespace kiv
