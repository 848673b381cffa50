// The workspace: what the main window holds and every command works on, without a window.
#pragma once

#include "builder/build_driver.h"
#include "platform/machine.h"
#include "platform/run_error.h"
#include "shell/directory_tools.h"
#include "shell/list_files.h"
#include "utilities/conversions.h"
#include "utilities/news_composer.h"
#include "utilities/title_grab.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A path of more than 40 characters as its first 6, "..." and its last 30.
std::string ShortenedDirectory(std::string_view path);

/// Every operation throws RunError when it cannot go on; Run catches it.
class Workspace {
  public:
    explicit Workspace(Machine& machine);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// Runs a command, the one place where its fatal error is caught and handed to the face. What
    /// the command before looked up, wrote and renamed is forgotten.
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
    /// Makes a folder the working directory, with the folder buttons as at the start.
    void switchto(std::string_view path);
    void checkgroup();
    void checkftpgroup();
    /// The folder buttons are as at the start.
    void dirreset();
    /// Whether "Dir 1" and "Dir 2" stand for "Dir window".
    bool OutputRootsShown() const { return !Roots.asp.empty() || !Roots.htm.empty(); }
    /// Makes the working directory the default; the second tells so in the status line.
    void SaveDirectory();
    void StoreDirectory();
    /// The working directory as the window shows it.
    std::string ShownDirectory() const { return ShortenedDirectory(WorkDir); }

    // Builds and groups.

    /// Builds the working directory.
    void BuildWorkDir();
    /// Builds the working directory and every folder of its group list, with the New Year switch
    /// on. Throws `subscript` past 500 entries, `file` for a folder that is missing.
    void BuildGroup();
    /// Merges the site maps of the working directory and its group into "_sitemap-master.txt" and
    /// opens it in the editor. Does nothing without a group list. Throws `file` when a site map is
    /// missing.
    void AssembleSiteMap();
    /// Opens `file` of every group member in the editor.
    void groupedit(std::string_view file);
    void ToggleNewYear();
    /// The New Year indicator.
    std::string_view NewYearText() const { return EoyEnabled ? "EOY ON!" : ""; }

    // Other programs.

    /// Makes `command` the editor of this run and of those to come.
    void StoreEditor(std::string_view command);
    /// Opens a file, named as in the command line, in the editor.
    void Edit(std::string_view file);
    /// These make their list with its sample lines when it is missing.
    void EditJumpList();
    void EditUploadList();
    void EditUploadBatch();
    void ReloadJumps();
    /// Goes to jump entry `index`, from 0.
    void JumpTo(std::size_t index);
    void ExploreWorkDir();
    /// Opens the first or the last of `Roots`.
    void ExploreFirstRoot();
    void ExploreLastRoot();
    void RunUploadBatch();
    void RunLanthorn();
    /// Lower-cases the names of the current directory, or of a folder, with an outside program.
    void LowerCaseNames();
    void LowerCaseNamesOf(std::string_view folder);

    // Directory tools. What they rename stands in `Renamed`.

    void dodirfix(Renaming renaming = Renaming::real);
    void dodirt(Renaming renaming = Renaming::real);
    /// An empty `find` gives a message and renames nothing.
    void dorenamefiles(const std::string& find, const std::string& replacement,
                       Renaming renaming = Renaming::real);
    void UndoRenames(const Renames& renames);
    /// The first file of the current directory; "" when it has none.
    std::string SampleFileName();

    // Utilities.

    struct GrabChoice {
        bool redirect = false;
        bool all = false;
        bool trimmed = false; // implies `all`
    };
    void GrabTitles(const GrabChoice& choice);
    /// Works in a folder below the working directory, or in itself when `folder` is empty.
    void SizePictures(std::string_view folder);
    /// Converts a text; nothing when it is refused with a message.
    std::optional<std::string> ConvertText(const ConversionWindow& window, std::string_view text);
    /// Converts the clipboard's text in place.
    void ConvertClipboard(ConversionWindow& window);
    void CloseParagraphs();
    NewsSettings LoadNewsSettings() { return ReadNewsSettings(machine_.files); }
    /// Writes a news item and makes its site the working directory. Returns whether it was written.
    bool WriteNews(const NewsItem& item, NewsSettings settings);

    Machine& machine() { return machine_; }

    std::string WorkDir; // ends in "\"
    bool EoyEnabled = false;
    bool UploadListWanted = false;
    std::string UploadCommand;
    std::string EditorCommand;
    std::string SettingsPath;     // the file that "Store dir" writes
    std::vector<JumpEntry> Jumps; // at most ten
    bool IsGroup = false;         // the working directory has a group list
    OutputRoots Roots;            // that the page list of the last build declares
    Renames Renamed;              // by the command that ran last, in the order done

    /// Called when what the window shows has changed while a command runs: the working directory,
    /// the New Year switch.
    std::function<void()> on_change;

  private:
    void loadworkdir(const std::optional<std::string>& argument);
    void ReadLists();
    void ChangeDirectory(std::string_view path);
    void SetNewYear(bool on);
    void showdir();
    void BuildCurrent();
    void groupbuild();
    void sitemapmaster();
    std::vector<std::string> GroupEntries() const;

    Machine machine_;
    const DateTime program_start_;
    UploadEntries upload_entries_{"upload entry"};
    int upload_count_ = 0;
    Addresses addresses_;
    BlockMemory block_memory_;
    GrabFlags grab_flags_;
};

} // namespace kiv
