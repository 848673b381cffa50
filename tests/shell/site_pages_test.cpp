// The pages of a folder and its group, read without a build, and what builds did with them.
#include "shell/builds.h"
#include "shell/page_fates.h"
#include "shell/site_pages.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class SitePagesTest : public ShellTest {
  protected:
    void PutSection(const std::string& folder, const std::string& list)
    {
        Put(folder + "/_template.txt", "<!--BODY HERE-->\r\n");
        Put(folder + "/_html.txt", list);
    }

    void Enter()
    {
        workspace.StartWindow("C:\\site");
        reporter.ForgetWarnings(); // of the editor, which is not there
    }

    /// "number|file|title|path|line" of each page.
    static Texts Listed(const SiteSection& section)
    {
        Texts pages;
        for (const SitePage& page : section.pages)
            pages.push_back(std::to_string(page.listed.number) + '|' + page.listed.file + '|' +
                            page.listed.title + '|' + page.listed.path + '|' +
                            page.listed.where.file + ':' + std::to_string(page.listed.where.line));
        return pages;
    }

    /// Builds, and gives "file: what became of it, warnings" of every page.
    Texts Fates(void (*build)(Workspace&))
    {
        reporter.ForgetWarnings();
        const std::optional<RunError> error = workspace.Run([&] { build(workspace); });
        const BuildTale tale{*workspace.Built, files->WrittenFiles(), reporter.Warnings(),
                             error ? error->text : ""};
        SitePages site = ReadSitePages(workspace);
        fates_.Take(tale, site);
        fates_.AddTo(site);
        Texts told;
        for (const SiteSection& section : site.sections)
            for (const SitePage& page : section.pages)
                told.push_back(section.name + "/" + page.listed.file + ": " + FateText(page) +
                               ", " + std::to_string(page.warnings));
        return told;
    }

  private:
    PageFates fates_;
};

TEST_F(SitePagesTest, AreReadInTheOrderOfTheListWithTheirPlaces)
{
    Put("site/more.txt", "@FILE = tour.html\r\n@TITLE = @@1 tour\r\n");
    PutSection("site", "; a remark\r\n@FILE = index\r\n@TITLE = Welcome\r\ntext\r\n"
                       "@@01= The\r\n++more.txt\r\n@FILE = sub\\deep\r\n@TITLE = Deep\r\n"
                       "@CROSS = for lists alone\r\n");
    Enter();
    const SitePages site = ReadSitePages(workspace);
    ASSERT_THAT(site.sections, SizeIs(1));
    EXPECT_FALSE(site.is_group);
    EXPECT_THAT(Listed(site.sections[0]),
                ElementsAre("1|index.htm|Welcome|C:\\site\\index.htm|C:\\site\\_html.txt:2",
                            "2|tour.html|The tour|C:\\site\\tour.html|C:\\site\\more.txt:1",
                            "3|sub\\deep.htm|Deep|C:\\site\\sub\\deep.htm|C:\\site\\_html.txt:7"));
    EXPECT_EQ(site.sections[0].trouble, "");
}

TEST_F(SitePagesTest, OfAGroupStandBelowTheirFolders)
{
    PutSection("site", "@FILE = index\r\n@TITLE = A\r\n");
    PutSection("site/lab", "@FILE = index\r\n@TITLE = B\r\n");
    Put("site/_group.txt", "lab\r\n\r\ngone\r\n");
    Enter();
    const SitePages site = ReadSitePages(workspace);
    EXPECT_TRUE(site.is_group);
    EXPECT_EQ(site.Count(), 2U);
    ASSERT_THAT(site.sections, SizeIs(3));
    EXPECT_EQ(site.sections[0].name, "site");
    EXPECT_EQ(site.sections[1].name, "lab");
    EXPECT_EQ(site.sections[1].folder, "C:\\site\\lab\\");
    EXPECT_EQ(site.sections[1].pages[0].listed.path, "C:\\site\\lab\\index.htm");
    EXPECT_NE(site.sections[2].trouble, "");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
}

TEST_F(SitePagesTest, ATroubleIsToldAndNothingIsWritten)
{
    Enter();
    EXPECT_EQ(ReadSitePages(workspace).sections[0].trouble,
              "There is no page list, _html.txt, here.");
    Put("site/_html.txt", "text alone\r\n");
    EXPECT_THAT(ReadSitePages(workspace).sections[0].trouble, HasSubstr("names no page"));
    Put("site/_html.txt", "@ASP = made\r\n@FILE = a\r\n@TITLE = A\r\n");
    EXPECT_THAT(ReadSitePages(workspace).sections[0].pages, SizeIs(1));
    EXPECT_FALSE(Exists("site/made"));
    EXPECT_THAT(reporter.Warnings(), IsEmpty());
}

TEST_F(SitePagesTest, TellWhatABuildDid)
{
    PutSection("site", "@FILE = a\r\n@TITLE = A\r\n@FILE = b\r\n@TITLE = B\r\nx !!FLV[p\r\n"
                       "@FILE = A\r\n@TITLE = Again\r\n");
    Enter();
    EXPECT_THAT(Fates(BuildWorkDir),
                ElementsAre("site/a.htm: not written: page 3 goes to the same file, 0",
                            "site/b.htm: new, 1", "site/A.htm: new, 0"));
    PutSection("site", "@FILE = b\r\n@TITLE = B\r\nother\r\n@FILE = A\r\n@TITLE = Again\r\n");
    EXPECT_THAT(Fates(BuildWorkDir),
                ElementsAre("site/b.htm: changed, 0", "site/A.htm: as it was, 0"));
}

TEST_F(SitePagesTest, TellWhyABuildDidNotWriteThem)
{
    PutSection("site", "@FILE = a\r\n@TITLE = A\r\n@FILE = b\r\n@TITLE = B\r\n!++gone.txt\r\n"
                       "@FILE = c\r\n@TITLE = C\r\n");
    Enter();
    const Texts fates = Fates(BuildWorkDir);
    EXPECT_EQ(fates[0], "site/a.htm: new, 0");
    EXPECT_THAT(fates[1], StartsWith("site/b.htm: not written: the build ended before it: "));
    EXPECT_THAT(fates[2], StartsWith("site/c.htm: not written: the build ended before it: "));
}

// Pages of one name in two folders are told apart, also where a warning names the page alone.
TEST_F(SitePagesTest, OfAGroupAreToldByTheirFolders)
{
    PutSection("site", "@FILE = index\r\n@TITLE = A\r\n");
    PutSection("site/lab", "@FILE = index\r\n@TITLE = B\r\nx !!FLV[p\r\n");
    Put("site/_group.txt", "lab\r\n");
    Enter();
    EXPECT_THAT(Fates(BuildGroup), ElementsAre("site/index.htm: new, 0", "lab/index.htm: new, 1"));
    EXPECT_THAT(Fates(BuildWorkDir),
                ElementsAre("site/index.htm: as it was, 0", "lab/index.htm: new, 1"));
}

} // namespace
} // namespace kiv
