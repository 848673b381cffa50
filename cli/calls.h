// A call of `kiv-cli`, read from its arguments.
#pragma once

#include "cli/report.h"
#include "platform/clock.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

class Workspace;

/// What a command works with.
struct CallDesk {
    Workspace& workspace;
    std::istream& in;
    RunReport& report;
};

/// What happens before a command: nothing, a look at the folder that leaves everything as it is, or
/// the whole start.
enum class SetUp { none, look, full };

/// A command as it was called.
struct Call {
    std::optional<std::string> drive_c; // native folder
    std::optional<DateTime> now;
    bool json = false;
    bool launch = false;
    bool verbose = false;
    std::string directory = "."; // as given, UTF-8
    SetUp set_up = SetUp::full;
    bool makes_drive_c = true; // when the folder of drive C: is missing
    bool renames = false;      // the report has the renames
    bool dry_run = false;
    std::function<void(CallDesk& desk)> run;
};

/// What came of reading the arguments: a call, or text for the user (help, version, what is wrong)
/// and an exit code.
struct ReadCall {
    std::optional<Call> call;
    std::string text;
    int exit_code = 0;
};

ReadCall ReadArguments(const std::vector<std::string>& arguments);

} // namespace kiv
