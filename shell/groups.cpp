#include "shell/groups.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/site_files.h"
#include "shell/outside_programs.h"
#include "shell/workspace.h"
#include "text/text.h"

namespace kiv {

namespace {

void AppendLines(std::string& text, Files& files, const std::string& path)
{
    const std::string bytes = ReadNeeded(
        files, path,
        "A build writes this file: build its folder first, or take it out of _group.txt.");
    for (std::string_view rest = bytes; !rest.empty();)
        text.append(TakeLine(rest)).append("\r\n");
}

std::string AsFolder(const std::string& entry)
{
    return IsSeparator(entry.back()) ? entry : entry + '\\';
}

} // namespace

std::vector<std::string> GroupEntries(Files& files)
{
    std::vector<std::string> entries = ReadLines(files, kGroupFile);
    std::erase_if(entries, [](const std::string& entry) { return entry.empty(); });
    return entries;
}

void sitemapmaster(Workspace& workspace)
{
    Files& files = workspace.machine().files;
    if (!files.FileExists(kGroupFile))
        return;
    std::string map = "<h3>Site Map</h3>\r\n<ul>\r\n";
    AppendLines(map, files, workspace.WorkDir + std::string(kSiteMapFile));
    for (const std::string& entry : GroupEntries(files))
        AppendLines(map, files, AsFolder(entry) + std::string(kSiteMapFile));
    map += "</ul>\r\n";
    const std::string master = workspace.WorkDir + std::string(kMasterSiteMapFile);
    files.WriteFile(master, map);
    Edit(workspace, master);
}

void groupedit(Workspace& workspace, std::string_view file)
{
    Files& files = workspace.machine().files;
    if (!files.FileExists(kGroupFile))
        return;
    for (const std::string& entry : GroupEntries(files))
        Edit(workspace, workspace.WorkDir + AsFolder(entry) + std::string(file));
}

} // namespace kiv
