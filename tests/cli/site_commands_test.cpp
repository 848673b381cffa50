// The commands that work on a site section, and the news composer.
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::HasSubstr;

class SiteCommands : public CliTest {
  protected:
    SiteCommands()
    {
        Put("site/_template.txt", ";\n");
        Put("site/_html.txt", "@FILE = index\n@TITLE = T\n\ntext\n@@EOY\nnew year\n@@EOY\n");
    }

    /// A call of `news` for the scratch site.
    Json News(const Texts& options)
    {
        Texts call = {"news", "--site", "1", "--text", Native("article.txt").string()};
        call.insert(call.end(), options.begin(), options.end());
        return Report(call);
    }
};

TEST_F(SiteCommands, Build)
{
    EXPECT_EQ(Call({"build", "C:\\site"}).code, 0);
    const std::string plain = Content("site/index.htm");
    EXPECT_EQ(Call({"build", "C:\\site", "--eoy"}).code, 0);
    EXPECT_NE(Content("site/index.htm"), plain);
}

/// A page that is written over what the build or the program goes by is told without being asked.
TEST_F(SiteCommands, APageInAnOwnPlaceIsToldOnStandardError)
{
    Put("site/_html.txt",
        "@FILE = index\n@TITLE = T\n$$9[x\n$$9[y\n@FILE = _html.txt\n@TITLE = U\n");
    const std::string list = Content("site/_html.txt");
    const Printed printed = Call({"build", "C:\\site"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out, "2 files written\n4 of 4 files changed\n");
    const std::string place = NativeOf("site/_html.txt");
    EXPECT_EQ(printed.err,
              place + ":3: warning: Missing closed bracket: x (page index.htm)\n    $$9[x\n" +
                  place + ":4: warning: Missing closed bracket: y (page index.htm)\n    $$9[y\n" +
                  place +
                  ":5: warning: The page \"_html.txt\" is written over a source of this build: "
                  "C:\\site\\_html.txt (page _html.txt)\n    @FILE = _html.txt\n");
    Put("site/_html.txt", list);
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(report["messages"], Json::Parse(R"(["Missing closed bracket: x"])"));
    EXPECT_EQ(report["warnings"].Size(), 3U);
}

#ifndef _WIN32
TEST_F(SiteCommands, AnOwnPlaceIsOneByWhateverPath)
{
    namespace fs = std::filesystem;
    const std::string settings = "is written over a settings file of kiv";
    const std::string source = "is written over a source of this build";
    Put("utils/kivnews.ini", ";\n");
    Put("site/menu.txt", "menu\n");
    fs::create_directory_symlink("utils", Root() / "shortcut");
    fs::create_symlink("utils/kivnews.ini", Root() / "news.txt");
    fs::create_directory_symlink("site", Root() / "same");
    fs::create_symlink("menu.txt", Root() / "site/linked.txt");
    const std::pair<std::string, std::string> pages[] = {
        {"Z:" + Root().string() + "/utils/kiv_editpad.txt", settings},
        {"C:\\shortcut\\kiv_editpad.txt", settings},
        {"C:\\news.txt", settings},
        {"C:\\same\\_HTML.txt", source},
        {"menu.txt", source},
        {"C:\\utils\\other.txt", ""},
    };
    for (const auto& [page, told] : pages) {
        Put("site/_html.txt", "++linked.txt\n@FILE = " + page + "\n@TITLE = T\n");
        const Printed printed = Call({"build", "C:\\site"});
        EXPECT_EQ(printed.code, 0) << page;
        if (told.empty())
            EXPECT_EQ(printed.err, "") << page;
        else
            EXPECT_THAT(printed.err, HasSubstr(told)) << page;
        Put("site/menu.txt", "menu\n");
    }
}
#endif

TEST_F(SiteCommands, Group)
{
    Put("site/_group.txt", "a");
    Put("site/a/_template.txt", ";\n");
    Put("site/a/_html.txt", "@FILE = a\n@TITLE = T\n");
    const Json report = Report({"group", "C:\\site"});
    EXPECT_EQ(report["status"], "1 files written");
    EXPECT_EQ(report["files"], Json::Parse(R"(["C:\\site\\index.htm", "C:\\site\\_toc.txt",
                              "C:\\site\\_sitemap.txt", "C:\\site\\a\\a.htm",
                              "C:\\site\\a\\_toc.txt", "C:\\site\\a\\_sitemap.txt"])"));
    const std::string with_new_year = Content("site/index.htm");
    Call({"build", "C:\\site", "--eoy"});
    EXPECT_EQ(Content("site/index.htm"), with_new_year);
}

TEST_F(SiteCommands, SiteMap)
{
    EXPECT_EQ(Report({"sitemap", "C:\\site"})["files"], Json::Parse("[]"));
    Put("site/_sitemap.txt", "own\r\n");
    Put("site/_group.txt", "a\r\n");
    EXPECT_EQ(KindOf(Report({"sitemap", "C:\\site"})), "file");
    Put("site/a/_sitemap.txt", "ay\r\n");
    const Json report = Report({"sitemap", "C:\\site"});
    EXPECT_EQ(report["status"], "");
    EXPECT_EQ(report["files"], Json::Parse(R"(["C:\\site\\_sitemap-master.txt"])"));
    EXPECT_EQ(report["launched"],
              Json::Parse(R"(["c:\\utils\\editpad.exe C:\\site\\_sitemap-master.txt"])"));
}

TEST_F(SiteCommands, Grab)
{
    Put("site/Index.HTM", "<title>One</title>\n<body>\ntext\n</body>\n");
    const std::string head = "@file = index.htm\r\n@title = One\r\n";
    EXPECT_EQ(Call({"grab", "C:\\site"}).out, "Grab titles done\n");
    EXPECT_EQ(Content("site/grabtitles.txt"), head + "\r\n");
    EXPECT_EQ(Call({"grab", "C:\\site", "--redirect"}).out, "Grab titles && redirect done\n");
    EXPECT_EQ(Content("site/grabtitles.txt"), head + "@redirect|..\\index.htm\r\n\r\n");
    EXPECT_EQ(Call({"grab", "--all", "C:\\site"}).out, "Grab titles done\n");
    EXPECT_EQ(Content("site/grabtitles.txt"),
              head + "<title>One</title>\r\n<body>\r\ntext\r\n</body>\r\n\r\n");
    EXPECT_EQ(Call({"grab", "C:\\site", "--trimmed", "--redirect"}).out,
              "Grab titles && redirect done\n");
    EXPECT_EQ(Content("site/grabtitles.txt"),
              head + "@redirect|..\\index.htm\r\ntext\r\n</body>\r\n\r\n");
}

TEST_F(SiteCommands, Pictures)
{
    Put("site/images/a.gif", std::string("GIF89a\x08\0\x06\0", 10) + std::string(8, '\0'));
    const Json none = Report({"pictures", "C:\\site", "--folder", "pics"});
    EXPECT_EQ(none["messages"], Json::Parse(R"(["There is no Images subdirectory. Aborting"])"));
    EXPECT_EQ(none["status"], "");
    const Json report = Report({"pictures", "C:\\site", "--folder", "images"});
    EXPECT_EQ(report["status"], "sizer done. piclist.txt created.");
    EXPECT_EQ(report["files"][0], "C:\\site\\images\\_alt.txt");
    EXPECT_EQ(report["launched"], Json::Parse(R"(["c:\\utils\\editpad.exe _alt.txt",
                                                  "c:\\utils\\editpad.exe _piclist.txt"])"));
    EXPECT_EQ(Report({"pictures", "C:\\site", "--folder", ""})["files"][0], "C:\\site\\_alt.txt");
    Put("site/b.jpg", "no picture");
    const Json failed = Report({"pictures", "C:\\site"});
    EXPECT_EQ(KindOf(failed), "picture");
    EXPECT_EQ(failed["status"], "b.jpg");
}

TEST_F(SiteCommands, NewsTakesDateAndNewspaperFromTheName)
{
    Put("temp/_html.txt", ";inserthere1\r\n;inserthere2\r\n");
    Put("article.txt", "words");
    EXPECT_EQ(KindOf(News({"--name", "pr040504", "--title", "T", "--byline", "B"})), "");
    EXPECT_THAT(Content("temp/_html.txt"),
                HasSubstr(";inserthere1\r\n!!1[April 5, 2004|pr040504|T|B|Press Release|]\r\n"));
    EXPECT_EQ(Content("temp/txt/pr040504.txt"), "<p> words</p>\r\n");
    // What is given counts, also when it is empty.
    EXPECT_EQ(KindOf(News({"--name", "pr040505", "--date", "", "--newspaper", "Caf\xC3\xA9",
                           "--subhead", "S", "--as-is"})),
              "");
    EXPECT_THAT(Content("temp/_html.txt"), HasSubstr("!!1[|pr040505|||Caf\xE9|S]\r\n"));
    EXPECT_EQ(Content("temp/txt/pr040505.txt"), "words");
}

TEST_F(SiteCommands, NewsReadsItsFilesFirst)
{
    EXPECT_EQ(KindOf(News({"--name", "a"})), "file"); // no article
    Put("article.txt", "words");
    EXPECT_EQ(KindOf(News({"--name", "a", "--lead", "/no/such"})), "file");
    const Json none = News({"--name", "", "--site", "7"});
    EXPECT_EQ(none["messages"],
              Json::Parse(R"(["Choose a Website", "Finish filling in the information"])"));
    EXPECT_TRUE(none["error"].IsNull());
    for (const char* site : {"0", "-1", "99999999999999999999"})
        EXPECT_EQ(News({"--name", "a", "--site", site})["messages"],
                  Json::Parse(R"(["Choose a Website"])"))
            << site;
    EXPECT_FALSE(Exists("temp"));
}

TEST_F(SiteCommands, NewsWithALead)
{
    Put("temp/_html.txt", ";inserthere1\r\n");
    Put("article.txt", "one\r\ntwo");
    Put("lead.txt", "Lead");
    EXPECT_EQ(KindOf(News({"--name", "x", "--lead", Native("lead.txt").string(), "--as-is",
                           "--single-spaced"})),
              "");
    EXPECT_EQ(Content("temp/txt/x.txt"), "<b>Lead</b>\r\n\r\n\r\n\r\none\r\n\r\ntwo");
}

} // namespace
} // namespace kiv
