#include "inspect/inspection.h"

#include "inspect/check_list.h"
#include "inspect/finding_table.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kiv {

namespace {

/// By file, its case aside, line and page; the worst first in one line.
bool StandsBefore(const Finding& one, const Finding& other)
{
    const auto key = [](const Finding& finding) {
        return std::tuple(UpperCase(finding.where.file), finding.where.line,
                          -static_cast<int>(finding.severity), finding.where.page);
    };
    return key(one) < key(other);
}

bool IsSame(const Finding& one, const Finding& other)
{
    return one.name == other.name && one.text == other.text && one.where.file == other.where.file &&
           one.where.line == other.where.line && one.where.page == other.where.page;
}

/// Equal ones once: each pass of a build finds the same.
std::vector<Finding> FindingsOf(const FindingRow& row, const SiteView& site)
{
    std::vector<Finding> found;
    FindingSink sink(row, found);
    row.look(site, sink);
    std::ranges::stable_sort(found, StandsBefore);
    found.erase(std::unique(found.begin(), found.end(), IsSame), found.end());
    return found;
}

void TakeFindings(Inspection& all, CheckList& list, std::vector<Finding> found,
                  const FindingChoice& choice)
{
    for (Finding& finding : found) {
        const bool is_off = list.SwitchesOff(finding) && !choice.only.contains(finding.name);
        if (!choice.Takes(finding.name))
            continue;
        if (is_off)
            ++all.switched_off;
        else
            all.findings.push_back(std::move(finding));
    }
}

std::vector<Finding> UnusedCheckLines(const CheckList& list)
{
    std::vector<Finding> found;
    const auto row = std::ranges::find(FindingRows(), kUnusedCheckLine, &FindingRow::name);
    FindingSink sink(*row, found);
    for (const CheckLine& line : list.lines)
        if (!line.is_used && line.name != kUnusedCheckLine)
            sink.Add({list.path, line.line},
                     Joined({"there is no ", line.name, line.text.empty() ? "" : " with \"",
                             line.text, line.text.empty() ? "" : "\"", " to switch off"}),
                     "take the line out");
    return found;
}

} // namespace

bool FindingChoice::Takes(std::string_view name) const
{
    return (only.empty() || only.contains(name)) && !without.contains(name);
}

Inspection Inspect(const SiteView& site, const FindingChoice& choice)
{
    Inspection all;
    CheckList list(site);
    for (const FindingRow& row : FindingRows()) {
        // Whether a line of the list is of use is told by a finding that nobody may have asked for.
        const bool tells_use = choice.Takes(kUnusedCheckLine) && list.Names(row.name);
        if (row.look != nullptr && (choice.Takes(row.name) || tells_use))
            TakeFindings(all, list, FindingsOf(row, site), choice);
    }
    TakeFindings(all, list, UnusedCheckLines(list), choice);
    std::ranges::stable_sort(all.findings, StandsBefore);
    return all;
}

} // namespace kiv
