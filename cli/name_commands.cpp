// The commands that rename files, and the one that takes that back.
#include "cli/commands.h"
#include "cli/json_report.h"
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
    desk.workspace.dodirfix(RenamingOf(given));
}

void RunThumbNames(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.dodirt(RenamingOf(given));
}

void RunRename(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.dorenamefiles(given.Text("FIND"), given.Text("REPLACEMENT"), RenamingOf(given));
}

void RunUndoRenames(CallDesk& desk, const GivenValues& given)
{
    Files& files = desk.workspace.machine().files;
    const std::string path = files.FromNative(given.Native("--report"));
    desk.workspace.UndoRenames(RenamesOfReport(files.ReadFile(path), path));
}

} // namespace kiv
