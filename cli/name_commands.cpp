// The commands that rename files, and the one that takes that back.
#include "cli/commands.h"
#include "cli/json_report.h"
#include "shell/renames.h"
#include "shell/workspace.h"

namespace kiv {

namespace {

Renaming RenamingOf(const GivenValues& given)
{
    return given.Has("--dry-run") ? Renaming::dry_run : Renaming::real;
}

} // namespace

void RunFixNames(CallDesk& desk, const GivenValues& given)
{
    dodirfix(desk.workspace, RenamingOf(given));
}

void RunThumbNames(CallDesk& desk, const GivenValues& given)
{
    dodirt(desk.workspace, RenamingOf(given));
}

void RunRename(CallDesk& desk, const GivenValues& given)
{
    dorenamefiles(desk.workspace, given.Text("FIND"), given.Text("REPLACEMENT"), RenamingOf(given));
}

void RunUndoRenames(CallDesk& desk, const GivenValues& given)
{
    if (!given.Has("--report")) {
        UndoLastRenames(desk.workspace);
        return;
    }
    Machine& machine = desk.workspace.machine();
    const std::string path = machine.native_paths.FromNative(given.Native("--report"));
    UndoRenames(desk.workspace, RenamesOfReport(machine.files.ReadFile(path), path));
}

} // namespace kiv
