// The manual page and the shell's completion, from the definitions of the calls.
#pragma once

#include <string>

namespace kiv {

/// The manual page of `kiv-cli` in roff.
std::string ManualPage();

/// Completion of commands, options and paths for bash.
std::string BashCompletion();

} // namespace kiv
