// What the installation brings for the user's shell, from the tables of calls and commands.
#pragma once

#include <string>

namespace kiv {

/// The manual page of `kiv-cli` in roff.
std::string ManualPage();

/// The manual page of the window, `kiv`.
std::string WindowManualPage();

/// Completion of commands, options, their values and paths: for bash, for zsh (a function for its
/// `fpath`, named `_kiv-cli`) and for fish.
std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

} // namespace kiv
