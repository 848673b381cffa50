// The directory tools on the current directory. What they rename stands in `Workspace::Renamed`,
// also when they end in a fatal error; see directory_tools.h for the errors.
#pragma once

#include "shell/directory_tools.h"

#include <string>

namespace kiv {

class Workspace;

/// Gives every file a name that is safe for the web.
void dodirfix(Workspace& workspace, Renaming renaming = Renaming::real);
/// Puts "_t" into the name of every GIF and JPEG picture.
void dodirt(Workspace& workspace, Renaming renaming = Renaming::real);
/// An empty `find` gives a message and renames nothing.
void dorenamefiles(Workspace& workspace, const std::string& find, const std::string& replacement,
                   Renaming renaming = Renaming::real);
void UndoRenames(Workspace& workspace, const Renames& renames);

/// The first file of the current directory; "" when there is none, or the listing fails.
std::string SampleFileName(Files& files);

} // namespace kiv
