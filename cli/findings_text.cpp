#include "cli/findings_text.h"

#include "cli/shown_text.h"
#include "text/text.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

namespace kiv {

namespace {

/// "site/_html.txt:12: "
void PrintPlace(std::ostream& out, const std::string& native, int line)
{
    out << (native.empty() ? "kiv" : ShownUtf8(native));
    if (line > 0)
        out << ':' << line;
    out << ": ";
}

void PrintPage(std::ostream& out, const std::string& page)
{
    if (!page.empty())
        out << " (page " << ShownLine(page) << ')';
}

void PrintFinding(std::ostream& out, const ReportedFinding& reported)
{
    const Finding& finding = reported.finding;
    PrintPlace(out, reported.native, finding.where.line);
    out << SeverityName(finding.severity) << ": " << ShownLine(finding.text);
    PrintPage(out, finding.where.page);
    out << " [" << finding.name << "]\n";
    if (!finding.suggestion.empty())
        out << "    " << ShownLine(finding.suggestion) << '\n';
}

/// "2 errors", "1 note".
std::string Counted(const std::vector<ReportedFinding>& findings, Severity severity)
{
    const auto count = std::ranges::count_if(findings, [&](const ReportedFinding& reported) {
        return reported.finding.severity == severity;
    });
    return std::to_string(count) + " " + std::string(SeverityName(severity)) +
           (count == 1 ? "" : "s");
}

} // namespace

void PrintFindings(std::ostream& out, const std::vector<ReportedFinding>& findings)
{
    for (const ReportedFinding& finding : findings)
        PrintFinding(out, finding);
    if (findings.empty())
        out << "nothing found\n";
    else
        out << Counted(findings, Severity::error) << ", " << Counted(findings, Severity::warning)
            << ", " << Counted(findings, Severity::note) << '\n';
}

void PrintExternalLinks(std::ostream& out, const std::vector<ReportedLink>& links)
{
    for (const ReportedLink& reported : links) {
        const ExternalLink& link = reported.link;
        PrintPlace(out, reported.native, link.where.line);
        out << ShownLine(link.address);
        PrintPage(out, link.where.page);
        out << '\n';
    }
    out << links.size() << (links.size() == 1 ? " address" : " addresses") << " on other hosts\n";
}

} // namespace kiv
