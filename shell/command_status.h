// What the status line says of commands that did not come to their end.
#pragma once

#include "platform/run_error.h"

#include <string>

namespace kiv {

/// Of one that a fatal error ended.
std::string FailedStatus(const RunError& error);

/// While a command that was asked to stop finishes the file in work; `closes`: the program ends
/// then.
std::string StoppingStatus(bool closes);

/// Of one that was stopped after `done` of `all` files; `all` 0: it had not begun to count them.
std::string StoppedStatus(int done, int all);

} // namespace kiv
