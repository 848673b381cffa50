#include "inspect/inspection.h"

#include "inspect/check_list.h"
#include "inspect/doubled_findings.h"
#include "inspect/finding_table.h"
#include "inspect/open_blocks.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <utility>

namespace kiv {

namespace {

std::vector<Finding> FindingsOf(const FindingRow& row, const SiteView& site)
{
    FindingSink sink(row);
    row.look(site, sink);
    return sink.Take();
}

/// What a build makes and reads again, such as "_singlehtml.txt", has its faults from elsewhere,
/// and they are told there.
void DropOfMadeSources(const SiteView& site, std::vector<Finding>& findings)
{
    std::set<std::string> made;
    for (const std::string& path : site.written)
        made.insert(UpperCase(path));
    std::set<std::string> sources;
    for (const SourceText& source : site.sources)
        if (made.contains(UpperCase(source.path)))
            sources.insert(source.path);
    std::erase_if(findings, [&](const Finding& finding) {
        return finding.name != "page-over-source" && sources.contains(finding.where.file);
    });
}

/// Leaves out what is switched off or was not asked for.
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
    const auto row = std::ranges::find(FindingRows(), kUnusedCheckLine, &FindingRow::name);
    FindingSink sink(*row);
    for (const CheckLine& line : list.lines)
        if (!line.is_used && line.name != kUnusedCheckLine)
            sink.Add({list.path, line.line},
                     Joined({"there is no ", line.name, line.text.empty() ? "" : " with \"",
                             line.text, line.text.empty() ? "" : "\"", " to switch off"}),
                     "take the line out");
    return sink.Take();
}

/// A block without its end is told once, and not by what it makes of the lines below it.
void DropOfOpenBlocks(const SiteView& site, std::vector<Finding>& findings)
{
    const std::vector<OpenBlock> blocks = OpenBlocks(site);
    std::erase_if(findings,
                  [&](const Finding& finding) { return IsOfOpenBlock(site, blocks, finding); });
}

} // namespace

bool StandsBefore(const Finding& one, const Finding& other)
{
    const auto key = [](const Finding& finding) {
        return std::tuple(UpperCase(finding.where.file), finding.where.line,
                          -static_cast<int>(finding.severity), finding.where.page);
    };
    return key(one) < key(other);
}

bool FindingChoice::Takes(std::string_view name) const
{
    return (only.empty() || only.contains(name)) && !without.contains(name);
}

Inspection Inspect(const SiteView& site, const FindingChoice& choice,
                   const std::function<void()>& between)
{
    CheckList list(site);
    std::vector<Finding> found;
    for (const FindingRow& row : FindingRows()) {
        // Whether a line of the list is of use is told by a finding that nobody may have asked for.
        const bool tells_use = choice.Takes(kUnusedCheckLine) && list.Names(row.name);
        // What is not wanted may still say better what another finding says.
        const bool is_asked_for = choice.only.empty() || choice.only.contains(row.name);
        if (row.look != nullptr && (is_asked_for || tells_use))
            std::ranges::move(FindingsOf(row, site), std::back_inserter(found));
        between();
    }
    std::ranges::stable_sort(found, StandsBefore);
    if (choice.only.empty() || choice.only.contains("unclosed-tag"))
        DropOfOpenBlocks(site, found);
    DropDoubled(found);
    DropOfMadeSources(site, found);
    Inspection all;
    TakeFindings(all, list, std::move(found), choice);
    TakeFindings(all, list, UnusedCheckLines(list), choice);
    std::ranges::stable_sort(all.findings, StandsBefore);
    if (choice.external)
        all.external = ExternalLinks(site);
    return all;
}

} // namespace kiv
