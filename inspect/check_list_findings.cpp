// Lines of `_check.txt` that are not understood. Those that switch off nothing are known only when
// everything else is: inspection.cpp.
#include "inspect/check_list.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"

namespace kiv {

void FindCheckListFaults(const SiteView& site, FindingSink& sink)
{
    const CheckList list(site);
    for (const CheckLineFault& fault : list.faults)
        sink.Add({list.path, fault.line}, fault.text, fault.suggestion);
}

} // namespace kiv
