#include "builder/cross_references.h"

#include "tests/builder/message_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct References : testing::Test {
    MessageRecorder recorder;
    BuildMessages messages{recorder};
    NumberedVariables variables;
    PageRecord page;

    // Each expands the first use of its mark with digit 1 in the line.
    std::string Numbered(std::string line, const std::string& definition)
    {
        variables[Family::bang][1] = definition;
        ExpandNumbered(line, line.find("!!1"), 1, Family::bang, variables, messages);
        return line;
    }
    std::string PageRef(std::string line)
    {
        ExpandPageRef(line, line.find("??1"), 1, variables, page, messages);
        return line;
    }
    std::string GroupRef(std::string line)
    {
        ExpandGroupRef(line, line.find("?!1"), 1, variables, page, messages);
        return line;
    }

    template <typename Call>
    void ExpectFatal(Call call, ErrorKind kind, const std::string& mark)
    {
        const std::optional<RunError> error = FatalError(call);
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(KindName(error->kind), KindName(kind));
        EXPECT_THAT(error->text, HasSubstr(mark));
    }
};

TEST_F(References, NumberedTemplates)
{
    const struct {
        const char* line;
        const char* definition;
        const char* expected;
        const char* why;
    } kRows[] = {
        {"x!!1[a|b]y", "<b>!1</b><i>!2</i>!3.", "x<b>a</b><i>b</i>.y", "no field, no placeholder"},
        {"!!1[a|b]", "!2!1!2", "bab", "each placeholder everywhere"},
        {"!!1[ a |B]", "(!1)(!2)", "( a )(B)", "fields as written"},
        {"!!1[a||c]", "!1-!2-!3", "a-&nbsp;-c", "an empty field"},
        {"!!1[|]", "!1-!2", "&nbsp;-&nbsp;", "two empty fields"},
        {"!!1[]", "(!1)(!2)", "(!1)()", "no field at all: !1 is left"},
        {"!!1[]", "!10!11!20", "!110", "!2 goes before !10, and !11 is left"},
        {"x!!1[a|b]y", "", "xy", "without definition it vanishes"},
        {"!!1[a|b|c|d|e|f|g|h|i|j]", "!10!1", "ja", "!10 before !1"},
        {"!!1[a|b|c|d|e|f|g|h|i|j|k]", "!11!12", "ka2", "no twelfth field: !1 and a 2"},
        {"!!1[a]", "!10", "a0", "fewer than ten fields"},
        {"!!1[a]", "!01 !0", "!01 !0", "no leading zero, no field 0"},
        {"!!1[!2|x]", "[!1][!2]", "[][x]", "clean-up hits what came from a field"},
        {"!!1[x|!1|!2]", "!3", "x", "a value's placeholders are filled as k counts down"},
        {"!!1[!3|y|z]", "<!1>", "<>", "but not upwards"},
        {"!!1[a|b|2!]", "!!3", "b!", "a value joins what stands before it"},
        {"!!1[a|B|c!]", "!32", "cB", "and what stands behind it"},
        {"!!1[a]", "!!1[q]!!3[r]!!2", "!a[q]![r]!", "further uses do not survive"},
        {"!!1[a]", "!!22", "!2", "each number is one pass"},
        {"!2!!1[a]!3]", "!1", "!2a!3]", "neither prefix nor rest are cleaned"},
        {"Wow!!1 x]z", "<!1>", "Wow<x>z", "any character counts as the bracket"},
        {"!!1[a]b]", "!1", "ab]", "the first ] closes"},
        {"!!1[a\r\nb]\r\nc", "!1", "a\r\nb\r\nc", "lines joined by CR LF"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Numbered(row.line, row.definition), row.expected) << row.why;
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(References, KindsAndDigitsAreApart)
{
    for (int digit = 1; digit <= 9; ++digit) {
        variables[Family::bang][digit] = "bang" + std::to_string(digit) + "(!1)";
        variables[Family::dollar][digit] = "dollar" + std::to_string(digit) + "(!1)";
    }
    for (int digit = 1; digit <= 9; ++digit) {
        const std::string number = std::to_string(digit);
        std::string line = "-$$" + number + "[a]-";
        ExpandNumbered(line, 1, digit, Family::dollar, variables, messages);
        EXPECT_EQ(line, "-dollar" + number + "(a)-");
        line = "-!!" + number + "[a]-";
        ExpandNumbered(line, 1, digit, Family::bang, variables, messages);
        EXPECT_EQ(line, "-bang" + number + "(a)-");
    }
}

TEST_F(References, TheUseAtThePositionAlone)
{
    variables[Family::bang][1] = "<!1>";
    std::string line = "!!1[a] !!1[b]";
    ExpandNumbered(line, 7, 1, Family::bang, variables, messages);
    EXPECT_EQ(line, "!!1[a] <b>");
}

TEST_F(References, MissingBracket)
{
    EXPECT_EQ(Numbered("a!!1[b|c", "<!1>"), "a<b>");
    EXPECT_EQ(Numbered("a!!1", "T"), "aT"); // nothing left: no field
    EXPECT_EQ(Numbered("a!!1[b", ""), "a");
    EXPECT_THAT(recorder.shown, ElementsAre("Missing closed bracket: b|c"));
    EXPECT_THAT(recorder.noted,
                ElementsAre("Missing closed bracket: b|c",
                            "Missing closed bracket: ", "Missing closed bracket: b"));
}

TEST_F(References, MissingBracketComesBeforeMissingDefinition)
{
    page.file = "p.htm";
    EXPECT_EQ(PageRef("x??1[a"), "");
    EXPECT_EQ(GroupRef("x?!1[a"), "");
    EXPECT_THAT(recorder.noted, ElementsAre("Missing closed bracket: a",
                                            "You're missing ?? = in the _html.txt file: \r\nx??1[a",
                                            "Missing closed bracket: a",
                                            "You're missing a ?! = in the _html.txt file"));
    EXPECT_THAT(recorder.shown, ElementsAre("Missing closed bracket: a"));

    variables[Family::page_ref][1] = "yes !1|no !1";
    variables[Family::group_ref][1] = "both !2|group !2|no !2";
    EXPECT_EQ(PageRef("x??1[p"), "xyes p");
    EXPECT_EQ(GroupRef("x?!1[p|q"), "xgroup q");
}

TEST_F(References, MissingDefinitionsEmptyTheLine)
{
    page.file = "sub/p.htm";
    EXPECT_EQ(PageRef("before ??1[a|b] after"), "");
    EXPECT_THAT(
        recorder.shown,
        ElementsAre("You're missing ?? = in the _html.txt file: \r\nbefore ??1[a|b] after"));
    MessageRecorder other;
    BuildMessages others(other);
    std::string line = "before ?!2[a] after";
    variables[Family::group_ref][1] = "a|b|c"; // another digit's
    ExpandGroupRef(line, 7, 2, variables, page, others);
    EXPECT_EQ(line, "");
    EXPECT_THAT(other.shown, ElementsAre("You're missing a ?! = in the _html.txt file"));
    EXPECT_EQ(page.file, "sub/p.htm"); // no stem is taken
}

TEST_F(References, PageReferenceInAMenu)
{
    variables[Family::page_ref][1] = "<b>!2</b>|<a href=\"!1.htm\">!2</a>";
    page.file = "index.htm";
    EXPECT_EQ(PageRef("<li>??1[index|START]</li>"), "<li><b>START</b></li>");
    page.file = "other.htm";
    EXPECT_EQ(PageRef("<li>??1[index|START]</li>"), "<li><a href=\"index.htm\">START</a></li>");
}

TEST_F(References, PageReferences)
{
    const struct {
        const char* file;
        const char* id;
        const char* arguments;
        const char* expected;
        const char* why;
    } kRows[] = {
        {"p.htm", "", "p|L", "yes p L !3", "the stem; no placeholder is deleted"},
        {"p.htm", "", "p.htm|L", "yes p.htm L !3", "the file name"},
        {"p.htm", "", "P|L", "no P L !3|x", "case matters; the no half keeps its bars"},
        {"p.old.htm", "", "p|L", "yes p L !3", "the stem ends at the first dot"},
        {"p.old.htm", "", "p.old|L", "no p.old L !3|x", ""},
        {"sub/p.htm", "", "p.htm|L", "yes p.htm L !3", "the folder is off already"},
        {"sub/p.htm", "", "sub/p.htm|L", "no sub/p.htm L !3|x", "so this never matches"},
        {"p.htm", "", " p|L", "no  p L !3|x", "no trimming"},
        {"p.htm", "seven", "ID:seven|L", "yes ID:seven L !3", "the id"},
        {"q.htm", "seven", "id:seven|L", "yes id:seven L !3", "ID: in any case"},
        {"p.htm", "seven", "ID:Seven|L", "no ID:Seven L !3|x", "the id's case matters"},
        {"ID:p.htm", "", "ID:p|L", "no ID:p L !3|x", "ID: never means a file"},
        {"p.htm", "", "ID:|L", "yes ID: L !3", "a page without id"},
        {"p.htm", "x", "ID:|L", "no ID: L !3|x", ""},
        {"ID.htm", "", "ID|L", "yes ID L !3", "too short for ID:"},
        {"p.htm", "", "|L", "no &nbsp; L !3|x", "an empty field is a blank first"},
        {"p.htm", "", "p|", "yes p &nbsp; !3", ""},
        {"p.htm", "", "p", "yes p !2 !3", "one field"},
        {"p.htm", "", "p|!1", "yes p p !3", "a value's placeholder is filled"},
    };
    variables[Family::page_ref][1] = "yes !1 !2 !3|no !1 !2 !3|x";
    for (const auto& row : kRows) {
        page = PageRecord{};
        page.file = row.file;
        page.id = row.id;
        EXPECT_EQ(PageRef(std::string("a??1[") + row.arguments + "]b"),
                  std::string("a") + row.expected + "b")
            << row.arguments << ": " << row.why;
    }
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(References, FolderIsCutFromTheRecord)
{
    variables[Family::page_ref][1] = "yes|no";
    variables[Family::group_ref][1] = "both|group|no";
    page.group = "g";
    for (const char* line : {"??1[p]", "??1[ID:x]"}) {
        page.file = "a/b\\p.old.htm";
        PageRef(line);
        EXPECT_EQ(page.file, "p.old.htm");
    }
    for (const char* line : {"?!1[g|p]", "?!1[other|ID:x]"}) {
        page.file = "a\\b/p.old.htm";
        GroupRef(line);
        EXPECT_EQ(page.file, "p.old.htm");
    }
}

TEST_F(References, PageReferenceFaults)
{
    page.file = "p.htm";
    variables[Family::page_ref][1] = "yes|no";
    ExpectFatal([&] { PageRef("??1[]"); }, ErrorKind::subscript, "??1");
    variables[Family::page_ref][1] = "yes";
    ExpectFatal([&] { PageRef("??1[p]"); }, ErrorKind::invalid_argument, "??1");
    variables[Family::page_ref][1] = "|";
    EXPECT_EQ(PageRef("a??1[p]b"), "ab");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(References, GroupReferences)
{
    const struct {
        const char* file;
        const char* group;
        const char* id;
        const char* arguments;
        const char* expected;
        const char* why;
    } kRows[] = {
        {"war.htm", "history", "", "history|war", "both history war", "group and page"},
        {"war.htm", "history", "", "history|peace", "group history peace", "group alone"},
        {"war.htm", "history", "", "art|war", "no art war", "neither"},
        {"war.htm", "history", "", "History|war", "no History war", "case matters"},
        {"war.htm", "history", "", "hist|war", "no hist war", "a head needs a star"},
        {"war.htm", "history", "", "history|war.htm", "group history war.htm",
         "an extension only behind a star"},
        {"war.htm", "history", "", "hist*|war", "both hist* war", "!1 keeps the star"},
        {"war.htm", "history", "", "hist*|war.htm", "both hist* war.htm", ""},
        {"war.htm", "history", "", "hist*|war.html", "both hist* war.html", ""},
        {"war.htm", "history", "", "hist*|war.asp", "both hist* war.asp",
         "whatever the file's own"},
        {"war.htm", "history", "", "hist*|war.php", "group hist* war.php", "no other extension"},
        {"war.htm", "history", "", "hist*|war.HTM", "group hist* war.HTM", "case matters"},
        {"war.htm", "history", "", "history*|war", "both history* war", "the whole name"},
        {"war.htm", "history", "", "histories*|war", "no histories* war", ""},
        {"war.htm", "0_1_3_2", "", "0_1_3*|x", "group 0_1_3* x", "any group that starts so"},
        {"war.htm", "history", "", "*|war", "both * war", "every group"},
        {"war.htm", "", "", "*|x", "group * x", "every group"},
        {"war.htm", "hist*ory", "", "hist**|war", "both hist** war", "one star is dropped"},
        {"sub/war.htm", "", "", "war|war", "both war war", "no group: the stem"},
        {"war.htm", "", "", "w*|war.htm", "both w* war.htm", "no group: the stem"},
        {"war.htm", "history", "", "war|war", "no war war", "the stem is no group beside one"},
        {"war.htm", " history", "", "history|war", "no history war", "the group is not trimmed"},
        {"war.htm", "history", "7", "history|ID:7", "both history ID:7", "the id"},
        {"war.htm", "history", "7", "hist*|id:7", "both hist* id:7", ""},
        {"war.htm", "history", "7", "history|ID:8", "group history ID:8", ""},
        {"war.htm", "history", "x", "history|ID:X", "group history ID:X", "case matters"},
        {"war.htm", "history", "7", "art|ID:7", "no art ID:7", "the page is not asked"},
        {"war.htm", "history", "", "history|ID:", "both history ID:", "a page without id"},
        {"war.htm", "history", "", "|war", "no &nbsp; war", "an empty field is a blank first"},
        {"war.htm", "history", "", "history|", "group history &nbsp;", ""},
    };
    variables[Family::group_ref][1] = "both !1 !2|group !1 !2|no !1 !2|unused";
    for (const auto& row : kRows) {
        page = PageRecord{};
        page.file = row.file;
        page.group = row.group;
        page.id = row.id;
        EXPECT_EQ(GroupRef(std::string("a?!1[") + row.arguments + "]b"),
                  std::string("a") + row.expected + "b")
            << row.arguments << ": " << row.why;
    }
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(References, GroupReferenceLeavesPlaceholders)
{
    variables[Family::group_ref][1] = "b|g!3!4|n";
    page.file = "p.htm";
    EXPECT_EQ(GroupRef("?!1[p|q|r]"), "gr!4");
}

TEST_F(References, GroupReferenceFaults)
{
    page.file = "p.htm";
    variables[Family::group_ref][1] = "both|group|no";
    for (const char* line : {"?!1[]", "?!1[p]", "?!1[other]"}) // a match or not
        ExpectFatal([&] { GroupRef(line); }, ErrorKind::subscript, "?!1");
    for (const char* definition : {"both", "both|group"}) {
        variables[Family::group_ref][1] = definition;
        ExpectFatal([&] { GroupRef("?!1[p|p]"); }, ErrorKind::subscript, "?!1");
    }
    variables[Family::group_ref][1] = "both|group|"; // an empty third half is one
    EXPECT_EQ(GroupRef("a?!1[x|p]b"), "ab");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(References, FieldsThatDoubleEachOtherEndInAFault)
{
    std::string line = "!!1[x";
    for (int k = 1; k < 60; ++k)
        line += "|!" + std::to_string(k) + "!" + std::to_string(k);
    line += "]";
    ExpectFatal([&] { Numbered(line, "!60"); }, ErrorKind::overflow, "of !!1 ");
}

TEST_F(References, LongLinesCostLittle)
{
    const std::string bars(1'000'000, '|');
    const std::string filler(1'000'000, '!');
    EXPECT_EQ(Numbered(filler + "a!!1[x" + bars + filler + "]" + filler, "!1000001"),
              filler + "a" + filler + filler);
}

} // namespace
} // namespace kiv
