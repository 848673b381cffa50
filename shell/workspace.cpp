#include "shell/workspace.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "platform/stop_request.h"
#include "shell/recent_folders.h"
#include "shell/rename_records.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kLongestPathShown = 40;
constexpr std::string_view kMissingEditorHint = "Choose another editor in the window that comes "
                                                "next. The menu \"Site\" offers them at any time.";

/// Drive letter in upper case, no "." and no "..", "\" at the end.
std::string AbsoluteWorkDir(std::string_view path, std::string_view current)
{
    return WithSeparator(AbsolutePath(path, current));
}

/// The path as it is spelled, with "\" at its end. One that is relative to a folder or a drive
/// would name another folder once we are there: it becomes absolute.
std::string SpelledWorkDir(std::string_view path, std::string_view current)
{
    const std::string_view rest = HasDrive(path) ? path.substr(2) : path;
    if (rest.empty() || !IsSeparator(rest.front()))
        return AbsoluteWorkDir(path, current);
    std::string work_dir(path);
    if (!work_dir.ends_with('\\'))
        work_dir += '\\';
    return work_dir;
}

RunError NoMemory()
{
    return {ErrorKind::memory,
            "there is not enough memory for this",
            {},
            "Close other programs, or work on less at a time."};
}

std::optional<RunError> FatalErrorOf(const std::function<void()>& command)
{
    try {
        command();
    } catch (RunError& error) {
        if (!error.where.IsKnown())
            error.where.file = error.file;
        return std::move(error);
    } catch (const std::bad_alloc&) {
        return NoMemory();
    } catch (const std::length_error&) {
        return NoMemory();
    }
    return std::nullopt;
}

/// Whether the current directory is a drive's root without a page list: where a start leads that
/// was given no folder, and "Exit" then stores it.
bool IsBareRoot(Files& files)
{
    const std::string& current = files.CurrentDirectory();
    return NameOf(current).empty() && !files.FileExists(kPageListFile);
}

} // namespace

std::string ShortenedDirectory(std::string_view path)
{
    if (path.size() <= kLongestPathShown)
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
    Checked.reset();
    Built.reset();
    try {
        std::optional<RunError> error = FatalErrorOf(command);
        TellLosses();
        return error;
    } catch (const Stopped&) {
        TellLosses();
        throw;
    }
}

void Workspace::TellLosses() const
{
    for (const std::string& loss : machine_.files.Losses())
        machine_.reporter.reportmsg(OnOneLine(loss));
}

std::vector<RunError> Workspace::StartWindow(const std::optional<std::string>& argument)
{
    Files& files = machine_.files;
    files.Refresh();
    std::vector<RunError> errors;
    const auto step = [&](const std::function<void()>& run) {
        if (const std::optional<RunError> error = FatalErrorOf(run))
            errors.push_back(*error);
    };
    // Whatever fails below, there is a working directory.
    StartFolder = files.CurrentDirectory();
    WorkDir = WithSeparator(StartFolder);
    step([&] {
        const EditorSetting editor = loadeditor(files);
        EditorCommand = editor.command;
        if (editor.editor_is_missing)
            machine_.reporter.reportmsg("editpad.exe is missing from the c:\\utils directory.", {},
                                        kMissingEditorHint);
    });
    step([&] { LoadRecentFolders(*this); });
    step([&] { loadworkdir(argument); });
    step([&] { FolderIsWanted = IsBareRoot(files); });
    step([&] { ReloadJumps(); });
    step([&] { ReadUploadList(); });
    // After the lists: an upload entry may be for this very directory.
    step([&] { checkgroup(); });
    step([&] { checkftpgroup(); });
    step([&] { TellOfUnfinishedRenames(machine_); });
    showdir();
    return errors;
}

void Workspace::loadworkdir(const std::optional<std::string>& argument)
{
    Files& files = machine_.files;
    const std::string local =
        WithSeparator(files.CurrentDirectory()) + std::string(kLocalSettingsFile);
    SettingsPath = kSettingsFile;
    std::string directory;
    if (argument) {
        directory = *argument;
    } else {
        // A local file counts even when it names no directory.
        if (files.FileExists(local))
            SettingsPath = local;
        directory = FirstLine(files, SettingsPath);
    }
    // An empty path is no directory.
    if (!directory.empty() && files.FolderExists(directory)) {
        GoToAs(directory, SpelledWorkDir(directory, files.CurrentDirectory()));
        NoteRecentFolder(*this, WorkDir);
        return;
    }
    GoneFolder = directory;
    GoTo("\\");
    if (!GoneFolder.empty())
        machine_.reporter.Status("The folder of the start is not there: " + GoneFolder);
}

void Workspace::StartUp(std::string_view directory)
{
    ReadLists();
    Enter(directory);
}

void Workspace::LookAt(std::string_view directory)
{
    ReadLists();
    GoToAs(directory, AbsoluteWorkDir(directory, machine_.files.CurrentDirectory()));
    checkgroup();
}

void Workspace::ReadLists()
{
    EditorCommand = loadeditor(machine_.files).command;
    ReadUploadList();
}

void Workspace::ReadUploadList()
{
    upload_stamp_ = machine_.files.Stamp(kUploadListFile);
    upload_count_ = 0; // what stood there before goes even when the list is at fault
    upload_count_ = loadftplist(machine_.files, upload_entries_);
}

void Workspace::FollowUploadList()
{
    if (machine_.files.Stamp(kUploadListFile) == upload_stamp_)
        return;
    ReadUploadList();
    const UploadEntry* const entry = UploadEntryHere();
    const bool is_same =
        entry != nullptr ? UploadListWanted && entry->command == UploadCommand : !UploadListWanted;
    if (!is_same) // else the batch keeps what builds have put into it
        checkftpgroup();
}

std::optional<RunError> Workspace::FollowLists()
{
    return FatalErrorOf([this] { FollowUploadList(); });
}

bool Workspace::HasSinglePage() const
{
    try {
        return machine_.files.FileExists(kSinglePageFile);
    } catch (const RunError&) {
        return false;
    }
}

void Workspace::Enter(std::string_view path)
{
    GoToAs(path, AbsoluteWorkDir(path, machine_.files.CurrentDirectory()));
    checkgroup();
    checkftpgroup();
}

void Workspace::changethedirectory(std::string_view path)
{
    Enter(path);
    NoteChoice();
    TellOfUnfinishedRenames(machine_);
}

void Workspace::switchto(std::string_view path)
{
    GoToAs(path, SpelledWorkDir(path, machine_.files.CurrentDirectory()));
    dirreset();
    checkgroup();
    checkftpgroup();
    NoteChoice();
    TellOfUnfinishedRenames(machine_);
}

/// The user has chosen the working directory.
void Workspace::NoteChoice()
{
    FolderIsWanted = false;
    GoneFolder.clear();
    NoteRecentFolder(*this, WorkDir);
}

void Workspace::GoTo(std::string_view path)
{
    GoToAs(path, std::string(path));
}

void Workspace::GoToAs(std::string_view path, std::string work_dir)
{
    // An empty path would be where we are, and a tool would be let loose on the wrong folder.
    if (path.empty())
        throw RunError(ErrorKind::file, "cannot change to a folder without a name", {},
                       "Give a folder; the list of jumps wants one behind the \"|\".");
    machine_.files.ChangeDirectory(path);
    WorkDir = std::move(work_dir);
    showdir();
}

void Workspace::showdir() const
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
    if (files.FileExists(kUploadBatchFile)) // a folder of this name is none
        files.DeleteFile(kUploadBatchFile);
    FindUploadEntry();
    // A command with "@@" is a template: the build adds one line for each file it writes.
    if (UploadListWanted && !Contains(UploadCommand, "@@"))
        files.WriteFile(kUploadBatchFile, UploadCommand + "\r\n");
}

void Workspace::FindUploadEntry()
{
    UploadListWanted = false;
    UploadCommand.clear();
    const UploadEntry* const entry = UploadEntryHere();
    if (entry == nullptr)
        return;
    UploadListWanted = true;
    UploadCommand = entry->command;
}

const UploadEntry* Workspace::UploadEntryHere() const
{
    const std::string directory = LowerCase(WorkDir);
    for (int i = 1; i <= upload_count_; ++i)
        if (LowerCase(upload_entries_[i].label) == directory)
            return &upload_entries_[i];
    return nullptr;
}

void Workspace::WriteDefault()
{
    machine_.files.WriteSource(SettingsPath, WorkDir + "\r\n");
}

void Workspace::SaveDirectory()
{
    if (GoneFolder.empty())
        WriteDefault();
}

void Workspace::StoreDirectory()
{
    WriteDefault();
    machine_.reporter.Status("Directory Saved as Default");
}

void Workspace::ReloadJumps()
{
    loadjumps(machine_.files, Jumps);
}

void Workspace::AddToJumps(std::string_view folder)
{
    AddJump(machine_.files, folder);
    ReloadJumps();
}

void Workspace::JumpTo(std::size_t index)
{
    switchto(Jumps.at(index).path);
}

} // namespace kiv
