// A call of `kiv-cli`, read from its arguments.
#pragma once

#include "cli/call_table.h"

#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// A command as it was called.
struct Call {
    const CallRow* row = nullptr;
    GivenValues given; // by the command's arguments and options and by the global ones
};

/// What came of reading the arguments: a call, or text for the user (help, version, what is wrong)
/// and an exit code.
struct ReadCall {
    std::optional<Call> call;
    std::string text;
    int exit_code = 0;
};

/// `arguments` are UTF-8 and without the program's name.
ReadCall ReadArguments(const std::vector<std::string>& arguments);

} // namespace kiv
