// What is done for every folder of a group.
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::IsEmpty;

class Groups : public ShellTest {
  protected:
    /// A folder below drive C: with sources of one page, `word`.
    void PutSite(const std::string& below, const std::string& word)
    {
        Put(below + "/_html.txt",
            "@FILE = index\n@TITLE = T\n\n" + word + "\n@@EOY\nnew year\n@@EOY\n");
        Put(below + "/_template.txt", ";\n");
    }
};

TEST_F(Groups, TheGroupBuildGoesThroughAllFolders)
{
    PutSite("site", "own");
    PutSite("site/b", "bee");
    PutSite("site/a", "ay");
    Put("site/_group.txt", "b\r\n\r\na\\\r\n");
    workspace.switchto("C:\\site");
    Texts shown;
    workspace.on_change = [&] {
        shown.push_back(workspace.WorkDir + std::string(NewYearText(workspace)));
    };
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_EQ(files->Written().front(), "C:\\site\\index.htm");
    EXPECT_TRUE(Exists("site/b/index.htm"));
    EXPECT_TRUE(Exists("site/a/index.htm"));
    // An entry without "\" is taken as written. In the end all is as it was.
    EXPECT_EQ(shown, (Texts{"C:\\site\\EOY ON!", "C:\\site\\bEOY ON!", "C:\\site\\a\\EOY ON!",
                            "C:\\site\\EOY ON!", "C:\\site\\"}));
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
    EXPECT_FALSE(workspace.EoyEnabled);
}

TEST_F(Groups, TheWorkingDirectoryKeepsItsSpelling)
{
    PutSite("site/a", "ay");
    Put("site/_group.txt", "a");
    workspace.switchto("c:/SITE\\");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_TRUE(Exists("site/a/index.htm"));
    EXPECT_EQ(workspace.WorkDir, "c:/SITE\\");
}

TEST_F(Groups, TheSwitchIsOffAfterwardsWhateverItWas)
{
    workspace.switchto("C:\\site");
    ToggleNewYear(workspace);
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), ""); // without a list nothing is built
    EXPECT_FALSE(workspace.EoyEnabled);
    EXPECT_THAT(files->Written(), IsEmpty());
}

TEST_F(Groups, OwnSourcesMayBeMissing)
{
    PutSite("site/a", "ay");
    Put("site/_group.txt", "a");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_THAT(reporter.shown, IsEmpty());
    EXPECT_TRUE(Exists("site/a/index.htm"));
}

TEST_F(Groups, AMemberWithoutSourcesGetsTheMessageAndTheBuildGoesOn)
{
    std::filesystem::create_directories(Native("site/a"));
    PutSite("site/b", "bee");
    Put("site/_group.txt", "a\nb\n");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_EQ(reporter.shown, (Texts{"OOPS! Missing _html.txt, _template.txt"}));
    EXPECT_EQ(reporter.status, "1 files written");
}

TEST_F(Groups, ATagThatIsUnknownIsNamedOnceForTheWholeProgram)
{
    PutSite("site", "<zufoo>");
    PutSite("site/a", "<zufoo>");
    PutSite("other", "<zufoo>");
    Put("site/_group.txt", "a\r\n");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "");
    workspace.switchto("C:\\other");
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "");
    EXPECT_EQ(reporter.shown, (Texts{"<zufoo> is unknown!"}));

    PutSite("other", "<ZUFOO>\n<zubar>\n<zufoo>"); // a tag begins with a small "zu"
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "");
    EXPECT_EQ(reporter.shown,
              (Texts{"<zufoo> is unknown!", "<zubar> is unknown!", "<zufoo> is unknown!"}));
}

TEST_F(Groups, AMissingMemberIsFatalWhenItsTurnComes)
{
    PutSite("site/a", "ay");
    Put("site/_group.txt", "a\n  \nb\n"); // blanks are a name
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "file");
    EXPECT_TRUE(Exists("site/a/index.htm"));
    EXPECT_FALSE(workspace.EoyEnabled);
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
}

TEST_F(Groups, FiveHundredMembersAreTheMost)
{
    PutSite("site", "own");
    std::string list;
    for (int i = 0; i < 500; ++i)
        list += "gone\n\n";
    Put("site/_group.txt", list + "gone");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "subscript");
    EXPECT_FALSE(Exists("site/index.htm")); // the list is read before the first build
    Put("site/_group.txt", list);
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "file");
    EXPECT_TRUE(Exists("site/index.htm"));
}

TEST_F(Groups, TheUploadStateIsThatOfTheMaster)
{
    PutSite("site/a", "ay");
    Put("site/_group.txt", "a");
    Put("utils/ftplist.txt", "C:\\site\\|put @@\r\n");
    workspace.StartUp("C:\\site");
    EXPECT_EQ(KindOf([&] { BuildGroup(workspace); }), "");
    EXPECT_EQ(Content("guestout2.bat"), "put index.htm\r\n");
}

TEST_F(Groups, TheSiteMapsAreMerged)
{
    Put("site/_sitemap.txt", "own 1\nown 2");
    Put("site/a/_sitemap.txt", "ay\r\n\r\n");
    Put("site/b/_sitemap.txt", "");
    Put("site/_group.txt", "a\r\n\r\nb/\r\n");
    workspace.EditorCommand = "pad ";
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { sitemapmaster(workspace); }), "");
    EXPECT_EQ(Content("site/_sitemap-master.txt"),
              "<h3>Site Map</h3>\r\n<ul>\r\nown 1\r\nown 2\r\nay\r\n\r\n</ul>\r\n");
    EXPECT_EQ(programs.started, (Texts{"pad C:\\site\\_sitemap-master.txt"}));
    EXPECT_EQ(reporter.status, "");
}

TEST_F(Groups, AnEmptyGroupListStillHasItsOwnSiteMap)
{
    Put("site/_sitemap.txt", "own");
    Put("site/_group.txt", "");
    workspace.switchto("C:\\site");
    sitemapmaster(workspace);
    EXPECT_EQ(Content("site/_sitemap-master.txt"), "<h3>Site Map</h3>\r\n<ul>\r\nown\r\n</ul>\r\n");
}

TEST_F(Groups, AMissingSiteMapLeavesTheOldMaster)
{
    Put("site/_sitemap-master.txt", "old");
    Put("site/_sitemap.txt", "own");
    Put("site/_group.txt", "a\n");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { sitemapmaster(workspace); }), "file");
    EXPECT_EQ(Content("site/_sitemap-master.txt"), "old");
    EXPECT_THAT(programs.started, IsEmpty());
}

TEST_F(Groups, WithoutAGroupListThereIsNoSiteMap)
{
    Put("site/_sitemap.txt", "own");
    workspace.switchto("C:\\site");
    EXPECT_EQ(KindOf([&] { sitemapmaster(workspace); }), "");
    EXPECT_FALSE(Exists("site/_sitemap-master.txt"));
}

TEST_F(Groups, TheFilesOfAllMembersAreOpened)
{
    workspace.EditorCommand = "pad ";
    workspace.switchto("C:\\site");
    groupedit(workspace, "_html.txt");
    EXPECT_THAT(programs.started, IsEmpty());
    Put("site/_group.txt", "a\n\nb\\\nc/d/\n  e");
    groupedit(workspace, "_html.txt");
    EXPECT_EQ(programs.started,
              (Texts{"pad C:\\site\\a\\_html.txt", "pad C:\\site\\b\\_html.txt",
                     "pad C:\\site\\c/d/_html.txt", "pad C:\\site\\  e\\_html.txt"}));
    EXPECT_EQ(programs.files, (Texts{"C:\\site\\a\\_html.txt", "C:\\site\\b\\_html.txt",
                                     "C:\\site\\c/d/_html.txt", "C:\\site\\  e\\_html.txt"}));
    programs.started.clear();
    Put("site/_group.txt", "a\n");
    groupedit(workspace, "_template.txt");
    EXPECT_EQ(programs.started, (Texts{"pad C:\\site\\a\\_template.txt"}));
}

TEST_F(Groups, FilesBelowAFolderWithABlankAreOpenedWhole)
{
    Put("My Site/_group.txt", "a b\n");
    Put("My Site/a b/_sitemap.txt", "ay");
    Put("My Site/_sitemap.txt", "own");
    workspace.switchto("C:\\My Site");
    groupedit(workspace, "_html.txt");
    groupedit(workspace, "_template.txt");
    sitemapmaster(workspace);
    EXPECT_EQ(programs.files,
              (Texts{"C:\\My Site\\a b\\_html.txt", "C:\\My Site\\a b\\_template.txt",
                     "C:\\My Site\\_sitemap-master.txt"}));
}

} // namespace
} // namespace kiv
