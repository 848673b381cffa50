// What a run of `kiv-cli` prints in the end.
#pragma once

#include "cli/face.h"
#include "exchange/adoption.h"
#include "inspect/external_links.h"
#include "inspect/finding.h"
#include "platform/drives.h"
#include "platform/run_error.h"
#include "shell/directory_tools.h"
#include "shell/line_stories.h"

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kiv {

/// A finding with its place outside.
struct ReportedFinding {
    Finding finding;
    std::string native; // of its file, UTF-8; "" where no drive leads there
};

/// An address on another host with its place outside.
struct ReportedLink {
    ExternalLink link;
    std::string native; // as of a finding
};

/// What the build of one folder of a group did.
struct MemberReport {
    std::string folder; // absolute drive path
    std::string seen;   // the same, native, as seen from the shell's folder
    std::string status;
    std::size_t first = 0; // of the files written, the folder's own
    std::size_t end = 0;
    std::size_t warnings = 0;

    std::span<const WrittenFile> Of(std::span<const WrittenFile> written) const
    {
        return written.subspan(first, end - first);
    }
};

/// All that a report tells; texts are Windows-1252, native paths UTF-8.
struct RunReport {
    std::string status;
    std::vector<std::string> messages;
    std::optional<RunError> error;
    std::vector<WrittenFile> written;                 // in order
    std::vector<std::string> files;                   // their paths, for the JSON report alone
    std::vector<std::string> native;                  // and their native paths, for it, too
    std::optional<std::vector<std::string>> changed;  // the paths that "--changed" asks for
    std::optional<std::vector<MemberReport>> members; // of "group"
    std::vector<std::string> launched;
    std::vector<Warning> warnings;
    std::optional<Renames> renamed;                       // of a renamer
    std::optional<std::string> result;                    // of a command whose result is a text
    std::string guide;                                    // UTF-8 lines: how to go on
    std::optional<Stories> stories;                       // of "why"
    std::optional<Adoption> adoption;                     // of "adopt"
    std::optional<std::vector<ReportedFinding>> findings; // of "check"
    std::optional<std::vector<ReportedLink>> external;    // of "check" where it was asked for
    std::size_t switched_off = 0;                         // of the findings, by `_check.txt`
    int story_line = 0;                                   // that "why" was asked for; 0: every one
    bool tells_changes = false;                           // of a command that builds
    bool ends_in_nul = false;                             // each of the changed paths
    bool dry_run = false;                                 // `renamed` is what would be
    bool is_story_long = false; // `stories` tell all that was done to each line
    bool was_stopped = false;   // it was asked to end before it was done
    bool has_failed = false;    // what the call was asked to fail on is there: exit code 3
};

/// What the reporter of a run has kept, and what the drives have written in it. `with_native`: the
/// native paths, too.
void TakeTold(RunReport& report, const CliReporter& reporter);
void TakeWritten(RunReport& report, Drives& files, bool with_native);

/// What standard output goes to.
struct Terminal {
    bool is_one = false;
    bool has_colours = false; // that the user wants to see
};

/// The result, or the renames of a dry run, or the paths of the changed files, or the status, what
/// changed and how to go on. Nothing of it steers a terminal but a result that goes to no terminal.
void PrintPlain(std::ostream& out, const RunReport& report, const Terminal& terminal);

} // namespace kiv
