#include "shell/commands.h"

#include "platform/site_files.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/manual.h"
#include "shell/outside_programs.h"
#include "shell/recent_folders.h"
#include "shell/rename_looks.h"
#include "shell/renames.h"
#include "shell/site_check.h"
#include "shell/thumbnails.h"
#include "shell/utilities.h"
#include "shell/workspace.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::array<MenuTitle, 6> kMenuTitles = {{
    {Menu::file, "menu_file", "File"},
    {Menu::jump, "mnu_jump", "Jump to"},
    {Menu::utils, "mnu_grab", "Utils"},
    {Menu::grab, "Grab_head", "Grab"},
    {Menu::help, "menu_help", "Help"},
    {Menu::site, "menu_site", "Site"},
}};

using W = Workspace;

bool InGroup(const W& w)
{
    return w.IsGroup;
}
bool OutsideGroup(const W& w)
{
    return !w.IsGroup;
}
bool HasOutputRoots(const W& w)
{
    return w.OutputRootsShown();
}
bool HasNoOutputRoots(const W& w)
{
    return !w.OutputRootsShown();
}
bool HasUploadEntry(const W& w)
{
    return w.UploadListWanted;
}

bool IsAtRoot(const W& w)
{
    return IsRoot(w.WorkDir);
}
bool HasSinglePage(const W& w)
{
    return w.HasSinglePage();
}
bool HasRecent(const W& w)
{
    return !w.Recent.empty();
}
std::vector<std::string> RecentLabels(const W& w)
{
    return w.Recent;
}
std::vector<std::string> JumpLabels(const W& w)
{
    std::vector<std::string> labels;
    for (const JumpEntry& entry : w.Jumps)
        labels.push_back(entry.label);
    return labels;
}

// These have to say how it ended, which the work itself keeps to itself.

void SwitchNewYear(W& w)
{
    ToggleNewYear(w);
    w.machine().reporter.Status(w.EoyEnabled ? "New Year switch on" : "New Year switch off");
}
void SwitchBuildsOnSave(W& w)
{
    w.BuildsOnSave = !w.BuildsOnSave;
    w.machine().reporter.Status(w.BuildsOnSave ? "Build on save on" : "Build on save off");
}
void AssembleSiteMap(W& w)
{
    const bool is_group = w.machine().files.FileExists(kGroupFile);
    sitemapmaster(w);
    w.machine().reporter.Status(is_group ? "Site map assembled" : "No group list here");
}

constexpr std::string_view kNoGroup = "There is no group list (_group.txt) here";

constexpr Command Separator(std::string_view object_name, Menu menu)
{
    Command separator;
    separator.object_name = object_name;
    separator.menu = menu;
    return separator;
}

// clang-format off
constexpr std::array kCommands = std::to_array<Command>({
    {.name = "build", .object_name = "Command1", .caption = "Do it!",
     .tip = "Build the pages of the current directory",
     .run = BuildWorkDir, .disables_buttons = true, .builds = true, .is_visible = OutsideGroup},
    {.name = "build-one", .object_name = "Command10", .caption = "do one",
     .tip = "Build the pages of the current directory alone",
     .run = BuildWorkDir, .disables_buttons = true, .builds = true, .is_visible = InGroup},
    {.name = "group", .object_name = "Command11", .caption = "group",
     .tip = "Build the current directory and every directory of its "
            "_group.txt, with the New Year switch on",
     .run = BuildGroup, .disables_buttons = true, .builds = true, .is_visible = InGroup},
    {.name = "edit-template", .object_name = "Command2", .caption = "template",
     .tip = "Open _template.txt in the editor",
     .run = [](W& w) { Edit(w, kTemplateFile); },
     .done = "_template.txt opened in the editor"},
    {.name = "edit-content", .object_name = "Command5", .caption = "content",
     .tip = "Open _html.txt in the editor",
     .run = [](W& w) { Edit(w, kPageListFile); },
     .done = "_html.txt opened in the editor"},
    {.name = "explore", .object_name = "Command6", .caption = "Dir window",
     .tip = "Show the current directory in the file manager",
     .run = ExploreWorkDir, .is_visible = HasNoOutputRoots,
     .done = "Folder opened in the file manager"},
    {.name = "explore-1", .object_name = "Command8", .caption = "Dir 1",
     .tip = "Show the first output directory of the page list in the file manager",
     .run = ExploreFirstRoot, .is_visible = HasOutputRoots,
     .done = "Folder opened in the file manager"},
    {.name = "explore-2", .object_name = "Command9", .caption = "Dir 2",
     .tip = "Show the last output directory of the page list in the file manager",
     .run = ExploreLastRoot, .is_visible = HasOutputRoots,
     .done = "Folder opened in the file manager"},
    {.name = "store-directory", .object_name = "Command7", .caption = "Store dir",
     .tip = "Start in the current directory from now on",
     .run = [](W& w) { w.StoreDirectory(); }},
    {.name = "choose-directory", .object_name = "Command4", .caption = "Choose directory",
     .tip = "Choose another current directory",
     .run = [](W& w) { w.dirreset(); }, .opens = Opens::directories},
    {.name = "exit", .object_name = "Command3", .caption = "Exit",
     .tip = "Start in the current directory from now on, and end the program",
     .run = [](W& w) { w.SaveDirectory(); }, .opens = Opens::end},
    {.name = "upload", .object_name = "Command12", .caption = "Upload",
     .tip = "Upload what the batch file lists",
     .run = RunUploadBatch, .is_visible = HasUploadEntry,
     .done = "Upload started"},

    {.name = "lanthorn", .object_name = "mnu_zu", .caption = "Lanthorn",
     .tip = "Start Lanthorn",
     .menu = Menu::file, .run = RunLanthorn,
     .done = "Lanthorn started"},
    {.name = "lower-case", .object_name = "mnu_lc", .caption = "l/c dir",
     .tip = "Lower-case the name of every file in the current directory",
     .menu = Menu::file, .run = [](W& w) { LowerCaseAndTell(w, ""); },
     .looks_at = Renamer::lower_case, .looks_when = IsAtRoot},
    {.name = "rename", .object_name = "mnu_rename", .caption = "Rename files",
     .tip = "Replace a text in the names of all files",
     .menu = Menu::file, .opens = Opens::renamer},
    {.name = "fix-names", .object_name = "mnu_dirfix", .caption = "Fix names",
     .tip = "Make the name of every file in the current directory safe for the web",
     .menu = Menu::file, .run = [](W& w) { dodirfix(w); },
     .looks_at = Renamer::web_safe},
    {.name = "thumb-names", .object_name = "mnu_addt", .caption = "add \"_t.gif\"",
     .tip = "Put \"_t\" before the extension of every GIF and JPEG picture",
     .menu = Menu::file, .run = [](W& w) { dodirt(w); },
     .looks_at = Renamer::thumbnails},
    {.name = "dimensions", .object_name = "mnu_resizer", .caption = "Calculate dimensions",
     .tip = "Calculate the new height or width of a picture",
     .menu = Menu::file, .opens = Opens::dimensions},
    {.name = "edit-contents", .object_name = "openhtmls", .caption = "Open all html.txt",
     .tip = "Open the _html.txt of every directory of the group in the editor",
     .menu = Menu::file, .run = [](W& w) { groupedit(w, kPageListFile); }, .is_available = InGroup,
     .done = "Page lists of the group opened in the editor", .unavailable = kNoGroup},
    {.name = "edit-templates", .object_name = "mnu_alltemplates", .caption = "Open all templates",
     .tip = "Open the _template.txt of every directory of the group in the editor",
     .menu = Menu::file, .run = [](W& w) { groupedit(w, kTemplateFile); }, .is_available = InGroup,
     .done = "Templates of the group opened in the editor", .unavailable = kNoGroup},
    Separator("mnu_ptop2", Menu::file),
    {.name = "edit-upload-list", .object_name = "mnu_editftplist", .caption = "Edit FTP list",
     .tip = "Open the upload list in the editor",
     .menu = Menu::file, .run = EditUploadList,
     .done = "Upload list opened in the editor"},
    {.name = "edit-upload-batch", .object_name = "mnu_editftpbat", .caption = "Edit FTP bat file",
     .tip = "Open the upload batch file in the editor",
     .menu = Menu::file, .run = EditUploadBatch,
     .done = "Upload batch opened in the editor"},
    Separator("mnu_dash", Menu::file),
    {.name = "quit", .object_name = "menu_file_quit", .caption = "Quit",
     .tip = "End the program; the directory to start in stays as it is",
     .menu = Menu::file, .opens = Opens::end},

    {.name = "jump", .object_name = "mnu_jumpto", .caption = "jumpitem",
     .tip = "Make this directory the current one",
     .menu = Menu::jump, .entries = kJumpEntries,
     .run_entry = [](W& w, std::size_t index) { w.JumpTo(index); }, .labels = JumpLabels,
     .done = "Current directory changed"},
    Separator("mnu_rule", Menu::jump),
    {.name = "edit-jumps", .object_name = "mnu_editjump", .caption = "Edit Jump to list",
     .tip = "Open the list of this menu in the editor",
     .menu = Menu::jump, .run = EditJumpList,
     .done = "Jump to list opened in the editor"},
    {.name = "reload-jumps", .object_name = "mnu_reloadjumpto", .caption = "Reload Jump to list",
     .tip = "Read the list of this menu again",
     .menu = Menu::jump, .run = [](W& w) { w.ReloadJumps(); },
     .done = "Jump to list read again"},

    {.name = "convert", .object_name = "mnu_fixemail", .caption = "Convert to HTML",
     .tip = "Turn the text in the clipboard into HTML",
     .menu = Menu::utils, .opens = Opens::conversion},
    {.name = "convert-news", .object_name = "mnu_news", .caption = "News header",
     .tip = "Turn the line in the clipboard into a news line and a list entry",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "newsgrabber"},
    {.name = "convert-names", .object_name = "getnames", .caption = "Extract name fields",
     .tip = "Write scripts for the form fields in the clipboard",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "getnames"},
    {.name = "convert-quotes", .object_name = "mnu_cleanquotes", .caption = "Clean quotes etc.",
     .tip = "Replace curly quotes and the like in the text in the clipboard",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "cleanquotes"},
    {.name = "convert-rs", .object_name = "mnu_rs", .caption = "Make x=rs(\"x\") from tab delim",
     .tip = "Write an assignment for each of the tab-delimited names in the clipboard",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "rs"},
    {.name = "convert-js", .object_name = "menu_js", .caption = "make into js write",
     .tip = "Write script lines that print the text in the clipboard",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "js"},
    {.name = "close-paragraphs", .object_name = "mnu_ptop", .caption = "<p>...</p>",
     .tip = "End each line of the text in the clipboard that ends in <p> with </p>",
     .menu = Menu::utils, .run = CloseParagraphs,
     .done = "Paragraphs in the clipboard closed"},
    {.name = "convert-tabs", .object_name = "mnu_tabpipe", .caption = "Tab to Pipe",
     .tip = "Turn the table in the clipboard into rows with bars between the cells",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "tabtopipe"},
    {.name = "pictures", .object_name = "mnu_piclist", .caption = "picture sizer",
     .tip = "List the pictures of the current directory with their sizes",
     .menu = Menu::utils, .run = [](W& w) { SizePictures(w, ""); }},
    {.name = "pictures-images", .object_name = "mnu_picsizeimage", .caption = "picture sizer (images)",
     .tip = "List the pictures of the folder images with their sizes",
     .menu = Menu::utils, .run = [](W& w) { SizePictures(w, "images"); }},
    {.name = "new-year", .object_name = "mnu_NewYear", .caption = "Toggle New Year",
     .tip = "Include the lines between @@EOY marks in builds, or leave them out again",
     .menu = Menu::utils, .run = SwitchNewYear},
    {.name = "sitemap", .object_name = "mnu_sitemap", .caption = "Assemble Site Map",
     .tip = "Merge the site maps of the group into one file and open it in the editor",
     .menu = Menu::utils, .run = AssembleSiteMap, .is_available = InGroup,
     .unavailable = kNoGroup},
    {.name = "single-page", .object_name = "mnu_singlehtml", .caption = "Create single html",
     .tip = "Build all pages into _singlehtml.txt when that file exists",
     .menu = Menu::utils, .run = BuildWorkDir, .disables_buttons = true, .builds = true,
     .is_available = HasSinglePage, .unavailable = "There is no _singlehtml.txt here to build into"},
    {.name = "news", .object_name = "mnu_newnews", .caption = "New News",
     .tip = "Compose a news item",
     .menu = Menu::utils, .opens = Opens::news},

    {.name = "grab", .object_name = "menu_utils_grab", .caption = "Grab titles",
     .tip = "List the titles of the pages in the current directory",
     .menu = Menu::grab, .run = [](W& w) { GrabTitles(w, {}); }},
    {.name = "grab-redirect", .object_name = "grab_redirect", .caption = "Grab && redirect",
     .tip = "List the titles of the pages, each with a redirect",
     .menu = Menu::grab, .run = [](W& w) { GrabTitles(w, {.redirect = true}); }},
    {.name = "grab-all", .object_name = "mnu_graball", .caption = "Grab all",
     .tip = "List the titles and the contents of the pages",
     .menu = Menu::grab, .run = [](W& w) { GrabTitles(w, {.all = true}); }},
    {.name = "grab-trimmed", .object_name = "mnu_graball_trim", .caption = "Grab all trimmed",
     .tip = "List the titles of the pages and what is inside their bodies",
     .menu = Menu::grab, .run = [](W& w) { GrabTitles(w, {.trimmed = true}); }},

    {.name = "reference", .object_name = "menu_help", .caption = "Help",
     .tip = "Look up the syntax of page lists and templates",
     .menu = Menu::help, .opens = Opens::help},

    {.name = "check", .object_name = "mnu_check", .caption = "Check",
     .tip = "Look for what is wrong in the sources and on the pages; nothing is written",
     .menu = Menu::site, .run = [](W& w) { CheckWorkDir(w); }, .disables_buttons = true},
    {.name = "why", .object_name = "mnu_why", .caption = "Why does a line look so?",
     .tip = "Show where each line of a page comes from and what made it so",
     .menu = Menu::site, .opens = Opens::stories},
    {.name = "preview", .object_name = "mnu_preview", .caption = "Preview",
     .tip = "Build the current directory and show it in the browser; pages reload when they change",
     .menu = Menu::site, .opens = Opens::preview},
    {.name = "show-page", .object_name = "mnu_showpage", .caption = "Show page in browser",
     .tip = "Open the page that is chosen below the buttons, as it lies on the disk",
     .menu = Menu::site, .opens = Opens::page},
    {.name = "build-on-save", .object_name = "mnu_buildsave", .caption = "Build on save",
     .tip = "Build again whenever a source is saved, as long as this is on",
     .menu = Menu::site, .run = SwitchBuildsOnSave,
     .is_on = [](const W& w) { return w.BuildsOnSave; }},
    {.name = "undo-renames", .object_name = "mnu_undorenames", .caption = "Undo renames",
     .tip = "Take back the last renaming in the current directory; it is shown before",
     .menu = Menu::site, .run = UndoAndTell,
     .looks_at = Renamer::undo},
    {.name = "thumbs", .object_name = "mnu_thumbs", .caption = "Make thumbnails",
     .tip = "Make the small \"_t\" picture of each JPEG and GIF that has none, or an old one",
     .menu = Menu::site, .run = [](W& w) { MakeThumbnails(w, {}); }, .disables_buttons = true},
    {.name = "encode", .object_name = "mnu_encode", .caption = "Change encoding",
     .tip = "Bring the sources of the site into UTF-8 or Windows-1252; what changes is shown before",
     .menu = Menu::site, .opens = Opens::task},
    {.name = "feed", .object_name = "mnu_feed", .caption = "Write feeds",
     .tip = "Write rss.xml and atom.xml for feed readers",
     .menu = Menu::site, .opens = Opens::task},
    {.name = "sitemap-xml", .object_name = "mnu_sitemapxml",
     .caption = "Write XML site map",
     .tip = "Write sitemap.xml with the address of every page",
     .menu = Menu::site, .opens = Opens::task},
    {.name = "upload-changes", .object_name = "mnu_uploadchanges",
     .caption = "Upload changed pages",
     .tip = "Send what has changed since the last upload; it is shown before",
     .menu = Menu::site, .opens = Opens::task, .is_available = HasUploadEntry,
     .unavailable = "The upload list (File, Edit FTP list) has no line for this directory"},
    {.name = "recent", .object_name = "mnu_recent", .caption = "Recent folders",
     .tip = "Make a directory that was worked in before the current one again",
     .menu = Menu::site, .is_available = HasRecent, .entries = kRecentFolders,
     .run_entry = GoToRecent, .labels = RecentLabels, .has_menu = true,
     .done = "Current directory changed", .unavailable = "No directory was worked in before"},
    {.name = "read-again", .object_name = "mnu_readagain", .caption = "Read again",
     .tip = "Read the list of pages and the lines of the page shown again",
     .menu = Menu::site, .opens = Opens::lists},
    {.name = "begin-site", .object_name = "mnu_beginsite", .caption = "Begin a site",
     .tip = "Make three pages, a template and a style sheet in a folder that you choose",
     .menu = Menu::site, .opens = Opens::new_site},
    {.name = "adopt", .object_name = "mnu_adopt", .caption = "Adopt pages...",
     .tip = "Make a site of pages that are there already, in a new folder",
     .menu = Menu::site, .opens = Opens::task},
    {.name = "choose-editor", .object_name = "mnu_editor", .caption = "Choose an editor",
     .tip = "Choose the program that opens templates, page lists and other text files",
     .menu = Menu::site, .opens = Opens::editors},
    {.name = "manual", .object_name = "mnu_manual", .caption = "Manual",
     .tip = "Open the manual in the browser",
     .menu = Menu::site, .run = OpenManual,
     .done = "Manual opened in the browser"},
});
// clang-format on

} // namespace

std::span<const MenuTitle> MenuTitles()
{
    return kMenuTitles;
}

std::span<const Command> Commands()
{
    return kCommands;
}

const Command* FindCommand(std::string_view name)
{
    const auto* const found =
        std::find_if(kCommands.begin(), kCommands.end(), [&](const Command& command) {
            return !name.empty() && (command.name == name || command.object_name == name);
        });
    return found == kCommands.end() ? nullptr : found;
}

bool IsVisible(const Command& command, const Workspace& workspace, std::size_t index)
{
    if (command.entries > 1)
        return index < command.labels(workspace).size();
    return command.is_visible == nullptr || command.is_visible(workspace);
}

bool IsAvailable(const Command& command, const Workspace& workspace)
{
    return command.is_available == nullptr || command.is_available(workspace);
}

bool WantsLook(const Command& command, const Workspace& workspace)
{
    return command.looks_at && (command.looks_when == nullptr || command.looks_when(workspace));
}

std::string_view TipOf(const Command& command, const Workspace& workspace)
{
    return IsAvailable(command, workspace) ? command.tip : command.unavailable;
}

std::string CaptionOf(const Command& command, const Workspace& workspace, std::size_t index)
{
    if (command.entries > 1 && IsVisible(command, workspace, index))
        return command.labels(workspace)[index];
    return std::string(command.caption);
}

void RunCommand(Workspace& workspace, const Command& command, std::size_t index)
{
    if (command.run_entry != nullptr)
        command.run_entry(workspace, index);
    else if (command.run != nullptr)
        command.run(workspace);
}

} // namespace kiv
