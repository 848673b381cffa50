// The commands that start other programs.
#include "shell/builds.h"
#include "shell/outside_programs.h"
#include "shell_desk.h"

namespace kiv {
namespace {

class OutsidePrograms : public ShellTest {
  protected:
    OutsidePrograms()
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

TEST_F(OutsidePrograms, AnEditorThatIsStoredIsUsedAtOnceAndLater)
{
    StoreEditor(workspace, "gedit --new-window");
    EXPECT_EQ(Content("utils/kiv_editpad.txt"), "gedit --new-window\r\n");
    Edit(workspace, "_template.txt");
    EXPECT_EQ(Started(), "gedit --new-window _template.txt");
}

TEST_F(OutsidePrograms, AnEditorWithAMarkOpensALine)
{
    StoreEditor(workspace, "code --goto %f:%l");
    EditAt(workspace, "C:\\site\\_html.txt", 12);
    EXPECT_EQ(Started(), "code --goto C:\\site\\_html.txt:12");
    // Where no line is known it is the first.
    EditAt(workspace, "C:\\site\\_html.txt", 0);
    EXPECT_EQ(Started(), "code --goto C:\\site\\_html.txt:1");
    Edit(workspace, "_template.txt");
    EXPECT_EQ(Started(), "code --goto _template.txt:1");
    StoreEditor(workspace, "pad");
    EditAt(workspace, "C:\\site\\_html.txt", 12);
    EXPECT_EQ(Started(), "pad C:\\site\\_html.txt");
    EXPECT_EQ(programs.files.back(), "C:\\site\\_html.txt");
}

TEST_F(OutsidePrograms, CommandLines)
{
    Edit(workspace, "_template.txt");
    EXPECT_EQ(Started(), "pad _template.txt");
    EditUploadBatch(workspace);
    EXPECT_EQ(Started(), "pad c:\\guestout2.bat");
    ExploreWorkDir(workspace);
    EXPECT_EQ(Started(), "explorer C:\\site\\");
    RunUploadBatch(workspace);
    EXPECT_EQ(Started(), "C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat (minimised)");
    RunLanthorn(workspace);
    EXPECT_EQ(Started(), "c:\\utils\\lanthorn.exe");
    LowerCaseNames(workspace);
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case *.* /l (minimised)");
}

TEST_F(OutsidePrograms, LowerCasingAFolder)
{
    LowerCaseNamesOf(workspace, "C:\\site\\images");
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case C:\\site\\images\\*.* /l (minimised)");
    LowerCaseNamesOf(workspace, "C:\\");
    EXPECT_EQ(Started(), "c:\\utils\\dosutils\\case C:\\*.* /l (minimised)");
}

TEST_F(OutsidePrograms, APathWithBlanksIsHandedOnWhole)
{
    std::filesystem::create_directories(Native("site/My Pages"));
    workspace.switchto("C:\\site\\My Pages");
    Edit(workspace, "C:\\site\\My Pages\\_template.txt");
    ExploreWorkDir(workspace);
    LowerCaseNamesOf(workspace, "C:\\site\\My Pages");
    EXPECT_EQ(Started(), "pad C:\\site\\My Pages\\_template.txt"
                         "explorer C:\\site\\My Pages\\"
                         "c:\\utils\\dosutils\\case C:\\site\\My Pages\\*.* /l (minimised)");
    EXPECT_EQ(programs.files, (Texts{"C:\\site\\My Pages\\_template.txt", "C:\\site\\My Pages\\",
                                     "C:\\site\\My Pages\\*.*"}));
}

TEST_F(OutsidePrograms, ListsAreMadeBeforeTheyAreEdited)
{
    EditJumpList(workspace);
    EXPECT_EQ(Started(), "pad c:\\utils\\kivjump.ini");
    EXPECT_TRUE(Exists("utils/kivjump.ini"));
    EditUploadList(workspace);
    EXPECT_EQ(Started(), "pad c:\\utils\\ftplist.txt");
    EXPECT_TRUE(Exists("utils/ftplist.txt"));
    Put("utils/ftplist.txt", "mine");
    EditUploadList(workspace);
    EXPECT_EQ(Content("utils/ftplist.txt"), "mine");
}

struct RootsRow {
    std::string list;
    std::string first;
    std::string last;
};

TEST_F(OutsidePrograms, OutputRoots)
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
        BuildWorkDir(workspace);
        EXPECT_TRUE(workspace.OutputRootsShown()) << row.list;
        reporter.shown.clear();
        ExploreFirstRoot(workspace);
        EXPECT_EQ(Started(), "explorer " + row.first) << row.list;
        ExploreLastRoot(workspace);
        EXPECT_EQ(Started(), "explorer " + row.last) << row.list;
        EXPECT_TRUE(reporter.shown.empty()) << row.list;
        EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
    }
}

// "Dir 1" once read the page list again, and made the folder that it was to show.
TEST_F(OutsidePrograms, OutputRootsAreThoseThatTheBuildRead)
{
    Put("site/_template.txt", ";\n");
    Put("site/_html.txt", "@ASP = asp\n@FILE = a\n@TITLE = A\n");
    BuildWorkDir(workspace);
    std::filesystem::remove_all(Native("site/asp"));
    Put("site/_html.txt", "@ASP = other\n@FILE = a\n@TITLE = A\n");
    ExploreFirstRoot(workspace);
    EXPECT_EQ(Started(), "explorer C:\\site\\asp\\");
    EXPECT_FALSE(Exists("site/asp"));
    EXPECT_FALSE(Exists("site/other"));
}

TEST_F(OutsidePrograms, WithoutRootsTheWorkingDirectoryIsShown)
{
    workspace.switchto("C:\\utils");
    ExploreFirstRoot(workspace);
    EXPECT_EQ(Started(), "explorer C:\\utils\\");
    ExploreLastRoot(workspace);
    EXPECT_EQ(Started(), "explorer C:\\utils\\");
}

TEST_F(OutsidePrograms, OutputRootsOfAGroupMember)
{
    Put("site/_group.txt", "a");
    Put("site/a/_template.txt", ";\n");
    Put("site/a/_html.txt", "@ASP = asp\n@FILE = a\n@TITLE = A\n");
    BuildGroup(workspace);
    ExploreFirstRoot(workspace);
    EXPECT_EQ(Started(), "explorer C:\\site\\a\\asp\\");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
}

} // namespace
} // namespace kiv
