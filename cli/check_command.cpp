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

/// The names of a list such as "dead-link, dead-picture".
std::vector<std::string_view> NamesIn(std::string_view list)
{
    std::vector<std::string_view> names;
    if (list.empty())
        return names;
    for (const std::string_view entry : Split(list, ','))
        names.push_back(Trim(entry));
    return names;
}

/// The name that was most likely meant, be it by its beginning; "": none is near.
std::string_view NearestFinding(std::string_view name, const std::vector<std::string_view>& known)
{
    constexpr std::size_t kShortest = 5;
    const std::string_view near = Nearest(name, known);
    const auto begins = std::ranges::find_if(
        known, [&](std::string_view other) { return other.starts_with(name); });
    return near.empty() && name.size() >= kShortest && begins != known.end() ? *begins : near;
}

std::set<std::string, std::less<>> NameSet(std::string_view list)
{
    const std::vector<std::string_view> names = NamesIn(list);
    return {names.begin(), names.end()};
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

std::string FindingNamesFault(const std::string& list)
{
    const std::vector<std::string_view> known = FindingNames();
    for (const std::string_view name : NamesIn(list)) {
        if (std::ranges::find(known, name) != known.end())
            continue;
        const std::string_view near = NearestFinding(name, known);
        return Joined({"no finding is called \"", name, "\"", near.empty() ? "" : "; ",
                       DidYouMean(near), near.empty() ? "; " : " ",
                       "kiv-cli check --help lists them"});
    }
    return {};
}

std::vector<HelpEntry> FindingHelp()
{
    std::vector<HelpEntry> entries;
    for (const FindingRow& row : FindingRows())
        entries.push_back({row.name, row.about});
    return entries;
}

Choices FailureSeverities()
{
    return {SeverityName(Severity::error), SeverityName(Severity::warning),
            SeverityName(Severity::note), kNever};
}

void RunCheck(CallDesk& desk, const GivenValues& given)
{
    const FindingChoice choice{NameSet(given.Text("--only")), NameSet(given.Text("--not")),
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
