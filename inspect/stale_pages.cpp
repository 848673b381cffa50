#include "inspect/stale_pages.h"

#include "inspect/page_links.h"
#include "inspect/page_names.h"
#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace kiv {

namespace {

/// A folder with one "\" at its end and no care for case.
std::string FolderKey(std::string_view folder)
{
    return UpperCase(WithSeparator(folder));
}

/// The section's own folder and those that it writes pages into, as far as they are its own.
std::set<std::string> PageFolders(const SiteView& site)
{
    std::set<std::string> keys{FolderKey(site.folder)};
    std::set<std::string> folders{WithSeparator(site.folder)};
    ForEachPage(site, [&](const LinkedPage& page) {
        const std::string_view folder = FolderOf(page.path);
        bool is_known = true;
        if (!keys.contains(FolderKey(folder)) &&
            site.linked->SectionOf(folder, is_known) == &site) {
            keys.insert(FolderKey(folder));
            folders.insert(WithSeparator(folder));
        }
    });
    return folders;
}

/// Lines that the template writes on every page of a section. A page with all of them was made by
/// it. Somebody who writes a page by hand may take some over.
class TemplateMarks {
  public:
    explicit TemplateMarks(const SiteView& site)
    {
        std::size_t pages = 0;
        ForEachPage(site, [&](const LinkedPage& page) {
            ++pages;
            Count(site, page);
        });
        std::erase_if(marks_, [&](const auto& mark) { return mark.second < pages; });
    }

    bool AreIn(std::string_view page) const
    {
        std::unordered_set<std::string_view> found;
        while (!page.empty())
            if (const std::string_view line = TakeLine(page); marks_.contains(line))
                found.insert(line);
        return !found.empty() && found.size() == marks_.size();
    }

  private:
    static constexpr std::size_t kTelling = 16; // shorter lines stand on anybody's pages

    void Count(const SiteView& site, const LinkedPage& page)
    {
        std::unordered_set<std::string_view> lines;
        std::string_view rest = page.text->bytes;
        for (const SourceLines& origin : page.text->origins) {
            if (rest.empty())
                break;
            const std::string_view line = TakeLine(rest);
            if (line.size() >= kTelling && origin.source != SourceLines::kNone &&
                site.sources[origin.source].is_template && lines.insert(line).second)
                ++marks_[line];
        }
    }

    std::unordered_map<std::string_view, std::size_t> marks_; // and on how many pages each is
};

/// Pages in the folders of a section that no page list writes.
std::vector<std::string> OtherPages(const SiteView& site)
{
    std::vector<std::string> paths;
    for (const std::string& folder : PageFolders(site))
        for (const std::string& name : site.linked->Folders().Of(FolderOf(folder + "x")).files) {
            const std::string path = folder + name;
            const LinkedPage* const page = site.linked->Find(path);
            const bool is_written = page != nullptr && page->view != nullptr;
            if (IsPageName(name) && !is_written && !site.linked->IsWaiting(path))
                paths.push_back(path);
        }
    return paths;
}

} // namespace

std::vector<std::string> StalePages(const SiteView& site)
{
    const auto is_single = [](const PageText& page) { return page.number == 0; };
    if (site.linked == nullptr || site.IsCutShort() || std::ranges::any_of(site.pages, is_single))
        return {};
    std::vector<std::string> paths = OtherPages(site);
    if (paths.empty())
        return {};
    const TemplateMarks marks(site);
    std::erase_if(paths, [&](const std::string& path) {
        const std::optional<std::string> bytes = site.linked->Read(path);
        return !bytes || !marks.AreIn(*bytes); // nobody can tell what it is
    });
    return paths;
}

} // namespace kiv
