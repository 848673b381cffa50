#include "shell/site_check.h"

#include "inspect/site_view.h"
#include "platform/site_files.h"
#include "shell/built_sections.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <iterator>

namespace kiv {

namespace {

/// "; 2 are switched off by _check.txt", or nothing.
std::string SwitchedOffText(std::size_t count)
{
    if (count == 0)
        return "";
    return Joined({"; ", Decimal(static_cast<int>(count)), count == 1 ? " is" : " are",
                   " switched off by ", kCheckFile});
}

} // namespace

Inspection CheckSite(Workspace& workspace, const FindingChoice& choice)
{
    workspace.machine().files.Refresh(); // the sources may be others than the last command saw
    BuiltSections sections(workspace);
    sections.BuildAll();
    sections.Link();
    Inspection all;
    for (const SiteView& view : sections.Views()) {
        Inspection one = Inspect(view, choice, [&] { sections.Pause(); });
        std::ranges::move(one.findings, std::back_inserter(all.findings));
        std::ranges::move(one.external, std::back_inserter(all.external));
        all.switched_off += one.switched_off;
    }
    std::ranges::stable_sort(all.findings, StandsBefore);
    return all;
}

void CheckWorkDir(Workspace& workspace, const FindingChoice& choice)
{
    workspace.Checked = CheckSite(workspace, choice);
    workspace.machine().reporter.Status(Joined({"Check: ", CountText(workspace.Checked->findings),
                                                SwitchedOffText(workspace.Checked->switched_off)}));
}

} // namespace kiv
