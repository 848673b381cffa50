// What the build itself has to say.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "platform/site_files.h"

namespace kiv {

namespace {

constexpr std::string_view kMissingStart = "Missing @@start";

} // namespace

void FindBuildError(const SiteView& site, FindingSink& sink)
{
    if (site.error)
        sink.Add(site.error->where.View(), site.error->text, site.error->hint);
}

void FindBuildWarnings(const SiteView& site, FindingSink& sink)
{
    if (site.Lacks(kPageListFile) || site.Lacks(kTemplateFile))
        return; // "missing-list" says so
    for (const Warning& warning : site.warnings)
        if (warning.text != kMissingStart) // "stop-open" says so
            sink.Add(warning.where.View(), warning.text);
}

} // namespace kiv
