#include "shell/renames.h"

#include "platform/run_error.h"
#include "shell/workspace.h"

#include <utility>
#include <vector>

namespace kiv {

namespace {

void RenameAll(Workspace& workspace, const RenamePasses& passes, Renaming renaming,
               std::string_view status)
{
    RenameFiles(workspace.machine(), passes, renaming, workspace.Renamed);
    if (renaming == Renaming::real)
        workspace.machine().reporter.Status(status);
}

} // namespace

void dodirfix(Workspace& workspace, Renaming renaming)
{
    RenameAll(workspace, WebSafePasses(), renaming, "Names fixed");
}

void dodirt(Workspace& workspace, Renaming renaming)
{
    RenameAll(workspace, ThumbnailPasses(), renaming, "_t complete");
}

void dorenamefiles(Workspace& workspace, const std::string& find, const std::string& replacement,
                   Renaming renaming)
{
    Machine& machine = workspace.machine();
    if (find.empty())
        machine.reporter.reportmsg("Fill in find field, please");
    else
        RenameFiles(machine, ReplacementPasses(find, replacement), renaming, workspace.Renamed);
}

void UndoRenames(Workspace& workspace, const Renames& renames)
{
    UndoRenames(workspace.machine().files, renames, workspace.Renamed);
}

std::string SampleFileName(Files& files)
{
    try {
        std::vector<std::string> names = files.ListFiles(".", "*.*");
        return names.empty() ? std::string() : std::move(names.front());
    } catch (const RunError&) {
        return {};
    }
}

} // namespace kiv
