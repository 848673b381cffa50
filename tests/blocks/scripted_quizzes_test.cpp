#include "blocks/quizzes.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The finished block around the entries of its two arrays, with the desk's quiz script.
std::string Scripted(const std::string& killers, const std::string& answers)
{
    return "<SCRIPT LANGUAGE=\"JavaScript\">\r\n"
           "var killers = new Array(" +
           killers +
           ");\r\n"
           "var answers = new Array(" +
           answers +
           ");\r\n"
           "function startQuiz() {}\r\n\r\n" // the script's own line end stays
           "<A HREF=\"javascript: itemReset(); startQuiz(true, 0);\">"
           "<B>QUIZ TIME: @TITLE</B></A>";
}

TEST(ScriptedQuiz, Blocks)
{
    const struct {
        std::vector<std::string> lines;
        std::string killers, answers;
    } rows[] = {
        {{}, "", ""},
        {{""}, "", ""}, // an empty line is no question
        {{"How many?<TAB>two<TAB>*three<TAB>four"}, "'two<TAB>four',", "'How many?<TAB>three'"},
        {{"How many?\ttwo\t*three\tfour"}, "'two<TAB>four',", "'How many?<TAB>three'"},
        {{"a<TAB>b\t*c<TAB>*d"}, "'b',", "'a<TAB>c<TAB>d'"},       // both parts, mixed
        {{"a<TAB>b", "", "c<TAB>*d"}, "'b','',", "'a','c<TAB>d'"}, // one entry a line in each
        {{"a"}, "'',", "'a'"},
        {{"*a<TAB>*b"}, "'',", "'*a<TAB>b'"}, // the first part is the question, star or not
        {{"a<TAB>**b<TAB> *c"}, "' *c',", "'a<TAB>*b'"},  // one star goes; a blank hides it
        {{"a<TAB><TAB>b<TAB>"}, "'<TAB>b<TAB>',", "'a'"}, // empty parts are parts
        {{"a<TAB>*<TAB>*"}, "'',", "'a<TAB><TAB>'"},
        {{"<TAB>"}, "'',", "''"},
        {{" "}, "'',", "' '"},
        {{"a<tab>b"}, "'',", "'a<tab>b'"}, // exact case
        {{"it's \"a\"<TAB>don't<TAB>*\"b\""},
         "'don\\'t',",
         "'it\\'s &quot;a&quot;<TAB>&quot;b&quot;'"},
        {{"$$a%%<TAB>^^b<TAB>*&&c|d"}, "'^^b',", "'$$a%%<TAB>&&c|d'"}, // left for the script
        {{"@FILE = x", "<zutable>", "</zuquiz1", "</ZUQUIZ1>"},        // all of them questions
         "'','','','',",
         "'@FILE = x','<zutable>','</zuquiz1','</ZUQUIZ1>'"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> lines = row.lines;
        lines.emplace_back("</zuquiz1> dropped");
        lines.emplace_back("next");
        BlockDesk desk(lines);
        EXPECT_EQ(desk.Expand("dropped <zuquiz1> dropped"), Scripted(row.killers, row.answers));
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("next"));
    }
}

TEST(ScriptedQuiz, TheQuizScriptGoesInAsItIs)
{
    BlockDesk desk({"</zuquiz1>"});
    desk.files.quiz_script = "a\nb's \"<zutable>\"\r";
    EXPECT_EQ(desk.Expand("<zuquiz1>"),
              "<SCRIPT LANGUAGE=\"JavaScript\">\r\nvar killers = new Array();\r\n"
              "var answers = new Array();\r\na\nb's \"<zutable>\"\r\r\n"
              "<A HREF=\"javascript: itemReset(); startQuiz(true, 0);\">"
              "<B>QUIZ TIME: @TITLE</B></A>");
}

TEST(ScriptedQuiz, AMissingQuizScriptIsFatal)
{
    BlockDesk desk({"</zuquiz1>"});
    desk.files.has_quiz_script = false;
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zuquiz1>"); }), ErrorKind::file);
}

TEST(ScriptedQuiz, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"a<TAB>b"});
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zuquiz1>"); }), ErrorKind::end_of_file);
}

} // namespace
} // namespace kiv
