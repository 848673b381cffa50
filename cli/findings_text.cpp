#include "cli/findings_text.h"

#include "cli/shown_text.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <ostream>
#include <string>
#include <string_view>

namespace kiv {

namespace {

void PrintFinding(std::ostream& out, const ReportedFinding& reported)
{
    const Finding& finding = reported.finding;
    out << (reported.native.empty() ? "kiv" : ShownUtf8(reported.native));
    if (finding.where.line > 0)
        out << ':' << finding.where.line;
    out << ": " << SeverityName(finding.severity) << ": " << ShownLine(finding.text);
    if (!finding.where.page.empty())
        out << " (page " << ShownLine(finding.where.page) << ')';
    out << " [" << finding.name << "]\n";
    if (!finding.suggestion.empty())
        out << "    " << ShownLine(finding.suggestion) << '\n';
}

} // namespace

void PrintFindings(std::ostream& out, const std::vector<ReportedFinding>& findings,
                   std::size_t switched_off)
{
    for (const ReportedFinding& finding : findings)
        PrintFinding(out, finding);
    if (switched_off > 0)
        out << switched_off << (switched_off == 1 ? " finding is" : " findings are")
            << " switched off by " << kCheckFile << '\n';
}

} // namespace kiv
