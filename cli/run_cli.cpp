#include "cli/run_cli.h"

#include "cli/arguments.h"
#include "cli/face.h"
#include "cli/json_report.h"
#include "cli/no_memory.h"
#include "cli/report.h"
#include "cli/shown_text.h"
#include "cli/values.h"
#include "platform/drives.h"
#include "platform/machine.h"
#include "shell/rename_records.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <algorithm>
#include <memory>
#include <new>
#include <ostream>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

std::unique_ptr<Clock> MakeClock(const GivenValues& given)
{
    if (const std::optional<DateTime> now = ParseDateTime(given.Native("--now")))
        return std::make_unique<FrozenClock>(*now);
    return std::make_unique<SystemClock>();
}

DriveMap DrivesOf(const Call& call, const Variables& variable)
{
    std::optional<std::string> drive_c;
    if (call.given.Has("--drive-c"))
        drive_c = call.given.Native("--drive-c");
    return DrivesFrom(variable, drive_c);
}

bool IsDryRun(const Call& call)
{
    return call.row->renames && call.given.Has("--dry-run");
}

/// Whether nothing at all may be written.
bool LooksOnly(const Call& call)
{
    return call.row->looks_only || IsDryRun(call);
}

std::unique_ptr<Drives> MachineDrives(const Call& call, const CliSurroundings& around)
{
    const DriveMap drives = DrivesOf(call, around.variable);
    // A folder that somebody names and that is not there is an empty drive, not an order to make
    // it.
    if (call.row->start != Start::nothing && !LooksOnly(call) && !call.given.Has("--drive-c"))
        MakeDriveC(drives);
    return MakeDriveFiles(drives);
}

/// Makes the folder of the call the working directory.
void EnterDirectory(Workspace& workspace, const Call& call)
{
    // No name, most likely from a script's empty variable, is not the current directory; and
    // "\\server\share" is no place.
    const std::string given = call.given.Native("DIR", ".");
    const std::string directory =
        given.empty() ? "" : workspace.machine().native_paths.FromNative(given);
    if (directory.empty())
        throw RunError(ErrorKind::file,
                       "cannot change to \"" + FromUtf8(given) + "\": no such folder");
    if (LooksOnly(call))
        workspace.LookAt(directory);
    else
        workspace.StartUp(directory);
    if (!call.row->renames)
        TellOfUnfinishedRenames(workspace.machine());
}

RunReport ReportOf(const Call& call, const CliSurroundings& around)
{
    const bool json = call.given.Has("--json");
    const bool is_lent = around.drives != nullptr;
    const std::unique_ptr<Drives> own = is_lent ? nullptr : MachineDrives(call, around);
    Drives& files = is_lent ? *around.drives : *own;
    const std::unique_ptr<Clock> clock = MakeClock(call.given);
    HeldClipboard clipboard;
    SystemPrograms system_programs(files);
    ProgramList programs(!is_lent && call.given.Has("--launch") ? &system_programs : nullptr);
    TerminalLine terminal_line(around.err_is_terminal && !json ? &around.err : nullptr);
    CliReporter reporter(json ? nullptr : &around.err, terminal_line);
    HeaderPictureLoader pictures(files);
    Machine machine{files, files, *clock, clipboard, programs, reporter, pictures};
    Workspace workspace(machine);
    if (const std::string records = RecordsFolderFrom(around.variable); !records.empty())
        workspace.RecordsFolder = files.FromNative(records);
    workspace.RenamesAreReported = json;
    RunReport report;
    CallDesk desk{workspace, around.in, report};
    report.error = workspace.Run([&] {
        if (call.row->start == Start::site)
            EnterDirectory(workspace, call);
        call.row->run(desk, call.given);
    });
    terminal_line.Clear();
    report.status = reporter.FinalStatus();
    report.messages = reporter.Messages();
    report.files = files.Written();
    report.launched = programs.Launched();
    report.warnings = reporter.Warnings();
    report.dry_run = IsDryRun(call);
    if (call.row->renames)
        report.renamed = workspace.Renamed;
    return report;
}

/// Tells that there is no memory with what needs none: not even the arguments can be read.
int TellNoMemory(const std::vector<std::string>& arguments, const CliSurroundings& around)
{
    const bool json = std::find(arguments.begin(), arguments.end(), std::string_view("--json")) !=
                      arguments.end();
    (json ? around.out : around.err) << NoMemoryText(json);
    return 1;
}

/// A result that could not be handed over must not look like success.
int CodeOfPrinted(int code, const CliSurroundings& around)
{
    around.out.flush();
    if (around.out)
        return code;
    around.err << "kiv: error: cannot write to standard output\n";
    return 1;
}

/// Who does not want colours says so by NO_COLOR, whatever its value.
Terminal TerminalOf(const CliSurroundings& around)
{
    const std::optional<std::string> no_colour =
        around.variable ? around.variable("NO_COLOR") : std::nullopt;
    return {around.out_is_terminal, around.out_is_terminal && (!no_colour || no_colour->empty())};
}

int ReadAndRun(const std::vector<std::string>& arguments, const CliSurroundings& around)
{
    const ReadCall read = ReadArguments(arguments);
    if (read.call)
        return RunCall(*read.call, around);
    (read.exit_code == 0 ? around.out : around.err) << ShownUtf8(read.text);
    return CodeOfPrinted(read.exit_code, around);
}

} // namespace

int RunCall(const Call& call, const CliSurroundings& around)
{
    const RunReport report = ReportOf(call, around);
    if (call.given.Has("--json"))
        PrintJson(around.out, report);
    else
        PrintPlain(around.out, around.err, report, call.given.Has("--verbose"), TerminalOf(around));
    return CodeOfPrinted(report.error ? 1 : report.has_failed ? 3 : 0, around);
}

int RunCli(const std::vector<std::string>& arguments, const CliSurroundings& around)
{
    try {
        return ReadAndRun(arguments, around);
    } catch (const std::bad_alloc&) {
        return CodeOfPrinted(TellNoMemory(arguments, around), around);
    }
}

} // namespace kiv
