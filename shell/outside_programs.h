// The commands that start other programs: editor, file manager, upload, lower-casing. Each throws
// RunError of kind `file` when there is no such program.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class Workspace;

/// Makes `command` the editor of this run and of those to come.
void StoreEditor(Workspace& workspace, std::string_view command);
/// Opens a file, named as in the command line, in the editor. The second opens it at a line,
/// 1-based, when the editor's command has a mark for it; 0: the line is not known.
void Edit(Workspace& workspace, std::string_view file);
void EditAt(Workspace& workspace, std::string_view file, int line);
/// These make their list with its sample lines when it is missing.
void EditJumpList(Workspace& workspace);
void EditUploadList(Workspace& workspace);
void EditUploadBatch(Workspace& workspace);

void ExploreWorkDir(Workspace& workspace);
/// Opens the first or the last output root that the page list of the last build declares.
void ExploreFirstRoot(Workspace& workspace);
void ExploreLastRoot(Workspace& workspace);

/// Shows a page, an absolute drive path, as it lies on the disk, in the browser. Throws `file` when
/// it is not there yet, and when `page` is empty: none is chosen.
void ShowInBrowser(Workspace& workspace, const std::string& page);
/// Opens the folder of a page.
void ExploreFolderOf(Workspace& workspace, const std::string& page);

void RunUploadBatch(Workspace& workspace);
void RunLanthorn(Workspace& workspace);

/// Lower-cases the names of the files in the current directory.
void LowerCaseNames(Workspace& workspace);
/// The same in a folder; its path may end in "\" or not.
void LowerCaseNamesOf(Workspace& workspace, std::string_view folder);

} // namespace kiv
