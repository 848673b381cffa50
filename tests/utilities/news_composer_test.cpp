#include "utilities/news_composer.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A desk with two sites and the scratch site: 1 has a home page list and the highlight, 2 neither.
class NewsComposer : public testing::Test {
  protected:
    NewsComposer()
    {
        desk.Put("internet/m/news/_html.txt", kList);
        desk.PutFolder("internet/m/news/txt");
        desk.Put("internet/m/_html.txt", "top\r\n;inserthere1\r\nrest");
        desk.Put("internet/plain/_html.txt", kList);
        desk.PutFolder("internet/plain/txt");
        news.settings.presets = {
            {"Museum", "C:\\internet\\m\\news\\", "m", "", "C:\\internet\\m\\", true},
            {"Plain", "C:\\internet\\plain\\", "p", "", "", false},
            {"Scratch", "C:\\temp\\", "", "", "", false},
        };
        news.settings.highlight_name = "Kiv";
        news.editor_command = "edit.exe ";
        news.switchto = [this](std::string_view folder) {
            desk.machine.files.ChangeDirectory(folder);
            switched.emplace_back(folder);
        };
        item.site = 2;
        item.file_name = "pr040504";
        item.date = "D";
        item.title = "T";
        item.newspaper = "N";
        item.byline = "B";
        item.subhead = "S";
        item.text = "x";
        item.as_is = true;
    }

    bool Compose() { return ComposeNews(desk.machine, news, item); }

    static constexpr const char* kList = "a\r\n;inserthere1\r\nb\r\n;inserthere2\r\nc\r\n";
    static constexpr const char* kBang = "!!1[D|pr040504|T|B|N|S]\r\n";
    static constexpr const char* kEntry =
        "@file = pr040504\r\n@title = T\r\n!!2[D|pr040504|T|B|N|S]\r\n++txt\\pr040504.txt\r\n"
        "@@EOY\r\n\r\n";

    UtilityDesk desk;
    NewsDesk news;
    NewsItem item;
    std::vector<std::string> switched;
};

TEST_F(NewsComposer, WritesBodyBangLineAndEntry)
{
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), "x");
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"), std::string("a\r\n;inserthere1\r\n") +
                                                            kBang + "b\r\n;inserthere2\r\n" +
                                                            kEntry + "c\r\n");
    EXPECT_THAT(desk.machine.files.Written(), ElementsAre("C:\\internet\\plain\\txt\\pr040504.txt",
                                                          "C:\\internet\\plain\\_html.txt"));
    EXPECT_THAT(switched, ElementsAre("C:\\internet\\plain\\"));
    EXPECT_THAT(desk.programs.started, IsEmpty()); // only with a home page list
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_THAT(desk.reporter.statuses,
                ElementsAre("News item written to C:\\internet\\plain\\txt\\pr040504.txt; "
                            "C:\\internet\\plain\\_html.txt has its line and its page"));
    EXPECT_THAT(desk.reporter.Warnings(), IsEmpty());
}

TEST_F(NewsComposer, AMarkThatIsNotFoundIsTold)
{
    desk.Put("internet/plain/_html.txt", "a\r\n;inserthere1\nb\r\n");
    EXPECT_TRUE(Compose());
    const std::vector<Warning>& told = desk.reporter.Warnings();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].where.Text(), "C:\\internet\\plain\\_html.txt, line 2");
    EXPECT_EQ(told[0].text, "No CR LF stands right behind \";inserthere1\": the news line is not "
                            "in this list");
    EXPECT_EQ(told[0].hint, "Let the mark end its line, and save the list with the line ends of "
                            "Windows, CR LF.");
    EXPECT_FALSE(told[0].was_shown);
    EXPECT_EQ(told[1].where.Text(), "C:\\internet\\plain\\_html.txt");
    EXPECT_EQ(told[1].hint,
              "Put a line \";inserthere2\" where the page of the item belongs, and save "
              "the list with the line ends of Windows, CR LF.");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

TEST_F(NewsComposer, HomePageListGetsTheBangLineToo)
{
    item.site = 1;
    item.text = "Kiv and kiv and Kiv";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/m/_html.txt"),
              std::string("top\r\n;inserthere1\r\n") + kBang + "rest");
    EXPECT_EQ(desk.Content("internet/m/news/txt/pr040504.txt"),
              "<span class=\"highlighter\">Kiv</span> and kiv and "
              "<span class=\"highlighter\">Kiv</span>");
    EXPECT_THAT(desk.machine.files.Written(),
                ElementsAre("C:\\internet\\m\\news\\txt\\pr040504.txt",
                            "C:\\internet\\m\\news\\_html.txt", "C:\\internet\\m\\_html.txt"));
    EXPECT_THAT(desk.programs.started,
                ElementsAre("edit.exe C:\\internet\\m\\news\\txt\\pr040504.txt",
                            "edit.exe C:\\internet\\m\\news\\_html.txt",
                            "edit.exe C:\\internet\\m\\_html.txt"));
    EXPECT_THAT(desk.programs.files,
                ElementsAre("C:\\internet\\m\\news\\txt\\pr040504.txt",
                            "C:\\internet\\m\\news\\_html.txt", "C:\\internet\\m\\_html.txt"));
}

TEST_F(NewsComposer, AnEditorWithMarksShowsTheHeadOfEachFile)
{
    item.site = 1;
    news.editor_command = "code --goto %f:%l ";
    EXPECT_TRUE(Compose());
    EXPECT_THAT(desk.programs.started,
                ElementsAre("code --goto C:\\internet\\m\\news\\txt\\pr040504.txt:1",
                            "code --goto C:\\internet\\m\\news\\_html.txt:1",
                            "code --goto C:\\internet\\m\\_html.txt:1"));
}

TEST_F(NewsComposer, HighlightIsThePresets)
{
    item.text = "Kiv";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), "Kiv");
    item.site = 1;
    news.settings.highlight_name = "";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/m/news/txt/pr040504.txt"), "Kiv");
}

TEST_F(NewsComposer, HomePageListWithoutMarkerIsWrittenBack)
{
    desk.Put("internet/m/_html.txt", "no marker\n");
    item.site = 1;
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/m/_html.txt"), "no marker\n");
    EXPECT_EQ(desk.machine.files.Written().size(), 3U);
    EXPECT_EQ(desk.Content("internet/m/news/txt/pr040504.txt"), "x");
}

TEST_F(NewsComposer, PageListWithoutMarkers)
{
    desk.Put("internet/plain/_html.txt", "a\r\n");
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"), "a\r\n");
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), kBang + std::string("x"));
}

TEST_F(NewsComposer, BangLineOnTopOfTheTextIsNeitherCleanedNorHighlighted)
{
    desk.Put("internet/m/news/_html.txt", "");
    item.site = 1;
    item.as_is = false;
    item.title = "Kiv - x";
    item.text = "Kiv - x";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/m/news/txt/pr040504.txt"),
              "!!1[D|pr040504|Kiv - x|B|N|S]\r\n"
              "<p> <span class=\"highlighter\">Kiv</span> &mdash; x</p>\r\n");
}

TEST_F(NewsComposer, MarkersNeedTheirLineEnd)
{
    // Before LF alone and at the very end a marker gets nothing, but it counts as one.
    desk.Put("internet/plain/_html.txt", ";inserthere1\n;inserthere2\nx;inserthere1");
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"),
              ";inserthere1\n;inserthere2\nx;inserthere1");
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), "x");
}

TEST_F(NewsComposer, EveryMarkerGetsItsLines)
{
    desk.Put("internet/plain/_html.txt", ";inserthere1\r\nx;inserthere1\r\n;Inserthere1\r\n");
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"), std::string(";inserthere1\r\n") + kBang +
                                                            "x;inserthere1\r\n" + kBang +
                                                            ";Inserthere1\r\n");
}

TEST_F(NewsComposer, OldNewYearSwitchesGo)
{
    desk.Put("internet/plain/_html.txt",
             "@@EOY\r\n\r\n;inserthere2\r\n@@EOY\r\nx\r\n@@EOY\r\n\r\ny\r\n@@eoy\r\n\r\n");
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"),
              std::string(";inserthere2\r\n") + kEntry + "@@EOY\r\nx\r\ny\r\n@@eoy\r\n\r\n");
}

TEST_F(NewsComposer, ASecondItemTakesTheSwitchOfTheFirst)
{
    EXPECT_TRUE(Compose());
    item.file_name = "pr040504b";
    item.title = "";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/_html.txt"),
              std::string("a\r\n;inserthere1\r\n!!1[D|pr040504b||B|N|S]\r\n") + kBang +
                  "b\r\n;inserthere2\r\n"
                  "@file = pr040504b\r\n@title = \r\n!!2[D|pr040504b||B|N|S]\r\n"
                  "++txt\\pr040504b.txt\r\n@@EOY\r\n\r\n"
                  "@file = pr040504\r\n@title = T\r\n!!2[D|pr040504|T|B|N|S]\r\n"
                  "++txt\\pr040504.txt\r\nc\r\n");
}

/// A site that is its own home: one list gets what both would.
class NewsOfOneFolder : public NewsComposer {
  protected:
    /// Composes twice. `home` is another path to the folder of the site.
    void ExpectOneOfEach(const std::string& home)
    {
        news.settings.presets = {{"Site", "C:\\internet\\plain\\", "", "", home, false}};
        item.site = 1;
        EXPECT_TRUE(Compose()) << home;
        const std::string list = std::string("a\r\n;inserthere1\r\n") + kBang + kBang +
                                 "b\r\n;inserthere2\r\n" + kEntry + "c\r\n";
        EXPECT_EQ(desk.Content("internet/plain/_html.txt"), list) << home;
        EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), "x");
        EXPECT_THAT(desk.programs.files,
                    ElementsAre("C:\\internet\\plain\\txt\\pr040504.txt",
                                "C:\\internet\\plain\\_html.txt", home + "_html.txt"));
        EXPECT_FALSE(Compose());
        EXPECT_THAT(desk.reporter.shown, ElementsAre("That file already exists. Try Again."));
        EXPECT_EQ(desk.Content("internet/plain/_html.txt"), list) << home;
    }
};

TEST_F(NewsOfOneFolder, InOneSpelling)
{
    ExpectOneOfEach("C:\\internet\\plain\\");
}

TEST_F(NewsOfOneFolder, InTwoSpellings)
{
    ExpectOneOfEach("c:/Internet/x/../PLAIN/");
}

#ifndef _WIN32
TEST_F(NewsOfOneFolder, ByALink)
{
    std::filesystem::create_directory_symlink("plain", desk.Root() / "internet/home");
    ExpectOneOfEach("C:\\internet\\home\\");
}

TEST_F(NewsOfOneFolder, ByAnotherDrive)
{
    ExpectOneOfEach("Z:" + (desk.Root() / "internet/plain/").string());
}

TEST_F(NewsComposer, OneListForTwoFolders)
{
    std::filesystem::remove(desk.Root() / "internet/m/_html.txt");
    std::filesystem::create_symlink("news/_html.txt", desk.Root() / "internet/m/_html.txt");
    item.site = 1;
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/m/news/_html.txt"),
              std::string("a\r\n;inserthere1\r\n") + kBang + kBang + "b\r\n;inserthere2\r\n" +
                  kEntry + "c\r\n");
}
#endif

TEST_F(NewsOfOneFolder, TakenUpAgain)
{
    desk.Put("internet/plain/txt/pr040504.txt", "x");
    ExpectOneOfEach("C:/internet/plain/");
}

TEST_F(NewsComposer, LeadDoublingCleaning)
{
    item.lead = "Lead";
    item.text = "a\r\nb\n";
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504.txt"), "<b>Lead</b>\r\n\r\na\r\nb\n");

    item.file_name = "pr040504a";
    item.single_spaced = true;
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504a.txt"),
              "<b>Lead</b>\r\n\r\n\r\n\r\na\r\n\r\nb\n");

    item.file_name = "pr040504b";
    item.as_is = false;
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504b.txt"),
              "<p> <b>Lead</b></P>\r\n<P>a</P>\r\n<P>b</p>\r\n");

    item.file_name = "pr040504c";
    item.single_spaced = false;
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("internet/plain/txt/pr040504c.txt"),
              "<p> <b>Lead</b></P>\r\n<P>a b</p>\r\n");
}

TEST(NewsText, Cleaning)
{
    EXPECT_EQ(cleanme(""), "<p></p>\r\n");
    EXPECT_EQ(cleanme(" \t\r\n\r\n"), "<p></p>\r\n");
    EXPECT_EQ(cleanme("\r\n\t a\r\n\r\nb\r\n\r\n"), "<p> a</P>\r\n<P>b</p>\r\n");
    EXPECT_EQ(cleanme("a\nb\rc \x97 d"), "<p> a b c &mdash; d</p>\r\n");
    EXPECT_EQ(cleanme("\x93q\x94 `"), "<p> &ldquo;q&rdquo; '</p>\r\n");
}

TEST_F(NewsComposer, FieldsStandAsTheyAre)
{
    item.subhead = "a|b]";
    EXPECT_TRUE(Compose());
    EXPECT_NE(desk.Content("internet/plain/_html.txt").find("!!1[D|pr040504|T|B|N|a|b]]\r\n"),
              std::string::npos);
}

TEST_F(NewsComposer, UnfinishedFields)
{
    const test::FileTree before = desk.Tree();
    struct Row {
        std::size_t site;
        std::string file_name;
        std::vector<std::string> messages;
    };
    const Row kRows[] = {
        {0, "pr040504", {"Choose a Website"}},
        {4, "pr040504", {"Choose a Website"}},
        {1, "", {"Finish filling in the information"}},
        {0, "", {"Choose a Website", "Finish filling in the information"}},
        {3, "", {"Finish filling in the information"}}, // not even the scratch folders are made
    };
    for (const Row& row : kRows) {
        desk.reporter.shown.clear();
        item.site = row.site;
        item.file_name = row.file_name;
        EXPECT_FALSE(Compose());
        EXPECT_EQ(desk.reporter.shown, row.messages);
    }
    EXPECT_EQ(desk.Tree(), before);
    EXPECT_FALSE(desk.Exists("temp"));
    EXPECT_THAT(switched, IsEmpty());
}

TEST_F(NewsComposer, ABodyFileIsNeverOverwritten)
{
    desk.Put("internet/plain/txt/PR040504.TXT", "old");
    const test::FileTree before = desk.Tree();
    EXPECT_FALSE(Compose());
    EXPECT_THAT(desk.reporter.shown, ElementsAre("That file already exists. Try Again."));
    EXPECT_EQ(desk.Tree(), before);
    EXPECT_THAT(switched, IsEmpty());
}

TEST_F(NewsComposer, ScratchSite)
{
    item.site = 3;
    EXPECT_EQ(KindOf([&] { Compose(); }), "file"); // no page list
    EXPECT_TRUE(desk.Exists("temp/txt"));
    EXPECT_THAT(switched, ElementsAre("C:\\temp\\"));
    EXPECT_THAT(desk.machine.files.Written(), IsEmpty());

    desk.Put("temp/_html.txt", ";inserthere1\r\n");
    EXPECT_TRUE(Compose());
    EXPECT_EQ(desk.Content("temp/_html.txt"), std::string(";inserthere1\r\n") + kBang);
    EXPECT_EQ(desk.Content("temp/txt/pr040504.txt"), "x");
}

TEST_F(NewsComposer, MissingPlacesAreFatal)
{
    namespace fs = std::filesystem;
    item.site = 1;
    fs::remove(desk.Root() / "internet/m/news/txt");
    EXPECT_EQ(KindOf([&] { Compose(); }), "file");
    // All places are looked at before anything is written.
    EXPECT_THAT(desk.machine.files.Written(), IsEmpty());
    EXPECT_EQ(desk.Content("internet/m/news/_html.txt"), kList);

    fs::remove(desk.Root() / "internet/m/news/_html.txt");
    EXPECT_EQ(KindOf([&] { Compose(); }), "file");

    const test::FileTree before = desk.Tree();
    fs::rename(desk.Root() / "internet/m/_html.txt", desk.Root() / "internet/m/x");
    EXPECT_EQ(KindOf([&] { Compose(); }), "file");
    fs::rename(desk.Root() / "internet/m/x", desk.Root() / "internet/m/_html.txt");
    EXPECT_EQ(desk.Tree(), before);

    fs::remove_all(desk.Root() / "internet/plain");
    item.site = 2;
    switched.clear();
    EXPECT_EQ(KindOf([&] { Compose(); }), "file");
    EXPECT_THAT(switched, IsEmpty());
    EXPECT_FALSE(desk.Exists("internet/plain"));
    EXPECT_THAT(desk.programs.started, IsEmpty());
}

TEST(NewsItem, FilledFromItsName)
{
    NewsSettings settings;
    settings.publications = {{"pr", "Press Release"}};
    NewsItem item;
    item.file_name = "pr040504b";
    FillFromName(item, settings);
    EXPECT_EQ(item.date, "April 5, 2004");
    EXPECT_EQ(item.newspaper, "Press Release");
    item.file_name = "other";
    FillFromName(item, settings); // a name that tells nothing takes nothing away
    EXPECT_EQ(item.date, "April 5, 2004");
    EXPECT_EQ(item.newspaper, "Press Release");
}

TEST(NewsItem, SourceString)
{
    NewsItem item;
    item.date = "d";
    item.file_name = "f";
    item.title = "t";
    item.newspaper = "n";
    item.byline = "b";
    item.subhead = "s";
    EXPECT_EQ(SourceString(item), "d|f|t|b|n|s");
    EXPECT_EQ(SourceString({}), "|||||");
}

TEST(NewsItem, GrabSource)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"d|f|t|b|n|s", "d|f|t|b|n|s"},
        {"!!1[d|f|t|b|n|s]", "d|f|t|b|n|s"},
        {"  !!2[ d | f |t|b|n|s ]  \r\nsecond|line", "d|f|t|b|n|s"},
        {"d|f", "d|f||||"},
        {"d|f|t|b|n|s|more", "d|f|t|b|n|s"},
        {"d|f|t|b|n|s]", "d|f|t|b|n|s]"},
        {"!!1[d|f|t|b|n|s", "d|f|t|b|n|s"},
        {"!!x[d]", "!!x[d]|||||"},
        {"", "|||||"},
        {"\r\nd|f", "|||||"},
    };
    for (const auto& [clipboard, source] : kRows) {
        NewsItem item;
        for (std::string NewsItem::*field :
             {&NewsItem::date, &NewsItem::byline, &NewsItem::subhead})
            item.*field = "old";
        item.text = "kept";
        GrabSource(item, clipboard);
        EXPECT_EQ(SourceString(item), source) << clipboard;
        EXPECT_EQ(item.text, "kept");
    }
}

} // namespace
} // namespace kiv
