#include "shell/workspace.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

constexpr std::size_t kShownWhole = 40;

} // namespace

std::string ShortenedDirectory(std::string_view path)
{
    if (path.size() <= kShownWhole)
        return std::string(path);
    return std::string(FirstChars(path, 6)) + "..." + std::string(LastChars(path, 30));
}

Workspace::Workspace(Machine& machine)
    : EditorCommand(std::string(kDefaultEditor) + ' '), SettingsPath(kSettingsFile),
      machine_(machine), program_start_(machine.clock.Now())
{
}

std::optional<RunError> Workspace::Run(const std::function<void()>& command)
{
    machine_.files.Refresh();
    Renamed.clear();
    try {
        command();
    } catch (const RunError& error) {
        return error;
    }
    return std::nullopt;
}

void Workspace::changethedirectory(std::string_view path)
{
    ChangeDirectory(path);
    checkgroup();
    checkftpgroup();
}

void Workspace::switchto(std::string_view path)
{
    ChangeDirectory(path);
    dirreset();
    checkgroup();
    checkftpgroup();
}

void Workspace::ChangeDirectory(std::string_view path)
{
    // An empty path would be where we are, and a tool would be let loose on the wrong folder.
    if (path.empty())
        throw RunError(ErrorKind::file, "cannot change to a folder without a name");
    machine_.files.ChangeDirectory(path);
    // The start folder that is gone is "\", the root of whatever drive is current.
    WorkDir = path == "\\" ? std::string(path) : WithSeparator(machine_.files.CurrentDirectory());
    showdir();
}

void Workspace::showdir()
{
    if (on_change)
        on_change();
}

void Workspace::dirreset()
{
    Roots = {};
}

void Workspace::checkgroup()
{
    IsGroup = machine_.files.FileExists(kGroupFile);
}

void Workspace::checkftpgroup()
{
    Files& files = machine_.files;
    if (files.FileExists(kUploadBatchFile))
        files.DeleteFile(kUploadBatchFile);
    UploadListWanted = false;
    UploadCommand.clear();
    const std::string directory = LowerCase(WorkDir);
    for (int i = 1; i <= upload_count_; ++i) {
        if (LowerCase(upload_entries_[i].label) != directory)
            continue;
        UploadListWanted = true;
        UploadCommand = upload_entries_[i].command;
        // A command with "@@" is a template: the build adds one line for each file it writes.
        if (!Contains(UploadCommand, "@@"))
            files.WriteFile(kUploadBatchFile, UploadCommand + "\r\n");
        return;
    }
}

void Workspace::SaveDirectory()
{
    machine_.files.WriteFile(SettingsPath, WorkDir + "\r\n");
}

void Workspace::StoreDirectory()
{
    SaveDirectory();
    machine_.reporter.Status("Directory Saved as Default");
}

void Workspace::ToggleNewYear()
{
    SetNewYear(!EoyEnabled);
}

void Workspace::SetNewYear(bool on)
{
    EoyEnabled = on;
    if (on_change)
        on_change();
}

void Workspace::BuildWorkDir()
{
    addresses_ = LoadAddresses(machine_.files);
    BuildCurrent();
}

void Workspace::BuildCurrent()
{
    const BuildOptions options{EoyEnabled, UploadListWanted, UploadCommand, addresses_,
                               program_start_};
    BuildSite(machine_, options, block_memory_, Roots);
}

} // namespace kiv
