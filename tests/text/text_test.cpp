#include "text/text.h"

#include "text/loop_bound.h"
#include "text/text_cursor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Text, CutsCountFromOne)
{
    EXPECT_EQ(FromChar("@FILE = about", 9), "about");
    EXPECT_EQ(FromChar("abc", 1), "abc");
    EXPECT_EQ(FromChar("abc", 3), "c");
    EXPECT_EQ(FromChar("abc", 4), ""); // past the end: the empty text
    EXPECT_EQ(FromChar("", 9), "");
    EXPECT_EQ(FirstChars("abc", 2), "ab");
    EXPECT_EQ(FirstChars("abc", 6), "abc");
    EXPECT_EQ(LastChars("abc", 2), "bc");
    EXPECT_EQ(LastChars("abc", 6), "abc");
}

TEST(Text, TrimCutsBlanksOnly)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a \t"), "\t a \t");
    EXPECT_EQ(Trim(" \xA0 "), "\xA0");
    EXPECT_EQ(Trim(" a\r\n"), "a\r\n");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(Text, ComparesAsciiWithoutCase)
{
    EXPECT_TRUE(EqualsNoCase("<!--Body Here-->", "<!--BODY HERE-->"));
    EXPECT_FALSE(EqualsNoCase("<!--Body Here--> ", "<!--BODY HERE-->"));
    EXPECT_TRUE(StartsWithNoCase("@file = x", "@FILE ="));
    EXPECT_FALSE(StartsWithNoCase("@fil", "@FILE ="));
    EXPECT_FALSE(StartsWithNoCase("[", "{")); // 32 apart, like letters of two cases
    EXPECT_FALSE(StartsWithNoCase("@", "`"));
    EXPECT_FALSE(StartsWithNoCase("\xE9", "\xC9")); // words are ASCII
}

struct FindRow {
    const char* text;
    const char* word;
    std::size_t from;
    std::size_t at;
};

constexpr FindRow kFinds[] = {
    {"x!!Pop[y", "!!POP[", 0, 1}, {"!!pop[!!POP[", "!!POP[", 1, 6},
    {"aXbxX", "x", 2, 3},         {"XxX", "x", 1, 1},
    {"abc", "d", 0, npos},        {"abc", "C", 2, 2},
    {"abc", "c", 3, npos},        {"abc", "", 0, npos},
    {"ab", "abc", 0, npos},       {"hay HAY needle", "NEEDLE", 0, 8},
};

TEST(Text, FindsWithoutCase)
{
    for (const FindRow& row : kFinds)
        EXPECT_EQ(FindNoCase(row.text, row.word, row.from), row.at) << row.text << " " << row.word;
    EXPECT_TRUE(ContainsNoCase("a<STYLE>b", "<style>"));
    EXPECT_FALSE(ContainsNoCase("a<STYL>b", "<style>"));
    EXPECT_EQ(CountNoCase("aAaAa", "AA"), 2U); // without overlaps
    EXPECT_EQ(CountNoCase("", "a"), 0U);
}

struct ReplaceRow {
    const char* text;
    const char* word;
    const char* value;
    const char* result;
};

constexpr ReplaceRow kReplaceEach[] = {
    {"a-b-c", "-", "+", "a+b+c"},     {"aaa", "aa", "b", "ba"}, // from left to right, no overlap
    {"aa", "a", "aa", "aaaa"},                                  // the value is not searched again
    {" of of ", " of ", " ", " of "}, // two that share a blank: only the first goes
    {"abc", "b", "", "ac"},           {"abc", "B", "x", "abc"}, {"", "b", "x", ""},
};

TEST(Text, ReplacesEachOnce)
{
    for (const ReplaceRow& row : kReplaceEach) {
        std::string text = row.text;
        EXPECT_EQ(ReplaceEach(text, row.word, row.value), std::string(row.text) != row.result);
        EXPECT_EQ(text, row.result);
    }
}

TEST(Text, ReplacesEachWithoutCase)
{
    std::string text = "@Title, @TITLE and @title";
    EXPECT_TRUE(ReplaceEachNoCase(text, "@TITLE", "x@title"));
    EXPECT_EQ(text, "x@title, x@title and x@title");
    EXPECT_FALSE(ReplaceEachNoCase(text, "@FILE", "x"));
}

TEST(Text, EscapesQuotes)
{
    EXPECT_EQ(QuoteEscape(""), "");
    EXPECT_EQ(QuoteEscape("a & 'b'"), "a & 'b'");
    EXPECT_EQ(QuoteEscape("\"a\" \"\""), "&quot;a&quot; &quot;&quot;");
    EXPECT_EQ(QuoteEscape("\x93yes\x94"), "\x93yes\x94"); // curly quotes stay
}

/// Whether the replacing came to an end within the bound of a line of that text.
bool ReplacedWhileLeft(std::string& text, std::string_view word, std::string_view value)
{
    LineBound bound(text.size());
    return ReplaceWhileLeft(text, word, value, bound);
}

TEST(Text, ReplacesWhileOneIsLeft)
{
    std::string text = "a@@1b@@1";
    EXPECT_TRUE(ReplacedWhileLeft(text, "@@1", "x"));
    EXPECT_EQ(text, "axbx");
    text = "@@@11"; // the value completes a new mark with what stands around it
    EXPECT_TRUE(ReplacedWhileLeft(text, "@@1", ""));
    EXPECT_EQ(text, "@1");
    text = "@@@@11";
    EXPECT_TRUE(ReplacedWhileLeft(text, "@@1", ""));
    EXPECT_EQ(text, "");
}

TEST(Text, ReplacementByItselfEndsQuietly)
{
    std::string text = "a @@1 b";
    EXPECT_TRUE(ReplacedWhileLeft(text, "@@1", "@@1"));
    EXPECT_EQ(text, "a @@1 b");
}

TEST(Text, ReplacementWithoutEndIsNoticed)
{
    std::string growing = "@@1";
    EXPECT_FALSE(ReplacedWhileLeft(growing, "@@1", "x@@1"));
    std::string shrinking_never = "y@@1";
    EXPECT_FALSE(ReplacedWhileLeft(shrinking_never, "@@1", std::string(200'000, 'x') + "@@1"));
}

TEST(LineBound, AllowsManyPassesAndMuchText)
{
    LineBound passes(10);
    passes.AddMarks(3);
    for (int pass = 1; pass < 10'003; ++pass)
        ASSERT_TRUE(passes.Allows(10, true)) << pass;
    EXPECT_FALSE(passes.Allows(10, true)); // 10,000 and the marks there were
    LineBound last_pass(10);
    for (int pass = 1; pass < 10'000; ++pass)
        ASSERT_TRUE(last_pass.Allows(10, true));
    EXPECT_TRUE(last_pass.Allows(10, false)); // done with the last pass allowed
    LineBound length(10);
    EXPECT_TRUE(length.Allows(1'001'000, true)); // a million, and a hundred for each character
    EXPECT_FALSE(length.Allows(1'001'001, false));
}

TEST(LineBound, IsOneForAllLoops)
{
    LineBound bound(0);
    for (int loop = 0; loop < 3; ++loop) {
        bound.AddMarks(2);
        for (int pass = 0; pass < 3'000; ++pass)
            ASSERT_TRUE(bound.Allows(10, true));
    }
    bound.AddSource(5);
    EXPECT_EQ(bound.Longest(), 1'000'500U);
    int passes = 0;
    while (bound.Allows(10, true))
        ++passes;
    EXPECT_EQ(passes, 1'005); // of 10,006 in all, and the last is not for a mark that is left
}

TEST(LineBound, CountsWork)
{
    LineBound bound(1);
    EXPECT_TRUE(bound.Spend(2'500'003'000));
    EXPECT_FALSE(bound.Spend(1));
}

/// A short text, and one that is long enough to be kept apart.
class TextCursorAt : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Text, TextCursorAt, testing::Values("", std::string(2'000, '.')));

TEST_P(TextCursorAt, ChangesATextInItsMiddle)
{
    std::string text = "one two three" + GetParam();
    std::string store = "old";
    TextCursor cursor(text, store);
    EXPECT_EQ(cursor.At(), 0U);
    cursor.MoveTo(4);
    cursor.Put(3, "2");
    EXPECT_EQ(cursor.Before(), "one ");
    EXPECT_EQ(cursor.Rest(), "2 three" + GetParam());
    EXPECT_EQ(cursor.Size(), 11U + GetParam().size());
    cursor.Put(1, "something longer than was there");
    cursor.MoveTo(2); // back, over text that is kept apart
    cursor.Put(1, "");
    EXPECT_EQ(cursor.Before(), "on");
    cursor.Close();
    EXPECT_EQ(text, "on something longer than was there three" + GetParam());
}

TEST(TextCursor, BecomesLongWhileItStandsInTheMiddle)
{
    std::string text = "abc";
    std::string store;
    TextCursor cursor(text, store);
    cursor.MoveTo(1);
    const std::string value(3'000, 'x');
    cursor.Put(1, value);
    EXPECT_EQ(cursor.Before(), "a");
    EXPECT_EQ(cursor.Rest(), value + "c");
    cursor.Put(0, "y");
    cursor.MoveTo(0);
    cursor.Close();
    EXPECT_EQ(text, "ay" + value + "c");
}

TEST_P(TextCursorAt, GoesToTheEndAndBack)
{
    std::string text = GetParam() + "abc";
    std::string store;
    TextCursor cursor(text, store);
    cursor.MoveTo(text.size());
    EXPECT_EQ(cursor.Rest(), "");
    cursor.Put(0, "def");
    EXPECT_EQ(cursor.Rest(), "def");
    cursor.MoveTo(0);
    EXPECT_EQ(cursor.Rest(), GetParam() + "abcdef");
    EXPECT_EQ(cursor.TakeMoved() > 0, !GetParam().empty());
    EXPECT_EQ(cursor.TakeMoved(), 0U);
    cursor.MoveTo(1);
    cursor.PutAll("new");
    EXPECT_EQ(cursor.Rest(), "new");
    EXPECT_EQ(cursor.At(), 0U);
    cursor.Close();
    EXPECT_EQ(text, "new");
}

TEST(Text, Splits)
{
    EXPECT_THAT(Split("", '|'), IsEmpty()); // an empty text has no field
    EXPECT_THAT(Split("a", '|'), ElementsAre("a"));
    EXPECT_THAT(Split("|", '|'), ElementsAre("", ""));
    EXPECT_THAT(Split("a||b|", '|'), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(Split("a\r\nb\nc\r\n", "\r\n"), ElementsAre("a", "b\nc", ""));
    EXPECT_EQ(Before("a.b.c", '.'), "a");
    EXPECT_EQ(Before("abc", '.'), "abc");
}

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty())
        lines.emplace_back(TakeLine(text));
    return lines;
}

TEST(Text, TakesLines)
{
    EXPECT_THAT(LinesOf(""), IsEmpty());
    EXPECT_THAT(LinesOf("a\r\nb\nc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(LinesOf("a\n"), ElementsAre("a")); // an end at the very end opens no line
    EXPECT_THAT(LinesOf("\n\n"), ElementsAre("", ""));
    EXPECT_THAT(LinesOf("a\r\r\nb"), ElementsAre("a\r", "b")); // one CR goes with the LF
    EXPECT_THAT(LinesOf("a\rb\r"), ElementsAre("a\rb\r"));     // a CR alone ends nothing
    EXPECT_THAT(LinesOf("a\x1A"
                        "b\n\xEF\xBB\xBFz"),
                ElementsAre("a\x1A"
                            "b",
                            "\xEF\xBB\xBFz"));
}

struct NumberRow {
    const char* text;
    int value;
};

constexpr NumberRow kNumbers[] = {
    {"03", 3}, {"1 ", 1},   {" 1", 1},   {"1[", 1},  {"1.", 1},  {"ab", 0},
    {".7", 0}, {"&H", 0},   {"-1", -1},  {"10", 10}, {"-0", 0},  {"+7", 7},
    {"", 0},   {"- 2", -2}, {"1 2", 12}, {"+-1", 0}, {"1-2", 1}, {"99999999999", 1'000'000'000},
};

TEST(Text, NumericValueOfAHead)
{
    for (const NumberRow& row : kNumbers)
        EXPECT_EQ(NumericHead(row.text), row.value) << row.text;
    EXPECT_EQ(Decimal(0), "0");
    EXPECT_EQ(Decimal(-12), "-12");
}

} // namespace
} // namespace kiv
