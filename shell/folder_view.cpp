#include "shell/folder_view.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"

#include <algorithm>

namespace kiv {

namespace {

FolderEntry EntryOf(std::string_view path)
{
    const std::string_view name = NameOf(path);
    return {std::string(name.empty() ? path : name), std::string(path)};
}

/// The folders from the root to `folder`.
std::vector<FolderEntry> WayTo(std::string_view folder)
{
    std::vector<FolderEntry> way = {EntryOf(folder)};
    while (!NameOf(way.back().path).empty())
        way.push_back(EntryOf(FolderOf(way.back().path)));
    std::reverse(way.begin(), way.end());
    return way;
}

} // namespace

FolderView ViewFolder(const Machine& machine, std::string_view folder)
{
    Files& files = machine.files;
    FolderView view;
    view.folder = AbsolutePath(folder, files.CurrentDirectory());
    if (view.folder.empty() || !files.FolderExists(view.folder))
        throw RunError(ErrorKind::file, "cannot open the folder " + std::string(folder),
                       {view.folder}, "Look at its spelling, and whether it was moved.");
    view.drives = machine.native_paths.DriveLetters();
    view.above = WayTo(view.folder);
    for (const std::string& name : files.ListFolders(view.folder))
        view.inside.push_back({name, WithSeparator(view.folder) + name});
    return view;
}

std::vector<std::string> FilesOf(const Machine& machine, std::string_view folder)
{
    try {
        return machine.files.ListFiles(folder, "*.*");
    } catch (const RunError&) {
        return {};
    }
}

} // namespace kiv
