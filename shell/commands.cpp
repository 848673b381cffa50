#include "shell/commands.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::array<MenuTitle, 5> kMenuTitles = {{
    {Menu::file, "menu_file", "File"},
    {Menu::jump, "mnu_jump", "Jump to"},
    {Menu::utils, "mnu_grab", "Utils"},
    {Menu::grab, "Grab_head", "Grab"},
    {Menu::help, "menu_help", "Help"},
}};

using W = Workspace;

bool InGroup(const W& w, std::size_t)
{
    return w.IsGroup;
}
bool OutsideGroup(const W& w, std::size_t)
{
    return !w.IsGroup;
}
bool HasOutputRoots(const W& w, std::size_t)
{
    return w.OutputRootsShown();
}
bool HasNoOutputRoots(const W& w, std::size_t)
{
    return !w.OutputRootsShown();
}
bool HasUploadEntry(const W& w, std::size_t)
{
    return w.UploadListWanted;
}
bool HasJumpEntry(const W& w, std::size_t index)
{
    return index < w.Jumps.size();
}
bool GroupIsOpen(const W& w)
{
    return w.IsGroup;
}

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
     .run = [](W& w, std::size_t) { w.BuildWorkDir(); },
     .disables_buttons = true, .is_visible = OutsideGroup},
    {.name = "build-one", .object_name = "Command10", .caption = "do one",
     .run = [](W& w, std::size_t) { w.BuildWorkDir(); },
     .disables_buttons = true, .is_visible = InGroup},
    {.name = "group", .object_name = "Command11", .caption = "group",
     .run = [](W& w, std::size_t) { w.BuildGroup(); },
     .disables_buttons = true, .is_visible = InGroup},
    {.name = "edit-template", .object_name = "Command2", .caption = "template",
     .run = [](W& w, std::size_t) { w.Edit(kTemplateFile); }},
    {.name = "edit-content", .object_name = "Command5", .caption = "content",
     .run = [](W& w, std::size_t) { w.Edit(kPageListFile); }},
    {.name = "explore", .object_name = "Command6", .caption = "Dir window",
     .run = [](W& w, std::size_t) { w.ExploreWorkDir(); }, .is_visible = HasNoOutputRoots},
    {.name = "explore-1", .object_name = "Command8", .caption = "Dir 1",
     .run = [](W& w, std::size_t) { w.ExploreFirstRoot(); }, .is_visible = HasOutputRoots},
    {.name = "explore-2", .object_name = "Command9", .caption = "Dir 2",
     .run = [](W& w, std::size_t) { w.ExploreLastRoot(); }, .is_visible = HasOutputRoots},
    {.name = "store-directory", .object_name = "Command7", .caption = "Store dir",
     .run = [](W& w, std::size_t) { w.StoreDirectory(); }},
    {.name = "choose-directory", .object_name = "Command4", .caption = "Choose directory",
     .run = [](W& w, std::size_t) { w.dirreset(); }, .opens = Opens::directories},
    {.name = "exit", .object_name = "Command3", .caption = "Exit",
     .run = [](W& w, std::size_t) { w.SaveDirectory(); }, .opens = Opens::end},
    {.name = "upload", .object_name = "Command12", .caption = "Upload",
     .run = [](W& w, std::size_t) { w.RunUploadBatch(); }, .is_visible = HasUploadEntry},

    {.name = "lanthorn", .object_name = "mnu_zu", .caption = "Lanthorn", .menu = Menu::file,
     .run = [](W& w, std::size_t) { w.RunLanthorn(); }},
    {.name = "lower-case", .object_name = "mnu_lc", .caption = "l/c dir", .menu = Menu::file,
     .run = [](W& w, std::size_t) { w.LowerCaseNames(); }},
    {.name = "rename", .object_name = "mnu_rename", .caption = "Rename files",
     .menu = Menu::file, .opens = Opens::renamer},
    {.name = "fix-names", .object_name = "mnu_dirfix", .caption = "Fix names", .menu = Menu::file,
     .run = [](W& w, std::size_t) { w.dodirfix(); }},
    {.name = "thumb-names", .object_name = "mnu_addt", .caption = "add \"_t.gif\"",
     .menu = Menu::file, .run = [](W& w, std::size_t) { w.dodirt(); }},
    {.name = "dimensions", .object_name = "mnu_resizer", .caption = "Calculate dimensions",
     .menu = Menu::file, .opens = Opens::dimensions},
    {.name = "edit-contents", .object_name = "openhtmls", .caption = "Open all html.txt",
     .menu = Menu::file, .run = [](W& w, std::size_t) { w.groupedit(kPageListFile); },
     .is_available = GroupIsOpen},
    {.name = "edit-templates", .object_name = "mnu_alltemplates", .caption = "Open all templates",
     .menu = Menu::file, .run = [](W& w, std::size_t) { w.groupedit(kTemplateFile); },
     .is_available = GroupIsOpen},
    Separator("mnu_ptop2", Menu::file),
    {.name = "edit-upload-list", .object_name = "mnu_editftplist", .caption = "Edit FTP list",
     .menu = Menu::file, .run = [](W& w, std::size_t) { w.EditUploadList(); }},
    {.name = "edit-upload-batch", .object_name = "mnu_editftpbat", .caption = "Edit FTP bat file",
     .menu = Menu::file, .run = [](W& w, std::size_t) { w.EditUploadBatch(); }},
    Separator("mnu_dash", Menu::file),
    {.name = "quit", .object_name = "menu_file_quit", .caption = "Quit", .menu = Menu::file,
     .opens = Opens::end},

    {.name = "jump", .object_name = "mnu_jumpto", .caption = "jumpitem", .menu = Menu::jump,
     .run = [](W& w, std::size_t index) { w.JumpTo(index); },
     .entries = kJumpEntries, .is_visible = HasJumpEntry},
    Separator("mnu_rule", Menu::jump),
    {.name = "edit-jumps", .object_name = "mnu_editjump", .caption = "Edit Jump to list",
     .menu = Menu::jump, .run = [](W& w, std::size_t) { w.EditJumpList(); }},
    {.name = "reload-jumps", .object_name = "mnu_reloadjumpto",
     .caption = "Reload Jump to list", .menu = Menu::jump,
     .run = [](W& w, std::size_t) { w.ReloadJumps(); }},

    {.name = "convert", .object_name = "mnu_fixemail", .caption = "Convert to HTML",
     .menu = Menu::utils, .opens = Opens::conversion},
    {.name = "convert-news", .object_name = "mnu_news", .caption = "News header",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "newsgrabber"},
    {.name = "convert-names", .object_name = "getnames", .caption = "Extract name fields",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "getnames"},
    {.name = "convert-quotes", .object_name = "mnu_cleanquotes", .caption = "Clean quotes etc.",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "cleanquotes"},
    {.name = "convert-rs", .object_name = "mnu_rs",
     .caption = "Make x=rs(\"x\") from tab delim",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "rs"},
    {.name = "convert-js", .object_name = "menu_js", .caption = "make into js write",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "js"},
    {.name = "close-paragraphs", .object_name = "mnu_ptop", .caption = "<p>...</p>",
     .menu = Menu::utils, .run = [](W& w, std::size_t) { w.CloseParagraphs(); }},
    {.name = "convert-tabs", .object_name = "mnu_tabpipe", .caption = "Tab to Pipe",
     .menu = Menu::utils, .opens = Opens::conversion, .mode = "tabtopipe"},
    {.name = "pictures", .object_name = "mnu_piclist", .caption = "picture sizer",
     .menu = Menu::utils, .run = [](W& w, std::size_t) { w.SizePictures(""); }},
    {.name = "pictures-images", .object_name = "mnu_picsizeimage",
     .caption = "picture sizer (images)", .menu = Menu::utils,
     .run = [](W& w, std::size_t) { w.SizePictures("images"); }},
    {.name = "new-year", .object_name = "mnu_NewYear", .caption = "Toggle New Year",
     .menu = Menu::utils, .run = [](W& w, std::size_t) { w.ToggleNewYear(); }},
    {.name = "sitemap", .object_name = "mnu_sitemap", .caption = "Assemble Site Map",
     .menu = Menu::utils, .run = [](W& w, std::size_t) { w.AssembleSiteMap(); }},
    {.name = "single-page", .object_name = "mnu_singlehtml", .caption = "Create single html",
     .menu = Menu::utils, .run = [](W& w, std::size_t) { w.BuildWorkDir(); },
     .disables_buttons = true},
    {.name = "news", .object_name = "mnu_newnews", .caption = "New News", .menu = Menu::utils,
     .opens = Opens::news},

    {.name = "grab", .object_name = "menu_utils_grab", .caption = "Grab titles",
     .menu = Menu::grab, .run = [](W& w, std::size_t) { w.GrabTitles({}); }},
    {.name = "grab-redirect", .object_name = "grab_redirect", .caption = "Grab && redirect",
     .menu = Menu::grab, .run = [](W& w, std::size_t) { w.GrabTitles({.redirect = true}); }},
    {.name = "grab-all", .object_name = "mnu_graball", .caption = "Grab all", .menu = Menu::grab,
     .run = [](W& w, std::size_t) { w.GrabTitles({.all = true}); }},
    {.name = "grab-trimmed", .object_name = "mnu_graball_trim", .caption = "Grab all trimmed",
     .menu = Menu::grab, .run = [](W& w, std::size_t) { w.GrabTitles({.trimmed = true}); }},

    {.name = "reference", .object_name = "menu_help", .caption = "Help", .menu = Menu::help,
     .opens = Opens::help},
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
    return command.is_visible == nullptr || command.is_visible(workspace, index);
}

bool IsAvailable(const Command& command, const Workspace& workspace)
{
    return command.is_available == nullptr || command.is_available(workspace);
}

std::string_view CaptionOf(const Command& command, const Workspace& workspace, std::size_t index)
{
    const bool labelled = command.entries > 1 && index < workspace.Jumps.size();
    return labelled ? std::string_view(workspace.Jumps[index].label) : command.caption;
}

std::optional<RunError> RunCommand(Workspace& workspace, const Command& command, std::size_t index)
{
    return workspace.Run([&] {
        if (command.run != nullptr)
            command.run(workspace, index);
    });
}

} // namespace kiv
