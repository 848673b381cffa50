#include "shell/recent_folders.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "shell/list_files.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

bool IsSame(std::string_view folder, std::string_view other)
{
    return UpperCase(WithSeparator(folder)) == UpperCase(WithSeparator(other));
}

void Keep(Workspace& workspace)
{
    if (workspace.RecentFile.empty())
        return;
    std::string lines;
    for (const std::string& folder : workspace.Recent)
        lines.append(folder).append("\r\n");
    try {
        Files& files = workspace.machine().files;
        MakeFolders(files, std::string(FolderOf(workspace.RecentFile)));
        files.WriteRecord(workspace.RecentFile, lines);
    } catch (const RunError&) {
        // The list serves those who find it; nobody waits for it.
    }
}

} // namespace

void LoadRecentFolders(Workspace& workspace)
{
    Files& files = workspace.machine().files;
    try {
        if (workspace.RecentFile.empty() || !files.FileExists(workspace.RecentFile))
            return;
        workspace.Recent = ReadLines(files, workspace.RecentFile);
    } catch (const RunError&) {
        workspace.Recent.clear();
    }
    std::erase_if(workspace.Recent, [](const std::string& folder) { return !HasDrive(folder); });
    workspace.Recent.resize(std::min(workspace.Recent.size(), kRecentFolders));
}

void NoteRecentFolder(Workspace& workspace, std::string_view folder)
{
    const std::string path = AbsolutePath(folder, workspace.machine().files.CurrentDirectory());
    const bool is_line = path.find_first_of("\r\n") == std::string::npos;
    if (path.empty() || NameOf(path).empty() || !is_line)
        return; // a drive's root is no place of work
    LoadRecentFolders(workspace);
    std::erase_if(workspace.Recent, [&](const std::string& other) { return IsSame(path, other); });
    workspace.Recent.insert(workspace.Recent.begin(), WithSeparator(path));
    workspace.Recent.resize(std::min(workspace.Recent.size(), kRecentFolders));
    Keep(workspace);
}

void GoToRecent(Workspace& workspace, std::size_t index)
{
    const std::string folder = workspace.Recent.at(index); // the list changes on the way
    workspace.switchto(folder);
}

} // namespace kiv
