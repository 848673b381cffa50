#include "utilities/text_conversions.h"

#include "platform/run_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::HasSubstr;

constexpr ConversionBoxes kNone{};
constexpr ConversionBoxes kLinks{.links_list = true};
constexpr ConversionBoxes kSingle{.single_spaced = true};
constexpr ConversionBoxes kPoetryP{.poetry_p = true};
constexpr ConversionBoxes kPoetryBr{.poetry_br = true};
constexpr ConversionBoxes kLinksSingle{.links_list = true, .single_spaced = true};

struct TextRow {
    std::string text, result;
};

TEST(EmailToHtml, Prose)
{
    const TextRow kRows[] = {
        {"", "<p></p>\r\n"},
        {"a", "<p> a</p>\r\n"}, // only upper-case tags lose the blank behind them
        {"a\r\nb\r\n", "<p> a b</p>\r\n"},
        {"a\nb\rc", "<p> a b c</p>\r\n"},
        {"  a  \r\n  b", "<p> a b</p>\r\n"},
        {"a\r\n\r\nb", "<p> a</P>\r\n<P>b</p>\r\n"},
        {"a\r\n\r\n\r\nb", "<p> a</P>\r\n<P>b</p>\r\n"}, // two blank lines are one break
        {"a\r\n   \r\n\r\nb", "<p> a</P>\r\n<P>b</p>\r\n"},
        {"\r\na", "<p></P>\r\n<P>a</p>\r\n"},
        {"a\r\n\r\n", "<p> a</P>\r\n<P></p>\r\n"},
        {"a\r\n\t\r\nb", "<p> a b</p>\r\n"}, // a tab is no blank: this line is not empty
        {"a\tb", "<p> a b</p>\r\n"},
        {"a   b\x97"
         "c",
         "<p> a b &mdash; c</p>\r\n"},
        {"\x93"
         "caf\xE9\x94",
         "<p> &ldquo;caf&eacute;&rdquo;</p>\r\n"},
        {"\xB7\ta", "<p> \xB7 a</p>\r\n"}, // the tab is gone before bullets are looked for
        {"x <P> y", "<p> x <P>y</p>\r\n"},
        {"x </P> y", "<p> x</P>y</p>\r\n"},
        {"x <p> y </p> z", "<p> x <p> y </p> z</p>\r\n"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(EmailToHtml(row.text, kNone), row.result) << row.text;
}

TEST(EmailToHtml, BlanksAtLineEndsGo)
{
    // The dash brings a blank to the end of its paragraph and of its line.
    EXPECT_EQ(EmailToHtml("a\x97", kSingle), "<p><p>a &mdash; </p>\r\n</p>\r\n");
    EXPECT_EQ(EmailToHtml("a\x97", kLinks), "a &mdash;\r\n");
    EXPECT_EQ(EmailToHtml("a\n\n\x97z", kLinksSingle), "<p>a</p>\r\n<p> &mdash; z</p>\r\n\r\n");
    // A blank behind a lower-case tag stays.
    EXPECT_EQ(EmailToHtml("a\n\n\tb", kPoetryP), "<p>a</p>\r\n<p> b</p>\r\n");
}

TEST(EmailToHtml, LinksList)
{
    EXPECT_EQ(EmailToHtml("a\r\nb", kLinks), "a b\r\n");
    EXPECT_EQ(EmailToHtml("", kLinks), "\r\n");
    EXPECT_EQ(EmailToHtml("a\r\n\r\nb\r\n", kLinks), "a</P>\r\n<P>b\r\n");
}

TEST(EmailToHtml, SingleSpaced)
{
    EXPECT_EQ(EmailToHtml("a", kSingle), "<p><p>a</p>\r\n</p>\r\n"); // wrapped all the same
    EXPECT_EQ(EmailToHtml("", kSingle), "<p></p>\r\n");
    EXPECT_EQ(EmailToHtml(" a \r\n\r\n  \r\nb\r\n", kLinksSingle), "<p>a</p>\r\n<p>b</p>\r\n\r\n");
}

TEST(EmailToHtml, PoetryInParagraphs)
{
    const TextRow kRows[] = {
        {"one\r\ntwo\r\n\r\nthree\r\nfour", "<p>one<br>two</p>\r\n<p>three<br>four</p>\r\n"},
        {"one\r\n\r\n\r\ntwo", "<p>one</p>\r\n<p>two</p>\r\n"},
        {"one\r\ntwo\r\n", "<p>one<br>two</p>\r\n"},
        {"one\r\n\r\n", "<p>one</p>\r\n</p>\r\n"},
        {"", "<p></p>\r\n"},
        // A blank line first: the next line follows as after any blank line.
        {"\r\none\r\ntwo", "<p></p>\r\n<p>one<br>two</p>\r\n"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(EmailToHtml(row.text, kPoetryP), row.result) << row.text;
}

TEST(EmailToHtml, PoetryInBreaks)
{
    const TextRow kRows[] = {
        {"one\r\ntwo\r\n\r\nthree\r\nfour", "<p>one<br>two<br><br>three<br>four</p>\r\n"},
        {"one\r\n\r\n\r\ntwo", "<p>one<br><br>two</p>\r\n"},
        {"one\r\n\r\n", "<p>one<br><br></p>\r\n"},
        {"\r\none\r\ntwo", "<p><br><br>one<br>two</p>\r\n"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(EmailToHtml(row.text, kPoetryBr), row.result) << row.text;
}

TEST(EmailToHtml, TheFirstBoxSetCounts)
{
    const std::string text = "a\r\nb";
    EXPECT_EQ(EmailToHtml(text, {.single_spaced = true, .poetry_p = true, .poetry_br = true}),
              "<p><p>a</p>\r\n<p>b</p>\r\n</p>\r\n");
    EXPECT_EQ(EmailToHtml("a\r\n\r\nb", {.poetry_p = true, .poetry_br = true}),
              "<p>a</p>\r\n<p>b</p>\r\n");
    EXPECT_EQ(EmailToHtml("a\r\n\r\nb", {.links_list = true, .poetry_br = true}), "a<br><br>b\r\n");
    // This one belongs to "cleanquotes".
    EXPECT_EQ(EmailToHtml("\x91", {.keep_smart_quotes = true}), "<p> &lsquo;</p>\r\n");
}

TEST(TabsToRs, Pieces)
{
    const TextRow kRows[] = {
        {"", ""},
        {"a", "a=rs(\"a\")\r\n"},
        {"a\tb", "a=rs(\"a\")\r\n\tb=rs(\"b\")\r\n"},
        {"\t", "=rs(\"\")\r\n\t=rs(\"\")\r\n"},
        {"a\t\tb", "a=rs(\"a\")\r\n\t=rs(\"\")\r\n\tb=rs(\"b\")\r\n"},
        {"a\r\nb", "a\r\nb=rs(\"a\r\nb\")\r\n"}, // lines mean nothing here
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(TabsToRs(row.text), row.result) << row.text;
}

TEST(LinesToJs, Calls)
{
    const std::string head = "<script src=\"_player.js\"></script>\r\n\r\n"
                             "<!---- write the following to _player.js ----->\r\n";
    const TextRow kRows[] = {
        {"", ""},
        {"a", "document.write('a');\r\n"},
        {"a\r\n\r\nb\r\n", "document.write('a');\r\ndocument.write('b');\r\n"},
        {"it's", "document.write('it\\'s');\r\n"},
        {"a\nb", "document.write('a\nb');\r\n"}, // only CR LF parts lines
        {" ", "document.write(' ');\r\n"},       // a blank line is not an empty one
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(LinesToJs(row.text), head + row.result) << row.text;
}

std::string MailScript(const std::string& names)
{
    return "@FORMREAD:" + names +
           "\r\n<%if imempty=\"yes\" then%>\r\n"
           "<h3>Oops! The form was empty. Use your back button.</h3>\r\n"
           "<% else %>\r\n"
           "@SENDEMAIL:Subject|email|me@here.org|messageout\r\n"
           "<% end if %>";
}

TEST(FieldNamesToScript, Names)
{
    const TextRow kRows[] = {
        {"", ""},
        {"no form", ""},
        {"<input name=\"a\">", "a"},
        {"<input NAME=\"b\"><input Name=\"a\">", "b|a"},
        {"<input name=\"a\"><input name=\"b\"><input name=\"a\">", "a|b"},
        {"name=\"a\" name=\"A\"", "a|A"}, // names differ by case
        {"<input filename=\"x\">", "x"},  // inside another word
        {"name='a' b\"", "a' b"},         // the character behind "=" is skipped unseen
        {"name=\"\" name=\"b\"", "|b"},   // an empty name is a name
        {"name=\"\" name=\"\"", ""},
        {"name=\"a\r\nb\"", "a\r\nb"},
        {"name=\"name=\"x\"", "name="}, // the rest begins behind the closing quote
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(FieldNamesToScript(row.text, "me@here.org"), MailScript(row.result)) << row.text;
}

TEST(FieldNamesToScript, NameWithoutQuoteIsFatal)
{
    for (const char* text : {"name=", "name=\"", "name=\"abc", "NAME=a", "name=\"a\" name=b"}) {
        try {
            FieldNamesToScript(text, "me@here.org");
            ADD_FAILURE() << text;
        } catch (const RunError& error) {
            EXPECT_EQ(error.kind, ErrorKind::invalid_argument) << text;
        }
    }
}

TEST(CleanQuotes, Texts)
{
    const TextRow kRows[] = {
        {"", ""},
        {"a", "a\r\n"}, // a last line gets its end
        {"a\nb\rc\r\n\r\nd", "a\r\nb\r\nc\r\n\r\nd\r\n"},
        {"\x91"
         "a\x92 \x93"
         "b\x94",
         "'a' \"b\"\r\n"},
        {"&lsquo;typed&rdquo;", "'typed\"\r\n"},
        {"caf\xE9 - x\x85", "caf&eacute; &mdash; x...\r\n"},
        {"a   b", "a b\r\n"},
        {" a ", " a \r\n"}, // nothing is trimmed
        {"\xB7\tone", "<li>one\r\n"},
        {"o\tone", "<li>one\r\n"}, // any first character
        {"1\t<p>one</p> <p>two", "<li>one two\r\n"},
        {"<p>\tx</p>", "<p>\tx</p>\r\n"}, // the tab is not the second character
        {"\t\tx", "<li>x\r\n"},
        {"x\t", "<li>\r\n"},
        {"\t", "\t\r\n"},
        {"<li>one</p>", "<li>one\r\n"},
        {"<li>one</P>", "<li>one</P>\r\n"},
        {"<LI>one</p>", "<LI>one</p>\r\n"},
        {"<li>one</p> ", "<li>one</p> \r\n"},
        {"<li></p>", "<li>\r\n"},
        {"</p>", "</p>\r\n"},
        {"\xB7one", "\xB7one\r\n"},
        {"x\t<<p>/p>", "<li>\r\n"}, // one removal after the other
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(CleanQuotes(row.text, false), row.result) << row.text;
}

TEST(CleanQuotes, SmartQuotesCanBeKept)
{
    EXPECT_EQ(CleanQuotes("\x91"
                          "a\x92 \x93"
                          "b\x94",
                          true),
              "&lsquo;a&rsquo; &ldquo;b&rdquo;\r\n");
}

TEST(NewsLineToEntry, Entries)
{
    const TextRow kRows[] = {
        {"!!1[May 5|pr050504|A Title|x]",
         "@file = pr050504\r\n@title = A Title\r\n!!2[May 5|pr050504|A Title|x]\r\n"
         "++txt\\pr050504.txt\r\n\r\n@@EOY\r\n\r\n"},
        {"!!2[d|f|t|x]\r\nthe rest",
         "@file = f\r\n@title = t\r\n!!1[d|f|t|x]\r\n++txt\\f.txt\r\n\r\n@@EOY\r\n\r\n"},
        {"!!9[d|f|t]\nthe rest",
         "@file = f\r\n@title = t]\r\n!!1[d|f|t]\r\n++txt\\f.txt\r\n\r\n@@EOY\r\n\r\n"},
        {"!!||", "@file = \r\n@title = \r\n!!1|\r\n++txt\\.txt\r\n\r\n@@EOY\r\n\r\n"},
        {"!!1[a\r|f|t|",
         "@file = f\r\n@title = t\r\n!!2[a\r|f|t|\r\n++txt\\f.txt\r\n\r\n@@EOY\r\n\r\n"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(NewsLineToEntry(row.text), row.result) << row.text;
}

TEST(NewsLineToEntry, FewerThanThreeFieldsAreFatal)
{
    for (const char* text : {"!!", "!!1[a]", "!!1[a|b]", "!!1[a|b]\r\n|c"}) {
        EXPECT_TRUE(IsNewsLine(text));
        try {
            NewsLineToEntry(text);
            ADD_FAILURE() << text;
        } catch (const RunError& error) {
            EXPECT_EQ(error.kind, ErrorKind::subscript) << text;
        }
    }
}

TEST(NewsLineToEntry, OtherLinesAreRefused)
{
    for (const char* text : {"", "!", " !!1[a|b|c]", "x\r\n!!1[a|b|c]"})
        EXPECT_FALSE(IsNewsLine(text)) << text;
}

TEST(TabsToPipes, Rows)
{
    const TextRow kRows[] = {
        {"", ""},
        {"a\tb", "??1[a|b]\r\n"},
        {"a\tb\r\nc\td", "??1[a|b]\r\n??1[c|d]\r\n"},
        {"a\tb\r\n", "??1[a|b]\r\n??1[]\r\n"}, // the blank of the last LF makes a row
        {"a\tb\nc\td", "??1[a|b c|d]\r\n"},    // LF alone ends no row
        {"a\rb", "??1[a]\r\n??1[b]\r\n"},
        {"\ta\t", "??1[|a|]\r\n"},
        {" a \t b ", "??1[a|b]\r\n"},
        {"a  \t  b", "??1[a | b]\r\n"}, // each replacement is one pass
        {"a    b", "??1[a  b]\r\n"},
        {"a   b", "??1[a  b]\r\n"},
        {"a\r\r\nb", "??1[a]\r\n??1[]\r\n??1[b]\r\n"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(TabsToPipes(WithoutLineFeeds(row.text), "??1"),
                  "<table width=\"100%\">\r\n" + row.result + "</table>")
            << row.text;
    EXPECT_EQ(TabsToPipes("a\tb", ""), "<table width=\"100%\">\r\n[a|b]\r\n</table>");
}

TEST(Ptop, LinesThatEndInAParagraphTag)
{
    const TextRow kRows[] = {
        {"", ""},
        {"a<p>", "a</p>"},
        {"a<P>\r\nb\r\nc<p>", "a</p>\r\nb\r\nc</p>"},
        {"<p>", "</p>"},
        {"p>", "p>"},
        {"a<p> ", "a<p> "},
        {"a<p>\nb<p>", "a</p>\nb</p>"},
        {"a<p>\r\nb<p>\n\r\nc", "a</p>\r\nb</p>\n\r\nc"}, // each line keeps its end
        {"a<p>\rb<p>", "a<p>\rb</p>"},                    // CR alone ends no line
        {"a<p>\r\r\n", "a<p>\r\r\n"},
        {"\r\na<p>\r\n", "\r\na</p>\r\n"},
        {"a<p>b", "a<p>b"},
    };
    for (const TextRow& row : kRows)
        EXPECT_EQ(ptop(row.text), row.result) << row.text;
}

/// A text of about `size` bytes in which everything has something to do.
std::string LongText(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += "It\x92s a \x93line\x94 - with   caf\xE9, name=\"n" +
                std::to_string(text.size() % 97) + "\"\tand <p>more</p> of it \r\n \r\n";
    return text;
}

TEST(Conversions, ATextOfAMegabyte)
{
    const std::string text = LongText(1'000'000);
    EXPECT_THAT(EmailToHtml(text, kNone).substr(0, 90),
                HasSubstr("It&rsquo;s a &ldquo;line&rdquo; &mdash; with caf&eacute;, name="));
    EXPECT_GT(CleanQuotes(text, false).size(), 750'000U);
    EXPECT_GT(LinesToJs(text).size(), 750'000U);
    EXPECT_GT(TabsToRs(text).size(), 750'000U);
    EXPECT_GT(TabsToPipes(WithoutLineFeeds(text), "").size(), 750'000U);
    EXPECT_GT(FieldNamesToScript(text, "").size(), 200U);
}

} // namespace
} // namespace kiv
