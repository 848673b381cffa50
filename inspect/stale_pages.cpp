#include "inspect/stale_pages.h"

#include "inspect/page_links.h"
#include "inspect/page_names.h"
#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

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

/// A line of the template, and how much of it is left in all lines that it makes: the rest is what
/// the build fills in from the page list.
struct TemplateMark {
    std::string_view source;
    std::size_t before = source.size(); // its characters that begin those lines
    std::size_t behind = source.size(); // and that end them
    std::size_t pages = 0;              // that have such a line

    bool IsWhole() const { return before == source.size(); }
    std::string_view Start() const { return source.substr(0, before); }
    std::string_view End() const
    {
        return source.substr(source.size() - std::min(behind, source.size() - before));
    }
    std::size_t Size() const { return Start().size() + End().size(); }
    bool IsIn(std::string_view line) const
    {
        return line.size() >= Size() && line.starts_with(Start()) && line.ends_with(End());
    }
    /// Takes one of the lines that it makes.
    void Narrow(std::string_view line)
    {
        const auto starts = std::mismatch(source.begin(), source.end(), line.begin(), line.end());
        before = std::min(before, static_cast<std::size_t>(starts.first - source.begin()));
        const auto ends = std::mismatch(source.rbegin(), source.rend(), line.rbegin(), line.rend());
        behind = std::min(behind, static_cast<std::size_t>(ends.first - source.rbegin()));
    }
};

/// What the template writes on every page of a section, whatever the page list has. A page with all
/// of it was made by the template. Somebody who writes a page by hand may take some over.
class TemplateMarks {
  public:
    explicit TemplateMarks(const SiteView& site)
    {
        std::size_t pages = 0;
        std::map<int, TemplateMark> by_line;
        ForEachPage(site, [&](const LinkedPage& page) {
            ++pages;
            Take(by_line, site, page);
        });
        for (const auto& [number, mark] : by_line)
            if (mark.pages == pages && mark.Size() >= (mark.IsWhole() ? kTelling : kSome))
                marks_.push_back(mark);
    }

    bool AreIn(std::string_view page) const
    {
        std::vector<const TemplateMark*> missing;
        bool is_telling = false;
        for (const TemplateMark& mark : marks_) {
            missing.push_back(&mark);
            is_telling |= mark.Size() >= kTelling;
        }
        while (!page.empty() && !missing.empty())
            std::erase_if(missing, [line = TakeLine(page)](const TemplateMark* mark) {
                return mark->IsIn(line);
            });
        return is_telling && missing.empty();
    }

  private:
    static constexpr std::size_t kTelling = 16; // shorter lines stand on anybody's pages
    static constexpr std::size_t kSome = 10;    // less than this is left of any two lines with tags

    /// A line with "=1=" or its kin is for some pages only, even where these are all that there
    /// are.
    static bool IsForSome(std::string_view source) { return source.starts_with('='); }

    static void Take(std::map<int, TemplateMark>& by_line, const SiteView& site,
                     const LinkedPage& page)
    {
        std::set<int> seen;
        std::string_view rest = page.text->bytes;
        for (const SourceLines& origin : page.text->origins) {
            if (rest.empty())
                break;
            const std::string_view line = TakeLine(rest);
            if (origin.source == SourceLines::kNone || !site.sources[origin.source].is_template)
                continue;
            const std::string_view source = site.sources[origin.source].Line(origin.first);
            if (IsForSome(source))
                continue;
            TemplateMark& mark =
                by_line.try_emplace(origin.first, TemplateMark{source}).first->second;
            mark.Narrow(line);
            if (seen.insert(origin.first).second)
                ++mark.pages;
        }
    }

    std::vector<TemplateMark> marks_;
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
