// The folders that were worked in last.
#include "shell/recent_folders.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RecentList : public ShellTest {
  protected:
    RecentList()
    {
        for (const char* const name : {"a", "b", "c"})
            PutFolder(name);
        workspace.RecentFile = "C:\\state\\kiv\\recent-folders.txt";
    }
    std::string Kept() { return Content("state/kiv/recent-folders.txt"); }
};

TEST_F(RecentList, TheLastOneComesFirstAndEachStandsOnce)
{
    workspace.switchto("C:\\a");
    workspace.switchto("C:\\b");
    workspace.changethedirectory("c:\\A\\");
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\A\\", "C:\\b\\"));
    EXPECT_EQ(Kept(), "C:\\A\\\r\nC:\\b\\\r\n");
}

TEST_F(RecentList, TheNextRunAndAnotherWindowHaveIt)
{
    workspace.switchto("C:\\a");
    Workspace other(machine);
    other.RecentFile = workspace.RecentFile;
    other.switchto("C:\\b");
    EXPECT_THAT(other.Recent, ElementsAre("C:\\b\\", "C:\\a\\"));
    workspace.switchto("C:\\c");
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\c\\", "C:\\b\\", "C:\\a\\"));
}

TEST_F(RecentList, AStartShowsWhatWasKeptAndPutsItsFolderFirst)
{
    Put("state/kiv/recent-folders.txt", "C:\\b\\\r\nno path\r\nC:\\site\\\r\n");
    EXPECT_THAT(workspace.StartWindow("C:\\site"), IsEmpty());
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\site\\", "C:\\b\\"));
}

TEST_F(RecentList, ARootIsNoPlaceOfWorkAndTenAreEnough)
{
    workspace.switchto("C:\\");
    EXPECT_THAT(workspace.Recent, IsEmpty());
    for (int i = 0; i < 12; ++i) {
        PutFolder("n" + std::to_string(i));
        workspace.switchto("C:\\n" + std::to_string(i));
    }
    EXPECT_THAT(workspace.Recent, SizeIs(kRecentFolders));
    EXPECT_EQ(workspace.Recent.back(), "C:\\n2\\");
}

TEST_F(RecentList, AnEntryLeadsThere)
{
    workspace.switchto("C:\\a");
    workspace.switchto("C:\\b");
    EXPECT_EQ(KindOf([&] { GoToRecent(workspace, 1); }), "");
    EXPECT_EQ(workspace.WorkDir, "C:\\a\\");
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\a\\", "C:\\b\\"));
    std::filesystem::remove(Native("b"));
    EXPECT_EQ(KindOf([&] { GoToRecent(workspace, 1); }), "file");
    EXPECT_EQ(workspace.WorkDir, "C:\\a\\");
}

TEST_F(RecentList, NobodyMissesAListThatCannotBeKept)
{
    Put("state"); // a file where the folder should be
    workspace.switchto("C:\\a");
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\a\\"));
    workspace.RecentFile.clear();
    workspace.switchto("C:\\b");
    EXPECT_THAT(workspace.Recent, ElementsAre("C:\\b\\", "C:\\a\\"));
}

} // namespace
} // namespace kiv
