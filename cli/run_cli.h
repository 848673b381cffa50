// `kiv-cli` as a function, so that tests make the very call that a user makes.
#pragma once

#include "platform/drives.h"
#include "platform/environment.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace kiv {

class StopRequest;

/// What surrounds a call.
struct CliSurroundings {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool err_is_terminal = false;
    Variables variable;
    bool out_is_terminal = false;
    Drives* drives = nullptr;    // instead of the machine's own; no program is started then
    std::string directory = {};  // the shell's, native; "": the process's
    StopRequest* stop = nullptr; // ends a command that goes on, instead of Ctrl+C
    std::function<bool()> out_is_read = {}; // whether `out` still has a reader; none: it has
    std::unique_ptr<Drives>* kept_drives = nullptr; // takes the machine's own when the call is done
};

struct Call;

/// Runs a call; `arguments` are UTF-8 and without the program's name. Returns the exit code: 0
/// done, 1 a fatal error of the run, 2 a wrong call, 3 a warning with "--strict".
int RunCli(const std::vector<std::string>& arguments, const CliSurroundings& around);

/// The same for a call that was read already, as those make it who need thousands a second.
int RunCall(const Call& call, const CliSurroundings& around);

} // namespace kiv
