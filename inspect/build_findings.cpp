// What the build itself has to say.
#include "inspect/finding_table.h"
#include "inspect/findings.h"

namespace kiv {

void FindBuildError(const SiteView& site, FindingSink& sink)
{
    if (site.error)
        sink.Add(site.error->where.View(), site.error->text, site.error->hint);
}

void FindBuildWarnings(const SiteView& site, FindingSink& sink)
{
    for (const Warning& warning : site.warnings)
        sink.Add(warning.where.View(), warning.text, warning.hint);
}

} // namespace kiv
