// Page lists without a page, and pages without their second line.
#include "builder/page_directives.h"
#include "builder/page_list_parser.h"
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
    return StartsWithNoCase(line, "@TITLE =");
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

/// Where the next page of the source begins (0-based), from `first` on.
std::size_t EndOfPage(const SourceText& source, std::size_t first)
{
    while (first < source.lines.size() && !source.PartsOf(first).Has(LinePart::page_start))
        ++first;
    return first;
}

/// Whether the line below "@FILE =" (0-based) is no title and makes a page that was meant
/// otherwise. A page of another kind needs none, where no text is lost to it.
bool LacksTitle(const SourceText& source, std::size_t second)
{
    const std::string_view line = source.lines[second];
    if (IsTitle(line))
        return false;
    if (!Trim(line).empty() && !IsDirective(line))
        return true;
    const auto page = std::span(source.lines).subspan(second, EndOfPage(source, second) - second);
    return std::ranges::any_of(page, IsTitle) || std::ranges::none_of(page, IsMode);
}

/// The lines (1-based) that are taken for a page's title, which the page lacks.
std::vector<int> OtherTitleLines(const SourceText& source)
{
    std::vector<int> lines;
    for (std::size_t index = 0; index < source.lines.size(); ++index)
        if (source.PartsOf(index).Has(LinePart::title) && LacksTitle(source, index))
            lines.push_back(static_cast<int>(index) + 1);
    return lines;
}

void LookAtTitles(const SiteView& site, const SourceText& source, FindingSink& sink)
{
    const std::vector<int> lines = OtherTitleLines(source);
    if (lines.empty())
        return;
    const std::vector<DirectiveSlip> slips = DirectiveSlips(site, source);
    for (const int line : lines)
        if (std::ranges::find(slips, line, &DirectiveSlip::line) == slips.end())
            sink.Add(site.PlaceOf(source, line),
                     "the line below \"@FILE =\" is taken for the title whatever it holds, and "
                     "this one is no \"@TITLE =\"",
                     "put a line \"@TITLE = ...\" above it");
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

void FindMissingTitles(const SiteView& site, FindingSink& sink)
{
    if (const auto place = PageWithoutLines(site))
        sink.Add(*place, "nothing stands below this \"@FILE =\", and the build ends in an error",
                 "put a line \"@TITLE = ...\" below it");
    for (const SourceText& source : site.sources)
        LookAtTitles(site, source, sink);
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
