#include "blocks/quizzes.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The finished form of the plain style around the quiz's output and its last text box.
std::string Plain(const std::string& output, const std::string& text_box)
{
    return "<table width=\"100%\" border=0 cellspacing=0 cellpadding=0 border=0><tr><td>\r\n"
           "<FORM><font face=\"geneva,arial,helvetica,helv\" size=2>\r\n" +
           output + "\r\n" + text_box + "\r\n</UL></FORM>\r\n</td></tr></table><p>";
}

std::string TextBox(const std::string& rows, const std::string& number)
{
    return "</font><textarea wrap=physical rows=\"" + rows + "\" cols=\"45\" NAME=feedback" +
           number + "></textarea>";
}

/// What ends one question and comes before the next.
std::string Between(const std::string& text_box)
{
    return "\r\n" + text_box + "<font face=\"geneva,arial,helvetica,helv\" size=2></UL>";
}

std::string Answer(const std::string& number, const std::string& feedback,
                   const std::string& answer)
{
    return "\r\n<INPUT TYPE=radio name=" + number + " onclick=\"form.feedback" + number +
           ".value='" + feedback + "'\">" + answer + "<BR>";
}

TEST(SelfCheckQuiz, OneWholeQuizByTheByte)
{
    BlockDesk desk({"Q: How many? ", "Two|No", "Three|It's right", ":: Last ", "\"Yes\"|a|b",
                    "</zuquiz2> dropped", "next"});
    EXPECT_EQ(
        desk.Expand("dropped <zuquiz2>"),
        "<table width=\"100%\" border=0 cellspacing=0 cellpadding=0 border=0><tr><td>\r\n"
        "<FORM><font face=\"geneva,arial,helvetica,helv\" size=2>\r\n"
        "\r\n<P><B>Question: How many?</B><UL>\r\n"
        "\r\n<INPUT TYPE=radio name=1 onclick=\"form.feedback1.value='No'\">Two<BR>"
        "\r\n<INPUT TYPE=radio name=1 onclick=\"form.feedback1.value='It\x92s right'\">Three<BR>"
        "\r\n</font><textarea wrap=physical rows=\"1\" cols=\"45\" NAME=feedback1></textarea>"
        "<font face=\"geneva,arial,helvetica,helv\" size=2></UL>"
        "\r\n<P><B>Last</B><UL>\r\n"
        "\r\n<INPUT TYPE=radio name=2 onclick=\"form.feedback2.value='a|b'\">&quot;Yes&quot;<BR>"
        "\r\n</font><textarea wrap=physical rows=\"1\" cols=\"45\" NAME=feedback2></textarea>"
        "\r\n</UL></FORM>"
        "\r\n</td></tr></table><p>");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_THAT(desk.lines.Unread(), ElementsAre("next"));
}

TEST(SelfCheckQuiz, TheBoxedStyleIsKind2)
{
    BlockDesk desk({"a|b", "</zuquiz2>"});
    std::string line = "<zuquiz2>";
    zuquiz2(line, 2, desk.context);
    EXPECT_EQ(
        line,
        "<p><table width=\"100%\" border=0 cellspacing=0 cellpadding=1><tr>"
        "<td bgcolor=\"#6E9F0E\" background=\"../images/wings/quiz3/greenpattern.gif\">"
        "<img src=\"../images/wings/quiz3/checkyourknowledge.gif\" width=229 height=16></td></tr>"
        "<tr><td bgcolor=\"#669900\"><table width=\"100%\" border=0 cellspacing=0 cellpadding=8>"
        "<tr><td bgcolor=\"#E8F4D0\">\r\n"
        "<FORM><font face=\"geneva,arial,helvetica,helv\" size=2>\r\n"
        "\r\n<INPUT TYPE=radio name=0 onclick=\"form.feedback0.value='b'\">a<BR>"
        "\r\n</font><textarea wrap=physical rows=\"1\" cols=\"45\" NAME=feedback0></textarea>"
        "\r\n</UL></FORM>"
        "\r\n</td></tr></table></td></tr></table><p>");
}

TEST(SelfCheckQuiz, AnyOtherKindIsPlain)
{
    for (const int kind : {0, 1, 3, -2}) {
        BlockDesk desk({"</zuquiz2>"});
        std::string line = "<zuquiz2>";
        zuquiz2(line, kind, desk.context);
        EXPECT_EQ(line, Plain("", TextBox("0", "0"))) << kind;
    }
}

TEST(SelfCheckQuiz, EndLines)
{
    for (const std::string end :
         {"</zuquiz2>", "</zuquiz2>x", "</zucheck", "</zucheck2>", "</zucyk", "</zucyk>"}) {
        BlockDesk desk({end, "next"});
        EXPECT_EQ(desk.Expand("<zuquiz2>"), Plain("", TextBox("0", "0"))) << end;
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("next")) << end;
    }
    for (const std::string no_end :
         {"</zuquiz2", "</zuquiz1>", "</ZUQUIZ2>", " </zuquiz2>", "</zuchec"}) {
        BlockDesk desk({no_end, "next"});
        EXPECT_EQ(desk.Expand("<zuquiz2>"), no_end);
        EXPECT_THAT(desk.reporter.shown, ElementsAre("Oops! zuquiz2")) << no_end;
    }
}

TEST(SelfCheckQuiz, QuestionsAndHeadings)
{
    const struct {
        std::vector<std::string> lines;
        std::string output, text_box;
    } rows[] = {
        {{"Q:one"}, "\r\n<P><B>Question: one</B><UL>\r\n", TextBox("0", "1")},
        {{"q:  one  "}, "\r\n<P><B>Question: one</B><UL>\r\n", TextBox("0", "1")},
        {{"Q:"}, "\r\n<P><B>Question: </B><UL>\r\n", TextBox("0", "1")},
        {{"::one"}, "\r\n<P><B>one</B><UL>\r\n", TextBox("0", "1")},
        {{"Q:say \"it's\" a|b"}, // a question is not escaped and needs no bar
         "\r\n<P><B>Question: say \"it's\" a|b</B><UL>\r\n",
         TextBox("0", "1")},
        {{"Q:one", "q:two", "::three"},
         "\r\n<P><B>Question: one</B><UL>\r\n" + Between(TextBox("0", "1")) +
             "\r\n<P><B>Question: two</B><UL>\r\n" + Between(TextBox("0", "2")) +
             "\r\n<P><B>three</B><UL>\r\n",
         TextBox("0", "3")},
        {{"a|b", "Q:one"}, // an answer before any question; nothing is closed then
         Answer("0", "b", "a") + "\r\n<P><B>Question: one</B><UL>\r\n",
         TextBox("1", "1")},
        {{" Q:x|y"}, Answer("0", "y", " Q:x"), TextBox("1", "0")},
        {{"@x|y"}, Answer("0", "y", "@x"), TextBox("1", "0")}, // no test for "@"
        {{"<zutable>|y"}, Answer("0", "y", "<zutable>"), TextBox("1", "0")},
    };
    for (const auto& row : rows) {
        std::vector<std::string> lines = row.lines;
        lines.emplace_back("</zuquiz2>");
        BlockDesk desk(lines);
        EXPECT_EQ(desk.Expand("<zuquiz2>"), Plain(row.output, row.text_box)) << row.lines.front();
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
    }
}

TEST(SelfCheckQuiz, Answers)
{
    const struct {
        std::string line, feedback, answer;
    } rows[] = {
        {"a|b", "b", "a"},
        {" a | b ", " b ", " a "}, // nothing is trimmed
        {"a|b|c", "b|c", "a"},     // parted at the first bar
        {"|", "", ""},
        {"it's|it's 'so'", "it\x92s \x92so\x92", "it's"},  // in the feedback alone
        {"\"a\"|\"b\"", "&quot;b&quot;", "&quot;a&quot;"}, // in both
    };
    for (const auto& row : rows) {
        BlockDesk desk({row.line, "</zuquiz2>"});
        EXPECT_EQ(desk.Expand("<zuquiz2>"),
                  Plain(Answer("0", row.feedback, row.answer), TextBox("1", "0")));
    }
}

TEST(SelfCheckQuiz, FeedbackBoxesHoldTheLongestFeedback)
{
    const struct {
        std::string feedback, rows;
    } rows[] = {
        {"", "1"},
        {std::string(39, 'x'), "1"},
        {std::string(40, 'x'), "2"},
        {std::string(79, 'x'), "2"},
        {std::string(80, 'x'), "3"},
        {std::string(81, 'x'), "3"},
        {std::string(34, 'x') + "\"", "2"}, // an escaped quote counts six: 40
        {std::string(33, 'x') + "\"", "1"},
        {std::string(38, 'x') + "'", "1"}, // a single quote counts one: 39
        {std::string(39, 'x') + "'", "2"},
    };
    for (const auto& row : rows) {
        BlockDesk desk({"Q:q", "a|" + row.feedback, "</zuquiz2>"});
        EXPECT_THAT(desk.Expand("<zuquiz2>"), HasSubstr("\r\n" + TextBox(row.rows, "1") + "\r\n"))
            << row.feedback;
    }
}

TEST(SelfCheckQuiz, TheBoxesNeverShrinkWithinABlock)
{
    const std::string feedback(81, 'x');
    BlockDesk desk({"Q:one", "a|b", "Q:two", "c|" + feedback, "Q:three", "d|e", "</zuquiz2>"});
    EXPECT_EQ(desk.Expand("<zuquiz2>"),
              Plain("\r\n<P><B>Question: one</B><UL>\r\n" + Answer("1", "b", "a") +
                        Between(TextBox("1", "1")) + "\r\n<P><B>Question: two</B><UL>\r\n" +
                        Answer("2", feedback, "c") + Between(TextBox("3", "2")) +
                        "\r\n<P><B>Question: three</B><UL>\r\n" + Answer("3", "e", "d"),
                    TextBox("3", "3")));
    // The next block begins anew.
    BlockDesk next({"</zuquiz2>"});
    EXPECT_EQ(next.Expand("<zuquiz2>"), Plain("", TextBox("0", "0")));
}

TEST(SelfCheckQuiz, ALineWithoutABarEndsTheBlock)
{
    const struct {
        std::string line, kept;
    } rows[] = {
        {"no bar", "no bar"},
        {"", ""},
        {"say \"no\"", "say &quot;no&quot;"}, // in its escaped form
        {"it's", "it's"},
        {"@FILE = next", "@FILE = next"},
        {"<zutable>", "<zutable>"},
    };
    for (const auto& row : rows) {
        BlockDesk plain({"Q:one", row.line, "next"});
        EXPECT_EQ(plain.Expand("<zuquiz2>"), row.kept);
        EXPECT_THAT(plain.reporter.shown, ElementsAre("Oops! zuquiz2"));
        EXPECT_THAT(plain.lines.Unread(), ElementsAre("next"));

        BlockDesk boxed({"Q:one", row.line, "next"});
        std::string line = "<zuquiz2>";
        zuquiz2(line, 2, boxed.context);
        EXPECT_EQ(line, row.kept);
        EXPECT_THAT(boxed.reporter.shown, ElementsAre("Oops! cyk"));
    }
}

TEST(SelfCheckQuiz, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"Q:one", "a|b"});
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zuquiz2>"); }), ErrorKind::end_of_file);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

} // namespace
} // namespace kiv
