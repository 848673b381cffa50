// The commands that start other programs: editor, explorer, upload, lower-casing.
#include "platform/drive_path.h"
#include "platform/site_files.h"
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
    const std::vector<std::string> roots = Roots.Declared();
    Explore(machine_, roots.empty() ? WorkDir : roots.front());
}

void Workspace::ExploreLastRoot()
{
    const std::vector<std::string> roots = Roots.Declared();
    Explore(machine_, roots.empty() ? WorkDir : roots.back());
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
