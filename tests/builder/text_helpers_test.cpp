#include "builder/text_helpers.h"

#include "tests/builder/message_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::HasSubstr;

TEST(TextHelpers, FileStem)
{
    const struct {
        const char* file;
        const char* stem;
        const char* left;
    } kRows[] = {
        {"pages/sub\\item.old.htm", "item", "item.old.htm"},
        {"a\\b/item.htm", "item", "item.htm"},
        {"item", "item", "item"},
        {".htm", "", ".htm"},
        {"a.b/c", "c", "c"},
        {"a/", "", ""},
        {"//a\\\\b.c", "b", "b.c"},
        {"../x.htm", "x", "x.htm"},
        {"", "", ""},
    };
    for (const auto& row : kRows) {
        std::string file = row.file;
        EXPECT_EQ(FileStem(file), row.stem) << row.file;
        EXPECT_EQ(file, row.left) << row.file;
    }
}

TEST(TextHelpers, StripTitle)
{
    const struct {
        const char* title;
        const char* stripped;
        const char* why;
    } kRows[] = {
        {"", "", ""},
        {"A <i>B</i> C", "A B C", "tags"},
        {"A & \"B\" &amp;", "A &amp; &quot;B&quot; &amp;amp;", "ampersands, then quotes"},
        {"<a href=\"x\">\"B\"</a>", "&quot;B&quot;", "the tags' own quotes are gone before"},
        {"x > y < z", "x  z", "what stands between goes as well"},
        {"x > y < z > w", "x  z > w", "one of the two is left alone"},
        {"a < b", "a < b", "no >"},
        {"a > b", "a > b", "no <"},
        {"<<b>>", ">", "the first of each"},
        {"a<b<c>d", "ad", "the first < up to the first >"},
        {"<>", "", ""},
        {"><", "", ""},
        {"a<b>c>d<e<f>g", "aceg", "each pair is looked for anew"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(StripTitle(row.title), row.stripped) << row.why;
}

TEST(TextHelpers, TitleKeywords)
{
    const struct {
        const char* title;
        const char* keywords;
        const char* why;
    } kRows[] = {
        {"The Art of War", "The,Art,War", "a leading stop word stays"},
        {"Rock and and Roll", "Rock,and,Roll", "a shared blank saves the second"},
        {"What it is", "What,it,is", "a stop word at the end stays"},
        {"A and B of C the D in E or F for G a H an I is J are K", "A,B,C,D,E,F,G,H,I,J,K", "all"},
        {"Rock AND Roll", "Rock,Roll", "in any case"},
        {"Land of the Free", "Land,Free", "each word has its own pass, and leaves a blank"},
        {"x the of y", "x,y", "in either order"},
        {"<b>War</b> & \"Peace\"", "War,Peace", "tags, & and quotes: two blanks become one"},
        {"a,b:c;d", "a,b,c,d", "separators"},
        {"a, b", "a,b", "separator and blank"},
        {"a   b", "a,,b", "three blanks leave two"},
        {"a    b", "a,,b", "four leave two"},
        {"a\tb", "a\tb", "a tab stays"},
        {" x ", ",x,", "not trimmed"},
        {"x > y < z", "x,z", "the text between goes"},
        {"R&D", "RD", ""},
        {"this and:that", "this,that", "separators come before stop words"},
        {"", "", ""},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(TitleKeywords(row.title), row.keywords) << row.why;
}

TEST(TextHelpers, IndexRelativeLink)
{
    EXPECT_EQ(IndexRelativeLink("index.htm"), "");
    EXPECT_EQ(IndexRelativeLink("indexes.htm"), "");
    EXPECT_EQ(IndexRelativeLink("Index.htm"), "/Index.htm");
    EXPECT_EQ(IndexRelativeLink("sub/index.htm"), "/sub/index.htm");
    EXPECT_EQ(IndexRelativeLink(""), "/");
}

TEST(TextHelpers, DropParentPrefix)
{
    const char* const kRows[][2] = {{"..\\x", "x"}, {"../a/b", "a/b"}, {"..", ""},
                                    {"...", ""},    {"..ab", "b"},     {".\\x", ".\\x"},
                                    {"x..", "x.."}, {"", ""},          {"..\\..\\x", "..\\x"}};
    for (const auto& row : kRows)
        EXPECT_EQ(DropParentPrefix(row[0]), row[1]) << row[0];
}

TEST(TextHelpers, DecodeLineBreaks)
{
    EXPECT_EQ(DecodeLineBreaks("a<>b~~c"), "a\r\nb<>c");
    EXPECT_EQ(DecodeLineBreaks("<><>"), "\r\n\r\n");
    EXPECT_EQ(DecodeLineBreaks("~~~"), "<>~");
    EXPECT_EQ(DecodeLineBreaks("< >~ ~"), "< >~ ~");
    EXPECT_EQ(DecodeLineBreaks(""), "");
}

TEST(TextHelpers, SpaceToPct20)
{
    EXPECT_EQ(SpaceToPct20(" a  b\tc"), "%20a%20%20b\tc");
    EXPECT_EQ(SpaceToPct20(""), "");
}

struct TitleVariables : testing::Test {
    VariableSlots slots{"slot"};

    std::string Expand(std::string text)
    {
        ExpandTitleVariables(text, slots);
        return text;
    }
};

TEST_F(TitleVariables, AreExpanded)
{
    slots[0] = "zero";
    slots[1] = "one";
    slots[2] = "two @@9";
    slots[3] = "three @@1";
    slots[9] = "nine";
    EXPECT_EQ(Expand("no variable"), "no variable");
    EXPECT_EQ(Expand("@@1 and @@1, @@9."), "one and one, nine.");
    EXPECT_EQ(Expand("@@0 @@"), "@@0 @@"); // slot 0 is never used
    EXPECT_EQ(Expand("@@4-"), "-");        // not defined
    EXPECT_EQ(Expand("@@2"), "two nine");  // a later digit in a value is expanded
    EXPECT_EQ(Expand("@@3"), "three @@1"); // an earlier one is not
    EXPECT_EQ(Expand("@@@@11"), "@@one1"); // from left to right, then nothing is left
    EXPECT_EQ(Expand("@@12"), "one2");     // one digit
}

TEST_F(TitleVariables, JoinToNewOnes)
{
    slots[1] = "@";
    slots[2] = "two";
    EXPECT_EQ(Expand("@@@11"), "@");
    EXPECT_EQ(Expand("@@@12"), "two");
}

TEST_F(TitleVariables, ThatBringThemselvesBack)
{
    slots[1] = "@@1";
    EXPECT_EQ(Expand("a @@1 b"), "a @@1 b"); // a pass that changes nothing ends quietly
    slots[2] = "x@@2";
    const std::optional<RunError> error = FatalError([&] { Expand("a @@2 b"); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind, ErrorKind::overflow);
    EXPECT_THAT(error->text, HasSubstr("@@2"));
}

TEST(TextHelpers, LongTitlesCostLittle)
{
    std::string title;
    for (int i = 0; i < 300'000; ++i)
        title += "a<b>";
    EXPECT_EQ(StripTitle(title), std::string(300'000, 'a'));
    EXPECT_EQ(StripTitle(std::string(1'000'000, '<')), std::string(1'000'000, '<'));
}

} // namespace
} // namespace kiv
