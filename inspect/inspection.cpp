#include "inspect/inspection.h"

#include "inspect/finding_table.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>
#include <set>
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

/// One finding for what a source line does to many pages, with the first of them: its text says
/// how many there are.
std::vector<Finding> JoinPages(std::vector<Finding> found)
{
    struct Pages {
        std::size_t first = 0; // 0-based, of `joined`
        std::set<std::string> names;
    };
    std::map<std::tuple<std::string_view, std::string, std::string, int>, Pages> places;
    std::vector<Finding> joined;
    for (Finding& finding : found) {
        Pages& pages = places[{finding.name, finding.text, finding.where.file, finding.where.line}];
        if (pages.names.empty())
            pages.first = joined.size();
        const bool is_first = pages.names.empty();
        pages.names.insert(finding.where.page);
        if (is_first)
            joined.push_back(std::move(finding));
    }
    for (const auto& [place, pages] : places)
        if (pages.names.size() > 1)
            joined[pages.first].text.append(", on " + std::to_string(pages.names.size()) +
                                            " pages");
    return joined;
}

} // namespace

std::string_view SeverityName(Severity severity)
{
    constexpr std::string_view kNames[] = {"note", "warning", "error"};
    return kNames[static_cast<std::size_t>(severity)];
}

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
    found = JoinPages(std::move(found));
    std::ranges::stable_sort(found, StandsBefore);
    return found;
}

} // namespace kiv
