// Renaming every file of a folder: web-safe names, thumbnail names, find and replace. A rename
// never lands on a name that is taken, and each can be put back.
#pragma once

#include "platform/machine.h"
#include "platform/run_error.h"
#include "shell/rename_runs.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A name, given in exact form, made safe for the web. A character that the code page lacks becomes
/// its number between hyphens.
std::string WebSafeName(std::string_view exact);

/// The name with "_t" before its last `extension` (".gif", ".jpg"); the name itself when it has no
/// such extension or is a thumbnail name already.
std::string ThumbnailName(std::string_view name, std::string_view extension);

/// The files that fit `pattern`, and the new name of each.
struct RenamePass {
    std::string_view pattern;
    std::function<std::string(const FileName& name)> new_name;
};
/// Passes are done one after the other. Each lists the folder when its turn comes, before it
/// renames anything.
using RenamePasses = std::vector<RenamePass>;

RenamePasses WebSafePasses();
RenamePasses ThumbnailPasses();
/// Every occurrence of `find` becomes `replacement`; case matters.
RenamePasses ReplacementPasses(const std::string& find, const std::string& replacement);

/// What a run of a renamer comes to.
struct RenamePlan {
    Renames renames;                  // in the order in which they are done
    std::optional<RunError> fault;    // of kind `file`: what ends the run behind the last of them
    std::optional<Rename> stops = {}; // the rename that is at fault, if it is one
};

/// Finds out which files of the current directory get which name, and renames nothing. What is left
/// of `former` comes first. A name that stays as it is is no rename. Warns of files that no path
/// can name. Throws RunError of kind `file` when the folder cannot be read.
RenamePlan PlanRenames(Machine& machine, const RenamePasses& passes,
                       const UnfinishedRun& former = {});

} // namespace kiv
