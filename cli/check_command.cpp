// The command that looks for what is wrong in a site.
#include "cli/commands.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "inspect/finding_table.h"
#include "shell/site_check.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kNever = "never";

/// The names of a list such as "dead-link, dead-picture". Throws `invalid-argument` for one that is
/// none.
std::set<std::string, std::less<>> Names(const std::string& list)
{
    std::set<std::string, std::less<>> names;
    if (list.empty())
        return names;
    const std::vector<std::string_view> known = FindingNames();
    for (const std::string_view entry : Split(list, ',')) {
        const std::string name(Trim(entry));
        if (std::ranges::find(known, name) == known.end()) {
            const std::string_view near = Nearest(name, known);
            throw RunError(ErrorKind::invalid_argument,
                           Joined({"no finding is called \"", name, "\"", near.empty() ? "" : "; ",
                                   DidYouMean(near)}));
        }
        names.insert(name);
    }
    return names;
}

/// Whether one of them is at least as bad as the call asks.
bool HasFailed(const std::vector<Finding>& findings, const std::string& fail_on)
{
    if (fail_on == kNever)
        return false;
    const auto is_bad = [&](Severity severity) {
        for (const Severity least : {Severity::note, Severity::warning, Severity::error})
            if (fail_on == SeverityName(least))
                return severity >= least;
        return severity == Severity::error;
    };
    return std::ranges::any_of(findings,
                               [&](const Finding& finding) { return is_bad(finding.severity); });
}

} // namespace

Choices FailureSeverities()
{
    return {SeverityName(Severity::error), SeverityName(Severity::warning),
            SeverityName(Severity::note), kNever};
}

void RunCheck(CallDesk& desk, const GivenValues& given)
{
    const FindingChoice choice{Names(given.Text("--only")), Names(given.Text("--not")),
                               given.Has("--external")};
    CheckWorkDir(desk.workspace, choice);
    const Inspection& checked = *desk.workspace.Checked;
    desk.report.switched_off = checked.switched_off;
    desk.report.has_failed = HasFailed(checked.findings, given.Text("--fail-on"));
    NativePaths& paths = desk.workspace.machine().native_paths;
    const auto native = [&](const KeptPlace& where) {
        return where.file.empty() ? std::string() : NativeOrDrive(paths, where.file);
    };
    std::vector<ReportedFinding>& reported = desk.report.findings.emplace();
    for (const Finding& finding : checked.findings)
        reported.push_back({finding, native(finding.where)});
    if (!choice.external)
        return;
    std::vector<ReportedLink>& links = desk.report.external.emplace();
    for (const ExternalLink& link : checked.external)
        links.push_back({link, native(link.where)});
}

} // namespace kiv
