// The commands that start other programs: editor, file manager, upload, lower-casing. Each throws
// RunError of kind `file` when there is no such program.
#pragma once

#include <string_view>

namespace kiv {

class Workspace;

/// Makes `command` the editor of this run and of those to come.
void StoreEditor(Workspace& workspace, std::string_view command);
/// Opens a file, named as in the command line, in the editor.
void Edit(Workspace& workspace, std::string_view file);
/// These make their list with its sample lines when it is missing.
void EditJumpList(Workspace& workspace);
void EditUploadList(Workspace& workspace);
void EditUploadBatch(Workspace& workspace);

void ExploreWorkDir(Workspace& workspace);
/// Opens the first or the last output root that the page list of the last build declares.
void ExploreFirstRoot(Workspace& workspace);
void ExploreLastRoot(Workspace& workspace);

void RunUploadBatch(Workspace& workspace);
void RunLanthorn(Workspace& workspace);

/// Lower-cases the names of the files in the current directory.
void LowerCaseNames(Workspace& workspace);
/// The same in a folder; its path may end in "\" or not.
void LowerCaseNamesOf(Workspace& workspace, std::string_view folder);

} // namespace kiv
