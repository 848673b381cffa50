// What a renamer would do, for a window that shows it first, and the renamers as the window runs
// them, each with what the status line says of it.
#pragma once

#include "shell/directory_tools.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

enum class Renamer { web_safe, thumbnails, replacement, undo };

/// A run to look at.
struct RenameTask {
    Renamer renamer = Renamer::web_safe;
    std::string find = {};        // for `replacement`
    std::string replacement = {}; // the same
    bool operator==(const RenameTask&) const = default;
};

/// A file's names as text, before and after.
struct RenamePair {
    std::string from;
    std::string to;
    bool operator==(const RenamePair&) const = default;
};

struct RenameLook {
    std::vector<RenamePair> pairs;   // in the order in which they would be done
    std::optional<RenamePair> stops; // the one that would end the run behind them, if it is one
    std::string summary;             // how many there are, or that there are none
    std::string warning;             // what would end the run, and what can be done; "": nothing
    bool is_possible = true;         // false: there is no run that could be taken back
    bool IsEmpty() const { return pairs.empty() && !stops; }
};

/// Looks at a run in the current directory, and renames nothing. What was cut short there before
/// and would be finished first is among it. Never throws RunError: what keeps the folder from being
/// looked at is the warning.
RenameLook LookAtRenames(Workspace& workspace, const RenameTask& task);

/// Replaces in all file names, as dorenamefiles does, and tells how many were renamed.
void RenameAndTell(Workspace& workspace, const std::string& find, const std::string& replacement);

/// Takes back the last run in the current directory and tells how many names came back. Throws
/// RunError of kind `file` when there is none to take back.
void UndoAndTell(Workspace& workspace);

} // namespace kiv
