// What the checker of server-side script lets pass, and what it finds.
#include "tests/server_scripts/script_checker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ScriptChecker, ScriptThatRunsPasses)
{
    for (const char* page : {
             "",
             "plain text with % and > and \"quotes",
             "<% %>",
             "<%\r\n\r\n%>",
             "<%=x%> and <%= rs.Fields(\"a\").value %>",
             "<%a=1%>",
             "<%a = \"he said \"\"no\"\"\" & b & \"!\"%>",
             "<%a = \"\"%>",
             "<%'a remark with \" and (%>",
             "<%a=1 'a remark with \" and (%>",
             "<%conn.Execute sql, n%>",
             "<%conn.Close%>",
             "<%Response.Write \"a\" & b%>",
             "<%set rs = Server.CreateObject(\"A.B\")%>",
             "<%Set m = Nothing%>",
             "<%m.value(\"Reply-To\")=from%>",
             "<%dim a, b%>",
             "<%if a=\"\" and not (b > 3 or c <> -1) then d=\"yes\"%>",
             "<%if a then%>x<%elseif b then%>y<%else%>z<%end if%>",
             "<%for each x in rs.Fields%><td><%=x.name%></td><%next%>",
             "<%for i = 1 to 10 step 2\nnext%>",
             "<%do until rs.EOF%>\n<tr><%rs.MoveNext\nloop%>",
             "<%do\nloop while a < 3%>",
             "<%select case a\ncase 1, 2\nb=1\ncase else\nb=2\nend select%>",
             "<%function F(a, b)\nF = a\nend function\nsub S\nend sub%>",
             "<%sql = \"SELECT [a b] FROM t WHERE (x='\" & y & \"' AND z='it is [(')\"%>",
         })
        EXPECT_THAT(FaultsOf(page), IsEmpty()) << page;
}

struct Broken {
    const char* page;
    const char* fault;
};

class ScriptCheckerFinds : public testing::TestWithParam<Broken> {};

TEST_P(ScriptCheckerFinds, Fault)
{
    EXPECT_THAT(FaultsOf(GetParam().page), ElementsAre(HasSubstr(GetParam().fault)))
        << GetParam().page;
}

INSTANTIATE_TEST_SUITE_P(Marks, ScriptCheckerFinds,
                         testing::Values(Broken{"a\nb %> c", "line 2: \"%>\" without \"<%\""},
                                         Broken{"a\n<%\nb=1", "line 2: \"<%\" without \"%>\""},
                                         Broken{"<%=\"<%\"%>", "\"<%\" inside script"},
                                         Broken{"<%=%>", "wanted a value but got the line's end"},
                                         Broken{"<%=a b%>", "wanted the line's end but got \"b\""}),
                         [](const auto& one) { return "Case" + std::to_string(one.index); });

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptCheckerFinds,
    testing::Values(Broken{"<%\r\na=\"b\r\nc=1%>", "line 2: a text does not end"},
                    Broken{"<%a=\"b\"\"%>", "a text does not end"},
                    Broken{"<%a=1: b=2%>", "wanted the line's end but got \":\""},
                    Broken{"<%a=1 b=2%>", "wanted the line's end but got \"b\""},
                    Broken{"<%a=\"x\" \"y\"%>", "wanted the line's end but got \"y\""},
                    Broken{"<%a=\"x\" &%>", "wanted a value but got the line's end"},
                    Broken{"<%a=& \"x\"%>", "wanted a name but got \"&\""},
                    Broken{"<%a=\"x\" & & b%>", "wanted a name but got \"&\""},
                    Broken{"<%a=(b%>", "wanted \")\" but got the line's end"},
                    Broken{"<%a=b)%>", "wanted the line's end but got \")\""},
                    Broken{"<%a=f(b,)%>", "wanted a name but got \")\""},
                    Broken{"<%a=b.%>", "wanted a member's name"},
                    Broken{"<%a=b[%>", "no sign of the language: ["},
                    Broken{"<%end=1%>", "wanted \"if, select, function or sub\""},
                    Broken{"<%set a%>", "wanted \"=\""}, Broken{"<%dim%>", "wanted a name"},
                    Broken{"<%\"x\"%>", "wanted a name"}),
    [](const auto& one) { return "Case" + std::to_string(one.index); });

INSTANTIATE_TEST_SUITE_P(
    Blocks, ScriptCheckerFinds,
    testing::Values(Broken{"<%if a then%>", "line 1: \"if\" is not closed"},
                    Broken{"<%if a%>", "wanted \"then\""},
                    Broken{"<%if then b=1%>", "wanted a name but got \"then\""},
                    Broken{"<%end if%>", "no \"if\" is open here"},
                    Broken{"<%else%>", "no \"if\" is open here"},
                    Broken{"<%case 1%>", "no \"select\" is open here"},
                    Broken{"a\n<%do\n%>", "line 2: \"do\" is not closed"},
                    Broken{"<%loop%>", "no \"do\" is open here"},
                    Broken{"<%for each x in y%>", "\"for\" is not closed"},
                    Broken{"<%for each x%>", "wanted \"in\""},
                    Broken{"<%for i=1%>", "wanted \"to\""},
                    Broken{"<%next%>", "no \"for\" is open here"},
                    Broken{"<%function f(a%>", "wanted \")\""},
                    Broken{"<%function f(a)\nend sub\nend function%>", "no \"sub\" is open here"},
                    Broken{"<%select case a%>", "\"select\" is not closed"}),
    [](const auto& one) { return "Case" + std::to_string(one.index); });

INSTANTIATE_TEST_SUITE_P(
    Sql, ScriptCheckerFinds,
    testing::Values(Broken{"<%sql=\"x='\" & a%>", "the database statement does not end: x='x"},
                    Broken{"<%sql=\"f(\" & a.b(\"c\")%>", "the database statement does not end"},
                    Broken{"<%if a=\"'\" then sql=\"(\"%>", "does not end: ("},
                    Broken{"<%sql=\"[a)\"%>", "do not match: [a)"},
                    Broken{"<%sql=\"a]\"%>", "do not match: a]"}),
    [](const auto& one) { return "Case" + std::to_string(one.index); });

TEST(ScriptChecker, MarkInsideATextEndsTheScript)
{
    EXPECT_THAT(FaultsOf("<%a=\"x%>y\"%>"),
                ElementsAre(HasSubstr("a text does not end"), HasSubstr("\"%>\" without \"<%\"")));
}

TEST(ScriptChecker, CrossedBlocksAreAllNamed)
{
    EXPECT_THAT(FaultsOf("<%do\nif a then\nloop\nend if%>"),
                ElementsAre(HasSubstr("line 3: no \"do\" is open here"),
                            HasSubstr("line 1: \"do\" is not closed")));
    EXPECT_THAT(FaultsOf("<%if a then\nsub s\nend sub\nend if%>"),
                ElementsAre(HasSubstr("line 2: a procedure inside another block"),
                            HasSubstr("line 3: no \"sub\" is open here")));
}

} // namespace
} // namespace kiv::test
