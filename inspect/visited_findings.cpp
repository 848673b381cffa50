// Pages and pictures in the site's folders that no list writes, no page links to, none shows.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "inspect/page_names.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>
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

/// Those of them that a former page list has left.
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

} // namespace

void FindStalePages(const SiteView& site, FindingSink& sink)
{
    for (const std::string& path : StalePages(site))
        sink.Add(Place{path, 0, {}},
                 Joined({"no page list writes ", InQuotes(NameOf(path)),
                         " any more, but it is still there"}),
                 "delete it here and on the server");
}

void FindLinksToStalePages(const SiteView& site, FindingSink& sink)
{
    std::set<std::string> stale;
    for (const SiteView* const section : site.group)
        for (const std::string& path : StalePages(*section))
            stale.insert(UpperCase(path));
    if (stale.empty())
        return;
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (target.state == Target::State::found && stale.contains(UpperCase(target.path)))
            sink.Add(PlaceOf(page, link),
                     Joined({"the link ", InQuotes(link.address),
                             " leads to a page that no page list writes any more"}),
                     "link to a page of the list, or put that page back on it");
    });
}

namespace {

/// Whether a name of the page list is the page's.
bool IsNameOf(std::string_view name, const PageText& page)
{
    return StartsWithNoCase(page.name, name) &&
           (name.size() == page.name.size() || page.name.rfind('.') == name.size());
}

/// Where the page list begins the page.
Place PlaceOfPage(const SiteView& site, const LinkedPage& page)
{
    for (const SourceText& source : site.sources) {
        if (!source.is_page_list)
            continue;
        for (std::size_t line = 0; line < source.lines.size(); ++line)
            if (StartsWithNoCase(source.lines[line], "@FILE =") &&
                IsNameOf(Trim(FromChar(source.lines[line], 8)), *page.text))
                return {source.path, static_cast<int>(line) + 1, page.text->name};
    }
    return {page.path, 0, page.text->name};
}

/// Whether pages of the section link to each other at all. A section of single pages that is
/// linked to from elsewhere needs none.
bool HasLinkedPages(const SiteView& site)
{
    bool has = false;
    ForEachPage(site, [&](const LinkedPage& page) { has = has || page.is_linked; });
    return has;
}

} // namespace

void FindUnlinkedPages(const SiteView& site, FindingSink& sink)
{
    if (!HasLinkedPages(site) || site.linked->HasUnknownAddresses())
        return;
    // A pass of its own writes a page once more elsewhere.
    std::set<int> linked{1};
    ForEachPage(site, [&](const LinkedPage& page) {
        if (page.is_linked || page.facts.leads_on || IsIndexName(NameOf(page.path)) ||
            site.linked->IsMentioned(NameOf(page.path)))
            linked.insert(page.text->number);
    });
    ForEachPage(site, [&](const LinkedPage& page) {
        if (IsPageName(page.path) && linked.insert(page.text->number).second)
            sink.Add(PlaceOfPage(site, page),
                     Joined({"no page links to ", InQuotes(page.text->name)}));
    });
}

namespace {

/// A browser asks for these without being told.
bool IsAskedFor(std::string_view name)
{
    return StartsWithNoCase(name, "favicon") || StartsWithNoCase(name, "apple-touch-icon");
}

/// The folders from which the section's pages show pictures, as far as they are its own.
std::set<std::string> PictureFolders(const SiteView& site)
{
    std::set<std::string> folders;
    ForEachLink(site, [&](const LinkedPage&, const PageLink& link, const Target& target) {
        if (link.kind != LinkKind::picture || target.state != Target::State::found)
            return;
        const std::string_view folder = FolderOf(target.path);
        bool is_known = true;
        if (site.linked->SectionOf(folder, is_known) == &site)
            folders.insert(WithSeparator(folder));
    });
    return folders;
}

} // namespace

void FindUnusedPictures(const SiteView& site, FindingSink& sink)
{
    if (site.linked == nullptr || site.linked->HasUnknownAddresses())
        return;
    for (const std::string& folder : PictureFolders(site))
        for (const std::string& name : site.linked->Folders().Of(FolderOf(folder + "x")).files) {
            const std::string path = folder + name;
            if (IsPictureName(name) && !IsAskedFor(name) && !site.linked->IsUsed(path))
                sink.Add(Place{path, 0, {}},
                         Joined({"no page shows the picture ", InQuotes(name)}));
        }
}

} // namespace kiv
