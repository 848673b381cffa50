// What "check" says of sites too large for a case file, and how it tells of what is switched off.
#include "inspect/html_facts.h"
#include "tests/cli/cli_desk.h"

namespace kiv {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CheckTest : public CliTest {
  protected:
    CheckTest() { Put("site/_template.txt", ";\n"); }

    static std::string Page(const std::string& name, int lines)
    {
        std::string page = "@FILE = " + name + "\n@TITLE = T\n";
        for (int line = 3; line <= lines; ++line)
            page += "x\n";
        return page;
    }

    /// The findings called "near-bound" of C:\site: "FILE:LINE TEXT".
    Texts NearBounds()
    {
        Texts found;
        const Json report = Report({"check", "C:\\site", "--only", "near-bound"});
        for (const Json& finding : report["findings"].Items())
            found.push_back(finding["file"].Text().substr(8) + ":" + finding["line"].Dump() + " " +
                            finding["text"].Text());
        return found;
    }

    static constexpr const char* kEnd = " end the build in an error";
};

TEST_F(CheckTest, NearBoundOfPages)
{
    std::string list;
    for (int page = 1; page <= 949; ++page)
        list += Page("p" + std::to_string(page), 2);
    Put("site/_html.txt", list);
    EXPECT_THAT(NearBounds(), IsEmpty());
    Put("site/_html.txt", list + Page("last", 2));
    EXPECT_EQ(NearBounds(), Texts{"_html.txt:null 950 pages in the page list; more than 999" +
                                  std::string(kEnd)});
}

TEST_F(CheckTest, NearBoundOfLinesOnAPage)
{
    Put("site/_html.txt", Page("a", 3) + Page("b", 4749));
    EXPECT_THAT(NearBounds(), IsEmpty());
    Put("site/_html.txt", Page("a", 3) + Page("b", 4750));
    EXPECT_EQ(NearBounds(),
              Texts{"_html.txt:4 4750 lines on the page; more than 4999" + std::string(kEnd)});
}

TEST_F(CheckTest, NearBoundOfSourceLinesWithThoseOfIncludes)
{
    std::string list = ";a comment is none\n++more.txt\n";
    for (int page = 1; page <= 8; ++page)
        list += Page("p" + std::to_string(page), 4700);
    Put("site/more.txt", std::string(399, '\n'));
    Put("site/_html.txt", list);
    EXPECT_THAT(NearBounds(), IsEmpty());
    Put("site/more.txt", std::string(400, '\n'));
    EXPECT_EQ(
        NearBounds(),
        Texts{"_html.txt:null 38000 lines in the page list and what it takes in; more than 40000" +
              std::string(kEnd)});
}

TEST_F(CheckTest, NearBoundOfTemplateLines)
{
    Put("site/_html.txt", Page("a", 3));
    const std::string mark = "<!--BODY HERE-->\n";
    Put("site/_template.txt", std::string(948, '\n') + mark + std::string(949, '\n'));
    EXPECT_THAT(NearBounds(), IsEmpty());
    Put("site/_template.txt", std::string(949, '\n') + mark + std::string(950, '\n'));
    EXPECT_EQ(
        NearBounds(),
        (Texts{"_template.txt:null 950 template lines down to <!--BODY HERE-->; more than 1000" +
                   std::string(kEnd),
               "_template.txt:null 950 template lines below <!--BODY HERE-->; more than 1000" +
                   std::string(kEnd)}));
}

TEST_F(CheckTest, UnreadPageWhoseElementsAreTooDeep)
{
    if (!CanReadPages())
        GTEST_SKIP() << "no page is read";
    const auto found = [&](int depth) {
        std::string body;
        for (int level = 0; level < depth; ++level)
            body += "<b>";
        Put("site/_html.txt", Page("deep", 2) + body + "x\n");
        return Report({"check", "C:\\site", "--only", "unread-page"})["findings"].Items();
    };
    EXPECT_THAT(found(2000), IsEmpty());
    const auto deep = found(4000);
    ASSERT_EQ(deep.size(), 1U);
    EXPECT_EQ(deep[0]["severity"].Text(), "note");
    EXPECT_EQ(deep[0]["file"].Text(), "C:\\site\\deep.htm");
    EXPECT_EQ(deep[0]["page"].Text(), "deep.htm");
    EXPECT_EQ(deep[0]["text"].Text(),
              "the page is nested too deeply, or is too large, to be looked at");
}

TEST_F(CheckTest, ANameThatNoFindingHasIsAWrongCall)
{
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n");
    const Printed by_beginning = Call({"check", "C:\\site", "--only", "dead-pic"});
    EXPECT_EQ(by_beginning.code, 2);
    EXPECT_THAT(by_beginning.err,
                HasSubstr("--only: no finding is called \"dead-pic\"; did you mean "
                          "\"dead-picture\"? kiv-cli check --help lists them"));
    EXPECT_EQ(Call({"check", "C:\\site", "--not", "id-twice, dead-lnk"}).code, 2);
    EXPECT_EQ(Call({"check", "C:\\site", "--not", "id-twice, dead-link"}).code, 0);
    EXPECT_THAT(Call({"check", "--help"}).out, HasSubstr("\n  dead-picture"));
}

TEST_F(CheckTest, WhatCanBeDoneStandsBehindAnArrow)
{
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n@TITEL\n");
    EXPECT_THAT(Call({"check", "C:\\site"}).out,
                HasSubstr("\n    @TITEL\n    -> did you mean \"@TITLE\"?\n"));
}

TEST_F(CheckTest, SaysHowManyFindingsAreSwitchedOff)
{
    if (!CanReadPages())
        GTEST_SKIP() << "that no page is read is a note of its own";
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n@@stop\n");
    EXPECT_EQ(Report({"check", "C:\\site"})["switched_off"].Dump(), "0");
    EXPECT_THAT(Call({"check", "C:\\site"}).out, Not(HasSubstr("switched off")));
    Put("site/_check.txt", "stop-open: the rest is for later\n");
    EXPECT_EQ(Report({"check", "C:\\site"})["switched_off"].Dump(), "1");
    EXPECT_EQ(Call({"check", "C:\\site"}).out,
              "Check: nothing found; 1 is switched off by _check.txt\n");
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\n<zutable>\na\tb\nc\nd\n</zutable>\n");
    Put("site/_check.txt", "row-without-tab: headings\n");
    EXPECT_THAT(Call({"check", "C:\\site"}).out, EndsWith("; 2 are switched off by _check.txt\n"));
}

} // namespace

} // namespace kiv
