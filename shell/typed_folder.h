// Folders as users type, paste and copy them: a drive path or a native one, all in UTF-8.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

/// The folder that a user has typed, as an absolute drive path; one without a drive or a root is
/// relative to the current directory. Quotes around it, as other programs copy paths, do not count.
/// Throws RunError of kind `file` when there is no such folder.
std::string FolderOfTyped(const Machine& machine, std::string_view typed);

/// The same for one that is still to be made. Throws RunError of kind `file` when no drive leads
/// there.
std::string PathOfTyped(const Machine& machine, std::string_view typed);

/// What the typed beginning of a path can become: whole paths that name one folder more, in their
/// order, in the notation that was typed. Those that begin with "." only when that is typed. Throws
/// nothing: a folder that cannot be listed gives none.
std::vector<std::string> CompletionsOf(const Machine& machine, std::string_view typed);

/// The native path of a folder (a drive path) as other programs take it; the drive path itself when
/// no drive leads there. The second gives "" where that is the drive path itself, separators at the
/// end aside: it is shown beside the other only where they differ.
std::string NativeToCopy(const Machine& machine, std::string_view folder);
std::string NativeBeside(const Machine& machine, std::string_view folder);

/// Makes the folder that was typed, or one that was picked (a drive path), the working directory,
/// and tells so. Throw as FolderOfTyped and the workspace do.
void GoToTyped(Workspace& workspace, std::string_view typed);
void GoToPicked(Workspace& workspace, std::string_view folder);

/// Puts a folder (an absolute drive path) into the jump list, and tells so. Throws as AddJump.
void TellAddedJump(Workspace& workspace, std::string_view folder);

} // namespace kiv
