// Page lists without a page, and pages without their second line.
#include "builder/page_directives.h"
#include "builder/page_list_parser.h"
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_starts.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <span>
#include <vector>

namespace kiv {

namespace {

bool BeginsPage(std::string_view line)
{
    return StartsWithNoCase(line, kPageStart);
}

bool IsTitle(std::string_view line)
{
    return StartsWithNoCase(line, "@TITLE =") || StartsWithNoCase(line, "@CROSS =");
}

/// Whether the line is one of the directives that make a page of another kind, which may need no
/// title: "@NAKED", "@REDIRECT".
bool IsMode(std::string_view line)
{
    constexpr std::string_view kModes[] = {"@TIGHT", "@NOTEMPLATE", "@NOBODYTEMPLATE",
                                           "@NAKED", "@TEMPLATE",   "@REDIRECT"};
    return std::ranges::any_of(kModes,
                               [&](std::string_view mode) { return StartsWithNoCase(line, mode); });
}

bool IsDirective(std::string_view line)
{
    return std::ranges::any_of(PageDirectiveWords(),
                               [&](std::string_view word) { return StartsWithNoCase(line, word); });
}

/// Whether a page's second line holds text, which no page gets.
bool IsLostText(std::string_view line)
{
    return !Trim(line).empty() && !IsDirective(line);
}

/// Where the next page of the source begins (0-based), from `first` on.
std::size_t EndOfPage(const SourceText& source, std::size_t first)
{
    while (first < source.lines.size() && !source.PartsOf(first).Has(LinePart::page_start))
        ++first;
    return first;
}

/// Whether the line below "@FILE =" (0-based) makes a page that was meant otherwise: its text is
/// lost, or a title stands further down.
bool LacksTitle(const SourceText& source, std::size_t second)
{
    const std::string_view line = source.lines[second];
    if (IsTitle(line))
        return false;
    if (IsLostText(line))
        return true;
    const auto page = std::span(source.lines).subspan(second, EndOfPage(source, second) - second);
    return std::ranges::any_of(page, IsTitle) || std::ranges::none_of(page, IsMode);
}

bool IsSlip(const std::vector<DirectiveSlip>& slips, std::size_t index)
{
    return std::ranges::find(slips, static_cast<int>(index) + 1, &DirectiveSlip::line) !=
           slips.end();
}

void LookAtPages(const SiteView& site, const SourceText& source, FindingSink& sink)
{
    const std::vector<DirectiveSlip> slips = DirectiveSlips(site, source);
    std::size_t start = source.lines.size(); // where the page begins; none has
    for (std::size_t index = 0; index < source.lines.size(); ++index) {
        const LineParts parts = source.PartsOf(index);
        if (parts.Has(LinePart::page_start))
            start = index;
        else if (parts.Has(LinePart::title) && start < index && !IsSlip(slips, index) &&
                 LacksTitle(source, index))
            sink.Add(site.PlaceOf(source, static_cast<int>(start) + 1),
                     Joined({"the line below this one is no \"@TITLE =\", so ",
                             IsLostText(source.lines[index])
                                 ? Joined({Quoted(source.lines[index]), " is lost"})
                                 : "the page has no title"}),
                     "put the page's \"@TITLE =\" right below its \"@FILE =\"");
    }
}

/// Whether the page list has a line that begins a page, read or not.
bool HasPageStart(const SiteView& site)
{
    return std::ranges::any_of(site.sources, [](const SourceText& source) {
        return (source.is_page_list || source.IsOfPageList()) &&
               std::ranges::any_of(source.lines, BeginsPage);
    });
}

/// The line that was meant to begin a page; "": none was.
std::string PageStartMeant(const SiteView& site, const SourceText& list)
{
    for (const DirectiveSlip& slip : DirectiveSlips(site, list))
        if (BeginsPage(slip.meant))
            return Joined({"write line ", Decimal(slip.line), " as \"", slip.meant, "\""});
    return {};
}

} // namespace

std::optional<Place> PageWithoutLines(const SiteView& site)
{
    const SourceText* const list = site.PageList();
    if (!site.error || list == nullptr)
        return {};
    int start = 0; // the line that has begun a page with nothing below it so far
    for (std::size_t index = 0; index < list->lines.size(); ++index) {
        const std::string_view line = list->lines[index];
        if (line.starts_with(';'))
            continue;
        const bool begins = BeginsPage(line);
        if (begins && start > 0)
            break;
        start = begins ? static_cast<int>(index) + 1 : 0;
    }
    return start == 0 ? std::optional<Place>() : site.PlaceOf(*list, start);
}

void FindPagesWithoutTitle(const SiteView& site, FindingSink& sink)
{
    if (const auto place = PageWithoutLines(site))
        sink.Add(*place, "nothing stands below this line, and the build ends in an error",
                 "put a line \"@TITLE =\" and the page's title below it");
    for (const SourceText& source : site.sources)
        if (source.IsOfPageList())
            LookAtPages(site, source, sink);
}

/// What an include or a stretch that is left out holds is another matter: a warning tells of it.
void FindNoPages(const SiteView& site, FindingSink& sink)
{
    const SourceText* const list = site.PageList();
    if (list == nullptr || site.error || !site.pages.empty() || !site.warnings.empty() ||
        HasPageStart(site) || IsUtf16(list->bytes) || HasOnlyLoneCr(list->bytes) ||
        HasByteOrderMark(list->bytes))
        return;
    const std::string meant = PageStartMeant(site, *list);
    sink.Add(site.PlaceOf(*list, 0),
             Joined({kPageListFile, " has no line \"@FILE =\", so no page is built"}),
             meant.empty() ? "begin each page with a line \"@FILE =\" and its name" : meant);
}

} // namespace kiv
