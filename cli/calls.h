// A call of `kiv-cli`, read from its arguments.
#pragma once

#include "platform/clock.h"
#include "shell/workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// A command as it was called.
struct Call {
    std::optional<std::string> drive_c; // native folder
    std::optional<DateTime> now;
    bool json = false;
    bool launch = false;
    bool verbose = false;
    std::string directory; // as given, UTF-8; empty: the process's directory
    std::function<void(Workspace& workspace)> run;
};

/// What came of reading the arguments: a call, or text for the user (help, version, what is wrong) and an exit code.
struct ReadCall {
    std::optional<Call> call;
    std::string text;
    int exit_code = 0;
};

ReadCall ReadArguments(const std::vector<std::string>& arguments);

} // namespace kiv
