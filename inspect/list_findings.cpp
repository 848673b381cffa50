// The two files that make a folder a site.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>

namespace kiv {

namespace {

/// The letters of a file's name up to its extension, in small ones: "html" of "_HTML.txt.txt".
std::string StemLetters(std::string_view name)
{
    std::string letters;
    for (const char c : LowerCase(Before(name, '.')))
        if (c >= 'a' && c <= 'z')
            letters += c;
    return letters;
}

/// The file that was most likely meant to be `list`; "" when there is none.
std::string FileMeant(const SiteView& site, std::string_view list)
{
    std::vector<std::string> files = site.files.ListFiles(site.folder, "*.*");
    std::erase_if(files, [](const std::string& file) {
        return std::ranges::any_of(
            kSiteFiles, [&](std::string_view known) { return EqualsNoCase(file, known); });
    });
    for (const std::string& file : files)
        if (StemLetters(file) == StemLetters(list))
            return file;
    const std::vector<std::string_view> names(files.begin(), files.end());
    return std::string(Nearest(list, names));
}

std::string WhatToDo(const SiteView& site, std::string_view list)
{
    if (site.files.FolderExists(site.folder + std::string(list)))
        return "rename the folder that has this name";
    std::string meant;
    try {
        meant = FileMeant(site, list);
    } catch (const RunError&) {
        return ""; // a folder that may not be listed
    }
    return meant.empty() ? "" : Joined({"rename \"", meant, "\" to \"", list, "\""});
}

} // namespace

void FindMissingLists(const SiteView& site, FindingSink& sink)
{
    if (!site.is_there)
        return; // what is not there lacks nothing
    for (const std::string_view list : {kPageListFile, kTemplateFile})
        if (site.Lacks(list))
            sink.Add({site.folder + std::string(list)},
                     Joined({"there is no ", list, ", so nothing is built"}), WhatToDo(site, list));
}

} // namespace kiv
