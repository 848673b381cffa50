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

enum class Renamer { web_safe, thumbnails, replacement, undo, lower_case };

/// A run to look at.
struct RenameTask {
    Renamer renamer = Renamer::web_safe;
    std::string find = {};        // for `replacement`
    std::string replacement = {}; // the same
    std::string folder = {};      // for `lower_case`: where; "": the current directory
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

/// Looks again right before a run whose look the user has seen: the new look, which says so, when
/// the files are others now. Nothing when they are as they were seen.
std::optional<RenameLook> LookIfChanged(Workspace& workspace, const RenameTask& task,
                                        const RenameLook& seen);

/// Whether a folder (a drive path) is the root of a drive or of the file system, where nothing is
/// renamed without a look.
bool IsRoot(std::string_view folder);

/// Starts the program that lower-cases the names of a folder, and tells so; "" is the current one.
void LowerCaseAndTell(Workspace& workspace, std::string_view folder);

/// Replaces in all file names, as dorenamefiles does, and tells how many were renamed.
void RenameAndTell(Workspace& workspace, const std::string& find, const std::string& replacement);

/// Takes back the last run in the current directory and tells how many names came back. Throws
/// RunError of kind `file` when there is none to take back.
void UndoAndTell(Workspace& workspace);

} // namespace kiv
