// What a run of `kiv-cli` prints in the end.
#pragma once

#include "cli/face.h"
#include "platform/run_error.h"
#include "shell/directory_tools.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// All that a report tells; texts are Windows-1252.
struct RunReport {
    std::string status;
    std::vector<std::string> messages;
    std::optional<RunError> error;
    std::vector<std::string> files;
    std::vector<std::string> launched;
    std::vector<Warning> warnings;
    std::optional<Renames> renamed;    // of a renamer
    std::optional<std::string> result; // of a command whose result is a text
    bool dry_run = false;              // `renamed` is what would be
};

/// The result on `out`, or the renames of a dry run, or the status; a fatal error on `err`, and
/// with `verbose` the warnings that were kept back. The messages went to standard error while the
/// command ran.
/// Nothing of it steers a terminal but a result that goes to no terminal.
void PrintPlain(std::ostream& out, std::ostream& err, const RunReport& report, bool verbose,
                bool out_is_terminal);

} // namespace kiv
