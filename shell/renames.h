// The directory tools on the current directory. What they rename stands in `Workspace::Renamed`,
// also when they end in a fatal error; see directory_tools.h for the errors. Each run is recorded
// before it begins (rename_records.h), and one that was cut short is finished by the next.
#pragma once

#include "shell/directory_tools.h"

#include <string>

namespace kiv {

class Workspace;

/// A dry run finds out what would be done and touches nothing.
enum class Renaming { real, dry_run };

/// Gives every file a name that is safe for the web.
void dodirfix(Workspace& workspace, Renaming renaming = Renaming::real);
/// Puts "_t" into the name of every GIF and JPEG picture.
void dodirt(Workspace& workspace, Renaming renaming = Renaming::real);
/// An empty `find` gives a message and renames nothing.
void dorenamefiles(Workspace& workspace, const std::string& find, const std::string& replacement,
                   Renaming renaming = Renaming::real);

/// Takes back the renames of a report.
void UndoRenames(Workspace& workspace, const Renames& renames);
/// Takes back the last run in the folder, whole or cut short. Throws RunError of kind `file` when
/// there is none to take back.
void UndoLastRenames(Workspace& workspace);

/// The first file of the current directory; "" when there is none, or the listing fails.
std::string SampleFileName(Files& files);

} // namespace kiv
