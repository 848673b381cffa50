// Directives that the build does not take, and pages that take each other's place.
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

/// The lines (1-based) that are taken for a page's title and are no "@TITLE =".
std::vector<int> OtherTitleLines(const SourceText& source)
{
    std::vector<int> lines;
    for (std::size_t index = 0; index < source.lines.size(); ++index)
        if (source.PartsOf(index).Has(LinePart::title) &&
            !StartsWithNoCase(source.lines[index], "@TITLE ="))
            lines.push_back(static_cast<int>(index) + 1);
    return lines;
}

} // namespace

void FindMisspelledDirectives(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        for (const DirectiveSlip& slip : DirectiveSlips(site, source)) {
            const std::string_view line = source.lines[static_cast<std::size_t>(slip.line) - 1];
            sink.Add(site.PlaceOf(source, slip.line),
                     Joined({Quoted(line), slip.is_cut ? " loses the first character of its value"
                                                       : " is not understood as it is written"}),
                     Joined({"write \"", slip.meant, "\""}));
        }
}

void FindMissingTitles(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources) {
        const std::vector<int> lines = OtherTitleLines(source);
        if (lines.empty())
            continue;
        const std::vector<DirectiveSlip> slips = DirectiveSlips(site, source);
        for (const int line : lines)
            if (std::ranges::find(slips, line, &DirectiveSlip::line) == slips.end())
                sink.Add(site.PlaceOf(source, line),
                         "the line below \"@FILE =\" is taken for the title whatever it holds, and "
                         "this one is no \"@TITLE =\"",
                         "put a line \"@TITLE = ...\" above it");
    }
}

void FindPagesTwice(const SiteView& site, FindingSink& sink)
{
    for (const PageTwice& twice : site.twice)
        sink.Add(site.PlaceOf(twice.second, {}),
                 Joined({"this page is written over the one that ",
                         site.PlaceText(site.PlaceOf(twice.first, {})), " begins"}),
                 "give one of the two another name");
}

} // namespace kiv
