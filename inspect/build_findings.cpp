// What the build itself has to say.
#include "blocks/dispatcher.h"
#include "builder/arguments.h"
#include "builder/cross_references.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_starts.h"
#include "platform/site_files.h"

namespace kiv {

namespace {

constexpr std::string_view kMissingStart = "Missing @@start";

/// Whether another finding tells the same, with what to do: "unclosed-bracket", "undefined-number",
/// "misspelled-tag", "stop-open".
bool HasFindingOfItsOwn(std::string_view text)
{
    return text == kMissingStart || text.starts_with(kNoBracketWarning) ||
           text.starts_with(kNoPageRefWarning) || text == kNoGroupRefWarning ||
           (text.starts_with('<') && text.ends_with(kUnknownTagWarning));
}

} // namespace

void FindBuildError(const SiteView& site, FindingSink& sink)
{
    if (site.error && !PageWithoutLines(site)) // "missing-title" says so
        sink.Add(site.error->where.View(), site.error->text, site.error->hint);
}

void FindBuildWarnings(const SiteView& site, FindingSink& sink)
{
    if (site.Lacks(kPageListFile) || site.Lacks(kTemplateFile))
        return; // "missing-list" says so
    for (const Warning& warning : site.warnings)
        if (!HasFindingOfItsOwn(warning.text))
            sink.Add(warning.where.View(), warning.text, warning.hint);
}

} // namespace kiv
