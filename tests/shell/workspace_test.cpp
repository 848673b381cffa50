// The working directory and what hangs on it.
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/outside_programs.h"
#include "shell/renames.h"
#include "shell_desk.h"
#include "tests/support/failing_files.h"

namespace kiv {
namespace {

using testing::IsEmpty;
using WorkspaceState = ShellTest;

TEST(ShownDirectory, LongPathsAreShortened)
{
    const std::string forty = "C:\\abc\\" + std::string(32, 'x') + "\\";
    ASSERT_EQ(forty.size(), 40U);
    EXPECT_EQ(ShortenedDirectory(forty), forty);
    const std::string one_more = "C:\\abc\\d" + std::string(32, 'x') + "\\";
    EXPECT_EQ(ShortenedDirectory(one_more), "C:\\abc..." + std::string(29, 'x') + "\\");
    EXPECT_EQ(ShortenedDirectory("\\"), "\\");
}

TEST_F(WorkspaceState, AGroupComesAndGoesWithTheDirectory)
{
    Put("group/_GROUP.TXT", "a\r\n");
    workspace.switchto("C:\\group");
    EXPECT_TRUE(workspace.IsGroup);
    EXPECT_EQ(workspace.WorkDir, "C:\\group\\");
    workspace.changethedirectory("C:\\site");
    EXPECT_FALSE(workspace.IsGroup);
}

TEST_F(WorkspaceState, ASwitchKeepsTheSpellingOfItsPath)
{
    PutFolder("site/images");
    struct Row {
        const char* path;
        const char* work_dir;
        const char* current;
    };
    const std::vector<Row> rows = {
        {"c:\\SITE\\", "c:\\SITE\\", "C:\\SITE"},
        {"c:/site/images/../", "c:/site/images/../\\", "C:\\site"},
        {"C:\\site\\.\\images", "C:\\site\\.\\images\\", "C:\\site\\images"},
        {"\\Site\\", "\\Site\\", "C:\\Site"},
        {"\\", "\\", "C:\\"},
        // What is relative would be another folder from there.
        {"site\\images\\", "C:\\site\\images\\", "C:\\site\\images"},
        {"c:..\\", "C:\\site\\", "C:\\site"},
    };
    for (const Row& row : rows) {
        workspace.switchto(row.path);
        EXPECT_EQ(workspace.WorkDir, row.work_dir) << row.path;
        EXPECT_EQ(files->CurrentDirectory(), row.current) << row.path;
    }
    workspace.changethedirectory("c:/SITE/./images"); // the path of a list, made absolute
    EXPECT_EQ(workspace.WorkDir, "C:\\SITE\\images\\");
}

TEST_F(WorkspaceState, JumpsGoWhereTheirEntrySaysAsItSaysIt)
{
    Put("utils/kivjump.ini", "Utils|c:\\UTILS\nGone|C:\\gone\n");
    workspace.ReloadJumps();
    workspace.JumpTo(0);
    EXPECT_EQ(workspace.WorkDir, "c:\\UTILS\\");
    EXPECT_EQ(KindOf([&] { workspace.JumpTo(1); }), "file");
    EXPECT_EQ(workspace.WorkDir, "c:\\UTILS\\");
}

TEST_F(WorkspaceState, TheFaceIsToldOfEveryDirectory)
{
    Texts shown;
    workspace.on_change = [&] { shown.push_back(workspace.ShownDirectory()); };
    workspace.switchto("C:\\utils");
    workspace.changethedirectory("C:\\site");
    EXPECT_EQ(shown, (Texts{"C:\\utils\\", "C:\\site\\"}));
}

TEST_F(WorkspaceState, AFolderThatIsNotThereChangesNothing)
{
    Put("guestout2.bat", "old");
    workspace.LookAt("C:\\site");
    for (const char* path : {"C:\\gone", "", "\\\\server\\share"})
        EXPECT_EQ(KindOf([&] { workspace.switchto(path); }), "file") << path;
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_EQ(Content("guestout2.bat"), "old");
}

TEST_F(WorkspaceState, TheFirstMatchingUploadEntryIsActive)
{
    Put("utils/ftplist.txt", "C:\\site|without its end\r\n"
                             " C:\\site\\|with a blank\r\n"
                             "c:\\SITE\\|first|surplus\r\n"
                             "C:\\site\\|second\r\n");
    workspace.StartUp("C:\\site");
    EXPECT_TRUE(workspace.UploadListWanted);
    EXPECT_EQ(workspace.UploadCommand, "first");
    EXPECT_EQ(Content("guestout2.bat"), "first\r\n");
    workspace.switchto("C:\\utils");
    EXPECT_FALSE(workspace.UploadListWanted);
    EXPECT_EQ(workspace.UploadCommand, "");
    EXPECT_FALSE(Exists("guestout2.bat"));
}

TEST_F(WorkspaceState, AnUploadTemplateLeavesNoBatchUntilABuild)
{
    Put("utils/ftplist.txt", "C:\\site\\|put @@ there\r\n");
    Put("GUESTOUT2.BAT", "old");
    workspace.StartUp("C:\\site");
    EXPECT_TRUE(workspace.UploadListWanted);
    EXPECT_FALSE(Exists("GUESTOUT2.BAT"));
    EXPECT_FALSE(Exists("guestout2.bat"));
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n\ntext\n");
    Put("site/_template.txt", ";\n");
    BuildWorkDir(workspace);
    EXPECT_EQ(Content("guestout2.bat"), "put a.htm there\r\n");
}

TEST_F(WorkspaceState, AnEmptyUploadCommandGivesAnEmptyLine)
{
    Put("utils/ftplist.txt", "C:\\site\\|\r\n");
    workspace.StartUp("C:\\site");
    EXPECT_TRUE(workspace.UploadListWanted);
    EXPECT_EQ(Content("guestout2.bat"), "\r\n");
}

TEST_F(WorkspaceState, ABatchThatCannotBeDeletedIsFatal)
{
    Put("guestout2.bat", "old");
    test::FailingFiles failing(*files, 0);
    Machine broken{failing, *files, clock, clipboard, programs, reporter, pictures};
    Workspace unlucky(broken);
    const std::optional<RunError> error = unlucky.Run([&] { unlucky.checkftpgroup(); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, ErrorKind::file);
    EXPECT_TRUE(failing.Failed());
    EXPECT_EQ(Content("guestout2.bat"), "old");
}

TEST_F(WorkspaceState, StoringTheDirectory)
{
    workspace.switchto("C:\\site");
    workspace.SaveDirectory(); // as "Exit" does: silently
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\site\\\r\n");
    EXPECT_EQ(reporter.status, "");
    workspace.switchto("C:\\utils");
    workspace.StoreDirectory();
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\utils\\\r\n");
    EXPECT_EQ(reporter.status, "Directory Saved as Default");
}

TEST_F(WorkspaceState, NewYear)
{
    EXPECT_EQ(NewYearText(workspace), "");
    ToggleNewYear(workspace);
    EXPECT_TRUE(workspace.EoyEnabled);
    EXPECT_EQ(NewYearText(workspace), "EOY ON!");
    ToggleNewYear(workspace);
    EXPECT_FALSE(workspace.EoyEnabled);
    EXPECT_EQ(NewYearText(workspace), "");
}

TEST_F(WorkspaceState, TheFolderButtonsFollowThePageList)
{
    Put("site/_html.txt", "@ASP = asp\n@FILE = a\n@TITLE = A\n");
    Put("site/_template.txt", ";\n");
    workspace.switchto("C:\\site");
    BuildWorkDir(workspace);
    EXPECT_TRUE(workspace.OutputRootsShown());
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n");
    BuildWorkDir(workspace);
    EXPECT_FALSE(workspace.OutputRootsShown()); // each build begins with "Dir window"
    Put("site/_html.txt", "@HTM = asp\n@FILE = a\n@TITLE = A\n");
    BuildWorkDir(workspace);
    EXPECT_TRUE(workspace.OutputRootsShown());
    workspace.switchto("C:\\utils");
    EXPECT_FALSE(workspace.OutputRootsShown());
}

TEST_F(WorkspaceState, ABuildThatFailsTellsTheRootsThatItRead)
{
    Put("site/_template.txt", ";\n");
    Put("site/_html.txt", "@HTM = h\n@FILE = a\n@TITLE = A\n??01= wrong\n??1[a]\n");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "invalid-argument");
    EXPECT_TRUE(workspace.OutputRootsShown());
    EXPECT_EQ(workspace.Roots.htm, "C:\\site\\h\\");
    // Without its sources a folder is not built, and the buttons stay.
    std::filesystem::remove(Native("site/_html.txt"));
    BuildWorkDir(workspace);
    EXPECT_TRUE(workspace.OutputRootsShown());
}

TEST_F(WorkspaceState, OneRootOfTheOrdinaryPassKeepsDirWindow)
{
    Put("site/_template.txt", ";\n");
    Put("site/_html.txt", "@DIR1 = .\n@FILE = a\n@TITLE = A\n");
    workspace.switchto("C:\\site");
    BuildWorkDir(workspace);
    EXPECT_EQ(workspace.Roots.dir1, "C:\\site\\");
    EXPECT_FALSE(workspace.OutputRootsShown()); // "@DIR1 =" alone keeps "Dir window"
}

TEST_F(WorkspaceState, ARunForgetsTheRunBefore)
{
    workspace.switchto("C:\\site");
    Put("site/a b", "");
    EXPECT_EQ(KindOf([&] {
                  workspace.StoreDirectory();
                  dodirfix(workspace);
              }),
              "");
    EXPECT_EQ(files->Written().size(), 1U);
    EXPECT_EQ(workspace.Renamed.size(), 1U);
    EXPECT_EQ(KindOf([] {}), "");
    EXPECT_THAT(files->Written(), IsEmpty());
    EXPECT_THAT(workspace.Renamed, IsEmpty());
}

TEST_F(WorkspaceState, ABuildWithoutSourcesSaysSo)
{
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "");
    EXPECT_EQ(reporter.shown, (Texts{"OOPS! Missing _html.txt, _template.txt"}));
}

TEST_F(WorkspaceState, TheDayOfThePagesIsThatOfTheProgramsStart)
{
    /// A clock that is past midnight once it has been looked at.
    class LateClock : public Clock {
      public:
        DateTime Now() override
        {
            return looks_++ == 0 ? DateTime{2004, 3, 5, 23, 59, 0} : DateTime{2004, 3, 6, 0, 1, 0};
        }

      private:
        int looks_ = 0;
    };
    LateClock late;
    Machine evening{*files, *files, late, clipboard, programs, reporter, pictures};
    Workspace kept_open{evening};
    Put("site/_template.txt", ";");
    Put("site/_html.txt", "@FILE = a\n@TITLE = T\n[@TODAY][@DATETIME][@YEAR]\n");
    kept_open.switchto("C:\\site");
    BuildWorkDir(kept_open);
    EXPECT_EQ(Content("site/a.htm"), "[March 5, 2004][3/6/2004 12:01:00 AM][2004]\r\n");
}

} // namespace
} // namespace kiv
