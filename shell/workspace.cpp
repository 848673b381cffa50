#include "shell/workspace.h"

#include "platform/drive_path.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

constexpr std::string_view kUploadBatch = "c:\\guestout2.bat";

} // namespace

void Workspace::StartUp(std::string_view directory)
{
    Files& files = machine_.files;
    EditorCommand = loadeditor(files).command;
    upload_count_ = loadftplist(files, upload_entries_);
    addresses_ = LoadAddresses(files);
    switchto(directory);
}

void Workspace::switchto(std::string_view path)
{
    ChangeDirectory(path);
    checkgroup();
    checkftpgroup();
}

void Workspace::ChangeDirectory(std::string_view path)
{
    machine_.files.ChangeDirectory(path);
    WorkDir = WithSeparator(machine_.files.CurrentDirectory());
}

void Workspace::checkgroup()
{
    IsGroup = machine_.files.FileExists("_group.txt");
}

void Workspace::checkftpgroup()
{
    Files& files = machine_.files;
    if (files.FileExists(kUploadBatch))
        files.DeleteFile(kUploadBatch);
    UploadListWanted = false;
    UploadCommand.clear();
    const std::string directory = LowerCase(WorkDir);
    for (int i = 1; i <= upload_count_; ++i) {
        if (LowerCase(upload_entries_[i].label) != directory)
            continue;
        UploadListWanted = true;
        UploadCommand = upload_entries_[i].command;
        // A command with "@@" is a template: the build adds one line for each file it writes.
        if (UploadCommand.find("@@") == std::string::npos)
            files.WriteFile(kUploadBatch, UploadCommand + "\r\n");
        return;
    }
}

void Workspace::BuildWorkDir()
{
    const BuildOptions options{EoyEnabled, UploadListWanted, UploadCommand, addresses_};
    BuildSite(machine_, options, block_memory_);
}

} // namespace kiv
