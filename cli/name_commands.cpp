// The commands that rename files, and the one that takes that back.
#include "cli/call_definitions.h"
#include "cli/rename_report.h"
#include "shell/renames.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <memory>

namespace kiv {

namespace {

using Renamer = void (*)(Workspace& workspace, Renaming renaming);

void TakeRenamer(Call& call, bool dry_run)
{
    call.renames = true;
    call.dry_run = dry_run;
    if (dry_run) {
        call.set_up = SetUp::look;
        call.makes_drive_c = false;
    }
}

Renaming RenamingOf(bool dry_run)
{
    return dry_run ? Renaming::dry_run : Renaming::real;
}

void AddDryRun(CLI::App& command, bool& dry_run)
{
    AddSwitch(command, "--dry-run", dry_run, "Show the renames and touch nothing");
}

void AddRenamer(CLI::App& app, Call& call, const char* name, Renamer renamer)
{
    const auto dry_run = std::make_shared<bool>(false);
    CLI::App* const command = AddCommand(app, name, [&call, dry_run, renamer] {
        TakeRenamer(call, *dry_run);
        call.run = [dry_run, renamer](CallDesk& desk) {
            renamer(desk.workspace, RenamingOf(*dry_run));
        };
    });
    AddDirectory(*command, call);
    AddDryRun(*command, *dry_run);
}

struct RenameOptions {
    std::string find;
    std::string replacement;
    bool dry_run = false;
};

void AddRename(CLI::App& app, Call& call)
{
    const auto options = std::make_shared<RenameOptions>();
    CLI::App* const command = AddCommand(app, "rename", [&call, options] {
        TakeRenamer(call, options->dry_run);
        call.run = [options](CallDesk& desk) {
            dorenamefiles(desk.workspace, FromUtf8(options->find), FromUtf8(options->replacement),
                          RenamingOf(options->dry_run));
        };
    });
    AddDirectory(*command, call);
    AddArgument(*command, "FIND", options->find, "The text to look for")->required();
    AddArgument(*command, "REPLACEMENT", options->replacement, "What it becomes")->required();
    AddDryRun(*command, options->dry_run);
}

void AddUndo(CLI::App& app, Call& call)
{
    const auto report = std::make_shared<std::string>();
    CLI::App* const command = AddCommand(app, "undo-renames", [&call, report] {
        call.renames = true;
        call.run = [report](CallDesk& desk) {
            Machine& machine = desk.workspace.machine();
            const std::string path = machine.native_paths.FromNative(*report);
            UndoRenames(desk.workspace, RenamesOfReport(machine.files.ReadFile(path), path));
        };
    });
    AddDirectory(*command, call);
    AddValue(*command, "--report", *report, "FILE", "The renamer's JSON report")->required();
}

} // namespace

void AddNameCommands(CLI::App& app, Call& call)
{
    AddRenamer(app, call, "fix-names", dodirfix);
    AddRenamer(app, call, "thumb-names", dodirt);
    AddRename(app, call);
    AddUndo(app, call);
}

} // namespace kiv
