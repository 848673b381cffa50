#include "inspect/inspection.h"

#include "inspect/finding_table.h"
#include "text/windows1252.h"

#include <algorithm>
#include <tuple>

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

} // namespace

bool FindingChoice::Takes(std::string_view name) const
{
    return (only.empty() || only.contains(name)) && !without.contains(name);
}

std::vector<Finding> Inspect(const SiteView& site, const FindingChoice& choice)
{
    std::vector<Finding> found;
    for (const FindingRow& row : FindingRows()) {
        FindingSink sink(row, found);
        if (choice.Takes(row.name))
            row.look(site, sink);
    }
    std::ranges::stable_sort(found, StandsBefore);
    const auto [rest, end] = std::ranges::unique(found, IsSame);
    found.erase(rest, end);
    return found;
}

} // namespace kiv
