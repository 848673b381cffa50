#include "cli/report.h"

#include "cli/findings_text.h"
#include "cli/shown_text.h"
#include "cli/stories_text.h"
#include "text/windows1252.h"

#include <ostream>

namespace kiv {

namespace {

std::string InBrackets(const std::string& place)
{
    return place.empty() ? std::string() : " (" + ShownLine(place) + ")";
}

} // namespace

void PrintPlain(std::ostream& out, std::ostream& err, const RunReport& report, bool verbose,
                const Terminal& terminal)
{
    for (const Warning& warning : report.warnings)
        if (!warning.was_shown && (verbose || warning.is_noted))
            err << "kiv: " << ShownText(warning.text) << InBrackets(warning.where.Text()) << '\n';
    if (report.error)
        err << "kiv: error: " << ShownLine(report.error->text)
            << InBrackets(report.error->where.Text()) << '\n';
    if (report.dry_run && report.renamed)
        for (const Rename& rename : *report.renamed)
            out << ShownLine(rename.from) << " -> " << ShownLine(rename.to) << '\n';
    if (report.stories)
        PrintStories(out, *report.stories,
                     {report.story_line, report.is_story_long, terminal.has_colours});
    if (report.findings)
        PrintFindings(out, *report.findings);
    if (report.external)
        PrintExternalLinks(out, *report.external);
    if (report.result)
        out << (terminal.is_one ? ShownText(*report.result) : ToUtf8(*report.result));
    else if (!report.status.empty())
        out << ShownText(report.status) << '\n';
}

} // namespace kiv
