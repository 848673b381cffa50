// The pages of a window's folder, followed from command to command.
#include "preview/page_overview.h"

#include "platform/drives.h"
#include "shell/builds.h"
#include "tests/shell/shell_desk.h"

namespace kiv {
namespace {

class PageOverviews : public ShellTest {
  protected:
    PageOverviews()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n++more.txt\r\n");
        workspace.StartWindow("C:\\site");
        overview.ReadAgain();
    }
    std::string Text() const
    {
        std::string text;
        for (const SiteSection& section : overview.Pages().sections)
            for (const SitePage& page : section.pages)
                text += page.listed.file + " " + FateText(page) + ";";
        return text;
    }
    bool Run(const std::function<void()>& command)
    {
        return overview.FollowCommand(workspace.Run(command));
    }

    PageOverview overview{*files, workspace};
};

TEST_F(PageOverviews, AreReadAgainWhenASourceOfTheListChanges)
{
    EXPECT_FALSE(overview.IsOutdated());
    EXPECT_FALSE(Run([] {}));
    Put("site/_template.txt", "<hr>\r\n<!--BODY HERE-->\r\n"); // no source of the list
    EXPECT_FALSE(overview.IsOutdated());
    Put("site/more.txt", "@FILE = b\r\n@TITLE = B\r\n"); // it was missing
    EXPECT_TRUE(overview.IsOutdated());
    EXPECT_TRUE(Run([] {}));
    EXPECT_EQ(Text(), "a.htm ;b.htm ;");
    EXPECT_FALSE(overview.IsOutdated());
}

TEST_F(PageOverviews, TellWhatBuildsDidUntilTheNextOne)
{
    EXPECT_TRUE(Run([&] { BuildWorkDir(workspace); }));
    EXPECT_EQ(Text(), "a.htm new;");
    EXPECT_FALSE(Run([] {}));
    overview.ReadAgain();
    EXPECT_EQ(Text(), "a.htm new;");
    EXPECT_TRUE(Run([&] { BuildWorkDir(workspace); }));
    EXPECT_EQ(Text(), "a.htm as it was;");
}

TEST_F(PageOverviews, FollowTheWorkingDirectory)
{
    Put("lab/_html.txt", "@FILE = l\r\n@TITLE = L\r\n");
    EXPECT_TRUE(Run([&] { workspace.switchto("C:\\lab"); }));
    EXPECT_EQ(Text(), "l.htm ;");
}

} // namespace
} // namespace kiv
