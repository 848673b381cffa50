// Calls of `kiv-cli` on a drive that lies in memory.
#pragma once

#include "cli/run_cli.h"
#include "tests/fuzz/report.h"
#include "tests/support/memory_drives.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::fuzz {

/// A command and its arguments and options by name, values in UTF-8:
/// {"build", {{"DIR", "C:\\site"}, {"--eoy", ""}}}.
struct Command {
    std::string name;
    std::vector<std::pair<std::string, std::string>> given;
};

class Desk {
  public:
    /// A drive C: with the folders "site" and "utils".
    Desk();

    test::MemoryDrives drives;
    std::string input; // standard input of the calls, UTF-8

    /// The report of a right call, on a clock that stands still. The argument library, which takes
    /// longer than most commands, has no part in it. Fails when the report is not as it should be,
    /// when a file that it names is not there, or when something stands beside it.
    Report Call(const Command& command);

    struct Printed {
        int code = 0;
        std::string out;
        std::string err;
    };
    /// What a call with these arguments, UTF-8, prints. Fails for an exit code that there is not.
    Printed CallBare(const std::vector<std::string>& arguments);

  private:
    Printed Run(const std::function<int(const CliSurroundings& around)>& run);
};

/// The native path of what a case calls `name` (Windows-1252), below drive C:: relative to
/// C:\site unless it has a drive.
std::string NativeBelow(std::string_view name);

} // namespace kiv::fuzz
