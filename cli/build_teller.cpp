#include "cli/build_teller.h"

#include "cli/changes.h"
#include "cli/commands.h"
#include "cli/json_report.h"
#include "cli/shown_text.h"
#include "platform/stop_request.h"
#include "text/text.h"

#include <ostream>

namespace kiv {

namespace {

std::string TwoDigits(int number)
{
    return (number < 10 ? "0" : "") + Decimal(number);
}

std::string TimeOfDay(const DateTime& time)
{
    return TwoDigits(time.hour) + ':' + TwoDigits(time.minute) + ':' + TwoDigits(time.second);
}

/// "41 ms", "2.05 s".
std::string Duration(std::chrono::milliseconds time)
{
    if (time < std::chrono::seconds(1))
        return Decimal(time.count()) + " ms";
    const auto hundredths = time.count() / 10;
    return Decimal(hundredths / 100) + '.' + TwoDigits(static_cast<int>(hundredths % 100)) + " s";
}

std::string WhatBecame(const BuildRecord& record, const RunReport& report)
{
    const ChangeCount count = CountChanges(record.written);
    std::string ended = record.error ? "failed" : record.was_stopped ? "stopped" : "";
    if (count.written > 0)
        return (ended.empty() ? "" : ended + ", ") + ChangeWords(count);
    if (!ended.empty())
        return ended;
    return report.status.empty() ? "nothing written" : ShownLine(report.status);
}

} // namespace

std::string BuildLine(const BuildRecord& record, const RunReport& report)
{
    std::string line =
        TimeOfDay(record.time) + "  " + Duration(record.took) + "  " + WhatBecame(record, report);
    if (const std::size_t count = report.warnings.size(); count > 0)
        line += ", " + std::to_string(count) + (count == 1 ? " warning" : " warnings");
    return line;
}

Reporter& BuildTeller::Begin()
{
    return part_.emplace(desk_.output).reporter;
}

void BuildTeller::Build(Workspace& workspace)
{
    CallDesk desk{workspace, desk_.in, part_->report, part_->reporter, desk_.output};
    if (given_.Has("--group"))
        RunGroup(desk, given_);
    else
        RunBuild(desk, given_);
}

void BuildTeller::Built(const BuildRecord& record)
{
    const CallOutput& output = desk_.output;
    RunReport& report = part_->report;
    part_->line.Clear();
    TakeTold(report, part_->reporter);
    TakeWritten(report, output.drives, output.is_json);
    report.error = record.error;
    report.was_stopped = record.was_stopped;
    if (output.is_json) {
        PrintJson(output.out, report, JsonForm::line);
    } else {
        part_->printer.PrintRest();
        if (report.error)
            part_->printer.Print(*report.error);
        output.err.flush();
        output.out << BuildLine(record, report) << '\n';
    }
    if (!output.out.flush())
        output.stop.Ask();
}

void BuildTeller::Refused(const RunError& error)
{
    const CallOutput& output = desk_.output;
    MessagePrinter(output.err, output.drives, output.look).Print(error);
    output.err.flush();
}

void BuildTeller::IsBack()
{
    desk_.output.err << "kiv: " << kReadableAgain << '\n' << std::flush;
}

/// The reader of a pipe, such as `head -1`, may go long before there is anything more to say.
void BuildTeller::Waits()
{
    const CallOutput& output = desk_.output;
    if (output.out_is_read && !output.out_is_read())
        output.stop.Ask();
}

} // namespace kiv
