// What goes out beside the pages: thumbnails, files for feed readers and search engines; and the
// sources in another encoding.
#include "cli_desk.h"

#include <filesystem>

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kBase = "https://h.example/m/";

/// A GIF of a single pixel.
constexpr std::string_view kGif =
    std::string_view("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);

class PublishCommands : public CliTest {
  protected:
    PublishCommands()
    {
        for (const char* const name : {"XDG_STATE_HOME", "LOCALAPPDATA"})
            variables[name] = Native("state").make_preferred().string();
        Put("site/_template.txt",
            "<head><meta charset=\"windows-1252\"></head>\n<!--BODY HERE-->\n");
    }

    void PutNews() const
    {
        Put("site/_html.txt", "@FILE = index\n@TITLE = Caf\xE9 & bar\n@DESCRIPTION = About\n"
                              ";inserthere1\n"
                              "!!1[March 5, 2004|pr030504|New wing|By Ann|Press|Soon]\n"
                              "!!1[May 1, 2003|pr050103|Old|||]\n"
                              "!!1[May 1, 2003|gone|No page|||]\n"
                              "@FILE = pr030504\n@TITLE = New wing\nx\n"
                              "@FILE = pr050103\n@TITLE = Old\nx\n");
    }

    void Build() { EXPECT_EQ(Call({"build", "C:\\site"}).code, 0); }
};

TEST_F(PublishCommands, ThumbsMakesWhatIsMissing)
{
    Put("site/sea.gif", std::string(kGif));
    Put("site/sky.gif", std::string(kGif));
    Put("site/sky_t.gif", std::string(kGif)); // made by another program
    Put("site/text.jpg", "no picture");
    const Printed printed = Call({"thumbs", "C:\\site"});
    EXPECT_EQ(printed.out,
              "1 thumbnail made, 1 not made by kiv and left alone, 1 could not be made\n");
    EXPECT_THAT(printed.err, HasSubstr("no thumbnail could be made of text.jpg"));
    EXPECT_EQ(NamesIn("site"),
              (Texts{"_template.txt", "sea.gif", "sea_t.jpg", "sky.gif", "sky_t.gif", "text.jpg"}));
    EXPECT_THAT(Call({"thumbs", "C:\\site"}).out, StartsWith("0 thumbnails made, 1 up to date"));
    EXPECT_THAT(Call({"thumbs", "C:\\site", "--size", "20"}).out, StartsWith("1 thumbnail made"));
}

TEST_F(PublishCommands, ThumbsOfOthersStayUnlessForced)
{
    Put("site/images/sea.gif", std::string(kGif));
    Put("site/images/sea_t.jpg", "by hand");
    EXPECT_EQ(Call({"thumbs", "C:\\site", "--folder", "images"}).out,
              "0 thumbnails made, 1 not made by kiv and left alone\n");
    EXPECT_EQ(Content("site/images/sea_t.jpg"), "by hand");
    EXPECT_EQ(Call({"thumbs", "C:\\site", "--folder", "images", "--force"}).out,
              "1 thumbnail made\n");
    EXPECT_THAT(Content("site/images/sea_t.jpg"), StartsWith("\xFF\xD8"));
    for (const Texts& options : {Texts{"--size", "0"}, Texts{"--quality", "101"}}) {
        Texts call = {"thumbs", "C:\\site"};
        call.insert(call.end(), options.begin(), options.end());
        EXPECT_EQ(Call(call).code, 2);
    }
}

TEST_F(PublishCommands, FeedOfTheNews)
{
    PutNews();
    Build();
    EXPECT_EQ(Call({"feed", "C:\\site", "--base", kBase}).out, "rss.xml and atom.xml: 2 items\n");
    const std::string rss = Content("site/rss.xml");
    EXPECT_THAT(rss, HasSubstr("<title>Caf\xC3\xA9 &amp; bar</title>"));
    EXPECT_THAT(rss, HasSubstr("<description>About</description>"));
    EXPECT_THAT(rss, HasSubstr("<lastBuildDate>Fri, 05 Mar 2004 00:00:00 +0000</lastBuildDate>"));
    EXPECT_THAT(rss, HasSubstr("    <item>\n"
                               "      <title>New wing</title>\n"
                               "      <link>https://h.example/m/pr030504.htm</link>\n"
                               "      <description>Soon</description>\n"
                               "      <dc:creator>By Ann</dc:creator>\n"));
    EXPECT_LT(rss.find("pr030504"), rss.find("pr050103"));
    EXPECT_THAT(rss, Not(HasSubstr("No page")));
    EXPECT_THAT(Content("site/atom.xml"), HasSubstr("<updated>2004-03-05T00:00:00Z</updated>"));
    const Json again = Report({"feed", "C:\\site", "--base", kBase});
    EXPECT_EQ(again["written"][0]["changed"], Json::Parse("false"));
    EXPECT_EQ(again["written"][1]["changed"], Json::Parse("false"));
}

TEST_F(PublishCommands, SiteMapOfTheGroup)
{
    Put("site/_html.txt", "@FILE = index\n@TITLE = A\nx\n@FILE = hidden\n@TITLE = B\n@NOINDEX\n"
                          "@FILE = old\n@TITLE = C\n@REDIRECT = index.htm\n"
                          "@FILE = caf\xE9.txt\n@TITLE = D\n");
    Put("site/_group.txt", "sub\n");
    Put("site/sub/_template.txt", "<!--BODY HERE-->\n");
    Put("site/sub/_html.txt", "@FILE = caf\xE9\n@TITLE = E\nx\n@FILE = late\n@TITLE = F\nx\n");
    EXPECT_EQ(Call({"group", "C:\\site"}).code, 0);
    std::filesystem::remove(Native("site/sub/late.htm"));
    for (const char* const page : {"site/index.htm", "site/sub/caf\xC3\xA9.htm"})
        ASSERT_TRUE(Exists(page)) << page;
    const Printed printed = Call({"sitemap-xml", "C:\\site", "--base", kBase});
    EXPECT_EQ(printed.out, "sitemap.xml: 2 pages\n");
    EXPECT_THAT(printed.err, HasSubstr("not built yet and left out: 1"));
    const std::string map = Content("site/sitemap.xml");
    EXPECT_THAT(map, HasSubstr("<loc>https://h.example/m/index.htm</loc>"));
    EXPECT_THAT(map, HasSubstr("<loc>https://h.example/m/sub/caf%C3%A9.htm</loc>"));
}

TEST_F(PublishCommands, NothingOfYoursIsWrittenOver)
{
    Put("site/_html.txt", "@FILE = index\n@TITLE = A\nx\n");
    EXPECT_THAT(Call({"sitemap-xml", "C:\\site", "--base", kBase}).err,
                HasSubstr("there are no pages in C:\\site\\"));
    Build();
    Put("site/sitemap.xml", "<urlset/>");
    const Printed printed = Call({"sitemap-xml", "C:\\site", "--base", kBase});
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.err, HasSubstr("is there already, and not made by kiv"));
    EXPECT_EQ(Content("site/sitemap.xml"), "<urlset/>");
    Put("site/_html.txt", "@FILE = rss.xml\n@TITLE = A\nx\n@FILE = index\n@TITLE = A\nx\n");
    Build();
    EXPECT_THAT(Call({"feed", "C:\\site", "--base", kBase}).err,
                HasSubstr("a page of the list is written to C:\\site\\rss.xml"));
    EXPECT_EQ(Call({"feed", "C:\\site", "--base", "h.example"}).code, 2);
    EXPECT_EQ(Call({"feed", "C:\\site"}).code, 2);
}

#ifdef KIV_XMLLINT
/// Whether a file of the site is valid by a schema, as a program that others have made says.
bool IsValid(const std::string& file, const std::string& schema)
{
    const std::string call = std::string(KIV_XMLLINT) +
                             " --noout --nonet --relaxng '" KIV_ROOT "/scripts/schemas/" + schema +
                             "' '" + file + "' 2>/dev/null";
    return std::system(call.c_str()) == 0;
}

TEST_F(PublishCommands, WhatIsWrittenIsValidWhateverTheListHolds)
{
    const std::string odd = "\x01<b> ]]> & &bogus; --> \"x\" ' \x80\x9D\xFF \x7F";
    const std::string pages = "@FILE = index\n@TITLE = \x02\n@DESCRIPTION = " + odd +
                              "\nx\n@FILE = a & 'b' #1%\n@TITLE = " + odd +
                              "\nx\n@FILE = caf\xE9\n@TITLE = \nx\n";
    const std::string news =
        "!!1[March 5, 0|index|Year 0|||]\n!!1[March 5, 1|caf\xE9|\x03|\x04|\x05| ]\n"
        "!!1[May 1, 9999|a & 'b' #1%|" +
        odd + "|" + odd + "|]|" + odd + "]\n";
    for (const std::string& list : {pages, pages + news}) {
        Put("site/_html.txt", list);
        Build();
        const std::string items = list == pages ? "3 items\n" : "2 items\n";
        EXPECT_EQ(Call({"feed", "C:\\site", "--base", kBase}).out,
                  "rss.xml and atom.xml: " + items);
        EXPECT_EQ(Call({"sitemap-xml", "C:\\site", "--base", kBase}).out, "sitemap.xml: 3 pages\n");
        EXPECT_THAT(Content("site/rss.xml"),
                    HasSubstr("<title>https://h.example/m/caf%C3%A9.htm</title>"));
        for (const std::string name : {"rss", "atom", "sitemap"})
            EXPECT_TRUE(IsValid(NativeOf("site/" + name + ".xml"), name + ".rng")) << name;
    }
    EXPECT_FALSE(IsValid(NativeOf("site/rss.xml"), "atom.rng")); // it does look
}
#endif

class EncodeCommand : public PublishCommands {
  protected:
    EncodeCommand()
    {
        Put("site/_html.txt",
            "@FILE = a\n@TITLE = Caf\xE9\n++part.txt\n@@EOY\n++late.txt\n@@EOY\n");
        Put("site/part.txt", "++deep.txt\n\xA9 2004\n");
        Put("site/deep.txt", "\x80\n");
        Put("site/late.txt", "\xFC"
                             "bermorgen\n");
        Put("site/images/_alt.txt", "sea.jpg|M\xE9r\n");
        Put("site/txt/pr030504.txt", "<p>\xE0</p>\n");
        Put("site/other.txt", "\xE9 nobody's\n");
        Put("shared/foot.txt", "\xE9\n");
    }
};

TEST_F(EncodeCommand, ThereAndBackAreTheSameBytes)
{
    const test::FileTree before = test::ReadTree(Root() / "site");
    EXPECT_THAT(Call({"encode", "C:\\site", "--to", "utf-8"}).out,
                StartsWith("7 sources of 7 changed to UTF-8\n"));
    EXPECT_EQ(Content("site/_html.txt"),
              "@FILE = a\n@TITLE = Caf\xC3\xA9\n++part.txt\n@@EOY\n++late.txt\n@@EOY\n");
    EXPECT_EQ(Content("site/_template.txt"),
              "<head><meta charset=\"utf-8\"></head>\n<!--BODY HERE-->\n");
    EXPECT_EQ(Content("site/deep.txt"), "\xE2\x82\xAC\n");
    EXPECT_EQ(Content("site/late.txt"), "\xC3\xBC"
                                        "bermorgen\n");
    EXPECT_EQ(Content("site/images/_alt.txt"), "sea.jpg|M\xC3\xA9r\n");
    EXPECT_EQ(Content("site/other.txt"), "\xE9 nobody's\n");
    EXPECT_EQ(Call({"encode", "C:\\site", "--to", "utf-8", "--check"}).code, 0);
    EXPECT_EQ(Call({"encode", "C:\\site", "--to", "1252"}).code, 0);
    EXPECT_EQ(test::Differences(before, test::ReadTree(Root() / "site")), "");
}

TEST_F(EncodeCommand, WithoutARecordTheWayBackIsTheSameToo)
{
    const test::FileTree before = test::ReadTree(Root() / "site");
    Call({"encode", "C:\\site", "--to", "utf-8"});
    std::filesystem::remove_all(Root() / "state");
    Call({"encode", "C:\\site", "--to", "1252"});
    EXPECT_EQ(test::Differences(before, test::ReadTree(Root() / "site")), "");
}

TEST_F(EncodeCommand, UndoGivesTheBytesBack)
{
    Put("site/_html.txt", "\xEF\xBB\xBF"
                          "@FILE = a\n@TITLE = \xE4\xB8\xAD\n");
    Put("site/part.txt", "++part.txt\n");
    const test::FileTree before = test::ReadTree(Root() / "site");
    const Printed printed = Call({"encode", "C:\\site", "--to", "1252"});
    EXPECT_THAT(printed.out, HasSubstr("1 character became a reference"));
    EXPECT_EQ(Content("site/_html.txt"), "@FILE = a\n@TITLE = &#20013;\n");
    EXPECT_EQ(Call({"undo-encode", "C:\\site"}).code, 0);
    EXPECT_EQ(test::Differences(before, test::ReadTree(Root() / "site")), "");
    EXPECT_THAT(Call({"undo-encode", "C:\\site"}).err, HasSubstr("there is nothing to take back"));
}

TEST_F(EncodeCommand, WhatWasChangedSinceStays)
{
    Call({"encode", "C:\\site", "--to", "utf-8"});
    Put("site/deep.txt", "mine\n");
    const Printed printed = Call({"undo-encode", "C:\\site"});
    EXPECT_EQ(printed.out, "6 sources as before\n");
    EXPECT_THAT(printed.err, HasSubstr("this source was changed since"));
    EXPECT_EQ(Content("site/deep.txt"), "mine\n");
    EXPECT_EQ(Content("site/part.txt"), "++deep.txt\n\xA9 2004\n");
}

TEST_F(EncodeCommand, ADryRunAndACheckTouchNothing)
{
    const test::FileTree before = test::ReadTree(Root());
    EXPECT_THAT(Call({"encode", "C:\\site", "--to", "utf-8", "--dry-run"}).out,
                StartsWith("7 sources of 7 to change to UTF-8\n"));
    EXPECT_EQ(Call({"encode", "C:\\site", "--to", "utf-8", "--check"}).code, 3);
    EXPECT_EQ(test::Differences(before, test::ReadTree(Root())), "");
    EXPECT_EQ(Call({"encode", "C:\\site", "--to", "latin1"}).code, 2);
}

TEST_F(EncodeCommand, FilesOutsideAndFilesThatCannotBeToldStay)
{
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n++..\\shared\\foot.txt\n++part.txt\n");
    Put("site/part.txt", "caf\xE9\ncaf\xC3\xA9\n");
    const Printed printed = Call({"encode", "C:\\site", "--to", "utf-8"});
    EXPECT_THAT(printed.err, HasSubstr("lies elsewhere or is a link, and stays as it is"));
    EXPECT_THAT(printed.err, HasSubstr("it has lines in UTF-8, such as line 2"));
    EXPECT_EQ(Content("shared/foot.txt"), "\xE9\n");
    EXPECT_EQ(Content("site/part.txt"), "caf\xE9\ncaf\xC3\xA9\n");
}

} // namespace
} // namespace kiv
