#include "inspect/waiting_pages.h"

#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <string_view>
#include <vector>

namespace kiv {

namespace {

/// The names of pages in the stretches of a source.
void AddNames(const SourceText& source, std::vector<std::string>& names)
{
    bool is_waiting = false;
    for (const std::string_view line : source.lines) {
        is_waiting ^= StartsWithNoCase(line, "@@EOY");
        if (is_waiting && StartsWithNoCase(line, "@FILE ="))
            names.emplace_back(Trim(FromChar(line, 9)));
    }
}

} // namespace

std::set<std::string> WaitingPages(const SiteView& site)
{
    std::vector<std::string> names;
    for (const SourceText& source : site.sources)
        AddNames(source, names);
    std::set<std::string> folders{site.folder};
    if (!names.empty())
        for (const PageText& page : site.pages)
            folders.emplace(FolderOf(page.path));
    std::set<std::string> paths;
    for (const std::string& name : names)
        for (const std::string& folder : folders)
            for (const std::string_view extension : {"", ".htm", ".asp"})
                paths.insert(UpperCase(AbsolutePath(name + std::string(extension), folder)));
    return paths;
}

} // namespace kiv
