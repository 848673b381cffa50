#include "cli/report.h"

#include "cli/changes.h"
#include "cli/shown_path.h"
#include "cli/shown_text.h"
#include "cli/stories_text.h"
#include "text/windows1252.h"

#include <ostream>

namespace kiv {

namespace {

/// What a build did: of a group a line for each folder, and the sum.
void PrintChanges(std::ostream& out, const RunReport& report)
{
    const auto members = report.members.value_or(std::vector<MemberReport>());
    for (const MemberReport& member : members) {
        const ChangeCount count = CountChanges(member.Of(report.written));
        out << ShownUtf8Line(member.seen) << ": "
            << (count.written == 0 ? "nothing written" : ChangeWords(count));
        if (member.warnings > 0)
            out << ", " << member.warnings << (member.warnings == 1 ? " warning" : " warnings");
        out << '\n';
    }
    const ChangeCount count = CountChanges(report.written);
    if (count.written > 0)
        out << ChangeWords(count) << '\n';
}

} // namespace

void TakeTold(RunReport& report, const CliReporter& reporter)
{
    report.status = reporter.FinalStatus();
    report.messages = reporter.Messages();
    report.warnings = reporter.Warnings();
}

void TakeWritten(RunReport& report, Drives& files, bool with_native)
{
    report.written = files.WrittenFiles();
    if (!with_native)
        return;
    report.files = files.Written();
    for (const WrittenFile& file : report.written)
        report.native.push_back(NativeOrDrive(files, file.path));
}

void PrintPlain(std::ostream& out, const RunReport& report, const Terminal& terminal)
{
    if (report.changed)
        return PrintPaths(out, *report.changed, report.ends_in_nul, terminal.is_one);
    if (report.dry_run && report.renamed)
        for (const Rename& rename : *report.renamed)
            out << ShownLine(rename.from) << " -> " << ShownLine(rename.to) << '\n';
    if (report.stories)
        PrintStories(out, *report.stories,
                     {report.story_line, report.is_story_long, terminal.has_colours});
    if (report.result)
        out << (terminal.is_one ? ShownText(*report.result) : ToUtf8(*report.result));
    else if (!report.status.empty())
        out << ShownText(report.status) << '\n';
    if (report.tells_changes)
        PrintChanges(out, report);
    out << ShownUtf8(report.guide);
}

} // namespace kiv
