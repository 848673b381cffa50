#include "shell/site_addresses.h"

#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "shell/list_files.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kListFile = "\\site-addresses.txt";

/// A line of the list: "C:\site\|https://host.example/site/".
std::string LineStart(const Workspace& workspace)
{
    return workspace.WorkDir + '|';
}

/// Without those of other spellings of the working directory, when `others`; else these alone.
std::vector<std::string> AddressLines(Workspace& workspace, bool others)
{
    if (workspace.RecordsFolder.empty())
        return {};
    const std::string list = workspace.RecordsFolder + std::string(kListFile);
    Files& files = workspace.machine().files;
    std::vector<std::string> lines;
    try {
        if (files.FileExists(list))
            lines = ReadLines(files, list);
    } catch (const RunError&) {
        lines.clear(); // it saves some typing; nobody waits for it
    }
    const std::string start = UpperCase(LineStart(workspace));
    std::erase_if(lines, [&](const std::string& line) {
        return UpperCase(line).starts_with(start) == others;
    });
    return lines;
}

} // namespace

std::string SiteAddress(Workspace& workspace)
{
    const std::vector<std::string> lines = AddressLines(workspace, false);
    return lines.empty() ? "" : lines.front().substr(LineStart(workspace).size());
}

void KeepSiteAddress(Workspace& workspace, std::string_view address)
{
    if (workspace.RecordsFolder.empty())
        return;
    std::string text = Joined({LineStart(workspace), address, "\r\n"});
    for (const std::string& line : AddressLines(workspace, true))
        Append(text, {line, "\r\n"});
    try {
        Files& files = workspace.machine().files;
        MakeFolders(files, workspace.RecordsFolder);
        files.WriteRecord(workspace.RecordsFolder + std::string(kListFile), text);
    } catch (const RunError&) {
        // The next time it is typed again.
    }
}

} // namespace kiv
