#include "builder/text_helpers.h"

#include "tests/builder/message_recorder.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>

namespace kiv {
namespace {

using testing::HasSubstr;

TEST(TextHelpers, MonthNames)
{
    const char* const kNames[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(MonthName(month), kNames[month - 1]);
}

// Rows 1 to 89: the code point of the character to find and the entity's name.
constexpr struct {
    char32_t code_point;
    const char* name;
} kNamedCharacters[] = {
    {0xA1, "iexcl"},   {0xA2, "cent"},    {0xA3, "pound"},   {0xA4, "curren"},  {0xA5, "yen"},
    {0xA7, "sect"},    {0xA8, "uml"},     {0xA9, "copy"},    {0xAE, "reg"},     {0xB0, "deg"},
    {0xB2, "sup2"},    {0xB3, "sup3"},    {0xB6, "para"},    {0xB9, "sup1"},    {0xBA, "ordm"},
    {0xBC, "frac14"},  {0xBD, "frac12"},  {0xBE, "frac34"},  {0xBF, "iquest"},  {0xC0, "Agrave"},
    {0xC1, "Aacute"},  {0xC2, "Acirc"},   {0xC3, "Atilde"},  {0xC4, "Auml"},    {0xC5, "Aring"},
    {0xC6, "AElig"},   {0xC7, "Ccedil"},  {0xC8, "Egrave"},  {0xC9, "Eacute"},  {0xCA, "Ecirc"},
    {0xCB, "Euml"},    {0xCC, "Igrave"},  {0xCD, "Iacute"},  {0xCE, "Icirc"},   {0xCF, "Iuml"},
    {0xD0, "ETH"},     {0xD1, "Ntilde"},  {0xD2, "Ograve"},  {0xD3, "Oacute"},  {0xD4, "Ocirc"},
    {0xD5, "Otilde"},  {0xD6, "Ouml"},    {0xD7, "times"},   {0xD8, "Oslash"},  {0xD9, "Ugrave"},
    {0xDA, "Uacute"},  {0xDB, "Ucirc"},   {0xDC, "Uuml"},    {0xDD, "Yacute"},  {0xDE, "THORN"},
    {0xDF, "szlig"},   {0xE0, "agrave"},  {0xE1, "aacute"},  {0xE2, "acirc"},   {0xE3, "atilde"},
    {0xE4, "auml"},    {0xE5, "aring"},   {0xE6, "aelig"},   {0xE7, "ccedil"},  {0xE8, "egrave"},
    {0xE9, "eacute"},  {0xEA, "ecirc"},   {0xEB, "euml"},    {0xEC, "igrave"},  {0xED, "iacute"},
    {0xEE, "icirc"},   {0xEF, "iuml"},    {0xF0, "eth"},     {0xF1, "ntilde"},  {0xF2, "ograve"},
    {0xF3, "oacute"},  {0xF4, "ocirc"},   {0xF5, "otilde"},  {0xF6, "ouml"},    {0xF7, "divide"},
    {0xF8, "oslash"},  {0xF9, "ugrave"},  {0xFA, "uacute"},  {0xFB, "ucirc"},   {0xFC, "uuml"},
    {0xFD, "yacute"},  {0xFF, "yuml"},    {0x160, "Scaron"}, {0x161, "scaron"}, {0x178, "Yuml"},
    {0x2018, "lsquo"}, {0x2019, "rsquo"}, {0x201C, "ldquo"}, {0x201D, "rdquo"},
};

TEST(TextHelpers, NamedCharacters)
{
    ASSERT_EQ(std::size(kNamedCharacters), 89U);
    ASSERT_EQ(CharEntityTable().size(), 97U);
    for (std::size_t i = 0; i < std::size(kNamedCharacters); ++i) {
        const EntityRow& row = CharEntityTable()[i];
        ASSERT_EQ(row.find.size(), 1U) << i;
        EXPECT_EQ(CodePoint(row.find[0]), kNamedCharacters[i].code_point) << i;
        EXPECT_EQ(row.replacement, std::string("&") + kNamedCharacters[i].name + ";");
    }
}

TEST(TextHelpers, DashesEllipsisAndGrave)
{
    const struct {
        std::string find; // UTF-8
        std::string replacement;
    } kRows[] = {
        {" \xE2\x80\x94 ", " &mdash; "}, // em dash between blanks
        {" \xE2\x80\x93 ", " &mdash; "}, // en dash between blanks
        {" -- ", " &mdash; "},
        {" - ", " &mdash; "},
        {"\xE2\x80\x94", " &mdash; "}, // em dash
        {"\xE2\x80\x93", "&ndash;"},   // en dash
        {"\xE2\x80\xA6", "..."},       // ellipsis
        {"\x60", "\x27"},              // grave accent, apostrophe
    };
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        const EntityRow& row = CharEntityTable()[89 + i];
        EXPECT_EQ(ToUtf8(row.find), kRows[i].find) << i;
        EXPECT_EQ(row.replacement, kRows[i].replacement) << i;
    }
}

TEST(TextHelpers, GapsOfTheEntityTable)
{
    constexpr char32_t kGaps[] = {0xA0, 0xA6, 0xAA, 0xAB, 0xAC, 0xAD, 0xAF,   0xB1,
                                  0xB4, 0xB5, 0xB7, 0xB8, 0xBB, 0xFE, 0x20AC, 0x2122};
    for (const char32_t gap : kGaps)
        for (const EntityRow& row : CharEntityTable())
            EXPECT_FALSE(row.find.size() == 1 && CodePoint(row.find[0]) == gap)
                << static_cast<unsigned>(gap);
}

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

TEST(TextHelpers, QuoteEscape)
{
    EXPECT_EQ(QuoteEscape(""), "");
    EXPECT_EQ(QuoteEscape("a & 'b'"), "a & 'b'");
    EXPECT_EQ(QuoteEscape("\"a\" \"\""), "&quot;a&quot; &quot;&quot;");
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
    for (const auto& row : kRows) {
        std::string path = row[0];
        EXPECT_EQ(DropParentPrefix(path), row[1]) << row[0];
        EXPECT_EQ(path, row[0]);
        EXPECT_EQ(DropParentPrefixInPlace(path), row[1]) << row[0];
        EXPECT_EQ(path, row[1]);
    }
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

TEST(TextHelpers, ThisDirName)
{
    const char* const kRows[][2] = {{"C:\\temp\\frog", "frog"},
                                    {"C:\\temp\\frog\\", "frog"},
                                    {"C:\\temp/Frog Pond", "Frog Pond"},
                                    {"C:\\", ""},
                                    {"C:", ""},
                                    {"\\", ""},
                                    {"", ""}};
    for (const auto& row : kRows)
        EXPECT_EQ(ThisDirNameOf(row[0]), row[1]) << row[0];
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
