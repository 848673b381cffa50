// Directives that the build does not take, and pages that take each other's place.
#include "builder/page_list_parser.h"
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/mark_slips.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <utility>

namespace kiv {

namespace {

constexpr const char* kNotUnderstood = " is not understood as it is written";

void AddSlip(const SiteView& site, const SourceText& source, const DirectiveSlip& slip,
             FindingSink& sink)
{
    sink.Add(site.PlaceOf(source, slip.line),
             Joined({Quoted(source.Line(slip.line)),
                     slip.is_cut ? " loses the first character of its value" : kNotUnderstood}),
             slip.meant.empty() ? slip.todo : Joined({"write \"", slip.meant, "\""}));
}

void AddNameless(const SiteView& site, const SourceText& source, FindingSink& sink)
{
    for (std::size_t index = 0; index < source.lines.size(); ++index)
        if (source.PartsOf(index).Has(LinePart::page_start) &&
            EqualsNoCase(Trim(source.lines[index]), kPageStart))
            sink.Add(site.PlaceOf(source, static_cast<int>(index) + 1),
                     Joined({Quoted(source.lines[index]), " names no page"}),
                     "put the page's name behind it");
}

} // namespace

void FindMisspelledDirectives(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources) {
        for (const DirectiveSlip& slip : DirectiveSlips(site, source))
            AddSlip(site, source, slip, sink);
        for (MarkSlip& slip : MarkSlips(site, source))
            sink.Add(site.PlaceOf(source, slip.line), Quoted(slip.words).append(kNotUnderstood),
                     std::move(slip.todo));
        AddNameless(site, source, sink);
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
