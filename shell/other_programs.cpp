// The commands that start other programs: editor, explorer, upload, lower-casing.
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "shell/output_roots.h"
#include "shell/workspace.h"

namespace kiv {

namespace {

constexpr const char* kUploadProgram = "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat";
constexpr const char* kLanthorn = "c:\\utils\\lanthorn.exe";
constexpr std::string_view kCaseProgram = "c:\\utils\\dosutils\\case ";

void Explore(Machine& machine, const std::string& folder)
{
    machine.programs.Start({"explorer ", folder});
}

} // namespace

void Workspace::StoreEditor(std::string_view command)
{
    machine_.files.WriteFile(kEditorFile, std::string(command) + "\r\n");
    EditorCommand = loadeditor(machine_.files).command;
}

void Workspace::Edit(std::string_view file)
{
    machine_.programs.Start({EditorCommand, std::string(file)});
}

void Workspace::EditJumpList()
{
    ProvideJumpList(machine_.files);
    Edit(kJumpListFile);
}

void Workspace::EditUploadList()
{
    ProvideUploadList(machine_.files);
    Edit(kUploadListFile);
}

void Workspace::EditUploadBatch()
{
    Edit(kUploadBatchFile);
}

void Workspace::ReloadJumps()
{
    loadjumps(machine_.files, Jumps);
}

void Workspace::JumpTo(std::size_t index)
{
    if (index < Jumps.size())
        switchto(std::string(Jumps[index].path));
}

void Workspace::ExploreWorkDir()
{
    Explore(machine_, WorkDir);
}

void Workspace::ExploreFirstRoot()
{
    Explore(machine_, OutputRoots().front());
}

void Workspace::ExploreLastRoot()
{
    Explore(machine_, OutputRoots().back());
}

std::vector<std::string> Workspace::OutputRoots()
{
    Files& files = machine_.files;
    const std::string built =
        built_directory_.empty() ? files.CurrentDirectory() : built_directory_;
    const std::string current = files.CurrentDirectory();
    files.ChangeDirectory(built); // where the roots' relative paths begin
    std::vector<std::string> roots = DeclaredOutputRoots(machine_, block_memory_);
    files.ChangeDirectory(current);
    for (std::string& root : roots)
        root = WithSeparator(AbsolutePath(root, built));
    // The page list may have changed since: then the pages lie where it does.
    if (roots.empty())
        roots.push_back(WithSeparator(built));
    return roots;
}

void Workspace::RunUploadBatch()
{
    machine_.programs.Start({.command = kUploadProgram, .minimised = true});
}

void Workspace::RunLanthorn()
{
    machine_.programs.Start({kLanthorn});
}

void Workspace::LowerCaseNames()
{
    machine_.programs.Start({.command = std::string(kCaseProgram) + "*.* /l", .minimised = true});
}

void Workspace::LowerCaseNamesOf(std::string_view folder)
{
    machine_.programs.Start(
        {std::string(kCaseProgram), WithSeparator(folder) + "*.*", " /l", true});
}

} // namespace kiv
