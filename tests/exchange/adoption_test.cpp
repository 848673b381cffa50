// Old pages become a site that gives them back.
#include "adoption_desk.h"
#include "platform/run_error.h"

#include <array>
#include <vector>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Adoptions = AdoptionTest;

/// A page as many a program writes them, LF alone at the end of its lines.
std::string ManualPage(const std::string& title, const std::string& next, const std::string& text)
{
    return "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
           " - The pump</title>\n<style>\np { margin: 0 }\n</style>\n" +
           (next.empty() ? "" : "<link rel=\"next\" href=\"" + next + "\">\n") +
           "</head>\n<body>\n<div class=\"top\">The pump, a manual</div>\n\n" + text +
           "\n<hr>\n<p class=\"foot\">Made in the workshop, 1999</p>\n</body>\n</html>\n";
}

class PumpManual : public Adoptions {
  protected:
    PumpManual()
    {
        Put("old/index.html", ManualPage("Start", "oil.html", "<p>Read this first."));
        Put("old/oil.html", ManualPage("Oil", "rust.html", "<p>SAE 30\n;see the can\n++ more"));
        Put("old/rust.html", ManualPage("Rust", "", "<p>f() {}\n<p>write to a@file.org"));
    }
};

TEST_F(PumpManual, SharesItsHeadAndTail)
{
    const Adoption adoption = Adopt();
    ExpectSame(adoption);
    EXPECT_EQ(adoption.ordered_by, OrderedBy::links_between);
    EXPECT_EQ(WayOf(adoption, "index.html"), "shared");
    EXPECT_EQ(WayOf(adoption, "rust.html"), "shared");
    EXPECT_EQ(reporter.status,
              "3 pages adopted: 0 with the same bytes, 3 the same but for line ends");
    EXPECT_THAT(reporter.shown, IsEmpty());
}

TEST_F(PumpManual, IsGivenBackByABuild)
{
    Adopt();
    Build();
    for (const char* name : {"index.html", "oil.html", "rust.html"})
        EXPECT_EQ(
            ComparePages(Content("old/" + std::string(name)), Content("new/" + std::string(name)))
                .likeness,
            Likeness::same_lines)
            << name;
    EXPECT_THAT(reporter.shown, IsEmpty());
    // And again, when the start page is there.
    Build();
    EXPECT_EQ(files->WrittenFiles().front().changed, false);
}

TEST_F(PumpManual, ChangesOnEveryPageWithItsTemplate)
{
    Adopt();
    std::string tail = Content("new/_parts/tail1.txt");
    ASSERT_THAT(tail, HasSubstr("1999"));
    ASSERT_THAT(Content("new/_template.txt"), HasSubstr("+_parts\\tail1.txt"));
    Put("new/_parts/tail1.txt", tail.replace(tail.find("1999"), 4, "2004"));
    Build();
    for (const char* name : {"new/index.html", "new/oil.html", "new/rust.html"})
        EXPECT_THAT(Content(name), HasSubstr("Made in the workshop, 2004")) << name;
}

TEST_F(PumpManual, TellsTitlesInVariables)
{
    Adopt();
    EXPECT_THAT(Content("new/_html.txt"), HasSubstr("@FILE = oil.html\r\n@TITLE = Oil\r\n@NAKED"));
    std::string parts;
    for (const std::string& name : NamesIn("new/_parts"))
        parts += Content("new/_parts/" + name);
    EXPECT_THAT(parts, HasSubstr("<title>@TITLE - The pump</title>"));
}

TEST_F(PumpManual, IsNeverWrittenTo)
{
    const test::FileTree before = test::ReadTree(Native("old"));
    Adopt();
    Build();
    EXPECT_EQ(test::Differences(before, test::ReadTree(Native("old"))), "");
}

TEST_F(Adoptions, GiveBackEveryByteWhereLinesEndInCrLf)
{
    Put("old/a.htm", "<html>\r\n\r\n<p>one\r\n</html>\r\n");
    Put("old/b.htm", "\r\n\r\nnothing in common, and much of that\r\n");
    Put("old/c.htm", "");
    const Adoption adoption = Adopt();
    for (const AdoptedPage& page : adoption.pages)
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
}

TEST_F(Adoptions, TakePagesOfAnyBytes)
{
    std::string every;
    for (int byte = 0; byte < 256; ++byte)
        every += static_cast<char>(byte);
    Put("old/bytes.htm", every);
    Put("old/nul.htm", std::string("a\0b\n@@stop\n@@EOY\n", 16));
    Put("old/mixed.htm", "a\r\nb\nc\rd\r\r\n@@ENDOFFILE@@\ne");
    Put("old/long.htm", std::string(300000, '{') + "\n}}<zutable>[[1");
    Put("old/ends.htm", "\n");
    Put("old/words.htm",
        "@FILE = x\n@TITLE = @TITLE\n@REDIRECT x\n@@1= x\n[[1\n]]\n=1=x\nASP:++x\n"
        "<!--TOC HERE-->\n!!1[ ??1[ ?!1[ $$1[\n<zuquiz1>\n@SHOWDB:x\n%%1 {} @YEAR\n"
        "++gone.txt\n!++gone.txt\n<option value=words.htm>\n;x\n;=x=\n");
    ExpectSame(Adopt());
    EXPECT_THAT(reporter.shown, IsEmpty());
}

TEST_F(Adoptions, TakeNamesWithBlanksCapitalsAndFolders)
{
    Put("old/My Page.HTM", "<p>one\n");
    Put("old/sub/deep/a.html", "<p>two\n");
    Put("old/sub/picture.gif", "GIF");
    ExpectSame(Adopt());
    Build();
    EXPECT_EQ(Content("new/My Page.HTM"), "<p>one\r\n");
    EXPECT_EQ(Content("new/sub/deep/a.html"), "<p>two\r\n");
    EXPECT_EQ(Content("new/sub/picture.gif"), "GIF");
}

TEST_F(Adoptions, LeaveOutNamesThatTheCodePageLacks)
{
    test::WriteBytes(Root() / "old" / test::PathOf("\xE6\x97\xA5.htm"), "<p>day\n");
    EXPECT_THAT(Adopt().pages, IsEmpty());
    EXPECT_THAT(
        reporter.shown,
        ElementsAre("&#26085;.htm was left out: it has a name that page lists cannot hold"));
}

TEST_F(Adoptions, CopyPagesThatNoListCanWrite)
{
    Put("old/a.php", "<?php x ?>\n");
    Put("old/b.shtml", "<p>b");
    Put("old/c.asp", "<% x %>\n");
    const Adoption adoption = Adopt();
    ExpectSame(adoption);
    EXPECT_EQ(WayOf(adoption, "a.php"), "copied");
    EXPECT_EQ(WayOf(adoption, "b.shtml"), "copied");
    EXPECT_EQ(WayOf(adoption, "c.asp"), "naked");
    EXPECT_EQ(Content("new/a.php"), "<?php x ?>\n");
}

TEST_F(Adoptions, LeaveOutSourcesAndSayThatTheyDo)
{
    Put("old/a.htm", "<p>a\n");
    Put("old/_html.txt", "@FILE = x");
    Put("old/.git/config", "x");
    const Adoption adoption = Adopt();
    EXPECT_THAT(reporter.shown,
                ElementsAre("_html.txt was left out: it has the name of a source of kiv",
                            ".git was left out: it is a hidden folder"));
    EXPECT_THAT(Content("new/_html.txt"), HasSubstr("@FILE = a.htm"));
}

#ifndef _WIN32
TEST_F(Adoptions, DoNotFollowLinksOutOfTheFolder)
{
    Put("old/a.htm", "<p>a\n");
    Put("secret.htm", "key");
    PutFolder("elsewhere");
    std::filesystem::create_symlink(Native("secret.htm"), Native("old/b.htm"));
    std::filesystem::create_symlink("a.htm", Native("old/c.htm"));
    std::filesystem::create_directory_symlink(Native("elsewhere"), Native("old/d"));
    const Adoption adoption = Adopt();
    EXPECT_EQ(WayOf(adoption, "b.htm"), "not there");
    EXPECT_NE(WayOf(adoption, "c.htm"), "not there");
    EXPECT_THAT(reporter.shown,
                ElementsAre("b.htm was left out: it is a link that leads out of the folder",
                            "d was left out: it is a link to a folder"));
}
#endif

TEST_F(Adoptions, HavePiecesOfTheMiddleInOnePlace)
{
    std::string box = "<div class=\"box\">\r\n";
    for (const char* const day : {"Monday", "Tuesday", "Wednesday", "Thursday"})
        box += "<p>On " + std::string(day) + "s the mill is open from nine to five o'clock.\r\n";
    box += "</div>\r\n";
    Put("old/a.htm", "<p>Bread\r\n" + box + "<p>rye\r\n");
    Put("old/b.htm", "<p>Flour\r\n<p>white\r\n" + box + "<p>brown\r\n");
    Put("old/c.htm", "<p>Cat\r\n");
    const Adoption adoption = Adopt();
    for (const AdoptedPage& page : adoption.pages)
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
    std::string text;
    for (const std::string& name : NamesIn("new/_parts"))
        text += Content("new/_parts/" + name);
    EXPECT_EQ(text, box);
}

/// Pages of a site with a menu, each with its own entry marked.
class MenuSite : public Adoptions {
  protected:
    static constexpr const char* kFoot = "<p class=\"foot\">Made in the mill by hand, 1999</p>\r\n"
                                         "</body>\r\n</html>\r\n";

    MenuSite()
    {
        for (const char* const own : {"Bread", "Flour", "Oven", "Cat"})
            Put("old/" + std::string(own) + ".htm", Page(own));
    }

    static std::string Page(const std::string& own)
    {
        std::string page = "<html>\r\n<body>\r\n<ul>\r\n";
        for (const char* const each : {"Bread", "Flour", "Oven"}) { // the cat is in no menu
            const std::string title = each;
            page += title == own ? "<li class=\"here\">" + title + "</li>\r\n"
                                 : "<li><a href=\"" + title + ".htm\">" + title + "</a></li>\r\n";
        }
        const std::string text(own.rbegin(), own.rend());
        return page + "</ul>\r\n<p>Back to front: " + text + "\r\n" + kFoot;
    }
};

TEST_F(MenuSite, HasItsMenuInOnePart)
{
    const Adoption adoption = Adopt();
    for (const AdoptedPage& page : adoption.pages) {
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
        EXPECT_EQ(page.way, "shared") << page.name;
    }
    EXPECT_THAT(
        Content("new/_html.txt"),
        HasSubstr("\r\n??1 = <li class=\"here\">!2</li>|<li><a href=\"!1\">!2</a></li>\r\n"));
    EXPECT_EQ(Content("new/_parts/head1.txt"),
              "<html>\r\n<body>\r\n<ul>\r\n??1[Bread.htm|Bread]\r\n??1[Flour.htm|Flour]\r\n"
              "??1[Oven.htm|Oven]\r\n</ul>\r\n");
}

TEST_F(MenuSite, HasItOnNewPagesToo)
{
    Adopt();
    Put("new/_html.txt", Content("new/_html.txt") + "@FILE = Dog\r\n@TITLE = Dog\r\nBarks.\r\n");
    Build();
    EXPECT_EQ(Content("new/Oven.htm"), Page("Oven"));
    EXPECT_EQ(Content("new/Dog.htm"), "<html>\r\n<body>\r\n<ul>\r\n"
                                      "<li><a href=\"Bread.htm\">Bread</a></li>\r\n"
                                      "<li><a href=\"Flour.htm\">Flour</a></li>\r\n"
                                      "<li><a href=\"Oven.htm\">Oven</a></li>\r\n</ul>\r\n"
                                      "<!--BODY HERE-->\r\nBarks.\r\n" +
                                          std::string(kFoot));
}

/// Pages that a build has made before: first, middle and last of four.
class MarkedPages : public Adoptions {
  protected:
    MarkedPages()
    {
        for (std::size_t number = 1; number <= 4; ++number)
            Put(NameOf(number), Page(number));
    }

    static std::string NameOf(std::size_t number)
    {
        return "old/day" + std::to_string(number) + ".htm";
    }
    static std::string Page(std::size_t number)
    {
        static const std::array<std::string, 4> titles = {"Monday", "Tuesday", "Wednesday",
                                                          "Thursday"};
        const std::string& title = titles[number - 1];
        std::string page = "<html>\r\n<title>" + title + "</title>\r\n";
        page += "<meta NAME=\"description\" CONTENT=\"About " + title + "\">\r\n";
        if (number == 1)
            page += "<p>Welcome!\r\n";
        else
            page += "<p><a href=\"day" + std::to_string(number - 1) + ".htm\">Back</a>\r\n";
        page += "<p>Page " + std::to_string(number) + " of 4\r\n<!--Body Here-->\r\n";
        page += number == 2 ? "\r\n\r\n;rain\r\n"
                            : "<p>Sun in the " + std::to_string(9 - number) + "th hour\r\n";
        if (number < 4)
            page += "<p><a href=\"day" + std::to_string(number + 1) + ".htm\">On</a>\r\n";
        return page + "+ since 1999\r\n</html>\r\n";
    }
};

TEST_F(MarkedPages, GoThroughTheTemplate)
{
    const Adoption adoption = Adopt();
    for (const AdoptedPage& page : adoption.pages) {
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
        EXPECT_EQ(page.way, "template") << page.name << ": " << page.why;
    }
    EXPECT_EQ(Content("new/_template.txt"),
              "<html>\r\n<title>@TITLE</title>\r\n<meta NAME=\"description\" CONTENT=\"\">\r\n"
              "=2=<p><a href=\"@PREV\">Back</a>\r\n=1=<p>Welcome!\r\n"
              "<p>Page @XOFY_X of @XOFY_Y\r\n<!--Body Here-->\r\n"
              "=8=<p><a href=\"@NEXT\">On</a>\r\n@@8+ since 1999\r\n</html>\r\n");
    const std::string list = Content("new/_html.txt");
    EXPECT_THAT(list, HasSubstr("@TITLE = Monday\r\n@DESCRIPTION = About Monday\r\n"
                                "<p>Sun in the 8th hour\r\n;\r\n"));
    EXPECT_THAT(list, HasSubstr("@DESCRIPTION = About Tuesday\r\n\r\n\r\n@@8;rain\r\n"));
}

TEST_F(MarkedPages, AllChangeWithTheTemplate)
{
    Adopt();
    std::string text = Content("new/_template.txt");
    ASSERT_THAT(text, HasSubstr("1999"));
    Put("new/_template.txt", text.replace(text.find("1999"), 4, "2004"));
    Build();
    for (std::size_t number = 1; number <= 4; ++number) {
        std::string page = Page(number);
        EXPECT_EQ(Content("new/day" + std::to_string(number) + ".htm"),
                  page.replace(page.find("1999"), 4, "2004"));
    }
}

TEST_F(MarkedPages, GoAnotherWayWhereTheyHaveOtherLines)
{
    Put(NameOf(3), "<html>\r\n<!--Body Here-->\r\nx\r\n<!--Body Here-->\r\n");
    const Adoption adoption = Adopt();
    for (const AdoptedPage& page : adoption.pages) {
        EXPECT_EQ(page.comparison.likeness, Likeness::same_bytes) << page.name;
        EXPECT_EQ(page.way, page.name == "day3.htm" ? "naked" : "template") << page.name;
    }
}

/// Pages by several hands: two looks, one page that is like no other, one without an end that can
/// be told, an empty one.
class SeveralHands : public Adoptions {
  protected:
    static inline const std::string kOldHead =
        "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML Strict//EN\">\r\n<HTML>\r\n<BODY>\r\n";
    static inline const std::string kNewHead =
        "<!doctype html>\r\n<html lang=\"en\">\r\n<meta charset=\"utf-8\">\r\n<body>\r\n";

    SeveralHands()
    {
        for (const Page& page : pages)
            Put("old/" + page.name, page.above + page.below);
    }

    static std::string Numbers(int count)
    {
        std::string lines;
        for (int i = 0; i < count; ++i)
            lines += "<p>number " + std::to_string(i) + "\r\n";
        return lines;
    }

    struct Page {
        std::string name;
        std::string above; // the foot
        std::string below;
    };
    const std::vector<Page> pages = {
        {"a.htm", kOldHead + "<P>Rye\r\n", "</BODY>\r\n</HTML>\r\n"},
        {"b.htm", kOldHead + "<P>Oats\r\n", "</BODY>\r\n</HTML>\r\n"},
        {"c.htm", kOldHead + "<P>Wheat\r\n", "</BODY>\r\n</HTML>\r\n"},
        {"d.htm", kNewHead + "<p>Stone\r\n", "  </body></html>\r\n"},
        {"e.htm", kNewHead + "<p>Wheel\r\n", "  </body></html>\r\n"},
        {"big.htm",
         "<h1>Nothing like it, and longer than all others together</h1>\r\n" + Numbers(60) +
             "</body>\r\n<p>and on\r\n",
         "</body>\r\n<!-- end -->\r\n"},
        {"open.htm", "<p>No end</body>\r\n", ""},
        {"void.htm", "", ""}};
};

TEST_F(SeveralHands, EachLookHasItsParts)
{
    const Adoption adoption = Adopt();
    EXPECT_EQ(reporter.status,
              "8 pages adopted: 8 with the same bytes, 0 the same but for line ends");
    for (const char* const name : {"a.htm", "b.htm", "c.htm", "d.htm", "e.htm"})
        EXPECT_EQ(WayOf(adoption, name), "shared") << name;
    EXPECT_EQ(WayOf(adoption, "big.htm"), "naked");
    EXPECT_EQ(Content("new/_parts/head1.txt"), kOldHead);
    EXPECT_EQ(Content("new/_parts/look2-head1.txt"), kNewHead);
}

TEST_F(SeveralHands, AllPagesChangeWithTheFootOfTheTemplate)
{
    Adopt();
    EXPECT_EQ(Content("new/_parts/foot.txt"), "");
    EXPECT_THAT(Content("new/_template.txt"), HasSubstr("+_parts\\foot.txt\r\n"));
    Build();
    for (const Page& page : pages)
        EXPECT_EQ(Content("new/" + page.name), page.above + page.below) << page.name;
    Put("new/_parts/foot.txt", "<p>2004\r\n");
    Build();
    for (const Page& page : pages)
        EXPECT_EQ(Content("new/" + page.name), page.above + "<p>2004\r\n" + page.below)
            << page.name;
}

TEST_F(Adoptions, AreRefusedOverAndInsideOtherThings)
{
    Put("old/a.htm", "<p>");
    PutFolder("new");
    EXPECT_NO_THROW(RefuseTarget(*files, "C:\\old", "C:\\new"));
    EXPECT_NO_THROW(RefuseTarget(*files, "C:\\old", "C:\\old2"));
    EXPECT_THROW(RefuseTarget(*files, "C:\\old", "C:\\OLD\\new"), RunError);
    EXPECT_THROW(RefuseTarget(*files, "C:\\old", "C:\\old"), RunError);
    EXPECT_THROW(RefuseTarget(*files, "C:\\gone", "C:\\new"), RunError);
    Put("new/_html.txt", "");
    EXPECT_THROW(RefuseTarget(*files, "C:\\old", "C:\\new"), RunError);
}

} // namespace
} // namespace kiv
