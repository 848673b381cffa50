#include "exchange/adopted_sections.h"

#include "text/text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kiv {

namespace {

// The format's bounds are 1000 entries, two of which are no pages, and 500 folders of a group. Who
// adopts a site wants to add to it.
constexpr std::size_t kMostPages = 990;
constexpr std::size_t kMostFolders = 400;

/// Cuts what is too long for a list by number.
void CutByNumber(std::vector<SectionPages>& sections, SectionPages section)
{
    std::vector<std::size_t> rest = std::move(section.pages);
    for (int number = 1; !rest.empty(); ++number) {
        const auto end =
            rest.begin() + static_cast<std::ptrdiff_t>(std::min(rest.size(), kMostPages));
        SectionPages part = section;
        part.pages.assign(rest.begin(), end);
        rest.erase(rest.begin(), end);
        if (number > 1) {
            part.folder += (part.folder.empty() ? "_part" : "\\_part") + std::to_string(number);
            part.writes_above = true;
        }
        sections.push_back(std::move(part));
    }
}

} // namespace

std::vector<SectionPages> PartIntoSections(const std::vector<FoundPage>& pages,
                                           const std::vector<std::size_t>& order)
{
    SectionPages own;
    std::map<std::string, SectionPages> folders;
    for (const std::size_t page : order) {
        const std::string& name = pages[page].name;
        const std::size_t slash = name.find('/');
        if (slash == npos) {
            own.pages.push_back(page);
            continue;
        }
        SectionPages& section = folders[name.substr(0, slash)];
        section.folder = name.substr(0, slash);
        section.pages_folder = section.folder + "/";
        section.pages.push_back(page);
    }
    std::vector<SectionPages> sections;
    if (order.size() <= kMostPages || folders.size() > kMostFolders) {
        own.pages = order;
        CutByNumber(sections, std::move(own));
        return sections;
    }
    CutByNumber(sections, std::move(own));
    if (sections.empty())
        sections.emplace_back(); // a group needs a list of its own, if an empty one
    for (auto& [folder, section] : folders)
        CutByNumber(sections, std::move(section));
    return sections;
}

} // namespace kiv
