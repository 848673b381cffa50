// Directives that the build does not take, and pages that take each other's place.
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"

namespace kiv {

void FindMisspelledDirectives(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        for (const DirectiveSlip& slip : DirectiveSlips(site, source)) {
            const std::string_view line = source.lines[static_cast<std::size_t>(slip.line) - 1];
            sink.Add(site.PlaceOf(source, slip.line),
                     Joined({Quoted(line), " is not understood as it is written"}),
                     Joined({"write \"", slip.meant, "\""}));
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
