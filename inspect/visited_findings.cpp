// Pages and pictures in the site's folders that no list writes, no page links to, none shows.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "inspect/page_names.h"
#include "inspect/stale_pages.h"
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
