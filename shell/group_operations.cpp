// The operations on "_group.txt": building every sub-site, merging their site maps.
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kGroupFile = "_group.txt";
constexpr std::string_view kSiteMapFile = "_sitemap.txt";
constexpr std::size_t kMaxGroupEntries = 500;

void AppendLines(std::string& text, Files& files, const std::string& path)
{
    for (const std::string& line : ReadLines(files, path))
        text.append(line).append("\r\n");
}

} // namespace

/// The entries of the group list that are not empty, as written.
std::vector<std::string> Workspace::GroupEntries() const
{
    std::vector<std::string> entries = ReadLines(machine_.files, kGroupFile);
    std::erase_if(entries, [](const std::string& entry) { return entry.empty(); });
    return entries;
}

void Workspace::BuildGroup()
{
    EoyEnabled = true;
    try {
        groupbuild();
    } catch (...) {
        EoyEnabled = false;
        throw;
    }
    EoyEnabled = false;
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
        if (files.FileExists("_html.txt") && files.FileExists("_template.txt"))
            BuildWorkDir();
        for (const std::string& entry : entries) {
            // The entry as written: no "\" is put behind it here.
            WorkDir = saved + entry;
            files.ChangeDirectory(WorkDir);
            BuildWorkDir();
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
    for (std::string entry : GroupEntries()) {
        if (!IsSeparator(entry.back()))
            entry += '\\';
        AppendLines(map, files, entry + std::string(kSiteMapFile));
    }
    map += "</ul>\r\n";
    const std::string master = WorkDir + "_sitemap-master.txt";
    files.WriteFile(master, map);
    machine_.programs.Start(EditorCommand + master);
}

} // namespace kiv
