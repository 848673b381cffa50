// A page as a build would make it, each line with its story.
#include "shell/page_stories.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

class PagesTold : public ShellTest {
  protected:
    void PutSite(const std::string& page_list)
    {
        Put("site/_template.txt", "<b>@TITLE</b>\r\n<!--BODY HERE-->\r\n");
        Put("site/_html.txt", page_list);
        workspace.switchto("C:\\site");
    }

    /// "3 _html.txt:6 Bye", "3 - Bye" without a source.
    static Texts LinesOf(const PageStories& page)
    {
        Texts lines;
        for (const PageLine& line : page.lines) {
            const std::vector<ToldPlace>& sources = page.stories[line.story].sources;
            const std::string file = sources.empty() ? "-" : sources[0].file.substr(8);
            const std::string at = sources.empty() ? "" : ":" + std::to_string(sources[0].first);
            lines.push_back(std::to_string(line.number) + " " + file + at + " " + line.text);
        }
        return lines;
    }

    const std::string two_pages_ = "@FILE = a\r\n@TITLE = One\r\nHello @TITLE\r\n"
                                   "@FILE = b\r\n@TITLE = Two\r\nBye\r\n";
};

TEST_F(PagesTold, ThePageAskedForAndTheNamesOfAll)
{
    PutSite(two_pages_);
    const PageStories told = TellPage(workspace, "c:\\SITE\\b.htm");
    EXPECT_THAT(told.pages, ElementsAre(BuiltPage{"a.htm", "C:\\site\\a.htm"},
                                        BuiltPage{"b.htm", "C:\\site\\b.htm"}));
    EXPECT_EQ(told.page.path, "C:\\site\\b.htm");
    EXPECT_EQ(told.folder, "C:\\site\\");
    EXPECT_EQ(told.trouble, "");
    EXPECT_EQ(LinesOf(told), (Texts{"1 _template.txt:1 <b>Two</b>",
                                    "2 _template.txt:2 <!--BODY HERE-->", "3 _html.txt:6 Bye"}));
    const PageStory& title = told.stories[told.lines[0].story];
    EXPECT_EQ(title.before, "<b>@TITLE</b>");
    ASSERT_EQ(title.steps.size(), 1U);
    EXPECT_EQ(title.steps[0].name, "@TITLE");
    EXPECT_EQ(title.steps[0].after, "<b>Two</b>");
    ASSERT_TRUE(title.steps[0].from);
    EXPECT_EQ(title.steps[0].from->file, "C:\\site\\_html.txt");
    EXPECT_EQ(title.steps[0].from->first, 5);
}

TEST_F(PagesTold, TheFirstPageWhenThereIsNoneOfThatPath)
{
    PutSite(two_pages_);
    for (const char* const path : {"", "C:\\site\\gone.htm", "b.htm"}) {
        const PageStories told = TellPage(workspace, path);
        EXPECT_EQ(told.page.name, "a.htm") << path;
        EXPECT_EQ(told.lines.size(), 3U) << path;
        EXPECT_EQ(told.lines[2].text, "Hello One") << path;
    }
}

TEST_F(PagesTold, LinesThatAreMadeTogetherShareAStory)
{
    PutSite("@FILE = a\r\n@TITLE = One\r\n<zutable>\r\nx\ty\r\n</zutable>\r\nend\r\n");
    const PageStories told = TellPage(workspace, "");
    ASSERT_GT(told.lines.size(), 4U);
    const PageLine& first = told.lines[2];
    const PageLine& second = told.lines[3];
    EXPECT_EQ(first.story, second.story);
    EXPECT_EQ(first.of_story, 1);
    EXPECT_EQ(second.of_story, 2);
    const PageStory& table = told.stories[first.story];
    EXPECT_EQ(table.count, static_cast<int>(told.lines.size()) - 3);
    EXPECT_THAT(table.before, StartsWith("<zutable>\r\nx\ty\r\n"));
    EXPECT_THAT(LinesOf(told).back(), EndsWith(" _html.txt:6 end"));
}

TEST_F(PagesTold, APageThatIsWrittenTwiceIsToldAsItStaysAndListedOnce)
{
    PutSite("@FILE = a\r\n@TITLE = One\r\nfirst\r\n@FILE = a\r\n@TITLE = Two\r\nsecond\r\n");
    const PageStories told = TellPage(workspace, "");
    EXPECT_THAT(told.pages, ElementsAre(BuiltPage{"a.htm", "C:\\site\\a.htm"}));
    EXPECT_EQ(LinesOf(told).back(), "3 _html.txt:6 second");
}

TEST_F(PagesTold, WhatAFailingBuildMadeBefore)
{
    PutSite(two_pages_ + "<>\r\n!++gone.htm\r\nnever\r\n@FILE = c\r\n@TITLE = C\r\n");
    const PageStories told = TellPage(workspace, "C:\\site\\b.htm");
    EXPECT_EQ(told.pages.size(), 2U);
    EXPECT_EQ(LinesOf(told).back(), "0 _html.txt:8 !++gone.htm");
    EXPECT_EQ(LinesOf(told)[2], "3 _html.txt:6 Bye");
    EXPECT_THAT(told.stories.back().reason, StartsWith("an error ended the build here: "));
    EXPECT_THAT(told.trouble, StartsWith("The build ended in an error: cannot read "
                                         "C:\\site\\gone.htm: "));
    EXPECT_THAT(told.trouble, EndsWith(" (C:\\site\\_html.txt, line 8, page b.htm). "
                                       "Nothing has this name: look at its spelling, and whether "
                                       "it was moved. What it had made by then is shown."));
    EXPECT_EQ(TellPage(workspace, "C:\\site\\a.htm").lines.size(), 3U);
}

TEST_F(PagesTold, AFailureBeforeAnyPage)
{
    std::string page_list;
    for (int page = 1; page <= 1001; ++page) // one too many
        page_list += "@FILE = a\r\n@TITLE = A\r\n";
    PutSite(page_list);
    const PageStories told = TellPage(workspace, "");
    EXPECT_THAT(told.pages, IsEmpty());
    EXPECT_THAT(told.lines, IsEmpty());
    EXPECT_THAT(told.trouble, StartsWith("The build ended in an error: "));
    EXPECT_THAT(
        told.trouble,
        EndsWith(" (C:\\site\\_html.txt, line 2001). A page list has room for 999 pages, and for "
                 "40000 lines with all that it includes: move some of its pages into a "
                 "section of their own, a folder with its own page list."));
}

TEST_F(PagesTold, AFolderWithoutPages)
{
    const PageStories told = TellPage(workspace, "");
    EXPECT_THAT(told.pages, IsEmpty());
    EXPECT_EQ(told.page.path, "");
    EXPECT_EQ(told.trouble, "No page is made here: OOPS! Missing _html.txt, _template.txt");
    PutSite("");
    EXPECT_EQ(TellPage(workspace, "").trouble, "No page is made here.");
}

TEST_F(PagesTold, NothingIsWrittenAndNobodyIsTold)
{
    PutSite("@ASP = asp\r\n" + two_pages_ + "x !!FLV[p\r\n"); // that last line is warned of
    workspace.Roots.asp = "as it was";
    const test::FileTree before = test::ReadTree(Root());
    TellPage(workspace, "");
    EXPECT_EQ(test::ReadTree(Root()), before);
    EXPECT_THAT(reporter.shown, IsEmpty());
    EXPECT_THAT(reporter.Warnings(), IsEmpty());
    EXPECT_EQ(reporter.statuses.size(), 0U);
    EXPECT_EQ(workspace.Roots.asp, "as it was");
    EXPECT_THAT(programs.started, IsEmpty());
}

TEST_F(PagesTold, SeesWhatHasChangedSince)
{
    PutSite("++more.txt\r\n" + two_pages_);
    TellPage(workspace, "");
    Put("site/MORE.TXT", "; a remark\r\n");
    EXPECT_EQ(TellPage(workspace, "").page.name, "a.htm");
    Put("site/_html.txt", "@FILE = z\r\n@TITLE = Z\r\n");
    EXPECT_EQ(TellPage(workspace, "").page.name, "z.htm");
}

} // namespace
} // namespace kiv
