// `kiv-cli` as a function, so that tests make the very call that a user makes.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// What surrounds a call.
struct CliSurroundings {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool err_is_terminal = false;
    /// The value of an environment variable, if it is set.
    std::function<std::optional<std::string>(const char* name)> variable;
};

/// Runs a call; `arguments` are UTF-8 and without the program's name. Returns the exit code: 0
/// done, 1 a fatal error of the run, 2 a wrong call.
int RunCli(const std::vector<std::string>& arguments, const CliSurroundings& around);

} // namespace kiv
