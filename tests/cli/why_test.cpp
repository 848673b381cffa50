// Asking why a line looks so: the report, the marks, what is refused, and that nothing is written.
#include "tests/cli/cli_desk.h"

namespace kiv {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class WhyTest : public CliTest {
  protected:
    WhyTest()
    {
        Put("site/_html.txt", "!!1 = <b>!1</b>\n"
                              "@FILE = visit\n"
                              "@TITLE = Plan your visit\n"
                              "plain\n"
                              "see !!1[x]\n");
        Put("site/_template.txt", "<!--BODY HERE-->\n=1=@TITLE\n");
    }

    Json LinesOf(const Texts& question)
    {
        Texts arguments = {"--json", "why", "C:\\site"};
        arguments.insert(arguments.end(), question.begin(), question.end());
        return Report(arguments)["lines"];
    }

    std::string ErrorOf(const Texts& question)
    {
        Texts arguments = {"why", "C:\\site"};
        arguments.insert(arguments.end(), question.begin(), question.end());
        const Printed printed = Call(arguments);
        EXPECT_EQ(printed.code, 1);
        EXPECT_EQ(printed.out, "");
        return printed.err;
    }
};

TEST_F(WhyTest, TheReportHoldsTheStory)
{
    const Json lines = LinesOf({"visit:3"});
    ASSERT_EQ(lines.Items().size(), 1U);
    const Json line = lines[0];
    EXPECT_EQ(line["page"].Text(), "visit.htm");
    EXPECT_EQ(line["line"].Dump(), "3");
    EXPECT_EQ(line["text"].Text(), "see <b>x</b>");
    EXPECT_TRUE(line["reason"].IsNull());
    ASSERT_EQ(line["sources"].Items().size(), 1U);
    const Json source = line["sources"][0];
    EXPECT_EQ(source["file"].Text(), "C:\\site\\_html.txt");
    EXPECT_EQ(source["native"].Text(), NativeOf("site/_html.txt"));
    EXPECT_EQ(source["first"].Dump(), "5");
    EXPECT_EQ(source["last"].Dump(), "5");
    ASSERT_EQ(line["steps"].Items().size(), 1U);
    const Json step = line["steps"][0];
    EXPECT_EQ(step["name"].Text(), "!!1[");
    EXPECT_EQ(step["text"].Text(), "macro 1 of _html.txt:1, filled with \"x\"");
    EXPECT_EQ(step["before"].Text(), "see !!1[x]");
    EXPECT_EQ(step["after"].Text(), "see <b>x</b>");
    EXPECT_EQ(step["from"]["file"].Text(), "C:\\site\\_html.txt");
    EXPECT_EQ(step["from"]["first"].Dump(), "1");
}

TEST_F(WhyTest, ASourceLineThatWroteNothingHasNoLineAndAReason)
{
    const Json lines = LinesOf({"_html.txt:2"});
    ASSERT_EQ(lines.Items().size(), 1U);
    EXPECT_EQ(lines[0]["page"].Text(), "visit.htm");
    EXPECT_TRUE(lines[0]["line"].IsNull());
    EXPECT_EQ(lines[0]["text"].Text(), "@FILE = visit");
    EXPECT_EQ(lines[0]["reason"].Text(), "it begins the page and names its file");
    EXPECT_EQ(lines[0]["steps"].Size(), 0U);
}

TEST_F(WhyTest, WithoutALineItIsEveryLineOfThePage)
{
    Texts texts;
    for (const Json& line : LinesOf({"visit"}).Items())
        texts.push_back(line["text"].Text());
    EXPECT_THAT(texts, ElementsAre("<!--BODY HERE-->", "plain", "see <b>x</b>", "Plan your visit"));
}

TEST_F(WhyTest, APageMayBeCalledByItsPath)
{
    for (const std::string& place :
         {std::string("visit"), std::string("visit.htm"), std::string("VISIT.HTM"),
          std::string("C:\\site\\visit.htm"), NativeOf("site/visit.htm")}) {
        const Json lines = LinesOf({place + ":2"});
        ASSERT_EQ(lines.Items().size(), 1U) << place;
        EXPECT_EQ(lines[0]["text"].Text(), "plain") << place;
    }
    EXPECT_EQ(LinesOf({NativeOf("site/_html.txt") + ":4"})[0]["text"].Text(), "plain");
}

TEST_F(WhyTest, OutsideASectionThePathSaysWhichOneIsMeant)
{
    Put("site/parts/nav.txt", "unused\n");
    for (const std::string& place : {std::string("C:\\site\\visit.htm"), NativeOf("site/visit.htm"),
                                     NativeOf("site/parts/../visit.htm")}) {
        const Printed printed = Call({"why", place + ":2"});
        EXPECT_THAT(printed.out, HasSubstr("  from _html.txt:4\n    plain\n")) << place;
        EXPECT_EQ(printed.err, "") << place;
    }
}

TEST_F(WhyTest, APlaceOfAnotherSectionIsToldSo)
{
    Put("site/boats/_html.txt", "@FILE = b\n@TITLE = B\n");
    EXPECT_THAT(ErrorOf({"boats/b"}), HasSubstr("-> " + NativeOf("site/boats") +
                                                " is a section of its own: ask with this folder "
                                                "as DIR."));
    EXPECT_THAT(ErrorOf({"nothing"}), Not(HasSubstr("section of its own")));
}

TEST_F(WhyTest, TextIsFoundWhateverItsCase)
{
    const Json lines = LinesOf({"visit", "--find", "PLAIN"});
    ASSERT_EQ(lines.Items().size(), 1U);
    EXPECT_EQ(lines[0]["line"].Dump(), "2");
    EXPECT_EQ(Call({"why", "C:\\site", "visit", "--find", "absent"}).out,
              "no line of visit.htm holds that\n");
}

TEST_F(WhyTest, WhatIsNotThereIsRefused)
{
    EXPECT_EQ(ErrorOf({"vist"}), "kiv: error: no page and no source of this site is called "
                                 "\"vist\"; did you mean \"visit\"?\n");
    EXPECT_EQ(ErrorOf({"_htm.txt:1"}), "kiv: error: no page and no source of this site is called "
                                       "\"_htm.txt\"; did you mean \"_html.txt\"?\n");
    EXPECT_EQ(ErrorOf({"visit:5"}), "kiv: error: there is no line 5: visit.htm has 4 lines\n");
    EXPECT_EQ(ErrorOf({"visit:0"}), "kiv: error: lines are counted from 1\n");
}

TEST_F(WhyTest, NothingIsWritten)
{
    Put("utils/ftplist.txt", "1\nsite|C:\\site|put @@\n");
    const test::FileTree before = test::ReadTree(Root());
    Call({"why", "C:\\site", "visit"});
    Call({"why", "C:\\site", "_template.txt"});
    EXPECT_EQ(test::ReadTree(Root()), before);
}

TEST_F(WhyTest, ChangesAreMarkedByColourOnATerminalAlone)
{
    constexpr const char* kMarked = "see \x1b[1;32m<b>x</b>\x1b[0m";
    out_is_terminal = true;
    EXPECT_THAT(Call({"why", "C:\\site", "visit:3"}).out, HasSubstr(kMarked));
    variables["NO_COLOR"] = "1";
    EXPECT_THAT(Call({"why", "C:\\site", "visit:3"}).out, HasSubstr("        ^^^^^^^^\n"));
    variables.clear();
    out_is_terminal = false;
    EXPECT_THAT(Call({"why", "C:\\site", "visit:3"}).out, HasSubstr("        ^^^^^^^^\n"));
}

TEST_F(WhyTest, NothingOfASiteSteersTheTerminal)
{
    Put("site/_html.txt", "!!1 = \x1b[2J!1\n@FILE = visit\n@TITLE = \x1b]0;x\x07\n!!1[\x9b]\n");
    for (const char* const place : {"visit", "visit:2", "_html.txt", "_html.txt:1"}) {
        const Printed printed = Call({"why", "C:\\site", place});
        EXPECT_EQ(printed.code, 0) << place;
        EXPECT_EQ(printed.out.find('\x1b'), std::string::npos) << place;
        EXPECT_EQ(printed.out.find('\x07'), std::string::npos) << place;
        EXPECT_EQ(printed.out.find("\xC2\x9B"), std::string::npos) << place;
    }
}

TEST_F(WhyTest, WhatCameBeforeAnErrorIsToldAllTheSame)
{
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\nfine\n!!swap[z]\n");
    const Printed printed = Call({"why", "C:\\site", "a"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.out, HasSubstr("    2  _html.txt:3      fine\n"));
    EXPECT_THAT(printed.out, HasSubstr("_html.txt:4  an error ended the build here: field 2"));
    EXPECT_EQ(printed.err, NativeOf("site/_html.txt") +
                               ":4: error: field 2 of !!SWAP is missing (page a.htm)\n"
                               "    !!swap[z]\n"
                               "    -> Write it as "
                               "\"!!swap[id|page|picture|other picture|width|height|alt]\".\n");
}

} // namespace

} // namespace kiv
