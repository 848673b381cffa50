#include "cli/report.h"

#include "text/windows1252.h"

#include <ostream>

namespace kiv {

namespace {

std::string InBrackets(const std::string& place)
{
    return place.empty() ? std::string() : " (" + ToUtf8(place) + ")";
}

} // namespace

void PrintPlain(std::ostream& out, std::ostream& err, const RunReport& report, bool verbose)
{
    if (verbose)
        for (const Warning& warning : report.warnings)
            if (!warning.was_shown)
                err << "kiv: " << ToUtf8(warning.text) << InBrackets(warning.PlaceText()) << '\n';
    if (report.error)
        err << "kiv: error: " << ToUtf8(report.error->text) << InBrackets(report.error->where)
            << '\n';
    if (report.dry_run && report.renamed)
        for (const Rename& rename : *report.renamed)
            out << ToUtf8(rename.from) << " -> " << ToUtf8(rename.to) << '\n';
    if (report.result)
        out << ToUtf8(*report.result);
    else if (!report.status.empty())
        out << ToUtf8(report.status) << '\n';
}

} // namespace kiv
