// The workspace: what the main window holds and every command works on, without a window. It knows
// the working directory, the user's lists and how the program starts; the commands themselves are
// functions over it, see shell/commands.h.
#pragma once

#include "blocks/block_memory.h"
#include "builder/output_roots.h"
#include "inspect/inspection.h"
#include "platform/machine.h"
#include "platform/run_error.h"
#include "shell/built_section.h"
#include "shell/directory_tools.h"
#include "shell/list_files.h"
#include "utilities/title_grab.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A path of more than 40 characters as its first 6, "..." and its last 30.
std::string ShortenedDirectory(std::string_view path);

/// What builds and grabs remember of those before them, as long as the program runs.
struct CommandMemory {
    BlockMemory blocks;
    GrabFlags grab_flags;
};

/// Every operation throws RunError when it cannot go on; Run catches it.
class Workspace {
  public:
    explicit Workspace(Machine& machine);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// Runs a command, the one place where its fatal error is caught and handed to the face. What
    /// the command before looked up, wrote and renamed is forgotten. Stopped passes through.
    std::optional<RunError> Run(const std::function<void()>& command);

    // Start-up.

    /// A window's start: editor command, working directory, jump list and upload list are read,
    /// then the working directory is shown and its state worked out. `argument` is the program's
    /// own (a drive path). A step that fails is handed back and the next one runs.
    std::vector<RunError> StartWindow(const std::optional<std::string>& argument);
    /// A command's start without a window: nothing is said about a missing editor, the jump list is
    /// not read, and a `directory` that does not exist throws instead of becoming the root.
    void StartUp(std::string_view directory);
    /// The same for a dry run: reads what StartUp reads and leaves the upload batch alone.
    void LookAt(std::string_view directory);

    // The working directory.

    /// Makes the folder picked in the directory window the working directory.
    void changethedirectory(std::string_view path);
    /// Makes a folder the working directory, with the folder buttons as at the start. `WorkDir` has
    /// the path as it is spelled here.
    void switchto(std::string_view path);
    /// Goes to a folder and shows it; `WorkDir` is `path` as it stands. Nothing else is worked out
    /// for the folder: a group build passes through its members so.
    void GoTo(std::string_view path);
    void checkgroup();
    void checkftpgroup();
    /// Looks up the upload list's entry for the working directory, and touches no file.
    void FindUploadEntry();
    /// The folder buttons are as at the start.
    void dirreset();
    /// Whether "Dir 1" and "Dir 2" stand for "Dir window".
    bool OutputRootsShown() const { return !Roots.asp.empty() || !Roots.htm.empty(); }
    /// Tells the face that the working directory or the New Year switch has changed.
    void showdir() const;
    /// The working directory as the window shows it.
    std::string ShownDirectory() const { return ShortenedDirectory(WorkDir); }
    /// Makes the working directory the default; the second tells so in the status line. The first,
    /// for the end of the program, leaves the default alone where it was gone at the start and no
    /// other folder was chosen: a drive that is missing today may be there tomorrow.
    void SaveDirectory();
    void StoreDirectory();

    // The jump list.

    void ReloadJumps();
    /// Puts a folder (an absolute drive path) at the end of the list.
    void AddToJumps(std::string_view folder);
    /// Goes to an entry; `index` counts from 0 and is below the number of `Jumps`.
    void JumpTo(std::size_t index);

    // What a window looks at again, as other programs change it.

    /// Reads the upload list again if it has changed, and has it count for the working directory.
    /// Gives what is wrong with it, once for each change.
    std::optional<RunError> FollowLists();
    /// Whether a build of the working directory makes the single page.
    bool HasSinglePage() const;

    Machine& machine() { return machine_; }
    const Machine& machine() const { return machine_; }
    /// The day and year that pages tell, however long the window is open.
    const DateTime& ProgramStart() const { return program_start_; }

    std::string WorkDir; // ends in "\" (but for a group's member in a build)
    bool EoyEnabled = false;
    bool UploadListWanted = false;
    std::string UploadCommand;
    std::string EditorCommand;
    std::string ProgramFolder;   // that the running program lies in, a drive path
    bool BuildsOnSave = false;   // a window builds whenever a source is saved
    bool FolderIsWanted = false; // the start led to no folder of a site, and none was chosen since
    std::string GoneFolder;      // that the start was to lead to; empty once one was chosen
    std::string StartFolder;     // that the window was started in
    std::string ExampleFolder;   // where the example is installed, a drive path; empty: nowhere
    std::vector<std::string> ProgramFolders; // where programs lie that PATH does not know
    std::string RecordsFolder;         // for the program's own records, a drive path; empty: none
    bool RenamesAreReported = false;   // to the user, who can take them back without a record
    std::string SettingsPath;          // the file that "Store dir" writes
    std::vector<JumpEntry> Jumps;      // at most ten
    std::string RecentFile;            // the list of recent folders, a drive path; empty: none
    std::vector<std::string> Recent;   // the last one first; each ends in "\"
    bool IsGroup = false;              // the working directory has a group list
    OutputRoots Roots;                 // that the page list of the last build declares
    Renames Renamed;                   // by the command that ran last, in the order done
    std::optional<Inspection> Checked; // by the command that ran last, if it was a check
    /// By the command that ran last, in order; nothing if it was no build.
    std::optional<std::vector<BuiltSection>> Built;
    CommandMemory memory;

    /// Called by showdir, while a command runs.
    std::function<void()> on_change;

  private:
    void TellLosses() const;
    void Enter(std::string_view path);
    void NoteChoice();
    void WriteDefault();
    void loadworkdir(const std::optional<std::string>& argument);
    void ReadLists();
    void ReadUploadList();
    void FollowUploadList();
    /// The first entry of the upload list for the working directory; null when there is none.
    const UploadEntry* UploadEntryHere() const;
    /// The same, with `work_dir` as `WorkDir`.
    void GoToAs(std::string_view path, std::string work_dir);

    Machine machine_;
    const DateTime program_start_;
    UploadEntries upload_entries_{"upload entry"};
    int upload_count_ = 0;
    FileStamp upload_stamp_; // of the list, when it was read
};

} // namespace kiv
