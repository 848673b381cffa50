// The commands that start other programs.
#include "shell_desk.h"

namespace kiv {
namespace {

class OtherPrograms : public ShellTest {
  protected:
    OtherPrograms()
    {
        workspace.EditorCommand = "pad ";
        workspace.switchto("C:\\site");
    }

    std::string Started()
    {
        std::string all;
        for (const std::string& line : programs.started)
            all += line;
        programs.started.clear();
        return all;
    }
};

TEST_F(OtherPrograms, AnEditorThatIsStoredIsUsedAtOnceAndLater)
{
    workspace.StoreEditor("gedit --new-window");
    EXPECT_EQ(Content("utils/kiv_editpad.txt"), "gedit --new-window\r\n");
    workspace.Edit("_template.txt");
    EXPECT_EQ(Started(), "gedit --new-window _template.txt");
}

TEST_F(OtherPrograms, CommandLines)
{
    workspace.Edit("_template.txt");
    EXPECT_EQ(Started(), "pad _template.txt");
    workspace.EditUploadBatch();
    EXPECT_EQ(Started(), "pad c:\\guestout2.bat");
    workspace.ExploreWorkDir();
    EXPECT_EQ(Started(), "explorer C:\\site\\");
    workspace.RunUploadBatch();
    EXPECT_EQ(Started(), "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat (minimised)");
    workspace.RunLanthorn();
    EXPECT_EQ(Started(), "c:\\utils\\lanthorn.exe");
    workspace.LowerCaseNames();
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case *.* /l (minimised)");
}

TEST_F(OtherPrograms, LowerCasingAFolder)
{
    workspace.LowerCaseNamesOf("C:\\site\\images");
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case C:\\site\\images\\*.* /l (minimised)");
    workspace.LowerCaseNamesOf("C:\\");
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case C:\\*.* /l (minimised)");
}

TEST_F(OtherPrograms, APathWithBlanksIsHandedOnWhole)
{
    std::filesystem::create_directories(Native("site/My Pages"));
    workspace.switchto("C:\\site\\My Pages");
    workspace.Edit("C:\\site\\My Pages\\_template.txt");
    workspace.ExploreWorkDir();
    workspace.LowerCaseNamesOf("C:\\site\\My Pages");
    EXPECT_EQ(Started(), "pad C:\\site\\My Pages\\_template.txt"
                         "explorer C:\\site\\My Pages\\"
                         "c:\\utils\\dosutils\\case C:\\site\\My Pages\\*.* /l (minimised)");
    EXPECT_EQ(programs.files, (Texts{"C:\\site\\My Pages\\_template.txt", "C:\\site\\My Pages\\",
                                     "C:\\site\\My Pages\\*.*"}));
}

TEST_F(OtherPrograms, ListsAreMadeBeforeTheyAreEdited)
{
    workspace.EditJumpList();
    EXPECT_EQ(Started(), "pad c:\\utils\\kivjump.ini");
    EXPECT_TRUE(Exists("utils/kivjump.ini"));
    workspace.EditUploadList();
    EXPECT_EQ(Started(), "pad c:\\utils\\ftplist.txt");
    EXPECT_TRUE(Exists("utils/ftplist.txt"));
    Put("utils/ftplist.txt", "mine");
    workspace.EditUploadList();
    EXPECT_EQ(Content("utils/ftplist.txt"), "mine");
}

TEST_F(OtherPrograms, JumpsGoWhereTheirEntrySays)
{
    Put("utils/kivjump.ini", "Utils|C:\\utils\nGone|C:\\gone\n");
    workspace.ReloadJumps();
    workspace.JumpTo(0);
    EXPECT_EQ(workspace.WorkDir, "C:\\utils\\");
    EXPECT_EQ(KindOf([&] { workspace.JumpTo(1); }), "file");
    workspace.JumpTo(2); // hidden
    EXPECT_EQ(workspace.WorkDir, "C:\\utils\\");
}

struct RootsRow {
    std::string list;
    std::string first;
    std::string last;
};

TEST_F(OtherPrograms, OutputRoots)
{
    std::filesystem::create_directories(Native("site/one"));
    Put("site/_template.txt", ";\n");
    const std::vector<RootsRow> rows = {
        {"@ASP = asp\n", "C:\\site\\asp\\", "C:\\site\\asp\\"},
        {"@HTM = ..\\h\n", "C:\\h\\", "C:\\h\\"},
        {"@DIR1 = one\n@ASP = asp\n", "C:\\site\\one\\", "C:\\site\\asp\\"},
        {"@HTM = h\n@ASP = asp\n", "C:\\site\\asp\\", "C:\\site\\h\\"},
        {"@DIR1 = C:\\utils\n@ASP = asp\n@HTM = h\n", "C:\\utils\\", "C:\\site\\h\\"},
        // The parse stops at the bad root; the one before it stands.
        {"@ASP = asp\n@DIR1 = gone\n", "C:\\site\\asp\\", "C:\\site\\asp\\"},
    };
    for (const RootsRow& row : rows) {
        Put("site/_html.txt", row.list + "@FILE = a\n@TITLE = A\n");
        workspace.BuildWorkDir();
        EXPECT_TRUE(workspace.OutputRootsShown()) << row.list;
        reporter.shown.clear();
        workspace.ExploreFirstRoot();
        EXPECT_EQ(Started(), "explorer " + row.first) << row.list;
        workspace.ExploreLastRoot();
        EXPECT_EQ(Started(), "explorer " + row.last) << row.list;
        EXPECT_TRUE(reporter.shown.empty()) << row.list;
        EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
    }
}

// "Dir 1" once read the page list again, and made the folder that it was to show.
TEST_F(OtherPrograms, OutputRootsAreThoseThatTheBuildRead)
{
    Put("site/_template.txt", ";\n");
    Put("site/_html.txt", "@ASP = asp\n@FILE = a\n@TITLE = A\n");
    workspace.BuildWorkDir();
    std::filesystem::remove_all(Native("site/asp"));
    Put("site/_html.txt", "@ASP = other\n@FILE = a\n@TITLE = A\n");
    workspace.ExploreFirstRoot();
    EXPECT_EQ(Started(), "explorer C:\\site\\asp\\");
    EXPECT_FALSE(Exists("site/asp"));
    EXPECT_FALSE(Exists("site/other"));
}

TEST_F(OtherPrograms, WithoutRootsTheWorkingDirectoryIsShown)
{
    workspace.switchto("C:\\utils");
    workspace.ExploreFirstRoot();
    EXPECT_EQ(Started(), "explorer C:\\utils\\");
    workspace.ExploreLastRoot();
    EXPECT_EQ(Started(), "explorer C:\\utils\\");
}

TEST_F(OtherPrograms, OutputRootsOfAGroupMember)
{
    Put("site/_group.txt", "a");
    Put("site/a/_template.txt", ";\n");
    Put("site/a/_html.txt", "@ASP = asp\n@FILE = a\n@TITLE = A\n");
    workspace.BuildGroup();
    workspace.ExploreFirstRoot();
    EXPECT_EQ(Started(), "explorer C:\\site\\a\\asp\\");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
}

} // namespace
} // namespace kiv
