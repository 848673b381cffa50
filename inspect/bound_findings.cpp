// Bounds of the format that the sources come near to.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

namespace kiv {

namespace {

/// The last twentieth of what there may be.
bool IsNear(const BoundUse& bound)
{
    return bound.count * 20LL >= bound.most * 19LL;
}

} // namespace

void FindNearBounds(const SiteView& site, FindingSink& sink)
{
    for (const BoundUse& bound : site.bounds)
        if (IsNear(bound))
            sink.Add(bound.where.View(),
                     Joined({Decimal(bound.count), " ", bound.what, "; more than ",
                             Decimal(bound.most), " end the build in an error"}));
}

} // namespace kiv
