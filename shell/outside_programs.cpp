#include "shell/outside_programs.h"

#include "platform/drive_path.h"
#include "shell/output_roots.h"
#include "shell/site_files.h"
#include "shell/workspace.h"

namespace kiv {

namespace {

constexpr const char* kUploadProgram = "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat";
constexpr const char* kLanthorn = "c:\\utils\\lanthorn.exe";
constexpr std::string_view kCaseProgram = "c:\\utils\\dosutils\\case ";

void Explore(Machine& machine, const std::string& folder)
{
    machine.programs.Start("explorer " + folder);
}

/// The output roots of the last build's page list, as full paths.
std::vector<std::string> OutputRoots(Workspace& workspace)
{
    Files& files = workspace.machine().files;
    const std::string& last = workspace.memory.built_directory;
    const std::string built = last.empty() ? files.CurrentDirectory() : last;
    const std::string current = files.CurrentDirectory();
    files.ChangeDirectory(built); // where the roots' relative paths begin
    std::vector<std::string> roots =
        DeclaredOutputRoots(workspace.machine(), workspace.memory.blocks);
    files.ChangeDirectory(current);
    for (std::string& root : roots)
        root = WithSeparator(AbsolutePath(root, built));
    // The page list may have changed since: then the pages lie where it does.
    if (roots.empty())
        roots.push_back(WithSeparator(built));
    return roots;
}

} // namespace

void StoreEditor(Workspace& workspace, std::string_view command)
{
    Files& files = workspace.machine().files;
    files.WriteFile(kEditorFile, std::string(command) + "\r\n");
    workspace.EditorCommand = loadeditor(files).command;
}

void Edit(Workspace& workspace, std::string_view file)
{
    workspace.machine().programs.Start(workspace.EditorCommand + std::string(file));
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
    Edit(workspace, kUploadBatch);
}

void ExploreWorkDir(Workspace& workspace)
{
    Explore(workspace.machine(), workspace.WorkDir);
}

void ExploreFirstRoot(Workspace& workspace)
{
    Explore(workspace.machine(), OutputRoots(workspace).front());
}

void ExploreLastRoot(Workspace& workspace)
{
    Explore(workspace.machine(), OutputRoots(workspace).back());
}

void RunUploadBatch(Workspace& workspace)
{
    workspace.machine().programs.Start(kUploadProgram, true);
}

void RunLanthorn(Workspace& workspace)
{
    workspace.machine().programs.Start(kLanthorn);
}

void LowerCaseNames(Workspace& workspace)
{
    workspace.machine().programs.Start(std::string(kCaseProgram) + "*.* /l", true);
}

void LowerCaseNamesOf(Workspace& workspace, std::string_view folder)
{
    workspace.machine().programs.Start(std::string(kCaseProgram) + WithSeparator(folder) + "*.* /l",
                                       true);
}

} // namespace kiv
