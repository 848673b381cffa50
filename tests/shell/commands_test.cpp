// The table of commands.
#include "shell/commands.h"
#include "shell_desk.h"
#include "utilities/conversions.h"

#include <map>
#include <set>

namespace kiv {
namespace {

class CommandTable : public ShellTest {
  protected:
    /// Runs a command; the kind of its fatal error, "" when it went well.
    std::string Choose(const char* name)
    {
        return KindOf([&] { RunCommand(workspace, *FindCommand(name)); });
    }
};

struct CommandRow {
    const char* object_name;
    const char* caption;
};

void ExpectMenu(Menu menu, const std::vector<CommandRow>& rows)
{
    std::size_t at = 0;
    for (const Command& command : Commands()) {
        if (command.menu != menu)
            continue;
        ASSERT_LT(at, rows.size()) << command.object_name;
        EXPECT_EQ(command.object_name, rows[at].object_name);
        EXPECT_EQ(command.caption, rows[at].caption);
        EXPECT_EQ(command.IsSeparator(), command.caption.empty());
        ++at;
    }
    EXPECT_EQ(at, rows.size());
}

TEST_F(CommandTable, FileMenu)
{
    ExpectMenu(Menu::file, {{"mnu_zu", "Lanthorn"},
                            {"mnu_lc", "l/c dir"},
                            {"mnu_rename", "Rename files"},
                            {"mnu_dirfix", "Fix names"},
                            {"mnu_addt", "add \"_t.gif\""},
                            {"mnu_resizer", "Calculate dimensions"},
                            {"openhtmls", "Open all html.txt"},
                            {"mnu_alltemplates", "Open all templates"},
                            {"mnu_ptop2", ""},
                            {"mnu_editftplist", "Edit FTP list"},
                            {"mnu_editftpbat", "Edit FTP bat file"},
                            {"mnu_dash", ""},
                            {"menu_file_quit", "Quit"}});
}

TEST_F(CommandTable, JumpMenu)
{
    ExpectMenu(Menu::jump, {{"mnu_jumpto", "jumpitem"},
                            {"mnu_rule", ""},
                            {"mnu_editjump", "Edit Jump to list"},
                            {"mnu_reloadjumpto", "Reload Jump to list"}});
    EXPECT_EQ(FindCommand("mnu_jumpto")->entries, 10U);
}

TEST_F(CommandTable, UtilsMenu)
{
    ExpectMenu(Menu::utils, {{"mnu_fixemail", "Convert to HTML"},
                             {"mnu_news", "News header"},
                             {"getnames", "Extract name fields"},
                             {"mnu_cleanquotes", "Clean quotes etc."},
                             {"mnu_rs", "Make x=rs(\"x\") from tab delim"},
                             {"menu_js", "make into js write"},
                             {"mnu_ptop", "<p>...</p>"},
                             {"mnu_tabpipe", "Tab to Pipe"},
                             {"mnu_piclist", "picture sizer"},
                             {"mnu_picsizeimage", "picture sizer (images)"},
                             {"mnu_NewYear", "Toggle New Year"},
                             {"mnu_sitemap", "Assemble Site Map"},
                             {"mnu_singlehtml", "Create single html"},
                             {"mnu_newnews", "New News"}});
}

TEST_F(CommandTable, GrabAndHelpMenus)
{
    ExpectMenu(Menu::grab, {{"menu_utils_grab", "Grab titles"},
                            {"grab_redirect", "Grab && redirect"},
                            {"mnu_graball", "Grab all"},
                            {"mnu_graball_trim", "Grab all trimmed"}});
    ExpectMenu(Menu::help, {{"menu_help", "Help"}});
}

TEST_F(CommandTable, SiteMenu)
{
    ExpectMenu(Menu::site, {{"mnu_check", "Check"},
                            {"mnu_why", "Why does a line look so?"},
                            {"mnu_preview", "Preview"},
                            {"mnu_showpage", "Show page in browser"},
                            {"mnu_buildsave", "Build on save"},
                            {"mnu_undorenames", "Undo renames"},
                            {"mnu_thumbs", "Make thumbnails"},
                            {"mnu_encode", "Change encoding"},
                            {"mnu_feed", "Write feeds"},
                            {"mnu_sitemapxml", "Write XML site map"},
                            {"mnu_uploadchanges", "Upload changed pages"},
                            {"mnu_recent", "Recent folders"},
                            {"mnu_readagain", "Read again"},
                            {"mnu_beginsite", "Begin a site"},
                            {"mnu_adopt", "Adopt pages..."},
                            {"mnu_editor", "Choose an editor"},
                            {"mnu_manual", "Manual"}});
}

TEST_F(CommandTable, MenusInOrder)
{
    std::vector<std::string> titles;
    for (const MenuTitle& title : MenuTitles())
        titles.push_back(std::string(title.object_name) + "=" + std::string(title.caption));
    EXPECT_EQ(titles, (Texts{"menu_file=File", "mnu_jump=Jump to", "mnu_grab=Utils",
                             "Grab_head=Grab", "menu_help=Help", "menu_site=Site"}));
}

TEST_F(CommandTable, Buttons)
{
    const std::map<std::string_view, std::string_view> captions = {
        {"Command1", "Do it!"},           {"Command2", "template"}, {"Command3", "Exit"},
        {"Command4", "Choose directory"}, {"Command5", "content"},  {"Command6", "Dir window"},
        {"Command7", "Store dir"},        {"Command8", "Dir 1"},    {"Command9", "Dir 2"},
        {"Command10", "do one"},          {"Command11", "group"},   {"Command12", "Upload"},
    };
    std::map<std::string_view, std::string_view> found;
    for (const Command& command : Commands())
        if (command.menu == Menu::button)
            found[command.object_name] = command.caption;
    EXPECT_EQ(found, captions);
}

TEST_F(CommandTable, EveryNameIsItsOwn)
{
    std::set<std::string_view> names;
    for (const Command& command : Commands()) {
        EXPECT_TRUE(names.insert(command.object_name).second) << command.object_name;
        if (command.IsSeparator())
            continue;
        EXPECT_TRUE(names.insert(command.name).second) << command.name;
        EXPECT_EQ(FindCommand(command.name), &command);
        EXPECT_EQ(FindCommand(command.object_name), &command);
        EXPECT_TRUE(command.Runs() || command.opens != Opens::nothing) << command.name;
        EXPECT_NE(command.tip, "") << command.name;
    }
    EXPECT_EQ(FindCommand("no-such"), nullptr);
    EXPECT_EQ(FindCommand(""), nullptr);
}

TEST_F(CommandTable, ConversionWindowsHaveModesThatThereAre)
{
    std::set<std::string_view> modes;
    for (const ConversionMode& row : ConversionModes())
        modes.insert(row.mode);
    std::set<std::string_view> offered;
    for (const Command& command : Commands())
        if (command.opens == Opens::conversion)
            offered.insert(command.mode);
    EXPECT_EQ(offered, modes);
}

TEST_F(CommandTable, WhatAGroupShows)
{
    const auto shown = [&](const char* name) { return IsVisible(*FindCommand(name), workspace); };
    const auto open = [&](const char* name) { return IsAvailable(*FindCommand(name), workspace); };
    for (const bool group : {false, true, false}) {
        std::filesystem::remove(Native("site/_group.txt"));
        if (group)
            Put("site/_group.txt");
        workspace.changethedirectory("C:\\site");
        EXPECT_EQ(shown("Command1"), !group);
        EXPECT_EQ(shown("Command10"), group);
        EXPECT_EQ(shown("Command11"), group);
        EXPECT_EQ(open("openhtmls"), group);
        EXPECT_EQ(open("mnu_alltemplates"), group);
        EXPECT_TRUE(open("mnu_lc"));
        EXPECT_TRUE(shown("openhtmls")); // greyed, not hidden
    }
}

TEST_F(CommandTable, WhatElseIsShown)
{
    const auto shown = [&](const char* name, std::size_t index = 0) {
        return IsVisible(*FindCommand(name), workspace, index);
    };
    EXPECT_FALSE(shown("Command12"));
    workspace.UploadListWanted = true;
    EXPECT_TRUE(shown("Command12"));
    EXPECT_TRUE(shown("Command6") && !shown("Command8") && !shown("Command9"));
    workspace.Roots.asp = "C:\\site\\asp\\";
    EXPECT_TRUE(!shown("Command6") && shown("Command8") && shown("Command9"));
    // "Choose directory" brings "Dir window" back.
    EXPECT_EQ(Choose("Command4"), "");
    EXPECT_TRUE(shown("Command6") && !shown("Command8"));
    const Command& jump = *FindCommand("mnu_jumpto");
    EXPECT_FALSE(shown("mnu_jumpto"));
    EXPECT_EQ(CaptionOf(jump, workspace, 0), "jumpitem");
    workspace.Jumps = {{"Docs", "d:\\docs\\"}};
    EXPECT_TRUE(shown("mnu_jumpto", 0));
    EXPECT_FALSE(shown("mnu_jumpto", 1));
    EXPECT_EQ(CaptionOf(jump, workspace, 0), "Docs");
    EXPECT_EQ(CaptionOf(*FindCommand("mnu_lc"), workspace), "l/c dir");
}

TEST_F(CommandTable, WhatHasNothingToDoIsGreyAndSaysWhy)
{
    const auto tip = [&](const char* name) { return TipOf(*FindCommand(name), workspace); };
    const auto open = [&](const char* name) { return IsAvailable(*FindCommand(name), workspace); };
    workspace.switchto("C:\\site");
    for (const char* const name : {"mnu_sitemap", "openhtmls", "mnu_alltemplates"}) {
        EXPECT_FALSE(open(name)) << name;
        EXPECT_EQ(tip(name), "There is no group list (_group.txt) here");
    }
    EXPECT_FALSE(open("mnu_singlehtml"));
    EXPECT_EQ(tip("mnu_singlehtml"), "There is no _singlehtml.txt here to build into");
    Put("site/_singlehtml.txt");
    Put("site/_group.txt");
    workspace.switchto("C:\\site");
    for (const char* const name : {"mnu_sitemap", "mnu_singlehtml"}) {
        EXPECT_TRUE(open(name)) << name;
        EXPECT_EQ(tip(name), FindCommand(name)->tip);
    }
    for (const Command& command : Commands())
        EXPECT_EQ(command.unavailable.empty(), command.is_available == nullptr) << command.name;
}

TEST_F(CommandTable, RecentFoldersAreEntriesOfTheirOwn)
{
    const Command& recent = *FindCommand("recent");
    EXPECT_FALSE(IsAvailable(recent, workspace));
    workspace.switchto("C:\\site");
    EXPECT_TRUE(IsAvailable(recent, workspace));
    EXPECT_TRUE(IsVisible(recent, workspace, 0));
    EXPECT_FALSE(IsVisible(recent, workspace, 1));
    EXPECT_EQ(CaptionOf(recent, workspace, 0), "C:\\site\\");
    EXPECT_EQ(CaptionOf(recent, workspace, recent.entries), "Recent folders");
    workspace.switchto("C:\\utils");
    EXPECT_EQ(KindOf([&] { RunCommand(workspace, recent, 1); }), "");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
}

TEST_F(CommandTable, CommandsThatKeepSilentHaveAStatus)
{
    for (const Command& command : Commands()) {
        const bool tells = !command.done.empty() || command.builds || command.looks_at ||
                           command.opens != Opens::nothing || command.menu == Menu::grab;
        const bool tells_itself = command.name == "store-directory" || command.name == "check" ||
                                  command.name == "new-year" || command.name == "sitemap" ||
                                  command.name == "build-on-save" || command.name == "thumbs" ||
                                  command.name.starts_with("pictures");
        EXPECT_TRUE(command.IsSeparator() || tells || tells_itself) << command.name;
    }
}

TEST_F(CommandTable, SwitchesAndTheSiteMapSayHowItEnded)
{
    const auto status = [&](const char* name) {
        Choose(name);
        return reporter.status;
    };
    workspace.switchto("C:\\site");
    EXPECT_EQ(status("new-year"), "New Year switch on");
    EXPECT_EQ(status("new-year"), "New Year switch off");
    EXPECT_EQ(status("build-on-save"), "Build on save on");
    EXPECT_EQ(status("build-on-save"), "Build on save off");
    EXPECT_EQ(status("sitemap"), "No group list here");
    Put("site/_group.txt");
    Put("site/_sitemap.txt");
    EXPECT_EQ(status("sitemap"), "Site map assembled");
}

struct RunRow {
    const char* command;
    std::string started;
    const char* status;
};

TEST_F(CommandTable, CommandsDoWhatTheySay)
{
    Put("site/_group.txt", "a");
    workspace.EditorCommand = "pad ";
    workspace.switchto("C:\\site");
    const std::vector<RunRow> rows = {
        {"Command2", "pad _template.txt", ""},
        {"Command5", "pad _html.txt", ""},
        {"Command6", "explorer C:\\site\\", ""},
        {"Command7", "", "Directory Saved as Default"},
        {"Command3", "", ""},
        {"Command12", "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat (minimised)", ""},
        {"mnu_zu", "c:\\utils\\lanthorn.exe", ""},
        {"mnu_lc", "c:\\utils\\dosutils\\case *.* /l (minimised)",
         "Lower-casing of the file names started"},
        {"mnu_dirfix", "", "Names fixed"},
        {"mnu_addt", "", "_t complete"},
        {"openhtmls", "pad C:\\site\\a\\_html.txt", ""},
        {"mnu_alltemplates", "pad C:\\site\\a\\_template.txt", ""},
        {"mnu_editftplist", "pad c:\\utils\\ftplist.txt", ""},
        {"mnu_editftpbat", "pad c:\\guestout2.bat", ""},
        {"mnu_editjump", "pad c:\\utils\\kivjump.ini", ""},
        {"menu_file_quit", "", ""},
    };
    for (const RunRow& row : rows) {
        programs.started.clear();
        reporter.status.clear();
        EXPECT_EQ(Choose(row.command), "") << row.command;
        EXPECT_EQ(programs.started, row.started.empty() ? Texts() : Texts{row.started});
        EXPECT_EQ(reporter.status, row.status) << row.command;
    }
}

TEST_F(CommandTable, ExitStoresTheDirectoryAndQuitDoesNot)
{
    workspace.switchto("C:\\site");
    EXPECT_EQ(FindCommand("menu_file_quit")->opens, Opens::end);
    EXPECT_EQ(Choose("menu_file_quit"), "");
    EXPECT_FALSE(Exists("utils/kiv.ini"));
    EXPECT_EQ(FindCommand("Command3")->opens, Opens::end);
    EXPECT_EQ(Choose("Command3"), "");
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\site\\\r\n");
}

TEST_F(CommandTable, AFatalErrorReachesTheFace)
{
    Put("site/_group.txt", "gone");
    workspace.switchto("C:\\site");
    EXPECT_EQ(Choose("group"), "file");
    EXPECT_FALSE(workspace.EoyEnabled);
}

TEST_F(CommandTable, BuildsDisableTheButtons)
{
    std::set<std::string_view> builds;
    for (const Command& command : Commands())
        if (command.disables_buttons)
            builds.insert(command.object_name);
    EXPECT_EQ(builds, (std::set<std::string_view>{"Command1", "Command10", "Command11", "mnu_check",
                                                  "mnu_singlehtml", "mnu_thumbs"}));
}

} // namespace
} // namespace kiv
