#include "shell/manual.h"

#include "platform/drive_path.h"
#include "shell/workspace.h"

#include <array>

namespace kiv {

namespace {

/// Below the folder that holds the program's own: installed, installed on Windows, and in a build.
constexpr auto kPlaces = std::to_array<std::string_view>({
    "share\\doc\\kiv\\manual\\index.htm",
    "manual\\index.htm",
    "docs\\manual\\site\\index.htm",
});

} // namespace

std::string ManualFor(FileReader& files, std::string_view program_folder)
{
    const std::string above = WithSeparator(FolderOf(program_folder));
    for (const std::string_view place : kPlaces)
        if (std::string file = above + std::string(place); files.FileExists(file))
            return file;
    return {};
}

void OpenManual(Workspace& workspace)
{
    Machine& machine = workspace.machine();
    const std::string manual = ManualFor(machine.files, workspace.ProgramFolder);
    if (manual.empty())
        throw RunError(ErrorKind::file, "the manual is not where kiv looks for it", {},
                       "Install kiv anew with its documents, or build it with ./run manual.");
    machine.programs.Start({"explorer ", manual});
}

} // namespace kiv
