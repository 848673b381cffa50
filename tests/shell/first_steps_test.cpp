// The ways on from a start without a folder of a site.
#include "platform/site_files.h"
#include "shell/first_steps.h"
#include "shell_desk.h"

namespace kiv {
namespace {

class FirstStepsTest : public ShellTest {
  protected:
    FirstStepsTest() { Put("utils/kiv_editpad.txt", "pad\r\n"); }

    void PutExample()
    {
        Put("share/museum/README.txt", "read\r\n");
        Put("share/museum/site/_html.txt", "@FILE = index\r\n");
        Put("share/museum/site/_template.txt", "<!--BODY HERE-->\r\n");
        Put("share/museum/site/images/a.gif", "GIF");
        Put("share/museum/utils/quiz.txt", "script\r\n");
        workspace.ExampleFolder = "C:\\share\\museum";
    }
};

TEST_F(FirstStepsTest, AreOfferedUntilAFolderIsChosen)
{
    workspace.StartWindow({});
    ASSERT_TRUE(FirstStepsOf(workspace));
    EXPECT_EQ(workspace.WorkDir, "\\");
    workspace.changethedirectory("C:\\site");
    EXPECT_FALSE(FirstStepsOf(workspace));
}

TEST_F(FirstStepsTest, AreNotOfferedWhereAFolderIsGivenOrStored)
{
    workspace.StartWindow("C:\\site");
    EXPECT_FALSE(FirstStepsOf(workspace));
    Put("utils/kiv.ini", "C:\\site\\\r\n");
    workspace.StartWindow({});
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_FALSE(FirstStepsOf(workspace));
}

// "Exit" stores the root as the folder to start in.
TEST_F(FirstStepsTest, AreOfferedAgainAfterAnExitWithoutAFolder)
{
    workspace.StartWindow({});
    workspace.SaveDirectory();
    EXPECT_EQ(Content("utils/kiv.ini"), "\\\r\n");
    workspace.StartWindow({});
    EXPECT_TRUE(FirstStepsOf(workspace));
    Put("utils/kiv.ini", "C:\\gone\\\r\n");
    workspace.StartWindow({});
    EXPECT_TRUE(FirstStepsOf(workspace));
    Put("_html.txt", "@FILE = a\r\n"); // a site may lie there
    workspace.StartWindow({});
    EXPECT_FALSE(FirstStepsOf(workspace));
}

TEST_F(FirstStepsTest, TheFolderOfTheStartIsOfferedWhenItIsASite)
{
    workspace.StartWindow({});
    EXPECT_EQ(FirstStepsOf(workspace)->start_site, "");
    Put("site/_html.txt", "@FILE = a\r\n");
    files->ChangeDirectory("C:\\site");
    workspace.StartWindow({});
    EXPECT_EQ(FirstStepsOf(workspace)->start_site, "");
    Put("site/_template.txt", "<!--BODY HERE-->\r\n");
    files->ChangeDirectory("C:\\site");
    workspace.StartWindow({});
    EXPECT_EQ(FirstStepsOf(workspace)->start_site, "C:\\site");
}

TEST_F(FirstStepsTest, TellWhatIsThere)
{
    workspace.StartWindow({});
    EXPECT_FALSE(FirstStepsOf(workspace)->editor_is_missing);
    EXPECT_FALSE(FirstStepsOf(workspace)->has_example);
    std::filesystem::remove(Native("utils/kiv_editpad.txt"));
    workspace.ExampleFolder = "C:\\share\\museum";
    EXPECT_TRUE(FirstStepsOf(workspace)->editor_is_missing);
    EXPECT_TRUE(FirstStepsOf(workspace)->has_example);
}

TEST_F(FirstStepsTest, ASiteIsBegunWhereItIsWanted)
{
    workspace.StartWindow({});
    BeginSiteIn(workspace, "C:\\new one");
    EXPECT_EQ(workspace.WorkDir, "C:\\new one\\");
    EXPECT_TRUE(Exists("new one/_html.txt"));
    EXPECT_TRUE(Exists("new one/_template.txt"));
    EXPECT_FALSE(FirstStepsOf(workspace));
}

TEST_F(FirstStepsTest, TheExampleIsCopiedAndOpened)
{
    PutExample();
    workspace.StartWindow({});
    OpenExampleIn(workspace, "C:\\my files");
    EXPECT_EQ(workspace.WorkDir, "C:\\my files\\museum\\site\\");
    EXPECT_EQ(Content("my files/museum/README.txt"), "read\r\n");
    EXPECT_EQ(Content("my files/museum/site/images/a.gif"), "GIF");
    EXPECT_EQ(Content("utils/quiz.txt"), "script\r\n"); // where builds look for it
    EXPECT_EQ(reporter.status, "6 files copied to C:\\my files\\museum\\");
    EXPECT_FALSE(FirstStepsOf(workspace));
}

TEST_F(FirstStepsTest, TheExampleNeverGoesOverWhatIsThere)
{
    PutExample();
    Put("utils/quiz.txt", "mine\r\n");
    Put("my/museum/site/_html.txt", "mine, too\r\n");
    std::filesystem::create_directories(Native("my/museum/README.txt"));
    OpenExampleIn(workspace, "C:\\my\\");
    EXPECT_EQ(Content("utils/quiz.txt"), "mine\r\n");
    EXPECT_EQ(Content("my/museum/site/_html.txt"), "mine, too\r\n");
    EXPECT_EQ(Content("my/museum/site/_template.txt"), "<!--BODY HERE-->\r\n");
    EXPECT_EQ(reporter.status, "3 files copied to C:\\my\\museum\\; 3 were there already");
}

} // namespace
} // namespace kiv
