// What "check" reads beside the pages that a list writes, and what it leaves alone.
#include "inspect/html_facts.h"
#include "tests/cli/cli_desk.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace kiv {

namespace {

using testing::IsEmpty;

class LinkedFilesTest : public CliTest {
  protected:
    LinkedFilesTest() { Put("site/_template.txt", ";\n"); }
    void SetUp() override
    {
        if (!CanReadPages())
            GTEST_SKIP() << "no page is read";
    }

    /// C:\site has one page with this text.
    void PutPage(const std::string& body)
    {
        Put("site/_html.txt", "@FILE = index\n@TITLE = T\n" + body + "\n");
    }

    /// "NAME: TEXT" of each finding in a folder.
    Texts Found(const std::string& folder = "C:\\site")
    {
        Texts found;
        const Json report = Report({"check", folder});
        for (const Json& finding : report["findings"].Items())
            found.push_back(finding["name"].Text() + ": " + finding["text"].Text());
        return found;
    }

    /// A picture of 120 by 60 pixels.
    static std::string Picture()
    {
        using namespace std::string_literals;
        return "GIF89a\x78\0\x3C\0\x80\0\0\0\0\0\xFF\xFF\xFF\x2C\0\0\0\0\x78\0\x3C\0\0"s;
    }
};

TEST_F(LinkedFilesTest, AChainOfStyleSheetsIsFollowedToItsEnd)
{
    constexpr int kSheets = 5000;
    for (int sheet = 0; sheet < kSheets; ++sheet)
        Put("site/s" + std::to_string(sheet) + ".css",
            "@import \"s" + std::to_string(sheet + 1) + ".css\";\n");
    Put("site/s" + std::to_string(kSheets) + ".css",
        "@import \"s0.css\"; p { background: url(last.gif) }\n");
    for (const char* const name : {"site/shown.gif", "site/last.gif", "site/old.gif"})
        Put(name, Picture());
    PutPage("<link rel=\"stylesheet\" href=\"s0.css\"><img src=\"shown.gif\">");
    EXPECT_EQ(Found(), Texts{"unused-picture: no page shows the picture \"old.gif\""});
}

TEST_F(LinkedFilesTest, AnEntryThatCannotBeLookedAtHidesNoOther)
{
    Put("site/sub/index.htm", "x");
    Put("site/there.htm", "x");
    for (const char* const link : {"site/loop", "site/sub/loop"}) {
        std::error_code error;
        std::filesystem::create_symlink("loop", Native(link), error);
        if (error)
            GTEST_SKIP() << "no links can be made";
    }
    PutPage("<a href=\"gone.htm\">a</a> <a href=\"there.htm\">b</a> <a href=\"sub/gone.htm\">c</a> "
            "<a href=\"sub/\">d</a> <a href=\"Sub/Index.htm\">e</a> <a href=\"loop\">f</a> "
            "<a href=\"there.htm/x\">g</a>");
    EXPECT_EQ(Found(), (Texts{"dead-link: the link \"gone.htm\" leads to nothing",
                              "dead-link: the link \"sub/gone.htm\" leads to nothing",
                              "dead-link: the link \"there.htm/x\" leads to nothing"}));
}

TEST_F(LinkedFilesTest, OfAPageThatIsTooLargeNothingIsClaimed)
{
    Put("site/other.htm", "<p id=\"y\">x</p>");
    PutPage("<a href=\"other.htm#x\">x</a>");
    EXPECT_EQ(Found(), Texts{"dead-anchor: \"other.htm#x\" leads to a place that other.htm does "
                             "not have"});
    std::filesystem::resize_file(Native("site/other.htm"), (std::uintmax_t{32} << 20U) + 1);
    EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(LinkedFilesTest, OfAStyleSheetOrScriptThatIsTooLargeNothingIsClaimed)
{
    Put("site/shown.gif", Picture());
    Put("site/old.gif", Picture());
    const std::pair<const char*, const char*> rows[] = {
        {"site/a.css", "<link rel=\"stylesheet\" href=\"a.css\"><img src=\"shown.gif\">"},
        {"site/a.js", "<script src=\"a.js\"></script><img src=\"shown.gif\">"},
    };
    for (const auto& [file, body] : rows) {
        Put(file, "x");
        PutPage(body);
        EXPECT_EQ(Found(), Texts{"unused-picture: no page shows the picture \"old.gif\""}) << file;
        std::filesystem::resize_file(Native(file), (std::uintmax_t{32} << 20U) + 1);
        EXPECT_THAT(Found(), IsEmpty()) << file;
    }
}

TEST_F(LinkedFilesTest, OfTooManyLargeStyleSheetsNothingIsClaimed)
{
    Put("site/shown.gif", Picture());
    Put("site/old.gif", Picture());
    std::string body = "<img src=\"shown.gif\">";
    for (int sheet = 0; sheet < 8; ++sheet) {
        const std::string name = "s" + std::to_string(sheet) + ".css";
        Put("site/" + name, "/*");
        std::filesystem::resize_file(Native("site/" + name), std::uintmax_t{32} << 20U);
        body += "\n<link rel=\"stylesheet\" href=\"" + name + "\">";
    }
    PutPage(body);
    EXPECT_EQ(Found(), Texts{"unused-picture: no page shows the picture \"old.gif\""});
    Put("site/last.css", "p { color: red }");
    PutPage(body + "\n<link rel=\"stylesheet\" href=\"last.css\">");
    EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(LinkedFilesTest, StyleSheetsAndScriptsAreReadInsideTheSiteAlone)
{
    Put("all/_template.txt", ";\n");
    Put("all/site/_template.txt", ";\n");
    Put("all/site/shown.gif", Picture());
    Put("all/site/old.gif", Picture());
    Put("all/style.css", "p { color: red }");
    Put("all/code.js", "go();");
    const std::string page = "@FILE = index\n@TITLE = T\n<img src=\"shown.gif\">";
    for (const char* const outside :
         {"<link rel=\"stylesheet\" href=\"../style.css\">", "<script src=\"../code.js\"></script>",
          "<script src=\"/all/code.js\"></script>"}) {
        Put("all/site/_html.txt", page + outside + "\n");
        EXPECT_THAT(Found("C:\\all\\site"), IsEmpty()) << outside;
    }
    // Of a group its own folder is a part.
    Put("all/_group.txt", "site\n");
    EXPECT_EQ(Found("C:\\all\\site"),
              Texts{"unused-picture: no page shows the picture \"old.gif\""});
}

TEST_F(LinkedFilesTest, PicturesBesideTheSiteAreMeasuredButNotThoseFromTheRoot)
{
    Put("pic.gif", Picture());
    PutPage("<img src=\"/pic.gif\" width=\"60\" height=\"60\">");
    EXPECT_THAT(Found(), IsEmpty());
    PutPage("<img src=\"../pic.gif\" width=\"60\" height=\"60\">");
    EXPECT_EQ(Found(), Texts{"picture-size: the picture \"../pic.gif\" is 120 by 60 pixels, but is "
                             "shown as 60 by 60"});
    Put("site/pic.gif", Picture());
    PutPage("<img src=\"/pic.gif\" width=\"60\" height=\"60\">");
    EXPECT_EQ(Found(), Texts{"picture-size: the picture \"/pic.gif\" is 120 by 60 pixels, but is "
                             "shown as 60 by 60"});
}

} // namespace

} // namespace kiv
