#include "cli/run_cli.h"

#include "cli/calls.h"
#include "cli/face.h"
#include "cli/report.h"
#include "platform/drives.h"
#include "platform/machine.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <memory>
#include <ostream>
#include <utility>

namespace kiv {

namespace {

std::unique_ptr<Clock> MakeClock(const std::optional<DateTime>& now)
{
    if (now)
        return std::make_unique<FrozenClock>(*now);
    return std::make_unique<SystemClock>();
}

void Prepare(Workspace& workspace, const Call& call)
{
    if (call.set_up == SetUp::none)
        return;
    // No name, most likely from a script's empty variable, is not the current directory; and
    // "\\server\share" is no place.
    const std::string directory =
        call.directory.empty() ? "" : workspace.machine().native_paths.FromNative(call.directory);
    if (directory.empty())
        throw RunError(ErrorKind::file,
                       "cannot change to \"" + FromUtf8(call.directory) + "\": no such folder");
    if (call.set_up == SetUp::look)
        workspace.LookAt(directory);
    else
        workspace.StartUp(directory);
}

RunReport RunCall(const Call& call, const CliSurroundings& around)
{
    const DriveMap drives = DrivesFrom(around.variable, call.drive_c);
    if (call.makes_drive_c)
        MakeDriveC(drives);
    const std::unique_ptr<Drives> files = MakeDriveFiles(drives);
    const std::unique_ptr<Clock> clock = MakeClock(call.now);
    HeldClipboard clipboard;
    SystemPrograms system_programs(*files);
    ProgramList programs(call.launch ? &system_programs : nullptr);
    TerminalLine terminal_line(around.err_is_terminal && !call.json ? &around.err : nullptr);
    CliReporter reporter(call.json ? nullptr : &around.err, terminal_line);
    HeaderPictureLoader pictures(*files);
    Machine machine{*files, *files, *clock, clipboard, programs, reporter, pictures};
    Workspace workspace(machine);
    RunReport report;
    CallDesk desk{workspace, around.in, report};
    report.error = workspace.Run([&] {
        Prepare(workspace, call);
        call.run(desk);
    });
    terminal_line.Clear();
    report.status = reporter.FinalStatus();
    report.messages = reporter.Messages();
    report.files = files->Written();
    report.launched = programs.Launched();
    report.warnings = reporter.Warnings();
    report.dry_run = call.dry_run;
    if (call.renames)
        report.renamed = workspace.Renamed;
    return report;
}

} // namespace

int RunCli(const std::vector<std::string>& arguments, const CliSurroundings& around)
{
    const ReadCall read = ReadArguments(arguments);
    if (!read.call) {
        (read.exit_code == 0 ? around.out : around.err) << read.text;
        return read.exit_code;
    }
    const RunReport report = RunCall(*read.call, around);
    if (read.call->json)
        PrintJson(around.out, report);
    else
        PrintPlain(around.out, around.err, report, read.call->verbose);
    // A result that could not be handed over must not look like success.
    around.out.flush();
    if (!around.out)
        around.err << "kiv: error: cannot write to standard output\n";
    return report.error || !around.out ? 1 : 0;
}

} // namespace kiv
