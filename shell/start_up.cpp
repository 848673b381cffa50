// The start of the program: settings, lists and the first working directory.
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "shell/workspace.h"

namespace kiv {

std::vector<RunError> Workspace::StartWindow(const std::optional<std::string>& argument)
{
    Files& files = machine_.files;
    files.Refresh();
    std::vector<RunError> errors;
    const auto step = [&](const std::function<void()>& run) {
        try {
            run();
        } catch (const RunError& error) {
            errors.push_back(error);
        }
    };
    // Whatever fails below, there is a working directory.
    WorkDir = WithSeparator(files.CurrentDirectory());
    step([&] {
        const EditorSetting editor = loadeditor(files);
        EditorCommand = editor.command;
        if (editor.editor_is_missing)
            machine_.reporter.reportmsg("editpad.exe is missing from the c:\\utils directory.");
    });
    step([&] { loadworkdir(argument); });
    step([&] { loadjumps(files, Jumps); });
    step([&] { upload_count_ = loadftplist(files, upload_entries_); });
    // After the lists: an upload entry may be for this very directory.
    step([&] { checkgroup(); });
    step([&] { checkftpgroup(); });
    showdir();
    return errors;
}

void Workspace::loadworkdir(const std::optional<std::string>& argument)
{
    Files& files = machine_.files;
    const std::string local =
        WithSeparator(files.CurrentDirectory()) + std::string(kLocalSettingsFile);
    SettingsPath = kSettingsFile;
    std::optional<std::string> directory = argument;
    if (!directory) {
        directory = FirstLine(files, local);
        if (directory)
            SettingsPath = local;
        else
            directory = FirstLine(files, kSettingsFile);
    }
    // An empty path is no directory.
    const bool is_there = directory && !directory->empty() && files.FolderExists(*directory);
    ChangeDirectory(is_there ? *directory : "\\");
}

void Workspace::StartUp(std::string_view directory)
{
    ReadLists();
    switchto(directory);
}

void Workspace::LookAt(std::string_view directory)
{
    ReadLists();
    ChangeDirectory(directory);
    checkgroup();
}

void Workspace::ReadLists()
{
    EditorCommand = loadeditor(machine_.files).command;
    upload_count_ = loadftplist(machine_.files, upload_entries_);
}

} // namespace kiv
