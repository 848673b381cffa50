#include "shell/outside_programs.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "shell/workspace.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kUploadProgram = "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m ";
constexpr const char* kLanthorn = "c:\\utils\\lanthorn.exe";
constexpr std::string_view kCaseProgram = "c:\\utils\\dosutils\\case ";

void Explore(Machine& machine, const std::string& folder)
{
    machine.programs.Start({"explorer ", folder});
}

} // namespace

void StoreEditor(Workspace& workspace, std::string_view command)
{
    Files& files = workspace.machine().files;
    files.WriteSource(kEditorFile, std::string(command) + "\r\n");
    workspace.EditorCommand = loadeditor(files).command;
}

void Edit(Workspace& workspace, std::string_view file)
{
    EditAt(workspace, file, 0);
}

void EditAt(Workspace& workspace, std::string_view file, int line)
{
    workspace.machine().programs.Start(
        {.command = workspace.EditorCommand, .file = std::string(file), .line = std::max(line, 1)});
}

void EditJumpList(Workspace& workspace)
{
    ProvideJumpList(workspace.machine().files);
    Edit(workspace, kJumpListFile);
}

void EditUploadList(Workspace& workspace)
{
    ProvideUploadList(workspace.machine().files);
    Edit(workspace, kUploadListFile);
}

void EditUploadBatch(Workspace& workspace)
{
    Edit(workspace, kUploadBatchFile);
}

void ExploreWorkDir(Workspace& workspace)
{
    Explore(workspace.machine(), workspace.WorkDir);
}

void ExploreFirstRoot(Workspace& workspace)
{
    const std::vector<std::string> roots = workspace.Roots.Declared();
    Explore(workspace.machine(), roots.empty() ? workspace.WorkDir : roots.front());
}

void ExploreLastRoot(Workspace& workspace)
{
    const std::vector<std::string> roots = workspace.Roots.Declared();
    Explore(workspace.machine(), roots.empty() ? workspace.WorkDir : roots.back());
}

void ShowInBrowser(Workspace& workspace, const std::string& page)
{
    if (page.empty())
        throw RunError(ErrorKind::file, "no page is chosen", {},
                       "Choose one in the list of pages below the buttons.");
    if (!workspace.machine().files.FileExists(page))
        throw RunError(ErrorKind::file, "the page is not there yet", {page},
                       "Build its folder: that makes the page.");
    workspace.machine().programs.Start({"explorer ", page});
}

void ExploreFolderOf(Workspace& workspace, const std::string& page)
{
    Explore(workspace.machine(), WithSeparator(FolderOf(page)));
}

void RunUploadBatch(Workspace& workspace)
{
    workspace.machine().programs.Start(
        {.command = std::string(kUploadProgram).append(kUploadBatchFile), .minimised = true});
}

void RunLanthorn(Workspace& workspace)
{
    workspace.machine().programs.Start({kLanthorn});
}

void LowerCaseNames(Workspace& workspace)
{
    workspace.machine().programs.Start(
        {.command = std::string(kCaseProgram) + "*.* /l", .minimised = true});
}

void LowerCaseNamesOf(Workspace& workspace, std::string_view folder)
{
    workspace.machine().programs.Start(
        {std::string(kCaseProgram), WithSeparator(folder) + "*.*", " /l", true});
}

} // namespace kiv
