// What is to be there when a site is begun: folders and files, with their texts.
#pragma once

#include "shell/new_site.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Files;

/// Where the news lie, below the site's folder.
inline constexpr std::string_view kNewsFolder = "news";

/// A file that is to be there in the end.
struct PlannedFile {
    std::string path; // a drive path
    std::string text; // lines end in LF
};

/// All that is to be there, the page list last: while it is missing, the site is not begun.
struct NewSitePlan {
    std::string folder; // ends in "\"
    NewSite wanted;
    std::string label; // what the composer's list calls the site
    std::string name;  // what its pages call it
    bool is_site = false;
    std::vector<std::string> folders;
    std::vector<PlannedFile> files;

    /// `file` is a path as seen from the folder.
    void Add(std::string_view file, std::string text);
    std::string NewsFolder() const; // ends in "\"
    bool HasSections() const { return wanted.has_news || !wanted.section.empty(); }
};

/// What a site needs in a folder (an absolute drive path). Throws RunError of kind
/// `invalid-argument` when the folder cannot stand in the news composer's list, and as
/// ReadNewsSettings does.
NewSitePlan PlanSite(Files& files, const std::string& folder, const NewSite& wanted);

/// What a page list defines by a line that begins with `definition` ("@@1 = "); the last such line
/// counts. Nothing when there is none.
std::optional<std::string> Defined(std::string_view page_list, std::string_view definition);

/// A folder's name as a heading has it: "old-boats" is "Old boats".
std::string TitleOfFolder(std::string_view folder);

/// The site's line in the composer's list.
std::string PresetLine(const NewSitePlan& plan);

} // namespace kiv
