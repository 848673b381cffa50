// The operations on "_group.txt": building every sub-site, merging their site maps.
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kMaxGroupEntries = 500;

void AppendLines(std::string& text, Files& files, const std::string& path)
{
    for (const std::string& line : ReadLines(files, path))
        text.append(line).append("\r\n");
}

std::string AsFolder(const std::string& entry)
{
    return IsSeparator(entry.back()) ? entry : entry + '\\';
}

} // namespace

/// The entries of the group list that are not empty, as written.
std::vector<std::string> Workspace::GroupEntries() const
{
    std::vector<std::string> entries = ReadLines(machine_.files, kGroupFile);
    std::erase_if(entries, [](const std::string& entry) { return entry.empty(); });
    return entries;
}

void Workspace::groupedit(std::string_view file)
{
    if (!machine_.files.FileExists(kGroupFile))
        return;
    for (const std::string& entry : GroupEntries())
        Edit(WorkDir + AsFolder(entry) + std::string(file));
}

void Workspace::BuildGroup()
{
    addresses_ = LoadAddresses(machine_.files);
    SetNewYear(true);
    try {
        groupbuild();
    } catch (...) {
        SetNewYear(false);
        throw;
    }
    SetNewYear(false);
}

void Workspace::groupbuild()
{
    Files& files = machine_.files;
    if (!files.FileExists(kGroupFile))
        return;
    const std::vector<std::string> entries = GroupEntries();
    if (entries.size() > kMaxGroupEntries)
        throw RunError(ErrorKind::subscript, "more than 500 group entries",
                       AbsolutePath(kGroupFile, files.CurrentDirectory()));
    const std::string saved = WorkDir;
    try {
        if (files.FileExists(kPageListFile) && files.FileExists(kTemplateFile))
            BuildCurrent();
        for (const std::string& entry : entries) {
            // The entry as written: no "\" is put behind it here.
            files.ChangeDirectory(saved + entry);
            WorkDir = saved + entry;
            showdir();
            BuildCurrent();
        }
    } catch (...) {
        ChangeDirectory(saved);
        throw;
    }
    ChangeDirectory(saved);
}

void Workspace::AssembleSiteMap()
{
    if (machine_.files.FileExists(kGroupFile))
        sitemapmaster();
}

void Workspace::sitemapmaster()
{
    Files& files = machine_.files;
    std::string map = "<h3>Site Map</h3>\r\n<ul>\r\n";
    AppendLines(map, files, WorkDir + std::string(kSiteMapFile));
    for (const std::string& entry : GroupEntries())
        AppendLines(map, files, AsFolder(entry) + std::string(kSiteMapFile));
    map += "</ul>\r\n";
    const std::string master = WorkDir + std::string(kMasterSiteMapFile);
    files.WriteFile(master, map);
    Edit(master);
}

} // namespace kiv
