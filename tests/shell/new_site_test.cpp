// A site that is begun: what is made, what is left alone, and what is told.
#include "shell/new_site.h"

#include "shell_desk.h"
#include "tests/support/failing_files.h"
#include "text/text.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class NewSites : public ShellTest {
  protected:
    BegunSite Begin(const NewSite& wanted = {}, const std::string& folder = "C:\\site")
    {
        BegunSite site;
        EXPECT_EQ(KindOf([&] { site = BeginSite(machine, folder, wanted); }), "");
        return site;
    }

    static Texts LinesOf(const BegunSite& site)
    {
        Texts lines;
        for (const MissingLine& missing : site.missing_lines)
            lines.push_back(missing.file + ": " + missing.line);
        return lines;
    }

    const NewSite everything{.has_news = true, .section = "old-boats"};
};

TEST_F(NewSites, FourFilesAreASite)
{
    const BegunSite site = Begin();
    EXPECT_THAT(NamesIn("site"),
                ElementsAre("_html.txt", "_template.txt", "hills.svg", "style.css"));
    // The page list comes last: without it nothing is begun.
    EXPECT_THAT(site.made, ElementsAre("C:\\site\\style.css", "C:\\site\\hills.svg",
                                       "C:\\site\\_template.txt", "C:\\site\\_html.txt"));
    EXPECT_THAT(site.kept, IsEmpty());
    EXPECT_THAT(site.missing_lines, IsEmpty());
    EXPECT_FALSE(site.has_group);
    EXPECT_EQ(site.news_site, 0U);
    EXPECT_EQ(reporter.status, "4 files made");
    EXPECT_THAT(reporter.shown, IsEmpty());
    EXPECT_EQ(NamesIn("utils"), Texts());
}

TEST_F(NewSites, LinesEndInCrLfAndNoEditorTakesThemForAnotherCodePage)
{
    Begin(everything);
    int looked_at = 0;
    for (const auto& [name, bytes] : test::ReadTree(Root())) {
        ++looked_at;
        std::string without_ends = bytes;
        ReplaceEach(without_ends, "\r\n", "");
        EXPECT_TRUE(bytes.ends_with("\r\n")) << name;
        EXPECT_EQ(without_ends.find_first_of("\r\n"), npos) << name;
        EXPECT_TRUE(std::ranges::all_of(bytes, [](char c) { return c >= 0; })) << name;
    }
    EXPECT_EQ(looked_at, 12);
}

TEST_F(NewSites, TheFolderIsMadeAndGivesTheName)
{
    Begin({}, "C:\\sites\\old mill_lane");
    EXPECT_THAT(Content("sites/old mill_lane/_html.txt"), HasSubstr("\r\n@@1 = Old mill lane\r\n"));
    Begin({}, "C:\\sites\\a+b"); // no name that would do as text on any page
    EXPECT_THAT(Content("sites/a+b/_html.txt"), HasSubstr("\r\n@@1 = My site\r\n"));
}

TEST_F(NewSites, WhatIsThereIsNotTouched)
{
    Put("site/style.css", "p {}\n");
    Put("site/_template.txt", "mine\n");
    const BegunSite site = Begin();
    EXPECT_EQ(Content("site/style.css"), "p {}\n");
    EXPECT_EQ(Content("site/_template.txt"), "mine\n");
    EXPECT_THAT(site.made, ElementsAre("C:\\site\\hills.svg", "C:\\site\\_html.txt"));
    EXPECT_THAT(site.kept, ElementsAre("C:\\site\\style.css", "C:\\site\\_template.txt"));
    EXPECT_EQ(reporter.status, "2 files made");
    EXPECT_THAT(reporter.shown,
                ElementsAre("There already, and left as it is: style.css, _template.txt"));
}

TEST_F(NewSites, ASiteGetsNothingMore)
{
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n");
    Put("site/_template.txt", ";\n");
    EXPECT_THAT(Begin().made, IsEmpty());
    EXPECT_THAT(NamesIn("site"), ElementsAre("_html.txt", "_template.txt"));
    EXPECT_EQ(reporter.status, "Nothing made: all of it is there already");
    EXPECT_THAT(reporter.shown,
                ElementsAre("There already, and left as it is: _html.txt, _template.txt"));
}

TEST_F(NewSites, ASectionHasItsSiteMapBeforeTheFirstBuild)
{
    const BegunSite site = Begin({.section = "shop"});
    EXPECT_TRUE(site.has_group);
    EXPECT_EQ(Content("site/_group.txt"), "shop\r\n");
    EXPECT_THAT(NamesIn("site/shop"), ElementsAre("_html.txt", "_sitemap.txt", "_template.txt"));
    EXPECT_EQ(Content("site/shop/_sitemap.txt"), "index.htm\">Shop</A></LI>\r\n"
                                                 "<ul class=\"sub\">\r\n"
                                                 "more.htm\">More</A></LI>\r\n"
                                                 "</ul>\r\n");
    EXPECT_THAT(Content("site/_sitemap.txt"), HasSubstr("sitemap.htm\">Site map</A></LI>\r\n"));
    EXPECT_THAT(Content("site/_html.txt"), HasSubstr("\r\n<!--SITEMAPHERE-->\r\n"));
    EXPECT_THAT(Content("site/_template.txt"),
                HasSubstr("\r\n<li><a href=\"shop/index.htm\">Shop</a></li>\r\n"));
}

TEST_F(NewSites, TheNewsAreReadyForTheComposer)
{
    const BegunSite site = Begin({.has_news = true});
    EXPECT_EQ(site.news_site, 1U);
    EXPECT_TRUE(Exists("site/news/txt"));
    EXPECT_EQ(Content("site/_group.txt"), "news\r\n");
    EXPECT_THAT(Content("site/news/_html.txt"),
                testing::EndsWith("\r\n;inserthere1\r\n;\r\n;inserthere2\r\n"));
    EXPECT_EQ(Content("utils/kivnews.ini"),
              ";label|folder|tag|reminder|home folder|highlight\r\n"
              "Site|C:\\site\\news\\||Names: pr, then month, day and year, such as pr030504||\r\n"
              "Scratch|C:\\temp\\||||\r\n");
}

TEST_F(NewSites, SectionsThatComeLaterTellTheLinesThatAreMissing)
{
    Begin();
    Put("site/_group.txt", "boats\r\n");
    Put("utils/kivnews.ini", "Boats|C:\\boats\\\r\n");
    const BegunSite site = Begin(everything);
    const std::string menu = "C:\\site\\_template.txt: <li><a href=\"";
    EXPECT_THAT(LinesOf(site),
                ElementsAre(menu + "old-boats/index.htm\">Old boats</a></li>",
                            "C:\\site\\_group.txt: old-boats",
                            menu + "news/index.htm\">News</a></li>", "C:\\site\\_group.txt: news",
                            "C:\\site\\_html.txt: <!--SITEMAPHERE-->",
                            "c:\\utils\\kivnews.ini: Site|C:\\site\\news\\||Names: pr, then "
                            "month, day and year, such as pr030504||"));
    EXPECT_EQ(site.news_site, 2U);
    EXPECT_EQ(Content("site/_group.txt"), "boats\r\n");
    EXPECT_EQ(Content("utils/kivnews.ini"), "Boats|C:\\boats\\\r\n");
    EXPECT_THAT(reporter.shown, testing::Contains("Please add this line: news"));
    EXPECT_EQ(reporter.Warnings().back().where.file, "c:\\utils\\kivnews.ini");
    EXPECT_EQ(reporter.Warnings().back().hint,
              "Put it at the end, so that the news composer knows the site.");
}

TEST_F(NewSites, LinesThatAreThereAreNotAskedFor)
{
    Begin(everything);
    Put("utils/kivnews.ini", "Boats|C:\\boats\\\r\nNews|c:\\SITE\\news\r\n");
    Put("site/_group.txt", "NEWS\nOld-Boats\\");
    const BegunSite again = Begin(everything);
    EXPECT_THAT(again.made, IsEmpty());
    EXPECT_THAT(LinesOf(again), IsEmpty());
    EXPECT_EQ(again.news_site, 2U);
}

TEST_F(NewSites, ASecondRunChangesNotEvenATime)
{
    namespace fs = std::filesystem;
    Begin(everything);
    const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    for (const auto& [name, bytes] : test::ReadTree(Root()))
        fs::last_write_time(Root() / name, long_ago);
    files->Refresh();
    EXPECT_THAT(Begin(everything).made, IsEmpty());
    EXPECT_THAT(files->Written(), IsEmpty());
    for (const auto& [name, bytes] : test::ReadTree(Root()))
        EXPECT_LT(fs::last_write_time(Root() / name), long_ago + std::chrono::hours(1)) << name;
}

TEST_F(NewSites, ASectionOfSomebodysOwnGetsNoSiteMap)
{
    Put("site/shop/_html.txt", "@FILE = a\n@TITLE = A\n");
    Begin({.section = "shop"});
    EXPECT_THAT(NamesIn("site/shop"), ElementsAre("_html.txt", "_template.txt"));
}

TEST_F(NewSites, ASectionThatAMapShowsAndThatHasNoneIsBuiltFirst)
{
    Put("site/shop/_html.txt", "@FILE = a\n@TITLE = A\n");
    EXPECT_THAT(Begin({.section = "shop"}).build_first, ElementsAre("C:\\site\\shop"));
    Put("site/shop/_sitemap.txt", "a.htm\">A</A></LI>\n");
    EXPECT_THAT(Begin({.section = "shop"}).build_first, IsEmpty());
    EXPECT_THAT(Begin(everything, "C:\\other").build_first, IsEmpty());
}

TEST_F(NewSites, ATemplateTellsWhatAListOfSomebodysOwnMustDefine)
{
    const std::string page = "@FILE = a\n@TITLE = A\n";
    Put("site/_html.txt", page);
    Put("site/shop/_html.txt", page);
    Put("site/news/_html.txt", page + ";@@1 = no\n;inserthere1\n;inserthere2\n");
    EXPECT_THAT(LinesOf(Begin({.has_news = true, .section = "shop"})),
                testing::IsSupersetOf({"C:\\site\\_html.txt: @@1 = Site",
                                       "C:\\site\\shop\\_html.txt: @@1 = Site",
                                       "C:\\site\\shop\\_html.txt: @@2 = Shop",
                                       "C:\\site\\news\\_html.txt: @@1 = Site"}));
    Put("mill/_html.txt", "@@1 = The mill\r\n" + page);
    EXPECT_THAT(LinesOf(Begin({}, "C:\\mill")), IsEmpty());
}

TEST_F(NewSites, SectionsHaveTheNameAndTheCharacterSetOfTheSite)
{
    struct Row {
        const char* name;
        const char* frame;
        const char* first_line;
        const char* charset;
    };
    const Row rows[] = {
        {"none", "<title>@TITLE</title>", "@@1 = None", "charset=windows-1252\""},
        {"shown", "<meta charset=\"utf-8\"><title>@TITLE - @@1</title>", "@@1 = The Mill",
         "charset=utf-8\""},
        {"other", "<meta CHARSET=ISO-8859-1><title>@TITLE</title>@@1", "@@1 = Other",
         "charset=ISO-8859-1\""},
        {"empty", "<meta charset=\"\"><title>@@1</title>", "@@1 = The Mill",
         "charset=windows-1252\""},
    };
    for (const Row& row : rows) {
        const std::string below = row.name;
        Put(below + "/_html.txt", "@@1 = Old\r\n@@1 = The Mill\r\n@FILE = a\r\n@TITLE = A\r\n");
        Put(below + "/_template.txt", row.frame);
        Begin({.has_news = true, .section = "shop"}, "C:\\" + below);
        for (const std::string folder : {"/shop", "/news"}) {
            EXPECT_THAT(Content(below + folder + "/_html.txt"),
                        HasSubstr(std::string("\r\n") + row.first_line + "\r\n"))
                << below << folder;
            EXPECT_THAT(Content(below + folder + "/_template.txt"), HasSubstr(row.charset))
                << below << folder;
        }
    }
}

TEST_F(NewSites, ASectionsNameIsAPartOfAddresses)
{
    for (const char* const name : {"shop", "Old-boats", "a_1"})
        EXPECT_EQ(SectionNameFault(name), "") << name;
    for (const char* const name :
         {"", "a b", "a/b", "a\\b", "..", "caf\xE9", "a|b", ";a", "con.txt"})
        EXPECT_THAT(SectionNameFault(name), HasSubstr("part of addresses")) << name;
    for (const char* const name : {"news", "News", "press"})
        EXPECT_THAT(SectionNameFault(name), HasSubstr("--news")) << name;
    for (const char* const name : {"con", "NUL", "Prn", "aux", "com1", "LPT9", "com0"})
        EXPECT_THAT(SectionNameFault(name), HasSubstr("for a device")) << name;
    for (const char* const name : {"cons", "com", "com10", "lpta", "auxiliary"})
        EXPECT_EQ(SectionNameFault(name), "") << name;
    for (const char* const name : {"-shop", "_shop", "-"})
        EXPECT_THAT(SectionNameFault(name), HasSubstr("begin it with a letter")) << name;
    EXPECT_EQ(SectionNameFault(std::string(255, 'a')), "");
    EXPECT_THAT(SectionNameFault(std::string(256, 'a')), HasSubstr("too long"));
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\site", {.section = "a b"}); }),
              "invalid-argument");
    EXPECT_EQ(NamesIn("site"), Texts());
}

TEST_F(NewSites, WhatIsInTheWayIsAnErrorBeforeAnythingIsWritten)
{
    Put("site/news", "a file");
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\site", {.has_news = true}); }), "file");
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\site\\news\\below", {}); }), "file");
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "Q:\\site", {}); }), "file");
    EXPECT_EQ(NamesIn("site"), Texts{"news"});
    PutFolder("other/_html.txt");
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\other", {}); }), "file");
    EXPECT_EQ(NamesIn("other"), Texts{"_html.txt"});
}

TEST_F(NewSites, APageThatIsThereIsNotGivenAListThatWritesOverIt)
{
    Put("site/index.htm", "by hand");
    Put("whole/shop/more.htm", "by hand");
    const auto words = [&](const char* folder, const NewSite& wanted) -> std::string {
        try {
            BeginSite(machine, folder, wanted);
        } catch (const RunError& error) {
            return error.text;
        }
        return "";
    };
    EXPECT_EQ(words("C:\\site", {}),
              "cannot begin a site here: C:\\site\\index.htm is there already");
    EXPECT_EQ(NamesIn("site"), Texts{"index.htm"});
    EXPECT_EQ(words("C:\\whole", {.section = "shop"}),
              "cannot begin a site here: C:\\whole\\shop\\more.htm is there already");
    EXPECT_EQ(NamesIn("whole"), Texts{"shop"});
    // With a list of its own the page is that list's.
    Put("site/_html.txt", "@FILE = index\r\n");
    files->Refresh();
    EXPECT_EQ(words("C:\\site", {}), "");
}

TEST_F(NewSites, AListOfNewsSitesThatIsFullIsAnErrorBeforeAnythingIsMade)
{
    std::string presets;
    for (int i = 0; i < 19; ++i)
        presets += "a|C:\\a\\\r\n";
    Put("utils/kivnews.ini", presets);
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\site", everything); }), "subscript");
    EXPECT_EQ(NamesIn("site"), Texts());
}

#ifndef _WIN32
TEST_F(NewSites, ALinkToNothingIsNotWrittenThrough)
{
    namespace fs = std::filesystem;
    for (const char* const name : {"_html.txt", "style.css", "shop"}) {
        const fs::path site = Root() / "linked";
        fs::create_directory(site);
        fs::create_symlink(Root() / "outside", site / name);
        files->Refresh();
        EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\linked", {.section = "shop"}); }), "file")
            << name;
        EXPECT_FALSE(Exists("outside")) << name;
        EXPECT_FALSE(Exists("linked/_template.txt")) << name;
        fs::remove_all(site);
    }
}

TEST_F(NewSites, ALineEndInThePathCannotStandInTheListOfNewsSites)
{
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\a\nb", {.has_news = true}); }),
              "invalid-argument");
    EXPECT_FALSE(Exists("utils/kivnews.ini"));
}

TEST_F(NewSites, ABarInThePathCannotStandInTheListOfNewsSites)
{
    EXPECT_EQ(KindOf([&] { BeginSite(machine, "C:\\a|b", {.has_news = true}); }),
              "invalid-argument");
    EXPECT_FALSE(Exists("a|b"));
    Begin({.section = "shop"}, "C:\\a|b");
    EXPECT_TRUE(Exists("a|b/shop/_html.txt"));
}
#endif

/// Cut short at any step, a run leaves whole files and says how far it came; the next one does the
/// rest.
TEST_F(NewSites, ARunThatIsCutShortIsFinishedByTheNext)
{
    Begin(everything, "C:\\whole");
    const test::FileTree whole = test::ReadTree(Native("whole"));
    bool has_failed = true;
    int partly_made = 0;
    for (int step = 0; has_failed; step += 3) { // each takes the disk its time
        const std::string folder = "C:\\cut" + std::to_string(step);
        test::FailingFiles failing(*files, step);
        Machine failing_machine{failing, *files, clock, clipboard, programs, reporter, pictures};
        reporter.status.clear();
        workspace.Run([&] { BeginSite(failing_machine, folder, everything); });
        has_failed = failing.Failed();
        const std::string below = folder.substr(3);
        const std::size_t made = test::ReadTree(Native(below)).size();
        if (has_failed && made > 0 && made < whole.size()) {
            ++partly_made;
            EXPECT_THAT(reporter.status, testing::MatchesRegex("Begun but not finished: .* made"));
        }
        Begin(everything, folder);
        test::FileTree expected = whole;
        for (const char* const list : {"_html.txt", "news/_html.txt", "old-boats/_html.txt"})
            ReplaceEach(expected[list], "@@1 = Whole", "@@1 = Cut" + std::to_string(step));
        EXPECT_EQ(test::Differences(expected, test::ReadTree(Native(below))), "") << step;
    }
    EXPECT_GT(partly_made, 2);
}

} // namespace
} // namespace kiv
