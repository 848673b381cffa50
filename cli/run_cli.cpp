#include "cli/run_cli.h"

#include "cli/arguments.h"
#include "cli/changes.h"
#include "cli/face.h"
#include "cli/json_report.h"
#include "cli/no_memory.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "cli/shown_text.h"
#include "cli/values.h"
#include "platform/drives.h"
#include "platform/folder_work.h"
#include "platform/interrupts.h"
#include "platform/machine.h"
#include "platform/stop_request.h"
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
    return call.given.Has("--dry-run") || call.given.Has("--check");
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
    if (call.row->start == Start::folder)
        NeedTypedFolder(workspace.machine(), given, directory);
    if (LooksOnly(call) || call.row->goes_on)
        workspace.LookAt(directory);
    else
        workspace.StartUp(directory);
    if (!call.row->renames && !call.row->goes_on)
        TellOfUnfinishedRenames(workspace.machine());
}

/// Who does not want colours says so by NO_COLOR, whatever its value.
bool WantsColours(const CliSurroundings& around)
{
    const std::optional<std::string> no_colour =
        around.variable ? around.variable("NO_COLOR") : std::nullopt;
    return !no_colour || no_colour->empty();
}

MessageLook LookOf(const Call& call, const CliSurroundings& around, const std::string& folder)
{
    return {.folder = folder,
            .is_build = call.row->builds,
            .has_colours = around.err_is_terminal && WantsColours(around),
            .tells_all = call.given.Has("--verbose")};
}

/// What became of the files, as far as the call's report tells it.
void TakeChanges(RunReport& report, const Call& call, Drives& files, const std::string& shell)
{
    const bool json = call.given.Has("--json");
    TakeWritten(report, files, json);
    report.tells_changes = call.row->builds && !LooksOnly(call);
    if (!json && call.given.Has("--changed"))
        report.changed = ChangedPaths(report.written, files, files.CurrentDirectory());
    report.ends_in_nul = call.given.Has("-0");
    if (report.members)
        for (MemberReport& member : *report.members)
            member.seen = SeenFrom(shell, NativeOrDrive(files, member.folder));
}

/// Where each line is a path, one that holds a line end would be taken for two.
void WarnOfLineEnds(const RunReport& report, std::ostream& err)
{
    const auto has_line_end = [](const std::string& path) {
        return path.find('\n') != std::string::npos;
    };
    if (report.changed && !report.ends_in_nul && std::ranges::any_of(*report.changed, has_line_end))
        err << "kiv: warning: the name of a changed file holds a line end; -0 keeps it apart\n";
}

std::optional<RunError> RunCommand(const Call& call, CallDesk& desk)
{
    return desk.workspace.Run([&] {
        if (call.row->start == Start::site || call.row->start == Start::folder)
            EnterDirectory(desk.workspace, call);
        call.row->run(desk, call.given);
    });
}

/// What a check has found, which is its result.
void PrintFindings(const RunReport& report, const CliSurroundings& around, Drives& files,
                   const std::string& shell)
{
    MessagePrinter printer(
        around.out, files,
        {.folder = shell, .has_colours = around.out_is_terminal && WantsColours(around)});
    if (report.findings)
        for (const ReportedFinding& reported : *report.findings)
            printer.Print(reported.finding);
    if (!report.external)
        return;
    for (const ReportedLink& reported : *report.external)
        printer.Print(reported.link);
    const std::size_t count = report.external->size();
    around.out << count << (count == 1 ? " address" : " addresses") << " on other hosts\n";
}

RunReport ReportOf(const Call& call, const CliSurroundings& around)
{
    const bool json = call.given.Has("--json");
    const bool is_lent = around.drives != nullptr;
    std::unique_ptr<Drives> own = is_lent ? nullptr : MachineDrives(call, around);
    Drives& files = is_lent ? *around.drives : *own;
    const std::unique_ptr<Clock> clock = MakeClock(call.given);
    HeldClipboard clipboard;
    SystemPrograms system_programs(files);
    const bool starts =
        !is_lent && !IsDryRun(call) && (call.row->starts_programs || call.given.Has("--launch"));
    ProgramList programs(starts ? &system_programs : nullptr);
    const std::string shell = ShellFolder(files, around.directory);
    std::ostream* const terminal = around.err_is_terminal && !json ? &around.err : nullptr;
    TerminalLine terminal_line(terminal);
    const MessageLook look = LookOf(call, around, shell);
    MessagePrinter printer(around.err, files, look);
    CliReporter reporter(json ? nullptr : &printer, terminal_line);
    HeaderPictureLoader pictures(files);
    Machine machine{files, files, *clock, clipboard, programs, reporter, pictures};
    Workspace workspace(machine);
    if (const std::string records = RecordsFolderFrom(around.variable); !records.empty())
        workspace.RecordsFolder = files.FromNative(records);
    workspace.RenamesAreReported = json;
    RunReport report;
    StopRequest interrupted;
    std::optional<Interrupts> interrupts;
    if (call.row->goes_on && around.stop == nullptr)
        interrupts.emplace(interrupted);
    const CallOutput output{around.out,
                            around.err,
                            files,
                            look,
                            terminal,
                            json,
                            around.stop ? *around.stop : interrupted,
                            around.out_is_read};
    CallDesk desk{workspace, around.in, report, reporter, output};
    report.error = RunCommand(call, desk);
    terminal_line.Clear();
    TakeTold(report, reporter);
    report.launched = programs.Launched();
    report.dry_run = IsDryRun(call);
    if (call.row->renames)
        report.renamed = workspace.Renamed;
    TakeChanges(report, call, files, shell);
    if (!json) {
        WarnOfLineEnds(report, around.err);
        printer.PrintRest();
        if (report.error)
            printer.Print(*report.error);
        PrintFindings(report, around, files, shell);
    }
    if (around.kept_drives != nullptr)
        *around.kept_drives = std::move(own);
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

Terminal TerminalOf(const CliSurroundings& around)
{
    return {around.out_is_terminal, around.out_is_terminal && WantsColours(around)};
}

/// 0 done, 1 a fatal error, 3 a warning in a build that must have none, or what a check was asked
/// to fail on.
int CodeOf(const RunReport& report, const Call& call)
{
    constexpr int kFailed = 3;
    if (report.error || report.was_stopped)
        return 1;
    const bool is_warned = call.given.Has("--strict") && !report.warnings.empty();
    return is_warned || report.has_failed ? kFailed : 0;
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
    const bool is_told = call.row->goes_on && !report.error;
    if (call.given.Has("--json") && !is_told)
        PrintJson(around.out, report, call.row->goes_on ? JsonForm::line : JsonForm::indented);
    else if (!is_told)
        PrintPlain(around.out, report, TerminalOf(around));
    return CodeOfPrinted(CodeOf(report, call), around);
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
